#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <algorithm>
#include <boost/weak_ptr.hpp>
#include <cmath>
#include <gtest/gtest.h>

#include "modelrows.h"
#include "table/hpfmodelaccess.h"

using namespace modeltest;
using ZB::HpfModelAccess;
using SortColumns = QVector<QPair<int, int>>;

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(HpfModel, AnEmptyModelAnswersEverything)
{
    ValueModel model;
    EXPECT_EQ(model.size(), 0);
    EXPECT_EQ(shownKeys(model), "");
    EXPECT_FALSE(model.getData(0));
    EXPECT_FALSE(model.getDataByKey("a"));
    EXPECT_EQ(model.indexOfKey("a"), -1);
    model.removeDataByKey("a");
    model.clear();
    model.clearFilter();
    model.updateDatas({});
    EXPECT_EQ(model.getStatColumnDouble(Price), noPrice);
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), noQuantity);
    model.setColumnStatEnable(Price, true);
    EXPECT_EQ(model.getStatColumnDouble(Price), 0.0);
    model.setColumnStatEnable(Price, false);
    EXPECT_EQ(model.getStatColumnDouble(Price), noPrice);
    EXPECT_TRUE(HpfModelAccess::step(model, 0));
    EXPECT_FALSE(HpfModelAccess::cancel(model));
    EXPECT_EQ(HpfModelAccess::progress(model), 1000);
}

TEST(HpfModel, RefusesRowsWithoutAKeyAndLosesNoneBesides)
{
    ValueModel model;
    EXPECT_FALSE(model.addData({}));
    EXPECT_FALSE(model.updateData(makeRow("", 1)));
    model.updateDatas({makeRow("a", 1), {}, makeRow("", 2), makeRow("b", 3), makeRow("a", 4)});
    EXPECT_EQ(shownKeys(model), "a b");
    EXPECT_EQ(model.getData(0)->getLongLong(Quantity), 4);
    const std::string longKey(100000, 'k');
    EXPECT_TRUE(model.addData(makeRow(longKey, 1)));
    EXPECT_TRUE(model.addData(makeRow(longKey + "2", 1)));
    EXPECT_EQ(model.indexOfKey(longKey + "2"), 3);
    model.removeDataByKey(longKey);
    EXPECT_EQ(model.indexOfKey(longKey + "2"), 2);
    const std::string withNull("a\0b", 3);
    EXPECT_TRUE(model.addData(makeRow(withNull, 1)));
    EXPECT_TRUE(model.containData(withNull));
    EXPECT_EQ(model.allSize(), 4);
}

TEST(HpfModel, ALongListEndsWhereItIsToldTo)
{
    constexpr int count = 3000;
    QVector<ZB::IBaseHpfTableModel::Row> rows;
    for (int number = 0; number < count; ++number)
        rows.append(number % 10 == 0 ? nullptr : makeRow(std::to_string(number), number));
    ValueModel whole;
    QVector<int> asked;
    whole.updateDatas(rows, [&asked](int through) {
        asked.append(through);
        return true;
    });
    EXPECT_EQ(whole.allSize(), count * 9 / 10);
    EXPECT_TRUE(std::is_sorted(asked.cbegin(), asked.cend()));
    ASSERT_GT(asked.size(), 5) << "asked every few hundred rows";

    ValueModel ended;
    ended.setUpdated(false);
    const int end = asked[3];
    ended.updateDatas(rows, [end](int through) { return through < end; });
    EXPECT_EQ(ended.allSize(), end * 9 / 10);
    EXPECT_TRUE(ended.containData(std::to_string(end - 1)) || end % 10 == 1);
    EXPECT_FALSE(ended.containData(std::to_string(end + 1)));
    EXPECT_TRUE(ended.updated());
}

TEST(HpfModel, AWishThatComesTrueWhileARowIsReadCountsForThatRow)
{
    ValueModel model;
    fillFour(model);
    model.setSortColumns({{Price, 0}});
    model.size();
    const RowPtr row = makeRow("e", 2, 1, 0, "yy");
    row->onGetDouble = [&] {
        row->onGetDouble = nullptr;
        model.setColumnStatEnable(Quantity, true);
        model.setSortColumns({{Name, 1}, {Status, 0}});
        model.size();
    };
    model.addData(row);
    EXPECT_EQ(shownKeys(model), "c e b a d");
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 8);
}

