#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Codecs/ETC/EtcCompressImage.h"
#include "Codecs/ETC/EtcDecompressImage.h"
#include "Core/ByteOrder.h"
#include "Formats/PixelFormats.h"
#include "Library/Codecs/ETC/EtcInteropRenderer.h"
#include "Support/SeededPictures.h"

// Somebody else's decoder is handed the same blocks and has to see the same pixels, to the bit.

using namespace moxtexture;

namespace
{

using Bytes = std::vector<uint8_t>;

/// A format as both sides name it. The numbers of OpenGL are those of its registry.
struct Row
{
    const char* pcName;
    EMOXTPixelFormat eFormat;
    bool bSigned;
    uint32_t uiGLFormat;
    uint32_t uiBlockBytes;
    uint32_t uiChannels, uiChannelBytes;
    double fMaximum; ///< the channel value that a shader sees as 1
};

constexpr Row k_aRows[] = {
    {"ETC1", ePF_ETC1, false, 0x8D64, 8, 3, 1, 255.0},
    {"ETC2 RGB", ePF_ETC2_RGB, false, 0x9274, 8, 3, 1, 255.0},
    {"ETC2 RGB A1", ePF_ETC2_RGB_A1, false, 0x9276, 8, 4, 1, 255.0},
    {"ETC2 RGBA", ePF_ETC2_RGBA, false, 0x9278, 16, 4, 1, 255.0},
    {"EAC R11", ePF_EAC_R11, false, 0x9270, 8, 1, 2, 65535.0},
    {"EAC R11 signed", ePF_EAC_R11, true, 0x9271, 8, 1, 2, 32767.0},
    {"EAC RG11", ePF_EAC_RG11, false, 0x9272, 16, 2, 2, 65535.0},
    {"EAC RG11 signed", ePF_EAC_RG11, true, 0x9273, 16, 2, 2, 32767.0},
};

enum EMode
{
    eIndividual,
    eDifferential,
    eT,
    eH,
    ePlanar,
    eModes
};

/// The mode of a colour block, by the published order of tests: the first of red, green and blue whose sum leaves 0 to 31.
EMode modeOf(const uint8_t* pui8Block)
{
    if ((pui8Block[3] & 2) == 0)
        return eIndividual;
    for (uint32_t uiChannel = 0; uiChannel < 3; ++uiChannel)
    {
        const int iBase = pui8Block[uiChannel] >> 3, iDelta = pui8Block[uiChannel] & 7;
        const int iSum = iBase + (iDelta < 4 ? iDelta : iDelta - 8);
        if (iSum < 0 || iSum > 31)
            return uiChannel == 0 ? eT : (uiChannel == 1 ? eH : ePlanar);
    }
    return eDifferential;
}

size_t countBlocks(uint32_t uiWidth, uint32_t uiHeight)
{
    return size_t{(uiWidth + 3) / 4} * ((uiHeight + 3) / 4);
}

Bytes makeBlocks(const Row& row, uint32_t uiWidth, uint32_t uiHeight)
{
    Bytes blocks = testsupport::CSeededRandom(uiWidth * 1000 + uiHeight).bytes(countBlocks(uiWidth, uiHeight) * row.uiBlockBytes);
    // The renderer reads sums of ETC1 that overflow in its own way, so there these blocks are of the other mode.
    if (row.eFormat == ePF_ETC1)
        for (size_t i = 0; i < blocks.size(); i += 8)
            if (modeOf(&blocks[i]) > eDifferential)
                blocks[i + 3] &= 0xFD;
    return blocks;
}

/// Our pixels as numbers, a row of channels a pixel.
std::vector<long> decodeHere(const Row& row, uint32_t uiWidth, uint32_t uiHeight, const Bytes& blocks)
{
    Bytes pixels(size_t{uiWidth} * uiHeight * row.uiChannels * row.uiChannelBytes);
    EXPECT_EQ(pixels.size(), etcDecompressImage(blocks.data(), pixels.data(), uiWidth, uiHeight, row.eFormat, row.bSigned));
    std::vector<long> values;
    for (size_t i = 0; i < pixels.size(); i += row.uiChannelBytes)
    {
        if (row.uiChannelBytes == 1)
            values.push_back(pixels[i]);
        else if (row.bSigned)
            values.push_back(static_cast<int16_t>(loadLE<uint16_t>(&pixels[i])));
        else
            values.push_back(loadLE<uint16_t>(&pixels[i]));
    }
    return values;
}

/// Theirs. What a shader sees is the number divided by its maximum; channels that the format does not have are left out.
std::vector<long> decodeThere(const Row& row, uint32_t uiWidth, uint32_t uiHeight, const Bytes& blocks)
{
    // Never ended: what a driver keeps to itself is told as a leak once the driver is unloaded.
    static etcinterop::CSoftwareRenderer& renderer = *new etcinterop::CSoftwareRenderer;
    EXPECT_EQ("", renderer.getProblem());
    if (!renderer.getProblem().empty())
        return {};
    const std::vector<float> texels = renderer.readTexels(row.uiGLFormat, uiWidth, uiHeight, blocks);
    EXPECT_EQ(size_t{uiWidth} * uiHeight * 4, texels.size());
    std::vector<long> values;
    for (size_t i = 0; i < texels.size(); ++i)
        if (i % 4 < row.uiChannels)
            values.push_back(std::lround(static_cast<double>(texels[i]) * row.fMaximum));
    return values;
}

void expectAlike(const Row& row, uint32_t uiWidth, uint32_t uiHeight, const Bytes& blocks)
{
    SCOPED_TRACE(std::string(row.pcName) + " " + std::to_string(uiWidth) + " by " + std::to_string(uiHeight));
    const std::vector<long> here = decodeHere(row, uiWidth, uiHeight, blocks), there = decodeThere(row, uiWidth, uiHeight, blocks);
    ASSERT_EQ(there.size(), here.size());
    for (size_t i = 0; i < here.size(); ++i)
        ASSERT_EQ(there[i], here[i]) << "pixel " << i / row.uiChannels % uiWidth << ", " << i / row.uiChannels / uiWidth << " channel "
                                     << i % row.uiChannels;
}

/// A picture in the form that the format's encoder takes.
Bytes makeSource(const Row& row, uint32_t uiWidth, uint32_t uiHeight)
{
    const Bytes picture = testsupport::makePicture(uiWidth, uiHeight, 7);
    Bytes source;
    for (size_t i = 0; i < picture.size(); i += 4)
        for (uint32_t uiChannel = 0; uiChannel < row.uiChannels; ++uiChannel)
        {
            if (row.uiChannelBytes == 2)
                source.push_back(picture[i + 3 - uiChannel]); // the low byte, so that words are not all of one kind
            source.push_back(picture[i + uiChannel]);
        }
    return source;
}

Bytes encode(const Row& row, uint32_t uiWidth, uint32_t uiHeight, uint32_t uiQuality)
{
    const Bytes source = makeSource(row, uiWidth, uiHeight);
    Bytes blocks(countBlocks(uiWidth, uiHeight) * row.uiBlockBytes);
    EXPECT_EQ(blocks.size(), etcCompressImage(source.data(), blocks.data(), uiWidth, uiHeight, uiQuality, row.eFormat, row.bSigned));
    return blocks;
}

} // namespace

