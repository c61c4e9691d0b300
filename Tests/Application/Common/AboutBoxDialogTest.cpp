#include "Common/AboutBoxDialog.h"

#include <memory>
#include <string>

#include <QtCore/QPointer>
#include <QtGui/QImage>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QLabel>
#include <gtest/gtest.h>

#include "OpenedUrls.h"
#include "Support/TemporaryFolder.h"
#include "TestPreferences.h"

namespace
{

const QString k_strUses = "Some library version 1.2 |\nAnother version 3.4";

/// The box over a parent window with a widget in it.
class AboutBox : public testing::Test
{
protected:
    AboutBox()
    {
        m_Parent.setGeometry(100, 120, 500, 300);
        m_Inner.setGeometry(10, 10, 50, 50);
        m_Parent.show();
        make(picture(640, 400));
    }

    QString picture(int iWidth, int iHeight, const std::string& strName = "picture.png") const
    {
        QImage image(iWidth, iHeight, QImage::Format_RGB32);
        image.fill(QColor(0, 0, 100));
        QString strPath = QString::fromStdString(m_Folder.path(strName));
        EXPECT_TRUE(image.save(strPath));
        return strPath;
    }

    void make(const QString& strImage)
    {
        m_pBox = std::make_unique<AboutBoxDialog>("Halvane 4.23.0", strImage, &m_Preferences, k_strUses, &m_Parent);
    }

    template <class T>
    T* child(const char* pName) const
    {
        T* pChild = m_pBox->findChild<T*>(pName);
        EXPECT_NE(nullptr, pChild) << pName;
        return pChild;
    }
    QString text(const char* pName) const { return child<QLabel>(pName)->text(); }
    QCheckBox* checkBox() const { return child<QCheckBox>("ShowAtStartUpCB"); }

    /// Where the middle of the parent wants it.
    QPoint centred() const { return m_Parent.frameGeometry().topLeft() + m_Parent.rect().center() - m_pBox->rect().center(); }

    testsupport::CTemporaryFolder m_Folder;
    CTestPreferences m_Preferences;
    QWidget m_Parent;
    QWidget m_Inner{&m_Parent};
    std::unique_ptr<AboutBoxDialog> m_pBox;
};

constexpr char k_acKey[] = "Halvane/About/ShowSplash";

} // namespace

TEST_F(AboutBox, TellsNameVersionBuildAndLibraries)
{
    EXPECT_EQ("About", m_pBox->windowTitle());
    EXPECT_EQ("Halvane 4.23.0 (SDK build 19.2@5581729)", text("AppVersionLabel"));
    EXPECT_EQ(k_strUses + " | Qt version " + qVersion(), text("UsesLabel"));
    EXPECT_EQ("Show at startup", checkBox()->text());
    EXPECT_FALSE(m_pBox->isModal());
}

TEST_F(AboutBox, ShowsAtStartUpUnlessToldOtherwise)
{
    EXPECT_TRUE(m_pBox->getShowAtStartUp());
    EXPECT_TRUE(checkBox()->isChecked());

    m_Preferences.setBool(k_acKey, false);
    make(picture(640, 400));
    EXPECT_FALSE(m_pBox->getShowAtStartUp());
    EXPECT_FALSE(checkBox()->isChecked());
}

TEST_F(AboutBox, TheCheckBoxIsStoredAndSavedAtOnce)
{
    checkBox()->click();
    bool bStored = true;
    EXPECT_EQ(Preferences::eDone, m_Preferences.startAgain().getBool(k_acKey, bStored));
    EXPECT_FALSE(bStored);
    EXPECT_FALSE(m_pBox->getShowAtStartUp());

    checkBox()->click();
    EXPECT_EQ(Preferences::eDone, m_Preferences.startAgain().getBool(k_acKey, bStored));
    EXPECT_TRUE(bStored);
    EXPECT_TRUE(m_pBox->getShowAtStartUp());
}

TEST_F(AboutBox, MakingItStoresNothing)
{
    bool bStored = true;
    EXPECT_EQ(Preferences::eKeyNotFound, m_Preferences.getBool(k_acKey, bStored));
}

TEST(AboutBoxWithoutPreferences, ShowsAtStartUp)
{
    AboutBoxDialog box("Halvane 4.23.0", "no such picture.png", nullptr, k_strUses, nullptr);
    EXPECT_TRUE(box.getShowAtStartUp());
    box.findChild<QCheckBox*>("ShowAtStartUpCB")->click();
    EXPECT_TRUE(box.getShowAtStartUp());
    box.showCentred();
    EXPECT_TRUE(box.isVisible());
}

TEST_F(AboutBox, HasTheSizeOfAPictureThatHoldsItsTexts)
{
    make(picture(1600, 1000));
    EXPECT_EQ(QSize(1600, 1000), m_pBox->size());
}

TEST_F(AboutBox, AWindowWiderThanThePictureBecomesHigher)
{
    make(picture(10, 20)); // the texts are far wider
    EXPECT_EQ(2 * m_pBox->width(), m_pBox->height());
    EXPECT_LE(m_pBox->sizeHint().width(), m_pBox->width());
    EXPECT_LE(m_pBox->sizeHint().height(), m_pBox->height());
}

TEST_F(AboutBox, AWindowHigherThanThePictureBecomesWider)
{
    make(picture(2000, 10));
    const int iNeeded = m_pBox->sizeHint().height();
    EXPECT_EQ(QSize(200 * iNeeded, iNeeded), m_pBox->size());
}

