#include "Display/DisplayRoutine.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include <QtGui/QPixmap>

#include "Display/CMOXDrawPixel.h"
#include "Display/CubeBasis.h"
#include "Display/DrawCube.h"
#include "Display/DrawSurface.h"
#include "Display/ScaledPlace.h"

bool CPictureBuffer::resize(size_t uiSize)
{
    if (uiSize == m_uiSize)
        return true;
    m_uiSize = 0;
    m_pData.reset();
    m_pData.reset(new (std::nothrow) uint8_t[uiSize]);
    if (m_pData == nullptr)
        return false;
    m_uiSize = uiSize;
    return true;
}

void CPictureBuffer::leaveToHolders()
{
    if (m_pData.use_count() <= 1)
        return;
    if (uint8_t* pui8Data = new (std::nothrow) uint8_t[m_uiSize])
        m_pData.reset(pui8Data);
}

QImage CPictureBuffer::wrap(int iWidth, int iHeight) const
{
    using Share = std::shared_ptr<uint8_t[]>;
    return QImage(
        m_pData.get(), iWidth, iHeight, 4 * iWidth, QImage::Format_RGB32, [](void* pShare) { delete static_cast<Share*>(pShare); },
        new Share(m_pData));
}

namespace
{

struct PictureSize
{
    int64_t i64Width = 0;
    int64_t i64Height = 0;

    /// False for nothing to draw, and for more bytes than a QImage can count.
    [[nodiscard]] bool isPossible() const
    {
        return i64Width > 0 && i64Height > 0 && i64Width <= std::numeric_limits<int>::max() / 4 / i64Height;
    }
};

PictureSize getPictureSize(const DisplayPicture& picture, float fZoom, bool bForce)
{
    if (bForce)
        return {scaleSize(picture.pTexture->getWidth(), fZoom), scaleSize(picture.pTexture->getHeight(), fZoom)};
    const int64_t i64Frame = 2 * int64_t{picture.pLabel->lineWidth()};
    return {picture.pLabel->width() - i64Frame, picture.pLabel->height() - i64Frame};
}

const uint8_t* getSurface(const moxtexture::CMOXTexture& texture, const DisplayView& view, uint32_t uiFace)
{
    return texture.getPixelFormat() == moxtexture::k_RGBA8 ? texture.getDataPtr(view.ui32MIPLevel, view.ui32ArrayMember, uiFace) : nullptr;
}

void drawTexture(const moxtexture::CMOXTexture& texture, const TargetImage& target, DisplayView& view)
{
    const QColor& bg = view.bgColour;
    const std::array<uint8_t, 4> aui8BG = {static_cast<uint8_t>(bg.red()), static_cast<uint8_t>(bg.green()),
                                           static_cast<uint8_t>(bg.blue()), static_cast<uint8_t>(bg.alpha())};
    const CDrawPixelChoice choice(aui8BG, view.aui8ColourMask);
    const CMOXDrawPixel& drawPixel = choice.choose(texture.isPreMultiplied());
    PixelGrid grid;
    grid.uiSize = view.ui32GridSize;
    const PixelGrid* pGrid = view.bGridShown ? &grid : nullptr;
    const uint32_t uiWidth = texture.getWidth(view.ui32MIPLevel);
    const uint32_t uiHeight = texture.getHeight(view.ui32MIPLevel);

    if (view.eMode == eViewCube)
    {
        view.i32OffsetY = std::clamp(view.i32OffsetY, -k_i32MaximumCubePitch, k_i32MaximumCubePitch);
        CubeFaces faces{uiWidth, uiHeight, {}};
        for (uint32_t i = 0; i < faces.apui8Pixels.size(); ++i)
            faces.apui8Pixels[i] = getSurface(texture, view, i);
        drawCube(faces, target, {view.i32OffsetX, view.i32OffsetY}, view.fZoom, drawPixel, EPixelOrder::eScreen);
        return;
    }
    const SourceImage source{uiWidth, uiHeight, getSurface(texture, view, view.ui32Face)};
    if (view.eMode == eViewTiled)
    {
        drawTiled(source, target, {view.i32OffsetX, view.i32OffsetY}, view.fZoom, drawPixel, pGrid, EPixelOrder::eScreen);
        return;
    }
    ViewOffset offset = {view.i32OffsetX, view.i32OffsetY};
    drawSingle(source, target, offset, view.fZoom, drawPixel, pGrid, EPixelOrder::eScreen);
    view.i32OffsetX = offset.x;
    view.i32OffsetY = offset.y;
}

} // namespace

void drawPictures(DisplayPicture* pPictures, uint32_t uiCount, DisplayView& view, bool bForce)
{
    for (uint32_t i = 0; i < uiCount; ++i)
    {
        DisplayPicture& picture = pPictures[i];
        const PictureSize size = getPictureSize(picture, view.fZoom, bForce);
        if (!size.isPossible() || !picture.buffer.resize(static_cast<size_t>(4 * size.i64Width * size.i64Height)))
            return;

        // The label shows these very bytes. It lets go of them now; whoever copied its picture keeps them. It gets the next picture
        // also where memory is short: drawing can do without.
        picture.pLabel->clear();
        picture.image = QImage();
        picture.buffer.leaveToHolders();

        const int iWidth = static_cast<int>(size.i64Width);
        const int iHeight = static_cast<int>(size.i64Height);
        drawTexture(*picture.pTexture, {static_cast<uint32_t>(iWidth), static_cast<uint32_t>(iHeight), picture.buffer.getData()}, view);
        picture.image = picture.buffer.wrap(iWidth, iHeight);
        QImage shown = picture.image;
        picture.pLabel->setPixmap(QPixmap::fromImage(std::move(shown)));
    }
}
