#include "Documents/CTexViewWindow.h"

#include <algorithm>
#include <limits>
#include <new>

#include <QtGui/QMouseEvent>
#include <QtGui/QWheelEvent>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMdiSubWindow>

#include "Common/LastPathComponent.h"
#include "Common/Preferences.h"
#include "Display/ZoomScale.h"

using namespace moxtexture;

namespace
{

constexpr char k_acGridSize[] = "TexViewWindow/GridSize";
constexpr char k_acGridShown[] = "TexViewWindow/GridShown";
constexpr char k_acBackgroundColour[] = "TexViewWindow/BackgroundColour";

/// Truncated; what an offset cannot hold becomes the nearest that it can.
int32_t toOffset(double dOffset)
{
    using Limits = std::numeric_limits<int32_t>;
    return static_cast<int32_t>(std::clamp<double>(dOffset, Limits::min(), Limits::max()));
}

} // namespace

CTexViewWindow::CTexViewWindow(const std::string& strName, Preferences* pPreferences, QWidget* pParent)
    : QWidget(pParent), m_strName(strName), m_i32ZoomPosition(k_i32DefaultZoomPosition), m_pPreferences(pPreferences)
{
    if (m_pPreferences == nullptr)
        return;
    m_pPreferences->getUint(k_acGridSize, m_View.ui32GridSize);
    m_pPreferences->getBool(k_acGridShown, m_View.bGridShown);
    uint32_t ui32Colour = m_View.bgColour.rgba();
    m_pPreferences->getUint(k_acBackgroundColour, ui32Colour);
    m_View.bgColour = QColor::fromRgba(ui32Colour);
}

void CTexViewWindow::setError(const QString& strError)
{
    m_bError = true;
    m_strError = strError;
}

// Titles

QString CTexViewWindow::withChangeMark(const QString& strName) const
{
    return getChangeCount() >= 1 ? strName + " *" : strName;
}

QString CTexViewWindow::getViewTitle() const
{
    return withChangeMark(getLastPathComponent(QString::fromStdString(m_strName)));
}

QString CTexViewWindow::getFullTitle() const
{
    return withChangeMark(QString::fromStdString(m_strName));
}

ReadoutPlace CTexViewWindow::getReadoutPlace() const
{
    ReadoutPlace place;
    place.bMouseInside = underMouse() && m_Mouse.bInside;
    place.i32PixelX = m_Mouse.i32PixelX;
    place.i32PixelY = m_Mouse.i32PixelY;
    place.eMode = m_View.eMode;
    place.ui32MIPLevel = m_View.ui32MIPLevel;
    place.ui32ArrayMember = m_View.ui32ArrayMember;
    place.ui32Face = m_View.ui32Face;
    place.ui32CubeFace = m_Mouse.uiCubeFace;
    return place;
}

// Drawing

void CTexViewWindow::redraw(bool& bDirtyFlag)
{
    bDirtyFlag = true;
    repaint();
}

void CTexViewWindow::drawIfNeeded(DisplayPicture* pPictures, uint32_t uiCount, bool bForce)
{
    if (!bForce && !m_bTextureDirty && !m_bSizeDirty && !m_bViewDirty)
        return;
    try
    {
        drawPictures(pPictures, uiCount, m_View, bForce);
    }
    catch (const std::bad_alloc&)
    {
        // The last picture stays on the screen.
    }
    m_bTextureDirty = false;
    m_bSizeDirty = false;
    m_bViewDirty = false;
}

void CTexViewWindow::fitTexture()
{
    updateDisplay(true);
    auto* pSubWindow = qobject_cast<QMdiSubWindow*>(parentWidget());
    if (pSubWindow != nullptr && !pSubWindow->isMaximized())
        pSubWindow->adjustSize();
}

void CTexViewWindow::paintEvent(QPaintEvent* pEvent)
{
    updateDisplay(false);
    QWidget::paintEvent(pEvent);
}

void CTexViewWindow::resizeEvent(QResizeEvent* pEvent)
{
    m_bSizeDirty = true;
    QWidget::resizeEvent(pEvent);
}

// The mouse

void CTexViewWindow::locateMouse(int x, int y, const QLabel& label, const CMOXTextureHeader& header)
{
    m_Mouse.bInside = false;
    if (!label.underMouse())
        return;
    const int iFrame = label.lineWidth();
    MousePickView pick;
    pick.eMode = m_View.eMode;
    pick.fZoom = m_View.fZoom;
    pick.offset = {m_View.i32OffsetX, m_View.i32OffsetY};
    pick.uiFace = m_View.ui32Face;
    pick.uiPictureWidth = static_cast<uint32_t>(std::max(label.width() - 2 * iFrame, 0));
    pick.uiPictureHeight = static_cast<uint32_t>(std::max(label.height() - 2 * iFrame, 0));
    pick.uiSurfaceWidth = header.getWidth(m_View.ui32MIPLevel);
    pick.uiSurfaceHeight = header.getHeight(m_View.ui32MIPLevel);
    m_Mouse = pickMousePixel(pick, x - label.x() - iFrame, y - label.y() - iFrame, m_Mouse);
}

