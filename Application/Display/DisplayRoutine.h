#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include <QtGui/QColor>
#include <QtGui/QImage>
#include <QtWidgets/QLabel>

#include "Display/ViewModes.h"
#include "Texture/CMOXTexture.h"

/// What a view shows, and how.
struct DisplayView
{
    ETextureViewModes eMode = eViewSingle;
    float fZoom = 1.0f;
    int32_t i32OffsetX = 0; ///< drawPictures() stores back what it draws with: see drawSingle() and k_i32MaximumCubePitch
    int32_t i32OffsetY = 0;
    std::array<uint8_t, 4> aui8ColourMask = {255, 255, 255, 255}; ///< 255 for a channel that shows, 0 for one that doesn't
    QColor bgColour = QColor(160, 160, 160, 255);
    bool bGridShown = false;
    uint32_t ui32GridSize = 4;
    uint32_t ui32MIPLevel = 0;
    uint32_t ui32ArrayMember = 0;
    uint32_t ui32Face = 0;
};

/// The pixels of a picture, kept from one draw to the next as long as its size stays.
class CPictureBuffer
{
public:
    /// Makes the buffer uiSize bytes large, unless it is so already. Whoever still holds an image of the old bytes keeps those.
    /// @return false, with a size of 0, where memory is refused
    [[nodiscard]] bool resize(size_t uiSize);
    /// Takes other bytes of the same size if an image of these is held elsewhere; where memory is refused, that image shares what
    /// is drawn next.
    void leaveToHolders();

    [[nodiscard]] size_t getSize() const { return m_uiSize; }
    [[nodiscard]] uint8_t* getData() const { return m_pData.get(); }
    /// An image over the bytes, without a copy; it keeps them alive.
    [[nodiscard]] QImage wrap(int iWidth, int iHeight) const;

private:
    std::shared_ptr<uint8_t[]> m_pData;
    size_t m_uiSize = 0;
};

/// One picture of a view: where it goes, what it shows, and its pixels between two draws.
struct DisplayPicture
{
    QLabel* pLabel = nullptr;
    const moxtexture::CMOXTexture* pTexture = nullptr; ///< 8-bit "rgba"; any other format shows as a missing surface
    QImage image;                                      ///< over the buffer
    CPictureBuffer buffer;
};

/// Draws the pictures of a view and puts each on its label.
///
/// A picture has the size of its label less the frame; with bForce that of level 0 of its texture at the view's zoom.
/// Where that is 0, or memory for it is refused, drawing ends there, and the label keeps the picture that it had.
/// A picture of more bytes than Qt's images can count (2 GiB) is refused too.
/// The caller keeps the flags that say whether there is anything to draw, and clears them afterwards.
void drawPictures(DisplayPicture* pPictures, uint32_t uiCount, DisplayView& view, bool bForce);
