#include "Documents/PixelReadout.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "Core/ByteOrder.h"
#include "Formats/FormatNames.h"

using namespace moxtexture;

namespace
{

constexpr bool isFloatType(EMOXTChannelType eType)
{
    return eType == eCT_SignedFloatingPoint || eType == eCT_UnsignedFloatingPoint;
}

/// The types of odd numbers are the signed ones, but for the last.
constexpr bool isShownSigned(EMOXTChannelType eType)
{
    return eType % 2 == 1;
}

float asFloat(uint32_t ui32Value)
{
    float fValue = 0.0f;
    std::memcpy(&fValue, &ui32Value, sizeof(fValue));
    return fValue;
}

uint32_t asBits(float fValue)
{
    uint32_t ui32Value = 0;
    std::memcpy(&ui32Value, &fValue, sizeof(fValue));
    return ui32Value;
}

uint32_t loadChannel(const uint8_t* pChannel, size_t uiBytes)
{
    if (uiBytes == 4)
        return loadLE<uint32_t>(pChannel);
    return uiBytes == 2 ? loadLE<uint16_t>(pChannel) : *pChannel;
}

QString getFaceText(const CMOXTextureHeader& header, const ReadoutPlace& place, bool bNamed)
{
    if (header.getNumFaces() <= 1)
        return {};
    const uint32_t ui32Face = place.eMode == eViewCube ? place.ui32CubeFace : place.ui32Face;
    return "Face: " + (bNamed ? QString::fromStdString(getCubeFaceName(ui32Face, header.getCubeMapOrder())) : QString());
}

} // namespace

bool readPixelValue(const CMOXTexture& texture, uint32_t uiMIPLevel, uint32_t uiArrayMember, uint32_t uiFace, int32_t x, int32_t y,
                    uint32_t (&aui32Values)[4])
{
    const MOXPixelWord format = texture.getPixelFormat();
    const uint8_t* pSurface = texture.getDataPtr(uiMIPLevel, uiArrayMember, uiFace);
    const uint32_t uiWidth = texture.getWidth(uiMIPLevel);
    if (pSurface == nullptr || format.isCompressed() || x < 0 || y < 0 || static_cast<uint32_t>(x) >= uiWidth ||
        static_cast<uint32_t>(y) >= texture.getHeight(uiMIPLevel))
        return false;

    const size_t uiSize = texture.getDataSize(uiMIPLevel, false, false);
    size_t uiOffset = (static_cast<size_t>(y) * uiWidth + static_cast<size_t>(x)) * (texture.getBitsPerPixel() / 8);
    std::fill(std::begin(aui32Values), std::end(aui32Values), 0);
    for (unsigned int i = 0; i < 4; ++i)
    {
        const uint8_t uiBits = format.getChannelBits(i);
        const size_t uiBytes = uiBits == 32 ? 4 : uiBits == 16 ? 2 : 1;
        const EChannelName eName = getChannelName(format.getChannelLetter(i));
        // Channels of odd widths may end before the byte that is read of them.
        if (eName >= eChannelRed && eName <= eChannelAlpha && uiOffset + uiBytes <= uiSize)
            aui32Values[eName - eChannelRed] = loadChannel(pSurface + uiOffset, uiBytes);
        uiOffset += uiBytes;
    }
    return true;
}

QString formatChannelValue(uint32_t ui32Value, EMOXTChannelType eType)
{
    if (eType >= k_uiChannelTypeCount)
        return {};
    if (isFloatType(eType))
        return QString::asprintf("%f", static_cast<double>(asFloat(ui32Value)));
    return isShownSigned(eType) ? QString::number(static_cast<int32_t>(ui32Value)) : QString::number(ui32Value);
}

uint32_t getChannelDifference(uint32_t ui32First, uint32_t ui32Second, EMOXTChannelType eType)
{
    if (isFloatType(eType))
    {
        const float fFirst = asFloat(ui32First);
        const float fSecond = asFloat(ui32Second);
        return asBits(fFirst < fSecond ? fSecond - fFirst : fFirst - fSecond);
    }
    const bool bSecondLarger =
        isShownSigned(eType) ? static_cast<int32_t>(ui32First) < static_cast<int32_t>(ui32Second) : ui32First < ui32Second;
    return bSecondLarger ? ui32Second - ui32First : ui32First - ui32Second;
}

ColourTexts getColourTexts(const uint32_t (&aui32Values)[4], EMOXTChannelType eType)
{
    ColourTexts texts;
    for (size_t i = 0; i < 4; ++i)
        texts[i] = formatChannelValue(aui32Values[i], eType);
    return texts;
}

ColourTexts getColourTexts(const uint32_t (&aui32Input)[4], const uint32_t (&aui32Output)[4], EMOXTChannelType eType)
{
    ColourTexts texts = getColourTexts(aui32Input, eType);
    for (size_t i = 0; i < 4; ++i)
    {
        texts[4 + i] = formatChannelValue(aui32Output[i], eType);
        texts[8 + i] = formatChannelValue(getChannelDifference(aui32Input[i], aui32Output[i], eType), eType);
    }
    return texts;
}

QString getPositionString(const ReadoutPlace& place)
{
    return QString::asprintf("%u, %u", static_cast<uint32_t>(place.i32PixelX), static_cast<uint32_t>(place.i32PixelY));
}

QString getPositionText(const ReadoutPlace& place)
{
    return "Position: " + getPositionString(place);
}

QString getSurfaceText(const CMOXTextureHeader& header, const ReadoutPlace& place)
{
    QString strText;
    if (header.getNumMIPLevels() > 1)
        strText += QString::asprintf("MIP Map: %u   ", place.ui32MIPLevel);
    if (header.getNumArrayMembers() > 1)
        strText += QString::asprintf("Surface: %u   ", place.ui32ArrayMember);
    return strText + getFaceText(header, place, true);
}

QString getDockPositionText(const CMOXTextureHeader& header, const ReadoutPlace& place)
{
    const QString strPosition = place.bMouseInside ? getPositionString(place) : QString();
    return strPosition + '\n' + getFaceText(header, place, place.bMouseInside);
}
