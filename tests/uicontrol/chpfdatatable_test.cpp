#include "table/chpfdatatable.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QLayout>
#include <chrono>
#include <future>

#include "model/chpfextradatamodel.h"
#include "model/chpfsorttimedata.h"
#include "model/chpfthreaddatamodel.h"
#include "services/logservice.h"
#include "table/chpfprogressdelegate.h"
#include "tablewindow.h"

using namespace testrecords;
using KV::CHpfDataTable;

namespace {

using HpfDataTable = TableWindow;
using RecordList = QList<RecordPtr>;

std::string keys(const CHpfDataTable &table)
{
    QStringList texts;
    for (const auto &row : table.getAllDatas())
        texts << row->qsKey();
    return texts.join(QLatin1Char(' ')).toStdString();
}

std::string rowColor(const CHpfDataTable &table, const char *key)
{
    return colorName(table.getDataByKey(QLatin1String(key))->getColor(0));
}

void filter(KV::CHpfDataModel &model, int column, const QSet<QString> &texts)
{
    QPair<ZB::EFilterType, QSet<QString>> values(ZB::FilterExact, texts);
    model.filterColumn(column, values);
}

} // namespace

TEST_F(HpfDataTable, ItStartsWithItsFlagsAndTheColumnsOfItsRecords)
{
    EXPECT_EQ(table->tableId(), tableId);
    EXPECT_EQ(table->tableFlags(), 4);
    EXPECT_EQ(table->pagingQueryType(), ZB::PagingNone);
    EXPECT_EQ(table->tradeType(), kdservice::TraderStock);
    EXPECT_EQ(shown(), "备注|方向|手数|数量|金额|开仓|价格|共有");
    std::string looks;
    for (int column = 0; column < ticketColumns; ++column) {
        const ZB::GridColumn look = grid()->column(column);
        looks += std::to_string(look.alignment) + '/' + std::to_string(look.statisticsAlignment) +
                 (look.bold ? " bold" : "") + (look.filterable ? " filter" : "") + '\n';
    }
    EXPECT_EQ(looks, "129/129 bold\n132/132 filter\n130/130\n130/130\n130/130\n132/132\n130/130\n130/130\n");
}

TEST_F(HpfDataTable, RecordsComeInEveryFormAndReplaceThoseOfTheirKeys)
{
    table->updateDatas(std::vector<RecordPtr>{fullTicket("a", 1), nullptr, fullTicket("b", 2)}, false);
    table->updateDatas(QVector<RecordPtr>{fullTicket("c", 3)}, false);
    table->updateDatas(RecordList{fullTicket("b", 20), fullTicket("b", 21)}, true);
    table->updateData(fullTicket("a", 4), true);
    table->updateData(RecordPtr(), true);
    EXPECT_EQ(shown(), "备注|方向|手数|数量|金额|开仓|价格|共有\n"
                       "第4|买入|4|+400|4.25|否||\n"
                       "第21|卖出|21|+2,100|21.25|是||\n"
                       "第3|卖出|3|+300|3.25|是||");
    EXPECT_EQ(statistics(), "||28|2800|28.75|||0");
    EXPECT_EQ(table->getColumnIdByFileId(TicketVolume), ColumnVolume);
    EXPECT_EQ(table->getColumnIdByFileId(4711), -1);
    EXPECT_FALSE(table->getData(3) || table->getData(-1) || table->getDataByKey(QStringLiteral("x")));

    const QString rise = QStringLiteral("clr_global_rise");
    table->updateDataFixColor(fullTicket("a", 1), rise, false);
    table->updateDataFixColor({{fullTicket("b", 2), QString()}, {nullptr, rise}, {fullTicket("d", 4), rise}}, false);
    table->updateDataFixColorForSortTime(fullTicket("e", 5), QStringLiteral("clr_global_fall"), false);
    table->updateDataFixColorForSortTime({{fullTicket("f", 6), QString()}}, true);
    EXPECT_EQ(keys(*table), "a b c d e f");
    std::string colors;
    for (const char *key : {"a", "b", "c", "d", "e", "f"})
        colors += rowColor(*table, key) + ' ';
    EXPECT_EQ(colors, "rise default default rise fall default ");
    std::string sortTime;
    for (const auto &row : table->getAllDatas())
        sortTime += dynamic_cast<KV::CHpfSortTimeData *>(row.get()) != nullptr ? '1' : '0';
    EXPECT_EQ(sortTime, "000011");
}

