#include "Common/RecentFilesMenu.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QMouseEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QAction>
#include <QtWidgets/QToolTip>

#include "Common/RecentFiles.h"

RecentFilesMenu::RecentFilesMenu(const QString& strTitle, QWidget* pParent) : QMenu(strTitle, pParent)
{
}

bool RecentFilesMenu::event(QEvent* pEvent)
{
    if (pEvent->type() != QEvent::ToolTip)
        return QMenu::event(pEvent);

    const QAction* pAction = activeAction();
    if (pAction != nullptr && !pAction->toolTip().isEmpty() && pAction->property(k_acRecentFileProperty).isValid())
    {
        // A path may look like mark-up; it is shown letter by letter all the same.
        const QString strTip = pAction->toolTip();
        QToolTip::showText(static_cast<QHelpEvent*>(pEvent)->globalPos(), Qt::mightBeRichText(strTip) ? strTip.toHtmlEscaped() : strTip,
                           this);
        return true;
    }
    QToolTip::hideText();
    pEvent->ignore();
    return QMenu::event(pEvent);
}

void RecentFilesMenu::mouseMoveEvent(QMouseEvent* pEvent)
{
    QMenu::mouseMoveEvent(pEvent);
    if (actionAt(pEvent->pos()) == activeAction())
        return;
    setActiveAction(nullptr);
    QToolTip::hideText();
}
