#include <QtTest/QTest>
#include <QtWidgets/QLayout>
#include <algorithm>
#include <limits>

#include "grid/gridview.h"
#include "popups/filterpopup.h"
#include "recordwindow.h"
#include "services/userconfig.h"
#include "zb/ccombopushbutton.h"
#include "zb/cradiobuttongroup.h"
#include "zb/cuiresource.h"

namespace {

using namespace testrecords;
using testrecords::OpenTable;

class CDataTable : public RecordWindow
{
protected:
    QString text(const std::string &key, int column) { return table->cellText(table->keyToRowID(key), column); }
    ZB::GridView *grid() const { return table->findChild<ZB::GridView *>(); }
};

std::map<int, kdservice::FieldDes *> fieldsOf(const RecordPtr &record, const std::vector<int> &ids)
{
    std::map<int, kdservice::FieldDes *> fields;
    for (const int id : ids)
        fields[id] = record->getFieldDes().at(id);
    return fields;
}

} // namespace

TEST_F(CDataTable, ShowsEveryRecordInARowOfItsOwnWithItsTextsAndColours)
{
    const auto ticket = fullTicket("k1", 2);
    ticket->setNested(TicketLeft, makeInner(1.5, 7));
    EXPECT_EQ(table->updateData(ticket, true), 0);
    EXPECT_EQ(table->updateData(fullTicket("k2", 3), false), 1);
    EXPECT_EQ(shown(), "k1: 第2|买入|2|+200|2.25|否|1.500|7\n"
                       "k2: 第3|卖出|3|+300|3.25|是||\n");
    EXPECT_EQ(table->cellColor(0, ColumnSide), ZB::CUiResource::instance()->getColor("clr_global_rise"));
    EXPECT_EQ(table->cellColor(1, ColumnSide), ZB::CUiResource::instance()->getColor("clr_global_fall"));
    EXPECT_EQ(table->cellColor(0, ColumnText), nullptr) << "the table's own colour";
    EXPECT_EQ(table->size(), 2);
    EXPECT_EQ(table->getDataByKey("k2")->getInt(TicketLots), 3);
    EXPECT_EQ(table->fieldID2columnID(TicketLots), ColumnLots);
    EXPECT_EQ(table->columnID2fieldID(ColumnPrice), InnerPrice);
    EXPECT_EQ(table->fieldID2columnID(12345), -1);
    EXPECT_EQ(table->getMetaID(), MetaTicket);
    EXPECT_EQ(table->getTradeType(), kdservice::TraderStock);
    EXPECT_EQ(table->options() & (511 | 1024), 511 | 1024);
}

TEST_F(CDataTable, ARecordThatIsChangedInPlaceShowsWhenItIsRefreshed)
{
    const auto first = fullTicket("a", 2);
    const auto second = fullTicket("b", 4);
    const auto hidden = fullTicket("c", 5);
    table->updateDatas({first, second, hidden});
    filter(ColumnSide, ZB::FilterExact, {"买入"});
    EXPECT_EQ(text("a", ColumnLots), "2");
    first->setData(TicketLots, 7);
    second->setData(TicketLots, 8);
    hidden->setData(TicketSide, "0");
    EXPECT_EQ(table->refreshData(first, false), table->keyToRowID("a"));
    EXPECT_EQ(text("a", ColumnLots), "7");
    const quint64 frames = grid()->frameCount();
    table->refreshDatas();
    EXPECT_EQ(grid()->frameCount(), frames + 1) << "all in one, and at once";
    EXPECT_EQ(text("b", ColumnLots), "8");
    EXPECT_EQ(keys(), "a b c") << "one that passes by now gets a row";
}

TEST_F(CDataTable, TheCurrentRowAndItsActivationAreToldWithTheKey)
{
    addTickets(2);
    table->updateTable();
    window->take();
    const QRect header = grid()->headerRect(ColumnLots);
    QTest::mouseClick(grid(), Qt::LeftButton, Qt::NoModifier, QPoint(header.center().x(), header.bottom() + 8));
    EXPECT_EQ(window->take(), "70 2 0 a");
    QTest::keyClick(grid(), Qt::Key_Return);
    EXPECT_EQ(window->take(), "69 2 0 a");
}

