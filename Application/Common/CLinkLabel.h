#pragma once

#include <QtWidgets/QLabel>

/// A label of one link, which is one stop of the Tab key: there Return opens the link. A plain label has another stop beside its
/// link, where Return goes to the dialog.
class CLinkLabel : public QLabel
{
    Q_OBJECT

public:
    using QLabel::QLabel;

protected:
    void focusInEvent(QFocusEvent* pEvent) override;
    bool focusNextPrevChild(bool bNext) override;
};
