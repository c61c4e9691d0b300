#include "MainWindow/CWheelEventEater.h"

#include <QtCore/QEvent>
#include <gtest/gtest.h>

namespace
{

TEST(CWheelEventEater, EatsTheWheelAndNothingElse)
{
    CWheelEventEater eater;
    QObject watched;
    for (int iType = QEvent::None; iType < QEvent::MaxUser; iType += iType < 256 ? 1 : 997)
    {
        QEvent event(static_cast<QEvent::Type>(iType));
        EXPECT_EQ(iType == 31, eater.eventFilter(&watched, &event)) << iType;
    }
}

} // namespace
