#pragma once

#include <optional>
#include <string>

#include "Formats/PixelEncoding.h"
#include "Texture/CMOXTextureHeader.h"

namespace CLI
{
class App;
}

namespace moxtexture
{

/// An encoding to make, all of it decided.
struct TargetEncoding
{
    MOXPixelWord pixelFormat;
    EMOXTChannelType eChannelType = eCT_UnsignedNormalisedByte;
    EMOXTColourSpace eColourSpace = eCS_Linear;
    uint32_t uiQuality = 0;
    bool bDither = false;
};

/// The words that say what to encode to. What they leave out is taken from the catalogue or from the texture.
class CTargetWords
{
public:
    /// Gives a verb the options; parsing its words then fills this, which must live as long as the verb does.
    void addOptions(CLI::App& verb);

    /// What is wrong with the words whatever the texture, or nothing.
    [[nodiscard]] std::string findFault() const;

    /// @param source  the texture as it was loaded
    /// @param strReason  takes why there is no such target for it
    [[nodiscard]] std::optional<TargetEncoding> resolve(const CMOXTextureHeader& source, std::string& strReason) const;

private:
    [[nodiscard]] std::string findFault(const TargetEncoding& target) const;
    [[nodiscard]] EMOXTChannelType getChannelType(MOXPixelWord pixelFormat) const;

    std::optional<MOXPixelWord> m_Format;
    std::optional<EMOXTChannelType> m_eChannelType;
    std::optional<EMOXTColourSpace> m_eColourSpace;
    std::optional<std::string> m_strQuality;
    bool m_bDither = false;
};

/// True for a texture that has that encoding, so that making it would change nothing.
[[nodiscard]] bool hasEncoding(const CMOXTextureHeader& header, const TargetEncoding& target);

} // namespace moxtexture
