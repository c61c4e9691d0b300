#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include <QtCore/QDir>
#include <QtGui/QDesktopServices>
#include <QtGui/QImage>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMdiArea>
#include <gtest/gtest.h>

#include "Application/Story/CMonkey.h"
#include "Files/SaveTexture.h"
#include "Support/NativeFileBuilder.h"
#include "Support/TemporaryFolder.h"
#include "Texture/CMOXTexture.h"

using namespace moxtexture;

namespace
{

/// Opens nothing outside the test.
class CNoDesktop : public QObject
{
    Q_OBJECT
public:
    CNoDesktop()
    {
        for (const char* pcScheme : k_apcSchemes)
            QDesktopServices::setUrlHandler(pcScheme, this, "open");
    }
    ~CNoDesktop() override
    {
        for (const char* pcScheme : k_apcSchemes)
            QDesktopServices::unsetUrlHandler(pcScheme);
    }

public slots:
    void open(const QUrl&) { ++m_iOpened; }

private:
    static constexpr const char* k_apcSchemes[] = {"file", "http", "https", "mailto"};
    int m_iOpened = 0;
};

QString writeImage(const testsupport::CTemporaryFolder& folder, const char* pcName, uint32_t uiWidth, uint32_t uiHeight)
{
    const std::vector<uint8_t> pixels = testsupport::makePicture(uiWidth, uiHeight);
    const QImage image(pixels.data(), static_cast<int>(uiWidth), static_cast<int>(uiHeight), QImage::Format_RGBA8888);
    const QString strPath = QString::fromStdString(folder.path(pcName));
    EXPECT_TRUE(image.save(strPath));
    return strPath;
}

QString writeTexture(const testsupport::CTemporaryFolder& folder, const char* pcName, const CMOXTextureHeader& header)
{
    CMOXTexture texture(header);
    testsupport::CSeededRandom random(7);
    for (uint32_t i = 0; i < texture.getDataSize(); ++i)
        texture.getDataPtr()[i] = static_cast<uint8_t>(random.below(256));
    EXPECT_TRUE(saveTexture(texture, folder.path(pcName)));
    return QString::fromStdString(folder.path(pcName));
}

std::vector<QString> makeFiles(const testsupport::CTemporaryFolder& folder)
{
    std::vector<QString> paths = {
        writeImage(folder, "photo.png", 37, 21),
        writeImage(folder, "square.bmp", 16, 16),
        writeImage(folder, "name with blanks, and dots.jpg", 24, 8),
        writeImage(folder, "\xC3\xBC\xE6\x9C\xA8.png", 5, 9),
        writeTexture(folder, "cube.mox", CMOXTextureHeader(k_RGBA8, 8, 8, 1, 4, 2, 6, eCS_sRGB, eCT_UnsignedNormalisedByte, true)),
        writeTexture(folder, "float.mox", CMOXTextureHeader(k_RGBA32, 4, 12, 1, 2, 1, 1, eCS_Linear, eCT_SignedFloatingPoint, false)),
        writeTexture(folder, "volume.mox",
                     CMOXTextureHeader(layout("rgb", 5, 6, 5), 6, 10, 3, 1, 1, 1, eCS_Linear, eCT_UnsignedNormalisedShort, false)),
        writeTexture(folder, "bc.mox", CMOXTextureHeader(ePF_BC1, 16, 16, 1, 5, 1, 1, eCS_Linear, eCT_UnsignedNormalisedByte, false))};
    const std::vector<uint8_t> aui8Good = testsupport::readBytes(folder.path("cube.mox"));
    testsupport::CSeededRandom random(3);
    for (int i = 0; i < 12; ++i)
    {
        // Cut short, with bytes changed, or both.
        std::vector<uint8_t> aui8Broken = aui8Good;
        if (i % 3 != 1)
            aui8Broken.resize(random.below(static_cast<uint32_t>(aui8Good.size())));
        for (int iChange = i % 3 == 0 ? 0 : 6; iChange > 0 && !aui8Broken.empty(); --iChange)
            aui8Broken[random.below(static_cast<uint32_t>(std::min<size_t>(aui8Broken.size(), 70)))] =
                static_cast<uint8_t>(random.below(256));
        paths.push_back(QString::fromStdString(folder.write("broken " + std::to_string(i) + ".mox", aui8Broken)));
    }
    paths.push_back(QString::fromStdString(folder.write("empty.png", std::string())));
    paths.push_back(QString::fromStdString(folder.write("noise.dds", random.bytes(500))));
    paths.push_back(QString::fromStdString(folder.write("text.ktx", std::string("no texture"))));
    paths.push_back(QString::fromStdString(folder.path("missing.png")));
    paths.push_back(QString::fromStdString(folder.path()));
    paths.push_back(QString());
    return paths;
}

constexpr std::array<const char*, 6> k_aDialogs = {"Open Source File", "Encode Texture", "Save Texture",
                                                   "Save Image",       "Grid Size",      "Change Background Colour..."};
constexpr std::array<const char*, 2> k_aDeeds = {"an encoded document", "context menu of the tree"};

/// It has chosen every action it could, taken and refused every dialog and come to what needs several deeds in a row.
bool hasBeenEverywhere(const CMonkey& monkey)
{
    const auto isIn = [](const auto& names) { return [&names](const auto& name) { return names.count(name) != 0; }; };
    return std::all_of(k_aDialogs.begin(), k_aDialogs.end(), isIn(monkey.accepted())) &&
           std::all_of(k_aDialogs.begin(), k_aDialogs.end(), isIn(monkey.rejected())) &&
           std::all_of(k_aDeeds.begin(), k_aDeeds.end(), isIn(monkey.counts())) &&
           std::all_of(monkey.enabledActions().begin(), monkey.enabledActions().end(), isIn(monkey.triggeredActions()));
}

/// Two thousand and five hundred actions; the seeds together are ten thousand.
class MonkeyOfSeed : public testing::TestWithParam<uint32_t>
{
};

} // namespace

