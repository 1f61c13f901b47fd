#include <QtGui/QAccessible>
#include <QtGui/QWindow>
#include <QtWidgets/QLabel>
#include <QtWidgets/QScrollBar>
#include <random>

#include "picturesinlooks.h"
#include "records/fieldids.h"
#include "table/chpfdatatable.h"
#include "uicontrol/columnsettingwindow.h"
#include "zb/csmallnormalbutton.h"

using Part = KV::CAccountColumnDelegate::Part;

TEST(AccountColumnOrder, ASavedArrangementMeetsColumnsThatHaveChanged)
{
    KV::CAccountColumnOrder order;
    order.setDefaults(columnsOf("*账号 总资产 可用 -冻结 盈亏"));
    const struct
    {
        QStringList saved;
        const char *columns;
    } cases[] = {
        {{}, "*账号 总资产 可用 -冻结 盈亏"},
        {{"#账号\tlocked", "#盈亏\tshown", "#可用\thidden", "#总资产\tshown", "#冻结\tshown"},
         "*账号 盈亏 -可用 总资产 冻结"},
        {{"#盈亏\tlocked", "#账号\tshown"}, "*盈亏 账号 总资产 可用 -冻结"}, // new ones stay behind their neighbour
        {{"#盈亏\tshown", "#可用\tlocked", "#账号\thidden"}, "*可用 盈亏 -冻结 -账号 总资产"},
        {{"#账号\thidden", "#总资产\thidden", "#可用\thidden", "#冻结\thidden", "#盈亏\thidden"},
         "账号 -总资产 -可用 -冻结 -盈亏"},
        {{"", "\t", "shown", "#账号\tfoo", "#盈亏\tshown", "#盈亏\thidden", "#可用"}, "*账号 总资产 可用 -冻结 盈亏"},
    };
    for (const auto &each : cases) {
        order.restore(each.saved);
        EXPECT_EQ(columnText(order.columns()), QString::fromUtf8(each.columns)) << each.saved.join(" ").toStdString();
    }
    order.restore({"#昨日\thidden", "#盈亏\tshown"}); // a column that is away today is not forgotten
    EXPECT_TRUE(order.saved().contains("#昨日\thidden"));
    order.setDefaults(columnsOf(""));
    order.restore({"#盈亏\tshown"});
    EXPECT_EQ(columnText(order.columns()), QString());
    EXPECT_FALSE(order.setVisible(0, true));
    EXPECT_EQ(order.move(0, 1), -1);
    EXPECT_EQ(order.setLocked(-1, true), -1);
}

/// Against a plain list that is kept as texts and searched through.
TEST(AccountColumnOrder, KeepsTheRulesThroughAnySequenceOfChanges)
{
    const auto seed = std::random_device()();
    std::mt19937 random(seed);
    const auto below = [&random](int limit) { return int(random() % unsigned(limit)); };
    KV::CAccountColumnOrder order;
    order.setDefaults(columnsOf("*a b c -d e -f g"));
    QStringList model = columnText(order.columns()).split(' ');
    const auto isLocked = [&model](int at) { return model[at].startsWith('*'); };
    for (int step = 0; step < 2000; ++step) {
        const int at = below(7);
        const int locked = model.filter(QRegularExpression("^\\*")).size();
        switch (below(3)) {
        case 0: {
            const int gap = below(8);
            order.move(at, gap);
            if (!isLocked(at)) {
                const QString word = model.takeAt(at);
                model.insert(std::max(locked, gap > at ? gap - 1 : gap), word);
            }
            break;
        }
        case 1:
            order.setLocked(at, !isLocked(at));
            if (isLocked(at)) {
                const QString word = model.takeAt(at).mid(1);
                model.insert(locked - 1, word);
            } else {
                const QString word = model.takeAt(at);
                model.insert(locked, '*' + word.right(1));
            }
            break;
        default:
            const bool isLast = model[at].size() == 1 && model.filter(QRegularExpression("^[^-]")).size() == 1;
            order.setVisible(at, model[at].startsWith('-'));
            if (!isLocked(at) && !isLast)
                model[at] = model[at].startsWith('-') ? model[at].right(1) : '-' + model[at];
        }
        ASSERT_EQ(columnText(order.columns()), model.join(' ')) << "seed " << seed << " step " << step;
        KV::CAccountColumnOrder other;
        other.setDefaults(columnsOf("*a b c -d e -f g"));
        other.restore(order.saved());
        ASSERT_EQ(columnText(other.columns()), model.join(' ')) << "seed " << seed << " step " << step;
    }
}

