#include "Resources/Resources.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include <QtCore/QFile>
#include <QtGui/QColor>
#include <QtGui/QImage>
#include <gtest/gtest.h>

namespace
{

struct IconFolder
{
    const char* pFolder;
    std::vector<const char*> aNames;
};

const std::vector<IconFolder>& iconFolders()
{
    static const std::vector<IconFolder> s_aFolders = {
        {":/Icons/Icons/MainWindow/",
         {"OpenFile", "NewFile", "SaveFile", "Close", "Undo", "Redo", "EncodeTexture", "MetricsStats", "DiffInput", "DiffAgainst"}},
        {":/Icons/Icons/ToolBox/",
         {"MirrorBorder", "Rotate", "Flip", "ResizeImage", "Bleed", "PremultiplyAlpha", "ColourMipMaps", "CreateMipMaps", "NormalMap",
          "EditColourChannels", "ResizeCanvas"}},
        {":/CommonGUIElements/", {"Warning", "Error", "Information"}},
    };
    return s_aFolders;
}

/// Calls `check(path without "_24.png")` for each icon.
template <typename Check>
void forEachIcon(Check check)
{
    for (const IconFolder& folder : iconFolders())
    {
        for (const char* pName : folder.aNames)
            check(std::string(folder.pFolder) + pName);
    }
}

QImage load(const std::string& strPath)
{
    initResources();
    return QImage(QString::fromStdString(strPath));
}

/// Relative luminance and contrast as the Web Content Accessibility Guidelines 2.1 define them.
double linear(int iChannel)
{
    const double fValue = iChannel / 255.0;
    return fValue <= 0.03928 ? fValue / 12.92 : std::pow((fValue + 0.055) / 1.055, 2.4);
}

double luminance(QRgb colour)
{
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(double fA, double fB)
{
    return (std::max(fA, fB) + 0.05) / (std::min(fA, fB) + 0.05);
}

QRgb over(QRgb pixel, QRgb ground)
{
    const auto mix = [iAlpha = qAlpha(pixel)](int iFront, int iBack) { return (iFront * iAlpha + iBack * (255 - iAlpha)) / 255; };
    return qRgb(mix(qRed(pixel), qRed(ground)), mix(qGreen(pixel), qGreen(ground)), mix(qBlue(pixel), qBlue(ground)));
}

/// Pixels that stand out from the ground by 3 to 1, what the guidelines ask of graphics that carry a meaning.
int countClearPixels(const QImage& image, QRgb ground)
{
    const double fGround = luminance(ground);
    int iCount = 0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            iCount += contrast(luminance(over(image.pixel(x, y), ground)), fGround) >= 3.0;
    }
    return iCount;
}

/// The box round the pixels that are at least half opaque.
QRect drawnBox(const QImage& image)
{
    QRect box;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
        {
            if (qAlpha(image.pixel(x, y)) >= 128)
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

constexpr QRgb k_lightGround = qRgb(255, 255, 255);
constexpr QRgb k_darkGround = qRgb(0x2b, 0x2b, 0x2b);

TEST(Resources, EveryIconLoadsAt24PixelsAndAtTwiceThat)
{
    forEachIcon(
        [](const std::string& strIcon)
        {
            EXPECT_EQ(QSize(24, 24), load(strIcon + "_24.png").size()) << strIcon;
            EXPECT_EQ(QSize(48, 48), load(strIcon + "_24@2x.png").size()) << strIcon;
        });
}

TEST(Resources, EveryIconStandsOutFromALightAndFromADarkDesktop)
{
    forEachIcon(
        [](const std::string& strIcon)
        {
            for (const int iScale : {1, 2})
            {
                const QImage image = load(strIcon + (iScale == 1 ? "_24.png" : "_24@2x.png"));
                for (const QRgb ground : {k_lightGround, k_darkGround})
                {
                    // A stroke of two pixels along one side of a square of 16 and a half is 50 pixels: no icon is less than that.
                    EXPECT_GE(countClearPixels(image, ground), 50 * iScale * iScale)
                        << strIcon << " at " << iScale << "x on " << std::hex << ground;
                }
            }
        });
}

TEST(Resources, NearlyAllOpaquePixelsOfAnIconAreMidTones)
{
    forEachIcon(
        [](const std::string& strIcon)
        {
            const QImage image = load(strIcon + "_24@2x.png");
            int iOpaque = 0;
            int iMidTones = 0;
            for (int y = 0; y < image.height(); ++y)
            {
                for (int x = 0; x < image.width(); ++x)
                {
                    if (qAlpha(image.pixel(x, y)) < 255)
                        continue;
                    const double fLuminance = luminance(image.pixel(x, y));
                    ++iOpaque;
                    iMidTones +=
                        contrast(fLuminance, luminance(k_lightGround)) >= 3.0 && contrast(fLuminance, luminance(k_darkGround)) >= 3.0;
                }
            }
            EXPECT_GT(iOpaque, 0) << strIcon;
            EXPECT_GE(iMidTones * 10, iOpaque * 8) << strIcon << ": white marks on a coloured sign are all that may be lighter";
        });
}

TEST(Resources, IconsFillTheirSquare)
{
    forEachIcon(
        [](const std::string& strIcon)
        {
            const QRect box = drawnBox(load(strIcon + "_24.png"));
            EXPECT_GE(std::max(box.width(), box.height()), 18) << strIcon;
            EXPECT_GE(std::min(box.width(), box.height()), 14) << strIcon;
        });
}

TEST(Resources, TheApplicationIconComesInTheUsualSizes)
{
    for (const int iSize : {16, 32, 48, 64, 128, 256})
    {
        const std::string strPath = ":/AppIcons/Halvane_" + std::to_string(iSize) + ".png";
        const QImage image = load(strPath);
        EXPECT_EQ(QSize(iSize, iSize), image.size()) << strPath;
        EXPECT_TRUE(image.hasAlphaChannel()) << strPath;
    }
    EXPECT_EQ(QSize(512, 512), load(":/AppIcons/Halvane_256@2x.png").size());
}

TEST(Resources, WhiteTextCanBeReadOverTheWholeSplashPicture)
{
    const QImage image = load(":/SplashScreen/Halvane.png");
    ASSERT_EQ(QSize(640, 400), image.size());
    EXPECT_EQ(QSize(1280, 800), load(":/SplashScreen/Halvane@2x.png").size());
    double fWorst = 21.0;
    for (int y = 0; y < image.height(); ++y)
    {
        for (int x = 0; x < image.width(); ++x)
            fWorst = std::min(fWorst, contrast(luminance(image.pixel(x, y)), 1.0));
    }
    // The guidelines' number for text of any size.
    EXPECT_GE(fWorst, 4.5);
}

TEST(Resources, MakingThemKnownTwiceIsHarmless)
{
    initResources();
    initResources();
    EXPECT_TRUE(QFile::exists(":/SplashScreen/Halvane.png"));
}

} // namespace
