#include "Docks/CTexInfoDock.h"

#include "Docks/CTexInfoGroup.h"
#include "Texture/CMOXTextureHeader.h"

#include "ui_CTexInfoDock.h"

namespace
{

void showHeader(CTexInfoGroup& group, const std::string* pName, const moxtexture::CMOXTextureHeader* pHeader)
{
    group.setVisible(pHeader != nullptr);
    if (pHeader != nullptr)
        group.fill(pName != nullptr ? *pName : std::string(), *pHeader);
}

} // namespace

CTexInfoDock::CTexInfoDock(QWidget* pParent) : QDockWidget(pParent), m_pForm(new Ui::Dock_TexInfo)
{
    m_pForm->setupUi(this);
    for (const CTexInfoGroup* pGroup : {m_pForm->Group_Original_Info, m_pForm->Group_Encoded_Info})
        connect(pGroup, &CTexInfoGroup::colourSpaceChosen, this, &CTexInfoDock::onColourSpaceChanged);
    slotUpdateTextures(nullptr, nullptr, nullptr, nullptr);
}

CTexInfoDock::~CTexInfoDock() = default;

void CTexInfoDock::slotUpdateTextures(const std::string* originalName, const moxtexture::CMOXTextureHeader* original,
                                      const std::string* compressedName, const moxtexture::CMOXTextureHeader* compressed)
{
    showHeader(*m_pForm->Group_Original_Info, originalName, original);
    showHeader(*m_pForm->Group_Encoded_Info, compressedName, compressed);
    m_pForm->Group_Original_Info->setTitle(compressed == nullptr ? "Original Image" : "Left Image");
    m_pForm->Group_Encoded_Info->setTitle(compressed == nullptr ? "Encoded Image" : "Right Image");
}

void CTexInfoDock::onColourSpaceChanged(int index)
{
    const bool bEncoded = sender() == m_pForm->Group_Encoded_Info;
    (bEncoded ? m_pForm->Group_Encoded_Info : m_pForm->Group_Original_Info)->showRange(index);
    emit colourSpaceChanged(bEncoded ? 1 : 0, index == 0 ? moxtexture::eCS_sRGB : moxtexture::eCS_Linear);
}
