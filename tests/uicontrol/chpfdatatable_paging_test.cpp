#include <QtTest/QTest>
#include <QtWidgets/QLayout>
#include <gtest/gtest.h>

#include "model/chpfdatamodel.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "popups/pagingbar.h"
#include "tablewindow.h"

using namespace testrecords;

namespace {

constexpr int sortEvent = 33;
constexpr int pageEvent = 277;

/// Counts the steps of its timer.
class TimedModel : public KV::CHpfDataModel
{
public:
    using KV::CHpfDataModel::CHpfDataModel;
    void onTimer() override { ++steps; }

    int steps = 0;
};

class HpfDataTablePaging : public TableWindow
{
protected:
    HpfDataTablePaging() : TableWindow(true)
    {
        pages = boost::make_shared<KV::CHpfPageDataModel>(MetaTicket, kdservice::TraderStock, true);
        pages->setFieldColumnIDMap(model->fieldColumnMap());
        pages->setColumnFieldDesMap(model->columnFieldDesMap());
        pages->setColumnIDPropertyMap(model->columnPropertyMap());
        table->setDataModel(model.pointer().get());
        table->setPageModel(pages);
    }

    void add(int first, int count)
    {
        for (int number = first; number < first + count; ++number)
            pages->addData(fullTicket("k" + std::to_string(number), number));
    }
    bool send(int event, int first, int second, const char *text = "")
    {
        return table->handleEvent(event, first, second, QLatin1String(text), nullptr);
    }

    const Guarded<TimedModel> model;
    boost::shared_ptr<KV::CHpfPageDataModel> pages;
};

} // namespace

TEST_F(HpfDataTablePaging, APageModelThatIsSetShowsItsPageInTheBar)
{
    const auto other = boost::make_shared<KV::CHpfPageDataModel>(MetaTicket, kdservice::TraderStock, true);
    for (int number = 0; number < 95; ++number)
        other->addData(fullTicket("o" + std::to_string(number), number));
    other->setPageCount(20);
    other->setStartIndex(40);
    table->setPageModel(other);
    const auto *bar = table->findChild<ZB::PagingBar *>();
    EXPECT_EQ(table->totalCount(), 95);
    EXPECT_EQ(bar->page(), 2);
    EXPECT_EQ(bar->pageCount(), 5);
    EXPECT_EQ(bar->rowsPerPage(), 20);
    EXPECT_EQ(other->startIndex(), 40) << "it is told, not asked for";
}

TEST_F(HpfDataTablePaging, TheTimerBringsTheTotal)
{
    add(0, 5);
    const int before = model->steps;
    EXPECT_EQ(table->tableFlags(), 4 | 1 << 30);
    EXPECT_EQ(table->pagingQueryType(), 3);
    EXPECT_EQ(table->totalCount(), 0);
    table->onTimer();
    EXPECT_EQ(model->steps, before + 1);
    EXPECT_EQ(table->totalCount(), 5);
    add(5, 2);
    EXPECT_TRUE(pages->totalCountChange()); // somebody else has taken the mark
    table->onTimer();
    EXPECT_EQ(table->totalCount(), 7);
}

TEST_F(HpfDataTablePaging, APageRequestMovesThePage)
{
    add(0, 5);
    const int before = model->steps;
    EXPECT_TRUE(send(pageEvent, 0, 2, "3"));
    EXPECT_EQ(pages->startIndex(), 2);
    EXPECT_EQ(pages->pageCount(), 3);
    EXPECT_EQ(model->steps, before + 1);
    EXPECT_EQ(table->totalCount(), 5);
    EXPECT_TRUE(send(pageEvent, 0, 0, "many"));
    EXPECT_EQ(pages->pageCount(), 0);
    table->setPageModel(nullptr);
    EXPECT_FALSE(send(pageEvent, 0, 4, "7"));
    EXPECT_EQ(pages->startIndex(), 0);
}