void CTexViewWindow::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton && isPictureUnderMouse())
    {
        m_bDragging = true;
        m_i32LastMouseX = pEvent->x();
        m_i32LastMouseY = pEvent->y();
    }
    QWidget::mousePressEvent(pEvent);
}

void CTexViewWindow::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton)
        m_bDragging = false;
    QWidget::mouseReleaseEvent(pEvent);
}

void CTexViewWindow::mouseMoveEvent(QMouseEvent* pEvent)
{
    const int x = pEvent->x();
    const int y = pEvent->y();
    // A box that came up meanwhile may have got the release.
    if ((pEvent->buttons() & Qt::LeftButton) == 0)
        m_bDragging = false;
    if (m_bDragging)
    {
        m_View.i32OffsetX = toOffset(static_cast<double>(m_View.i32OffsetX) + m_i32LastMouseX - x);
        m_View.i32OffsetY = toOffset(static_cast<double>(m_View.i32OffsetY) + m_i32LastMouseY - y);
        m_i32LastMouseX = x;
        m_i32LastMouseY = y;
        redraw(m_bViewDirty);
    }
    updateMousePosition(x, y);
    emit signalMousePositionUpdated();
    QWidget::mouseMoveEvent(pEvent);
}

void CTexViewWindow::wheelEvent(QWheelEvent* pEvent)
{
    const int iDelta = pEvent->angleDelta().y();
    changeZoom(m_i32ZoomPosition + (iDelta > 0) - (iDelta < 0));
    emit signalZoomScaleUpdated();
    redraw(m_bViewDirty);
    QWidget::wheelEvent(pEvent);
}

// Settings

void CTexViewWindow::changeZoom(int32_t i32NewPosition)
{
    const int32_t i32Position = clampZoomPosition(i32NewPosition, m_View.eMode);
    if (m_View.eMode == eViewSingle && i32Position != m_i32ZoomPosition)
    {
        // The texel under the mouse stays there: one step in doubles its distance from the corner, one step out halves it.
        const double dStep = i32Position > m_i32ZoomPosition ? 1.0 : -0.5;
        const double dMove = dStep * static_cast<double>(m_View.fZoom);
        m_View.i32OffsetX = toOffset(m_View.i32OffsetX + dMove * m_Mouse.i32PixelX);
        m_View.i32OffsetY = toOffset(m_View.i32OffsetY + dMove * m_Mouse.i32PixelY);
    }
    m_i32ZoomPosition = i32Position;
    m_View.fZoom = getZoomFactor(i32Position);
    redraw(m_bViewDirty);
}

void CTexViewWindow::slotUpdateZoomScalePosition(int32_t i32NewPosition)
{
    changeZoom(i32NewPosition);
}

void CTexViewWindow::slotChangeViewMode(ETextureViewModes eMode)
{
    m_View.eMode = eMode;
    if (eMode == eViewCube)
    {
        // On purpose: these are texels, though the read-out takes places of the window.
        const CMOXTexture& texture = getWorkingTexture();
        if (m_Mouse.bInside)
            updateMousePosition(m_Mouse.i32PixelX, m_Mouse.i32PixelY);
        else
            updateMousePosition(static_cast<int>(texture.getWidth() / 2), static_cast<int>(texture.getHeight() / 2));
    }
    redraw(m_bViewDirty);
}

void CTexViewWindow::slotChangeColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha)
{
    const auto mask = [](bool bOn) { return static_cast<uint8_t>(bOn ? 255 : 0); };
    m_View.aui8ColourMask = {mask(bRed), mask(bGreen), mask(bBlue), mask(bAlpha)};
    redraw(m_bViewDirty);
}

void CTexViewWindow::slotUpdateCurrentSurface(uint32_t ui32MIPLevel, uint32_t ui32ArrayMember, uint32_t ui32Face)
{
    m_View.ui32MIPLevel = ui32MIPLevel;
    m_View.ui32ArrayMember = ui32ArrayMember;
    m_View.ui32Face = ui32Face;
    redraw(m_bViewDirty);
}

void CTexViewWindow::slotUpdateBGColour(const QColor& bgColour)
{
    m_View.bgColour = bgColour;
    redraw(m_bViewDirty);
    keepViewPreferences();
}

void CTexViewWindow::slotUpdateGridSize(uint32_t ui32GridSize)
{
    m_View.ui32GridSize = ui32GridSize;
    redraw(m_bViewDirty);
    keepViewPreferences();
}

void CTexViewWindow::slotUpdateGridShown(bool bShowGrid)
{
    m_View.bGridShown = bShowGrid;
    redraw(m_bViewDirty);
    keepViewPreferences();
}

void CTexViewWindow::keepViewPreferences()
{
    if (m_pPreferences == nullptr)
        return;
    m_pPreferences->setUint(k_acGridSize, m_View.ui32GridSize);
    m_pPreferences->setBool(k_acGridShown, m_View.bGridShown);
    m_pPreferences->setUint(k_acBackgroundColour, m_View.bgColour.rgba());
    m_pPreferences->save();
}
