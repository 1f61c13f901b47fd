#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "zb/cbasewidget.h"
#include "zb/cstandscrollbar.h"

namespace {

/// Notes down the events that reach it.
class Panel : public ZB::CBaseWidget
{
public:
    bool handleEvent(int event, int first, int second, QString, void *) override
    {
        heard += QStringLiteral("%1(%2,%3) ").arg(event).arg(first).arg(second);
        return true;
    }
    std::string take()
    {
        const std::string all = heard.trimmed().toStdString();
        heard.clear();
        return all;
    }
    QString heard;
};

struct Bar
{
    Bar()
    {
        bar.setRange(0, 1000);
        bar.setPageStep(100);
        bar.resize(8, 220);
        panel.resize(100, 300);
        panel.show();
        panel.take();
    }
    Panel panel;
    ZB::CStandScrollBar bar{3, Qt::Vertical, &panel};
};

} // namespace

TEST(CStandScrollBar, TellsItsParentOfEveryChangeOfPositionOnce)
{
    Bar test;
    EXPECT_EQ(test.bar.eventId(), 3);
    test.bar.setSliderPosition(40);
    EXPECT_EQ(test.panel.take(), "17(3,40)");
    test.bar.setSliderPosition(40);
    EXPECT_EQ(test.panel.take(), "");
    test.bar.setValue(41);
    EXPECT_EQ(test.panel.take(), "17(3,41)");
    test.bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
    EXPECT_EQ(test.panel.take(), "17(3,141)");
    test.bar.setValue(5000);
    EXPECT_EQ(test.panel.take(), "17(3,1000)");
    test.bar.setRange(0, 70); // the position goes with it
    EXPECT_EQ(test.panel.take(), "17(3,70)");
    test.bar.setRange(0, 700);
    EXPECT_EQ(test.panel.take(), "");
}

TEST(CStandScrollBar, IsDraggedByItsHandleAndPagedBesideIt)
{
    Bar test;
    QTest::mousePress(&test.bar, Qt::LeftButton, {}, QPoint(4, 5));
    QMouseEvent move(QEvent::MouseMove, QPointF(4, 105), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(&test.bar, &move);
    QTest::mouseRelease(&test.bar, Qt::LeftButton, {}, QPoint(4, 105));
    const int handle = 24; // the least that a hand finds
    EXPECT_EQ(test.bar.value(), 100 * 1000 / (220 - handle));
    EXPECT_FALSE(test.panel.take().empty());
    test.bar.setValue(0);
    test.panel.take();
    QTest::mouseClick(&test.bar, Qt::LeftButton, {}, QPoint(4, 215));
    EXPECT_EQ(test.panel.take(), "17(3,100)");
}

TEST(CStandScrollBar, IsThinAndShowsNothingWithoutAWayToScroll)
{
    Bar test;
    EXPECT_EQ(test.bar.sizeHint().width(), 8);
    const auto painted = [&] {
        QImage picture(test.bar.size(), QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        test.bar.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
        QRect ink;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x)
                if (qAlpha(picture.pixel(x, y)) > 0)
                    ink |= QRect(x, y, 1, 1);
        return ink;
    };
    test.bar.setValue(1000);
    EXPECT_EQ(painted().bottom(), 218);
    EXPECT_GT(painted().top(), 190);
    test.bar.setRange(0, 0);
    EXPECT_TRUE(painted().isEmpty());
}
