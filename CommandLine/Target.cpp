#include "CommandLine/Target.h"

#include "Catalogue/EncodeCatalogue.h"
#include "Catalogue/QualityNames.h"
#include "CommandLine/Names.h"
#include "CommandLine/WordOptions.h"
#include "Conversion/CodecTable.h"
#include "Formats/FormatNames.h"

namespace moxtexture
{
void CTargetWords::addOptions(CLI::App& verb)
{
    const auto parseAnyQuality = [](const std::string& strWord) -> std::optional<std::string>
    { return isQualityOfSomeFormat(strWord) ? std::optional<std::string>(strWord) : std::nullopt; };

    const auto add = [&](CLI::Option* pOption) { pOption->group("Target"); };
    add(addWordOption(verb, "--format", m_Format, parseFormat, "FORMAT", "format",
                      "A format by its name, as bc1 or moxtc-4bpp-rgba, or a layout as letter and bits of each channel in storage "
                      "order, as r8g8b8a8; else the file's own layout, type and space"));
    add(addWordOption(verb, "--type", m_eChannelType, parseChannelType, "TYPE", "channel type",
                      "A channel type by its number, 0 to 13, or its name, as UnsignedNormalisedByte; else the usual one of FORMAT"));
    add(addWordOption(verb, "--space", m_eColourSpace, parseColourSpace, "lrgb|srgb", "colour space",
                      "Convert to this colour space; else that of the texture"));
    add(addWordOption(verb, "--quality", m_strQuality, parseAnyQuality, "QUALITY", "quality of any format",
                      "How hard the format's compressor tries, by number or name; else its usual one"));
    add(addFlag(verb, "--dither", m_bDither, "Spread the error of formats with few bits over the neighbouring pixels"));
}

std::string CTargetWords::findFault() const
{
    if (!m_Format)
        return {};
    TargetEncoding target;
    target.pixelFormat = *m_Format;
    target.eChannelType = getChannelType(*m_Format);
    return findFault(target);
}

std::string CTargetWords::findFault(const TargetEncoding& target) const
{
    const std::string strName = getTidyName(target.pixelFormat);
    if ((m_Format || m_eChannelType) && !canHold(target.pixelFormat, target.eChannelType))
        return strName + " cannot hold values of type " + getChannelTypeName(target.eChannelType, false);
    if (m_strQuality && !parseQuality(*m_strQuality, target.pixelFormat))
        return "'" + *m_strQuality + "' is no quality of " + strName;
    return {};
}

EMOXTChannelType CTargetWords::getChannelType(MOXPixelWord pixelFormat) const
{
    return m_eChannelType ? *m_eChannelType : getDefaultChannelType(pixelFormat);
}

std::optional<TargetEncoding> CTargetWords::resolve(const CMOXTextureHeader& source, std::string& strReason) const
{
    TargetEncoding target;
    target.pixelFormat = m_Format.value_or(source.getPixelFormat());
    target.eChannelType = m_Format ? getChannelType(*m_Format) : m_eChannelType.value_or(source.getChannelType());
    target.eColourSpace = m_eColourSpace.value_or(source.getColourSpace());
    target.bDither = m_bDither;
    strReason = findFault(target);
    if (!strReason.empty())
        return std::nullopt;
    // Formats with one quality take any number here; their codecs do not.
    const QualityNames names = getQualityNames(target.pixelFormat);
    target.uiQuality = m_strQuality && names.uiCount != 0 ? *parseQuality(*m_strQuality, target.pixelFormat) : names.uiDefaultIndex;
    return target;
}

bool hasEncoding(const CMOXTextureHeader& header, const TargetEncoding& target)
{
    if (header.getPixelFormat() != target.pixelFormat || header.getColourSpace() != target.eColourSpace)
        return false;
    // A compressed texture has the type of its codec's intermediate, whatever type it is asked for by.
    return header.getChannelType() == target.eChannelType ||
           (target.pixelFormat.isCompressed() &&
            header.getChannelType() == getIntermediate(target.pixelFormat.getFormat(), target.eChannelType).eChannelType);
}

} // namespace moxtexture
