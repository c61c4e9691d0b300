#include "CommandLine/Target.h"

#include <gtest/gtest.h>

#include <CLI/CLI.hpp>

using namespace moxtexture;

namespace
{

/// The target of words for a texture; the fault in strText where there is none.
struct Resolved
{
    std::string strFault;  ///< of the words alone
    std::string strReason; ///< for that texture
    TargetEncoding target;
};

Resolved resolve(const std::vector<std::string>& words, const CMOXTextureHeader& source)
{
    CLI::App app;
    CTargetWords target;
    target.addOptions(app);
    std::vector<std::string> reversed(words.rbegin(), words.rend());
    app.parse(reversed);

    Resolved result;
    result.strFault = target.findFault();
    const std::optional<TargetEncoding> encoding = target.resolve(source, result.strReason);
    if (encoding)
        result.target = *encoding;
    return result;
}

CMOXTextureHeader makeHeader(MOXPixelWord pixelFormat, EMOXTChannelType eType, EMOXTColourSpace eSpace)
{
    return {pixelFormat, 4, 4, 1, 1, 1, 1, eSpace, eType, false};
}

const CMOXTextureHeader k_SignedBytes = makeHeader(layout("rg", 8, 8), eCT_SignedNormalisedByte, eCS_sRGB);

} // namespace

TEST(Target, IsTheTexturesOwnEncodingWithoutWords)
{
    const TargetEncoding target = resolve({}, k_SignedBytes).target;
    EXPECT_EQ(layout("rg", 8, 8).getWord(), target.pixelFormat.getWord());
    EXPECT_EQ(eCT_SignedNormalisedByte, target.eChannelType);
    EXPECT_EQ(eCS_sRGB, target.eColourSpace);
    EXPECT_FALSE(target.bDither);
}

TEST(Target, OfAFormatAloneHasItsUsualTypeAndTheTexturesSpace)
{
    const TargetEncoding target = resolve({"--format", "r10g10b10a2"}, k_SignedBytes).target;
    EXPECT_EQ(eCT_UnsignedNormalisedInteger, target.eChannelType);
    EXPECT_EQ(eCS_sRGB, target.eColourSpace);
}

TEST(Target, TakesEveryWordByItself)
{
    const TargetEncoding type = resolve({"--type", "2"}, k_SignedBytes).target;
    EXPECT_EQ(layout("rg", 8, 8).getWord(), type.pixelFormat.getWord());
    EXPECT_EQ(eCT_UnsignedByte, type.eChannelType);
    const TargetEncoding space = resolve({"--space", "lrgb"}, k_SignedBytes).target;
    EXPECT_EQ(eCT_SignedNormalisedByte, space.eChannelType);
    EXPECT_EQ(eCS_Linear, space.eColourSpace);
    const TargetEncoding all =
        resolve({"--format", "rgba-16-16-16-16", "--type", "SignedFloatingPoint", "--space", "LRGB", "--dither"}, k_SignedBytes).target;
    EXPECT_EQ(k_RGBA16.getWord(), all.pixelFormat.getWord());
    EXPECT_EQ(eCT_SignedFloatingPoint, all.eChannelType);
    EXPECT_TRUE(all.bDither);
}

TEST(Target, HasTheUsualQualityOfItsFormatOrTheOneAskedFor)
{
    EXPECT_EQ(2u, resolve({"--format", "moxtc-4bpp-rgb"}, k_SignedBytes).target.uiQuality);
    EXPECT_EQ(0u, resolve({"--format", "etc1"}, k_SignedBytes).target.uiQuality);
    EXPECT_EQ(2u, resolve({"--format", "astc 4x4"}, k_SignedBytes).target.uiQuality);
    EXPECT_EQ(0u, resolve({"--format", "bc1"}, k_SignedBytes).target.uiQuality);
    EXPECT_EQ(3u, resolve({"--format", "astc 4x4", "--quality", "Thorough"}, k_SignedBytes).target.uiQuality);
    EXPECT_EQ(2u, resolve({}, makeHeader(ePF_MOXTCII_4bpp, eCT_UnsignedNormalisedByte, eCS_Linear)).target.uiQuality);
    EXPECT_EQ(4u, resolve({"--quality", "very-high-(best-quality)"}, makeHeader(ePF_MOXTCII_4bpp, eCT_UnsignedNormalisedByte, eCS_Linear))
                      .target.uiQuality);
}

