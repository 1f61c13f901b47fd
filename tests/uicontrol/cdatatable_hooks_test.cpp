#include <QtTest/QTest>
#include <boost/make_shared.hpp>
#include <random>

#include "grid/gridview.h"
#include "plainrecord.h"
#include "popups/filterpopup.h"
#include "recordwindow.h"
#include "zb/ccombopushbutton.h"

namespace {

using namespace testrecords;

/// Tables whose hooks lead back into the table.
class CDataTableHooks : public RecordWindow
{
protected:
    /// What a hook does when it meets the record of this key for the first time.
    void onceAt(std::function<void(const RecordPtr &)> &hook, const std::string &key, std::function<void()> action)
    {
        hook = [this, key, action, &hook](const RecordPtr &record) {
            if (record->getKey() != key || isDone)
                return;
            isDone = true;
            action();
        };
        isDone = false;
    }

    /// Every row has a record of its own, and is that record's row.
    void checkRows() const
    {
        std::set<std::string> seen;
        for (const int row : table->rows()) {
            const auto record = table->getData(row);
            ASSERT_TRUE(record) << "row " << row;
            ASSERT_TRUE(seen.insert(record->getKey()).second) << record->getKey() << " twice";
            ASSERT_EQ(table->keyToRowID(record->getKey()), row);
        }
        for (const auto &[key, record] : table->getAllDatas())
            ASSERT_EQ(table->keyToRowID(key) >= 0, seen.count(key) > 0) << key;
    }

    std::string lots(const std::string &key) const
    {
        return table->cellText(table->keyToRowID(key), ColumnLots).toStdString();
    }

    bool isDone = false;
};

} // namespace

TEST_F(CDataTableHooks, MayChangeASummedFieldOfARowThatIsBeingMade)
{
    addTickets(3);
    table->updateSums();
    onceAt(table->whileShowing, "d", [this] { table->updateDataField(fullTicket("d", 14), TicketLots, false); });
    table->updateData(fullTicket("d", 10), false);
    table->updateSums();
    int lots = 0;
    for (const int row : table->rows())
        lots += table->cellText(row, ColumnLots).toInt();
    EXPECT_GE(lots, 16);
    EXPECT_EQ(table->statText(ColumnLots).toInt(), lots);
}

TEST_F(CDataTableHooks, MayRemoveAndAddRecordsWhileAllAreFiltered)
{
    addTickets(6);
    onceAt(table->whileShowing, "b", [this] {
        table->removeDataByKey("b");
        table->removeDataByKey("a");
        table->updateData(fullTicket("bb", 3), false);
        table->updateData(fullTicket("e", 9), false);
    });
    table->filterColumn();
    EXPECT_EQ(keys(), "bb e c d f") << "e had its row before its turn";
    EXPECT_EQ(table->size(), 5);
    checkRows();

    onceAt(table->whileShowing, "c", [this] { table->filterColumn(); });
    table->filterColumn();
    EXPECT_EQ(keys(), "bb c d e f");
    checkRows();

    onceAt(table->whileShowing, "d", [this] { table->clear(); });
    table->filterColumn();
    EXPECT_EQ(keys(), "");
    EXPECT_EQ(table->size(), 0);
}

TEST_F(CDataTableHooks, MayRemoveTheRecordThatTheyAreAskedAbout)
{
    table->onFilter(ColumnLots, 7, "0");
    addTickets(4);
    onceAt(table->whilePassing, "b", [this] { table->removeDataByKey("b"); });
    table->refreshDatas();
    EXPECT_EQ(keys(), "a c d");
    onceAt(table->whilePassing, "n", [this] { table->updateData(fullTicket("n", 8), false); });
    const int row = table->updateData(fullTicket("n", 7), false);
    EXPECT_EQ(row, table->keyToRowID("n"));
    EXPECT_EQ(table->cellText(table->keyToRowID("n"), ColumnLots), "8") << "the one that came last";
    onceAt(table->whileShowing, "x", [this] { table->removeDataByKey("x"); });
    EXPECT_EQ(table->updateData(fullTicket("x", 7), false), -1);
    table->updateSums();
    EXPECT_EQ(table->statText(ColumnLots), "16") << "a row that has gone counts for nothing";
    checkRows();
}

