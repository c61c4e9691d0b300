#include "Dialogs/CFilterEncodeDialog.h"

#include <algorithm>
#include <array>

#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QScrollBar>

#include "Catalogue/ApiGroups.h"
#include "Catalogue/QualityNames.h"
#include "Common/Preferences.h"
#include "Dialogs/EncodeMessages.h"
#include "Formats/FormatNames.h"

#include "ui_EncodeDialog.h"

using namespace moxtexture;

namespace
{

enum EColumn
{
    eColumnName,
    eColumnType,
    eColumnColourSpace,
    eColumnAPI,
    eColumnCount
};

QString toText(std::string_view strText)
{
    return QString::fromUtf8(strText.data(), static_cast<int>(strText.size()));
}

/// Empty for a place that the list of APIs doesn't have.
QString getApiName(uint32_t uiAPI)
{
    return uiAPI < k_aApiGroups.size() ? toText(k_aApiGroups[uiAPI]) : QString();
}

template <typename List>
void addTexts(QComboBox* pBox, const List& texts)
{
    for (const std::string_view strText : texts)
        pBox->addItem(toText(strText));
}

/// A box that stands nowhere asks for nothing.
uint32_t getPlace(const QComboBox* pBox)
{
    return pBox->currentIndex() > 0 ? static_cast<uint32_t>(pBox->currentIndex()) : 0;
}

} // namespace

CFilterEncodeDialog::CFilterEncodeDialog(const CMOXTextureHeader& header, QWidget* pParent, Preferences* pPreferences, bool bHideDiff,
                                         bool bASTCEncoderFound)
    : QDialog(pParent),
      m_pForm(std::make_unique<Ui::EncodeDialog>()),
      m_Header(header),
      m_pPreferences(pPreferences),
      m_bHideDiff(bHideDiff),
      m_bASTCEncoderFound(bASTCEncoderFound),
      m_aRecent(loadRecentFormats(pPreferences))
{
    m_pForm->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    m_pForm->Check_Diff->setVisible(!bHideDiff);
    fillLists();

    fixTableSize();
    m_pForm->Combo_API->setCurrentIndex(0);
    slotFilter();
    connectWidgets();
    loadSettings();
    m_pForm->Table_FilteredFormats->selectRow(0);
    slotErrorCheck();
    // With nothing to encode to yet, the way on is to choose a group.
    if (m_bInvalid)
        m_pForm->Combo_API->setFocus();
    else
        m_pForm->Butt_Encode->setFocus();
}

CFilterEncodeDialog::~CFilterEncodeDialog() = default;

void CFilterEncodeDialog::fillLists()
{
    m_pForm->Table_FilteredFormats->setColumnCount(eColumnCount);
    m_pForm->Table_FilteredFormats->setHorizontalHeaderLabels({"Name", "Type", "Colour Space", "API"});
    addTexts(m_pForm->Combo_API, k_aApiGroups);
    addTexts(m_pForm->Combo_BPP, k_aBitsPerPixel);
    addTexts(m_pForm->Combo_ColourSpace, std::array{getColourSpaceName(eCS_Linear, true), getColourSpaceName(eCS_sRGB, true)});
    addTexts(m_pForm->Combo_MOXTCMode, getQualityNames(eQualityMOXTC));
    addTexts(m_pForm->Combo_ETCMode, getQualityNames(eQualityETC));
    addTexts(m_pForm->Combo_ASTCMode, getQualityNames(eQualityASTC));
}

void CFilterEncodeDialog::keepRoomForPages(int iWidth)
{
    // Also for the warnings, so that nothing moves when they come and go.
    for (QWidget* pWidget : std::initializer_list<QWidget*>{m_pForm->Icon_MOXTCWarning, m_pForm->Label_MOXTCWarning,
                                                            m_pForm->Icon_ETCWarning, m_pForm->Label_ETCWarning})
    {
        QSizePolicy policy = pWidget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        pWidget->setSizePolicy(policy);
    }
    // A layout does not count lines of wrapped text into its least height.
    int iHeight = 0;
    for (const QLayout* pLayout : m_pForm->Stack_WarningsAndOptions->findChildren<QLayout*>())
        if (pLayout->hasHeightForWidth())
            iHeight = std::max(iHeight, pLayout->heightForWidth(iWidth));
    m_pForm->Stack_WarningsAndOptions->setMinimumHeight(iHeight);
}

