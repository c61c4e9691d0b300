#pragma once

#include <array>
#include <cstdint>

/// Makes one displayed pixel of a source pixel, both red, green, blue, alpha.
///
/// draw() a pixel at a time is what a picture is; the rows of DrawRow.h are the same, only faster.
class CMOXDrawPixel
{
public:
    virtual ~CMOXDrawPixel() = default;

    /// @param dst  four bytes; may be src itself
    virtual void draw(uint8_t* dst, const uint8_t* src) const = 0;

    void setBGColour(const std::array<uint8_t, 4>& aui8BGColour) { m_aui8BGColour = aui8BGColour; }
    /// @param aui8Mask  255 for a channel that shows, 0 for one that doesn't
    void setMask(const std::array<uint8_t, 4>& aui8Mask) { m_aui8Mask = aui8Mask; }
    [[nodiscard]] const std::array<uint8_t, 4>& getBGColour() const { return m_aui8BGColour; }
    [[nodiscard]] const std::array<uint8_t, 4>& getMask() const { return m_aui8Mask; }

protected:
    std::array<uint8_t, 4> m_aui8BGColour = {0, 0, 0, 255};
    std::array<uint8_t, 4> m_aui8Mask = {255, 255, 255, 255};
};

/// Colour over the background, by alpha. With the alpha mask off alpha is 255 everywhere.
class CMOXDrawPixelBlend : public CMOXDrawPixel
{
public:
    void draw(uint8_t* dst, const uint8_t* src) const override;
};

/// The same for colours that were multiplied by alpha before.
class CMOXDrawPixelPreMultBlend : public CMOXDrawPixel
{
public:
    void draw(uint8_t* dst, const uint8_t* src) const override;
};

/// Alpha alone, as a grey. Takes no notice of background and mask.
class CMOXDrawPixelAlphaAsGrey : public CMOXDrawPixel
{
public:
    void draw(uint8_t* dst, const uint8_t* src) const override;
};

/// The three of a draw, of which one draws.
class CDrawPixelChoice
{
public:
    CDrawPixelChoice(const std::array<uint8_t, 4>& aui8BGColour, const std::array<uint8_t, 4>& aui8Mask);

    /// @param bPreMultiplied  whether the texture's colours are
    /// @return alpha as grey where alpha alone is on, else one of the blends; valid as long as this object
    [[nodiscard]] const CMOXDrawPixel& choose(bool bPreMultiplied) const;

private:
    CMOXDrawPixelBlend m_Blend;
    CMOXDrawPixelPreMultBlend m_PreMultBlend;
    CMOXDrawPixelAlphaAsGrey m_AlphaAsGrey;
};
