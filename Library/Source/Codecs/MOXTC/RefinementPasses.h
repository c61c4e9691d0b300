#pragma once

#include <cstdint>

#include "Codecs/MOXTC/BlockRegion.h"

namespace moxtexture
{

/// Runs a compressor's passes: better colours, upscaled, and then better codes in every pass whose number is a multiple of the
/// compressor's modulation interval (in none if that is 0).
///
/// @param forEachTile  takes a function of a BlockRegion and calls it for every tile, on whatever threads; all calls have ended when it
///                     returns. What belongs to no tile stays as it is
template <typename Compressor, typename ForEachTile>
void runRefinementPasses(Compressor& compressor, const ForEachTile& forEachTile)
{
    const uint32_t uiInterval = compressor.getModulationInterval();
    for (uint32_t uiPass = 0; uiPass < compressor.getIterations(); ++uiPass)
    {
        forEachTile([&](const BlockRegion& tile) { compressor.OptimiseColours(tile.uiX0, tile.uiX1, tile.uiY0, tile.uiY1); });
        compressor.UpscaleColours();
        if (uiInterval != 0 && uiPass % uiInterval == 0)
            forEachTile([&](const BlockRegion& tile) { compressor.OptimiseModulation(tile.uiX0, tile.uiX1, tile.uiY0, tile.uiY1); });
    }
}

} // namespace moxtexture
