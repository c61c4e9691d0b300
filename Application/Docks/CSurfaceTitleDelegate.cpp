#include "Docks/CSurfaceTitleDelegate.h"

#include <algorithm>

#include <QtWidgets/QApplication>
#include <QtWidgets/QStyle>

namespace
{

const QLatin1String k_strMark("(Encoded:");
constexpr char k_acShortestName[] = "888..."; // what is left of a file's name at least

} // namespace

QString elideSurfaceTitle(const QFontMetrics& metrics, const QString& strTitle, int iWidth)
{
    const int iMark = strTitle.lastIndexOf(k_strMark);
    QString strCutInMiddle = metrics.elidedText(strTitle, Qt::ElideMiddle, iWidth);
    if (iMark < 0 || strCutInMiddle == strTitle)
        return strCutInMiddle;

    const QString strName = strTitle.left(iMark);
    const QString strEnd = QLatin1String("(") + QChar(0x2026) + strTitle.mid(iMark + k_strMark.size());
    const int iNameWidth = iWidth - metrics.horizontalAdvance(strEnd);
    const bool bRoomForName = iNameWidth >= std::min(metrics.horizontalAdvance(strName), metrics.horizontalAdvance(k_acShortestName));
    const QString strCut = bRoomForName ? metrics.elidedText(strName, Qt::ElideMiddle, iNameWidth) + strEnd : strTitle;
    return metrics.elidedText(strCut, Qt::ElideLeft, iWidth);
}

void CSurfaceTitleDelegate::paint(QPainter* pPainter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    QStyleOptionViewItem item(option);
    initStyleOption(&item, index);
    const QStyle* pStyle = item.widget != nullptr ? item.widget->style() : QApplication::style();
    const int iMargin = pStyle->pixelMetric(QStyle::PM_FocusFrameHMargin, &item, item.widget) + 1; // as styles leave it beside a text
    const int iWidth = pStyle->subElementRect(QStyle::SE_ItemViewItemText, &item, item.widget).width() - 2 * iMargin;
    item.textElideMode = Qt::ElideMiddle; // should the style measure a pixel more
    item.text = elideSurfaceTitle(item.fontMetrics, item.text, iWidth);
    pStyle->drawControl(QStyle::CE_ItemViewItem, &item, pPainter, item.widget);
}
