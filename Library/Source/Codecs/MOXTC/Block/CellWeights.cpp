#include "Codecs/MOXTC/Block/CellWeights.h"

#include "Codecs/MOXTC/Block/Modulation.h"

namespace moxtexture
{

void interpolateWeightsReference(const BlockStrip& upper, const BlockStrip& lower, size_t uiCellCount, CellWeights& weights)
{
    const CellWeightRows rows(upper, lower);
    for (uint32_t j = 0; j < k_uiBlockHeight; ++j)
    {
        const uint8_t* const pAbove = rows.ap[j];
        const uint8_t* const pRow = rows.ap[j + 1];
        const uint8_t* const pBelow = rows.ap[j + 2];
        const uint8_t* const pModes = (j < k_uiBlockHeight / 2 ? upper : lower).aui8Modes.data();
        for (size_t i = 0; i < uiCellCount * k_uiMaxBlockWidth; ++i)
        {
            const size_t x = i + k_uiMaxBlockWidth / 2;
            const uint32_t uiAcross = uint32_t{pRow[x - 1]} + pRow[x + 1];
            const uint32_t uiDown = uint32_t{pAbove[x]} + pBelow[x];
            uint32_t uiWeight = pRow[x];
            if (!isStoredPosition(static_cast<uint32_t>(x % 2), j))
            {
                if (pModes[x] == k_ui8ModeBothAxes)
                    uiWeight = (uiAcross + uiDown + 2) / 4;
                else if (pModes[x] == k_ui8ModeHorizontal)
                    uiWeight = (uiAcross + 1) / 2;
                else if (pModes[x] == k_ui8ModeVertical)
                    uiWeight = (uiDown + 1) / 2;
            }
            weights.aaui8[j][i] = static_cast<uint8_t>(uiWeight);
        }
    }
}

} // namespace moxtexture
