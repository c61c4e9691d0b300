#include "Codecs/ETC/EtcBlockBits.h"

namespace moxtexture
{

namespace
{

void storeBigEndian(uint8_t* pui8, uint32_t ui32)
{
    for (uint32_t i = 0; i < 4; ++i)
        pui8[i] = static_cast<uint8_t>(ui32 >> (24 - 8 * i));
}

/// What both modes with two halves have in the lowest eight bits of the high word.
uint32_t packTables(bool bFlip, uint32_t uiTable0, uint32_t uiTable1)
{
    return uiTable0 << 5 | uiTable1 << 2 | (bFlip ? k_ui32EtcFlipBit : 0);
}

/// Fills the upper three bits of a base and the sign bit of its delta, all 0 before, so that their sum is no level.
///
/// With the base's bits set and the sign clear the sum is 28 and the numbers of the two low bits of base and delta, with the base's
/// clear and the sign set it is those numbers less 4: one of both always overflows.
/// @param uiByte  the lowest bit of the byte that holds base and delta
uint32_t makeOverflow(uint32_t ui32High, uint32_t uiByte)
{
    const uint32_t uiLowBits = (ui32High >> (uiByte + 3) & 3) + (ui32High >> uiByte & 3);
    return ui32High | (uiLowBits >= 4 ? 7u << (uiByte + 5) : 1u << (uiByte + 2));
}

/// Makes the top bit of a base the opposite of the bit below it, so that no delta takes the sum out of 0 to 31.
uint32_t preventOverflow(uint32_t ui32High, uint32_t uiByte)
{
    return ui32High | (~ui32High >> (uiByte + 6) & 1) << (uiByte + 7);
}

constexpr uint32_t k_uiRedByte = 24;
constexpr uint32_t k_uiGreenByte = 16;
constexpr uint32_t k_uiBlueByte = 8;

} // namespace

void storeEtcBlock(uint8_t* pui8Block, const EtcBlockWords& words)
{
    storeBigEndian(pui8Block, words.ui32High);
    storeBigEndian(pui8Block + 4, words.ui32Low);
}

EtcBlockWords packIndividual(const EtcColour& levels0, const EtcColour& levels1, bool bFlip, uint32_t uiTable0, uint32_t uiTable1,
                             uint32_t ui32Indices)
{
    uint32_t ui32High = packTables(bFlip, uiTable0, uiTable1);
    for (uint32_t i = 0; i < 3; ++i)
        ui32High |= static_cast<uint32_t>(levels0[i] << 4 | levels1[i]) << (k_uiRedByte - 8 * i);
    return {ui32High, ui32Indices};
}

EtcBlockWords packDifferential(const EtcColour& levels0, const EtcColour& levels1, bool bFlip, uint32_t uiTable0, uint32_t uiTable1,
                               uint32_t ui32Indices)
{
    uint32_t ui32High = packTables(bFlip, uiTable0, uiTable1) | k_ui32EtcDiffBit;
    for (uint32_t i = 0; i < 3; ++i)
        ui32High |= static_cast<uint32_t>(levels0[i] << 3 | ((levels1[i] - levels0[i]) & 7)) << (k_uiRedByte - 8 * i);
    return {ui32High, ui32Indices};
}

EtcDifferentialLevels readEtcDifferentialLevels(uint32_t ui32High)
{
    EtcDifferentialLevels levels;
    for (uint32_t i = 0; i < 3; ++i)
    {
        const uint32_t uiByte = ui32High >> (k_uiRedByte - 8 * i) & 0xFF;
        const uint32_t uiDelta = uiByte & 7;
        levels.bases[i] = static_cast<uint8_t>(uiByte >> 3);
        // The delta's sign is carried on by taking away 8.
        levels.sums[i] = static_cast<uint8_t>((uiByte >> 3) + uiDelta - ((uiDelta & 4) << 1));
    }
    return levels;
}

EtcBlockWords stuffT(const EtcBlockWords& compact, bool bOpaqueBit)
{
    const uint32_t ui32Compact = compact.ui32High;
    uint32_t ui32High = moveEtcBits(ui32Compact, 2, 25, 27); // R0, upper bits
    ui32High |= moveEtcBits(ui32Compact, 24, 1, 2);          // R0, lower bits, to the upper bits of the distance index
    ui32High |= moveEtcBits(ui32Compact, 1, 0, 0);
    ui32High = makeOverflow(ui32High, k_uiRedByte);
    return {ui32High | (bOpaqueBit ? k_ui32EtcDiffBit : 0), compact.ui32Low};
}

EtcBlockWords stuffH(const EtcBlockWords& compact, bool bOpaqueBit)
{
    const uint32_t ui32Compact = compact.ui32High;
    uint32_t ui32High = moveEtcBits(ui32Compact, 7, 19, 24); // R0 and the upper bits of G0
    ui32High |= moveEtcBits(ui32Compact, 2, 17, 19);         // the lowest bit of G0 and the top bit of B0
    ui32High |= moveEtcBits(ui32Compact, 16, 1, 2);          // B0's other bits, to the upper bit of the distance index
    ui32High |= moveEtcBits(ui32Compact, 1, 0, 0);
    ui32High = makeOverflow(preventOverflow(ui32High, k_uiRedByte), k_uiGreenByte);
    return {ui32High | (bOpaqueBit ? k_ui32EtcDiffBit : 0), compact.ui32Low};
}

EtcBlockWords stuffPlanar(const EtcBlockWords& compact, bool bOpaqueBit)
{
    const uint32_t ui32Compact = compact.ui32High;
    uint32_t ui32High = moveEtcBits(ui32Compact, 7, 25, 24); // R O and the top bit of G O
    ui32High |= moveEtcBits(ui32Compact, 7, 18, 16);         // the rest of G O and the top bit of B O
    ui32High |= moveEtcBits(ui32Compact, 2, 16, 11);         // the next two bits of B O
    ui32High |= moveEtcBits(ui32Compact, 8, 8, 2);           // the rest of B O and R H but its lowest bit
    ui32High |= moveEtcBits(ui32Compact, 1, 7, 0);           // the lowest bit of R H
    ui32High = preventOverflow(preventOverflow(ui32High, k_uiRedByte), k_uiGreenByte);
    ui32High = makeOverflow(ui32High, k_uiBlueByte) | (bOpaqueBit ? k_ui32EtcDiffBit : 0);
    return {ui32High, moveEtcBits(ui32Compact, 7, 0, 25) | compact.ui32Low >> 7};
}

} // namespace moxtexture
