#include "Codecs/ETC/EtcModeFit.h"

#include <gtest/gtest.h>

#include <cstdint>

using moxtexture::indexToBlockOrder;

TEST(EtcModeFit, IndicesGoToTheirPlacesInTheStoredWord)
{
    for (uint32_t uiPixel = 0; uiPixel < 16; ++uiPixel)
        for (uint32_t uiIndex = 0; uiIndex < 4; ++uiIndex)
            EXPECT_EQ(indexToBlockOrder(uiIndex << uiPixel * 2),
                      (uiIndex / 2) << (16 + uiPixel % 4 * 4 + uiPixel / 4) | (uiIndex % 2) << (uiPixel % 4 * 4 + uiPixel / 4));
    EXPECT_EQ(indexToBlockOrder(0xFFFFFFFF), 0xFFFFFFFFu);
    EXPECT_EQ(indexToBlockOrder(0xAAAAAAAA), 0xFFFF0000u);
}
