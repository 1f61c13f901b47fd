#include <atomic>
#include <chrono>
#include <condition_variable>
#include <gtest/gtest.h>
#include <thread>

#include "plainmodel.h"
#include "table/hpfmodelaccess.h"

using namespace modeltest;
using ZB::HpfModelAccess;

namespace {

/// Stops whoever passes until it is opened.
class Gate
{
public:
    void pass()
    {
        std::unique_lock<std::mutex> lock(mutex);
        reached = true;
        changed.notify_all();
        changed.wait(lock, [this] { return opened; });
    }
    void waitUntilReached()
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [this] { return reached; });
    }
    void open()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        opened = true;
        changed.notify_all();
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool reached = false;
    bool opened = false;
};

std::string keyOf(int number)
{
    return "k" + std::to_string(number);
}

/// A table that is being arranged anew in the background: the thread that does it stands in front of a row in the
/// middle, whose price it is to read.
class HalfArranged : public ::testing::Test
{
protected:
    static constexpr int rowCount = 3000;

    HalfArranged() : model(std::make_unique<ValueModel>())
    {
        for (int i = 0; i < rowCount; ++i)
            put(i, i * 37 % 101);
        const RowPtr stop = makeRow(keyOf(rowCount / 2), 0, 0, 5);
        model->updateData(stop);
        plain.put(keyOf(rowCount / 2), stop->record());
        stop->onGetDouble = [this] { gate.pass(); };
        former = shownKeys(*model);
    }

    /// Begins with what is wished for.
    void start()
    {
        EXPECT_FALSE(HpfModelAccess::step(*model, 0));
        gate.waitUntilReached();
    }

    ~HalfArranged() override { gate.open(); }

    void put(int number, int price) { put(number, price, number); }
    void put(int number, int price, int quantity)
    {
        const RowPtr row = makeRow(keyOf(number), quantity, number % 3, price);
        model->updateData(row);
        plain.put(keyOf(number), row->record());
    }

    void remove(int number)
    {
        model->removeDataByKey(keyOf(number));
        plain.remove(keyOf(number));
    }

    void finish()
    {
        gate.open();
        while (!HpfModelAccess::step(*model, 1000)) {
        }
    }

    Gate gate;
    std::unique_ptr<ValueModel> model;
    PlainModel plain;
    QString former;
};

class HalfSorted : public HalfArranged
{
protected:
    HalfSorted()
    {
        model->setSortColumns({{Price, 0}});
        start();
    }
};

} // namespace

TEST_F(HalfSorted, PaintingSeesTheFormerOrderMeanwhile)
{
    EXPECT_TRUE(HpfModelAccess::status(*model).pending);
    EXPECT_LT(HpfModelAccess::progress(*model), 1000);
    std::vector<ZB::HpfShownRow> rows;
    HpfModelAccess::fetch(*model, 10, 2, rows);
    EXPECT_EQ(rows[0].row->key() + rows[1].row->key(), "k10k11");
    EXPECT_EQ(model->sortColumns(), (QVector<QPair<int, int>>{{Price, 0}}));
    finish();
    plain.sort = {{Price, 0}};
    EXPECT_EQ(shownKeys(*model), plain.shownKeys());
}

TEST_F(HalfSorted, ChangesMeanwhileAreInTheFormerOrderAndInTheNewOne)
{
    // In front of the row at which the sort stands and behind it; what has been read and what has not.
    for (const int number : {0, 7, 1499, 1501, 2999}) {
        remove(number);
        put(number + 10000, number % 11);
    }
    put(8, -1);
    put(8, 1000);
    put(2500, -2);
    remove(20);
    put(20, 3); // comes back as another row
    put(2600, 4);
    remove(2600);
    put(20000, 6);
    remove(20000);
    EXPECT_EQ(HpfModelAccess::rowCount(*model), rowCount - 1);
    EXPECT_TRUE(HpfModelAccess::status(*model).pending);
    finish();
    plain.sort = {{Price, 0}};
    EXPECT_EQ(shownKeys(*model), plain.shownKeys());
}

TEST_F(HalfSorted, CancellingRestoresTheFormerOrderWithWhatHasChanged)
{
    model->filter(Status, 0, {"S1"});
    put(5, 1);
    put(10000, 1);
    plain.sort.clear();
    bool cancelled = false;
    std::thread canceller([&] { cancelled = HpfModelAccess::cancel(*model); });
    while (!model->sortColumns().isEmpty())
        std::this_thread::yield();
    gate.open();
    canceller.join();
    EXPECT_TRUE(cancelled);
    EXPECT_FALSE(HpfModelAccess::status(*model).pending);
    EXPECT_TRUE(model->columnFilters().isEmpty());
    EXPECT_EQ(shownKeys(*model), plain.shownKeys());
    EXPECT_EQ(shownKeys(*model), former + " k10000");
    EXPECT_FALSE(HpfModelAccess::cancel(*model));
}

