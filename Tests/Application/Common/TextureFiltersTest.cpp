#include "Common/TextureFilters.h"

#include <QtCore/QStringList>
#include <gtest/gtest.h>

TEST(TextureFilters, TheFirstTakesEveryKindAndTheLastAnyFile)
{
    const QStringList filters = getTextureOpenFilter().split(";;");
    EXPECT_EQ("All Supported Image Files (*.mox *.ktx *.dds *.png *.bmp *.jpg *.jpeg *.tga)", filters.front().toStdString());
    EXPECT_EQ("All Files (*)", filters.back().toStdString());
}

TEST(TextureFilters, TheKindsStandInTheirOrder)
{
    const QStringList expected = {"Moxwell Textures (*.mox)", "Khronos Textures (*.ktx)",          "Direct Draw Surfaces (*.dds)",
                                  "Bitmap Files (*.bmp)",     "Portable Network Graphics (*.png)", "JPEG Files (*.jpg *.jpeg)",
                                  "Targa Files (*.tga)"};
    EXPECT_EQ(expected, getTextureOpenFilter().split(";;").mid(1, 7));
    EXPECT_EQ(9, getTextureOpenFilter().split(";;").size());
}

TEST(TextureFilters, TheTitleIsThatOfEveryOpenDialog)
{
    EXPECT_STREQ("Open Source File", k_acOpenSourceTitle);
}
