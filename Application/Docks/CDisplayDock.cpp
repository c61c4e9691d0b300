#include "Docks/CDisplayDock.h"

#include <algorithm>

#include <QtCore/QSignalBlocker>

#include "ui_CDisplayDock.h"

namespace
{

constexpr int k_iPositionLines = 2; // the position and the face

/// Cut to a whole number that the slider has; what is no number is its minimum.
int getSliderPosition(const QSlider& slider, float fValue)
{
    const auto fMinimum = static_cast<float>(slider.minimum());
    const auto fMaximum = static_cast<float>(slider.maximum());
    return fValue > fMinimum ? static_cast<int>(std::min(fValue, fMaximum)) : slider.minimum();
}

} // namespace

CDisplayDock::CDisplayDock(QWidget* pParent) : QDockWidget(pParent), m_pForm(new Ui::Dock_Display)
{
    m_pForm->setupUi(this);
    // Room for both lines, so that the groups below don't move with the mouse.
    m_pForm->PositionLabel->setMinimumHeight(k_iPositionLines * m_pForm->PositionLabel->fontMetrics().lineSpacing());

    // A number without its last places is still nearly that number.
    for (CElidedLabel* pLabel : m_pForm->Group_Colour->findChildren<CElidedLabel*>())
        pLabel->setElideMode(Qt::ElideRight);

    connect(m_pForm->Combo_DisplayMode, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CDisplayDock::slotChangeViewMode);
    for (const QCheckBox* pCheck :
         {m_pForm->Check_RedSelect, m_pForm->Check_GreenSelect, m_pForm->Check_BlueSelect, m_pForm->Check_AlphaSelect})
        connect(pCheck, &QCheckBox::toggled, this, &CDisplayDock::slotChangeColourMask);

    connect(m_pForm->Combo_DiffMode, QOverload<int>::of(&QComboBox::currentIndexChanged), m_pForm->Stack_DiffOptions,
            &QStackedWidget::setCurrentIndex);
    connect(m_pForm->Stack_DiffOptions, &QStackedWidget::currentChanged, this, &CDisplayDock::slotDiffChanged);
    for (const QDoubleSpinBox* pSpin : {m_pForm->DSpin_Brightness, m_pForm->DSpin_Tolerance})
        connect(pSpin, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &CDisplayDock::slotDiffChanged);
    connect(m_pForm->Slider_Blend, &QSlider::sliderMoved, this, &CDisplayDock::slotDiffChanged);

    slotActiveWindow(false, false);
}

CDisplayDock::~CDisplayDock() = default;

void CDisplayDock::setColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha)
{
    const QSignalBlocker aBlockers[] = {QSignalBlocker(m_pForm->Check_RedSelect), QSignalBlocker(m_pForm->Check_GreenSelect),
                                        QSignalBlocker(m_pForm->Check_BlueSelect), QSignalBlocker(m_pForm->Check_AlphaSelect)};
    m_pForm->Check_RedSelect->setChecked(bRed);
    m_pForm->Check_GreenSelect->setChecked(bGreen);
    m_pForm->Check_BlueSelect->setChecked(bBlue);
    m_pForm->Check_AlphaSelect->setChecked(bAlpha);
}

void CDisplayDock::setViewMode(ETextureViewModes eMode)
{
    const QSignalBlocker blocker(m_pForm->Combo_DisplayMode);
    m_pForm->Combo_DisplayMode->setCurrentIndex(static_cast<int>(eMode));
}

void CDisplayDock::setZoomPosition(int iPosition)
{
    m_pForm->ZoomSlider->setValue(iPosition);
}

void CDisplayDock::setZoomText(const QString& strText)
{
    m_pForm->ZoomLabel->setText(strText);
}

void CDisplayDock::setPositionText(const QString& strText)
{
    m_pForm->PositionLabel->setText(strText);
}