TEST(HpfModel, RestsOnTheValuesThatARowHadWhenItWasHandedIn)
{
    ValueModel model;
    model.setColumnStatEnable(Quantity, true);
    model.setSortColumns({{Quantity, 0}});
    model.filter(Status, 0, {"S1"});
    const RowPtr row = makeRow("a", 10, 1);
    model.addData(row);
    model.addData(makeRow("b", 20, 1));
    row->setRecord({30, 2, 0, {}, false});
    EXPECT_EQ(shownKeys(model), "a b");
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 30);
    // Also when it is arranged anew, as far as the values are kept.
    model.setSortColumns({{Quantity, 1}});
    model.setColumnStatEnable(Price, true);
    EXPECT_EQ(shownKeys(model), "b a");
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 30);
    model.updateData(row);
    EXPECT_EQ(shownKeys(model), "b");
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 20);
    model.clearFilter();
    EXPECT_EQ(shownKeys(model), "a b");
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 50);
    model.removeDataByKey("a");
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 20);
}

TEST(HpfModel, WholeSumsOfDoublesStayWithinTheRangeOfWholeNumbers)
{
    ValueModel model;
    model.setColumnStatEnable(Price, true);
    const auto sumWith = [&model](double price) {
        model.updateData(makeRow("a", 0, 0, price));
        return model.getStatColumnLongLong(Price);
    };
    EXPECT_EQ(sumWith(1.5), 2);
    EXPECT_EQ(sumWith(std::nan("")), 0);
    EXPECT_EQ(sumWith(infinity), noQuantity - 1);
    EXPECT_EQ(sumWith(-infinity), std::numeric_limits<qint64>::min());
}

TEST(HpfModel, ResetSumsAreBuiltUpFromTheRowsAsTheyAreNow)
{
    ValueModel model;
    model.setColumnStatEnable(Quantity, true);
    fillFour(model);
    const RowPtr row = makeRow("e", 100);
    model.addData(row);
    model.filter(Name, 0, {"xx", "zzz", ""});
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 106);
    row->setRecord({200, 0, 0, {}, false});
    model._resetStatMap();
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 0);
    const auto rows = model.getAllDatas();
    for (const auto &each : rows)
        model._addStatColumnData(each);
    model._addStatColumnData(makeRow("unknown", 1000));
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 206);
}

TEST(HpfModel, AColumnOfAnotherTypeIsReadAnew)
{
    ValueModel model;
    model.setSortColumns({{Quantity, 0}});
    model.updateDatas({makeRow("a", 9), makeRow("b", 10)});
    EXPECT_EQ(shownKeys(model), "a b");
    model.textColumns = true;
    model.updateDatas({makeRow("c", 8)});
    EXPECT_EQ(shownKeys(model), "b c a");
    model.textColumns = false;
    model.updateData(makeRow("c", 8));
    EXPECT_EQ(shownKeys(model), "c a b");
    model.textColumns = true;
    model.columnsChanged();
    EXPECT_EQ(shownKeys(model), "b c a");
    model.textColumns = false;
    model.columnsChanged();
    model.setSortColumns({{Name, 1}});
    EXPECT_TRUE(HpfModelAccess::cancel(model));
    EXPECT_EQ(shownKeys(model), "c a b") << "the former sort, by the new type";
    model.clear();
    model.textColumns = false;
    model.addData(makeRow("a", 9));
    model.addData(makeRow("b", 10));
    EXPECT_EQ(shownKeys(model), "a b");
}

TEST(HpfModel, AColumnThatBecomesANumberIsSummedFromThenOn)
{
    ValueModel model;
    model.textColumns = true;
    model.setColumnStatEnable(Quantity, true);
    model.updateDatas({makeRow("a", 9)});
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 0);
    model.textColumns = false;
    model.updateDatas({makeRow("b", 10)});
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 19);
    model.textColumns = true;
    model.updateData(makeRow("b", 11));
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 0);
    model.textColumns = false;
    model.columnsChanged();
    EXPECT_EQ(model.getStatColumnLongLong(Quantity), 20);
}

