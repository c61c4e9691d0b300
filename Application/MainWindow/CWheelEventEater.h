#pragma once

#include <QtCore/QObject>

/// Keeps the wheel from whatever it is installed on, so that it reaches what lies behind: over the open textures it zooms, and never
/// moves the scroll bars.
class CWheelEventEater : public QObject
{
    Q_OBJECT

public:
    explicit CWheelEventEater(QObject* pParent = nullptr);

    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;
};
