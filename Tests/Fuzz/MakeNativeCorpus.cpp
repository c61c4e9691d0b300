// make-native-corpus FOLDER: writes the seed corpus of NativeReaderFuzz. The same files on every run.

#include <cstdio>
#include <string>

#include "Formats/FormatNames.h"
#include "Fuzz/CorpusFolder.h"
#include "Support/CatalogueLayouts.h"
#include "Support/NativeFileBuilder.h"
#include "Support/SeededPictures.h"
#include "Texture/CMOXTextureHeader.h"

using namespace moxtexture;
using namespace testsupport;
using fuzzsupport::toFileName;

namespace
{

constexpr uint32_t k_uiNative = CNativeFileBuilder::k_ui32Native;
constexpr uint32_t k_uiFont = 0x746E6F66; // "font"

/// A folder of native files.
class CCorpus : public fuzzsupport::CCorpusFolder
{
public:
    explicit CCorpus(const std::string& strFolder) : CCorpusFolder(strFolder, ".mox") {}

    void write(const std::string& strName, const CNativeFileBuilder& builder) { CCorpusFolder::write(strName, builder.bytes()); }
};

/// A texture with its data, seeded by its own shape.
struct Seed
{
    MOXPixelWord format = k_RGBA8;
    uint32_t uiType = eCT_UnsignedNormalisedByte;
    uint32_t uiSpace = eCS_Linear;
    uint32_t uiWidth = 3, uiHeight = 2, uiDepth = 1;
    uint32_t uiLevels = 1, uiMembers = 1, uiFaces = 1;

