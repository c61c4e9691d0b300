#include "Common/FeedbackDialog.h"

#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <QtTest/QTest>
#include <QtWidgets/QDialogButtonBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPlainTextEdit>
#include <QtWidgets/QPushButton>
#include <gtest/gtest.h>

#include "OpenedUrls.h"
#include "Support/QtSupport.h"

namespace
{

QString textOf(const FeedbackDialog& dialog, const char* pName)
{
    const auto* pLabel = dialog.findChild<QLabel*>(pName);
    EXPECT_NE(nullptr, pLabel) << pName;
    return pLabel->text();
}

void expectTexts(const FeedbackDialog& dialog)
{
    EXPECT_EQ("Dialog", dialog.windowTitle());
    EXPECT_EQ("Post your feedback in the Moxhub Forum:", textOf(dialog, "Label_Forum"));
    EXPECT_EQ("Send your feedback to Bluedesk", textOf(dialog, "Label_Support"));
    EXPECT_EQ("Please include the following text in your feedback", textOf(dialog, "Label_RequiredText"));
    EXPECT_EQ("Select text [Ctrl+A] and copy [Ctrl + C].", textOf(dialog, "Label_SelectText"));
    EXPECT_EQ("Halvane 4.23.0", dialog.findChild<QPlainTextEdit*>("RequiredText")->toPlainText());
}

} // namespace

TEST(Feedback, TellsWhereItGoesAndWhatToSend)
{
    const FeedbackDialog dialog("Halvane 4.23.0", nullptr);
    expectTexts(dialog);
    EXPECT_TRUE(dialog.isModal());
}

TEST(Feedback, KeepsItsTextsInEveryLanguage)
{
    FeedbackDialog dialog("Halvane 4.23.0", nullptr);
    for (const int32_t i32Language : {0, 1, -1, 1000})
    {
        dialog.translateUI(i32Language);
        expectTexts(dialog);
    }
    EXPECT_TRUE(textOf(dialog, "ForumLabel").contains("https://forum.example.com/halvane"));
}

TEST(Feedback, TheTextIsSelectedAndCopiedByTheKeysThatItTells)
{
    FeedbackDialog dialog("Halvane 4.23.0", nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto* pText = dialog.findChild<QPlainTextEdit*>("RequiredText");
    EXPECT_TRUE(pText->hasFocus());
    QGuiApplication::clipboard()->clear();

    QTest::keyClick(pText, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ("Halvane 4.23.0", pText->textCursor().selectedText());
    QTest::keyClick(pText, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ("Halvane 4.23.0", QGuiApplication::clipboard()->text());
}

TEST(Feedback, TheTextCannotBeChanged)
{
    FeedbackDialog dialog("Halvane 4.23.0", nullptr);
    dialog.show();
    auto* pText = dialog.findChild<QPlainTextEdit*>("RequiredText");
    EXPECT_TRUE(pText->isReadOnly());
    QTest::keyClick(pText, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(pText, "other");
    QTest::keyClick(pText, Qt::Key_Delete);
    EXPECT_EQ("Halvane 4.23.0", pText->toPlainText());
}

TEST(Feedback, ItsLinksOpenByKeyboardAndMouse)
{
    const COpenedUrls opened({"mailto", "https"});
    FeedbackDialog dialog("Halvane 4.23.0", nullptr);
    dialog.show();
    dialog.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    auto* pForum = dialog.findChild<QLabel*>("ForumLabel");
    auto* pSupport = dialog.findChild<QLabel*>("SupportLabel");

    QTest::mouseClick(pForum, Qt::LeftButton, {}, {10, pForum->height() / 2});
    EXPECT_EQ("https://forum.example.com/halvane\n", opened.seen());

    pForum->setFocus();
    QTest::keyClick(pForum, Qt::Key_Tab);
    EXPECT_TRUE(pSupport->hasFocus());
    QTest::keyClick(pSupport, Qt::Key_Return);
    EXPECT_EQ("https://forum.example.com/halvane\nmailto:support@example.com\n", opened.seen());
    EXPECT_TRUE(dialog.isVisible());
}

TEST(Feedback, ClosesByItsButton)
{
    FeedbackDialog dialog("Halvane 4.23.0", nullptr);
    testsupport::CDialogAnswers answers;
    answers.thenDo([](QDialog& shown) { shown.findChild<QDialogButtonBox*>("Butt_Box")->button(QDialogButtonBox::Close)->click(); });
    dialog.exec();
    ASSERT_EQ(1U, answers.seen().size());
    EXPECT_EQ("Dialog", answers.seen()[0].strTitle);
}
