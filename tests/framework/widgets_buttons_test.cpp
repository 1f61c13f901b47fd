#include <gtest/gtest.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

#include "eventwindow.h"
#include "theme/themeservice.h"
#include "zb/ccheckbox.h"
#include "zb/cradiobuttongroup.h"
#include "zb/csmallnormalbutton.h"

namespace {

QAbstractButton *buttonOf(QWidget &group, const char *text)
{
    for (QAbstractButton *button : group.findChildren<QAbstractButton *>())
        if (button->text() == QString::fromUtf8(text))
            return button;
    return nullptr;
}

/// A radio group of three, with a field before it and one behind it.
struct Radio
{
    explicit Radio(bool canUncheck = false)
    {
        before = new QLineEdit(&window);
        group = new ZB::CRadioButtonGroup(&window, 4, 0, canUncheck, Qt::Horizontal);
        group->addButton(QStringLiteral("甲"), 1);
        group->addButton(QStringLiteral("乙"), 2);
        group->addButton(QStringLiteral("丙"), 9);
        auto *layout = new QVBoxLayout(&window);
        layout->addWidget(before);
        layout->addWidget(group);
        layout->addWidget(behind = new QLineEdit(&window));
        window.showNow();
    }
    void click(const char *text) { QTest::mouseClick(buttonOf(*group, text), Qt::LeftButton); }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
    }

    EventWindow window;
    ZB::CRadioButtonGroup *group;
    QLineEdit *before;
    QLineEdit *behind;
};

/// Normal, hovered, pressed, focused, disabled.
QList<QImage> statePictures(QAbstractButton &button)
{
    QList<QImage> pictures;
    const auto take = [&] { pictures << button.grab().toImage(); };
    take();
    button.setAttribute(Qt::WA_UnderMouse);
    take();
    button.setDown(true);
    take();
    button.setDown(false);
    button.setAttribute(Qt::WA_UnderMouse, false);
    button.setFocus();
    take();
    button.setEnabled(false);
    take();
    button.setEnabled(true);
    return pictures;
}

} // namespace

TEST(PushButton, DeliversEventFiveWithItsIdForEveryWayToClickIt)
{
    EventWindow window;
    ZB::CPushButton button(QStringLiteral("kv_img_btn_red_small"), 12, &window);
    window.showNow();
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(window.take(), "5 12 0");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        QTest::keyClick(&button, key);
        EXPECT_EQ(window.take(), "5 12 0") << key;
    }
    QTest::mouseClick(&button, Qt::RightButton);
    QTest::mousePress(&button, Qt::LeftButton);
    QTest::mouseRelease(&button, Qt::LeftButton, {}, QPoint(-5, -5)); // thought better of it
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&button, &held);
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(window.take(), "");
}

TEST(PushButton, LooksDifferentInEveryState)
{
    EventWindow window;
    window.resize(200, 100);
    ZB::CPushButton image(QStringLiteral("kv_img_combo_btn_small_nonormal"), 0, &window);
    ZB::CSmallNormalButton small(0, true, ZB::NormalButtonRaised, &window);
    ZB::CSmallNormalButton accent(0, false, ZB::NormalButtonAccent, &window);
    ZB::CCheckBox box(0, QStringLiteral("指定"), &window);
    QLineEdit other(&window);
    window.showNow();
    for (const char *theme : {"dark", "light"}) {
        refhost::ThemeService::instance().setTheme(QLatin1String(theme));
        int top = 0;
        for (QAbstractButton *button : std::initializer_list<QAbstractButton *>{&image, &small, &accent, &box}) {
            button->setText(QStringLiteral("文字"));
            button->setGeometry(5, top += 20, 60, 20);
            other.setFocus();
            const QList<QImage> pictures = statePictures(*button);
            for (int a = 0; a < pictures.size(); ++a)
                for (int b = 0; b < a; ++b)
                    EXPECT_NE(pictures[a], pictures[b]) << theme << ", button at " << top << ": " << b << " and " << a;
        }
    }
    refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
}

TEST(CheckBox, TellsWhatTheUserChangesAndNotWhatACallerSets)
{
    EventWindow window;
    ZB::CCheckBox box(3, QStringLiteral("指定"), &window);
    window.showNow();
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_TRUE(box.isChecked());
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(window.take(), "69 3 1\n69 3 0");
    box.setChecked(true);
    EXPECT_EQ(window.take(), "");
    box.setEnabled(false);
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_TRUE(box.isChecked());
    EXPECT_EQ(window.take(), "");
}

TEST(RadioButtonGroup, TellsEveryClickAlsoThatOnTheCheckedButton)
{
    Radio radio;
    EXPECT_EQ(radio.group->checkedId(), -1);
    radio.click("乙");
    radio.click("乙");
    radio.click("丙");
    EXPECT_EQ(radio.window.take(), "6 4 2\n6 4 2\n6 4 9");
    EXPECT_EQ(radio.group->checkedId(), 9);
    radio.group->setCheckedById(1);
    EXPECT_EQ(radio.group->checkedId(), 1);
    radio.group->setCheckedById(77);
    EXPECT_EQ(radio.group->checkedId(), -1);
    EXPECT_EQ(radio.window.take(), "");
}

TEST(RadioButtonGroup, LetsTheCheckedOneGoWhenItMay)
{
    Radio radio(true);
    radio.click("甲");
    radio.click("甲");
    EXPECT_EQ(radio.window.take(), "6 4 1\n6 4 -1");
    EXPECT_EQ(radio.group->checkedId(), -1);
    radio.click("甲");
    radio.click("乙");
    EXPECT_EQ(radio.window.take(), "6 4 1\n6 4 2");
}

TEST(RadioButtonGroup, IsUsedWithTheKeyboard)
{
    Radio radio;
    radio.before->setFocus();
    radio.key(Qt::Key_Tab);
    radio.key(Qt::Key_Space);
    EXPECT_EQ(radio.window.take(), "6 4 1");
    radio.key(Qt::Key_Right);
    radio.key(Qt::Key_Right);
    EXPECT_EQ(radio.window.take(), "6 4 2\n6 4 9");
    EXPECT_EQ(radio.group->checkedId(), 9);
    radio.key(Qt::Key_Return);
    EXPECT_EQ(radio.window.take(), "6 4 9");
    radio.key(Qt::Key_Tab); // the group is one stop on the way
    EXPECT_EQ(QApplication::focusWidget(), radio.behind);
    radio.key(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), buttonOf(*radio.group, "丙"));
    EXPECT_EQ(radio.window.take(), "");
}

TEST(RadioButtonGroup, TakesOnlyIdsThatCanBeTold)
{
    Radio radio;
    radio.group->addButton(QStringLiteral("丁"), -1);
    radio.group->addButton(QStringLiteral("新"), 2);
    EXPECT_EQ(radio.group->buttonIds(), (QList<int>{1, 2, 9}));
    EXPECT_EQ(radio.group->buttonText(2), QStringLiteral("新"));
    EXPECT_EQ(radio.group->buttonText(-1), QString());
}
