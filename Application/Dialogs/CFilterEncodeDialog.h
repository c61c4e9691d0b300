#pragma once

#include <memory>
#include <vector>

#include <QtWidgets/QDialog>

#include "Catalogue/EncodeChecks.h"
#include "Catalogue/EncodeFilter.h"
#include "Dialogs/AstcEncoder.h"
#include "Dialogs/EncodeSettings.h"
#include "Texture/CMOXTextureHeader.h"

class Preferences;
namespace Ui
{
class EncodeDialog;
}

/// Lets the user pick a target format from the catalogue, narrowed by filters, and tells whether a texture can take it.
///
/// Made anew for each encode; what it keeps between uses stands in the preferences.
class CFilterEncodeDialog : public QDialog
{
    Q_OBJECT

public:
    /// @param header        of the texture to encode; copied
    /// @param pPreferences  not owned; null: defaults, and nothing is kept
    /// @param bHideDiff     there is no "Show As Diff View:" to tick
    CFilterEncodeDialog(const moxtexture::CMOXTextureHeader& header, QWidget* pParent, Preferences* pPreferences, bool bHideDiff,
                        bool bASTCEncoderFound = isASTCEncoderFound());
    ~CFilterEncodeDialog() override;

    /// @return 1 accepted, 0 cancelled, -1: accepted with options that won't do, which the user was told: run it again
    [[nodiscard]] int execDialog();

    // The choice; valid after 1.
    [[nodiscard]] moxtexture::MOXPixelWord getPixelFormat() const { return m_Choice.encoding.pixelFormat; }
    [[nodiscard]] moxtexture::EMOXTChannelType getChannelType() const { return m_Choice.encoding.eChannelType; }
    [[nodiscard]] moxtexture::EMOXTColourSpace getColourSpace() const { return m_Choice.encoding.eColourSpace; }
    /// Place of the chosen encoding mode in the list of the format's family; 0 for formats without one.
    [[nodiscard]] uint32_t getQuality() const;
    [[nodiscard]] bool getDither() const;
    [[nodiscard]] bool getVerticalFlip() const;
    [[nodiscard]] bool getGenerateMIPMaps() const;
    /// False where the check box is hidden, whatever it stands at.
    [[nodiscard]] bool getShowAsDiff() const;
    /// For saving the result as a version 2 container.
    [[nodiscard]] uint32_t getLegacyApi() const;

public slots:
    void slotFilter();
    void slotErrorCheck();
    void slotResetFilters();

private:
    void fillLists();
    void fixTableSize();
    void keepRoomForPages(int iWidth);
    void connectWidgets();
    void loadSettings();
    void storeSettings();
    [[nodiscard]] moxtexture::EncodeFilter readFilter() const;
    [[nodiscard]] bool isRecentMode() const;
    void listEntries();
    void showPage(moxtexture::EEncodePage ePage);
    void acceptChoice();

    std::unique_ptr<Ui::EncodeDialog> m_pForm;
    moxtexture::CMOXTextureHeader m_Header;
    Preferences* m_pPreferences;
    bool m_bHideDiff;
    bool m_bASTCEncoderFound;
    RecentFormats m_aRecent;                   // oldest first
    std::vector<RecentFormat> m_aListed;       // the rows of the table, top to bottom
    const RecentFormat* m_pSelected = nullptr; // of m_aListed; null without a row
    bool m_bInvalid = true;
    RecentFormat m_Choice;
};
