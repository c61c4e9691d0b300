#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "Pixels/ConversionPlan.h"

namespace moxtexture
{

/// One way to carry out a plan. All ways give the same bytes as pixel by pixel through the accessors; each is for layouts of its
/// own, and which one is taken is decided before the first pixel.
class CConversionRoute
{
public:
    virtual ~CConversionRoute() = default;

    /// @param pSource, pTarget  uiCount pixels each; they must not overlap
    virtual void convert(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount) = 0;
};

// Each gives null where it is not for the plan, which must outlive it; ui64Pixels is how many pixels there will be in all.

/// Channels that are equal elements on each side: a shuffle of bytes, vectors that convert elements, or both.
[[nodiscard]] std::unique_ptr<CConversionRoute> makeElementRoute(const ConversionPlan& plan, uint64_t ui64Pixels);
/// Source channels of up to 16 bits, each by a table of all its codes that holds the colour space step too.
[[nodiscard]] std::unique_ptr<CConversionRoute> makeTableRoute(const ConversionPlan& plan, uint64_t ui64Pixels);
/// Channel by channel through floats: nearly everything else.
[[nodiscard]] std::unique_ptr<CConversionRoute> makePlaneRoute(const ConversionPlan& plan, uint64_t ui64Pixels);

/// The fastest of the above; null for the few layouts that must go pixel by pixel.
[[nodiscard]] std::unique_ptr<CConversionRoute> chooseRoute(const ConversionPlan& plan, uint64_t ui64Pixels);

} // namespace moxtexture
