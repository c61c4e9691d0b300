#include "Dialogs/EncodeMessages.h"

#include <gtest/gtest.h>

#include "Support/QtSupport.h"

using namespace moxtexture;
using testsupport::CDialogAnswers;

namespace
{

void expectBox(const CDialogAnswers& answers, const char* pcTitle, const char* pcText)
{
    ASSERT_EQ(1u, answers.seen().size());
    const CDialogAnswers::Seen& seen = answers.seen()[0];
    EXPECT_EQ(pcTitle, seen.strTitle);
    EXPECT_EQ(pcText, seen.strText);
    EXPECT_EQ("", seen.strInformativeText);
    EXPECT_EQ(QMessageBox::Critical, seen.eIcon);
    EXPECT_EQ(QMessageBox::Ok, seen.buttons);
}

} // namespace

TEST(EncodeMessages, TellWhichStepFailed)
{
    struct Row
    {
        EEncodeResult eResult;
        const char* pcTitle;
        const char* pcText;
    };
    for (const Row& row :
         {Row{eEncodeFlipFailed, "Cannot Vertically Flip",
              "Unable to flip the texture - unknown reason. Please contact Bluedesk for support."},
          Row{eEncodeMIPMapsFailed, "Cannot Generate MIP-Maps",
              "Unable to generate MIP-Maps - unknown reason. Please contact Bluedesk for support."},
          Row{eEncodeFailed, "Cannot Encode", "Unable to encode the texture - unknown reason. Please contact Bluedesk for support."}})
    {
        CDialogAnswers answers;
        answers.thenPress(QMessageBox::Ok);
        showEncodeFailure(nullptr, row.eResult);
        expectBox(answers, row.pcTitle, row.pcText);
    }
}

TEST(EncodeMessages, AreSilentWhereNothingFailed)
{
    const CDialogAnswers answers;
    showEncodeFailure(nullptr, eEncodeDone);
    EXPECT_TRUE(answers.seen().empty());
}

TEST(EncodeMessages, TellOfOptionsThatCannotBe)
{
    CDialogAnswers answers;
    answers.thenPress(QMessageBox::Ok);
    showInvalidEncodeOptions(nullptr);
    expectBox(answers, "Cannot Encode", "Unable to encode as invalid options selected. Please check your pixel format and try again.");
}
