#include "Codecs/BC/BcAlphaBlock.h"

#include <algorithm>

namespace moxtexture
{

namespace
{

/// The index of alpha0 + (alpha1 - alpha0) in sevenths, t being the distance from alpha1 in these: the ends have 0 and 1, and
/// what lies between counts up from alpha 0.
uint32_t getAlphaIndex(float t)
{
    static constexpr std::array<uint8_t, 8> k_aIndexOfStep{1, 7, 6, 5, 4, 3, 2, 0};
    uint32_t uiStep = 0;
    while (uiStep < 7 && t >= static_cast<float>(uiStep) + 0.5f)
        ++uiStep;
    return k_aIndexOfStep[uiStep];
}

/// The eight alphas that an index chooses from.
std::array<uint8_t, 8> makeAlphaPalette(uint32_t a0, uint32_t a1)
{
    std::array<uint8_t, 8> palette{static_cast<uint8_t>(a0), static_cast<uint8_t>(a1), 0, 0, 0, 0, 0, 255};
    const uint32_t uiSteps = a0 > a1 ? 7 : 5;
    for (uint32_t i = 1; i < uiSteps; ++i)
        palette[i + 1] = static_cast<uint8_t>(((uiSteps - i) * a0 + i * a1) / uiSteps);
    return palette;
}

} // namespace

void bcAlphaBlock(const BcAlphas& alphas, uint8_t* pPart)
{
    const auto [pLeast, pGreatest] = std::minmax_element(alphas.begin(), alphas.end());
    const uint8_t alpha0 = *pGreatest;
    const uint8_t alpha1 = *pLeast;
    uint64_t uiBits = alpha0 | static_cast<uint64_t>(alpha1) << 8;
    if (alpha0 != alpha1)
        for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        {
            const float t = static_cast<float>(alphas[i] - alpha1) * 7.0f / static_cast<float>(alpha0 - alpha1);
            uiBits |= static_cast<uint64_t>(getAlphaIndex(t)) << (16 + 3 * i);
        }
    storeLE(pPart, uiBits);
}

void bcExplicitAlphaBlock(const BcAlphas& alphas, uint8_t* pPart)
{
    uint64_t uiBits = 0;
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        uiBits |= static_cast<uint64_t>(alphas[i] >> 4) << (4 * i);
    storeLE(pPart, uiBits);
}

BcAlphas decodeBcAlphaBlock(const uint8_t* pPart)
{
    const auto uiBits = loadLE<uint64_t>(pPart);
    const std::array<uint8_t, 8> palette = makeAlphaPalette(pPart[0], pPart[1]);
    BcAlphas alphas;
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        alphas[i] = palette[uiBits >> (16 + 3 * i) & 7];
    return alphas;
}

BcAlphas decodeBcExplicitAlphaBlock(const uint8_t* pPart)
{
    const auto uiBits = loadLE<uint64_t>(pPart);
    BcAlphas alphas;
    for (uint32_t i = 0; i < k_uiBcPixels; ++i)
        alphas[i] = static_cast<uint8_t>((uiBits >> (4 * i) & 15) * 17);
    return alphas;
}

void bcAlphaRowReference(const BcRowToEncode& row, bool bExplicit)
{
    for (size_t uiBlock = 0; uiBlock < row.uiBlockCount; ++uiBlock)
    {
        const BcPixels pixels = loadBcPixels(row, uiBlock);
        BcAlphas alphas;
        for (uint32_t i = 0; i < k_uiBcPixels; ++i)
            alphas[i] = static_cast<uint8_t>(pixels[i] >> 24);
        uint8_t* pPart = row.pParts + uiBlock * row.uiBlockBytes;
        if (bExplicit)
            bcExplicitAlphaBlock(alphas, pPart);
        else
            bcAlphaBlock(alphas, pPart);
    }
}

} // namespace moxtexture