TEST_F(AboutBox, ItsTextsStandInWhiteOnThePicture)
{
    EXPECT_EQ(QColor(0, 0, 100), m_pBox->grab().toImage().pixelColor(m_pBox->width() / 2, m_pBox->height() / 3));
    EXPECT_EQ(m_pBox->size(), m_pBox->palette().brush(QPalette::Window).texture().size());
    for (const char* pName : {"AppVersionLabel", "UsesLabel", "EmailLabel", "WebsiteLabel", "ShowAtStartUpCB"})
        EXPECT_EQ(QColor(Qt::white), child<QWidget>(pName)->palette().color(QPalette::WindowText)) << pName;
    EXPECT_TRUE(text("EmailLabel").contains("color: white"));
    EXPECT_TRUE(text("WebsiteLabel").contains("color: white"));
}

TEST_F(AboutBox, WithoutAPictureItKeepsTheDesktopsColours)
{
    make("no such picture.png");
    EXPECT_EQ(QWidget().palette().color(QPalette::WindowText), m_pBox->palette().color(QPalette::WindowText));
    EXPECT_FALSE(text("EmailLabel").contains("color"));
}

TEST_F(AboutBox, ShowsInTheMiddleOfItsParent)
{
    m_pBox->showCentred();
    EXPECT_TRUE(m_pBox->isVisible());
    EXPECT_EQ(centred(), m_pBox->pos());
}

TEST_F(AboutBox, FollowsItsParent)
{
    m_pBox->showCentred();
    m_Parent.move(230, 210);
    QCoreApplication::processEvents();
    EXPECT_EQ(centred(), m_pBox->pos());

    m_Parent.resize(700, 600);
    QCoreApplication::processEvents();
    EXPECT_EQ(centred(), m_pBox->pos());
}

TEST_F(AboutBox, StaysWhereItWasPutUntilItsParentMoves)
{
    m_pBox->showCentred();
    m_pBox->move(5, 6);
    m_Inner.move(20, 20);
    m_Inner.resize(30, 30);
    QCoreApplication::processEvents();
    EXPECT_EQ(QPoint(5, 6), m_pBox->pos());
}

TEST_F(AboutBox, AMousePressInAnyWidgetOfTheParentsWindowHidesIt)
{
    m_pBox->showCentred();
    QTest::mousePress(&m_Inner, Qt::LeftButton);
    EXPECT_FALSE(m_pBox->isVisible());

    m_pBox->showCentred();
    QTest::mousePress(&m_Parent, Qt::RightButton);
    EXPECT_FALSE(m_pBox->isVisible());
}

TEST_F(AboutBox, AMousePressElsewhereLeavesIt)
{
    QWidget other;
    other.show();
    m_pBox->showCentred();
    QTest::mousePress(&other, Qt::LeftButton);
    QTest::mousePress(m_pBox.get(), Qt::LeftButton);
    QTest::mousePress(child<QWidget>("UsesLabel"), Qt::LeftButton);
    EXPECT_TRUE(m_pBox->isVisible());
}

TEST_F(AboutBox, AMousePressIsHandedOnToWhereItWent)
{
    QCheckBox below(&m_Parent);
    below.show();
    m_pBox->showCentred();
    QTest::mouseClick(&below, Qt::LeftButton, {}, {5, below.height() / 2});
    EXPECT_TRUE(below.isChecked());
    EXPECT_FALSE(m_pBox->isVisible());
}

TEST_F(AboutBox, AHiddenBoxFollowsNobody)
{
    m_pBox->showCentred();
    m_pBox->hide();
    const QPoint before = m_pBox->pos();
    m_Parent.move(300, 310);
    QCoreApplication::processEvents();
    EXPECT_EQ(before, m_pBox->pos());
}

TEST_F(AboutBox, ItsLinksOpenByTheKeyboard)
{
    const COpenedUrls opened({"mailto", "https"});
    m_pBox->showCentred();
    m_pBox->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return m_pBox->isActiveWindow(); })); // a window handle counts as active with its parent, too
    checkBox()->setFocus();
    for (int i = 0; i < 2; ++i)
    {
        QTest::keyClick(m_pBox->focusWidget(), Qt::Key_Tab);
        QTest::keyClick(m_pBox->focusWidget(), Qt::Key_Return);
    }
    QTest::keyClick(m_pBox->focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(checkBox()->hasFocus());
    EXPECT_EQ("mailto:support@example.com\nhttps://www.example.com/halvane\n", opened.seen());
    EXPECT_TRUE(m_pBox->isVisible());
}

TEST_F(AboutBox, ItsLinksOpenByTheMouse)
{
    const COpenedUrls opened({"mailto", "https"});
    m_pBox->showCentred();
    for (const char* pName : {"EmailLabel", "WebsiteLabel"})
    {
        auto* pLabel = child<QLabel>(pName);
        QTest::mouseClick(pLabel, Qt::LeftButton, {}, {10, pLabel->height() / 2});
    }
    EXPECT_EQ("mailto:support@example.com\nhttps://www.example.com/halvane\n", opened.seen());
}

TEST_F(AboutBox, LeavesAtEscape)
{
    m_pBox->showCentred();
    QTest::keyClick(m_pBox.get(), Qt::Key_Escape);
    EXPECT_FALSE(m_pBox->isVisible());
}
