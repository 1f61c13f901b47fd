#include <QtGui/QAccessible>
#include <boost/smart_ptr/make_shared.hpp>
#include <gtest/gtest.h>

#include "accessibleevents.h"
#include "uicontrol/ladderwindow.h"

using namespace KV;

namespace {

const EQuoteType layouts[] = {QuoteNormal, QuoteLevel2Vertical, QuoteLevel2Horizontal};

QAccessibleInterface *seen(LadderWindow &window)
{
    return QAccessible::queryAccessibleInterface(window.graph);
}

/// Every row, "|" between its cells.
std::string rowsOf(LadderWindow &window)
{
    QAccessibleTableInterface *table = seen(window)->tableInterface();
    QStringList lines;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < table->columnCount(); ++column)
            cells << table->cellAt(row, column)->text(QAccessible::Name);
        lines << cells.join(QLatin1Char('|'));
    }
    return lines.join(QLatin1Char('\n')).toStdString();
}

QAccessibleInterface *cell(LadderWindow &window, int row, int column)
{
    return seen(window)->tableInterface()->cellAt(row, column);
}

QAccessibleInterface *button(LadderWindow &window, const QString &name)
{
    for (int i = 0; i < seen(window)->childCount(); ++i)
        if (seen(window)->child(i)->role() == QAccessible::Button &&
            seen(window)->child(i)->text(QAccessible::Name) == name)
            return seen(window)->child(i);
    return nullptr;
}

void press(QAccessibleInterface *item)
{
    ASSERT_NE(item, nullptr);
    item->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

} // namespace

TEST(AccessibleLadder, ReadsFromTheHighestAskDownAsItIsShown)
{
    for (const EQuoteType layout : layouts) {
        LadderWindow window(layout);
        EXPECT_EQ(rowsOf(window), "卖1|-|-\n最新|-|涨跌 - -\n买1|-|-\n前收|-|\n涨停|-|\n跌停|-|") << "before any quote";
        quoter::QuoterAllData quote = plainQuote();
        quote.askVolumes[4] = 2147483647;
        quote.bidPrices[3] = 0;
        window.give(quote);
        EXPECT_EQ(rowsOf(window), "卖5|10.10|-\n卖4|10.09|400\n卖3|10.08|300\n卖2|10.07|200\n卖1|10.06|100\n"
                                  "最新|10.05|涨跌 +0.05 +0.50%\n"
                                  "买1|10.05|1000\n买2|10.04|900\n买3|10.03|800\n买4|-|700\n买5|10.01|600\n"
                                  "前收|10.00|\n涨停|11.00|\n跌停|9.00|");
        QAccessibleTableInterface *table = seen(window)->tableInterface();
        EXPECT_EQ(seen(window)->role(), QAccessible::Table);
        EXPECT_EQ(seen(window)->text(QAccessible::Name).toStdString(), "盘口 600519.SH");
        EXPECT_EQ(table->columnDescription(0) + table->columnDescription(1) + table->columnDescription(2),
                  QStringLiteral("档位价格数量"));
        EXPECT_EQ(table->rowDescription(4).toStdString(), "卖1");
        EXPECT_EQ(table->rowDescription(14).toStdString() + table->columnDescription(3).toStdString(), "");
        EXPECT_EQ(cell(window, 4, 0)->role(), QAccessible::RowHeader);
        EXPECT_EQ(cell(window, 4, 1)->role(), QAccessible::Cell);
        EXPECT_EQ(cell(window, 4, 2)->tableCellInterface()->rowHeaderCells(),
                  QList<QAccessibleInterface *>{cell(window, 4, 0)});
        EXPECT_EQ(cell(window, 14, 0), nullptr);
        EXPECT_EQ(cell(window, 0, 3), nullptr);
    }
    LadderWindow credit(QuoteNormal, kdservice::TraderCredit);
    credit.give(plainQuote());
    EXPECT_EQ(rowsOf(credit), "卖1|10.06|100\n最新|10.05|涨跌 +0.05 +0.50%\n买1|10.05|1000\n前收|10.00|\n涨停|11.00|\n"
                              "跌停|9.00|");
    QAccessibleInterface *last = cell(credit, 5, 1);
    credit.list->setTradeType(kdservice::TraderStock);
    credit.list->setQuoteType(static_cast<EQuoteType>(7));
    EXPECT_EQ(seen(credit)->childCount(), 0) << "nothing is painted";
    EXPECT_FALSE(last->isValid());
    EXPECT_EQ(last->text(QAccessible::Name).toStdString(), "");
    EXPECT_TRUE(last->state().invalid);
}

