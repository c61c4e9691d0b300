#pragma once

#include <QtGui/QMouseEvent>
#include <QtTest/QTest>
#include <QtWidgets/QApplication>
#include <QtWidgets/QSlider>

/// Takes the handle of a horizontal slider, which stands at the left end, beyond the right end.
inline void dragToTheRightEnd(QSlider& slider)
{
    const QPoint start(5, slider.height() / 2);
    const QPoint end(slider.width() + 50, slider.height() / 2);
    QTest::mousePress(&slider, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, end, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&slider, &move);
    QTest::mouseRelease(&slider, Qt::LeftButton, Qt::NoModifier, end);
}
