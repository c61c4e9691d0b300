#pragma once

#include <QtWidgets/QSlider>

/// A slider whose sliderMoved(int) tells of every step that the user makes: not of dragging alone but also of keys, of the wheel and
/// of clicks beside the handle. setValue() stays silent.
class CUserSlider : public QSlider
{
    Q_OBJECT

public:
    explicit CUserSlider(QWidget* pParent = nullptr);

private:
    void tellStep();
};