TEST_F(CDataTable, NothingAndUnknownKeysAreRefused)
{
    addTickets(1);
    const RecordPtr none;
    const auto stranger = fullTicket("stranger", 5);
    EXPECT_EQ(table->updateData(none, true), -1);
    EXPECT_TRUE(table->updateDatas({none}).isEmpty());
    EXPECT_EQ(table->refreshData(none, true), -1);
    EXPECT_EQ(table->refreshData(stranger, true), -1);
    EXPECT_EQ(table->updateDataField(stranger, TicketLots, true), -1);
    EXPECT_EQ(table->removeData(none), -1);
    EXPECT_EQ(table->removeData(stranger), -1);
    EXPECT_EQ(table->removeDataByID(77), -1);
    EXPECT_FALSE(table->getData(77));
    EXPECT_FALSE(table->getDataConst(-1));
    EXPECT_EQ(table->keyToRowID("stranger"), -1);
    EXPECT_EQ(keys(), "a");
    EXPECT_EQ(table->size(), 1);
}

TEST_F(CDataTable, AValueFilterKeepsTextsThatAreOrContainOneOfItsOwn)
{
    addTickets(4);
    filter(ColumnSide, ZB::FilterExact, {"买"});
    EXPECT_EQ(keys(), "");
    filter(ColumnSide, ZB::FilterExact, {});
    EXPECT_EQ(keys(), "a b c d");
    table->setColumnFilterable(ColumnText, true);
    const auto latin = fullTicket("z", 9);
    latin->setData(TicketText, "Spot ORDER");
    table->updateData(latin, false);
    filter(ColumnText, ZB::FilterContains, {"order", "3", ""});
    EXPECT_EQ(keys(), "c z");
    filter(ColumnText, ZB::FilterContains, {""});
    EXPECT_EQ(keys(), "") << "an empty text is contained in nothing";
    filter(ColumnText, ZB::FilterContains, {"order"});
    filter(ColumnText, 5, {"3"});
    EXPECT_EQ(keys(), "z") << "a type that there is not changes nothing";
    for (const auto type : {ZB::FilterExcept, ZB::EFilterType(5)}) {
        table->takeColumnFilter(ColumnText, type, {"order"});
        EXPECT_EQ(keys(), "") << "of the other types none lets anything pass";
    }
}

TEST_F(CDataTable, AColumnThatIsNotFilterableLetsEverythingPass)
{
    addTickets(2);
    filter(ColumnLots, ZB::FilterExact, {"1"});
    EXPECT_EQ(keys(), "a b");
    table->setColumnFilterable(ColumnLots, true);
    filter(ColumnLots, ZB::FilterExact, {"1"});
    EXPECT_EQ(keys(), "a");
    table->setColumnFilterable(ColumnLots, false);
    table->filterColumn();
    EXPECT_EQ(keys(), "a b");
}

TEST_F(CDataTable, StatisticsSkipMissingValuesAndFollowTheFieldsFormat)
{
    refhost::UserConfig *user = new refhost::UserConfig;
    refhost::setUserConfig(std::unique_ptr<refhost::UserConfig>(user));
    addTickets(2);
    const auto odd = makeTicket("odd"); // no values at all
    table->updateData(odd, false);
    const auto large = fullTicket("large", 2000000);
    large->setData(TicketVolume, std::numeric_limits<qint64>::max());
    large->setData(TicketLots, std::numeric_limits<int>::max());
    table->updateData(large, false);
    user->setSegmentedFormat(true);
    const auto fields = fieldsOf(odd, {TicketText, TicketLots, TicketVolume, TicketValue, TicketOpen});
    table->updateStatData(fields);
    EXPECT_EQ(statistics(), "||3|300|2 000 003.75|||0");
    user->setSegmentedFormat(false);
    table->updateStatData(fields);
    EXPECT_EQ(statistics(), "||3|300|2000003.75|||0");
    odd->setData(TicketValue, std::numeric_limits<double>::quiet_NaN());
    table->updateStatData(fields);
    EXPECT_EQ(table->statText(ColumnValue), "非法值");
}

TEST_F(CDataTable, RowsOfADerivedTablesOwnAreSummedToo)
{
    addTickets(3);
    table->updateSums();
    const int own = table->beginRow();
    table->setCellValue(own, ColumnLots, 40);
    table->endRow();
    table->updateDataField(table->getDataByKey("c"), TicketLots, false);
    table->updateSums();
    EXPECT_EQ(table->statText(ColumnLots), "46") << "also where sums are kept";
    EXPECT_EQ(table->removeDataByID(own), -1);
    const auto nameless = fullTicket("", 7);
    table->updateData(nameless, false);
    EXPECT_EQ(table->getData(own), nameless) << "a row without a record has the empty key";
    EXPECT_EQ(table->removeDataByID(own), -1) << "but shows no record";
    EXPECT_EQ(table->size(), 4);
}

