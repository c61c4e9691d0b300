// make-etc-corpus FOLDER: writes the seed corpus of EtcDecoderFuzz. The same files on every run.
//
// A file is the format's number, 1 for signed words, width and height less 1, and blocks.

#include <cstdio>
#include <string>

#include "Formats/FormatNames.h"
#include "Formats/PixelFormats.h"
#include "Fuzz/CorpusFolder.h"
#include "Support/SeededPictures.h"

using namespace moxtexture;
using fuzzsupport::toFileName;
using Bytes = std::vector<uint8_t>;

namespace
{

struct Size
{
    uint8_t ui8Width, ui8Height;
};

Bytes makeFile(uint8_t ui8Format, bool bSigned, Size size, const Bytes& blocks)
{
    Bytes file = {ui8Format, bSigned ? uint8_t{1} : uint8_t{0}, static_cast<uint8_t>(size.ui8Width - 1),
                  static_cast<uint8_t>(size.ui8Height - 1)};
    file.insert(file.end(), blocks.begin(), blocks.end());
    return file;
}

/// Blocks of every mode, a mode a row, with a base and a difference of each channel in the first three bytes, as published. The last byte
/// of the high word has the bit that tells differential from individual, or opaque from transparent, as bit 1.
Bytes makeModes(uint8_t ui8Format)
{
    const Bytes aColours[] = {{0x1E, 0xF0, 0x78}, {0x84, 0x43, 0xF8}, {0xFB, 0x84, 0x43}, {0x84, 0x04, 0x43}, {0x84, 0x43, 0xFF}};
    Bytes blocks;
    for (const Bytes& colours : aColours)
        for (const uint8_t ui8Bits : Bytes{0x00, 0x01, 0x02, 0xE3, 0xFE, 0xFF})
        {
            if (ui8Format == ePF_ETC2_RGBA)
                blocks.insert(blocks.end(), {0x80, 0x5D, 0x01, 0x23, 0x45, 0x67, 0x89, 0xAB});
            blocks.insert(blocks.end(), colours.begin(), colours.end());
            blocks.insert(blocks.end(), {ui8Bits, 0x0F, 0x33, 0x55, 0xA5});
        }
    return blocks;
}

/// Bases, and multipliers with tables, at their ends, with every index.
Bytes makeEnds()
{
    Bytes blocks;
    for (const uint8_t ui8Base : Bytes{0x00, 0x7F, 0x80, 0x81, 0xFF})
        for (const uint8_t ui8Row : Bytes{0x00, 0x0D, 0x10, 0xF0, 0xFF})
            blocks.insert(blocks.end(), {ui8Base, ui8Row, 0x05, 0x39, 0x77, 0xFA, 0xC6, 0x88});
    return blocks;
}

bool writeCorpus(const std::string& strFolder)
{
    fuzzsupport::CCorpusFolder corpus(strFolder, ".blocks");
    for (const EMOXTPixelFormat eFormat : {ePF_ETC1, ePF_ETC2_RGB, ePF_ETC2_RGBA, ePF_ETC2_RGB_A1, ePF_EAC_R11, ePF_EAC_RG11})
    {
        const auto ui8Format = static_cast<uint8_t>(eFormat);
        const bool bWords = ui8Format == ePF_EAC_R11 || ui8Format == ePF_EAC_RG11;
        for (const bool bSigned : {false, true})
        {
            const std::string strFormat = toFileName(getFormatName(eFormat)) + (bSigned ? "-signed" : "");
            for (const Size size : {Size{32, 32}, Size{1, 1}, Size{5, 3}, Size{31, 6}})
                corpus.write("noise-" + strFormat + "-" + std::to_string(size.ui8Width) + "x" + std::to_string(size.ui8Height),
                             makeFile(ui8Format, bSigned, size, testsupport::CSeededRandom(ui8Format).bytes(512)));
            if (bWords)
                corpus.write("ends-" + strFormat, makeFile(ui8Format, bSigned, {20, 20}, makeEnds()));
            else if (!bSigned)
                corpus.write("modes-" + strFormat, makeFile(ui8Format, bSigned, {24, 20}, makeModes(ui8Format)));
        }
    }
    corpus.write("format-none", makeFile(7, false, {4, 4}, Bytes(8)));
    corpus.write("format-unknown", makeFile(255, true, {4, 4}, Bytes(8)));
    return corpus.isGood();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2)
    {
        std::fputs("usage: make-etc-corpus FOLDER\n", stderr);
        return 2;
    }
    if (writeCorpus(argv[1]))
        return 0;
    std::fputs("make-etc-corpus: could not write all files\n", stderr);
    return 1;
}
