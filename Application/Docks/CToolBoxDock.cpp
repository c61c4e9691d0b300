#include "Docks/CToolBoxDock.h"

#include "ui_CToolBoxDock.h"

CToolBoxDock::CToolBoxDock(QWidget* pParent) : QDockWidget(pParent), m_pForm(new Ui::Dock_Toolbox)
{
    m_pForm->setupUi(this);
    slotActiveWindow(false, false);
}

CToolBoxDock::~CToolBoxDock() = default;

void CToolBoxDock::slotActiveWindow(bool hasWindow, bool isDiff)
{
    m_pForm->Group_Tools->setEnabled(hasWindow && !isDiff);
}

void CToolBoxDock::slotUpdateTexture(const moxtexture::CMOXTextureHeader* pTextureHeader)
{
    m_Header = pTextureHeader != nullptr ? *pTextureHeader : moxtexture::CMOXTextureHeader();
}
