#include "MainWindow/CWheelEventEater.h"

#include <QtCore/QEvent>

CWheelEventEater::CWheelEventEater(QObject* pParent) : QObject(pParent)
{
}

bool CWheelEventEater::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    return pEvent->type() == QEvent::Wheel || QObject::eventFilter(pWatched, pEvent);
}