TEST(HpfModel, IdsFollowARowAndVersionsItsRecord)
{
    ValueModel model;
    fillFour(model);
    std::vector<ZB::HpfShownRow> before;
    HpfModelAccess::fetch(model, 0, 10, before);
    model.setSortColumns({{Quantity, 0}});
    model.updateData(makeRow("a", 0));
    EXPECT_EQ(shownKeys(model), "a c d b");
    std::vector<ZB::HpfShownRow> after;
    HpfModelAccess::fetch(model, 0, 10, after);
    EXPECT_EQ(after[0].id, before[0].id);
    EXPECT_NE(after[0].version, before[0].version);
    EXPECT_EQ(after[1].id, before[2].id);
    EXPECT_EQ(after[1].version, before[2].version);
    EXPECT_EQ(HpfModelAccess::indexesOf(model, {before[3].id, 0, before[1].id}), (std::vector<int>{2, -1, 3}));
    model.removeDataByKey("c");
    EXPECT_FALSE(HpfModelAccess::rowOf(model, before[2].id));
    model.addData(makeRow("x", 5));
    EXPECT_FALSE(HpfModelAccess::rowOf(model, before[2].id)) << "a slot that is used again is another row";
    EXPECT_EQ(HpfModelAccess::fetch(model, 2, 1, after), 1);
    EXPECT_EQ(after[0].id, HpfModelAccess::idAt(model, 2));
    EXPECT_EQ(HpfModelAccess::fetch(model, 4, 1, after), 0);
    EXPECT_EQ(HpfModelAccess::fetch(model, -3, 2, after), 0);
    model.clear();
    EXPECT_FALSE(HpfModelAccess::rowOf(model, before[0].id));
    fillFour(model);
    EXPECT_NE(HpfModelAccess::idOfKey(model, "a"), before[0].id);
    EXPECT_EQ(HpfModelAccess::indexOf(model, before[0].id), -1);
}

TEST(HpfModel, StatusTellsWhatHasToBeDrawnAgain)
{
    ValueModel model;
    fillFour(model);
    model.setSortColumns({{Quantity, 0}});
    model.size();
    const auto before = HpfModelAccess::status(model);
    EXPECT_EQ(before.arrivals, 4u);
    EXPECT_FALSE(before.pending);
    model.updateData(makeRow("a", 3, 9, 9));
    const auto changed = HpfModelAccess::status(model);
    EXPECT_EQ(changed.orderEpoch, before.orderEpoch);
    EXPECT_GT(changed.dataEpoch, before.dataEpoch);
    model.updateData(makeRow("a", 0));
    const auto moved = HpfModelAccess::status(model);
    EXPECT_GT(moved.orderEpoch, changed.orderEpoch);
    model.setSortColumns({{Quantity, 1}});
    EXPECT_TRUE(HpfModelAccess::status(model).pending);
    while (!HpfModelAccess::step(model, 100)) {
    }
    const auto sorted = HpfModelAccess::status(model);
    EXPECT_GT(sorted.orderEpoch, moved.orderEpoch);
    EXPECT_FALSE(sorted.pending);
    EXPECT_EQ(sorted.shown, 4);
    model.clear();
    EXPECT_GT(HpfModelAccess::status(model).orderEpoch, sorted.orderEpoch);
    EXPECT_EQ(HpfModelAccess::status(model).arrivals, 4u);
}

TEST(HpfModel, ACustomOrderTakesEffectWhenItIsChosen)
{
    ValueModel model;
    fillFour(model);
    model.compareRecords = [](const Record &a, const Record &b) { return a.name.size() - b.name.size(); };
    EXPECT_EQ(shownKeys(model), "a b c d");
    model.setSortColumns({{ZB::IBaseHpfTableModel::SortCustom, 0}});
    EXPECT_EQ(shownKeys(model), "d b a c");
    model.setSortColumns({{ZB::IBaseHpfTableModel::SortCustom, 1}, {Quantity, 0}});
    model.addData(makeRow("e", -1, 0, 0, "vv"));
    EXPECT_TRUE(HpfModelAccess::status(model).pending);
    EXPECT_EQ(HpfModelAccess::rowCount(model), 5) << "new rows are shown before they are placed";
    EXPECT_EQ(shownKeys(model), "c e a b d");
    model.updateData(makeRow("d", 0, 0, 0, "wwww"));
    EXPECT_EQ(shownKeys(model), "d c e a b");
    model.removeDataByKey("c");
    EXPECT_EQ(shownKeys(model), "d e a b");
    EXPECT_FALSE(HpfModelAccess::status(model).pending);
    model.filter(Name, 0, {"xx", "y"});
    model.addData(makeRow("f", 0, 0, 0, "xx"));
    EXPECT_EQ(shownKeys(model), "f a b");
}

