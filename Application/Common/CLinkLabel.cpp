#include "Common/CLinkLabel.h"

#include <QtGui/QFocusEvent>

void CLinkLabel::focusInEvent(QFocusEvent* pEvent)
{
    QLabel::focusInEvent(pEvent);
    if (!hasSelectedText())
        QLabel::focusNextPrevChild(true); // to the link
}

bool CLinkLabel::focusNextPrevChild(bool bNext)
{
    return QWidget::focusNextPrevChild(bNext);
}
