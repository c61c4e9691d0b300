#pragma once

#include <QtCore/QString>
#include <QtGui/QFontMetrics>
#include <QtWidgets/QStyledItemDelegate>

/// A texture's title cut to a width in pixels. The format and the size at its end stay as long as they can: of two encodings of one
/// file nothing else tells them apart. So of "photo.png (Encoded:BC1) * (64 x 64)" the word "Encoded:" goes first, then the middle of
/// the file's name, and only then the beginning of what is left. Any other text is cut in its middle.
[[nodiscard]] QString elideSurfaceTitle(const QFontMetrics& metrics, const QString& strTitle, int iWidth);

/// Draws the items of the tree of surfaces with texts cut by elideSurfaceTitle().
class CSurfaceTitleDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* pPainter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};