TEST_F(HpfDataTable, RowsAreRemovedByKey)
{
    table->updateDatas(RecordList{fullTicket("a", 1), fullTicket("b", 2), fullTicket("c", 3), fullTicket("d", 4)},
                       true);
    table->removeDataByKey(QStringLiteral("b"), true);
    table->removeDataByKey(QStringLiteral("nobody"), false);
    EXPECT_EQ(keys(*table), "a c d");
    table->removeDatasByKey({QStringLiteral("a"), QStringLiteral("nobody"), QStringLiteral("d")}, true);
    EXPECT_EQ(keys(*table), "c");
    EXPECT_EQ(grid()->source()->rowCount(), 1);
    table->clear();
    EXPECT_EQ(keys(*table), "");
    EXPECT_EQ(grid()->source()->rowCount(), 0);
    table->setAppendSeq(false);
    table->updateDatas(RecordList{fullTicket("a", 1), fullTicket("b", 2)}, true);
    EXPECT_EQ(shownKeys(*table->getDataModel()), "b a");
}

TEST_F(HpfDataTable, AddedColumnsStandAtTheEnd)
{
    KV::CHpfDataColumnProperty property;
    property.name = QStringLiteral("操作");
    property.flag11 = true;
    property.alignment = Qt::AlignLeft | Qt::AlignVCenter;
    EXPECT_EQ(table->addColumn(property, true, true, QStringLiteral("撤单")), ticketColumns);
    EXPECT_EQ(table->addColumn(property, false, false, QStringLiteral("无")), ticketColumns + 1);
    table->updateData(fullTicket("a", 1), true);
    EXPECT_EQ(rowText(*table->getDataModel(), *table->getData(0)), "第1|卖出|1|+100|1.25|否|||撤单|");
    EXPECT_TRUE(table->columnVisible(ticketColumns));
    EXPECT_FALSE(table->columnVisible(ticketColumns + 1));
    EXPECT_TRUE(grid()->column(ticketColumns).bold);
    EXPECT_EQ(grid()->column(ticketColumns).alignment, Qt::AlignLeft | Qt::AlignVCenter);
}

TEST_F(HpfDataTable, AnAdoptedModelIsWhatEveryOperationWorksOn)
{
    const Guarded<KV::CHpfThreadDataModel> model(MetaInner, kdservice::TraderFuture);
    table->updateData(fullTicket("a", 1), true);
    table->setDataModel(model.pointer().get());
    EXPECT_EQ(table->getDataModel(), model.pointer());
    EXPECT_EQ(table->getExtraDataModel(), model->getExtraDataModel());
    EXPECT_EQ(table->tradeType(), kdservice::TraderFuture);
    table->updateData(makeInner(2.5, 7), true);
    EXPECT_EQ(shown(), "价格|共有\n2.500|7");
    EXPECT_EQ(table->getColumnIdByFileId(InnerShared), 1);
    EXPECT_EQ(grid()->source()->columnCount(), 2);
    table->setColumnStatEnable(1, false);
    EXPECT_EQ(statistics(), "|");
    table->clear();
    EXPECT_EQ(model->allSize(), 0);
}

TEST_F(HpfDataTable, WithoutAModelOfTheLibraryNothingHappens)
{
    for (const bool foreign : {false, true}) {
        KV::CHpfDataModel unshared(MetaTicket, kdservice::TraderStock);
        table->setDataModel(foreign ? &unshared : nullptr);
        EXPECT_FALSE(table->getDataModel());
        EXPECT_EQ(table->getExtraDataModel(), nullptr);
        table->updateData(fullTicket("a", 1), true);
        table->updateDatas(RecordList{fullTicket("a", 1)}, true);
        table->updateDataFixColor({{fullTicket("a", 1), QString()}}, true);
        table->removeDataByKey(QStringLiteral("a"), true);
        table->setTradeType(kdservice::TraderFuture);
        table->setColumnStatEnable(0, true);
        table->setAppendSeq(true);
        table->onTimer();
        table->clearFilter();
        table->adjustVisibleWidth();
        table->clear();
        EXPECT_EQ(table->addColumn({}, true, true, QString()), -1);
        EXPECT_EQ(table->count() + table->getAllDatas().size(), 0);
        EXPECT_EQ(grid()->source()->columnCount(), foreign ? int(ticketColumns) : 0);
        table->setDataModel(nullptr);
    }
}