TEST_F(ColumnSettingWindow, TheKeyboardShowsHidesLocksAndMoves)
{
    open("*账号 总资产 可用 -冻结");
    EXPECT_EQ(shown(), "*账号 总资产 可用 -冻结");
    const auto key = [this](int which, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QTest::keyClick(list, Qt::Key(which), with);
        return taken() + QStringLiteral(" @%1").arg(list->currentRow());
    };
    EXPECT_EQ(key(Qt::Key_Space), " @0"); // locked: neither hidden nor moved
    EXPECT_EQ(key(Qt::Key_Down, Qt::ControlModifier), " @0");
    key(Qt::Key_Down);
    EXPECT_EQ(key(Qt::Key_Space), "*账号 -总资产 可用 -冻结 @1");
    EXPECT_EQ(key(Qt::Key_Up, Qt::ControlModifier), " @1"); // not in front of a locked one
    EXPECT_EQ(key(Qt::Key_Down, Qt::ControlModifier), "*账号 可用 -总资产 -冻结 @2");
    EXPECT_EQ(key(Qt::Key_Down, Qt::ControlModifier), "*账号 可用 -冻结 -总资产 @3");
    EXPECT_EQ(key(Qt::Key_Down, Qt::ControlModifier), " @3");
    EXPECT_EQ(key(Qt::Key_L), "*账号 *总资产 可用 -冻结 @1");
    key(Qt::Key_Home);
    EXPECT_EQ(key(Qt::Key_L), "*总资产 账号 可用 -冻结 @1");
    EXPECT_EQ(shown(), "*总资产 账号 可用 -冻结");
    EXPECT_EQ(columnText(popup->columns()), shown());
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(popup->isVisible());
}

TEST_F(ColumnSettingWindow, OneColumnAlwaysStaysAndTheListSaysWhy)
{
    open("甲 -乙");
    click(0, Part::Check);
    EXPECT_EQ(taken(), QString());
    QStringList texts;
    for (const QLabel *label : popup->findChildren<QLabel *>())
        texts << label->text();
    EXPECT_TRUE(texts.contains(QStringLiteral("至少要显示一列"))) << texts.join(" ").toStdString();
    click(1, Part::Check);
    click(0, Part::Check);
    EXPECT_EQ(taken(), "甲 乙 | -甲 乙");
}

TEST_F(ColumnSettingWindow, TheMouseChecksLocksAndDragsWithAMarkWhereTheLineWillGo)
{
    open("*账号 总资产 可用 -冻结 盈亏");
    click(3, Part::Check);
    click(2, Part::Lock);
    EXPECT_EQ(taken(), "*账号 总资产 可用 冻结 盈亏 | *账号 *可用 总资产 冻结 盈亏");
    click(1, Part::Name); // no more than chosen
    EXPECT_EQ(taken(), QString());
    const QPoint box = list->partArea(4, Part::Check).center();
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, box); // its first click came with another box
    release(box);
    EXPECT_EQ(taken(), "*账号 *可用 总资产 冻结 -盈亏");

    press(4);
    dragTo(nameOf(4) + QPoint(2, 2));
    EXPECT_FALSE(list->isDragging()); // a hand that trembles
    const QPoint upperHalf = nameOf(3) - QPoint(0, 5);
    dragTo(upperHalf);
    EXPECT_EQ(list->insertionGap(), 3);
    const QImage before = list->viewport()->grab().toImage();
    dragTo(nameOf(3) + QPoint(0, 5));
    EXPECT_EQ(list->insertionGap(), 4);
    EXPECT_NE(list->viewport()->grab().toImage(), before); // the mark has moved
    dragTo(nameOf(0));
    EXPECT_EQ(list->insertionGap(), 2); // behind the locked ones
    release(nameOf(0));
    EXPECT_EQ(taken(), "*账号 *可用 -盈亏 总资产 冻结");
    EXPECT_EQ(list->currentRow(), 2);

    press(0); // a locked one stays
    dragTo(nameOf(4));
    EXPECT_FALSE(list->isDragging());
    release(nameOf(4));
    press(3); // Escape leaves all as it was, and the popup open
    dragTo(nameOf(4) + QPoint(0, 9));
    EXPECT_TRUE(list->isDragging());
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(list->isDragging());
    release(nameOf(4));
    EXPECT_TRUE(popup->isVisible());
    press(3); // a box that is left before the release
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier, list->partArea(3, Part::Check).center());
    EXPECT_EQ(taken(), QString());
}

