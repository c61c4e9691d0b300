#include "Docks/CUserSlider.h"

#include <gtest/gtest.h>

#include <vector>

#include <QtGui/QWheelEvent>
#include <QtTest/QTest>

#include "SliderDrag.h"

namespace
{

class UserSlider : public testing::Test
{
protected:
    UserSlider()
    {
        m_Slider.setOrientation(Qt::Horizontal);
        m_Slider.setRange(0, 10);
        m_Slider.setPageStep(2);
        m_Slider.setValue(3);
        m_Slider.resize(200, 30);
        QObject::connect(&m_Slider, &QSlider::sliderMoved, &m_Slider, [this](int iPosition) { m_aiMoves.push_back(iPosition); });
        m_Slider.show();
    }

    CUserSlider m_Slider;
    std::vector<int> m_aiMoves;
};

} // namespace

TEST_F(UserSlider, TellsOfKeys)
{
    QTest::keyClick(&m_Slider, Qt::Key_Right);
    QTest::keyClick(&m_Slider, Qt::Key_PageUp);
    QTest::keyClick(&m_Slider, Qt::Key_Home);
    QTest::keyClick(&m_Slider, Qt::Key_Left); // already at the end
    EXPECT_EQ((std::vector<int>{4, 6, 0}), m_aiMoves);
    EXPECT_EQ(0, m_Slider.value());
}

TEST_F(UserSlider, TellsOfTheWheel)
{
    QWheelEvent event(QPointF(10, 10), m_Slider.mapToGlobal(QPoint(10, 10)), QPoint(), QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&m_Slider, &event);
    ASSERT_EQ(1u, m_aiMoves.size());
    EXPECT_GT(m_aiMoves[0], 3);
    EXPECT_EQ(m_aiMoves[0], m_Slider.value());
}

TEST_F(UserSlider, TellsOfAClickBesideTheHandle)
{
    QTest::mouseClick(&m_Slider, Qt::LeftButton, Qt::NoModifier, QPoint(m_Slider.width() - 3, m_Slider.height() / 2));
    ASSERT_EQ(1u, m_aiMoves.size());
    EXPECT_EQ(m_aiMoves[0], m_Slider.value());
}

TEST_F(UserSlider, TellsOfDraggingOnceAStep)
{
    m_Slider.setValue(0);
    dragToTheRightEnd(m_Slider);
    EXPECT_EQ((std::vector<int>{10}), m_aiMoves);
}

TEST_F(UserSlider, IsSilentWhenItIsSet)
{
    m_Slider.setValue(8);
    EXPECT_TRUE(m_aiMoves.empty());
}

// A listener may refuse the step by setting another value.
TEST_F(UserSlider, KeepsTheValueThatAListenerSets)
{
    QObject::connect(&m_Slider, &QSlider::sliderMoved, &m_Slider, [this] { m_Slider.setValue(3); });
    QTest::keyClick(&m_Slider, Qt::Key_Right);
    EXPECT_EQ(3, m_Slider.value());
}
