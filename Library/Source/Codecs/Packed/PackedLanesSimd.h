// No include guard but this one: the file is read once for every instruction set.
#if defined(HALVANE_PACKED_LANES_SIMD) == defined(HWY_TARGET_TOGGLE)
#ifdef HALVANE_PACKED_LANES_SIMD
#undef HALVANE_PACKED_LANES_SIMD
#else
#define HALVANE_PACKED_LANES_SIMD
#endif

#include <cstddef>

#include <hwy/highway.h>

// Lanes of 32 bits as floats and as integers. Pixels pass through aligned arrays of k_uiMostLanes, since the buffers of a surface
// may begin anywhere.

HWY_BEFORE_NAMESPACE();
namespace moxtexture
{
namespace HWY_NAMESPACE
{
namespace
{

namespace hn = hwy::HWY_NAMESPACE;

constexpr size_t k_uiMostLanes = 16;

using DF = hn::CappedTag<float, k_uiMostLanes>;
using DI = hn::RebindToSigned<DF>;
using DU = hn::RebindToUnsigned<DF>;
using VF = hn::Vec<DF>;
using VI = hn::Vec<DI>;
using VU = hn::Vec<DU>;

constexpr DF df{};
constexpr DI di{};
constexpr DU du{};

} // namespace
} // namespace HWY_NAMESPACE
} // namespace moxtexture
HWY_AFTER_NAMESPACE();

#endif
