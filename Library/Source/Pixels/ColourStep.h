#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "Pixels/ConversionPlan.h"
#include "Pixels/PixelBlock.h"

namespace moxtexture
{

/// The colour space step on blocks of target pixels. Channels of up to 16 bits go through a table of all their codes where there are
/// enough pixels to make one worth while; the others are computed.
class CColourStep
{
public:
    /// @param plan         must outlive this; its target is one for which CPixelBlock::isFor() is true
    /// @param ui64Pixels   how many pixels there will be
    CColourStep(const ConversionPlan& plan, uint64_t ui64Pixels);

    /// Some channel is changed at all.
    [[nodiscard]] bool isNeeded() const { return m_uiChannelCount != 0; }
    /// @param block  uiCount pixels of the target, opened to change or to write
    void apply(CPixelBlock& block, size_t uiCount) const;

private:
    const ConversionPlan& m_Plan;
    std::array<unsigned int, CMOXPixelAccessor::k_uiPositions> m_auiPositions = {}; ///< in the order of the step
    unsigned int m_uiChannelCount = 0;
    std::array<std::vector<uint32_t>, CMOXPixelAccessor::k_uiPositions> m_aTables; ///< by position; empty: computed
};

/// What the colour space step makes of one code of a channel, bits above the channel included.
[[nodiscard]] uint64_t mapCode(EColourMapping eMapping, const ChannelPlace& place, uint64_t ui64Code);

} // namespace moxtexture