TEST_F(CDataTableHooks, MayDoSoInTheMiddleOfABatch)
{
    addTickets(2);
    onceAt(table->whileShowing, "m", [this] {
        table->removeDataByKey("n");
        table->removeDataByKey("a");
        table->updateData(fullTicket("o", 9), false);
    });
    const QVector<int> rows = table->updateDatas(
        {fullTicket("l", 1), fullTicket("m", 2), fullTicket("n", 3), fullTicket("o", 4), fullTicket("m", 5)});
    EXPECT_EQ(keys(), "b l m o");
    EXPECT_EQ(rows, (QVector<int>{table->keyToRowID("l"), table->keyToRowID("m"), table->keyToRowID("o")}));
    EXPECT_EQ(lots("o"), "9") << "the record that the hook has handed in is the newer one";
    checkRows();
    onceAt(table->whileShowing, "p", [this] { table->filterColumn(); });
    EXPECT_EQ(table->updateDatas({fullTicket("p", 1), fullTicket("c", 2)}).size(), 2);
    EXPECT_EQ(keys(), "b c l m o p");
    checkRows();
}

TEST_F(CDataTableHooks, MayChangeTheListThatWasHandedIn)
{
    addTickets(3);
    QVector<KV::CDataTable::FieldChange> changes = {{fullTicket("a", 7), TicketLots}, {fullTicket("c", 8), TicketLots}};
    QVector<RecordPtr> records = {fullTicket("b", 7), fullTicket("d", 8)};
    table->onFilter(ColumnLots, 7, "0");
    table->whilePassing = [&changes](const RecordPtr &) { changes.clear(); };
    EXPECT_EQ(table->updateDataFields(changes), (QVector<int>{0, 2}));
    table->whilePassing = [&records](const RecordPtr &) { records.clear(); };
    EXPECT_EQ(table->updateDatas(records), (QVector<int>{3}));
    EXPECT_EQ(lots("a") + lots("b") + lots("c"), "778");
}

TEST_F(CDataTableHooks, ARecordWithAHashOfItsOwnIsFoundByItsKey)
{
    const auto record = boost::make_shared<pagetest::PlainRecord>("x", 1);
    const int row = table->updateData(record, false);
    EXPECT_GE(row, 0);
    EXPECT_EQ(table->updateDataField(record, TicketLots, false), row);
    EXPECT_EQ(table->updateDataFields({{record, TicketLots}}), (QVector<int>{row}));
}

TEST_F(CDataTableHooks, MayChangeAFieldOfARecordThatWaitsForItsTurnInTheList)
{
    addTickets(1);
    onceAt(table->whileShowing, "b", [this] { table->updateDataField(fullTicket("c", 9), TicketLots, false); });
    std::string shown;
    const auto once = table->whileShowing;
    table->whileShowing = [&](const RecordPtr &record) {
        shown += record->getKey();
        once(record);
    };
    table->updateDatas({fullTicket("b", 7), fullTicket("c", 8)});
    EXPECT_EQ(shown, "bc") << "every record that gets a row";
    EXPECT_EQ(lots("c"), "9");
    checkRows();
}

TEST_F(CDataTableHooks, MayScrollAndHideColumnsWhileCellsAreFilled)
{
    addTickets(3);
    auto *grid = table->findChild<ZB::GridView *>();
    isDone = false;
    table->whileFilling = [&](int) {
        if (std::exchange(isDone, true))
            return;
        QVector<RecordPtr> more;
        for (int i = 0; i < 80; ++i)
            more.append(fullTicket("m" + std::to_string(i), i));
        table->updateDatas(more);
        grid->scrollToRow(70);
        grid->setColumnVisible(ColumnText, false);
    };
    table->updateDataField(fullTicket("a", 5), TicketLots, true);
    EXPECT_TRUE(isDone);
    EXPECT_TRUE(QTest::qWaitFor([&] { return grid->firstVisibleRow() > 0; }));
    QTest::qWait(700); // flashes fade, and sums come
    grid->refreshNow();
    const QImage shown = grid->grab().toImage();
    grid->setColumnVisible(ColumnText, true);
    grid->refreshNow();
    grid->setColumnVisible(ColumnText, false); // lays out anew, and draws everything
    grid->refreshNow();
    EXPECT_EQ(shown, grid->grab().toImage());
    checkRows();
}

