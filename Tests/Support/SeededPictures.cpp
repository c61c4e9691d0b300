#include "Support/SeededPictures.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace testsupport
{
namespace
{

/// Smooth noise: random values on a grid of 2^uiShift pixels, blended between the grid points with whole numbers.
class CNoise
{
public:
    CNoise(uint64_t ui64Seed, unsigned int uiShift) : m_ui64Seed(ui64Seed), m_uiShift(uiShift) {}

    /// -128 to 127
    int at(uint32_t x, uint32_t y) const
    {
        const uint32_t uiMask = (1u << m_uiShift) - 1;
        const int fx = static_cast<int>(x & uiMask);
        const int fy = static_cast<int>(y & uiMask);
        const int iStep = 1 << m_uiShift;
        const uint32_t gx = x >> m_uiShift;
        const uint32_t gy = y >> m_uiShift;
        const int64_t top = int64_t{grid(gx, gy)} * (iStep - fx) + int64_t{grid(gx + 1, gy)} * fx;
        const int64_t bottom = int64_t{grid(gx, gy + 1)} * (iStep - fx) + int64_t{grid(gx + 1, gy + 1)} * fx;
        return static_cast<int>((top * (iStep - fy) + bottom * fy) >> (2 * m_uiShift));
    }

private:
    int grid(uint32_t x, uint32_t y) const
    {
        CSeededRandom random(m_ui64Seed ^ (uint64_t{x} << 32) ^ (uint64_t{y} * 0x9E3779B1u));
        return static_cast<int>(random.next32() >> 24) - 128;
    }

    uint64_t m_ui64Seed;
    unsigned int m_uiShift;
};

/// Letters of five by seven dots, a row of bits each.
constexpr std::array<std::array<uint8_t, 7>, 7> k_aLetters = {{
    {0x11, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}, // H
    {0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}, // A
    {0x10, 0x10, 0x10, 0x10, 0x10, 0x10, 0x1F}, // L
    {0x11, 0x11, 0x11, 0x11, 0x11, 0x0A, 0x04}, // V
    {0x0E, 0x11, 0x11, 0x1F, 0x11, 0x11, 0x11}, // A
    {0x11, 0x19, 0x15, 0x13, 0x11, 0x11, 0x11}, // N
    {0x1F, 0x10, 0x10, 0x1E, 0x10, 0x10, 0x1F}, // E
}};

/// @param x, y  within a field of 64 by 64; the word stands in it six times, one below the other
bool isLetterDot(uint32_t x, uint32_t y)
{
    constexpr uint32_t uiLeft = 11;
    constexpr uint32_t uiTop = 5;
    if (x < uiLeft || y < uiTop || y >= uiTop + 6 * 9)
        return false;
    const uint32_t uiLetter = (x - uiLeft) / 6;
    const uint32_t uiColumn = (x - uiLeft) % 6;
    const uint32_t uiRow = (y - uiTop) % 9;
    if (uiLetter >= k_aLetters.size() || uiColumn >= 5 || uiRow >= 7)
        return false;
    return ((k_aLetters[uiLetter][uiRow] >> (4 - uiColumn)) & 1) != 0;
}

uint8_t toByte(int iValue)
{
    return static_cast<uint8_t>(std::clamp(iValue, 0, 255));
}

} // namespace

uint64_t CSeededRandom::next64()
{
    m_ui64State += 0x9E3779B97F4A7C15u;
    uint64_t z = m_ui64State;
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
    return z ^ (z >> 31);
}

std::vector<uint8_t> CSeededRandom::bytes(size_t uiCount)
{
    std::vector<uint8_t> result(uiCount);
    std::generate(result.begin(), result.end(), [this] { return static_cast<uint8_t>(next64() >> 56); });
    return result;
}

std::vector<uint8_t> makePicture(uint32_t uiWidth, uint32_t uiHeight, uint64_t ui64Seed)
{
    std::vector<uint8_t> pixels(size_t{uiWidth} * uiHeight * 4);
    const CNoise land(ui64Seed, 7);
    const CNoise hills(ui64Seed + 1, 5);
    const CNoise grass(ui64Seed + 2, 3);
    const CNoise tint(ui64Seed + 3, 6);
    CSeededRandom grain(ui64Seed + 4);

    for (uint32_t y = 0; y < uiHeight; ++y)
    {
        for (uint32_t x = 0; x < uiWidth; ++x)
        {
            const int iGrain = static_cast<int>(grain.below(9)) - 4;
            const int iShape = land.at(x, y) / 2 + hills.at(x, y) / 4 + grass.at(x, y) / 8 + iGrain;
            const int iTint = tint.at(x, y) / 3;
            int iRed = 130 + iShape + iTint;
            int iGreen = 120 + iShape;
            int iBlue = 100 + iShape - iTint + static_cast<int>(uint64_t{y} * 64 / std::max(1u, uiHeight));
            int iAlpha = 255;

            // Four fields below the noise: it stands alone in the first; stripes, a gradient and letters in the others.
            const uint32_t uiTileX = (x >> 6) & 3;
            const uint32_t uiTileY = (y >> 6) & 3;
            if (uiTileX == 1 && uiTileY == 1 && ((x + 2 * y) & 16) != 0)
            {
                iRed = 235;
                iGreen = 40 + iGrain;
                iBlue = 30;
                iAlpha = 0;
            }
            else if (uiTileX == 3 && uiTileY == 2)
            {
                iRed = static_cast<int>((x & 63) * 4);
                iGreen = static_cast<int>((y & 63) * 4);
                iBlue = 255 - iRed;
                iAlpha = static_cast<int>((x & 63) * 2 + (y & 63) * 2);
            }
            else if (uiTileX == 2 && uiTileY == 0 && isLetterDot(x & 63, y & 63))
            {
                iRed = iGreen = iBlue = 12;
            }
            else if (uiTileX == 0 && uiTileY == 3)
            {
                iRed = 64;
                iGreen = 96;
                iBlue = 200;
            }

            uint8_t* pPixel = &pixels[(size_t{y} * uiWidth + x) * 4];
            pPixel[0] = toByte(iRed);
            pPixel[1] = toByte(iGreen);
            pPixel[2] = toByte(iBlue);
            pPixel[3] = toByte(iAlpha);
        }
    }
    return pixels;
}

} // namespace testsupport
