#pragma once

#include <memory>

#include <QtWidgets/QDockWidget>

#include "Display/ViewModes.h"

class QSlider;
namespace Ui
{
class Dock_Display;
}

/// How the active view is shown: mode, zoom, colour channels and, for a comparison, its parameters; with the read-out of the pixel
/// under the mouse. Only what the user does is signalled; what is set from outside never comes back.
class CDisplayDock : public QDockWidget
{
    Q_OBJECT

public:
    explicit CDisplayDock(QWidget* pParent = nullptr);
    ~CDisplayDock() override;

    void setColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha);
    void setViewMode(ETextureViewModes eMode);
    /// @param iPosition  0 to 10; the nearest of them is taken
    void setZoomPosition(int iPosition);
    void setZoomText(const QString& strText);
    void setPositionText(const QString& strText);

    /// Its sliderMoved(int) tells every step that the user makes, by mouse, wheel or keys.
    [[nodiscard]] QSlider* getZoomSlider() const;

signals:
    void signalChangeViewMode(ETextureViewModes eMode);
    void signalChangeColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha);
    /// 0 colour difference with its brightness, 1 tolerance with its threshold, 2 blend with the position of its slider, 0 to 100.
    void signalSetDiff(int, float);

public slots:
    void slotDiffChanged();
    void slotChangeViewMode(int newValue);
    void slotChangeColourMask();
    void slotUpdateDiffParams(int diffType, float fBrightness, float fTolerance, float fBlend);
    void slotActiveWindow(bool hasWindow, bool isDiff);
    /// Red, green, blue, alpha of the input, then of the output, then their differences; all as they are to be read.
    void slotUpdateColours(const QString& strInRed, const QString& strInGreen, const QString& strInBlue, const QString& strInAlpha,
                           const QString& strOutRed, const QString& strOutGreen, const QString& strOutBlue, const QString& strOutAlpha,
                           const QString& strDiffRed, const QString& strDiffGreen, const QString& strDiffBlue, const QString& strDiffAlpha);

private:
    std::unique_ptr<Ui::Dock_Display> m_pForm;
};
