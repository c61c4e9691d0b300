#include <algorithm>
#include <array>
#include <memory>
#include <optional>

#include <CLI/CLI.hpp>

#include "CommandLine/Names.h"
#include "CommandLine/Verb.h"
#include "CommandLine/WordOptions.h"
#include "Composition/CanonicalForm.h"
#include "Files/FileExtension.h"
#include "Images/LoadTextureFile.h"
#include "Images/SaveSurfaceAsImage.h"

namespace moxtexture
{
namespace
{

constexpr std::array<std::string_view, 3> k_aImageExtensions = {"png", "bmp", "jpg"};

struct ExtractWords
{
    std::string strInput, strImage;
    std::optional<uint32_t> uiLevel, uiMember, uiFace; ///< 0 where left out
};

/// Gives a reason if the texture has no surface of that number.
std::string findMissing(const char* strKind, uint32_t uiIndex, uint32_t uiCount)
{
    if (uiIndex < uiCount)
        return {};
    return "There is no " + std::string(strKind) + " " + std::to_string(uiIndex) + ": the texture has " + std::to_string(uiCount) +
           ", counted from 0";
}

/// A texture of that surface alone, which says of itself what the whole one does.
/// @return one without data for a surface whose bytes are not there
CMOXTexture takeSurface(const CMOXTexture& texture, uint32_t uiLevel, uint32_t uiMember, uint32_t uiFace)
{
    CMOXTextureHeader header(texture.getPixelFormat(), texture.getHeight(uiLevel), texture.getWidth(uiLevel), texture.getDepth(uiLevel), 1,
                             1, 1, texture.getColourSpace(), texture.getChannelType(), texture.isPreMultiplied());
    header.getMetaData() = texture.getMetaData();
    header.setMetaDataSize(texture.getMetaDataSize());
    const uint8_t* pSurface = texture.getDataPtr(uiLevel, uiMember, uiFace);
    if (pSurface == nullptr || !header.fitsDataBlock() || header.getDataSize() != texture.getDataSize(uiLevel, false, false))
        return {};
    return CMOXTexture(header, pSurface);
}

/// Brings the texture into 8-bit RGBA, float textures by way of the form in which they are worked on.
bool toPicture(CMOXTexture& texture)
{
    const EMOXTChannelType eType = texture.getChannelType();
    if ((eType == eCT_SignedFloatingPoint || eType == eCT_UnsignedFloatingPoint) && !toRGBAFloatCanonical(texture))
        return false;
    return toRGBA8Canonical(texture);
}

Outcome runExtract(const ExtractWords& words, COutputsInFlight& outputs)
{
    const std::string strExtension = getFileExtension(words.strImage);
    if (std::find(k_aImageExtensions.begin(), k_aImageExtensions.end(), strExtension) == k_aImageExtensions.end())
        return wrongWords("--output: '" + words.strImage + "' must end in .png, .bmp or .jpg");

    CMOXTexture texture;
    LoadStatus status;
    loadTextureFile(status, texture, words.strInput);
    if (status.bFailed)
        return failed(status.strError);

    const uint32_t uiLevel = words.uiLevel.value_or(0);
    const uint32_t uiMember = words.uiMember.value_or(0);
    const uint32_t uiFace = words.uiFace.value_or(0);
    for (const std::string& strMissing :
         {findMissing("MIP level", uiLevel, texture.getNumMIPLevels()), findMissing("array member", uiMember, texture.getNumArrayMembers()),
          findMissing("face", uiFace, texture.getNumFaces())})
        if (!strMissing.empty())
            return failed(strMissing);

    texture = takeSurface(texture, uiLevel, uiMember, uiFace);
    if (!toPicture(texture))
        return failed("Cannot turn this texture into a picture");
    std::string strReason;
    const auto save = [&](const std::string& strPath) { return saveSurfaceAsImage(texture, strPath, 0, 0, 0); };
    if (!outputs.write(words.strImage, save, strReason))
        return failed(strReason.empty() ? "Cannot save the picture as " + words.strImage : strReason);
    return done();
}

} // namespace

VerbRun describeExtract(CLI::App& verb)
{
    auto pWords = std::make_shared<ExtractWords>();
    verb.add_option("INPUT", pWords->strInput, "A texture")->required()->type_name("");
    refuseOptions(verb, verb.add_option("-o,--output", pWords->strImage, "The picture to write: .png, .bmp or .jpg"))
        ->required()
        ->type_name("IMAGE");
    addWordOption(verb, "--level", pWords->uiLevel, parseUnsigned, "L", "number", "MIP level, 0 the largest; 0 where left out");
    addWordOption(verb, "--member", pWords->uiMember, parseUnsigned, "M", "number", "Array member, from 0; 0 where left out");
    addWordOption(verb, "--face", pWords->uiFace, parseUnsigned, "F", "number", "Cube map face, from 0; 0 where left out");
    return [pWords](COutputsInFlight& outputs) { return runExtract(*pWords, outputs); };
}

} // namespace moxtexture