TEST(AccessibleLadder, EveryItemIsWhereItIsPainted)
{
    for (const EQuoteType layout : layouts) {
        SCOPED_TRACE(layout);
        LadderWindow window(layout);
        window.list->setShowCancelOrder(true);
        window.give(plainQuote());
        const QuotesLayout places = window.places();
        const auto at = [&](const QPoint &point) {
            const QPoint onScreen = window.graph->mapToGlobal(point);
            return seen(window)->childAt(onScreen.x(), onScreen.y());
        };
        const auto on = [](const QuoteValuePlace &place) { return QPoint(place.right - 4, place.baseline - 4); };
        EXPECT_EQ(at(on(places.asks[0].price)), cell(window, 4, 1));
        EXPECT_EQ(at(on(places.bids[4].volume)), cell(window, 10, 2));
        EXPECT_EQ(at(places.asks[1].caption - QPoint(-3, 4)), cell(window, 3, 0));
        EXPECT_EQ(at(on(places.latest)), cell(window, 5, 1));
        EXPECT_EQ(at(on(places.change)), cell(window, 5, 2));
        EXPECT_EQ(at(on(places.summary[2].value)), cell(window, 12, 1));
        EXPECT_EQ(at({-1, -1}), nullptr);
        const QRect ladder(window.graph->mapToGlobal(QPoint(0, 0)), window.graph->size());
        for (int i = 0; i < seen(window)->childCount(); ++i) {
            QAccessibleInterface *item = seen(window)->child(i);
            EXPECT_EQ(seen(window)->indexOfChild(item), i);
            EXPECT_EQ(item->parent(), seen(window));
            if (item->text(QAccessible::Name).isEmpty())
                continue;
            EXPECT_TRUE(ladder.contains(item->rect())) << item->text(QAccessible::Name).toStdString();
            EXPECT_EQ(seen(window)->childAt(item->rect().center().x(), item->rect().center().y()), item)
                << item->text(QAccessible::Name).toStdString();
        }
    }
}

TEST(AccessibleLadder, PressingTellsTheHostWhatAClickTells)
{
    for (const EQuoteType layout : {QuoteLevel2Vertical, QuoteLevel2Horizontal}) {
        LadderWindow window(layout);
        window.list->setShowCancelOrder(true);
        window.list->setOrderNum(3, 12);
        quoter::QuoterAllData quote = plainQuote();
        quote.bidVolumes[1] = 2147483647;
        window.give(quote);
        press(cell(window, 4, 1));
        press(cell(window, 6, 2));
        press(cell(window, 12, 1));
        for (const char *name : {"对手价", "最优五档", "本方最优", "撤买 3", "撤卖 12", "撤单 卖2", "撤单 买5"})
            press(button(window, QString::fromUtf8(name)));
        EXPECT_EQ(window.takeEvents().toStdString(),
                  "1128 0 0 10.0600 | 1129 0 0 1000.0000 | 1128 0 0 11.0000 | 1127 0 1  | 1127 0 3  | 1127 0 2  | "
                  "1243 0 48 600519.SH | 1243 0 49 600519.SH | 1243 2 49 600519.SH | 1243 5 48 600519.SH");
        for (QAccessibleInterface *dead : {cell(window, 4, 0), cell(window, 7, 2), cell(window, 5, 2)}) {
            EXPECT_TRUE(dead->actionInterface()->actionNames().isEmpty());
            press(dead);
        }
        window.list->setUiEnabled(true, false);
        EXPECT_TRUE(cell(window, 4, 1)->state().disabled);
        press(cell(window, 4, 1));
        press(button(window, QStringLiteral("撤买 3")));
        EXPECT_EQ(window.takeEvents().toStdString(), "");
    }
}

