#pragma once

#include <array>
#include <cstdint>
#include <string>

#include <QtGui/QColor>
#include <QtWidgets/QWidget>

#include "Display/DisplayRoutine.h"
#include "Display/MousePick.h"
#include "Display/ViewModes.h"
#include "Documents/PixelReadout.h"
#include "Texture/CMOXTexture.h"

class Preferences;

/// The widget of a sub window: how a document is looked at (mode, zoom, pan, surface, mask, grid, background), whatever it holds.
///
/// Grid and background are kept in the preferences at once, so the window last touched decides for the next.
class CTexViewWindow : public QWidget
{
    Q_OBJECT

public:
    /// @param strName       full path or generated name of the document, UTF-8
    /// @param pPreferences  must outlive the window; null for defaults that nobody keeps
    CTexViewWindow(const std::string& strName, Preferences* pPreferences, QWidget* pParent);

    /// The channel values under the mouse, as they stand in the texture that uiIndex chooses.
    /// @return false if the mouse is over no pixel of it
    virtual bool getMousePixelValue(uint32_t (&aui32Values)[4], uint32_t uiIndex = 0) = 0;
    virtual moxtexture::CMOXTexture& getWorkingTexture(uint32_t uiIndex = 0) = 0;
    virtual moxtexture::CMOXTexture& getStoredTexture(uint32_t uiIndex = 0) = 0;
    [[nodiscard]] virtual bool isDiff() const { return false; }
    /// Asks for a name and saves the current surface as an ordinary image.
    /// @return 1 done, 0 failed, -1 cancelled
    virtual int saveImage() = 0;
    /// Finds the texel under a place of this widget.
    virtual void updateMousePosition(int x, int y) = 0;
    /// Draws, if anything changed since the last time.
    /// @param bForce  draw at full size: the sizes of the first level times the zoom, not those of the label
    virtual void updateDisplay(bool bForce) = 0;
    /// Draws at full size and lets the sub window follow, unless it is maximised.
    virtual void fitTexture();

    /// Last component of the name, with " *" behind it where there are changes.
    [[nodiscard]] QString getViewTitle() const;
    /// The same of the whole name.
    [[nodiscard]] QString getFullTitle() const;
    [[nodiscard]] const std::string& getName() const { return m_strName; }
    /// The constructor failed; getError() tells the user why.
    [[nodiscard]] bool hasError() const { return m_bError; }
    [[nodiscard]] const QString& getError() const { return m_strError; }

    [[nodiscard]] ETextureViewModes getViewMode() const { return m_View.eMode; }
    [[nodiscard]] int32_t getZoomPosition() const { return m_i32ZoomPosition; }
    [[nodiscard]] float getZoom() const { return m_View.fZoom; }
    /// Red, green, blue, alpha: 255 shown, 0 hidden.
    [[nodiscard]] const std::array<uint8_t, 4>& getColourMask() const { return m_View.aui8ColourMask; }
    [[nodiscard]] uint32_t getMIPLevel() const { return m_View.ui32MIPLevel; }
    [[nodiscard]] uint32_t getArrayMember() const { return m_View.ui32ArrayMember; }
    [[nodiscard]] uint32_t getFace() const { return m_View.ui32Face; }
    /// The face under the mouse; the current one where there is no cube.
    [[nodiscard]] uint32_t getCubeFace() const { return m_Mouse.uiCubeFace; }
    [[nodiscard]] int32_t getPixelX() const { return m_Mouse.i32PixelX; }
    [[nodiscard]] int32_t getPixelY() const { return m_Mouse.i32PixelY; }
    [[nodiscard]] bool isMouseInside() const { return m_Mouse.bInside; }
    [[nodiscard]] const QColor& getBGColour() const { return m_View.bgColour; }
    [[nodiscard]] bool isGridShown() const { return m_View.bGridShown; }
    [[nodiscard]] uint32_t getGridSize() const { return m_View.ui32GridSize; }
    [[nodiscard]] uint32_t getPadding() const { return m_ui32Padding; }
    [[nodiscard]] int32_t getOffsetX() const { return m_View.i32OffsetX; }
    [[nodiscard]] int32_t getOffsetY() const { return m_View.i32OffsetY; }
    /// All that the texts of PixelReadout.h tell about.
    [[nodiscard]] ReadoutPlace getReadoutPlace() const;

    [[nodiscard]] virtual bool isModified() const { return false; }
    [[nodiscard]] virtual int32_t getChangeCount() const { return 0; }
    /// Closing asks nothing any more.
    void setDiscardOnClose(bool bDiscardOnClose) { m_bDiscardOnClose = bDiscardOnClose; }

public slots:
    void slotUpdateZoomScalePosition(int32_t i32NewPosition);
    void slotChangeViewMode(ETextureViewModes eMode);
    void slotChangeColourMask(bool bRed, bool bGreen, bool bBlue, bool bAlpha);
    void slotUpdateCurrentSurface(uint32_t ui32MIPLevel, uint32_t ui32ArrayMember, uint32_t ui32Face);
    void slotUpdateBGColour(const QColor& bgColour);
    void slotUpdateGridSize(uint32_t ui32GridSize);
    void slotUpdateGridShown(bool bShowGrid);
    /// Takes effect at the next save.
    void slotUpdatePadding(uint32_t ui32Padding) { m_ui32Padding = ui32Padding; }

signals:
    void signalMousePositionUpdated();
    /// The wheel changed the zoom, or tried to.
    void signalZoomScaleUpdated();

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void wheelEvent(QWheelEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;

    /// One of the labels that show a picture is under the mouse.
    [[nodiscard]] virtual bool isPictureUnderMouse() const = 0;

    /// Draws pictures as updateDisplay() tells and takes the flags back.
    void drawIfNeeded(DisplayPicture* pPictures, uint32_t uiCount, bool bForce);
    /// updateMousePosition() over a label and the texture that it shows.
    void locateMouse(int x, int y, const QLabel& label, const moxtexture::CMOXTextureHeader& header);
    /// Sets one of the flags below, and repaints at once where the window is on the screen.
    void redraw(bool& bDirtyFlag);
    void setName(const std::string& strName) { m_strName = strName; }
    void setError(const QString& strError);
    [[nodiscard]] Preferences* getPreferences() const { return m_pPreferences; }
    [[nodiscard]] bool isDiscardedOnClose() const { return m_bDiscardOnClose; }

    bool m_bTextureDirty = true;
    bool m_bSizeDirty = true;
    bool m_bViewDirty = true;

private:
    void changeZoom(int32_t i32NewPosition);
    void keepViewPreferences();
    [[nodiscard]] QString withChangeMark(const QString& strName) const;

    DisplayView m_View;
    std::string m_strName;
    QString m_strError;
    bool m_bError = false;
    bool m_bDragging = false;
    int32_t m_i32LastMouseX = 0;
    int32_t m_i32LastMouseY = 0;
    MousePick m_Mouse;
    int32_t m_i32ZoomPosition;
    Preferences* m_pPreferences;
    uint32_t m_ui32Padding = 0;
    bool m_bDiscardOnClose = false;
};