TEST_F(CDataTable, SumsAreExactWhateverTheOrder)
{
    for (int i = 0; i < 1000; ++i) {
        const auto ticket = makeTicket(std::to_string(i));
        ticket->setData(TicketValue, i % 2 == 0 ? 1e15 : -1e15 + 0.01 * (i + 1));
        table->updateData(ticket, false);
    }
    table->onTimer();
    long double cents = 0;
    for (int i = 1; i < 1000; i += 2)
        cents += static_cast<long double>(-1e15 + 0.01 * (i + 1)) + 1e15L;
    EXPECT_EQ(table->statText(ColumnValue).remove(' ').toStdString(),
              QString::number(double(cents), 'f', 2).toStdString());
}

TEST_F(CDataTable, StatisticsFollowTheRowsByThemselves)
{
    addTickets(3);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->statText(ColumnLots) == "6"; }));
    table->updateData(fullTicket("d", 10), false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->statText(ColumnLots) == "16"; }));
    const auto changed = fullTicket("d", 10);
    changed->setData(TicketLots, 14);
    table->updateDataField(changed, TicketLots, false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->statText(ColumnLots) == "20"; }));
    filter(ColumnSide, ZB::FilterExact, {"买入"});
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->statText(ColumnLots) == "16"; }));
    table->removeDataByKey("b");
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->statText(ColumnLots) == "14"; }));
    table->clear();
    EXPECT_TRUE(QTest::qWaitFor([this] { return table->statText(ColumnLots) == "0"; }));
}

TEST_F(CDataTable, BoldColumnsAreThoseOfBoldFieldsWhileThereAreRecords)
{
    EXPECT_FALSE(table->isColBoldFont(ColumnText));
    addTickets(1);
    EXPECT_TRUE(table->isColBoldFont(ColumnText));
    EXPECT_FALSE(table->isColBoldFont(ColumnLots));
    EXPECT_TRUE(grid()->column(ColumnText).bold);
    table->clear();
    EXPECT_FALSE(table->isColBoldFont(ColumnText));
    EXPECT_EQ(table->size(), 0);
    EXPECT_EQ(table->rowCount(), 0);
}

TEST_F(CDataTable, CellsAreWorkedOutWhenTheyAreNeededAndThroughTheHook)
{
    window->resize(900, 120); // a few rows
    table->updateTable();
    for (int number = 0; number < 500; ++number)
        table->updateData(fullTicket(std::to_string(1000 + number), number), false);
    EXPECT_TRUE(table->shownFields.empty());
    EXPECT_EQ(table->shownRecords, 500);
    table->updateTable();
    EXPECT_GT(table->shownFields.size(), 10u);
    EXPECT_LT(table->shownFields.size(), 100u);
    EXPECT_TRUE(table->changedFields.empty());
    table->shownFields.clear();
    table->updateDataField(table->getData(0), TicketLots, true);
    EXPECT_EQ(table->shownFields, std::vector<int>{TicketLots});
    EXPECT_EQ(table->changedFields, std::vector<int>{TicketLots});
    table->shownFields.clear();
    table->setImmediateUpdate(false);
    table->updateDataField(table->getData(0), TicketLots, true);
    EXPECT_TRUE(table->shownFields.empty()) << "painting waits for the next frame";
    EXPECT_TRUE(QTest::qWaitFor([this] { return !table->shownFields.empty(); }));
}

TEST_F(CDataTable, WhatChangedBeforeAllRowsAreMadeAnewIsShown)
{
    addTickets(3);
    table->updateTable();
    table->shownFields.clear();
    table->updateData(fullTicket("b", 7), false);
    table->filterColumn();
    table->updateTable();
    EXPECT_NE(std::find(table->shownFields.begin(), table->shownFields.end(), TicketLots), table->shownFields.end())
        << "the row is another one under the same identity";
}

TEST_F(CDataTable, AFieldOfARowOutOfSightShowsWhenItComesIntoSight)
{
    window->resize(900, 120); // a few rows
    for (int number = 0; number < 100; ++number)
        table->updateData(fullTicket(std::to_string(1000 + number), number), false);
    table->updateTable();
    const auto change = [this](int row, int lots) {
        const auto changed = fullTicket(std::to_string(1000 + row), row);
        changed->setData(TicketLots, lots);
        table->updateDataField(changed, TicketLots, false);
    };
    change(90, 901); // never seen
    table->scrollToRow(90);
    table->updateTable();
    change(90, 902); // in sight
    table->updateTable();
    EXPECT_EQ(table->cellText(90, ColumnLots), "902");
    table->scrollToRow(0);
    table->updateTable();
    change(90, 903); // seen before
    EXPECT_EQ(table->cellText(90, ColumnLots), "903");
    change(50, 501);
    EXPECT_EQ(table->cellText(50, ColumnLots), "501");
}

