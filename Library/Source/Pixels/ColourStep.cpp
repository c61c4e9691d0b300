#include "Pixels/ColourStep.h"

#include "Pixels/ValuePlanes.h"

namespace moxtexture
{
namespace
{

bool haveEqualCodes(const ChannelPlace& a, const ChannelPlace& b)
{
    return a.uiBits == b.uiBits && a.eReadRule == b.eReadRule && a.eWriteRule == b.eWriteRule;
}

} // namespace

uint64_t mapCode(EColourMapping eMapping, const ChannelPlace& place, uint64_t ui64Code)
{
    const float fValue = readValueByRule(place.eReadRule, ui64Code, place.uiBits);
    return writeValueByRule(place.eWriteRule, mapColour(eMapping, fValue), place.uiBits);
}

CColourStep::CColourStep(const ConversionPlan& plan, uint64_t ui64Pixels) : m_Plan(plan)
{
    if (plan.eMapping == EColourMapping::eNone)
        return;
    for (const EChannelName eName : {eChannelRed, eChannelGreen, eChannelBlue, eChannelLuminance, eChannelIntensity})
    {
        const int iPosition = plan.target.getPosition(eName);
        if (iPosition < 0 || plan.target.getPlace(static_cast<unsigned int>(iPosition)).eWriteRule == EValueRule::eNothing)
            continue;
        const auto uiPosition = static_cast<unsigned int>(iPosition);
        const ChannelPlace& place = plan.target.getPlace(uiPosition);
        std::vector<uint32_t>& table = m_aTables[uiPosition];
        for (unsigned int i = 0; i < m_uiChannelCount && table.empty(); ++i)
            if (haveEqualCodes(place, plan.target.getPlace(m_auiPositions[i])))
                table = m_aTables[m_auiPositions[i]];
        m_auiPositions[m_uiChannelCount++] = uiPosition;

        if (!table.empty() || place.uiBits > k_uiLargestTableBits || (uint64_t{1} << place.uiBits) > ui64Pixels)
            continue;
        table.resize(size_t{1} << place.uiBits);
        for (size_t i = 0; i < table.size(); ++i)
            table[i] = static_cast<uint32_t>(mapCode(plan.eMapping, place, i));
    }
}

void CColourStep::apply(CPixelBlock& block, size_t uiCount) const
{
    uint32_t aui32Codes[k_uiBlockPixels];
    float afValues[k_uiBlockPixels];
    for (unsigned int uiChannel = 0; uiChannel < m_uiChannelCount; ++uiChannel)
    {
        const unsigned int uiPosition = m_auiPositions[uiChannel];
        const std::vector<uint32_t>& table = m_aTables[uiPosition];
        block.getCodes(uiPosition, aui32Codes);
        if (!table.empty())
        {
            for (size_t i = 0; i < uiCount; ++i)
                aui32Codes[i] = table[aui32Codes[i]];
        }
        else
        {
            const ChannelPlace& place = m_Plan.target.getPlace(uiPosition);
            readValues(place, aui32Codes, uiCount, afValues);
            for (size_t i = 0; i < uiCount; ++i)
                afValues[i] = mapColour(m_Plan.eMapping, afValues[i]);
            writeValues(place, afValues, uiCount, aui32Codes);
        }
        block.putCodes(uiPosition, aui32Codes);
    }
}

} // namespace moxtexture
