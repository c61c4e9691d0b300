#include "Codecs/ETC/EtcTwoColours.h"

namespace moxtexture
{

EtcColourPair quantise444Pair(const EtcColourPair& bytes)
{
    EtcColourPair levels;
    for (size_t uiColour = 0; uiColour < 2; ++uiColour)
        for (size_t c = 0; c < 3; ++c)
            levels[uiColour][c] = static_cast<uint8_t>((15 * bytes[uiColour][c] + 120) / 255);
    return levels;
}

} // namespace moxtexture