void CFilterEncodeDialog::fixTableSize()
{
    m_pForm->Combo_API->setCurrentIndex(-1);
    slotFilter();

    QTableWidget* pTable = m_pForm->Table_FilteredFormats;
    // No API is chosen, so none is told: its column gets room for the longest of them all the same.
    for (uint32_t i = 0; i < k_aApiGroups.size(); ++i)
        pTable->item(static_cast<int>(i), eColumnAPI)->setText(getApiName(i));
    pTable->resizeColumnsToContents();

    int iWidth = pTable->verticalScrollBar()->sizeHint().width() + 2 * pTable->frameWidth();
    for (int i = 0; i < pTable->columnCount(); ++i)
        iWidth += pTable->columnWidth(i);
    pTable->setMinimumWidth(iWidth);
    pTable->setMinimumHeight(pTable->horizontalHeader()->sizeHint().height() + 2 * (pTable->frameWidth() + 5 * pTable->rowHeight(0)));
    pTable->horizontalHeader()->setStretchLastSection(true);
    keepRoomForPages(iWidth);
    adjustSize();
}

void CFilterEncodeDialog::connectWidgets()
{
    for (QComboBox* pBox : {m_pForm->Combo_API, m_pForm->Combo_BPP, m_pForm->Combo_NumChannels, m_pForm->Combo_ColourSpace,
                            m_pForm->Combo_VariableType, m_pForm->Combo_HasAlpha})
        connect(pBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CFilterEncodeDialog::slotFilter);
    connect(m_pForm->Butt_ResetFilters, &QPushButton::released, this, &CFilterEncodeDialog::slotResetFilters);
    connect(m_pForm->Table_FilteredFormats, &QTableWidget::currentItemChanged, this, &CFilterEncodeDialog::slotErrorCheck);
    connect(m_pForm->Butt_Encode, &QPushButton::pressed, this, &QDialog::accept);
    connect(m_pForm->Butt_Cancel, &QPushButton::pressed, this, &QDialog::reject);
}

int CFilterEncodeDialog::execDialog()
{
    const int iResult = exec();
    if (iResult == Accepted)
    {
        slotErrorCheck();
        if (m_bInvalid)
        {
            showInvalidEncodeOptions(this);
            return -1;
        }
        acceptChoice();
    }
    storeSettings();
    return iResult;
}

void CFilterEncodeDialog::acceptChoice()
{
    if (m_pSelected != nullptr)
    {
        m_Choice = *m_pSelected;
        addRecentFormat(m_aRecent, m_Choice);
    }
    storeRecentFormats(m_pPreferences, m_aRecent);
}

void CFilterEncodeDialog::loadSettings()
{
    const EncodeSettings settings = loadEncodeSettings(m_pPreferences);
    m_pForm->Combo_MOXTCMode->setCurrentIndex(settings.i32MOXTCMode);
    m_pForm->Combo_ETCMode->setCurrentIndex(settings.i32ETCMode);
    m_pForm->Combo_ASTCMode->setCurrentIndex(settings.i32ASTCMode);
    m_pForm->Check_MIPMap->setChecked(settings.bMIPMaps);
    m_pForm->Check_Dither->setChecked(settings.bDither);
    m_pForm->Check_Diff->setChecked(settings.bDiff);
    m_pForm->Check_VFlip->setChecked(settings.bVerticalFlip);
}

void CFilterEncodeDialog::storeSettings()
{
    EncodeSettings settings;
    settings.i32MOXTCMode = m_pForm->Combo_MOXTCMode->currentIndex();
    settings.i32ETCMode = m_pForm->Combo_ETCMode->currentIndex();
    settings.i32ASTCMode = m_pForm->Combo_ASTCMode->currentIndex();
    settings.bMIPMaps = m_pForm->Check_MIPMap->isChecked();
    settings.bDither = m_pForm->Check_Dither->isChecked();
    settings.bDiff = m_pForm->Check_Diff->isChecked();
    settings.bVerticalFlip = m_pForm->Check_VFlip->isChecked();
    storeEncodeSettings(m_pPreferences, settings);
    if (m_pPreferences != nullptr)
        (void)m_pPreferences->save(); // a disk that is full is no reason to stop an encode
}

uint32_t CFilterEncodeDialog::getQuality() const
{
    switch (getQualityFamily(getPixelFormat()))
    {
    case eQualityMOXTC:
        return getPlace(m_pForm->Combo_MOXTCMode);
    case eQualityETC:
        return getPlace(m_pForm->Combo_ETCMode);
    case eQualityASTC:
        return getPlace(m_pForm->Combo_ASTCMode);
    case eQualityNone:
        break;
    }
    return 0;
}

bool CFilterEncodeDialog::getDither() const
{
    return m_pForm->Check_Dither->isChecked();
}

bool CFilterEncodeDialog::getVerticalFlip() const
{
    return m_pForm->Check_VFlip->isChecked();
}

bool CFilterEncodeDialog::getGenerateMIPMaps() const
{
    return m_pForm->Check_MIPMap->isChecked();
}

bool CFilterEncodeDialog::getShowAsDiff() const
{
    return !m_bHideDiff && m_pForm->Check_Diff->isChecked();
}

uint32_t CFilterEncodeDialog::getLegacyApi() const
{
    return ::getLegacyApi(m_aRecent);
}