TEST_F(HpfDataTable, ATableThatGoesTakesItsRowsAndModelAlong)
{
    const auto adopted = boost::make_shared<KV::CHpfDataModel>(MetaTicket, kdservice::TraderStock);
    const PlainPtr record = fullTicket("a", 1);
    table->updateData(record, true);
    const boost::weak_ptr<KV::CHpfDataModel> own = table->getDataModel();
    table->setDataModel(adopted.get());
    EXPECT_TRUE(own.expired());
    EXPECT_EQ(record.use_count(), 1);
    table->updateData(record, true);
    settle();
    const boost::weak_ptr<KV::CHpfDataModel> watch = adopted;
    window.reset();
    EXPECT_EQ(record.use_count(), 1);
    EXPECT_EQ(adopted.use_count(), 1);
}

TEST_F(HpfDataTable, TheFirstModelKeepsItsRowsForWhoeverHoldsIt)
{
    const auto own = table->getDataModel();
    table->updateData(fullTicket("a", 1), true);
    table->setDataModel(nullptr);
    EXPECT_EQ(own->allSize(), 1);
    own->clear();
}

TEST_F(HpfDataTable, AnotherTraderTypeMakesTheTableAnew)
{
    QStringList lines;
    const int listener =
        refhost::LogService::instance().addListener([&lines](const QString &text, int) { lines << text; });
    const auto delegate = boost::make_shared<KV::CHpfProgressDelegate>(ColumnOpen, table);
    table->setColumnDelegate(ColumnOpen, delegate);
    table->updateDatas(RecordList{fullTicket("a", 1), fullTicket("b", 2)}, true);
    filter(*table->getDataModel(), ColumnSide, {QStringLiteral("买入")});

    table->setTradeType(kdservice::TraderStock);
    EXPECT_EQ(table->count(), 1);
    EXPECT_TRUE(lines.isEmpty());

    table->setTradeType(kdservice::TraderFuture);
    refhost::LogService::instance().removeListener(listener);
    EXPECT_EQ(lines.size(), 1);
    EXPECT_TRUE(
        lines.value(0).contains(QStringLiteral("[3534] [KV::CHpfDataTable::setTradeType] [table|77] trade_type = 2")))
        << lines.value(0).toStdString();
    EXPECT_EQ(delegate.use_count(), 1);
    EXPECT_TRUE(table->getDataModel()->columnFilters().isEmpty());
    EXPECT_EQ(shown(), "备注|方向|手数|数量|权益|价格|共有");
    EXPECT_EQ(grid()->source()->columnCount(), ticketColumns - 1);
    EXPECT_TRUE(grid()->column(0).bold);
    table->updateData(fullTicket("a", 1), true);
    EXPECT_EQ(table->count(), 1);
}

TEST_F(HpfDataTable, WidthsAreFittedOncePerFill)
{
    const int before = table->columnWidth(ColumnText);
    table->tryFirstAdjustVisibleWidth();
    table->adjustVisibleWidth();
    EXPECT_EQ(table->columnWidth(ColumnText), before);
    const PlainPtr wide = fullTicket("a", 1);
    wide->setData(TicketText, "相当长的一段备注文字，需要一个更宽的列");
    table->updateData(wide, true);
    const int fitted = table->columnWidth(ColumnText);
    EXPECT_GT(fitted, before);

    table->setColumnWidth(ColumnText, 33);
    table->updateData(wide, true);
    table->onTimer();
    EXPECT_EQ(table->columnWidth(ColumnText), 33);
    table->clear();
    table->updateData(wide, true);
    EXPECT_EQ(table->columnWidth(ColumnText), fitted);
}

TEST_F(HpfDataTable, AHiddenTableIsFittedWhenItShows)
{
    const PlainPtr wide = fullTicket("a", 1);
    wide->setData(TicketText, "相当长的一段备注文字，需要一个更宽的列");
    window->hide();
    table->setColumnWidth(ColumnText, 33);
    table->updateData(wide, true);
    table->adjustVisibleWidth();
    EXPECT_EQ(table->columnWidth(ColumnText), 33);
    window->show();
    EXPECT_GT(table->columnWidth(ColumnText), 33);
}

TEST_F(HpfDataTable, RowsThatAllAreFilteredOutAreFittedOnRequestOnly)
{
    filter(*table->getDataModel(), ColumnSide, {QStringLiteral("没有")});
    table->setColumnWidth(ColumnSide, 500);
    table->updateData(fullTicket("a", 1), true);
    table->onTimer();
    EXPECT_EQ(table->columnWidth(ColumnSide), 500);
    table->adjustVisibleWidth();
    EXPECT_LT(table->columnWidth(ColumnSide), 500);
}

