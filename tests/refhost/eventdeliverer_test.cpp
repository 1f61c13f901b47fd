#include "zb/ceventdeliverer.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <QtWidgets/QWidget>
#include <functional>

#include "zb/ceventwidgett.h"

using namespace ZB;

namespace {

QStringList trip;

/// Writes down what comes by and then does what the test asks for.
template <typename Base>
class Stop : public Base
{
public:
    template <typename... Arguments>
    explicit Stop(const QString &name, Arguments &&...arguments)
        : Base(std::forward<Arguments>(arguments)...), title(name)
    {
    }

    bool handleEvent(int event, int first, int second, QString text, void *pointer) override
    {
        trip << QStringLiteral("%1(%2 %3 %4 %5%6)")
                    .arg(title)
                    .arg(event)
                    .arg(first)
                    .arg(second)
                    .arg(text, pointer == nullptr ? QString() : QStringLiteral(" data"));
        return action ? action() : false;
    }

    QString title;
    std::function<bool()> action; ///< may destroy this; the answer of handleEvent
};

using Plain = Stop<CEventDeliverer>;
using Widget = Stop<CEventWidgetT<QWidget>>;

class EventTrip : public ::testing::Test
{
protected:
    void SetUp() override { trip.clear(); }

    std::string path() const { return trip.join(' ').toStdString(); }
};

} // namespace

TEST_F(EventTrip, GoesOnFromAWindowToTheWidgetThatOwnsIt)
{
    Widget main(QStringLiteral("main"));
    auto *popup = new Widget(QStringLiteral("popup"), &main, Qt::Popup);
    EXPECT_FALSE(popup->deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "popup(1 0 0 ) main(1 0 0 )");
}

TEST_F(EventTrip, OfADelivererWithoutWidgetGoesToItsParent)
{
    Widget table(QStringLiteral("table"));
    auto column = std::make_unique<Plain>(QStringLiteral("column"), &table);
    Plain delegate(QStringLiteral("delegate"), column.get());
    EXPECT_FALSE(delegate.deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "delegate(1 0 0 ) column(1 0 0 ) table(1 0 0 )");

    trip.clear();
    column.reset();
    EXPECT_FALSE(delegate.deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "delegate(1 0 0 )");
}

TEST_F(EventTrip, EndsWhenAHandlerDestroysItselfOrItsAncestors)
{
    auto *window = new Widget(QStringLiteral("window"));
    auto *panel = new Widget(QStringLiteral("panel"), window);
    auto *button = new Widget(QStringLiteral("button"), panel);
    button->action = [panel] {
        delete panel;
        return false;
    };
    EXPECT_FALSE(button->deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "button(1 0 0 )");

    trip.clear();
    auto *other = new Widget(QStringLiteral("other"), window);
    window->action = [window] {
        delete window;
        return true;
    };
    EXPECT_TRUE(other->deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "other(1 0 0 ) window(1 0 0 )");
}

TEST_F(EventTrip, FollowsAWidgetToItsNewParent)
{
    Widget before(QStringLiteral("before"));
    Widget after(QStringLiteral("after"));
    auto *button = new Widget(QStringLiteral("button"), &before);
    button->action = [button, &after] {
        button->setParent(&after);
        return false;
    };
    EXPECT_FALSE(button->deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "button(1 0 0 ) after(1 0 0 )");
}

TEST_F(EventTrip, MayStartAnotherTripOnTheWay)
{
    Widget window(QStringLiteral("window"));
    auto *panel = new Widget(QStringLiteral("panel"), &window);
    auto *button = new Widget(QStringLiteral("button"), panel);
    panel->action = [panel, inside = false]() mutable {
        if (std::exchange(inside, true))
            return false;
        return panel->deliverEvent(2, 0, 0, QString(), nullptr);
    };
    window.action = [] { return true; };
    EXPECT_TRUE(button->deliverEvent(1, 0, 0, QString(), nullptr));
    EXPECT_EQ(path(), "button(1 0 0 ) panel(1 0 0 ) panel(2 0 0 ) window(2 0 0 )");
}
