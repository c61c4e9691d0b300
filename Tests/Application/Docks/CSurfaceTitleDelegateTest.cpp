#include "Docks/CSurfaceTitleDelegate.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtWidgets/QApplication>
#include <QtWidgets/QTreeWidget>

namespace
{

const QString k_strEncoded = "photo of a summer evening.png (Encoded:MOXTC 4bpp RGBA) * (64 x 64)";
const QString k_strEnd = QString("(") + QChar(0x2026) + "MOXTC 4bpp RGBA) * (64 x 64)";

QFontMetrics metrics()
{
    return QFontMetrics(QApplication::font());
}

int widthOf(const QString& str)
{
    return metrics().horizontalAdvance(str);
}

QString elide(const QString& strTitle, int iWidth)
{
    return elideSurfaceTitle(metrics(), strTitle, iWidth);
}

/// A row of the tree as it is drawn.
QImage drawRow(const QString& strText, int iWidth, bool bPlainDelegate)
{
    QTreeWidget tree;
    auto* pItem = new QTreeWidgetItem(&tree, {strText});
    QStyleOptionViewItem option;
    option.initFrom(&tree);
    option.widget = &tree;
    option.rect = QRect(0, 0, iWidth, 20);
    QImage image(iWidth, 20, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    const QModelIndex index = tree.model()->index(0, 0);
    EXPECT_EQ(pItem->text(0), index.data().toString());
    if (bPlainDelegate)
        QStyledItemDelegate().paint(&painter, option, index);
    else
        CSurfaceTitleDelegate().paint(&painter, option, index);
    return image;
}

} // namespace

TEST(ElideSurfaceTitle, LeavesWhatFitsAsItIs)
{
    EXPECT_EQ(k_strEncoded, elide(k_strEncoded, widthOf(k_strEncoded) + 2));
    EXPECT_EQ(QString("a.png (1 x 1)"), elide("a.png (1 x 1)", 1000));
}

TEST(ElideSurfaceTitle, DropsTheWordBeforeTheFormatFirst)
{
    EXPECT_EQ("photo of a summer evening.png " + k_strEnd, elide(k_strEncoded, widthOf(k_strEncoded) - 1));
}

TEST(ElideSurfaceTitle, CutsTheMiddleOfTheNameNext)
{
    const QString strCut = elide(k_strEncoded, widthOf("photo of a sum.png " + k_strEnd));
    EXPECT_TRUE(strCut.startsWith("photo")) << strCut.toStdString();
    EXPECT_TRUE(strCut.endsWith(".png " + k_strEnd)) << strCut.toStdString();
}

TEST(ElideSurfaceTitle, KeepsAShortNameWholeAsLongAsTheFormatIs)
{
    EXPECT_EQ("p2.png " + k_strEnd, elide("p2.png (Encoded:MOXTC 4bpp RGBA) * (64 x 64)", widthOf("p2.png " + k_strEnd) + 2));
}

TEST(ElideSurfaceTitle, KeepsTheEndWhereNothingElseHasRoom)
{
    const QString strCut = elide(k_strEncoded, widthOf("4bpp RGBA) * (64 x 64)"));
    EXPECT_TRUE(strCut.endsWith("RGBA) * (64 x 64)")) << strCut.toStdString();
    EXPECT_EQ(QChar(0x2026), strCut[0]);
}

TEST(ElideSurfaceTitle, GoesByTheLastOfSeveralEncodings)
{
    const QString strTwice = "a long name.png (Encoded:BC1) (Encoded:ETC1) (64 x 64)";
    EXPECT_EQ(QString("a long name.png (Encoded:BC1) (") + QChar(0x2026) + "ETC1) (64 x 64)", elide(strTwice, widthOf(strTwice) - 1));
}

TEST(ElideSurfaceTitle, CutsAnyOtherTitleInItsMiddle)
{
    const QString strCut = elide("a very long name of a file that was not encoded.png (64 x 64)", widthOf("a very long name (64 x 64)"));
    EXPECT_TRUE(strCut.startsWith("a very")) << strCut.toStdString();
    EXPECT_TRUE(strCut.endsWith("(64 x 64)")) << strCut.toStdString();
}

TEST(ElideSurfaceTitle, NeverTakesMoreThanTheWidth)
{
    for (int iWidth = -5; iWidth < widthOf(k_strEncoded) + 5; ++iWidth)
    {
        const QString strCut = elide(k_strEncoded, iWidth);
        EXPECT_LE(widthOf(strCut), std::max(iWidth, widthOf(QChar(0x2026)))) << iWidth;
    }
}

TEST(SurfaceTitleDelegate, DrawsWhatItCut)
{
    const int iWidth = widthOf(k_strEncoded);
    // With the margins, the whole text lacks a few pixels and the shorter one fits.
    EXPECT_EQ(drawRow("photo of a summer evening.png " + k_strEnd, iWidth, true), drawRow(k_strEncoded, iWidth, false));
    EXPECT_NE(drawRow(k_strEncoded, iWidth, true), drawRow(k_strEncoded, iWidth, false));
}

TEST(SurfaceTitleDelegate, DrawsWhatFitsAsEveryTreeDoes)
{
    const int iWidth = widthOf(k_strEncoded) + 20;
    EXPECT_EQ(drawRow(k_strEncoded, iWidth, true), drawRow(k_strEncoded, iWidth, false));
}
