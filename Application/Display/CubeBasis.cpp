#include "Display/CubeBasis.h"

#include <algorithm>
#include <cmath>

CubeBasis makeCubeBasis(uint32_t uiWidth, uint32_t uiHeight, ViewOffset offset, float fZoom)
{
    constexpr float k_fAngleStep = 1.0f / 512.0f;
    constexpr float k_fPi = 3.1415925f;
    const float a = static_cast<float>(offset.x) * k_fAngleStep * k_fPi * 0.5f;
    const float b = static_cast<float>(offset.y) * k_fAngleStep * -k_fPi * 0.5f;
    const float ca = std::cos(a);
    const float sa = std::sin(a);
    const float cb = std::cos(b);
    const float sb = std::sin(b);

    const float w = static_cast<float>(uiWidth);
    const float h = static_cast<float>(uiHeight);
    const float hx = w > h ? -(w / h) : -1.0f;
    const float hy = w <= h ? h / w : 1.0f;
    const float z = fZoom;
    const float kx = hx * -2.0f / w;
    const float ky = hy * -2.0f / h;

    CubeBasis basis;
    basis.origin = {ca * hx - sb * sa * hy - cb * sa * z, cb * hy - sb * z, sa * hx + sb * ca * hy + cb * ca * z};
    basis.du = {kx * ca, 0.0f, kx * sa};
    basis.dv = {ky * -(sb * sa), ky * cb, ky * sb * ca};
    return basis;
}

CubePick pickCubeFace(const CubeDirection& direction)
{
    const auto [X, Y, Z] = direction;
    const float ax = std::fabs(X);
    const float ay = std::fabs(Y);
    const float az = std::fabs(Z);
    if (ax >= ay && ax >= az)
        return X > 0.0f ? CubePick{0, -Z / ax, -Y / ax} : CubePick{1, Z / ax, -Y / ax};
    if (ay < az)
        return Z > 0.0f ? CubePick{4, X / az, -Y / az} : CubePick{5, -X / az, -Y / az};
    return Y > 0.0f ? CubePick{2, X / ay, Z / ay} : CubePick{3, X / ay, -Z / ay};
}

namespace
{

uint32_t getFaceTexel(float fCoordinate, uint32_t uiSize)
{
    const float fSize = static_cast<float>(uiSize);
    const float fTexel = (fCoordinate + 1.0f) * fSize * 0.5f;
    if (!(fTexel >= 1.0f)) // or NaN
        return 0;
    return fTexel < fSize ? std::min(static_cast<uint32_t>(fTexel), uiSize - 1) : uiSize - 1;
}

} // namespace

CubeTexel pickCubeTexel(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight)
{
    const CubePick pick = pickCubeFace(basis.getDirection(x, y));
    return {pick.uiFace, getFaceTexel(pick.fU, uiFaceWidth), getFaceTexel(pick.fV, uiFaceHeight)};
}
