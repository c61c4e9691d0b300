#include <filesystem>
#include <set>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "Support/CatalogueLayouts.h"
#include "Support/NativeLoading.h"
#include "Support/TemporaryFolder.h"

using namespace moxtexture;
using namespace testsupport;

/// What the fuzz target starts from is worth as much as the files that its corpus holds.
TEST(NativeCorpus, HoldsASoundFileOfEveryLayoutAndEveryNumberedFormat)
{
    std::set<std::pair<uint64_t, uint32_t>> sound;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(HALVANE_SOURCE_DIR) + "/Tests/Fuzz/Corpus/NativeReader"))
    {
        const NativeLoad load = loadNative(readBytes(entry.path().string()));
        if (load.bGood)
            sound.emplace(load.texture.getPixelFormat().getWord(), load.texture.getChannelType());
    }
    for (const CatalogueLayout& row : k_aCatalogueLayouts)
        EXPECT_EQ(1u, sound.count({row.getFormat().getWord(), row.uiType})) << row.strLetters << ", type " << row.uiType;
    for (uint32_t uiFormat = 0; uiFormat < ePF_Count; ++uiFormat)
    {
        const bool bHasSize = uiFormat != ePF_BC6 && uiFormat != ePF_BC7;
        EXPECT_EQ(bHasSize ? 1u : 0u, sound.count({uiFormat, eCT_UnsignedNormalisedByte})) << uiFormat;
    }
}
