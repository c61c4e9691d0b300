#pragma once

#include <QtCore/QString>

class QHelpEvent;
class QWidget;

/// Shows a tool tip letter by letter: a file may bear a name that would otherwise be taken for mark-up. An empty text hides it.
void showPlainToolTip(const QHelpEvent& event, QWidget* pWidget, const QString& strText);
