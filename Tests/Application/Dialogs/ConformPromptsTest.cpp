#include "Dialogs/ConformPrompts.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "Support/QtSupport.h"

using moxtexture::CMOXTexture;
using moxtexture::CMOXTextureHeader;
using testsupport::CDialogAnswers;

namespace
{

CMOXTextureHeader makeHeader(uint32_t uiSide, uint32_t uiLevels, uint32_t uiMembers, uint32_t uiFaces,
                             moxtexture::MOXPixelWord format = moxtexture::k_RGBA8)
{
    return CMOXTextureHeader(format, uiSide, uiSide, 1, uiLevels, uiMembers, uiFaces, moxtexture::eCS_Linear,
                             moxtexture::eCT_UnsignedNormalisedByte, false);
}

CMOXTexture makeTexture(uint32_t uiSide, uint32_t uiLevels = 1, uint32_t uiMembers = 1, uint32_t uiFaces = 1)
{
    return CMOXTexture(makeHeader(uiSide, uiLevels, uiMembers, uiFaces));
}

bool conform(const CMOXTextureHeader& reference, CMOXTexture& texture, bool bSilent = false)
{
    return conformTextures({nullptr, &reference}, &texture, 1, bSilent, true, true, true, true);
}

constexpr char k_acSizeQuestion[] = "One or more textures have different dimensions.\n\n"
                                    "To proceed, these will be resized with a linear filter.\n";
constexpr char k_acMIPQuestion[] = "One or more textures have a different number of MIP Maps.\n\n"
                                   "These will be regenerated with a linear filter.\n";
constexpr char k_acSurfaceQuestion[] = "One or more textures have a different number of surfaces.\n\n"
                                       "These will be copied in succession until the numbers match.\n";

void expectQuestion(const CDialogAnswers::Seen& seen, const char* strTitle, const char* strText, QMessageBox::StandardButton eRefusal)
{
    EXPECT_EQ(strTitle, seen.strTitle);
    EXPECT_EQ(strText, seen.strText);
    EXPECT_EQ(QMessageBox::Warning, seen.eIcon);
    EXPECT_EQ(QMessageBox::Ok | eRefusal, seen.buttons);
    EXPECT_EQ(QMessageBox::Ok, seen.eDefaultButton);
}

} // namespace

TEST(ConformPrompts, WithoutAReferenceFailWithoutAWord)
{
    CDialogAnswers answers;
    CMOXTexture texture = makeTexture(4);
    EXPECT_FALSE(conformTextures({}, &texture, 1, false, true, true, true, true));
    EXPECT_FALSE(conformTextures({}, nullptr, 0, false, true, true, true, true));
    EXPECT_TRUE(answers.seen().empty());
}

TEST(ConformPrompts, WithoutTexturesSucceedWithoutAWord)
{
    CDialogAnswers answers;
    const CMOXTextureHeader reference = makeHeader(8, 1, 1, 1);
    CMOXTexture texture = makeTexture(4);
    EXPECT_TRUE(conformTextures({nullptr, &reference}, nullptr, 1, false, true, true, true, true));
    EXPECT_TRUE(conformTextures({nullptr, &reference}, &texture, 0, false, true, true, true, true));
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_TRUE(answers.seen().empty());
}

TEST(ConformPrompts, AskNothingOfTexturesThatAreAlike)
{
    CDialogAnswers answers;
    CMOXTexture texture = makeTexture(4, 2, 3, 6);
    EXPECT_TRUE(conform(makeHeader(4, 2, 3, 6), texture));
    EXPECT_TRUE(answers.seen().empty());
}

TEST(ConformPrompts, AskAboutSizesFirstThenLevelsThenSurfaces)
{
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok).thenPress(QMessageBox::Ok).thenPress(QMessageBox::Ok);
    CMOXTexture texture = makeTexture(4);
    EXPECT_TRUE(conform(makeHeader(8, 3, 2, 6), texture));
    ASSERT_EQ(3u, answers.seen().size());
    expectQuestion(answers.seen()[0], "Size Mis-match", k_acSizeQuestion, QMessageBox::Cancel);
    expectQuestion(answers.seen()[1], "MIP-Map Mis-match", k_acMIPQuestion, QMessageBox::Abort);
    expectQuestion(answers.seen()[2], "Array/Face Mis-match", k_acSurfaceQuestion, QMessageBox::Cancel);
    EXPECT_EQ(8u, texture.getWidth());
    EXPECT_EQ(8u, texture.getHeight());
    EXPECT_EQ(3u, texture.getNumMIPLevels());
    EXPECT_EQ(2u, texture.getNumArrayMembers());
    EXPECT_EQ(6u, texture.getNumFaces());
}

TEST(ConformPrompts, EndAtTheFirstRefusalWithWhatWasDoneUntilThen)
{
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Cancel);
        CMOXTexture texture = makeTexture(4);
        EXPECT_FALSE(conform(makeHeader(8, 3, 2, 6), texture));
        EXPECT_EQ(1u, answers.seen().size());
        EXPECT_EQ(4u, texture.getWidth());
    }
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Ok).thenPress(QMessageBox::Abort);
        CMOXTexture texture = makeTexture(4);
        EXPECT_FALSE(conform(makeHeader(8, 3, 2, 6), texture));
        EXPECT_EQ(2u, answers.seen().size());
        EXPECT_EQ(8u, texture.getWidth());
        EXPECT_EQ(1u, texture.getNumMIPLevels());
    }
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Ok).thenPress(QMessageBox::Ok).thenReject(); // closed by its frame
        CMOXTexture texture = makeTexture(4);
        EXPECT_FALSE(conform(makeHeader(8, 3, 2, 6), texture));
        EXPECT_EQ(3u, answers.seen().size());
        EXPECT_EQ(3u, texture.getNumMIPLevels());
        EXPECT_EQ(1u, texture.getNumFaces());
    }
}