TEST_F(HpfDataTablePaging, AHeaderClickSortsThePages)
{
    add(0, 3);
    const auto order = [this] {
        return std::to_string(pages->sortColumn()) + ' ' + std::to_string(pages->sortOrder());
    };
    const int before = model->steps;
    send(sortEvent, 0, ColumnLots);
    EXPECT_EQ(order(), std::to_string(ColumnLots) + " 1");
    EXPECT_EQ(pages->getDataKeyByIndex(0), "k2");
    send(sortEvent, 0, ColumnLots);
    EXPECT_EQ(order(), std::to_string(ColumnLots) + " 0");
    send(sortEvent, 0, ColumnVolume);
    EXPECT_EQ(order(), std::to_string(ColumnVolume) + " 1");
    EXPECT_EQ(model->steps, before + 3);
}

TEST_F(HpfDataTablePaging, OfSeveralSortColumnsTheFirstOrdersThePagesAndNoneEndsTheSort)
{
    add(0, 3);
    table->setSortColumns({{ColumnLots, 1}, {ColumnVolume, 0}});
    EXPECT_EQ(pages->sortColumn(), ColumnLots);
    EXPECT_EQ(pages->getDataKeyByIndex(0), "k2");
    table->setSortColumns({});
    EXPECT_EQ(pages->sortColumn(), -1);
    EXPECT_EQ(pages->getDataKeyByIndex(0), "k2") << "what is shown stays as it stands";
    add(3, 1);
    EXPECT_EQ(pages->getDataKeyByIndex(3), "k3") << "and new records follow";
}

TEST_F(HpfDataTablePaging, LongWorkGoesOnBetweenTheEventsOfTheWindow)
{
    add(0, 6000);
    pages->setWorkPerCall(0);
    window->show();
    const auto firstShown = [this] { return pages->getShownPage().value(0)->getIData()->getKey(); };
    const auto order = [this] { return pages->isPending() ? "under way" : "done"; };
    const int before = model->steps;
    send(sortEvent, 0, ColumnLots);
    send(pageEvent, 0, 10, "20");
    EXPECT_STREQ(order(), "under way");
    EXPECT_EQ(firstShown(), "k10") << "in the order that is still shown";
    EXPECT_LT(table->workProgress(), 1000);
    ASSERT_TRUE(QTest::qWaitFor([this] { return !pages->isPending(); }));
    EXPECT_EQ(firstShown(), "k5989");
    EXPECT_GE(model->steps, before + 3) << "the rows of the sorted page are fetched";
    EXPECT_EQ(table->workProgress(), 1000);

    table->setColumnFilterable(ColumnText, true);
    QSet<QString> values{QStringLiteral("第3")};
    table->onFilterTrigger(ColumnText, ZB::FilterExact, values);
    send(sortEvent, 0, ColumnVolume);
    EXPECT_EQ(table->columnFilters().size(), 1);
    EXPECT_EQ(table->totalCount(), 6000);
    table->cancelWork();
    EXPECT_STREQ(order(), "done");
    EXPECT_TRUE(table->columnFilters().isEmpty());
    EXPECT_EQ(pages->sortColumn(), ColumnLots);
    table->onFilterTrigger(ColumnText, ZB::FilterExact, values);
    EXPECT_EQ(pages->size(), 1) << "who reads the list does not see it half done";
    table->onTimer();
    EXPECT_EQ(table->totalCount(), 1);

    EXPECT_LT(table->gatherMenuItems(ColumnText, true, 0), 1000);
    int slices = 1;
    while (table->gatherMenuItems(ColumnText, false, 0) < 1000)
        ++slices;
    EXPECT_GT(slices, 10);
    add(6000, 1);
    EXPECT_EQ(table->getMenuItems(ColumnText).size(), 6000) << "those that were gathered";
    EXPECT_EQ(table->getMenuItems(ColumnText).size(), 6001);
    table->setPageModel(nullptr);
    pages->reverseSortByColumn(ColumnVolume);
    EXPECT_STREQ(order(), "done");
}

TEST_F(HpfDataTablePaging, AFilterBoxThatGathersStartsAgainWhenTheColumnsChange)
{
    add(0, 1000);
    const auto fields = pages->getColumnFieldDesMap();
    const auto gathered = [this] {
        while (table->gatherMenuItems(ColumnText, false, 0) < 1000) {
        }
        return table->getMenuItems(ColumnText).size();
    };
    pages->setColumnFieldDesMap({}); // the column is known by its field only
    EXPECT_LT(table->gatherMenuItems(ColumnText, true, 0), 1000);
    pages->setColumnFieldDesMap(fields);
    EXPECT_EQ(gathered(), 1000);
    EXPECT_LT(table->gatherMenuItems(ColumnText, true, 0), 1000);
    pages->setColumnFieldDesMap({});
    EXPECT_EQ(gathered(), 1) << "the empty text of records without the field";
}

