#pragma once

#include <QtCore/QString>
#include <QtWidgets/QDialog>

/// Says that the program is at work and will not answer: shown, and painted, for as long as it lives. Not modal.
class CWaitNotice : public QDialog
{
    Q_OBJECT

public:
    CWaitNotice(const QString& strText, QWidget* pParent);
};
