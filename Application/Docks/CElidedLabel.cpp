#include "Docks/CElidedLabel.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QPainter>
#include <QtWidgets/QStyle>

#include "Docks/PlainToolTip.h"

namespace
{

constexpr char k_acNarrowest[] = "888..."; // what a label shows at least

} // namespace

CElidedLabel::CElidedLabel(QWidget* pParent) : QLabel(pParent)
{
    setTextFormat(Qt::PlainText);
}

QSize CElidedLabel::minimumSizeHint() const
{
    const QSize size = QLabel::minimumSizeHint();
    return {std::min(size.width(), fontMetrics().horizontalAdvance(k_acNarrowest)), size.height()};
}

QString CElidedLabel::getShownText() const
{
    return fontMetrics().elidedText(text(), m_eElideMode, contentsRect().width());
}

bool CElidedLabel::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip)
        return QLabel::event(pEvent);
    const QString strOwn = toolTip();
    const QString strCut = getShownText() != text() ? text() : QString();
    showPlainToolTip(static_cast<const QHelpEvent&>(*pEvent), this, strOwn.isEmpty() ? strCut : strOwn);
    return true;
}

void CElidedLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const int iAlignment = static_cast<int>(QStyle::visualAlignment(layoutDirection(), alignment()));
    style()->drawItemText(&painter, contentsRect(), iAlignment | Qt::TextSingleLine, palette(), isEnabled(), getShownText(),
                          foregroundRole());
}
