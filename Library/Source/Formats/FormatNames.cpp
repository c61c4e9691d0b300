#include "Formats/FormatNames.h"

namespace moxtexture
{
namespace
{

struct ChannelTypeNames
{
    const char* strLong;
    const char* strShort;
};

constexpr ChannelTypeNames k_aChannelTypes[k_uiChannelTypeCount] = {
    {"Unsigned Normalised Byte", "UNorm"},
    {"Signed Normalised Byte", "SNorm"},
    {"Unsigned Byte", "UInt"},
    {"Signed Byte", "SInt"},
    {"Unsigned Normalised Short", "UNorm"},
    {"Signed Normalised Short", "SNorm"},
    {"Unsigned Short", "UInt"},
    {"Signed Short", "SInt"},
    {"Unsigned Normalised Integer", "UNorm"},
    {"Signed Normalised Integer", "SNorm"},
    {"Unsigned Integer", "UInt"},
    {"Signed Integer", "SInt"},
    {"Signed Floating Point", "Float"},
    {"Unsigned Floating Point", "UFloat"},
};

char toUpper(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

std::string getLayoutName(MOXPixelWord pixelFormat)
{
    std::string strName;
    for (unsigned int i = 0; i < 4 && pixelFormat.getChannelLetter(i) != '\0'; ++i)
        strName += toUpper(pixelFormat.getChannelLetter(i));
    strName += ' ';
    for (unsigned int i = 0; i < 4; ++i)
        if (pixelFormat.getChannelBits(i) != 0)
            strName += std::to_string(pixelFormat.getChannelBits(i)) + ' ';
    return strName;
}

} // namespace

std::string getFormatName(MOXPixelWord pixelFormat)
{
    if (pixelFormat.getChannelBits(0) != 0)
        return getLayoutName(pixelFormat);
    return getPixelFormatRow(pixelFormat.getFormat()).strName;
}

std::string getChannelTypeName(EMOXTChannelType eType, bool bShort)
{
    if (eType >= k_uiChannelTypeCount)
        return {};
    return bShort ? k_aChannelTypes[eType].strShort : k_aChannelTypes[eType].strLong;
}

std::string getColourSpaceName(EMOXTColourSpace eSpace, bool bShort)
{
    if (eSpace == eCS_Linear)
        return bShort ? "lRGB" : "Linear RGB";
    return eSpace == eCS_sRGB ? "sRGB" : "";
}

std::string getCubeFaceName(uint32_t uiIndex, const std::string& strOrder)
{
    const std::string strLetters = strOrder.empty() ? "XxYyZz" : strOrder;
    if (uiIndex >= 6 || uiIndex >= strLetters.size())
        return "N/A";
    const char cLetter = strLetters[uiIndex];
    const bool bNegative = cLetter >= 'a' && cLetter <= 'z';
    return std::string(bNegative ? "-" : "+") + toUpper(cLetter);
}

} // namespace moxtexture
