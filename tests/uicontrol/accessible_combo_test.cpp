#include <gtest/gtest.h>

#include "accessibleevents.h"
#include "account/caccountscombobox.h"
#include "eventwindow.h"
#include "zb/ccombopushbutton.h"

namespace {

/// "name = value", and whether its popup is open.
std::string read(QWidget &box)
{
    const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&box);
    const QString text = seen->text(QAccessible::Name) + QStringLiteral(" = ") + seen->text(QAccessible::Value);
    return (text + (seen->state().expanded ? QStringLiteral(", open") : QString())).toStdString();
}

/// Opens the popup as a test tool does; not while the box is disabled.
void open(QWidget &box)
{
    const QString show = QAccessibleActionInterface::showMenuAction();
    QAccessibleActionInterface *actions = QAccessible::queryAccessibleInterface(&box)->actionInterface();
    box.setEnabled(false);
    actions->doAction(show);
    EXPECT_FALSE(actions->actionNames().contains(show));
    box.setEnabled(true);
    EXPECT_TRUE(actions->actionNames().contains(show));
    EXPECT_FALSE(QAccessible::queryAccessibleInterface(&box)->state().expanded);
    actions->doAction(show);
}

} // namespace

TEST(AccessibleCombo, TheValueOfAnAccountsBoxIsTheChoiceThatItShows)
{
    EventWindow window;
    KV::CAccountsComboBox box(3, &window);
    window.showNow();
    EXPECT_EQ(read(box), "账号 = 请选择账号");
    box.setAccessibleName(QStringLiteral("期货账号"));
    AccessibleEvents events(&box);
    box.handleEvent(1137, 0, KV::SelectedAccountGroup, QStringLiteral("套利"), nullptr);
    EXPECT_EQ(read(box), "期货账号 = 套利");
    EXPECT_EQ(events.take(), AccessibleEvents::areHeard() ? "value 套利" : "");
    open(box);
    EXPECT_EQ(read(box), "期货账号 = 套利, open");
}

TEST(AccessibleCombo, TheValueOfADropDownButtonIsItsItemWhateverItsName)
{
    EventWindow window;
    ZB::CComboPushButton button(QStringLiteral("kv_img_combo_btn_small_nonormal"), 32, 10, 24, 3, 20, &window);
    button.addItem(QStringLiteral("普通"));
    button.addItem(QStringLiteral("专项"));
    window.showNow();
    button.setAccessibleName(QStringLiteral("合约类型"));
    EXPECT_EQ(read(button), "合约类型 = 普通");
    AccessibleEvents events(&button);
    button.setCurrentItem(1);
    EXPECT_EQ(read(button), "合约类型 = 专项");
    EXPECT_NE(events.take().find(AccessibleEvents::areHeard() ? "value 专项" : ""), std::string::npos);
    open(button);
    EXPECT_EQ(read(button), "合约类型 = 专项, open");
}