TEST_F(CDataTable, TheFilterBoxOffersTheTextsThatPassTheOtherFilters)
{
    addTickets(5);
    table->setColumnFilterable(ColumnLots, true);
    filter(ColumnSide, ZB::FilterExact, {"卖出"});
    table->updateData(fullTicket("q", 11), false);
    table->showFilterMenu(ColumnLots, QRect(0, 0, 80, 28));
    auto *box = table->findChild<ZB::FilterPopup *>();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([box] { return box->isGathered(); }));
    EXPECT_EQ(box->texts().join(' ').toStdString(), "1 3 5 11") << "numbers in their own order";
    Q_EMIT box->chosen(ZB::FilterExact, {"3", "11"});
    EXPECT_EQ(keys(), "c q");
    EXPECT_TRUE(grid()->column(ColumnLots).filtered);
    table->showFilterMenu(ColumnText, QRect(0, 0, 80, 28));
    EXPECT_TRUE(table->isColumnFiltered(ColumnSide));
}

TEST_F(CDataTable, TheFilterBoxOffersRecordsWithoutTheFieldAsBlank)
{
    const auto priced = fullTicket("p", 2);
    priced->setNested(TicketLeft, makeInner(1.5, 7));
    table->updateDatas({priced, fullTicket("q", 4)});
    table->setColumnFilterable(ColumnPrice, true);
    table->showFilterMenu(ColumnPrice, QRect(0, 0, 80, 28));
    auto *box = table->findChild<ZB::FilterPopup *>();
    ASSERT_NE(box, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([box] { return box->isGathered(); }));
    EXPECT_EQ(box->texts(), (QStringList{"1.500", ""}));
    Q_EMIT box->chosen(ZB::FilterExact, {""});
    EXPECT_EQ(keys(), "q");
}

TEST_F(CDataTable, SelectionAndCurrentRowSurviveAFilter)
{
    addTickets(4);
    table->updateTable();
    table->setCurrentRow(table->keyToRowID("c"));
    filter(ColumnSide, ZB::FilterExact, {"卖出"});
    table->updateTable();
    EXPECT_EQ(table->currentRow(), table->keyToRowID("c"));
    EXPECT_EQ(table->selectedRows(), QVector<int>{table->keyToRowID("c")});
}

TEST_F(CDataTable, AnotherTraderTypeBringsItsColumnsAndLeavesTheirArrangementAndWhatADerivedTableHasAdded)
{
    table->initColumns(table->getMetaIDs(MetaTicket, kdservice::TraderStock, {QString::number(MetaWide)}));
    const int action = table->addExtraColumn(5000, "操作");
    const int remark = table->addExtraColumn(-1, "附注");
    const auto columnOf = [this](int field) { return table->fieldID2columnID(field); }; // others came between
    table->setColumnWidth(columnOf(InnerPrice), ZB::scaled(123));
    table->setColumnVisible(columnOf(TicketOpen), false);
    table->setColumnWidth(action, ZB::scaled(66));
    table->setColumnWidth(remark, ZB::scaled(77));
    addTickets(6);
    table->onFilter(columnOf(TicketLots), 7, "3");
    table->onFilter(columnOf(TicketOpen), 7, "5");
    filter(columnOf(TicketSide), ZB::FilterExact, {"买入"});
    EXPECT_EQ(keys(), "f");
    table->setTradeType(kdservice::TraderFuture);
    EXPECT_EQ(keys(), "c d e f") << "the user's filter goes, and the one on a column that has gone";
    EXPECT_GE(columnOf(WideFirst + 3), 0);
    EXPECT_EQ(columnOf(TicketOpen), -1);
    EXPECT_EQ(table->columnWidth(columnOf(InnerPrice)), ZB::scaled(123));
    EXPECT_EQ(table->column(columnOf(TicketValue)).header, "权益");
    const int present = columnOf(5000);
    ASSERT_EQ(present, action - 1);
    EXPECT_EQ(table->columnCount(), remark);
    EXPECT_EQ(table->column(present).header + table->column(present + 1).header, "操作附注");
    EXPECT_EQ(table->columnWidth(present), ZB::scaled(66));
    EXPECT_EQ(table->columnWidth(present + 1), ZB::scaled(77));
}

