#include <QtCore/QTemporaryDir>
#include <QtGui/QAccessible>
#include <QtTest/QTest>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QTreeWidget>
#include <QtWidgets/QVBoxLayout>
#include <functional>
#include <gtest/gtest.h>

#include "account/caccountlistcolumnsettingwidget.h"
#include "account/caccountscombobox.h"
#include "dialog/caboutdialog.h"
#include "dialog/csendlogwidget.h"
#include "grid/gridview.h"
#include "log/chpflogwidget.h"
#include "order/cautobutton.h"
#include "order/ccompactselectwidget.h"
#include "order/ccompacttypeselectwidget.h"
#include "order/copselectcodewidget.h"
#include "order/coptypebutton.h"
#include "order/cquotespriceslist.h"
#include "order/crateselectwidget.h"
#include "services/logservice.h"
#include "services/strandservice.h"
#include "services/userconfig.h"
#include "table/cdatatable.h"
#include "table/chpfdatatable.h"
#include "testrecords.h"
#include "zb/ccombopushbutton.h"

using namespace testrecords;

namespace {

constexpr int mostPresses = 60;
constexpr int cursorPixels = 30;

/// One control (or dialog), and the places at which Tab stops in it, in their order:
/// "role: name", a line each; with the group of a radio button, and the value of a combo box behind its name.
struct Walk
{
    const char *name;
    std::function<QWidget *(QWidget *parent)> make;
    const char *stops;
};

void PrintTo(const Walk &walk, std::ostream *out)
{
    *out << walk.name;
}

/// More pixels of a place are others than a text cursor has.
bool differ(const QImage &a, const QImage &b, const QRect &place)
{
    int others = 0;
    for (int y = place.top(); y <= place.bottom(); ++y)
        for (int x = place.left(); x <= place.right(); ++x)
            others += a.valid(x, y) && a.pixel(x, y) != b.pixel(x, y) ? 1 : 0;
    return others > cursorPixels;
}

/// The place around a stop in which its focus is shown: that of the control that hands its focus on to it.
QRect placeOf(const QWidget &stop, const QWidget &shown)
{
    const QWidget *all = &stop;
    while (all != &shown && all->parentWidget()->focusProxy() == &stop)
        all = all->parentWidget();
    return QRect(all->mapTo(&shown, QPoint(0, 0)), all->size());
}

QString textOf(QWidget &stop)
{
    const QAccessibleInterface *seen = QAccessible::queryAccessibleInterface(&stop);
    QString text = QLatin1String(qAccessibleRoleString(seen->role())) + QStringLiteral(": ");
    if (seen->role() == QAccessible::RadioButton)
        text += seen->parent()->text(QAccessible::Name) + QLatin1Char(' ');
    text += seen->text(QAccessible::Name);
    if (seen->role() == QAccessible::ComboBox)
        text += QStringLiteral(" = ") + seen->text(QAccessible::Value);
    return text;
}

/// Painted up to date.
QImage picture(QWidget &shown)
{
    QTest::qWait(40);
    for (auto *grid : shown.findChildren<ZB::GridView *>())
        grid->refreshNow();
    return shown.grab().toImage();
}

/// A window with a field, and the control below it unless that is a window of its own.
class KeyboardWalk : public testing::TestWithParam<Walk>
{
protected:
    KeyboardWalk()
    {
        registerTypes();
        refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
        refhost::LogService::instance().openFiles(logs.path());
        window.resize(700, 500);
        elsewhere.setAccessibleName(QStringLiteral("elsewhere"));
        column.addWidget(&elsewhere);
        QWidget *made = GetParam().make(&window);
        if (!made->isWindow())
            column.addWidget(made, 1);
        shown = made->window();
        shown->show();
        shown->activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(shown));
        EXPECT_TRUE(QTest::qWaitFor([this] { // what is read first is there
            for (const QTreeWidget *list : shown->findChildren<QTreeWidget *>())
                if (!list->isEnabled())
                    return false;
            return true;
        }));
        if (shown == &window)
            elsewhere.setFocus();
    }

    ~KeyboardWalk() override
    {
        if (shown != &window)
            delete shown;
        refhost::finishStrands();
        refhost::LogService::instance().closeFiles();
        refhost::setUserConfig(nullptr);
    }

    /// Presses Tab until the focus is again where the first press has brought it; the stops, a line each.
    QString walk()
    {
        QStringList stops;
        QWidget *first = nullptr;
        QWidget *now = shown->focusWidget();
        for (int presses = 0; presses < mostPresses; ++presses) {
            const QImage before = picture(*shown);
            QWidget *const former = now ? now : shown;
            QTest::keyClick(former, Qt::Key_Tab);
            now = shown->focusWidget();
            if (now == former)
                continue; // a date has parts
            if (!now || now == first)
                break;
            first = first ? first : now;
            const bool isSeen = differ(before, picture(*shown), placeOf(*now, *shown));
            stops << textOf(*now) + (isSeen ? QString() : QStringLiteral(" (looks as without the focus)"));
        }
        return stops.join(QLatin1Char('\n'));
    }