TEST_F(HpfDataTablePaging, RemovalsFiltersAndSumsReachThePages)
{
    add(0, 4);
    table->updateData(fullTicket("k1", 1), true);
    table->removeDataByKey(QStringLiteral("k1"), false);
    EXPECT_EQ(model->allSize(), 0);
    table->removeDatasByKey({QStringLiteral("k0"), QStringLiteral("nobody")}, true);
    EXPECT_EQ(pages->originalSize(), 2);

    pages->filterColumn({{ColumnText, {ZB::FilterExact, {QStringLiteral("第3")}}}});
    EXPECT_EQ(pages->size(), 1);
    EXPECT_EQ(table->getMenuItems(ColumnText).join(' ').toStdString(), "第2 第3");
    table->clearFilter();
    EXPECT_EQ(pages->size(), 2);

    table->setColumnStatEnable(ColumnVolume, true);
    EXPECT_EQ(pages->getStatColumnLongLong(ColumnVolume), 500);
    table->setAppendSeq(false);
    EXPECT_FALSE(pages->defaultSeqAscending());
}

TEST_F(HpfDataTablePaging, SavedFiltersAreGivenToThePageModel)
{
    add(0, 12);
    const auto startAgain = [this] {
        delete table;
        table = new KV::CHpfDataTable(tableId, MetaTicket, window.get(), kdservice::TraderStock, true);
        window->layout()->addWidget(table);
        table->setDataModel(model.pointer().get());
        table->setColumnFilterable(ColumnText, true);
        pages = boost::make_shared<KV::CHpfPageDataModel>(MetaTicket, kdservice::TraderStock, true);
        pages->setFieldColumnIDMap(model->fieldColumnMap());
        pages->setColumnFieldDesMap(model->columnFieldDesMap());
        pages->setColumnIDPropertyMap(model->columnPropertyMap());
        add(0, 12);
    };
    const auto filtered = [this] {
        return table->columnFilters().contains(ColumnText) && grid()->column(ColumnText).filtered;
    };
    table->setColumnFilterable(ColumnText, true);
    QSet<QString> one{QStringLiteral("第1")};
    table->onFilterTrigger(ColumnText, ZB::FilterContains, one);
    EXPECT_EQ(pages->size(), 3);

    startAgain(); // with the last choice not yet saved
    table->setPageModel(pages);
    EXPECT_EQ(pages->size(), 12) << "the program may still set the columns up";
    settle();
    EXPECT_EQ(pages->size(), 3);
    EXPECT_TRUE(filtered());
    EXPECT_TRUE(model->columnFilters().isEmpty()) << "rows of the page pass as the page model says";

    startAgain();
    settle();
    const ZB::CBaseTableSettingParam waiting = table->getTableSetting();
    ASSERT_EQ(waiting.frame.filters->size(), 1) << "saved again before there are pages";
    table->setPageModel(pages);
    settle();
    EXPECT_EQ(pages->size(), 3);
    EXPECT_TRUE(filtered());

    startAgain();
    settle();
    pages->filterColumn({{ColumnText, {ZB::FilterExact, {QStringLiteral("第7")}}}});
    table->setPageModel(pages);
    EXPECT_EQ(pages->size(), 1) << "somebody filters it already";

    ZB::CBaseTableSettingParam setting = waiting;
    setting.frame.filters->first().conditions = {{ZB::FilterContains, {"1"}}, {ZB::FilterContains, {"0"}}};
    table->setTableSetting(setting);
    EXPECT_EQ(pages->size(), 1) << "a column has one condition here, and none for what is left out";
    setting.frame.filters->first().conditions = {{ZB::FilterExcept, {"1"}}};
    table->setTableSetting(setting);
    EXPECT_EQ(pages->size(), 1);
    setting.frame.filters->clear();
    table->setTableSetting(setting);
    EXPECT_EQ(pages->size(), 12);
}