bool CFilterEncodeDialog::isRecentMode() const
{
    return m_pForm->Combo_API->currentIndex() == 0;
}

EncodeFilter CFilterEncodeDialog::readFilter() const
{
    EncodeFilter filter;
    filter.uiAPI = getPlace(m_pForm->Combo_API);
    filter.uiBitsPerPixel = getPlace(m_pForm->Combo_BPP);
    filter.uiChannelCount = getPlace(m_pForm->Combo_NumChannels);
    filter.uiTypeGroup = getPlace(m_pForm->Combo_VariableType);
    filter.uiHasAlpha = getPlace(m_pForm->Combo_HasAlpha);
    filter.uiColourSpace = getPlace(m_pForm->Combo_ColourSpace);
    return filter;
}

void CFilterEncodeDialog::slotFilter()
{
    for (QComboBox* pBox :
         {m_pForm->Combo_BPP, m_pForm->Combo_NumChannels, m_pForm->Combo_ColourSpace, m_pForm->Combo_VariableType, m_pForm->Combo_HasAlpha})
        pBox->setEnabled(!isRecentMode());

    m_pSelected = nullptr;
    if (isRecentMode())
        m_aListed.assign(m_aRecent.rbegin(), m_aRecent.rend());
    else
    {
        m_aListed.clear();
        for (const PixelEncoding& encoding : filterCatalogue(readFilter()))
            m_aListed.push_back({encoding, static_cast<uint32_t>(m_pForm->Combo_API->currentIndex() - 1)});
    }
    listEntries();
    slotErrorCheck();
}

void CFilterEncodeDialog::listEntries()
{
    QTableWidget* pTable = m_pForm->Table_FilteredFormats;
    const QSignalBlocker blocker(pTable); // the check comes once, when the table stands
    pTable->setCurrentItem(nullptr);
    pTable->setRowCount(0);
    pTable->setRowCount(static_cast<int>(m_aListed.size()));
    for (int i = 0; i < pTable->rowCount(); ++i)
    {
        const RecentFormat& entry = m_aListed[static_cast<size_t>(i)];
        const auto setCell = [&](EColumn eColumn, const QString& strText) { pTable->setItem(i, eColumn, new QTableWidgetItem(strText)); };
        setCell(eColumnName, toText(getFormatName(entry.encoding.pixelFormat)));
        setCell(eColumnType, toText(getChannelTypeName(entry.encoding.eChannelType, true)));
        setCell(eColumnColourSpace, toText(getColourSpaceName(entry.encoding.eColourSpace, true)));
        setCell(eColumnAPI, getApiName(entry.uiAPI));
    }
}

void CFilterEncodeDialog::slotErrorCheck()
{
    const int iRow = m_pForm->Table_FilteredFormats->currentRow();
    EncodeCheck check;
    m_pSelected = nullptr;
    if (iRow >= 0 && static_cast<size_t>(iRow) < m_aListed.size())
    {
        m_pSelected = &m_aListed[static_cast<size_t>(iRow)];
        check = checkEncode(m_Header, m_pSelected->encoding.pixelFormat, m_bASTCEncoderFound);
    }
    const bool bMOXTCWarning = check.bWarning && check.ePage == eEncodePageMOXTC;
    const bool bETCWarning = check.bWarning && check.ePage == eEncodePageETC;
    m_pForm->Icon_MOXTCWarning->setVisible(bMOXTCWarning);
    m_pForm->Label_MOXTCWarning->setVisible(bMOXTCWarning);
    m_pForm->Icon_ETCWarning->setVisible(bETCWarning);
    m_pForm->Label_ETCWarning->setVisible(bETCWarning);
    showPage(check.ePage);
    m_bInvalid = !check.bValid;
    m_pForm->Butt_Encode->setEnabled(!m_bInvalid);
}

void CFilterEncodeDialog::showPage(EEncodePage ePage)
{
    const std::array<QWidget*, eEncodePageUnchanged> apPages = {
        m_pForm->StackPage_MOXTCOpts, m_pForm->StackPage_ETCOpts,   m_pForm->StackPage_ASTCOpts,    m_pForm->StackPage_ASTCError,
        m_pForm->StackPage_NPOTError, m_pForm->StackPage_SizeError, m_pForm->StackPage_NoSelection, m_pForm->StackPage_Empty};
    if (ePage < eEncodePageUnchanged)
        m_pForm->Stack_WarningsAndOptions->setCurrentWidget(apPages[ePage]);
}

void CFilterEncodeDialog::slotResetFilters()
{
    for (QComboBox* pBox : {m_pForm->Combo_API, m_pForm->Combo_BPP, m_pForm->Combo_NumChannels, m_pForm->Combo_ColourSpace,
                            m_pForm->Combo_VariableType, m_pForm->Combo_HasAlpha})
    {
        const QSignalBlocker blocker(pBox);
        pBox->setCurrentIndex(0);
    }
    slotFilter();
}