QSlider* CDisplayDock::getZoomSlider() const
{
    return m_pForm->ZoomSlider;
}

void CDisplayDock::slotDiffChanged()
{
    // The slider's value is still the old one while its sliderMoved() is being told.
    const int iType = m_pForm->Stack_DiffOptions->currentIndex();
    const double dValue = iType == 0   ? m_pForm->DSpin_Brightness->value()
                          : iType == 1 ? m_pForm->DSpin_Tolerance->value()
                                       : m_pForm->Slider_Blend->sliderPosition();
    emit signalSetDiff(iType, static_cast<float>(dValue));
}

void CDisplayDock::slotChangeViewMode(int newValue)
{
    if (newValue >= 0 && newValue < m_pForm->Combo_DisplayMode->count())
        emit signalChangeViewMode(static_cast<ETextureViewModes>(newValue));
}

void CDisplayDock::slotChangeColourMask()
{
    emit signalChangeColourMask(m_pForm->Check_RedSelect->isChecked(), m_pForm->Check_GreenSelect->isChecked(),
                                m_pForm->Check_BlueSelect->isChecked(), m_pForm->Check_AlphaSelect->isChecked());
}

void CDisplayDock::slotUpdateDiffParams(int diffType, float fBrightness, float fTolerance, float fBlend)
{
    const QSignalBlocker aBlockers[] = {QSignalBlocker(m_pForm->Combo_DiffMode), QSignalBlocker(m_pForm->Stack_DiffOptions),
                                        QSignalBlocker(m_pForm->DSpin_Brightness), QSignalBlocker(m_pForm->DSpin_Tolerance),
                                        QSignalBlocker(m_pForm->Slider_Blend)};
    m_pForm->Combo_DiffMode->setCurrentIndex(diffType);
    m_pForm->Stack_DiffOptions->setCurrentIndex(diffType);
    m_pForm->DSpin_Brightness->setValue(static_cast<double>(fBrightness));
    m_pForm->DSpin_Tolerance->setValue(static_cast<double>(fTolerance));
    m_pForm->Slider_Blend->setValue(getSliderPosition(*m_pForm->Slider_Blend, fBlend));
}

void CDisplayDock::slotActiveWindow(bool hasWindow, bool isDiff)
{
    for (QWidget* pGroup : {m_pForm->Group_DisplayMode, m_pForm->Group_Zoom, m_pForm->Group_Position, m_pForm->Group_Colour})
        pGroup->setEnabled(hasWindow);
    for (QWidget* pGroup : {m_pForm->Group_DiffOptions, m_pForm->Column_OutColour, m_pForm->Column_DiffColours})
        pGroup->setEnabled(hasWindow && isDiff);
}

void CDisplayDock::slotUpdateColours(const QString& strInRed, const QString& strInGreen, const QString& strInBlue,
                                     const QString& strInAlpha, const QString& strOutRed, const QString& strOutGreen,
                                     const QString& strOutBlue, const QString& strOutAlpha, const QString& strDiffRed,
                                     const QString& strDiffGreen, const QString& strDiffBlue, const QString& strDiffAlpha)
{
    m_pForm->Label_InRed->setText(strInRed);
    m_pForm->Label_InGreen->setText(strInGreen);
    m_pForm->Label_InBlue->setText(strInBlue);
    m_pForm->Label_InAlpha->setText(strInAlpha);
    m_pForm->Label_OutRed->setText(strOutRed);
    m_pForm->Label_OutGreen->setText(strOutGreen);
    m_pForm->Label_OutBlue->setText(strOutBlue);
    m_pForm->Label_OutAlpha->setText(strOutAlpha);
    m_pForm->Label_DiffRed->setText(strDiffRed);
    m_pForm->Label_DiffGreen->setText(strDiffGreen);
    m_pForm->Label_DiffBlue->setText(strDiffBlue);
    m_pForm->Label_DiffAlpha->setText(strDiffAlpha);
}