TEST_F(HpfDataTable, ASuccessfulExportIsConfirmed)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("成交.csv"));
    table->updateData(fullTicket("a", 1), true);
    EXPECT_FALSE(table->exportData(folder.filePath(QStringLiteral("没有/目录/x.csv"))));
    EXPECT_FALSE(table->exportData(QString()));
    EXPECT_EQ(boxes(), "");
    EXPECT_TRUE(table->exportData(path));
    EXPECT_TRUE(QFile::exists(path));
    EXPECT_EQ(boxes(), "数据导出: 数据导出成功");
}

TEST_F(HpfDataTable, ATableMayGoWhileItExports)
{
    QTemporaryDir folder;
    QVector<RecordPtr> records;
    for (int number = 0; number < 20000; ++number)
        records << fullTicket("k" + std::to_string(number), number);
    table->updateDatas(records, true);
    QTimer::singleShot(0, window.get(), [this] {
        delete table;
        table = nullptr;
    });
    table->exportData(folder.filePath(QStringLiteral("x.csv")));
    EXPECT_EQ(table, nullptr);
    // The worker that wrote lets go of the rows, and with the last one of the model.
    EXPECT_TRUE(QTest::qWaitFor([&records] { return records.front().use_count() == 1; }));
}

TEST_F(HpfDataTable, TheFilterBoxOffersChosenTextsThatNoRowShows)
{
    table->updateDatas(RecordList{fullTicket("a", 1), fullTicket("b", 2)}, true);
    EXPECT_EQ(table->getMenuItems(ColumnSide).join(' ').toStdString(), "买入 卖出");
    filter(*table->getDataModel(), ColumnSide, {QStringLiteral("买入"), QStringLiteral("融券")});
    EXPECT_EQ(table->getMenuItems(ColumnSide).join(' ').toStdString(), "买入 卖出 融券");
    EXPECT_EQ(table->count(), 1);
    table->clearFilter();
    EXPECT_EQ(table->getMenuItems(ColumnSide).join(' ').toStdString(), "买入 卖出");
    EXPECT_EQ(table->count(), 2);
    EXPECT_TRUE(table->getMenuItems(4711).isEmpty());
}

TEST_F(HpfDataTable, SavedColumnsOfAnotherTraderAreNotLost)
{
    const auto saved = [this] {
        QStringList names;
        for (const auto &column : table->getTableSetting().columns)
            names << QStringLiteral("%1:%2").arg(column.fieldId).arg(column.width);
        return names.join(QLatin1Char(' ')).toStdString();
    };
    ZB::CBaseTableSettingParam setting = table->getTableSetting();
    setting.columns.move(ColumnOpen, 1); // only stock traders have this one
    setting.columns[1].width = 123;
    setting.columns.move(ColumnShared, 0);
    table->setTableSetting(setting);
    EXPECT_EQ(saved(), "22:0 8:0 9:123 7:0 3:0 5:0 6:0 21:0");

    table->setTradeType(kdservice::TraderFuture);
    settle();
    table->setTableSetting(setting);
    EXPECT_EQ(table->columnWidth(ColumnOpen), table->columnWidth(ColumnOpen + 1));
    EXPECT_EQ(saved(), "22:0 8:0 9:123 7:0 3:0 5:0 6:0 21:0");
    setting = table->getTableSetting();
    table->setTradeType(kdservice::TraderStock);
    settle();
    table->setTableSetting(setting);
    EXPECT_EQ(table->columnWidth(ColumnOpen), 123);
    EXPECT_EQ(saved(), "22:0 8:0 9:123 7:0 3:0 5:0 6:0 21:0");
}

TEST_F(HpfDataTable, ChosenFiltersComeBackUnlessTheTraderTypeChangesAfterwards)
{
    const auto startAgain = [this] {
        delete table;
        table = new CHpfDataTable(tableId, MetaTicket, window.get(), kdservice::TraderStock, false);
        window->layout()->addWidget(table);
    };
    QSet<QString> buys{QStringLiteral("买入")};
    table->onFilterTrigger(ColumnSide, ZB::FilterExact, buys);
    startAgain(); // with the last choice not yet saved
    table->setTradeType(kdservice::TraderFuture);
    settle();
    EXPECT_EQ(table->columnFilters().keys(), QList<int>{table->getColumnIdByFileId(TicketSide)});
    table->setTradeType(kdservice::TraderStock);
    settle();
    EXPECT_TRUE(table->columnFilters().isEmpty());
    startAgain();
    settle();
    EXPECT_TRUE(table->columnFilters().isEmpty());
}

