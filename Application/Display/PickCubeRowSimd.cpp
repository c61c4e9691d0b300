#include "Display/PickCubeRow.h"

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "Display/PickCubeRowSimd.cpp"
#include <hwy/foreach_target.h>

#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

/// truncate((coordinate + 1) * size * 0.5), 0 to size - 1; NaN gives 0.
template <class D>
HWY_INLINE auto getFaceTexels(D d, hn::Vec<D> coordinate, uint32_t uiSize)
{
    const hn::RebindToSigned<D> dInt;
    const auto size = hn::Set(d, static_cast<float>(uiSize));
    const auto texel = hn::Mul(hn::Mul(hn::Add(coordinate, hn::Set(d, 1.0f)), size), hn::Set(d, 0.5f));
    const auto inRange = hn::Min(hn::IfThenElseZero(hn::Ge(texel, hn::Set(d, 1.0f)), texel), size);
    return hn::Min(hn::ConvertTo(dInt, inRange), hn::Set(dInt, static_cast<int32_t>(uiSize - 1)));
}

/// The row's directions less their part in x, and the sizes of a face.
struct RowConstants
{
    const CubeBasis& basis;
    CubeDirection down; ///< y * dv
    uint32_t uiFaceWidth;
    uint32_t uiFaceHeight;
};

/// As CubeBasis::getDirection() and pickCubeFace() have it, both choices of each condition worked out.
template <class D>
HWY_INLINE void pickPixels(D d, int32_t x, const RowConstants& row, uint32_t* pui32Faces, uint32_t* pui32Texels)
{
    const hn::RebindToSigned<D> dInt;
    const hn::RebindToUnsigned<D> dUnsigned;
    const auto zero = hn::Zero(d);
    const auto step = hn::ConvertTo(d, hn::Add(hn::Set(dInt, x), hn::Iota(dInt, 0)));
    const auto direction = [&](float fOrigin, float fRight, float fDown) HWY_ATTR
    { return hn::Add(hn::Add(hn::Set(d, fOrigin), hn::Mul(step, hn::Set(d, fRight))), hn::Set(d, fDown)); };
    const auto X = direction(row.basis.origin.fX, row.basis.du.fX, row.down.fX);
    const auto Y = direction(row.basis.origin.fY, row.basis.du.fY, row.down.fY);
    const auto Z = direction(row.basis.origin.fZ, row.basis.du.fZ, row.down.fZ);
    const auto ax = hn::Abs(X);
    const auto ay = hn::Abs(Y);
    const auto az = hn::Abs(Z);

    const auto bX = hn::And(hn::Ge(ax, ay), hn::Ge(ax, az));
    const auto bZ = hn::Lt(ay, az); // counts only where bX is not
    const auto bXPositive = hn::Gt(X, zero);
    const auto bYPositive = hn::Gt(Y, zero);
    const auto bZPositive = hn::Gt(Z, zero);

    const auto length = hn::IfThenElse(bX, ax, hn::IfThenElse(bZ, az, ay));
    const auto uOnX = hn::IfThenElse(bXPositive, hn::Neg(Z), Z);
    const auto uOnZ = hn::IfThenElse(bZPositive, X, hn::Neg(X));
    const auto vOnY = hn::IfThenElse(bYPositive, Z, hn::Neg(Z));
    const auto u = hn::Div(hn::IfThenElse(bX, uOnX, hn::IfThenElse(bZ, uOnZ, X)), length);
    const auto v = hn::Div(hn::IfThenElse(bX, hn::Neg(Y), hn::IfThenElse(bZ, hn::Neg(Y), vOnY)), length);

    const auto one = hn::Set(dUnsigned, 1);
    const auto side = [&](auto bPositive, uint32_t uiFace) HWY_ATTR
    { return hn::Add(hn::Set(dUnsigned, uiFace), hn::IfThenZeroElse(hn::RebindMask(dUnsigned, bPositive), one)); };
    const auto faceYZ = hn::IfThenElse(hn::RebindMask(dUnsigned, bZ), side(bZPositive, 4), side(bYPositive, 2));
    hn::StoreU(hn::IfThenElse(hn::RebindMask(dUnsigned, bX), side(bXPositive, 0), faceYZ), dUnsigned, pui32Faces);

    const auto s = getFaceTexels(d, u, row.uiFaceWidth);
    const auto t = getFaceTexels(d, v, row.uiFaceHeight);
    const auto texel = hn::Add(hn::Mul(t, hn::Set(dInt, static_cast<int32_t>(row.uiFaceWidth))), s);
    hn::StoreU(hn::BitCast(dUnsigned, texel), dUnsigned, pui32Texels);
}

void PickCubeRow(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight, uint32_t* pui32Faces,
                 uint32_t* pui32Texels, size_t uiCount)
{
    const float fY = static_cast<float>(y);
    const RowConstants row{basis, {fY * basis.dv.fX, fY * basis.dv.fY, fY * basis.dv.fZ}, uiFaceWidth, uiFaceHeight};
    const hn::ScalableTag<float> dWhole;
    const hn::CappedTag<float, 1> dOne;
    size_t i = 0;
    for (; i + hn::Lanes(dWhole) <= uiCount; i += hn::Lanes(dWhole))
        pickPixels(dWhole, x + static_cast<int32_t>(i), row, pui32Faces + i, pui32Texels + i);
    for (; i < uiCount; ++i)
        pickPixels(dOne, x + static_cast<int32_t>(i), row, pui32Faces + i, pui32Texels + i);
}

} // namespace
} // namespace HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE

namespace
{
HWY_EXPORT(PickCubeRow);
}

void pickCubeRow(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight, uint32_t* pui32Faces,
                 uint32_t* pui32Texels, size_t uiCount)
{
    HWY_DYNAMIC_DISPATCH(PickCubeRow)(basis, x, y, uiFaceWidth, uiFaceHeight, pui32Faces, pui32Texels, uiCount);
}

#endif