TEST_P(MonkeyOfSeed, LeavesTheProgramStandingWhateverItDoes)
{
    constexpr int iActions = 2500;
    const testsupport::CTemporaryFolder folder;
    const testsupport::CTemporaryFolder saved;
    const CNoDesktop noDesktop;
    CMainWindow window;
    window.resize(900, 700);
    window.show();
    CMonkey monkey(window, GetParam(), makeFiles(folder), QString::fromStdString(saved.path()));
    for (int i = 0; i < iActions; ++i)
        monkey.act();
    // When a dialog meets its timer hangs on the machine's pace, so one run takes other ways than the next. What a run has not come
    // to yet it goes on for; the limit is far beyond chance.
    for (int i = 0; i < 10 * iActions && !hasBeenEverywhere(monkey); ++i)
        monkey.act();

    for (const auto& [strName, uiCount] : monkey.counts())
        std::cout << "  " << strName << ": " << uiCount << "\n";
    for (const auto& [strName, uiCount] : monkey.accepted())
        std::cout << "  pressed or accepted, \"" << strName << "\": " << uiCount << "\n";
    for (const auto& [strName, uiCount] : monkey.rejected())
        std::cout << "  rejected, \"" << strName << "\": " << uiCount << "\n";
    std::cout << "  actions that could be chosen: " << monkey.enabledActions().size() << ", chosen: " << monkey.triggeredActions().size()
              << "\n";
    for (const std::string& strAction : monkey.enabledActions())
        EXPECT_EQ(1u, monkey.triggeredActions().count(strAction)) << strAction;
    for (const char* pcTitle : k_aDialogs)
    {
        EXPECT_GT(monkey.accepted().count(pcTitle), 0u) << pcTitle;
        EXPECT_GT(monkey.rejected().count(pcTitle), 0u) << pcTitle;
    }
    for (const char* pcDeed : k_aDeeds)
        EXPECT_GT(monkey.counts().count(pcDeed), 0u) << pcDeed;
    // It still does its work.
    window.findChild<QMdiArea*>()->closeAllSubWindows();
    QApplication::processEvents();
    const int iBefore = window.findChild<QMdiArea*>()->subWindowList().size();
    window.slotOpenFile(writeImage(folder, "last.png", 3, 2));
    EXPECT_EQ(iBefore + 1, window.findChild<QMdiArea*>()->subWindowList().size());
}

INSTANTIATE_TEST_SUITE_P(Seeds, MonkeyOfSeed, testing::Values(1u, 2u, 3u, 4u));

#include "MonkeyTest.moc"