    QTemporaryDir logs;
    QWidget window;
    QVBoxLayout column{&window};
    QLineEdit elsewhere;
    QWidget *shown = nullptr;
};

} // namespace

TEST_P(KeyboardWalk, StopsAtEveryPartThatHasANameAndShowsTheFocus)
{
    EXPECT_EQ(walk().toStdString(), GetParam().stops);
}

INSTANTIATE_TEST_SUITE_P(
    Controls, KeyboardWalk,
    testing::Values(
        Walk{"AutoButton",
             [](QWidget *parent) {
                 auto *made = new KV::CAutoButton(1, true, ZB::NormalButtonRaised, parent, 1000);
                 made->setText(QStringLiteral("下单"));
                 return made;
             },
             "Button: 下单\n"
             "EditableText: elsewhere"},
        Walk{"OpTypeButton", [](QWidget *parent) { return new KV::COpTypeButton(1, KV::OpParamFirstLegLong, parent); },
             "Button: 多\n"
             "EditableText: elsewhere"},
        Walk{"RateSelect", [](QWidget *parent) { return new KV::CRateSelectWidget(parent); },
             "RadioButton: 下单比例 全部\n"
             "EditableText: elsewhere"},
        Walk{"CompactType",
             [](QWidget *parent) {
                 auto *made = new KV::CCompactTypeSelectWidget(parent);
                 made->getComboButton()->addItem(QStringLiteral("普通"));
                 return made;
             },
             "ComboBox: 合约类型 = 普通\n"
             "EditableText: elsewhere"},
        Walk{"Compact",
             [](QWidget *parent) {
                 auto *made = new KV::CCompactSelectWidget(parent);
                 made->setCommand(QString());
                 return made;
             },
             "EditableText: 合约号\n"
             "CheckBox: 指定\n"
             "EditableText: elsewhere"},
        Walk{"Code", [](QWidget *parent) { return new KV::COpSelectCodeWidget(KV::OpParamFirstLegLong, parent); },
             "EditableText: 代码/名称/首字母\n"
             "Button: 多\n"
             "EditableText: elsewhere"},
        Walk{"Ladder", [](QWidget *parent) { return new KV::CQuotesPricesList(KV::OpParamFirstLegLong, parent); },
             "Table: 盘口\n"
             "EditableText: elsewhere"},
        Walk{"Accounts", [](QWidget *parent) { return new KV::CAccountsComboBox(1, parent); },
             "ComboBox: 账号 = 请选择账号\n"
             "EditableText: elsewhere"},
        Walk{"AccountColumns",
             [](QWidget *parent) {
                 auto *made = new KV::CAccountListColumnSettingWidget(7, parent);
                 made->setDefaultColumns(
                     {{0, -1, QStringLiteral("账号"), true, false}, {1, -1, QStringLiteral("可用"), true, false}});
                 return made;
             },
             "List: 列设置\n"
             "Button: 关闭"},
        Walk{"Table",
             [](QWidget *parent) {
                 return new KV::CHpfDataTable(77, MetaTicket, parent, kdservice::TraderStock, false);
             },
             "Table: 表格\n"
             "EditableText: elsewhere"},
        Walk{
            "PagedTable",
            [](QWidget *parent) { return new KV::CHpfDataTable(77, MetaTicket, parent, kdservice::TraderStock, true); },
            "Table: 表格\n"
            "SpinBox: 页码\n"
            "ComboBox: 100 行/页 = 100 行/页\n" // without a label a stock box is called by its value here
            "EditableText: elsewhere"},
        Walk{"RecordTable", [](QWidget *parent) { return new KV::CDataTable(78, MetaTicket, parent); },
             "Table: 表格\n"
             "EditableText: elsewhere"},
        Walk{"Log", [](QWidget *parent) { return new KV::CHpfLogWidget(41, parent); },
             "List: 日志\n"
             "EditableText: elsewhere"},
        Walk{"About", [](QWidget *parent) { return new KV::CAboutDialog(parent); },
             "Button: 复制版本信息\n"
             "Button: 关闭\n"
             "Tree: 使用的开源组件"},
        Walk{"SendLog", [](QWidget *parent) { return new KV::CSendLogWidget(parent); },
             "SpinBox: 最早的日志日期\n"
             "SpinBox: 最晚的日志日期\n"
             "Button: 当天\n"
             "Button: 近 3 天\n"
             "Button: 近 7 天\n"
             "Button: 全部\n"
             "Tree: 日志文件\n"
             "Button: 查看将要发送的内容\n"
             "EditableText: 问题描述\n"
             "EditableText: 抄送\n"
             "Button: 另存为…\n"
             "Button: 关闭"}),
    [](const testing::TestParamInfo<Walk> &each) { return std::string(each.param.name); });