    CNativeFileBuilder builder() const
    {
        const CMOXTextureHeader header(format, uiHeight, uiWidth, uiDepth, uiLevels, uiMembers, uiFaces,
                                       static_cast<EMOXTColourSpace>(uiSpace), static_cast<EMOXTChannelType>(uiType), false);
        const uint32_t uiSize = header.getDataSize();
        return CNativeFileBuilder()
            .format(format.getWord())
            .channelType(uiType)
            .colourSpace(uiSpace)
            .size(uiWidth, uiHeight, uiDepth)
            .levels(uiLevels)
            .members(uiMembers)
            .faces(uiFaces)
            .data(CSeededRandom(format.getWord() + uiSize).bytes(uiSize));
    }
};

void writeFormats(CCorpus& corpus)
{
    for (const CatalogueLayout& row : k_aCatalogueLayouts)
    {
        Seed seed;
        seed.format = row.getFormat();
        seed.uiType = row.uiType;
        const std::string strName = "layout-" + toFileName(getFormatName(seed.format)) + "-type-" + std::to_string(row.uiType);
        corpus.write(strName, seed.builder());
        seed.uiSpace = eCS_sRGB;
        if (row.bAlsoSRGB)
            corpus.write(strName + "-srgb", seed.builder());
    }
    for (uint32_t i = 0; i < ePF_Count; ++i)
    {
        Seed seed;
        seed.format = static_cast<EMOXTPixelFormat>(i);
        seed.uiWidth = 9;
        seed.uiHeight = 5;
        corpus.write("number-" + std::to_string(i) + "-" + toFileName(getFormatName(seed.format)), seed.builder());
    }
}

/// The six MOXTC formats in shapes that their blocks take to differently.
void writeMOXTC(CCorpus& corpus)
{
    for (uint32_t i = ePF_MOXTC_2bpp_RGB; i <= ePF_MOXTCII_4bpp; ++i)
    {
        const std::string strName = "moxtc-" + std::to_string(i) + "-";
        Seed chain;
        chain.format = static_cast<EMOXTPixelFormat>(i);
        chain.uiWidth = 32;
        chain.uiHeight = 16;
        chain.uiLevels = 6;
        corpus.write(strName + "chain", chain.builder());
        Seed unfilled = chain; // 3 or 6 blocks each way, whose Morton order leaves the grid
        unfilled.uiWidth = unfilled.uiHeight = 24;
        unfilled.uiLevels = 1;
        corpus.write(strName + "unfilled", unfilled.builder());
        Seed cube = unfilled;
        cube.uiWidth = cube.uiHeight = 1;
        cube.uiFaces = 6;
        corpus.write(strName + "cube", cube.builder());
    }
}

void writeShapes(CCorpus& corpus)
{
    Seed levels;
    levels.uiWidth = 8;
    levels.uiHeight = 4;
    levels.uiLevels = 4;
    corpus.write("shape-levels", levels.builder());
    Seed array;
    array.uiMembers = 3;
    corpus.write("shape-array", array.builder());
    Seed cube;
    cube.uiWidth = cube.uiHeight = 2;
    cube.uiFaces = 6;
    corpus.write("shape-cube", cube.builder());
    Seed depth;
    depth.uiDepth = 4;
    depth.uiLevels = 3;
    corpus.write("shape-3d", depth.builder());
    Seed all;
    all.format = ePF_BC3;
    all.uiWidth = all.uiHeight = 5;
    all.uiDepth = 2;
    all.uiLevels = 2;
    all.uiMembers = 2;
    all.uiFaces = 6;
    corpus.write("shape-all", all.builder());
    corpus.write("shape-thirty-two-levels", CNativeFileBuilder().levels(32).data({1, 2, 3, 4}));
    corpus.write("shape-no-level", CNativeFileBuilder().levels(0).data({1, 2, 3, 4}));
    corpus.write("shape-far-too-much", CNativeFileBuilder().size(0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF).data({1, 2, 3, 4}));
}

void writeMetaData(CCorpus& corpus)
{
    const auto make = [&](const std::string& strName, const CNativeFileBuilder& builder) { corpus.write("metadata-" + strName, builder); };
    const auto from = [] { return Seed().builder(); };
    make("bump-map", from().block(k_uiNative, 1, {0, 0, 0x80, 0x3F, 'x', 'y', 'z', 'h'}));
    make("cube-order", from().faces(6).block(k_uiNative, 2, {'X', 'x', 'Y', 'y', 'Z', 'z'}));
    make("orientation", from().block(k_uiNative, 3, {1, 2, 4}));
    make("border", from().block(k_uiNative, 4, {1, 0, 0, 0, 2, 0, 0, 0, 0, 0, 0, 0}));
    make("padding", from().block(k_uiNative, 5, std::vector<uint8_t>(9)));
    make("short-records", from().block(k_uiNative, 1, {1}).block(k_uiNative, 3, {1}).block(k_uiNative, 4, {1}));
    make("many-owners", from().block(k_uiFont, 0, {1}).block(0, 0xFFFFFFFF, {2, 3}).block(k_uiFont, 1, {4}));
    make("key-twice", from().block(k_uiFont, 0, {1, 2, 3}).block(k_uiFont, 0, {4}));
    make("empty-block", from().block(k_uiFont, 0, std::vector<uint8_t>()));
    make("cut-in-a-record", from().metaDataSize(30).data(std::vector<uint8_t>(5)));
    make("overrun", from().metaDataSize(20).block(k_uiFont, 0, {1}).block(k_uiFont, 1, {2, 3, 4}));
    make("claims-all", from().metaDataSize(0xFFFFFFFF).block(k_uiFont, 0, 0xFFFFFFFF, {1}));
}

void writeEndings(CCorpus& corpus)
{
    corpus.write("end-no-data", CNativeFileBuilder());
    corpus.write("end-short-data", CNativeFileBuilder().size(4, 4).data({1, 2, 3}));
    corpus.write("end-bytes-behind", CNativeFileBuilder().data({1, 2, 3, 4, 5, 6}));
    corpus.write("flags-pre-multiplied", CNativeFileBuilder().flags(3).data({1, 2, 3, 4}));
    corpus.write("version-52", CNativeFileBuilder().version(52).data({1, 2, 3, 4}));
    corpus.write("version-44", CNativeFileBuilder().version(44).data({1, 2, 3, 4}));
    corpus.write("version-unknown", CNativeFileBuilder().version(0x03584F4E).data({1, 2, 3, 4}));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fputs("usage: make-native-corpus FOLDER\n", stderr);
        return 2;
    }
    CCorpus corpus(argv[1]);
    writeFormats(corpus);
    writeMOXTC(corpus);
    writeShapes(corpus);
    writeMetaData(corpus);
    writeEndings(corpus);
    if (!corpus.isGood())
        std::fputs("make-native-corpus: could not write all files\n", stderr);
    return corpus.isGood() ? 0 : 1;
}