TEST_F(CDataTableHooks, MayRemoveRecordsWhileTheTextsOfAFilterBoxAreGathered)
{
    addTickets(5);
    table->onFilter(ColumnLots, 7, "0");
    table->setColumnFilterable(ColumnText, true);
    onceAt(table->whilePassing, "c", [this] {
        table->removeDataByKey("c");
        table->removeDataByKey("d");
    });
    table->showFilterMenu(ColumnText, QRect(0, 0, 80, 28));
    auto *box = table->findChild<ZB::FilterPopup *>();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([box] { return box->isGathered(); }));
    EXPECT_EQ(keys(), "a b e");
    EXPECT_EQ(box->texts().count("第5"), 1);
    EXPECT_EQ(box->texts().count("第4"), 0);
}

TEST_F(CDataTableHooks, PutWidgetsIntoTheRowTheyAreCalledFor)
{
    const auto add = [this](const RecordPtr &record) {
        auto *button = new ZB::CComboPushButton(QString(), 5, 4, 20, 1, 12, nullptr);
        button->setObjectName(QString::fromStdString(record->getKey()));
        table->addComboPushButton(ColumnOpen, button);
    };
    const auto widgets = [this] {
        std::string names;
        for (const int row : table->rows()) {
            const QWidget *widget = table->cellWidget(row, ColumnOpen);
            names += table->getData(row)->getKey() + '=' + (widget ? widget->objectName().toStdString() : "") + ' ';
        }
        return names;
    };
    table->whileShowing = add;
    table->updateDatas({fullTicket("a", 1), fullTicket("b", 2), fullTicket("c", 3)});
    EXPECT_EQ(widgets(), "a=a b=b c=c ");
    table->whileShowing = [&](const RecordPtr &record) {
        add(record);
        if (record->getKey() == "a" && table->size() < 4)
            table->updateData(fullTicket("d", 4), false);
        add(record);
    };
    table->updateData(fullTicket("a", 5), false);
    EXPECT_EQ(widgets(), "a=a b=b c=c d=d ") << "also when a row was built meanwhile";
    table->filterColumn();
    EXPECT_EQ(widgets(), "a=a b=b c=c d=d ");
}

TEST_F(CDataTableHooks, LeaveRowsAndMapsInAgreementWhateverTheyDo)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    const auto anyTicket = [&below] { return fullTicket("k" + std::to_string(below(30)), below(12)); };
    int depth = 0;
    const auto act = [&] {
        QVector<KV::CDataTable::FieldChange> changes;
        switch (below(15)) {
        case 0:
            return table->filterColumn();
        case 1:
            return table->onFilter(ColumnLots, 7, QString::number(below(6)));
        case 2:
            return table->refreshDatas();
        case 3:
            return below(4) == 0 ? table->clear() : table->updateTable();
        case 4:
        case 5:
        case 6:
            table->removeDataByKey("k" + std::to_string(below(30)));
            return;
        case 7:
            table->updateDatas({anyTicket(), anyTicket(), anyTicket(), anyTicket()});
            return;
        case 8:
            for (int i = 0; i < 60; ++i)
                changes.append({anyTicket(), TicketLots});
            table->updateDataFields(changes);
            return;
        case 9:
            table->updateDataField(anyTicket(), TicketLots, below(4) == 0);
            return;
        case 10: // fills the cell, which calls hooks
            table->cellText(below(40), ColumnLots);
            return;
        case 11:
            table->cellColor(below(40), ColumnSide);
            return;
        default:
            table->updateData(anyTicket(), below(4) == 0);
        }
    };
    const auto hook = [&](const RecordPtr &) {
        if (depth >= 2 || below(12) != 0)
            return;
        ++depth;
        act();
        --depth;
    };
    table->whileShowing = hook;
    table->whilePassing = hook;
    table->whileFilling = [&](int) { hook(RecordPtr()); };
    for (int step = 0; step < 600; ++step) {
        act();
        ASSERT_NO_FATAL_FAILURE(checkRows()) << "step " << step;
    }
}
