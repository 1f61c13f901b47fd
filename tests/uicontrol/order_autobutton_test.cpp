#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QPointer>
#include <QtWidgets/QApplication>
#include <algorithm>

#include "eventwindow.h"
#include "order/cautobutton.h"

namespace {

KV::CAutoButton *makeButton(EventWindow &window, int interval)
{
    auto *button = new KV::CAutoButton(3, true, ZB::NormalButtonRise, &window, interval);
    button->setGeometry(10, 10, 80, 24);
    window.showNow();
    return button;
}

bool comesBack(const QWidget *button)
{
    return QTest::qWaitFor([button] { return button->isEnabled(); });
}

} // namespace

TEST(AutoButton, PassesOneClickOnAndIsDisabledBeforeAnybodyHearsOfIt)
{
    EventWindow window;
    KV::CAutoButton *button = makeButton(window, 40);
    bool enabledWhenHeard = true;
    window.answer = [&](int) {
        enabledWhenHeard = button->isEnabled();
        button->click();
        QTest::mouseClick(button, Qt::LeftButton);
    };
    QElapsedTimer clock;
    clock.start();
    QTest::mouseDClick(button, Qt::LeftButton);
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_FALSE(enabledWhenHeard);
    EXPECT_EQ(window.take(), "5 3 0");
    EXPECT_TRUE(comesBack(button));
    EXPECT_GE(clock.elapsed(), 38); // coarse timers may be 5 % early
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_EQ(window.take(), "5 3 0");
}

TEST(AutoButton, PassesOnWhetherItIsCheckedNow)
{
    EventWindow window;
    KV::CAutoButton *button = makeButton(window, 0);
    button->setCheckable(true);
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(comesBack(button));
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_EQ(window.take(), "5 3 1\n5 3 0");
}

TEST(AutoButton, AnotherIntervalCountsFromTheNextClick)
{
    EventWindow window;
    KV::CAutoButton *button = makeButton(window, 1);
    QTest::mouseClick(button, Qt::LeftButton);
    button->setInterval(3'600'000);
    EXPECT_TRUE(comesBack(button));
    QTest::mouseClick(button, Qt::LeftButton);
    button->setInterval(1);
    QTest::qWait(30);
    EXPECT_FALSE(button->isEnabled());
}

TEST(AutoButton, IsEnabledInTheEndWhoeverDisabledIt)
{
    EventWindow window;
    KV::CAutoButton *button = makeButton(window, 1);
    window.answer = [button](int) { button->setEnabled(false); };
    QTest::mouseClick(button, Qt::LeftButton);
    EXPECT_TRUE(comesBack(button));
}

TEST(AutoButton, MayBeDestroyedWhileItWaitsAndByItsOwnClick)
{
    EventWindow window;
    QPointer<KV::CAutoButton> button = makeButton(window, 1);
    QTest::mouseClick(button, Qt::LeftButton);
    delete button;
    QTest::qWait(10);
    button = makeButton(window, 1);
    button->show();
    window.take();
    window.answer = [&button](int) { delete button; };
    QTest::mouseClick(button, Qt::LeftButton);
    QTest::qWait(10);
    EXPECT_EQ(window.take(), "5 3 0");
    EXPECT_TRUE(button.isNull());
}

TEST(AutoButton, IsTheSmallButtonThatItIsMadeAs)
{
    EventWindow window;
    window.showNow();
    const auto pictureOf = [](ZB::CSmallNormalButton &button) {
        button.setGeometry(10, 10, 80, 24);
        button.show();
        return button.grab().toImage();
    };
    for (const bool framed : {true, false})
        for (const auto type : {ZB::NormalButtonPlain, ZB::NormalButtonRise}) {
            KV::CAutoButton button(3, framed, type, &window, 1);
            ZB::CSmallNormalButton plain(3, framed, type, &window);
            EXPECT_EQ(button.buttonType(), type);
            EXPECT_EQ(pictureOf(button), pictureOf(plain));
        }
}

TEST(AutoButton, CutsItsConnectionsBeforeItsBaseIsDestroyed)
{
    EventWindow window;
    KV::CAutoButton *button = makeButton(window, 1);
    const auto nothing = [] {};
    const QList<QMetaObject::Connection> connections = {
        QObject::connect(button, &QAbstractButton::clicked, &window, nothing),
        QObject::connect(button, &QAbstractButton::pressed, &window, nothing),
        QObject::connect(button, &QWidget::customContextMenuRequested, &window, nothing)};
    int connected = 0;
    int atTheEnd = -1;
    const auto count = [&connections] {
        return static_cast<int>(std::count_if(connections.begin(), connections.end(),
                                              [](const QMetaObject::Connection &each) { return bool(each); }));
    };
    connected = count();
    QObject::connect(button, &QObject::destroyed, [&] { atTheEnd = count(); }); // before QObject cuts what is left
    delete button;
    EXPECT_EQ(connected, 3);
    EXPECT_EQ(atTheEnd, 0);
}

TEST(AutoButton, LeavesNothingBehindInTheStyleSheets)
{
    EventWindow window;
    KV::CAutoButton *button = makeButton(window, 1);
    qApp->setStyleSheet(QStringLiteral("QAbstractButton { margin: 0 }"));
    QTest::mouseClick(button, Qt::LeftButton);
    int destroyed = 0;
    QObject::connect(button, &QObject::destroyed, [&destroyed] { ++destroyed; });
    delete button;
    qApp->setStyleSheet(QString()); // goes through every widget that it remembers
    EXPECT_EQ(destroyed, 1);
}