TEST(AccessibleLadder, TheKeyboardsLevelIsTheSelectedRow)
{
    LadderWindow window;
    quoter::QuoterAllData quote = plainQuote();
    quote.askPrices[1] = 0;
    window.give(quote);
    QAccessibleTableInterface *table = seen(window)->tableInterface();
    EXPECT_EQ(seen(window)->focusChild(), nullptr);
    window.press(Qt::Key_Up);
    EXPECT_EQ(seen(window)->focusChild(), cell(window, 4, 1));
    EXPECT_TRUE(cell(window, 4, 1)->state().focused && cell(window, 4, 2)->state().selected);
    EXPECT_FALSE(cell(window, 4, 2)->state().focused || cell(window, 3, 1)->state().selected);
    EXPECT_EQ(table->selectedRows(), QList<int>{4});
    EXPECT_EQ(table->selectedCells().size(), 3);
    EXPECT_TRUE(table->selectRow(6));
    EXPECT_FALSE(table->selectRow(3)) << "no price there";
    EXPECT_FALSE(table->selectRow(5)) << "no level";
    EXPECT_FALSE(table->selectRow(-1) || table->selectRow(14));
    EXPECT_EQ(table->selectedRows(), QList<int>{6});
    window.press(Qt::Key_Return);
    EXPECT_EQ(window.takeEvents().toStdString(), "1128 0 0 10.0500");
    EXPECT_FALSE(table->unselectRow(4));
    EXPECT_TRUE(table->unselectRow(6));
    EXPECT_EQ(table->selectedRowCount(), 0);
}

TEST(AccessibleLadder, TheKeyboardsButtonHasTheFocus)
{
    LadderWindow window(QuoteLevel2Vertical);
    window.give(plainQuote());
    window.press(Qt::Key_End);
    window.press(Qt::Key_Down);
    window.press(Qt::Key_Down);
    EXPECT_EQ(seen(window)->focusChild(), button(window, QStringLiteral("最优五档")));
    EXPECT_TRUE(seen(window)->focusChild()->state().focused);
    EXPECT_FALSE(button(window, QStringLiteral("对手价"))->state().focused);
    EXPECT_TRUE(seen(window)->tableInterface()->selectedRows().isEmpty());
    window.list->setQuoteType(QuoteNormal);
    window.settle();
    EXPECT_EQ(seen(window)->focusChild(), nullptr);
}

TEST(AccessibleLadder, TellsWhatChangedAndNothingElse)
{
    if (!AccessibleEvents::areHeard())
        GTEST_SKIP() << "built without Qt's inner headers: nobody can listen";
    LadderWindow window(QuoteLevel2Vertical);
    window.give(plainQuote());
    AccessibleEvents events(window.graph);
    window.settle();
    events.take(); // what has changed since Qt looked at the ladder first
    quoter::QuoterAllData quote = plainQuote();
    window.give(quote);
    EXPECT_EQ(events.take(), "") << "it reads as before";
    quote.askVolumes[1] = 7;
    quote.bidPrices[0] = 10.02;
    window.list->setQuoterAllData(boost::make_shared<quoter::QuoterAllData>(quote), window.detail);
    EXPECT_EQ(events.take(), "") << "as often as it is painted, and no oftener";
    window.settle();
    EXPECT_EQ(events.take(), "rows changed 3-6");
    window.press(Qt::Key_Up);
    window.press(Qt::Key_Up);
    EXPECT_EQ(events.take(), "selection; focus 13; selection; focus 10");
    window.press(Qt::Key_Escape);
    EXPECT_EQ(events.take(), "selection");
    window.list->setFeedCut(true);
    window.settle();
    EXPECT_EQ(events.take(), "description");
    EXPECT_EQ(seen(window)->text(QAccessible::Description).toStdString(), "行情中断 0秒");
    window.list->setFeedCut(false);
    window.list->setTradeType(kdservice::TraderCredit);
    window.give(quote);
    EXPECT_EQ(events.take(), "rows reset; description");
    window.list->setStockCode(QStringLiteral("000001.SZ"));
    window.settle();
    EXPECT_EQ(events.take(), "rows changed 0-5; name");
}
