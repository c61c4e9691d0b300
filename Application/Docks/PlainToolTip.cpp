#include "Docks/PlainToolTip.h"

#include <QtGui/QHelpEvent>
#include <QtGui/QTextDocument>
#include <QtWidgets/QToolTip>

void showPlainToolTip(const QHelpEvent& event, QWidget* pWidget, const QString& strText)
{
    QToolTip::showText(event.globalPos(), Qt::mightBeRichText(strText) ? Qt::convertFromPlainText(strText) : strText, pWidget);
}
