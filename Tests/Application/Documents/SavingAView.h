#pragma once

#include <memory>
#include <string>
#include <vector>

#include <QtCore/QDir>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <gtest/gtest.h>

#include "Application/Documents/DocumentSupport.h"
#include "Documents/CTexViewWindowSingle.h"
#include "Support/QtSupport.h"
#include "Support/TemporaryFolder.h"

/// What the questions and file dialogs of saving say.
inline constexpr char k_acReencode[] =
    "The texture you're trying to save has been modified since last encoding. To continue, it will be re-compressed to the format of the "
    "stored compressed format (BGR 8 8 8 ). Default compression options will be used.";
inline constexpr char k_acSaveFilter[] = "Moxwell Textures (*.mox);;Khronos Textures (*.ktx);;Direct Draw Surfaces (*.dds)";

/// 2 by 2 pixels of three bytes.
inline moxtexture::CMOXTexture makeStored()
{
    moxtexture::CMOXTexture stored(moxtexture::CMOXTextureHeader(moxtexture::layout("bgr", 8, 8, 8), 2, 2, 1, 1, 1, 1,
                                                                 moxtexture::eCS_Linear, moxtexture::eCT_UnsignedNormalisedByte, false));
    testsupport::fill(stored, 5);
    return stored;
}

/// A document's window in a folder of its own; dialogs that it asks are answered by the test.
class SavingAView : public testing::Test
{
protected:
    void open(const std::string& strName, uint32_t ui32Kind = eDocumentFile, Preferences* pPreferences = nullptr)
    {
        m_pView = std::make_unique<CTexViewWindowSingle>(makeStored(), testsupport::makeBytes(2, 2), strName, pPreferences, ui32Kind,
                                                         nullptr, nullptr);
    }

    /// Leaves every byte of the working texture at uiByte.
    void edit(uint8_t uiByte)
    {
        ASSERT_TRUE(m_pView->beginEdit());
        testsupport::fill(m_pView->getWorkingTexture(), uiByte);
        m_pView->endEdit();
    }

    void expectState(const std::string& strName, bool bModified, int32_t i32Changes, uint32_t ui32Kind)
    {
        EXPECT_EQ(strName, m_pView->getName());
        EXPECT_EQ(bModified, m_pView->isModified());
        EXPECT_EQ(i32Changes, m_pView->getChangeCount());
        EXPECT_EQ(ui32Kind, m_pView->getSourceKind());
    }

    std::string path(const char* pcName) const { return m_Folder.path(pcName); }

    static std::vector<uint8_t> twelveOf(uint8_t uiByte) { return std::vector<uint8_t>(12, uiByte); }

    testsupport::CDialogAnswers& thenChoose(const std::string& strPath) { return m_Answers.thenChoose({QString::fromStdString(strPath)}); }
    /// Notes what the next file dialog proposes, and cancels it.
    void thenLookAndCancel()
    {
        m_Answers.thenDo(
            [this](QDialog& dialog)
            {
                auto& files = dynamic_cast<QFileDialog&>(dialog);
                m_strStart = files.directory().filePath(files.findChild<QLineEdit*>("fileNameEdit")->text()).toStdString();
                m_strFilter = files.nameFilters().join(";;").toStdString();
                m_strSelectedFilter = files.selectedNameFilter().toStdString();
                EXPECT_EQ(QFileDialog::AcceptSave, files.acceptMode());
                dialog.reject();
            });
    }

    void expectBox(size_t uiIndex, const std::string& strTitle, const std::string& strText, QMessageBox::StandardButtons buttons)
    {
        ASSERT_LT(uiIndex, m_Answers.seen().size());
        const testsupport::CDialogAnswers::Seen& seen = m_Answers.seen()[uiIndex];
        EXPECT_EQ(strTitle, seen.strTitle);
        EXPECT_EQ(strText, seen.strText);
        EXPECT_EQ(buttons, seen.buttons);
    }

    const testsupport::CTemporaryFolder m_Folder;
    testsupport::CDialogAnswers m_Answers;
    std::unique_ptr<CTexViewWindowSingle> m_pView;
    std::string m_strStart;
    std::string m_strFilter;
    std::string m_strSelectedFilter;
};