TEST(Target, OfAFormatWithOneQualityHasNumber0WhateverNumberIsAskedFor)
{
    for (const char* pcFormat : {"bc1", "etc2-rgb-a1", "eac-r11", "eac-rg11", "uyvy", "r8g8b8a8"})
        EXPECT_EQ(0u, resolve({"--format", pcFormat, "--quality", "77"}, k_SignedBytes).target.uiQuality) << pcFormat;
}

TEST(Target, IsRefusedForAQualityOfAnotherFormat)
{
    const Resolved named = resolve({"--format", "bc1", "--quality", "Thorough"}, k_SignedBytes);
    EXPECT_EQ("'Thorough' is no quality of BC1", named.strFault);
    // Without a format only the texture tells.
    const Resolved own = resolve({"--quality", "Thorough"}, k_SignedBytes);
    EXPECT_EQ("", own.strFault);
    EXPECT_EQ("'Thorough' is no quality of RG 8 8", own.strReason);
}

TEST(Target, IsRefusedForALayoutThatCannotHoldTheType)
{
    EXPECT_EQ("RGBA 8 8 8 8 cannot hold values of type Signed Floating Point",
              resolve({"--format", "r8g8b8a8", "--type", "12"}, k_SignedBytes).strFault);
    const Resolved own = resolve({"--type", "12"}, k_SignedBytes);
    EXPECT_EQ("", own.strFault);
    EXPECT_EQ("RG 8 8 cannot hold values of type Signed Floating Point", own.strReason);
}

TEST(Target, IsThatOfATextureWhateverItIs)
{
    // Nothing was asked of the encoding, so nothing is wrong with the words.
    const CMOXTextureHeader odd = makeHeader(k_RGBA8, eCT_SignedFloatingPoint, eCS_Linear);
    EXPECT_EQ("", resolve({}, odd).strReason);
}

TEST(HasEncoding, ComparesFormatTypeAndSpace)
{
    const TargetEncoding same{layout("rg", 8, 8), eCT_SignedNormalisedByte, eCS_sRGB, 3, true};
    EXPECT_TRUE(hasEncoding(k_SignedBytes, same));
    TargetEncoding other = same;
    other.pixelFormat = layout("gr", 8, 8);
    EXPECT_FALSE(hasEncoding(k_SignedBytes, other));
    other = same;
    other.eChannelType = eCT_UnsignedByte;
    EXPECT_FALSE(hasEncoding(k_SignedBytes, other));
    other = same;
    other.eColourSpace = eCS_Linear;
    EXPECT_FALSE(hasEncoding(k_SignedBytes, other));
}

TEST(HasEncoding, TakesACompressedTextureByTheTypeThatEncodingGives)
{
    // EAC is asked for as an integer and stored as the short that its decoder gives.
    const TargetEncoding target{ePF_EAC_R11, eCT_UnsignedNormalisedInteger, eCS_Linear, 0, false};
    EXPECT_TRUE(hasEncoding(makeHeader(ePF_EAC_R11, eCT_UnsignedNormalisedShort, eCS_Linear), target));
    EXPECT_TRUE(hasEncoding(makeHeader(ePF_EAC_R11, eCT_UnsignedNormalisedInteger, eCS_Linear), target));
    EXPECT_FALSE(hasEncoding(makeHeader(ePF_EAC_R11, eCT_SignedNormalisedShort, eCS_Linear), target));
}