TEST_F(ColumnSettingWindow, ADragNearTheEdgeScrollsByItselfAndStopsAtTheEnd)
{
    QString many = QStringLiteral("*账号");
    for (int column = 1; column < 40; ++column)
        many += QStringLiteral(" 列%1").arg(column);
    open(many);
    QScrollBar *bar = list->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 0);
    press(1);
    const QPoint low(60, list->viewport()->height() - 3);
    dragTo(low);
    const int first = list->insertionGap();
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar->value() == bar->maximum(); }));
    EXPECT_GT(list->insertionGap(), first);              // with the mouse at rest
    dragTo(QPoint(60, list->viewport()->height() + 40)); // beyond the list
    EXPECT_EQ(list->insertionGap(), 40);
    dragTo(QPoint(60, -40));
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar->value() == 0; }));
    EXPECT_EQ(list->insertionGap(), 1);
    dragTo(low);
    ASSERT_TRUE(QTest::qWaitFor([&] { return bar->value() == bar->maximum(); }));
    dragTo(QPoint(60, list->viewport()->height() + 40));
    release(QPoint(60, list->viewport()->height() + 40));
    EXPECT_TRUE(taken().endsWith(QStringLiteral("列39 列1")));
    EXPECT_EQ(list->currentRow(), 39);
    const int rest = bar->value();
    QTest::qWait(80); // the timer has ended with the drag
    EXPECT_EQ(bar->value(), rest);
}

TEST_F(ColumnSettingWindow, WhatTheUserArrangesIsKeptAndTheDefaultComesBack)
{
    open("*账号 总资产 可用 -冻结");
    auto *button = popup->findChild<ZB::CSmallNormalButton *>();
    EXPECT_FALSE(button->isEnabled());
    click(1, Part::Lock);
    click(2, Part::Check);
    EXPECT_TRUE(button->isEnabled());
    taken();
    make();
    popup->setDefaultColumns(columnsOf("*账号 总资产 可用 -冻结"));
    EXPECT_EQ(columnText(popup->columns()), "*账号 *总资产 -可用 -冻结");
    EXPECT_EQ(taken(), QString());
    popup->setColumns(columnsOf("*总资产 可用 冻结 账号")); // as the user has dragged them in the table
    EXPECT_EQ(shown(), "*总资产 可用 冻结 账号");
    popup->showAt(QRect(0, 0, 10, 10));
    QTest::mouseClick(popup->findChild<ZB::CSmallNormalButton *>(), Qt::LeftButton);
    EXPECT_EQ(taken(), "*账号 总资产 可用 -冻结");
    make();
    popup->setDefaultColumns(columnsOf("*账号 总资产 可用 -冻结"));
    EXPECT_EQ(shown(), "*账号 总资产 可用 -冻结");
    EXPECT_FALSE(KV::getUserConfig()->value("accountlist/7/columns").isValid());
    make();
    popup->setDefaultColumns(columnsOf("*账号 可用 市值 总资产")); // what a later program shows at first
    EXPECT_EQ(shown(), "*账号 可用 市值 总资产");
}

TEST_F(ColumnSettingWindow, ScreenReadersHearWhichColumnsAreLockedAndShown)
{
    open("*账号 总资产 -可用");
    QStringList heard;
    QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(list);
    for (int line = 0; line < reader->childCount(); ++line)
        heard << reader->child(line)->text(QAccessible::Name);
    EXPECT_EQ(heard.join("|"), "账号，已锁定|总资产|可用，未显示");
}

