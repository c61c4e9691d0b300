#include "Display/PickCubeRow.h"

void pickCubeRowReference(const CubeBasis& basis, int32_t x, int32_t y, uint32_t uiFaceWidth, uint32_t uiFaceHeight, uint32_t* pui32Faces,
                          uint32_t* pui32Texels, size_t uiCount)
{
    for (size_t i = 0; i < uiCount; ++i)
    {
        const CubeTexel texel = pickCubeTexel(basis, x + static_cast<int32_t>(i), y, uiFaceWidth, uiFaceHeight);
        pui32Faces[i] = texel.uiFace;
        pui32Texels[i] = texel.uiY * uiFaceWidth + texel.uiX;
    }
}
