#include "Docks/CUserSlider.h"

CUserSlider::CUserSlider(QWidget* pParent) : QSlider(pParent)
{
    connect(this, &QAbstractSlider::actionTriggered, this, &CUserSlider::tellStep);
}

void CUserSlider::tellStep()
{
    // The position is the new one already, the value follows. While the handle is held, the base class tells.
    if (!isSliderDown() && sliderPosition() != value())
        emit sliderMoved(sliderPosition());
}
