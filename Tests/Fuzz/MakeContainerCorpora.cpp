// make-container-corpora FOLDER: writes the seed corpora of the targets for KTX, DDS, `.astc` and older native files to the folders
// KtxReader, DdsReader, AstcReader and LegacyReader below it, which must be there. The same files on every run.

#include <cstdio>
#include <string>

#include "Formats/D3DFormatTable.h"
#include "Formats/FormatNames.h"
#include "Formats/GLFormatTable.h"
#include "Fuzz/CorpusFolder.h"
#include "Support/DdsFileBuilder.h"
#include "Support/KtxFileBuilder.h"
#include "Support/LegacyFileBuilder.h"
#include "Support/SeededPictures.h"
#include "Texture/DdsFormats.h"

using namespace moxtexture;
using namespace testsupport;
using fuzzsupport::CCorpusFolder;
using fuzzsupport::toFileName;

namespace
{

using Bytes = std::vector<uint8_t>;

constexpr uint32_t k_uiHuge = 0xFFFFFFFF;

Bytes noise(uint32_t uiSize)
{
    return CSeededRandom(uiSize).bytes(uiSize);
}

CMOXTextureHeader headerOf(const PixelEncoding& encoding, uint32_t uiWidth, uint32_t uiHeight)
{
    return CMOXTextureHeader(encoding.pixelFormat, uiHeight, uiWidth, 1, 1, 1, 1, encoding.eColourSpace, encoding.eChannelType,
                             encoding.bPreMultiplied);
}

std::string nameOf(const std::string& strKind, uint32_t uiNumber, MOXPixelWord format)
{
    return strKind + "-" + std::to_string(uiNumber) + "-" + toFileName(getFormatName(format));
}

/// A level of 3 by 2 pixels, padded if they stand in rows; of blocks it is as many as there are.
void writeKtxFormat(CCorpusFolder& corpus, uint32_t ui32InternalFormat, uint32_t ui32Type)
{
    const auto encoding = findGLFormat(ui32InternalFormat, ui32Type);
    if (!encoding)
        return;
    const CMOXTextureHeader header = headerOf(*encoding, 3, 2);
    const bool bRows = !encoding->pixelFormat.isCompressed();
    const uint32_t uiSize = bRows ? 2 * ((3 * header.getBitsPerPixel() / 8 + 3) & ~3u) : header.getDataSize();
    const std::string strName = nameOf("format", ui32InternalFormat, encoding->pixelFormat);
    corpus.write(ui32Type == 0 ? strName : strName + "-type-" + std::to_string(ui32Type),
                 CKtxFileBuilder().format(ui32InternalFormat, ui32Type).size(3, 2).level(uiSize, noise(uiSize)).bytes());
}

void writeKtxFormats(CCorpusFolder& corpus)
{
    for (uint32_t i = 1; i < 40000; ++i)
        writeKtxFormat(corpus, i, 0);
    for (const uint32_t uiUnsized : {6403u, 6406u, 6407u, 6408u, 6409u, 6410u, 33319u, 32993u})
        for (uint32_t uiType = 1; uiType < 40000; ++uiType)
            writeKtxFormat(corpus, uiUnsized, uiType);
}

/// 24 by 24 pixels of MOXTC, whose Morton order leaves the grid of blocks, and a cube of MOXTCII with two levels.
void writeKtxMOXTC(CCorpusFolder& corpus)
{
    struct Row
    {
        uint32_t ui32Format;
        uint32_t uiOf24, uiOf8; ///< bytes of 24 by 24 and of 8 by 8 pixels
        uint32_t uiOf4;
    };
    for (const Row& row : {Row{35840, 288, 32, 32}, Row{35841, 192, 32, 32}, Row{37175, 144, 16, 8}, Row{37176, 288, 32, 8}})
    {
        const std::string strName = "moxtc-" + std::to_string(row.ui32Format);
        const CKtxFileBuilder builder = CKtxFileBuilder().format(row.ui32Format);
        corpus.write(strName + "-unfilled", CKtxFileBuilder(builder).size(24, 24).level(row.uiOf24, noise(row.uiOf24)).bytes());
        corpus.write(strName + "-cube", CKtxFileBuilder(builder)
                                            .size(8, 8)
                                            .faces(6)
                                            .levels(2)
                                            .level(row.uiOf8, noise(6 * row.uiOf8))
                                            .level(row.uiOf4, noise(6 * row.uiOf4))
                                            .bytes());
    }
}

void writeKtx(CCorpusFolder& corpus)
{
    constexpr uint32_t uiR8 = 33321, uiBC1 = 33776;
    const auto make = [&](const std::string& strName, const CKtxFileBuilder& builder) { corpus.write(strName, builder.bytes()); };
    writeKtxFormats(corpus);
    writeKtxMOXTC(corpus);

    // 5 by 3, 2 by 1 and 1 by 1 bytes, with and without padded rows.
    make("rows-padded", CKtxFileBuilder().format(uiR8).size(5, 3).levels(3).level(24, noise(24)).level(4, noise(4)).level(4, noise(4)));
    make("rows-tight", CKtxFileBuilder().format(uiR8).size(5, 3).levels(3).level(15, noise(16)).level(2, noise(4)).level(1, noise(1)));
    make("shape-levels", CKtxFileBuilder().size(4, 2).levels(3).level(32, noise(32)).level(8, noise(8)).level(4, noise(4)));
    make("shape-array", CKtxFileBuilder().size(2, 2).elements(3).level(48, noise(48)));
    make("shape-cube", CKtxFileBuilder().size(2, 2).faces(6).level(16, noise(96)));
    make("shape-cube-padded", CKtxFileBuilder().format(uiR8).size(1, 1).faces(6).levels(2).level(4, noise(24)).level(1, noise(24)));
    make("shape-cube-array", CKtxFileBuilder().size(1, 1).elements(2).faces(6).level(48, noise(48)));
    make("shape-3d", CKtxFileBuilder().size(3, 2, 2).levels(2).level(48, noise(48)).level(4, noise(4)));
    make("shape-3d-padded", CKtxFileBuilder().format(uiR8).size(3, 2, 2).level(16, noise(16)));
    make("shape-blocks", CKtxFileBuilder().format(uiBC1).size(9, 5).levels(2).level(48, noise(48)).level(8, noise(8)));
    make("shape-no-level", CKtxFileBuilder().levels(0));
    make("shape-no-face", CKtxFileBuilder().faces(0).level(4, noise(4)));
    make("shape-thirty-two-levels", CKtxFileBuilder().levels(32).level(4, noise(4)));
    make("shape-far-too-much", CKtxFileBuilder().size(k_uiHuge, k_uiHuge, k_uiHuge).elements(k_uiHuge).level(4, noise(4)));

    const auto keyed = [&](const std::string& strName, const CKtxFileBuilder& builder)
    { make("key-" + strName, CKtxFileBuilder(builder).level(4, noise(4))); };
    keyed("orientation", CKtxFileBuilder().withKey("KTXorientation", "S=l,T=u,R=o"));
    keyed("orientation-short", CKtxFileBuilder().withKey("KTXorientation", "S=r"));
    keyed("unknown", CKtxFileBuilder().withKey("KTXwriter", "somebody"));
    keyed("two", CKtxFileBuilder().withKey("KTXorientation", "S=l,T=d,R=i").withKey("a", "b"));
    keyed("no-value", CKtxFileBuilder().withRecord("KTXorientation"));
    keyed("empty", CKtxFileBuilder().withKeyBytes({0, 0, 0, 0}));
    keyed("overrun", CKtxFileBuilder().withKeyBytes({200, 0, 0, 0, 'a', 0, 'b', 0}));
    keyed("claims-all", CKtxFileBuilder().keyValueSize(0xFFFFFFF0).withKeyBytes({0xF0, 0xFF, 0xFF, 0xFF}));

    make("end-no-level", CKtxFileBuilder());
    make("end-short-level", CKtxFileBuilder().size(4, 4).level(64, noise(5)));
    make("end-bytes-behind", CKtxFileBuilder().level(4, noise(9)));
    make("version-other-byte-order", CKtxFileBuilder().word(12, 0x01020304).level(4, noise(4)));
}

CDdsFileBuilder describe(const D3DPixelFormat& format)
{
    if ((format.ui32Flags & eD3DPixelsFourCC) != 0)
        return CDdsFileBuilder().fourCC(format.ui32FourCC);
    const auto& masks = format.aui32Masks;
    return CDdsFileBuilder().masks(format.ui32Flags, format.ui32BitCount, masks[0], masks[1], masks[2], masks[3]);
}

void writeDdsFormat(CCorpusFolder& corpus, const std::string& strKind, uint32_t uiNumber, const CMOXTextureHeader& format,
                    CDdsFileBuilder builder)
{
    if (format.getBitsPerPixel() == 0)
        return;
    const uint32_t uiSize = headerOf(format.getEncoding(), 3, 2).getDataSize();
    corpus.write(nameOf(strKind, uiNumber, format.getPixelFormat()), builder.size(3, 2).data(noise(uiSize)).bytes());
}

void writeDds(CCorpusFolder& corpus)
{
    const auto make = [&](const std::string& strName, const CDdsFileBuilder& builder) { corpus.write(strName, builder.bytes()); };
    for (uint32_t i = 1; i < 128; ++i)
    {
        CMOXTextureHeader extended;
        setFromDXGIFormat(extended, i);
        writeDdsFormat(corpus, "dxgi", i, extended, CDdsFileBuilder().extended(i));
        CMOXTextureHeader plain;
        const D3DFormatRow* pRow = findD3DFormat(i);
        if (pRow != nullptr && setFromD3DFormat(plain, i))
            writeDdsFormat(corpus, "d3d", i, plain, describe(describeD3DFormat(*pRow)));
    }
    for (const auto& strLetters : {"DXT1", "DXT2", "DXT3", "DXT4", "DXT5", "PTC2", "PTC4", "UYVY", "YUY2", "RGBG", "GRGB"})
    {
        uint32_t uiNumber = loadLE<uint32_t>(reinterpret_cast<const uint8_t*>(strLetters));
        CMOXTextureHeader header;
        if (setFromD3DFormat(header, uiNumber))
            writeDdsFormat(corpus, std::string("fourcc-") + strLetters, uiNumber, header, CDdsFileBuilder().fourCC(uiNumber));
    }

    // Bytes of 32 by 16 pixels and the levels below, and of 24 by 24: two or four bits a pixel, 16 by 8 or 8 by 8 pixels at least.
    make("moxtc-ptc2-chain", CDdsFileBuilder().fourCC(0x32435450).size(32, 16).levels(6).data(noise(128 + 5 * 32)));
    make("moxtc-ptc4-chain", CDdsFileBuilder().fourCC(0x34435450).size(32, 16).levels(6).data(noise(256 + 64 + 4 * 32)));
    make("moxtc-ptc2-unfilled", CDdsFileBuilder().fourCC(0x32435450).size(24, 24).data(noise(192)));
    make("moxtc-ptc4-unfilled", CDdsFileBuilder().fourCC(0x34435450).size(24, 24).data(noise(288)));

    make("shape-levels", CDdsFileBuilder().size(4, 2).levels(3).data(noise(44)));
    make("shape-cube", CDdsFileBuilder().size(2, 2).caps2(0xFE00).data(noise(96)));
    make("shape-3d", CDdsFileBuilder().size(3, 2).depth(2).levels(2).data(noise(52)));
    make("shape-array", CDdsFileBuilder().size(2, 2).extended(28, 3, 0, 3).data(noise(48)));
    make("shape-cube-array", CDdsFileBuilder().size(1, 1).extended(28, 3, 4, 2).data(noise(48)));
    make("shape-1d", CDdsFileBuilder().size(3, 2).extended(28, 2).data(noise(12)));
    make("shape-3d-extended", CDdsFileBuilder().size(2, 2).depth(2).extended(28, 4).data(noise(32)));
    make("shape-giant-array", CDdsFileBuilder().extended(28, 3, 4, k_uiHuge).data(noise(4)));
    make("shape-far-too-much", CDdsFileBuilder().size(k_uiHuge, k_uiHuge).depth(k_uiHuge).levels(k_uiHuge).data(noise(4)));
    make("dimension-0", CDdsFileBuilder().extended(28, 0).data(noise(4)));
    make("dimension-5", CDdsFileBuilder().extended(28, 5).data(noise(4)));
    make("format-unknown", CDdsFileBuilder().extended(k_uiHuge).data(noise(4)));
    make("end-no-data", CDdsFileBuilder());
    make("end-short-data", CDdsFileBuilder().size(4, 4).data(noise(5)));
    make("end-bytes-behind", CDdsFileBuilder().data(noise(9)));
}

/// @param uiData  bytes behind the header
void writeAstcFile(CCorpusFolder& corpus, const std::string& strName, const uint8_t (&aui8Block)[3], const uint32_t (&auiSize)[3],
                   uint32_t uiData)
{
    Bytes bytes = {0x13, 0xAB, 0xA1, 0x5C, aui8Block[0], aui8Block[1], aui8Block[2]};
    for (const uint32_t uiSize : auiSize)
        for (uint32_t uiShift = 0; uiShift < 24; uiShift += 8)
            bytes.push_back(static_cast<uint8_t>(uiSize >> uiShift));
    const Bytes data = noise(uiData);
    bytes.insert(bytes.end(), data.begin(), data.end());
    corpus.write(strName, bytes);
}

void writeAstc(CCorpusFolder& corpus)
{
    // Two blocks in each row, two rows.
    for (uint32_t i = ePF_ASTC_4x4; i <= ePF_ASTC_6x6x6; ++i)
    {
        const PixelFormatRow& row = getPixelFormatRow(i);
        const uint8_t aui8Block[] = {row.uiMinX, row.uiMinY, row.uiMinZ};
        const uint32_t auiSize[] = {row.uiMinX + 1u, row.uiMinY + 2u, 1};
        writeAstcFile(corpus, toFileName(getFormatName(static_cast<EMOXTPixelFormat>(i))), aui8Block, auiSize, 64);
    }
    writeAstcFile(corpus, "depth", {4, 4, 4}, {4, 4, 8}, 32);
    writeAstcFile(corpus, "depth-of-flat-blocks", {4, 4, 1}, {4, 4, 3}, 48);
    writeAstcFile(corpus, "size-0", {4, 4, 1}, {0, 0, 0}, 16);
    writeAstcFile(corpus, "size-far-too-much", {4, 4, 1}, {0xFFFFFF, 0xFFFFFF, 0xFFFFFF}, 16);
    writeAstcFile(corpus, "block-unknown", {4, 3, 1}, {4, 3, 1}, 16);
    writeAstcFile(corpus, "end-no-data", {4, 4, 1}, {4, 4, 1}, 0);
    writeAstcFile(corpus, "end-short-data", {4, 4, 1}, {8, 4, 1}, 17);
    writeAstcFile(corpus, "end-bytes-behind", {4, 4, 1}, {4, 4, 1}, 21);
}

void writeLegacy(CCorpusFolder& corpus)
{
    const auto make = [&](const std::string& strName, const CLegacyFileBuilder& builder) { corpus.write(strName, builder.bytes()); };
    // Types of every kind: blocks of each size, packed pairs, one bit, shared exponent, layouts of 1, 2, 3, 4, 6, 8 and 16 bytes.
    for (const uint32_t uiType : {0u,  2u,  4u,  5u,  9u,  10u, 11u, 12u, 13u,  18u,  28u,  29u,  32u,  33u, 34u,
                                  36u, 38u, 39u, 50u, 53u, 54u, 83u, 96u, 125u, 126u, 127u, 136u, 181u, 182u})
        for (const uint32_t uiHeaderSize : {44u, 52u})
            make("type-" + std::to_string(uiType) + "-header-" + std::to_string(uiHeaderSize),
                 CLegacyFileBuilder(uiHeaderSize).size(8, 8).flags(uiType).data(noise(64 * 16)));

    make("shape-levels", CLegacyFileBuilder().size(4, 2).levelsBelow(2).data(noise(44)));
    make("shape-cube", CLegacyFileBuilder().size(2, 2).flags(k_uiLegacyRGBA8 | 0x1000).surfaces(6).data(noise(96)));
    make("shape-cube-array", CLegacyFileBuilder().flags(k_uiLegacyRGBA8 | 0x1000).surfaces(12).data(noise(48)));
    make("shape-array", CLegacyFileBuilder().size(2, 2).surfaces(3).data(noise(48)));
    make("shape-far-too-much", CLegacyFileBuilder().size(k_uiHuge, k_uiHuge).surfaces(k_uiHuge).data(noise(4)));
    make("shape-no-level", CLegacyFileBuilder().levelsBelow(k_uiHuge).data(noise(4)));
    make("flags-bump-map-and-flip", CLegacyFileBuilder().flags(k_uiLegacyRGBA8 | 0x10500).data(noise(4)));
    make("flags-all", CLegacyFileBuilder().flags(0xFFFFFF00 | k_uiLegacyRGBA8).surfaces(6).data(noise(24)));
    make("end-no-data", CLegacyFileBuilder());
    make("end-short-data", CLegacyFileBuilder().size(4, 4).data(noise(5)));
    make("end-bytes-behind", CLegacyFileBuilder().data(noise(9)));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fputs("usage: make-container-corpora FOLDER\n", stderr);
        return 2;
    }
    struct Corpus
    {
        const char *strFolder, *strEnding;
        void (*write)(CCorpusFolder&);
    };
    const Corpus aCorpora[] = {{"KtxReader", ".ktx", writeKtx},
                               {"DdsReader", ".dds", writeDds},
                               {"AstcReader", ".astc", writeAstc},
                               {"LegacyReader", ".mox", writeLegacy}};
    bool bGood = true;
    for (const Corpus& corpus : aCorpora)
    {
        CCorpusFolder folder(std::string(argv[1]) + "/" + corpus.strFolder, corpus.strEnding);
        corpus.write(folder);
        bGood = folder.isGood() && bGood;
    }
    if (!bGood)
        std::fputs("make-container-corpora: could not write all files\n", stderr);
    return bGood ? 0 : 1;
}
