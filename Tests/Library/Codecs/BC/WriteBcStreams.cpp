#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Codecs/BC/BcCompress.h"
#include "Codecs/BC/BcDecompress.h"
#include "Core/ByteOrder.h"
#include "Support/SeededPictures.h"

// Writes streams of blocks as minimal DDS files, and beside each the pixels that this library decodes from it (32-bit RGBA rows),
// so that another program's pixels can be compared with ours.
//
//     WriteBcStreams FOLDER     gives FOLDER/<DXT1|DXT3|DXT5>-<random|picture>.dds and .rgba

namespace
{

using namespace moxtexture;

constexpr uint32_t k_uiSide = 128;

/// A type of block and the FourCC that a DDS file has for it.
struct StreamType
{
    uint32_t uiType;
    const char* pFourCC;
};

constexpr StreamType k_aStreamTypes[] = {{1, "DXT1"}, {3, "DXT3"}, {5, "DXT5"}};

/// The header of a DDS file with one surface: magic number, then 31 words. Published: the DDS programming guide.
std::vector<uint8_t> makeDdsHeader(const StreamType& type, size_t uiBytes)
{
    std::vector<uint8_t> header(128);
    const auto put = [&header](size_t uiOffset, uint32_t uiValue) { storeLE(header.data() + uiOffset, uiValue); };
    const auto putFourCC = [&header](size_t uiOffset, const char* pText)
    { std::copy_n(pText, 4, header.begin() + static_cast<long>(uiOffset)); };
    putFourCC(0, "DDS ");
    put(4, 124);                                // size of the header
    put(8, 0x1 | 0x2 | 0x4 | 0x1000 | 0x80000); // caps, height, width, pixel format, linear size
    put(12, k_uiSide);
    put(16, k_uiSide);
    put(20, static_cast<uint32_t>(uiBytes));
    put(76, 32); // size of the pixel format
    put(80, 0x4);
    putFourCC(84, type.pFourCC);
    put(108, 0x1000); // a texture
    return header;
}

bool writeFile(const std::string& strPath, const std::vector<uint8_t>& first, const std::vector<uint8_t>& second)
{
    std::FILE* pFile = std::fopen(strPath.c_str(), "wb");
    if (pFile == nullptr)
        return false;
    const bool bWritten = std::fwrite(first.data(), 1, first.size(), pFile) == first.size() &&
                          std::fwrite(second.data(), 1, second.size(), pFile) == second.size();
    return std::fclose(pFile) == 0 && bWritten;
}

bool writeStream(const std::string& strStem, const StreamType& type, const std::vector<uint8_t>& blocks)
{
    std::vector<uint8_t> pixels(size_t{k_uiSide} * k_uiSide * 4);
    return bcDecompressImage(blocks.data(), pixels.data(), k_uiSide, k_uiSide, type.uiType) == pixels.size() &&
           writeFile(strStem + ".dds", makeDdsHeader(type, blocks.size()), blocks) && writeFile(strStem + ".rgba", {}, pixels);
}

bool writeStreamsOf(const std::string& strFolder, const StreamType& type)
{
    const std::string strStem = strFolder + "/" + type.pFourCC;
    const std::vector<uint8_t> picture = testsupport::makePicture(k_uiSide, k_uiSide, 20);
    std::vector<uint8_t> blocks(bcCompressImage(nullptr, nullptr, k_uiSide, k_uiSide, type.uiType));
    if (bcCompressImage(picture.data(), blocks.data(), k_uiSide, k_uiSide, type.uiType) != blocks.size())
        return false;
    const std::vector<uint8_t> random = testsupport::CSeededRandom(type.uiType).bytes(blocks.size());
    return writeStream(strStem + "-picture", type, blocks) && writeStream(strStem + "-random", type, random);
}

} // namespace

int main(int iArguments, char** ppArguments)
{
    if (iArguments != 2)
    {
        std::fprintf(stderr, "usage: WriteBcStreams FOLDER\n");
        return 2;
    }
    for (const StreamType& type : k_aStreamTypes)
        if (!writeStreamsOf(ppArguments[1], type))
        {
            std::fprintf(stderr, "the streams of %s could not be written\n", type.pFourCC);
            return 1;
        }
    return 0;
}
