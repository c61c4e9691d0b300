#pragma once

#include <array>
#include <cstdint>

#include "Pixels/CMOXPixelAccessor.h"
#include "Pixels/ColourSpaceMapping.h"

namespace moxtexture
{

/// Where the value of a target channel comes from.
enum class EValueSource : uint8_t
{
    eChannel, ///< one channel of the source
    eZero,
    eOne,
    eWeightedSum, ///< of the source's red, green and blue
    eMean,
};

struct TargetValue
{
    EValueSource eFrom = EValueSource::eZero;
    unsigned int uiSourcePosition = 0; ///< for eChannel
};

/// What one conversion does to every pixel: CMOXPixelAccessor's convertFrom() and applyColourSpace(), with all questions about the
/// layouts answered beforehand. Both layouts are free of faults, so that their channels take the positions from 0 on.
///
/// The choice of channels is written out here once more: the accessor is the independent plain form that this is tested against.
struct ConversionPlan
{
    CMOXPixelAccessor source;
    CMOXPixelAccessor target;
    EColourMapping eMapping;
    std::array<TargetValue, CMOXPixelAccessor::k_uiPositions> aValues; ///< by target position

    ConversionPlan(const CMOXPixelAccessor& sourceAccessor, const CMOXPixelAccessor& targetAccessor, EColourMapping eColourMapping);

    /// No target channel is computed from several of the source.
    [[nodiscard]] bool isByChannel() const;
    /// The colour space step acts on the target channel at that position.
    [[nodiscard]] bool isMapped(unsigned int uiTargetPosition) const
    {
        return eMapping != EColourMapping::eNone && isColourChannel(target.getPlace(uiTargetPosition).eName);
    }
};

} // namespace moxtexture