TEST_F(HalfSorted, CancellingKeepsAStatisticThatWasAskedForMeanwhile)
{
    model->setColumnStatEnable(Quantity, true);
    std::thread canceller([&] { HpfModelAccess::cancel(*model); });
    while (!model->sortColumns().isEmpty())
        std::this_thread::yield();
    gate.open();
    canceller.join();
    EXPECT_EQ(model->getStatColumnLongLong(Quantity), rowCount * (rowCount - 1) / 2 - rowCount / 2);
    EXPECT_EQ(shownKeys(*model), former);
}

TEST_F(HalfSorted, ALaterWishOverrulesTheOneBeingCarriedOut)
{
    model->setSortColumns({{Quantity, 1}});
    model->filter(Status, 0, {"S2"});
    finish();
    plain.sort = {{Quantity, 1}};
    plain.filters[Status].append({0, {"S2"}});
    EXPECT_EQ(shownKeys(*model), plain.shownKeys());
}

TEST_F(HalfSorted, AReaderWaitsForTheNewOrder)
{
    QString seen;
    std::thread reader([&] { seen = shownKeys(*model); });
    gate.open();
    reader.join();
    plain.sort = {{Price, 0}};
    EXPECT_EQ(seen, plain.shownKeys());
}

TEST_F(HalfSorted, ClearingEndsTheSortAndTheNextRowsAreSorted)
{
    std::thread clearer([&] { model->clear(); });
    gate.open();
    clearer.join();
    EXPECT_EQ(model->allSize(), 0);
    EXPECT_TRUE(HpfModelAccess::step(*model, 0));
    put(1, 9);
    put(2, 8);
    EXPECT_EQ(shownKeys(*model), "k2 k1");
}

TEST_F(HalfSorted, DestroyingTheModelEndsTheSort)
{
    std::thread opener([&] { gate.open(); });
    model.reset();
    opener.join();
}

TEST_F(HalfArranged, ChangesWhileAFilterIsAppliedUnderASortAreInTheirPlaces)
{
    plain.sort = {{Quantity, 1}};
    model->setSortColumns(plain.sort);
    model->size();
    plain.filters[Price].append({1, {"1"}});
    model->filter(Price, 1, {"1"});
    start();
    for (const int number : {0, 8, 1400, 1600, 2999}) {
        put(number, 1, number + 700);
        put(number + 1, 2, 3000 - number);
        put(number + 2, 1);
    }
    put(2500, 1, 5); // not read yet, and far from where it stood
    remove(17);
    put(17, 1, 1234);
    finish();
    EXPECT_EQ(shownKeys(*model), plain.shownKeys());
    EXPECT_EQ(allKeys(*model), plain.allKeys());
}

TEST_F(HalfArranged, ARowThatTakesTheSlotOfAnotherOneIsBehindItsEqualsInACustomOrder)
{
    bool first = true;
    model->compareRecords = [&](const Record &a, const Record &b) {
        if (std::exchange(first, false))
            gate.pass();
        return static_cast<int>(a.quantity % 2 - b.quantity % 2);
    };
    model->setSortColumns({{ZB::IBaseHpfTableModel::SortCustom, 0}});
    start();
    for (const int number : {4, 5, 2000}) {
        remove(number);
        put(number + 10000, 1);
    }
    put(7, 1, 8);
    finish();
    std::stable_sort(plain.rows.begin(), plain.rows.end(), [](const PlainModel::Row &a, const PlainModel::Row &b) {
        return a.record.quantity % 2 < b.record.quantity % 2;
    });
    EXPECT_EQ(shownKeys(*model), plain.shownKeys());
}

TEST(HpfModelJob, AStreamOfRowsDoesNotPutOffWhatAColumnOfAnotherTypeAsksFor)
{
    ValueModel model;
    QVector<ZB::IBaseHpfTableModel::Row> rows;
    for (int i = 0; i < 5000; ++i)
        rows.append(makeRow(keyOf(i), i));
    model.setSortColumns({{Quantity, 1}});
    model.updateDatas(rows);
    model.textColumns = true;
    std::atomic<bool> settled{false};
    bool waited = false;
    std::thread feed([&] {
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
        while (!settled && !waited) {
            model.updateDatas({makeRow(keyOf(0), 1)});
            waited = std::chrono::steady_clock::now() > end;
        }
    });
    while (!HpfModelAccess::status(model).pending)
        std::this_thread::yield();
    model.size();
    settled = true;
    feed.join();
    EXPECT_FALSE(waited) << "the order was there when the stream had ended, and not before";
    EXPECT_EQ(model.indexOfKey(keyOf(999)), 0) << "as texts they begin with the nines";
}

TEST(HpfModelJob, ARowMayAskItsModelWhileItIsRead)
{
    ValueModel model;
    std::atomic<int> answers{0};
    for (int i = 0; i < 25000; ++i) {
        const RowPtr row = makeRow(keyOf(i), i, 0, 100 - i % 100);
        row->onGetDouble = [&] { answers += model.size() == 25000 ? 1 : 0; };
        model.addData(row);
    }
    model.setSortColumns({{Price, 0}});
    EXPECT_EQ(model.indexOfKey(keyOf(0)), 24750);
    EXPECT_EQ(answers, 25000);
}
