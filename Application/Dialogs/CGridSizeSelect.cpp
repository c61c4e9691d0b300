#include "Dialogs/CGridSizeSelect.h"

#include <algorithm>

#include "ui_CGridSizeSelect.h"

CGridSizeSelect::CGridSizeSelect(uint32_t ui32GridSize, QWidget* pParent) : QDialog(pParent), m_pForm(new Ui::GridSizeDialog)
{
    m_pForm->setupUi(this);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    const auto uiMaximum = static_cast<uint32_t>(m_pForm->Spin_GridSize->maximum());
    m_pForm->Spin_GridSize->setValue(static_cast<int>(std::min(ui32GridSize, uiMaximum)));
    m_pForm->Spin_GridSize->selectAll();
}

CGridSizeSelect::~CGridSizeSelect() = default;

uint32_t CGridSizeSelect::getGridSize() const
{
    return static_cast<uint32_t>(m_pForm->Spin_GridSize->value());
}
