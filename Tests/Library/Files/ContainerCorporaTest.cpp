#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "Files/FileExtension.h"
#include "Files/LoadTexture.h"
#include "Formats/GLFormatTable.h"
#include "Support/CatalogueLayouts.h"
#include "Support/MemoryFile.h"
#include "Support/TemporaryFolder.h"
#include "Texture/CMOXTexture.h"

using namespace moxtexture;
using namespace testsupport;

namespace
{

/// What the files of a corpus are that load whole.
struct Sound
{
    std::set<uint64_t> formats;        ///< format words
    std::set<std::string> shapes;      ///< "array", "cube", "depth", "levels"
    uint32_t uiFiles = 0, uiSound = 0; ///< of all, and of those
};

Sound lookAt(const std::string& strCorpus)
{
    Sound sound;
    for (const auto& entry : std::filesystem::directory_iterator(std::string(HALVANE_SOURCE_DIR) + "/Tests/Fuzz/Corpus/" + strCorpus))
    {
        const std::vector<uint8_t> bytes = readBytes(entry.path().string());
        const CMemoryFile file(bytes);
        CMOXTexture texture;
        ++sound.uiFiles;
        if (!readTexture(file.get(), getFileExtension(entry.path().string()), texture) || texture.getDataSize() == 0)
            continue;
        ++sound.uiSound;
        sound.formats.insert(texture.getPixelFormat().getWord());
        if (texture.getNumArrayMembers() > 1)
            sound.shapes.insert("array");
        if (texture.getNumFaces() == 6)
            sound.shapes.insert("cube");
        if (texture.getDepth() > 1)
            sound.shapes.insert("depth");
        if (texture.getNumMIPLevels() > 1)
            sound.shapes.insert("levels");
    }
    return sound;
}

void expectFormats(const Sound& sound, std::initializer_list<uint64_t> words)
{
    for (const uint64_t ui64Word : words)
        EXPECT_EQ(1u, sound.formats.count(ui64Word)) << ui64Word;
}

using Shapes = std::set<std::string>;

} // namespace

// What the fuzz targets start from is worth as much as the files that their corpora hold.

TEST(KtxCorpus, HoldsASoundFileOfEveryLayoutWithNumbersAndOfEveryShape)
{
    const Sound sound = lookAt("KtxReader");
    for (const CatalogueLayout& row : k_aCatalogueLayouts)
    {
        const size_t uiWanted = findGLFormat(row.getEncoding()) ? 1 : 0;
        EXPECT_LE(uiWanted, sound.formats.count(row.getFormat().getWord())) << row.strLetters << ", type " << row.uiType;
    }
    expectFormats(sound, {0, 1, 2, 3, 4, 5, 6, 7, 9, 11, 19, 22, 23, 24, 25, 26, 27, 40, 41, 50});
    EXPECT_EQ((Shapes{"array", "cube", "depth", "levels"}), sound.shapes);
    EXPECT_LT(sound.uiSound, sound.uiFiles); // broken ones are there as well
}

TEST(DdsCorpus, HoldsASoundFileOfEveryKindOfHeaderAndOfEveryShape)
{
    const Sound sound = lookAt("DdsReader");
    // Masks: 27, 20, 62. FourCC numbers: 36, 112. Letters. Extended: 2, 26, 67, 86.
    expectFormats(sound, {layout("rgb", 3, 3, 2).getWord(),
                          layout("rgb", 8, 8, 8).getWord(),
                          layout("xlgr", 8, 8, 8, 8).getWord(),
                          layout("abgr", 16, 16, 16, 16).getWord(),
                          layout("gr", 16, 16).getWord(),
                          1,
                          3,
                          7,
                          8,
                          9,
                          10,
                          11,
                          16,
                          17,
                          20,
                          21,
                          layout("rgba", 32, 32, 32, 32).getWord(),
                          layout("bgr", 10, 11, 11).getWord(),
                          18,
                          19,
                          layout("argb", 1, 5, 5, 5).getWord()});
    EXPECT_EQ((Shapes{"array", "cube", "depth", "levels"}), sound.shapes);
    EXPECT_LT(sound.uiSound, sound.uiFiles);
}

TEST(AstcCorpus, HoldsASoundFileOfEveryBlockSize)
{
    const Sound sound = lookAt("AstcReader");
    for (uint32_t uiFormat = ePF_ASTC_4x4; uiFormat <= ePF_ASTC_6x6x6; ++uiFormat)
        EXPECT_EQ(1u, sound.formats.count(uiFormat)) << uiFormat;
    EXPECT_EQ(Shapes{"depth"}, sound.shapes);
    EXPECT_LT(sound.uiSound, sound.uiFiles);
}

TEST(LegacyCorpus, HoldsASoundFileOfEveryNumberedFormatThatItMayHaveAndOfEveryShape)
{
    const Sound sound = lookAt("LegacyReader");
    expectFormats(sound, {1, 3, 4, 5, 6, 7, 8, 9, 11, 16, 17, 18, 19, 20, 21});
    EXPECT_EQ((Shapes{"array", "cube", "levels"}), sound.shapes);
    EXPECT_LT(sound.uiSound, sound.uiFiles);
}
