#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "theme/themeservice.h"
#include "widgets/widgetlistlayout.h"
#include "zb/cwidgetlist.h"

using ZB::CWidgetList;
using ZB::WidgetListLayout;

namespace {

std::string text(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height()).toStdString();
}

std::string places(const WidgetListLayout &layout, QSize size)
{
    std::string all;
    for (const QRect &rect : layout.place(size))
        all += (all.empty() ? "" : " | ") + text(rect);
    return all;
}

/// A widget that wants 40 x 10 and needs 20 x 8.
class Child : public QWidget
{
public:
    QSize sizeHint() const override { return {40, 10}; }
    QSize minimumSizeHint() const override { return {20, 8}; }
};

std::string geometries(const CWidgetList &list)
{
    std::string all;
    for (const Child *child : list.findChildren<Child *>(QString(), Qt::FindDirectChildrenOnly))
        all += (all.empty() ? "" : " | ") + text(child->geometry());
    return all;
}

} // namespace

TEST(WidgetListLayout, StretchingItemsShareWhatFixedOnesLeaveByTheirParts)
{
    WidgetListLayout layout{Qt::Horizontal, {2, 1, 3, 4}, 5, {}};
    layout.items = {{30, 0, 10, ZB::AnchorStart, false},
                    {0, 1, 0, ZB::AnchorFill, false},
                    {8, 0, 0, ZB::AnchorFill, true},
                    {0, 2, 12, ZB::AnchorCentre, false},
                    {20, 0, 10, ZB::AnchorEnd, false}};
    EXPECT_EQ(places(layout, {168, 35}), "2,1 30x10 | 37,1 31x30 | 68,1 8x30 | 76,10 64x12 | 145,21 20x10");
    EXPECT_EQ(layout.needed(), QSize(2 + 30 + 5 + 8 + 5 + 20 + 3, 12 + 5));
}

TEST(WidgetListLayout, AnItemNeverGetsLessThanItsLeastLengthAndTheOthersShareTheRest)
{
    WidgetListLayout layout{Qt::Vertical, {}, 0, {}};
    layout.items = {
        {60, 1, 0, ZB::AnchorFill, false}, {0, 1, 0, ZB::AnchorFill, false}, {0, 2, 0, ZB::AnchorFill, false}};
    EXPECT_EQ(places(layout, {10, 100}), "0,0 10x60 | 0,60 10x13 | 0,73 10x27");
    EXPECT_EQ(places(layout, {10, 400}), "0,0 10x100 | 0,100 10x100 | 0,200 10x200");
    EXPECT_EQ(places(layout, {10, 30}), "0,0 10x60 | 0,60 10x0 | 0,60 10x0") << "no room, no negative lengths";
    EXPECT_EQ(places(WidgetListLayout{}, {0, 0}), "");
}

TEST(CWidgetList, PlacesItsChildrenAndFollowsThemWhenTheyChange)
{
    CWidgetList list(Qt::Horizontal);
    list.setMargins(0, 0, 0, 0);
    list.setSpacing(0);
    Child *fixed = new Child;
    fixed->setFixedSize(44, 20);
    Child *stretching = new Child;
    Child *hinted = new Child;
    list.addFixedWidget(fixed, 1);
    list.addFixedSpace(4);
    list.addStretchWidget(stretching, 1, 3, false);
    list.addFixedWidget(hinted, 1, false);
    list.resize(200, 30);
    list.show();
    EXPECT_EQ(geometries(list), "0,5 44x20 | 48,0 112x30 | 160,10 40x10");
    EXPECT_EQ(list.sizeHint(), QSize(44 + 4 + 40 + 40, 20));
    EXPECT_EQ(list.minimumSizeHint(), QSize(44 + 4 + 20 + 40, 20));

    fixed->setFixedSize(60, 20);
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(geometries(list), "0,5 60x20 | 64,0 96x30 | 160,10 40x10");
    hinted->hide();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(geometries(list), "0,5 60x20 | 64,0 136x30 | 160,10 40x10") << "the hidden one has left its room";
    delete stretching;
    list.resize(100, 40);
    EXPECT_EQ(geometries(list), "0,10 60x20 | 160,10 40x10");
    hinted->show();
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(geometries(list), "0,10 60x20 | 64,15 40x10");
}

TEST(CWidgetList, KeepsTheSizeThatAFixedWidgetHadUntilItIsAskedToTakeLengthsAnew)
{
    CWidgetList list(Qt::Vertical);
    Child *child = new Child;
    child->resize(33, 17);
    list.addFixedWidget(child, 0);
    list.resize(100, 100);
    list.show();
    EXPECT_EQ(geometries(list), "0,0 33x17");
    list.updateWidgetLengths();
    EXPECT_EQ(geometries(list), "0,0 40x10");
}

TEST(CWidgetList, ScalesMarginsSpacingAndSpaces)
{
    CWidgetList list(Qt::Horizontal);
    list.setMargins(2, 0, 2, 0);
    list.setSpacing(3);
    list.addFixedWidget(new Child, 3);
    list.addFixedWidget(new Child, 3);
    list.addFixedSpace(5);
    list.addFixedWidget(new Child, 3);
    list.resize(300, 10);
    list.show();
    EXPECT_EQ(geometries(list), "2,0 40x10 | 45,0 40x10 | 90,0 40x10");
    refhost::ThemeService::instance().setScale(2.0);
    EXPECT_EQ(geometries(list), "4,0 40x10 | 50,0 40x10 | 100,0 40x10");
    refhost::ThemeService::instance().setScale(1.0);
}

TEST(CWidgetList, HandsEventsOfItsChildrenOnToItsParent)
{
    class Window : public ZB::CBaseWidget
    {
    public:
        bool handleEvent(int event, int first, int second, QString text, void *) override
        {
            heard = QStringLiteral("%1 %2 %3 %4").arg(event).arg(first).arg(second).arg(text);
            return true;
        }
        QString heard;
    };
    Window window;
    auto *list = new CWidgetList(Qt::Horizontal, &window);
    auto *child = new ZB::CBaseWidget;
    list->addFixedWidget(child, 1);
    EXPECT_TRUE(child->deliverEvent(5, 0, 7, QStringLiteral("x"), nullptr));
    EXPECT_EQ(window.heard.toStdString(), "5 0 7 x");
}
