#include "Pixels/PixelShuffle.h"

namespace moxtexture
{

bool PixelShuffle::isIdentity() const
{
    for (size_t i = 0; i < uiTargetBytes; ++i)
        if (aui8From[i] != i)
            return false;
    return uiSourceBytes == uiTargetBytes;
}

void shufflePixelsReference(const PixelShuffle& shuffle, const uint8_t* pSource, uint8_t* pTarget, size_t uiCount)
{
    for (size_t uiPixel = 0; uiPixel < uiCount; ++uiPixel)
    {
        for (size_t i = 0; i < shuffle.uiTargetBytes; ++i)
        {
            const uint8_t uiFrom = shuffle.aui8From[i];
            pTarget[i] = uiFrom == PixelShuffle::k_uiConstant ? shuffle.aui8Value[i] : pSource[uiFrom];
        }
        pSource += shuffle.uiSourceBytes;
        pTarget += shuffle.uiTargetBytes;
    }
}

} // namespace moxtexture
