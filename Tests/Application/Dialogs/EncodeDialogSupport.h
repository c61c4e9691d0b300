#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QLabel>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QTableWidget>
#include <gtest/gtest.h>

#include "Common/Preferences.h"
#include "Dialogs/CFilterEncodeDialog.h"
#include "Support/QtSupport.h"

namespace testsupport
{

using Texts = std::vector<std::string>;

inline constexpr int k_iOpenGLES2 = 2, k_iOpenGLES3 = 3, k_iOpenGL = 4, k_iDirectX93 = 5, k_iDirectX111 = 7, k_iVulkan = 8; // in Combo_API

inline moxtexture::CMOXTextureHeader makeEncodeHeader(uint32_t uiWidth, uint32_t uiHeight)
{
    return moxtexture::CMOXTextureHeader(moxtexture::k_RGBA8, uiHeight, uiWidth, 1, 1, 1, 1, moxtexture::eCS_Linear,
                                         moxtexture::eCT_UnsignedNormalisedByte, false);
}

/// The dialog, and what a user sees and touches of it.
class CUsedEncodeDialog : public CFilterEncodeDialog
{
public:
    explicit CUsedEncodeDialog(uint32_t uiWidth = 64, uint32_t uiHeight = 64, Preferences* pPreferences = nullptr, bool bHideDiff = false,
                               bool bASTCEncoderFound = false)
        : CFilterEncodeDialog(makeEncodeHeader(uiWidth, uiHeight), nullptr, pPreferences, bHideDiff, bASTCEncoderFound)
    {
    }

    template <typename Widget>
    Widget& get(const char* strName) const
    {
        auto* pWidget = findChild<Widget*>(strName);
        if (pWidget == nullptr)
            throw std::runtime_error(std::string("no widget ") + strName);
        return *pWidget;
    }
    QComboBox& box(const char* strName) const { return get<QComboBox>(strName); }
    QCheckBox& check(const char* strName) const { return get<QCheckBox>(strName); }
    QTableWidget& table() const { return get<QTableWidget>("Table_FilteredFormats"); }
    QPushButton& encodeButton() const { return get<QPushButton>("Butt_Encode"); }
    std::string page() const { return get<QStackedWidget>("Stack_WarningsAndOptions").currentWidget()->objectName().toStdString(); }
    bool isWarned(const std::string& strFamily) const
    {
        const bool bText = !get<QLabel>(("Label_" + strFamily + "Warning").c_str()).isHidden();
        EXPECT_EQ(bText, !get<QLabel>(("Icon_" + strFamily + "Warning").c_str()).isHidden());
        return bText;
    }

    void filter(const char* strBox, int iIndex) const { box(strBox).setCurrentIndex(iIndex); }

    std::string cell(int iRow, int iColumn) const { return table().item(iRow, iColumn)->text().toStdString(); }
    std::string row(int iRow) const { return cell(iRow, 0) + "/" + cell(iRow, 1) + "/" + cell(iRow, 2) + "/" + cell(iRow, 3); }
    Texts rows() const
    {
        Texts texts;
        for (int i = 0; i < table().rowCount(); ++i)
            texts.push_back(row(i));
        return texts;
    }

    /// Shows the formats of an API and clicks on one of them.
    void choose(int iAPI, const std::string& strName, const std::string& strType = "UNorm", const std::string& strSpace = "lRGB") const
    {
        filter("Combo_API", iAPI);
        for (int i = 0; i < table().rowCount(); ++i)
            if (cell(i, 0) == strName && cell(i, 1) == strType && cell(i, 2) == strSpace)
                return table().selectRow(i);
        ADD_FAILURE() << "not listed: " << strName << " " << strType << " " << strSpace;
    }
};

/// Runs the dialog, and what is done while it is up.
inline int run(CUsedEncodeDialog& dialog, const std::function<void(QDialog&)>& work)
{
    CDialogAnswers answers;
    answers.thenDo(work);
    return dialog.execDialog();
}

inline void pressEncode(QDialog& dialog)
{
    QTest::mousePress(dialog.findChild<QPushButton*>("Butt_Encode"), Qt::LeftButton);
}

inline void pressCancel(QDialog& dialog)
{
    QTest::mousePress(dialog.findChild<QPushButton*>("Butt_Cancel"), Qt::LeftButton);
}

inline Texts textsOf(const QComboBox& box)
{
    Texts texts;
    for (int i = 0; i < box.count(); ++i)
        texts.push_back(box.itemText(i).toStdString());
    return texts;
}

} // namespace testsupport
