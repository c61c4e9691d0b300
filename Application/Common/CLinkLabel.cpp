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
    // On purpose past QLabel, which would first look for another link.
    return QWidget::focusNextPrevChild(bNext); // NOLINT(bugprone-parent-virtual-call)
}
