#include <gtest/gtest.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>
#include <functional>

#include "eventwindow.h"
#include "theme/themeservice.h"
#include "zb/ccheckbox.h"
#include "zb/ccombobox.h"
#include "zb/ccombopushbutton.h"
#include "zb/clineedit.h"
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

/// Normal, hovered, pressed (where there is something to press), focused, disabled.
QList<QImage> statePictures(QWidget &widget, const std::function<void(bool)> &press)
{
    QList<QImage> pictures;
    const auto take = [&] { pictures << widget.grab().toImage(); };
    take();
    widget.setAttribute(Qt::WA_UnderMouse);
    take();
    if (press) {
        press(true);
        take();
        press(false);
        QApplication::setActiveWindow(widget.window()); // without a window system a popup keeps the keyboard
    }
    widget.setAttribute(Qt::WA_UnderMouse, false);
    widget.setFocus();
    take();
    widget.setEnabled(false);
    take();
    widget.setEnabled(true);
    return pictures;
}

/// No two states of it look alike, in either theme.
void expectDistinctStates(EventWindow &window, QWidget &widget, const std::function<void(bool)> &press = {})
{
    QLineEdit other(&window);
    widget.setGeometry(5, 30, 80, 24);
    widget.show();
    other.show();
    window.resize(200, 100);
    window.showNow();
    for (const char *theme : {"dark", "light"}) {
        refhost::ThemeService::instance().setTheme(QLatin1String(theme));
        other.setFocus();
        ASSERT_TRUE(other.hasFocus());
        const QList<QImage> pictures = statePictures(widget, press);
        for (int a = 0; a < pictures.size(); ++a)
            for (int b = 0; b < a; ++b)
                EXPECT_NE(pictures[a], pictures[b]) << theme << ": " << b << " and " << a;
    }
    refhost::ThemeService::instance().setTheme(QStringLiteral("dark"));
}

void expectDistinctStates(EventWindow &window, QAbstractButton &button)
{
    expectDistinctStates(window, button, [&button](bool down) { button.setDown(down); });
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
    for (const char *image : {"kv_img_btn_red_small", "kv_img_btn_green_small", "kv_img_combo_btn_small_nonormal"}) {
        SCOPED_TRACE(image);
        ZB::CPushButton button(QLatin1String(image), 0, &window);
        button.setText(QStringLiteral("文字"));
        expectDistinctStates(window, button);
    }
    for (int type = ZB::NormalButtonPlain; type <= ZB::NormalButtonFall; ++type) {
        SCOPED_TRACE(type);
        ZB::CSmallNormalButton button(0, true, static_cast<ZB::ENormalButtonType>(type), &window);
        button.setText(QStringLiteral("文字"));
        expectDistinctStates(window, button);
    }
}

TEST(CheckBox, LooksDifferentInEveryState)
{
    EventWindow window;
    for (const bool isChecked : {false, true}) {
        ZB::CCheckBox box(0, QStringLiteral("指定"), &window);
        box.setChecked(isChecked);
        expectDistinctStates(window, box);
    }
}

TEST(RadioButtonGroup, ItsButtonsLookDifferentInEveryState)
{
    EventWindow window;
    for (const bool isChecked : {false, true}) {
        SCOPED_TRACE(isChecked);
        ZB::CRadioButtonGroup group(&window, 0, 0, false, Qt::Horizontal);
        group.addButton(QStringLiteral("全部"), 1);
        if (isChecked)
            group.setCheckedById(1);
        group.show();
        group.setGeometry(0, 0, 200, 100);
        expectDistinctStates(window, *buttonOf(group, "全部"));
    }
}

TEST(LineEdit, LooksDifferentInEveryState)
{
    EventWindow window;
    for (const char *text : {"", "600519"}) {
        SCOPED_TRACE(text);
        ZB::CLineEdit edit(0, &window);
        edit.setEmptyHintText(QStringLiteral("代码"));
        edit.setText(QLatin1String(text));
        expectDistinctStates(window, edit);
        const QImage right = edit.grab().toImage();
        edit.setWarning(true);
        EXPECT_NE(edit.grab().toImage(), right);
    }
}

TEST(ComboBox, LooksDifferentInEveryState)
{
    EventWindow window;
    ZB::CComboBox box(0, &window);
    box.addItem(QStringLiteral("甲"));
    expectDistinctStates(window, box, [&box](bool open) { open ? box.showPopup() : box.hidePopup(); });
    for (const bool hasFocus : {false, true}) {
        hasFocus ? box.setFocus() : box.clearFocus();
        const QImage right = box.grab().toImage();
        box.setWarning(true);
        EXPECT_NE(box.grab().toImage(), right) << hasFocus;
        box.setWarning(false);
        EXPECT_EQ(box.grab().toImage(), right) << hasFocus;
    }
}

TEST(ComboPushButton, LooksDifferentInEveryStateAndWhileItsListIsOpen)
{
    EventWindow window;
    ZB::CComboPushButton button(QStringLiteral("kv_img_combo_btn_small_nonormal"), 32, 10, 24, 3, 20, &window);
    button.addItem(QStringLiteral("普通"));
    expectDistinctStates(window, button);
    expectDistinctStates(window, button, [&button](bool open) {
        if (open)
            button.showPopup();
        else
            button.popup()->close();
        EXPECT_TRUE(QTest::qWaitFor([&] { return (button.popup() != nullptr) == open; }));
    });
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
