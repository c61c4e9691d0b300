#include "Pixels/ConversionPlan.h"

namespace moxtexture
{
namespace
{

TargetValue takeChannel(const CMOXPixelAccessor& source, EChannelName eName)
{
    return {EValueSource::eChannel, static_cast<unsigned int>(source.getPosition(eName))};
}

TargetValue takeFirstOf(const CMOXPixelAccessor& source, EChannelName eName, EChannelName eOther)
{
    if (source.hasChannel(eName))
        return takeChannel(source, eName);
    return source.hasChannel(eOther) ? takeChannel(source, eOther) : TargetValue{EValueSource::eOne};
}

} // namespace

ConversionPlan::ConversionPlan(const CMOXPixelAccessor& sourceAccessor, const CMOXPixelAccessor& targetAccessor,
                               EColourMapping eColourMapping)
    : source(sourceAccessor), target(targetAccessor), eMapping(eColourMapping)
{
    TargetValue luminance;
    TargetValue intensity;
    TargetValue fill; // for the colours that the source has not
    const bool bTargetIntensity = target.hasChannel(eChannelIntensity);
    if (target.hasChannel(eChannelLuminance) && source.hasChannel(eChannelLuminance))
        luminance = fill = takeChannel(source, eChannelLuminance);
    else if (source.hasChannel(eChannelIntensity))
        (bTargetIntensity ? intensity : luminance) = fill = takeChannel(source, eChannelIntensity);
    else if (source.hasChannel(eChannelLuminance))
        intensity = fill = takeChannel(source, eChannelLuminance);
    else if (target.hasChannel(eChannelLuminance))
        luminance.eFrom = EValueSource::eWeightedSum;
    else if (bTargetIntensity)
        intensity.eFrom = EValueSource::eMean;

    for (unsigned int i = 0; i < target.getChannelCount(); ++i)
    {
        const EChannelName eName = target.getPlace(i).eName;
        if (eName == eChannelAlpha)
            aValues[i] = takeFirstOf(source, eChannelAlpha, eChannelUnspecified);
        else if (eName == eChannelUnspecified)
            aValues[i] = takeFirstOf(source, eChannelUnspecified, eChannelAlpha);
        else if (eName == eChannelLuminance)
            aValues[i] = luminance;
        else if (eName == eChannelIntensity)
            aValues[i] = intensity;
        else
            aValues[i] = source.hasChannel(eName) ? takeChannel(source, eName) : fill;
    }
}

bool ConversionPlan::isByChannel() const
{
    for (const TargetValue& value : aValues)
        if (value.eFrom == EValueSource::eWeightedSum || value.eFrom == EValueSource::eMean)
            return false;
    return true;
}

} // namespace moxtexture
