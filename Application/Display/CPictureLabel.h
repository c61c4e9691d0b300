#pragma once

#include <QtWidgets/QLabel>

/// The label that a view draws into: no frame line, the picture in the left upper corner, and it can be made smaller than its picture.
class CPictureLabel : public QLabel
{
    Q_OBJECT
public:
    explicit CPictureLabel(QWidget* pParent = nullptr);

    /// That of the picture; that of the text as long as there is none.
    [[nodiscard]] QSize sizeHint() const override;
    /// 1 by 1, so that the picture, which has the label's size, never holds a window open.
    [[nodiscard]] QSize minimumSizeHint() const override;
};
