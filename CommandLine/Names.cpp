#include "CommandLine/Names.h"

#include <algorithm>
#include <array>

#include "Catalogue/QualityNames.h"
#include "CommandLine/NumberScanner.h"
#include "Formats/FormatNames.h"
#include "Formats/PixelFormats.h"

namespace moxtexture
{
namespace
{

constexpr size_t k_uiMaxChannels = 4;
constexpr uint32_t k_uiMaxChannelBits = 32;

/// Upper case to lower; unlike the C library's the same in every locale, and no byte of UTF-8 changes.
char toLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSeparator(char c)
{
    return c == ' ' || c == '-' || c == '_';
}

/// Lower case, with runs of separators as one blank, or for strJoint empty as nothing; none at either end.
std::string normalise(std::string_view strWord, std::string_view strJoint = " ")
{
    std::string strResult;
    bool bPending = false;
    for (const char c : strWord)
    {
        if (isSeparator(c))
        {
            bPending = true;
            continue;
        }
        if (bPending && !strResult.empty())
            strResult += strJoint;
        bPending = false;
        strResult += toLower(c);
    }
    return strResult;
}

struct Layout
{
    std::array<char, k_uiMaxChannels> acLetters{};
    std::array<uint8_t, k_uiMaxChannels> auiBits{};
    size_t uiCount = 0;
};

bool takeLetter(Layout& pixel, char cLetter)
{
    const auto* pEnd = pixel.acLetters.begin() + pixel.uiCount;
    if (pixel.uiCount == k_uiMaxChannels || getChannelName(cLetter) == eChannelNone ||
        std::find(pixel.acLetters.cbegin(), pEnd, cLetter) != pEnd)
        return false;
    pixel.acLetters[pixel.uiCount++] = cLetter;
    return true;
}

bool readBits(CNumberScanner& scanner, uint8_t& uiBits)
{
    uint32_t uiValue = 0;
    if (!scanner.read(uiValue) || uiValue == 0 || uiValue > k_uiMaxChannelBits)
        return false;
    uiBits = static_cast<uint8_t>(uiValue);
    return true;
}

std::optional<MOXPixelWord> toWord(const Layout& pixel)
{
    const MOXPixelWord word(pixel.acLetters[0], pixel.acLetters[1], pixel.acLetters[2], pixel.acLetters[3], pixel.auiBits[0],
                            pixel.auiBits[1], pixel.auiBits[2], pixel.auiBits[3]);
    uint32_t uiTotal = 0;
    for (const uint8_t uiBits : pixel.auiBits)
        uiTotal += uiBits;
    if (pixel.uiCount == 0 || uiTotal % 8 != 0)
        return std::nullopt;
    return word;
}

/// "r8g8b8a8", in lower case.
std::optional<MOXPixelWord> parseStorageOrder(std::string_view strWord)
{
    Layout pixel;
    while (!strWord.empty())
    {
        if (!takeLetter(pixel, strWord.front()))
            return std::nullopt;
        const size_t uiDigits = std::min(strWord.find_first_not_of("0123456789", 1), strWord.size()) - 1;
        CNumberScanner scanner(strWord.substr(1, uiDigits));
        if (!readBits(scanner, pixel.auiBits[pixel.uiCount - 1]))
            return std::nullopt;
        strWord.remove_prefix(1 + uiDigits);
    }
    return toWord(pixel);
}

/// "rgba 8 8 8 8", in lower case with single blanks: the name of a layout as users see it.
std::optional<MOXPixelWord> parseLayoutName(std::string_view strWord)
{
    Layout pixel;
    const size_t uiLetters = std::min(strWord.find(' '), strWord.size());
    for (const char cLetter : strWord.substr(0, uiLetters))
        if (!takeLetter(pixel, cLetter))
            return std::nullopt;
    CNumberScanner scanner(strWord.substr(uiLetters));
    for (size_t i = 0; i < pixel.uiCount; ++i)
        if (!scanner.skip(' ') || !readBits(scanner, pixel.auiBits[i]))
            return std::nullopt;
    return scanner.isAtEnd() ? toWord(pixel) : std::nullopt;
}

struct FilterRow
{
    std::string_view strName;
    EResizeMode eMode;
};

constexpr FilterRow k_aFilters[] = {{"nearest", eResizeNearest}, {"linear", eResizeLinear}, {"cubic", eResizeCubic}};

} // namespace

std::optional<uint32_t> parseUnsigned(std::string_view strWord)
{
    uint32_t uiValue = 0;
    CNumberScanner scanner(strWord);
    if (!scanner.read(uiValue) || !scanner.isAtEnd())
        return std::nullopt;
    return uiValue;
}

std::optional<MOXPixelWord> parseFormat(std::string_view strWord)
{
    const std::string strName = normalise(strWord);
    for (uint32_t i = 0; i < ePF_Count; ++i)
        if (normalise(getPixelFormatRow(i).strName) == strName)
            return static_cast<EMOXTPixelFormat>(i);
    if (const std::optional<MOXPixelWord> pixelFormat = parseStorageOrder(strName))
        return pixelFormat;
    return parseLayoutName(strName);
}

std::optional<EMOXTChannelType> parseChannelType(std::string_view strWord)
{
    const std::optional<uint32_t> uiNumber = parseUnsigned(strWord);
    const std::string strName = normalise(strWord, "");
    for (uint32_t i = 0; i < k_uiChannelTypeCount; ++i)
    {
        const auto eType = static_cast<EMOXTChannelType>(i);
        if (uiNumber == i || strName == normalise(getChannelTypeName(eType, false), ""))
            return eType;
    }
    return std::nullopt;
}

std::optional<EMOXTColourSpace> parseColourSpace(std::string_view strWord)
{
    const std::string strName = normalise(strWord);
    for (const EMOXTColourSpace eSpace : {eCS_Linear, eCS_sRGB})
        if (strName == normalise(getColourSpaceName(eSpace, true)))
            return eSpace;
    return std::nullopt;
}

std::optional<EResizeMode> parseFilter(std::string_view strWord)
{
    const std::string strName = normalise(strWord);
    for (const FilterRow& row : k_aFilters)
        if (strName == row.strName)
            return row.eMode;
    return std::nullopt;
}

std::optional<uint32_t> parseQuality(std::string_view strWord, MOXPixelWord pixelFormat)
{
    const QualityNames names = getQualityNames(pixelFormat);
    if (const std::optional<uint32_t> uiNumber = parseUnsigned(strWord))
        return names.uiCount == 0 || *uiNumber < names.uiCount ? uiNumber : std::nullopt;
    const std::string strName = normalise(strWord);
    for (uint32_t i = 0; i < names.uiCount; ++i)
        if (strName == normalise(names.pTexts[i]))
            return i;
    return std::nullopt;
}

bool isQualityOfSomeFormat(std::string_view strWord)
{
    for (uint32_t i = 0; i < ePF_Count; ++i)
        if (parseQuality(strWord, static_cast<EMOXTPixelFormat>(i)))
            return true;
    return false;
}

std::string getTidyName(MOXPixelWord pixelFormat)
{
    std::string strName = getFormatName(pixelFormat);
    while (!strName.empty() && strName.back() == ' ')
        strName.pop_back();
    return strName;
}

bool canHold(MOXPixelWord pixelFormat, EMOXTChannelType eChannelType)
{
    if (pixelFormat.isCompressed() || (eChannelType != eCT_SignedFloatingPoint && eChannelType != eCT_UnsignedFloatingPoint))
        return true;
    for (unsigned int i = 0; i < k_uiMaxChannels; ++i)
    {
        const uint8_t uiBits = pixelFormat.getChannelBits(i);
        const bool bHolds =
            eChannelType == eCT_SignedFloatingPoint ? uiBits == 16 || uiBits == 32 : uiBits == 10 || uiBits == 11 || uiBits == 16;
        if (uiBits != 0 && !bHolds)
            return false;
    }
    return true;
}

std::string toOneLine(std::string strText)
{
    for (char& c : strText)
    {
        const auto uiByte = static_cast<unsigned char>(c);
        if (c == '\n')
            c = ' ';
        else if (uiByte < 0x20 || uiByte == 0x7F)
            c = '?';
    }
    return strText;
}

} // namespace moxtexture
