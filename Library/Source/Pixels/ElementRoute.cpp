#include <algorithm>
#include <optional>
#include <vector>

#include "Core/ByteOrder.h"
#include "Pixels/ColourStep.h"
#include "Pixels/ConversionRoute.h"
#include "Pixels/ElementConversion.h"
#include "Pixels/PixelBlock.h"
#include "Pixels/PixelShuffle.h"

namespace moxtexture
{
namespace
{

/// The kind of element that all channels of a layout are, if they are.
std::optional<EElement> getElement(const CMOXPixelAccessor& accessor)
{
    if (accessor.getFlags() != 0 || accessor.getChannelCount() == 0)
        return std::nullopt;
    const ChannelPlace& first = accessor.getPlace(0);
    for (unsigned int i = 0; i < accessor.getChannelCount(); ++i)
    {
        const ChannelPlace& place = accessor.getPlace(i);
        if (!place.bWhole || place.uiBits != first.uiBits || place.eReadRule != place.eWriteRule)
            return std::nullopt;
    }
    for (const EElement eElement : {EElement::eUnsigned8, EElement::eUnsigned16, EElement::eHalf, EElement::eFloat32})
    {
        const bool bIsIt = withElement(eElement,
                                       [&](auto traits)
                                       {
                                           using Traits = decltype(traits);
                                           return first.eReadRule == Traits::k_eRule && first.uiBits == 8 * sizeof(typename Traits::Code);
                                       });
        if (bIsIt)
            return eElement;
    }
    return std::nullopt;
}

/// The plan's choice of channels as a shuffle of elements of one kind.
PixelShuffle makeShuffle(const ConversionPlan& plan, EElement eElement)
{
    const size_t uiBytes = getElementBytes(eElement);
    const uint64_t ui64One = withElement(eElement,
                                         [&](auto traits)
                                         {
                                             using Traits = decltype(traits);
                                             return writeValue<Traits::k_eRule>(1.0f, 8 * sizeof(typename Traits::Code));
                                         });
    uint8_t aui8One[sizeof(uint64_t)];
    storeLE(aui8One, ui64One);

    PixelShuffle shuffle;
    shuffle.uiSourceBytes = uiBytes * plan.source.getChannelCount();
    shuffle.uiTargetBytes = uiBytes * plan.target.getChannelCount();
    for (size_t i = 0; i < shuffle.uiTargetBytes; ++i)
    {
        const TargetValue& value = plan.aValues[i / uiBytes];
        shuffle.aui8From[i] = value.eFrom == EValueSource::eChannel ? static_cast<uint8_t>(value.uiSourcePosition * uiBytes + i % uiBytes)
                                                                    : PixelShuffle::k_uiConstant;
        shuffle.aui8Value[i] = value.eFrom == EValueSource::eOne ? aui8One[i % uiBytes] : 0;
    }
    return shuffle;
}

class CElementRoute : public CConversionRoute
{
public:
    CElementRoute(const ConversionPlan& plan, uint64_t ui64Pixels, EElement eFrom, EElement eTo)
        : m_Plan(plan),
          m_ColourStep(plan, ui64Pixels),
          m_Target(plan.target),
          m_eFrom(eFrom),
          m_eTo(eTo),
          m_bShuffleFirst(getElementBytes(eFrom) <= getElementBytes(eTo)),
          m_Shuffle(makeShuffle(plan, m_bShuffleFirst ? eFrom : eTo)),
          m_bShuffle(!m_Shuffle.isIdentity()),
          m_bConvert(eFrom != eTo || !isKeptByFloat(eFrom))
    {
        if (m_bShuffle && m_bConvert)
            m_Between.resize(k_uiBlockPixels * (m_bShuffleFirst ? m_Shuffle.uiTargetBytes : m_Shuffle.uiSourceBytes));
    }

    void convert(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount) override
    {
        if (!m_ColourStep.isNeeded() && m_Between.empty())
        {
            convertRun(pSource, pTarget, uiCount);
            return;
        }
        while (uiCount != 0)
        {
            const size_t uiBlock = std::min(uiCount, k_uiBlockPixels);
            convertRun(pSource, pTarget, uiBlock);
            if (m_ColourStep.isNeeded())
            {
                m_Target.openToChange(pTarget, uiBlock);
                m_ColourStep.apply(m_Target, uiBlock);
                m_Target.close();
            }
            pSource += uiBlock * m_Plan.source.getBytes();
            pTarget += uiBlock * m_Plan.target.getBytes();
            uiCount -= uiBlock;
        }
    }

private:
    /// Shuffles on the side with the smaller elements.
    void convertRun(const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
    {
        if (!m_bConvert && !m_bShuffle)
            std::copy_n(pSource, uiCount * m_Plan.source.getBytes(), pTarget);
        else if (!m_bConvert)
            shufflePixels(m_Shuffle, pSource, pTarget, uiCount);
        else if (!m_bShuffle)
            convertElements(m_eFrom, m_eTo, pSource, pTarget, uiCount * m_Plan.source.getChannelCount());
        else if (m_bShuffleFirst)
        {
            shufflePixels(m_Shuffle, pSource, m_Between.data(), uiCount);
            convertElements(m_eFrom, m_eTo, m_Between.data(), pTarget, uiCount * m_Plan.target.getChannelCount());
        }
        else
        {
            convertElements(m_eFrom, m_eTo, pSource, m_Between.data(), uiCount * m_Plan.source.getChannelCount());
            shufflePixels(m_Shuffle, m_Between.data(), pTarget, uiCount);
        }
    }

    const ConversionPlan& m_Plan;
    CColourStep m_ColourStep;
    CPixelBlock m_Target;
    EElement m_eFrom;
    EElement m_eTo;
    bool m_bShuffleFirst;
    PixelShuffle m_Shuffle;
    bool m_bShuffle;
    bool m_bConvert;
    std::vector<uint8_t> m_Between; ///< one block between shuffle and conversion
};

} // namespace

std::unique_ptr<CConversionRoute> makeElementRoute(const ConversionPlan& plan, uint64_t ui64Pixels)
{
    const std::optional<EElement> from = getElement(plan.source);
    const std::optional<EElement> to = getElement(plan.target);
    if (!from || !to || !plan.isByChannel())
        return nullptr;
    return std::make_unique<CElementRoute>(plan, ui64Pixels, *from, *to);
}

} // namespace moxtexture