/// As the window system brings them, through the popup's own way of taking what the mouse does anywhere.
TEST_F(ColumnSettingWindow, EventsOfTheWindowDragLockCheckAndClose)
{
    open("*账号 列1 列2 列3 列4 列5 列6");
    QWindow *handle = popup->windowHandle();
    const auto at = [this](const QPoint &place) { return list->viewport()->mapTo(popup.get(), place); };
    const auto click = [&](int line, Part part) {
        QTest::mouseClick(handle, Qt::LeftButton, Qt::NoModifier, at(list->partArea(line, part).center()));
    };
    click(2, Part::Lock);
    click(4, Part::Check);
    EXPECT_TRUE(shown().startsWith(QStringLiteral("*账号 *列2 列1 列3 -列4 列5"))) << shown().toStdString();
    QTest::mousePress(handle, Qt::LeftButton, Qt::NoModifier, at(nameOf(5)));
    for (int y = nameOf(5).y(); y >= nameOf(2).y() - 9; y -= 3)
        QTest::mouseMove(handle, at(QPoint(60, y)));
    EXPECT_EQ(list->insertionGap(), 2);
    QTest::mouseMove(handle, QPoint(60, -50)); // out of the window
    QTest::mouseRelease(handle, Qt::LeftButton, Qt::NoModifier, QPoint(60, -50));
    EXPECT_TRUE(popup->isVisible());
    EXPECT_TRUE(shown().startsWith(QStringLiteral("*账号 *列2 列5 列1 列3 -列4 列6"))) << shown().toStdString();

    QTest::keyClick(handle, Qt::Key_Down, Qt::ControlModifier);
    QTest::keyClick(handle, Qt::Key_Space);
    EXPECT_TRUE(shown().startsWith(QStringLiteral("*账号 *列2 列1 -列5 列3"))) << shown().toStdString();
    QTest::keyClick(handle, Qt::Key_L);
    EXPECT_TRUE(shown().startsWith(QStringLiteral("*账号 *列2 *列5 列1 列3"))) << shown().toStdString();
    QTest::mouseClick(handle, Qt::LeftButton, Qt::NoModifier, QPoint(-30, -30)); // elsewhere
    EXPECT_FALSE(popup->isVisible());
}

TEST_F(ColumnSettingWindow, ATableFollowsAtOnce)
{
    auto *table = new KV::CHpfDataTable(77, refhost::MetaFunds, &window, kdservice::TraderStock, false);
    const auto now = [table] { return KV::accountListColumns(table->getTableSetting()); };
    const QVector<KV::CAccountListColumn> before = now();
    ASSERT_GT(before.size(), 4);
    QObject::connect(popup.get(), &KV::CAccountListColumnSettingWidget::sigColumnsChanged, table,
                     [table](const QVector<KV::CAccountListColumn> &columns) {
                         ZB::CBaseTableSettingParam setting = table->getTableSetting();
                         KV::arrangeColumns(setting, columns);
                         table->setTableSetting(setting);
                     });
    popup->setDefaultColumns(before);
    popup->showAt(QRect(0, 0, 10, 10));
    click(3, Part::Lock);
    click(2, Part::Check);
    press(2);
    dragTo(nameOf(1) - QPoint(0, 9));
    release(nameOf(1) - QPoint(0, 9));
    const QString wanted = columnText(popup->columns());
    EXPECT_EQ(wanted.section(' ', 0, 2), '*' + before[3].name + " -" + before[1].name + ' ' + before[0].name);
    EXPECT_EQ(columnText(now()), wanted);
    EXPECT_EQ(table->frozenColumns(), 1);
}

TEST_F(ColumnSettingWindow, LooksDifferentInEachThemeAndKeepsItsLinesAtEveryScale)
{
    open("*资金账号 *账号名称 总资产 可用资金 -冻结资金 持仓市值 浮动盈亏 -当日盈亏 保证金");
    list->setCurrentRow(3);
    const QList<QImage> images = picturesInLooks(*popup, "columns", [this](double) {
        EXPECT_EQ(list->viewport()->height(), list->count() * KV::CAccountColumnDelegate::lineHeight());
        EXPECT_FALSE(list->verticalScrollBar()->isVisible());
    });
    for (int i = 0; i < images.size(); ++i)
        EXPECT_EQ(images.indexOf(images[i]), i);
}