TEST_F(CDataTable, SettingsOfOtherColumnIdsAreTurnedIntoThePresentOnes)
{
    ZB::CBaseTableFrameSetting frame;
    frame.sorts = {{2, 1}, {9, 0}};
    frame.marks = {{9, 5.0, "clr_global_rise"}, {3, 1.0, "clr_global_fall"}};
    frame.filters = {{{9, {{ZB::FilterExact, {"a"}}}}, {2, {{ZB::FilterExact, {"b"}}}}}};
    QList<ZB::CBaseTableColumnSetting> columns{{9, 1, "九", 80, true}, {2, 2, "二", 90, false}, {3, 3, "三", 70, true}};
    table->resetTableColumnID({{2, 0}, {3, 7}}, frame, columns);
    EXPECT_EQ(frame.sorts, (QVector<QPair<int, int>>{{0, 1}}));
    ASSERT_EQ(frame.filters->size(), 1);
    EXPECT_EQ(frame.filters->first().column, 0);
    ASSERT_EQ(frame.marks.size(), 1);
    EXPECT_EQ(frame.marks[0].column, 7);
    ASSERT_EQ(columns.size(), 2);
    EXPECT_EQ(columns[0].column, 0);
    EXPECT_EQ(columns[1].name, "三");
}

TEST_F(CDataTable, FurtherRecordTypesAddToTheColumns)
{
    EXPECT_EQ(table->getMetaIDs(MetaTicket, kdservice::TraderStock, {"990004", "x", "123", "990001"}),
              (std::vector<int>{MetaTicket, MetaWide}));
}

TEST_F(CDataTable, ExtraColumnsAndWidgetsStandInTheRowsOfTheirRecords)
{
    const int extra = table->addExtraColumn(5000, "操作");
    EXPECT_EQ(table->fieldID2columnID(5000), extra);
    addTickets(1);
    auto *combo = new ZB::CComboPushButton(QString(), 5, 4, 20, 1, 12, nullptr);
    combo->addItem("平仓");
    table->addComboPushButton(extra, combo);
    auto *group = new ZB::CRadioButtonGroup(nullptr, 31, 2, false, Qt::Horizontal);
    group->addButton("限价", 1);
    table->addRadioButtonGroup(ColumnOpen, group);
    table->updateTable();
    const int row = table->keyToRowID("a");
    EXPECT_EQ(table->cellWidget(row, extra), combo);
    EXPECT_TRUE(combo->isVisible());
    EXPECT_TRUE(group->isVisible());
    EXPECT_EQ(grid()->cellAt(combo->mapTo(grid(), combo->rect().center())).second, extra);
    table->setCellText(row, extra, "手工");
    EXPECT_EQ(table->cellText(row, extra), "手工");
    const QPointer<QWidget> gone(combo);
    table->removeDataByKey("a");
    EXPECT_TRUE(QTest::qWaitFor([&gone] { return gone.isNull(); }));
}

TEST_F(CDataTable, ChosenFiltersComeBackWithTheSettings)
{
    const auto startAgain = [this] {
        delete table;
        table = new OpenTable(tableId, MetaTicket, window.get());
        window->layout()->addWidget(table);
        table->setColumnFilterable(ColumnText, true);
    };
    table->setColumnFilterable(ColumnText, true);
    filter(ColumnSide, ZB::FilterExact, {"买入"});
    filter(ColumnText, ZB::FilterContains, {"2", "4"});
    table->onFilter(ColumnLots, 7, "3");
    startAgain(); // with the last choice not yet saved
    table->updateTable();
    addTickets(6);
    EXPECT_EQ(keys(), "b d") << "the filters of the user, not the derived table's own";
    EXPECT_TRUE(table->isColumnFiltered(ColumnSide) && table->isColumnFiltered(ColumnText));

    startAgain();
    table->setTradeType(kdservice::TraderFuture); // before they have come back
    addTickets(6);
    EXPECT_EQ(keys(), "b d f") << "the other column cannot be filtered there";
    table->setTradeType(kdservice::TraderStock);
    EXPECT_EQ(keys(), "a b c d e f");
    EXPECT_FALSE(table->isColumnFiltered(ColumnSide));
    startAgain();
    table->updateTable();
    addTickets(6);
    EXPECT_EQ(keys(), "a b c d e f") << "they went with the kind of trader";

    ZB::CBaseTableSettingParam setting = table->getTableSetting();
    setting.frame.filters = {{{ColumnSide, {{ZB::FilterExact, {}}}}, // passes nothing
                              {ColumnText, {{ZB::FilterContains, {"2"}}, {ZB::FilterContains, {"第"}}}}}};
    table->setTableSetting(setting);
    EXPECT_EQ(keys(), "");
    EXPECT_FALSE(table->isColumnFiltered(ColumnText)) << "a column has one condition here";
}
