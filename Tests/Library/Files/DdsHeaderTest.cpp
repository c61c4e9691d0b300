#include "Files/DdsHeader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <vector>

using namespace moxtexture;

namespace
{

DdsHeader headerOfAllFields()
{
    DdsHeader dds;
    dds.ui32Flags = 0x0A0B0C01;
    dds.ui32Height = 0x0A0B0C02;
    dds.ui32Width = 0x0A0B0C03;
    dds.ui32PitchOrLinearSize = 0x0A0B0C04;
    dds.ui32Depth = 0x0A0B0C05;
    dds.ui32MIPCount = 0x0A0B0C06;
    dds.pixelFormat = {0x0A0B0C07, 0x0A0B0C08, 0x0A0B0C09, {0x0A0B0C0A, 0x0A0B0C0B, 0x0A0B0C0C, 0x0A0B0C0D}};
    dds.ui32Caps = 0x0A0B0C0E;
    dds.ui32Caps2 = 0x0A0B0C0F;
    return dds;
}

} // namespace

TEST(DdsHeader, EveryFieldStandsInItsPlaceLowestByteFirst)
{
    uint8_t aui8Record[128];
    headerOfAllFields().writeRecord(aui8Record);

    std::vector<uint8_t> expected = {'D', 'D', 'S', ' ', 124, 0, 0, 0};
    const auto add = [&](uint8_t uiLowest) { expected.insert(expected.end(), {uiLowest, 0x0C, 0x0B, 0x0A}); };
    for (uint8_t uiLowest = 1; uiLowest <= 6; ++uiLowest)
        add(uiLowest);
    expected.resize(expected.size() + 44);
    expected.insert(expected.end(), {32, 0, 0, 0});
    for (uint8_t uiLowest = 7; uiLowest <= 15; ++uiLowest)
        add(uiLowest);
    expected.resize(expected.size() + 12);
    EXPECT_EQ(expected, std::vector<uint8_t>(std::begin(aui8Record), std::end(aui8Record)));
}

TEST(DdsHeader, WhatWasWrittenIsReadBack)
{
    uint8_t aui8Record[128];
    headerOfAllFields().writeRecord(aui8Record);
    DdsHeader dds;
    ASSERT_TRUE(dds.readRecord(aui8Record));
    uint8_t aui8Again[128];
    dds.writeRecord(aui8Again);
    EXPECT_TRUE(std::equal(std::begin(aui8Record), std::end(aui8Record), std::begin(aui8Again)));
    EXPECT_EQ(0x0A0B0C05u, dds.ui32Depth);
    EXPECT_EQ(0x0A0B0C0Fu, dds.ui32Caps2);
}

TEST(DdsHeader, TheExtendedHeaderIsFiveWordsWithTheLastOfThemZero)
{
    const DdsExtendedHeader extended = {0x1C, 3, 4, 0x0102};
    uint8_t aui8Record[20];
    std::fill(std::begin(aui8Record), std::end(aui8Record), uint8_t{0xFF});
    extended.writeRecord(aui8Record);
    const std::vector<uint8_t> expected = {0x1C, 0, 0, 0, 3, 0, 0, 0, 4, 0, 0, 0, 2, 1, 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(expected, std::vector<uint8_t>(std::begin(aui8Record), std::end(aui8Record)));

    DdsExtendedHeader read;
    read.readRecord(aui8Record);
    EXPECT_EQ(0x1Cu, read.ui32Format);
    EXPECT_EQ(3u, read.ui32Dimension);
    EXPECT_EQ(4u, read.ui32MiscFlags);
    EXPECT_EQ(0x0102u, read.ui32ArraySize);
}

TEST(DdsHeader, ItIsExtendedByTheFlagAndTheLettersTogether)
{
    DdsHeader dds;
    EXPECT_TRUE(dds.isExtended()) << "as a writer starts";
    dds.pixelFormat.ui32Flags = 65;
    EXPECT_FALSE(dds.isExtended());
    dds.pixelFormat = {5, 0x30315844, 0, {}};
    EXPECT_TRUE(dds.isExtended());
    dds.pixelFormat.ui32FourCC = 0x31545844;
    EXPECT_FALSE(dds.isExtended());
}