TEST(EtcInterop, AnyBlockIsTheSamePixelsToAnotherDecoder)
{
    for (const Row& row : k_aRows)
        expectAlike(row, 512, 256, makeBlocks(row, 512, 256));
}

TEST(EtcInterop, TheBlocksThatAreComparedHaveEveryMode)
{
    for (const Row& row : k_aRows)
        if (row.uiChannelBytes == 1)
        {
            const Bytes blocks = makeBlocks(row, 512, 256);
            size_t auiCount[eModes] = {};
            for (size_t i = row.uiBlockBytes - 8; i < blocks.size(); i += row.uiBlockBytes)
                ++auiCount[modeOf(&blocks[i])];
            for (size_t uiMode = eIndividual; uiMode < eModes; ++uiMode)
                EXPECT_EQ(row.eFormat != ePF_ETC1 || uiMode <= eDifferential, auiCount[uiMode] > 100) << row.pcName << ' ' << uiMode;
        }
}

TEST(EtcInterop, SurfacesOfOddSizesAreCutAlike)
{
    for (const Row& row : k_aRows)
        for (uint32_t uiSize = 1; uiSize <= 9; ++uiSize)
        {
            expectAlike(row, uiSize, 3, makeBlocks(row, uiSize, 3));
            expectAlike(row, 13 - uiSize, uiSize, makeBlocks(row, 13 - uiSize, uiSize));
        }
}

TEST(EtcInterop, WhatIsEncodedIsTheSamePictureToAnotherDecoder)
{
    for (const Row& row : k_aRows)
    {
        for (const uint32_t uiQuality : {0u, 1u})
            expectAlike(row, 61, 42, encode(row, 61, 42, uiQuality));
        for (const uint32_t uiQuality : {2u, 3u})
            expectAlike(row, 14, 11, encode(row, 14, 11, uiQuality));
    }
}