TEST(ConformPrompts, AskOnceForAllTextures)
{
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    const CMOXTextureHeader reference = makeHeader(8, 1, 1, 1);
    std::vector<CMOXTexture> textures = {makeTexture(4), makeTexture(8), makeTexture(2)};
    EXPECT_TRUE(conformTextures({nullptr, &reference}, textures.data(), 3, false, true, true, false, false));
    EXPECT_EQ(1u, answers.seen().size());
    for (const CMOXTexture& texture : textures)
        EXPECT_EQ(8u, texture.getWidth());
}

TEST(ConformPrompts, LeaveAloneWhatIsNotToBeMatched)
{
    CDialogAnswers answers;
    const CMOXTextureHeader reference = makeHeader(8, 3, 2, 6);
    CMOXTexture texture = makeTexture(4);
    EXPECT_TRUE(conformTextures({nullptr, &reference}, &texture, 1, false, false, false, false, false));
    EXPECT_TRUE(answers.seen().empty());
    EXPECT_EQ(4u, texture.getWidth());
    EXPECT_EQ(1u, texture.getNumMIPLevels());
    EXPECT_EQ(1u, texture.getNumFaces());
}

TEST(ConformPrompts, MatchFacesWithoutMembersAndMembersWithoutFaces)
{
    const CMOXTextureHeader reference = makeHeader(4, 1, 2, 6);
    for (const bool bFaces : {true, false})
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Ok);
        CMOXTexture texture = makeTexture(4);
        EXPECT_TRUE(conformTextures({nullptr, &reference}, &texture, 1, false, true, true, bFaces, !bFaces));
        EXPECT_EQ(1u, answers.seen().size());
        EXPECT_EQ(bFaces ? 6u : 1u, texture.getNumFaces());
        EXPECT_EQ(bFaces ? 1u : 2u, texture.getNumArrayMembers());
    }
}

// The question comes of any difference of the surfaces, also of one that is not asked for.
TEST(ConformPrompts, AskForFacesWhereOnlyTheMembersDiffer)
{
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    const CMOXTextureHeader reference = makeHeader(4, 1, 2, 6);
    CMOXTexture texture = makeTexture(4, 1, 1, 6);
    EXPECT_TRUE(conformTextures({nullptr, &reference}, &texture, 1, false, true, true, true, false));
    EXPECT_EQ(1u, answers.seen().size());
    EXPECT_EQ(1u, texture.getNumArrayMembers());
}

TEST(ConformPrompts, SayNothingWhileSilent)
{
    CDialogAnswers answers;
    CMOXTexture texture = makeTexture(4);
    EXPECT_TRUE(conform(makeHeader(8, 3, 2, 6), texture, true));
    EXPECT_EQ(8u, texture.getWidth());
    EXPECT_EQ(6u, texture.getNumFaces());
    CMOXTexture compressed{makeHeader(4, 1, 1, 1, moxtexture::ePF_BC1)};
    EXPECT_FALSE(conform(makeHeader(8, 1, 1, 1), compressed, true));
    EXPECT_TRUE(answers.seen().empty());
}

// No codec's blocks can be resized or given levels.
TEST(ConformPrompts, TellOfAStepThatFailsAndEndThere)
{
    struct Row
    {
        CMOXTextureHeader reference;
        const char* strTitle;
        const char* strText;
    };
    const Row aRows[] = {
        {makeHeader(8, 2, 2, 1), "Resize Error",
         "Unable to resize the given texture.\n\nIf this problem persists, please contact Bluedesk for further support."},
        {makeHeader(4, 2, 2, 1), "MIP Mapping Error",
         "Unable to produce MIP Maps for the given texture.\nIf this problem persists, please contact Bluedesk for further support."},
    };
    for (const Row& row : aRows)
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Ok).thenPress(QMessageBox::Ok);
        CMOXTexture compressed{makeHeader(4, 1, 1, 1, moxtexture::ePF_BC1)};
        EXPECT_FALSE(conform(row.reference, compressed));
        ASSERT_EQ(2u, answers.seen().size());
        EXPECT_EQ(row.strTitle, answers.seen()[1].strTitle);
        EXPECT_EQ(row.strText, answers.seen()[1].strText);
        EXPECT_EQ(QMessageBox::Critical, answers.seen()[1].eIcon);
    }
}

TEST(ConformPrompts, HaveNoMessageForSurfacesThatCannotBeCopied)
{
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    CMOXTexture texture = makeTexture(4, 1, 0, 1);
    EXPECT_FALSE(conform(makeHeader(4, 1, 2, 1), texture));
    EXPECT_EQ(1u, answers.seen().size());
}

// On purpose: what differs is noted once, before the first step.
TEST(ConformPrompts, DoNotAskForLevelsThatWereLostToTheResizing)
{
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    CMOXTexture texture = makeTexture(4, 3);
    EXPECT_TRUE(conform(makeHeader(8, 3, 1, 1), texture));
    EXPECT_EQ(1u, answers.seen().size());
    EXPECT_EQ(1u, texture.getNumMIPLevels());
}

TEST(ConformPrompts, LetTheReferenceBeOneOfTheTextures)
{
    std::vector<CMOXTexture> textures = {makeTexture(4, 2, 2, 1), makeTexture(8, 1, 1, 1)};
    EXPECT_TRUE(conformTextures({nullptr, &textures[0]}, textures.data(), 2, true, true, true, true, true));
    EXPECT_EQ(4u, textures[1].getWidth());
    EXPECT_EQ(2u, textures[1].getNumMIPLevels());
    EXPECT_EQ(2u, textures[1].getNumArrayMembers());
}
