#pragma once

#include <QtWidgets/QLabel>

/// A label of one line of plain text that may be narrower than its text: what does not fit is left out and told by a tool tip,
/// unless the label was given one.
class CElidedLabel : public QLabel
{
    Q_OBJECT

public:
    explicit CElidedLabel(QWidget* pParent = nullptr);

    /// Where text is left out; in the middle at first.
    void setElideMode(Qt::TextElideMode eMode) { m_eElideMode = eMode; }

    [[nodiscard]] QSize minimumSizeHint() const override;
    /// The text with what of it fits into the label now.
    [[nodiscard]] QString getShownText() const;

protected:
    bool event(QEvent* pEvent) override;
    void paintEvent(QPaintEvent* pEvent) override;

private:
    Qt::TextElideMode m_eElideMode = Qt::ElideMiddle;
};