TEST_F(HpfDataTable, SumsOfExtraColumnsFollowTheFilters)
{
    table->updateDatas(RecordList{fullTicket("a", 1), fullTicket("b", 2), fullTicket("c", 3)}, true);
    auto *extra = table->getExtraDataModel();
    extra->addColumn(ColumnLots, KV::CExtraColumnInfo());
    table->setColumnStatEnable(ColumnLots, true);
    for (const auto &[key, lots] :
         {std::pair("a", 10), std::pair("b", 200), std::pair("c", 3000), std::pair("x", 40000)})
        extra->addData(QLatin1String(key), ColumnLots, lots, nullptr);
    table->updateTable();
    EXPECT_EQ(statistics(), "||3210|600|6.75|||0");
    filter(*table->getDataModel(), ColumnSide, {QStringLiteral("卖出")});
    table->count(); // the filter is through
    table->updateTable();
    EXPECT_EQ(statistics(), "||3010|400|4.50|||0");
    extra->addData(QStringLiteral("b"), ColumnLots, 7, nullptr);
    extra->addData(QStringLiteral("a"), ColumnLots, 20, nullptr);
    EXPECT_EQ(statistics(), "||3020|400|4.50|||0");
    table->removeDataByKey(QStringLiteral("c"), false);
    table->onTimer();
    EXPECT_EQ(statistics(), "||20|100|1.25|||0");
    table->clearFilter();
    table->count();
    table->onTimer();
    EXPECT_EQ(statistics(), "||27|300|3.50|||0");
}

TEST_F(HpfDataTable, AFilterThatIsUnderWayHoldsUpNothing)
{
    /// Holds up whoever asks for its text to filter it.
    class HeldRow : public KV::CHpfData
    {
    public:
        HeldRow(const RecordPtr &heldRecord, const boost::shared_ptr<KV::CHpfDataModel> &model,
                std::shared_future<void> gate)
            : CHpfData(heldRecord, model->fieldColumnMap(), model), opened(std::move(gate))
        {
        }
        QString getFilterQString(int column) override
        {
            opened.wait_for(std::chrono::seconds(10));
            return CHpfData::getFilterQString(column);
        }

    private:
        const std::shared_future<void> opened;
    };
    const auto model = table->getDataModel();
    auto *extra = table->getExtraDataModel();
    extra->addColumn(ColumnLots, KV::CExtraColumnInfo());
    table->setColumnStatEnable(ColumnLots, true);
    extra->addData(QStringLiteral("a"), ColumnLots, 10, nullptr);
    extra->addData(QStringLiteral("held"), ColumnLots, 200, nullptr);
    std::promise<void> gate;
    model->updateData(makeRow(model, fullTicket("a", 1)));
    model->updateData(boost::make_shared<HeldRow>(fullTicket("held", 9), model, gate.get_future().share()));
    filter(*model, ColumnText, {QStringLiteral("第1")});
    table->updateTable();
    table->onTimer();
    table->tryFirstAdjustVisibleWidth();
    EXPECT_TRUE(model->isPending());
    gate.set_value();
    EXPECT_EQ(table->count(), 1);
    table->onTimer();
    EXPECT_EQ(extra->getStatData(ColumnLots), 10);
}

TEST_F(HpfDataTable, SumsOfManyExtraValuesAreCountedBesideTheWindow)
{
    constexpr int rows = 5000;
    const auto model = table->getDataModel();
    auto *extra = table->getExtraDataModel();
    extra->addColumn(ColumnLots, KV::CExtraColumnInfo());
    table->setColumnStatEnable(ColumnLots, true);
    RecordList records;
    for (int row = 0; row < rows; ++row) {
        records.append(fullTicket("k" + std::to_string(row), row % 7));
        extra->addData(QStringLiteral("k%1").arg(row), ColumnLots, 1, nullptr);
    }
    table->updateDatas(records, true);
    table->onTimer();
    EXPECT_EQ(extra->getStatData(ColumnLots), rows);
    filter(*model, ColumnText, {QStringLiteral("第3")});
    const int shownRows = table->count();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        table->onTimer();
        return extra->getStatData(ColumnLots) == shownRows;
    }));
    extra->addData(QStringLiteral("k3"), ColumnLots, 11, nullptr);
    extra->addData(QStringLiteral("k4"), ColumnLots, 11, nullptr);
    EXPECT_EQ(extra->getStatData(ColumnLots), shownRows + 10);
    QThreadPool::globalInstance()->waitForDone();
}