TEST(HpfModel, TheHostsCustomSortComparesTheSortColumns)
{
    ValueModel model;
    const RowPtr a = makeRow("a", 1, 5, noPrice, "n");
    const RowPtr b = makeRow("b", 2, 5, 1, "m");
    EXPECT_EQ(model.customSort(a, b), 0);
    model.setSortColumns({{Status, 0}, {Price, 1}});
    EXPECT_GT(model.customSort(a, b), 0) << "no value is last";
    model.setSortColumns({{Status, 0}, {Quantity, 1}});
    EXPECT_GT(model.customSort(a, b), 0);
    EXPECT_LT(model.customSort(b, a), 0);
    model.setSortColumns({{Name, 0}});
    EXPECT_GT(model.customSort(a, b), 0);
    EXPECT_EQ(model.customSort(a, {}), 0);
    EXPECT_EQ(model.customSort(a, a), 0);
}

TEST(HpfModel, TellsOfEveryRowAndCallsTheListenerOncePerMark)
{
    ValueModel model;
    QStringList told;
    model.onRow = [&told](const Record &record, bool added) {
        told.append((added ? "+" : "=") + QString::number(record.quantity));
    };
    int calls = 0;
    model.setChangeListener([&calls] { ++calls; });
    model.addData(makeRow("a", 1));
    model.updateDatas({makeRow("b", 2), makeRow("a", 3)});
    EXPECT_EQ(told.join(' '), "+1 +2 =3");
    EXPECT_EQ(calls, 1);
    EXPECT_TRUE(model.updated());
    model.setUpdated(false);
    model.removeDataByKey("nobody");
    EXPECT_FALSE(model.updated());
    EXPECT_EQ(calls, 1);
    model.removeDataByKey("a");
    EXPECT_EQ(calls, 2);
    model.setUpdated(false);
    model.setSortColumns({{Price, 0}});
    EXPECT_EQ(calls, 3);
    model.setUpdated(false);
    model.size();
    EXPECT_EQ(calls, 4) << "the order has become another one";
    model.setChangeListener({});
    model.setUpdated(false);
    model.clear();
    EXPECT_TRUE(model.updated());
    EXPECT_EQ(calls, 4);
}

TEST(HpfModel, EveryOwnersListenerIsCalledUntilThatOwnerTakesItAway)
{
    ValueModel model;
    QString called;
    const int first = 0;
    const int second = 0;
    model.setChangeListener([&called] { called += "1"; }, &first);
    model.setChangeListener([&called] { called += "x"; }, &second);
    model.setChangeListener([&called] { called += "2"; }, &second);
    model.setUpdated(true);
    std::sort(called.begin(), called.end());
    EXPECT_EQ(called, "12");
    model.setUpdated(false);
    model.setChangeListener({}, &first);
    model.setUpdated(true);
    EXPECT_EQ(called, "122");
}

TEST(HpfModel, HooksOfTheTableCallTheTimerUnlessOverridden)
{
    ValueModel model;
    ZB::IBaseHpfTableModel &base = model;
    base.onSecondTimer();
    base.onResourceChanged();
    EXPECT_EQ(model.timerCalls, 2);
    fillFour(model);
    EXPECT_TRUE(model.isFlashChange(0, Price));
    EXPECT_FALSE(model.isFlashChange(0, Name));
    EXPECT_FALSE(model.isFlashChange(4, Price));
}

TEST(HpfModel, ALargeModelThatOnlyItsRowsHoldIsDestroyedOnTheGuiThread)
{
    for (const int rows : {10, 20000}) {
        auto model = boost::make_shared<ValueModel>();
        boost::weak_ptr<ValueModel> watched = model;
        QThread *destroyedOn = nullptr;
        model->onDestruction = [&destroyedOn] { destroyedOn = QThread::currentThread(); };
        for (int i = 0; i < rows; ++i) {
            const RowPtr row = makeRow(std::to_string(i), i);
            row->keptAlive = model;
            model->addData(row);
        }
        model->clear();
        EXPECT_EQ(model->size(), 0);
        model.reset();
        while (!watched.expired())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(destroyedOn, QThread::currentThread()) << rows;
    }
}
