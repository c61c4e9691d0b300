#include "Display/CPictureLabel.h"

CPictureLabel::CPictureLabel(QWidget* pParent) : QLabel(pParent)
{
    setLineWidth(0);
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
}

QSize CPictureLabel::sizeHint() const
{
    const QPixmap picture = pixmap(Qt::ReturnByValue);
    return picture.isNull() ? QLabel::sizeHint() : picture.size();
}

QSize CPictureLabel::minimumSizeHint() const
{
    return {1, 1};
}
