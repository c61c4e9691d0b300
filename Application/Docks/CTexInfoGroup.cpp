#include "Docks/CTexInfoGroup.h"

#include "Common/LastPathComponent.h"
#include "Formats/FormatNames.h"
#include "Texture/CMOXTextureHeader.h"

#include "ui_CTexInfoGroup.h"

namespace
{

constexpr int k_iSRGBIndex = 0;
constexpr int k_iLinearIndex = 1;

/// On purpose: read as signed, so that what only a broken file claims shows as negative.
QString getNumberText(uint32_t ui32Number)
{
    return QString::number(static_cast<int32_t>(ui32Number));
}

QString getFlagsText(const moxtexture::CMOXTextureHeader& header)
{
    QString strFlags;
    if (header.isPreMultiplied())
        strFlags += "Pre-Multiplied\n";
    if (header.isFileCompressed())
        strFlags += "File Compression\n";
    return strFlags;
}

} // namespace

CTexInfoGroup::CTexInfoGroup(QWidget* pParent) : QGroupBox(pParent), m_pForm(new Ui::TexInfoGroup)
{
    m_pForm->setupUi(this);
    m_pForm->Label_Format->setElideMode(Qt::ElideRight);
    connect(m_pForm->Combo_ColourSpace, QOverload<int>::of(&QComboBox::activated), this, &CTexInfoGroup::colourSpaceChosen);
}

CTexInfoGroup::~CTexInfoGroup() = default;

void CTexInfoGroup::fill(const std::string& strName, const moxtexture::CMOXTextureHeader& header)
{
    const QString strFullName = QString::fromStdString(strName);
    m_pForm->Label_Name->setText(getLastPathComponent(strFullName));
    m_pForm->Label_Name->setToolTip(strFullName);
    m_pForm->Label_Format->setText(QString::fromStdString(moxtexture::getFormatName(header.getPixelFormat())));
    m_pForm->Label_Height->setText(getNumberText(header.getHeight()));
    m_pForm->Label_Width->setText(getNumberText(header.getWidth()));
    m_pForm->Label_Depth->setText(getNumberText(header.getDepth()));
    m_pForm->Label_ArraySize->setText(getNumberText(header.getNumArrayMembers()));
    m_pForm->Label_Faces->setText(getNumberText(header.getNumFaces()));
    m_pForm->Label_MIPMaps->setText(getNumberText(header.getNumMIPLevels()));
    m_pForm->Label_Flags->setText(getFlagsText(header));
    m_pForm->Label_MetaData->setText(getNumberText(header.getMetaDataSize()) + " Bytes");

    const int iIndex = header.getColourSpace() == moxtexture::eCS_sRGB ? k_iSRGBIndex : k_iLinearIndex;
    m_pForm->Combo_ColourSpace->setCurrentIndex(iIndex);
    showRange(iIndex);
}

void CTexInfoGroup::showRange(int index)
{
    m_pForm->Group_Range->setVisible(index == k_iLinearIndex);
}
