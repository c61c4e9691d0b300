#include <algorithm>
#include <charconv>
#include <memory>

#include <CLI/CLI.hpp>

#include "CommandLine/Json.h"
#include "CommandLine/Names.h"
#include "CommandLine/Verb.h"
#include "CommandLine/WordOptions.h"
#include "Core/ByteOrder.h"
#include "Formats/FormatNames.h"
#include "Images/LoadTextureFile.h"

namespace moxtexture
{
namespace
{

struct InfoWords
{
    std::string strFile;
    bool bJson = false;
};

/// Calls visit(block) for every metadata block, in the order of the file.
template <typename Visit>
void forEachBlock(const CMOXTextureHeader& header, Visit visit)
{
    const MetaDataMap& owners = header.getMetaData();
    for (uint32_t i = 0; i < owners.getCount(); ++i)
        for (uint32_t j = 0; j < owners.getValue(i).getCount(); ++j)
            visit(owners.getValue(i).getValue(j));
}

size_t getHeldSize(const MetaDataBlock& block)
{
    return block.Data ? block.u32DataSize : 0;
}

std::string describeAsJson(const std::string& strFile, const CMOXTexture& texture, bool bImage)
{
    CJsonWriter json;
    json.beginObject();
    json.key("file").text(strFile);
    json.key("formatName").text(getFormatName(texture.getPixelFormat()));
    json.key("formatWord").text(toHexNumber(texture.getPixelFormat().getWord(), 16));
    json.key("channelType").number(texture.getChannelType());
    json.key("channelTypeName").text(getChannelTypeName(texture.getChannelType(), false));
    json.key("colourSpace").number(texture.getColourSpace());
    json.key("colourSpaceName").text(getColourSpaceName(texture.getColourSpace(), false));
    json.key("width").number(texture.getWidth());
    json.key("height").number(texture.getHeight());
    json.key("depth").number(texture.getDepth());
    json.key("arrayMembers").number(texture.getNumArrayMembers());
    json.key("faces").number(texture.getNumFaces());
    json.key("mipLevels").number(texture.getNumMIPLevels());
    json.key("flags").number(texture.getFlags());
    json.key("preMultiplied").boolean(texture.isPreMultiplied());
    json.key("dataSize").number(texture.getDataSize());
    json.key("metaDataSize").number(texture.getMetaDataSize());
    json.key("image").boolean(bImage);
    json.key("metaData").beginArray();
    forEachBlock(texture,
                 [&](const MetaDataBlock& block)
                 {
                     json.beginObject();
                     json.key("fourCC").text(toHexNumber(block.DevFOURCC, 8));
                     json.key("key").number(block.u32Key);
                     json.key("size").number(block.u32DataSize);
                     json.key("hex").text(toHex(block.Data.get(), getHeldSize(block)));
                     json.endObject();
                 });
    json.endArray().endObject();
    return json.getText() + "\n";
}

/// The scale as the shortest digits that read back as the same float, and the letters, which a file may have made anything.
std::string describeBumpMap(const MetaDataBlock& block)
{
    uint8_t aui8Record[8];
    block.read(aui8Record, sizeof aui8Record);
    char acScale[32];
    const std::to_chars_result result = std::to_chars(acScale, acScale + sizeof acScale, loadLE<float>(aui8Record));
    std::string strText = "bump map, scale " + std::string(acScale, result.ptr) + ", channels ";
    for (size_t i = 4; i < sizeof aui8Record && aui8Record[i] != 0; ++i)
        strText += aui8Record[i] > ' ' && aui8Record[i] < 0x7F ? static_cast<char>(aui8Record[i]) : '?';
    return strText;
}

/// What a block of the library's own says, or nothing.
std::string explain(const CMOXTextureHeader& header, const MetaDataBlock& block)
{
    const auto number = [](uint32_t uiValue) { return std::to_string(uiValue); };
    if (block.DevFOURCC != CMOXTextureHeader::k_ui32NativeFourCC)
        return {};
    switch (block.u32Key)
    {
    case eMetaDataBumpMap:
        return describeBumpMap(block);
    case eMetaDataCubeMapOrder:
    {
        std::string strFaces = "cube map faces";
        for (uint32_t i = 0; i < header.getNumFaces() && i < header.getCubeMapOrder().size(); ++i)
            strFaces += " " + getCubeFaceName(i, header.getCubeMapOrder());
        return strFaces;
    }
    case eMetaDataOrientation:
        return "orientation X " + number(header.getOrientation(eAxisX)) + ", Y " + number(header.getOrientation(eAxisY)) + ", Z " +
               number(header.getOrientation(eAxisZ));
    case eMetaDataBorder:
    {
        uint32_t x = 0, y = 0, z = 0;
        header.getBorder(x, y, z);
        return "border " + number(x) + ", " + number(y) + ", " + number(z);
    }
    case eMetaDataPadding:
        return "padding";
    default:
        return {};
    }
}

std::string countBytes(uint32_t uiCount)
{
    return std::to_string(uiCount) + (uiCount == 1 ? " byte" : " bytes");
}

std::string describeBlock(const CMOXTextureHeader& header, const MetaDataBlock& block)
{
    constexpr size_t uiShownBytes = 32;
    std::string strHex = toHex(block.Data.get(), std::min(getHeldSize(block), uiShownBytes));
    if (getHeldSize(block) > uiShownBytes)
        strHex += "...";
    const std::string strMeaning = explain(header, block);
    return toHexNumber(block.DevFOURCC, 8) + " key " + std::to_string(block.u32Key) + ", " + countBytes(block.u32DataSize) + ": " + strHex +
           (strMeaning.empty() ? "" : " (" + strMeaning + ")");
}

std::string describeAsText(const std::string& strFile, const CMOXTexture& texture, bool bImage)
{
    constexpr size_t uiColumn = 16;
    std::string strText;
    const auto addLine = [&](std::string strLabel, const std::string& strValue)
    {
        strLabel.resize(uiColumn, ' ');
        strText += strLabel + strValue + "\n";
    };
    const auto number = [](uint32_t uiValue) { return std::to_string(uiValue); };

    addLine("File", toOneLine(strFile));
    addLine("Kind", bImage ? "image" : "texture");
    addLine("Format", toHexNumber(texture.getPixelFormat().getWord(), 16) + " " + getTidyName(texture.getPixelFormat()));
    addLine("Channel type", number(texture.getChannelType()) + " " + getChannelTypeName(texture.getChannelType(), false));
    addLine("Colour space", number(texture.getColourSpace()) + " " + getColourSpaceName(texture.getColourSpace(), false));
    addLine("Size", number(texture.getWidth()) + " x " + number(texture.getHeight()) + " x " + number(texture.getDepth()));
    addLine("Array members", number(texture.getNumArrayMembers()));
    addLine("Faces", number(texture.getNumFaces()));
    addLine("MIP levels", number(texture.getNumMIPLevels()));
    addLine("Flags", number(texture.getFlags()));
    addLine("Pre-multiplied", texture.isPreMultiplied() ? "yes" : "no");
    addLine("Data", countBytes(texture.getDataSize()));
    addLine("Metadata", countBytes(texture.getMetaDataSize()));
    forEachBlock(texture, [&](const MetaDataBlock& block) { addLine("", describeBlock(texture, block)); });
    return strText;
}

Outcome runInfo(const InfoWords& words)
{
    CMOXTexture texture;
    LoadStatus status;
    loadTextureFile(status, texture, words.strFile);
    if (status.bFailed)
        return failed(status.strError);
    return done(words.bJson ? describeAsJson(words.strFile, texture, status.bWasImage)
                            : describeAsText(words.strFile, texture, status.bWasImage));
}

} // namespace

VerbRun describeInfo(CLI::App& verb)
{
    auto pWords = std::make_shared<InfoWords>();
    verb.add_option("FILE", pWords->strFile, "A texture, or an ordinary image")->required()->type_name("");
    addFlag(verb, "--json", pWords->bJson, "One JSON object instead of text");
    return [pWords](COutputsInFlight&) { return runInfo(*pWords); };
}

} // namespace moxtexture
