#include <algorithm>

#include "Pixels/ColourStep.h"
#include "Pixels/ConversionRoute.h"
#include "Pixels/Greys.h"
#include "Pixels/PixelBlock.h"
#include "Pixels/ValuePlanes.h"

namespace moxtexture
{
namespace
{

class CPlaneRoute : public CConversionRoute
{
public:
    CPlaneRoute(const ConversionPlan& plan, uint64_t ui64Pixels)
        : m_Plan(plan), m_ColourStep(plan, ui64Pixels), m_Source(m_Plan.source), m_Target(m_Plan.target)
    {
        for (const TargetValue& value : plan.aValues)
        {
            if (value.eFrom == EValueSource::eChannel)
                m_abRead[value.uiSourcePosition] = true;
            m_bMixed = m_bMixed || value.eFrom == EValueSource::eWeightedSum || value.eFrom == EValueSource::eMean;
        }
        for (unsigned int i = 0; i < plan.source.getChannelCount(); ++i)
            m_abRead[i] = m_abRead[i] || (m_bMixed && isMixed(plan.source.getPlace(i).eName));
    }

    void convert(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount) override
    {
        while (uiCount != 0)
        {
            const size_t uiBlock = std::min(uiCount, k_uiBlockPixels);
            convertBlock(pSource, pTarget, uiBlock);
            pSource += uiBlock * m_Plan.source.getBytes();
            pTarget += uiBlock * m_Plan.target.getBytes();
            uiCount -= uiBlock;
        }
    }

private:
    static bool isMixed(EChannelName eName) { return eName == eChannelRed || eName == eChannelGreen || eName == eChannelBlue; }

    void convertBlock(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
    {
        uint32_t aui32Codes[k_uiBlockPixels];
        m_Source.openToRead(pSource, uiCount);
        for (unsigned int i = 0; i < m_Plan.source.getChannelCount(); ++i)
        {
            if (!m_abRead[i])
                continue;
            const ChannelPlace& place = m_Plan.source.getPlace(i);
            if (place.eReadRule == EValueRule::eNothing)
            {
                std::fill_n(m_afChannels[i], uiCount, 0.0f);
                continue;
            }
            m_Source.getCodes(i, aui32Codes);
            readValues(place, aui32Codes, uiCount, m_afChannels[i]);
        }

        m_Target.openToWrite(pTarget, uiCount);
        for (unsigned int i = 0; i < m_Plan.target.getChannelCount(); ++i)
        {
            const ChannelPlace& place = m_Plan.target.getPlace(i);
            if (place.eWriteRule == EValueRule::eNothing)
                continue;
            writeValues(place, getValues(m_Plan.aValues[i], uiCount), uiCount, aui32Codes);
            m_Target.putCodes(i, aui32Codes);
        }
        m_ColourStep.apply(m_Target, uiCount);
        m_Target.close();
    }

    const float* getValues(const TargetValue& value, size_t uiCount)
    {
        switch (value.eFrom)
        {
        case EValueSource::eChannel:
            return m_afChannels[value.uiSourcePosition];
        case EValueSource::eZero:
            std::fill_n(m_afMade, uiCount, 0.0f);
            break;
        case EValueSource::eOne:
            std::fill_n(m_afMade, uiCount, 1.0f);
            break;
        case EValueSource::eWeightedSum:
            mixColours(uiCount, getLuminanceOf);
            break;
        case EValueSource::eMean:
            mixColours(uiCount, [fCount = static_cast<float>(m_Plan.source.getColourCount())](float fRed, float fGreen, float fBlue)
                       { return getMeanOf(fRed, fGreen, fBlue, fCount); });
            break;
        }
        return m_afMade;
    }

    /// A channel that the source has not is 0.0.
    template <typename Mix>
    void mixColours(size_t uiCount, Mix mix)
    {
        const float* pRed = getColour(eChannelRed);
        const float* pGreen = getColour(eChannelGreen);
        const float* pBlue = getColour(eChannelBlue);
        for (size_t i = 0; i < uiCount; ++i)
            m_afMade[i] = mix(pRed[i], pGreen[i], pBlue[i]);
    }

    const float* getColour(EChannelName eName) const
    {
        const int iPosition = m_Plan.source.getPosition(eName);
        return iPosition < 0 ? m_afZeros : m_afChannels[iPosition];
    }

    const ConversionPlan& m_Plan;
    CColourStep m_ColourStep;
    CPixelBlock m_Source;
    CPixelBlock m_Target;
    bool m_bMixed = false;
    bool m_abRead[CMOXPixelAccessor::k_uiPositions] = {};
    float m_afChannels[CMOXPixelAccessor::k_uiPositions][k_uiBlockPixels]; ///< by source position
    float m_afMade[k_uiBlockPixels];
    float m_afZeros[k_uiBlockPixels] = {};
};

} // namespace

std::unique_ptr<CConversionRoute> makePlaneRoute(const ConversionPlan& plan, uint64_t ui64Pixels)
{
    if (!CPixelBlock::isFor(plan.source) || !CPixelBlock::isFor(plan.target))
        return nullptr;
    return std::make_unique<CPlaneRoute>(plan, ui64Pixels);
}

} // namespace moxtexture
