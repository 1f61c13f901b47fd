#include <chrono>
#include <gtest/gtest.h>
#include <thread>

#include "plainmodel.h"
#include "table/hpfmodelaccess.h"

using namespace modeltest;
using ZB::HpfModelAccess;

namespace {

constexpr int writerCount = 2;
constexpr int keysPerWriter = 400;

std::string keyOf(int writer, quint64 number)
{
    return std::to_string(writer) + '-' + std::to_string(number);
}

/// Changes rows of its own keys and keeps what they were changed to last.
class Writer
{
public:
    Writer(ValueModel &target, int writerNumber, quint64 seed)
        : model(target), number(writerNumber), random(seed + static_cast<quint64>(writerNumber))
    {
    }

    void run(int steps)
    {
        for (int step = 0; step < steps; ++step) {
            const std::string key = keyOf(number, random() % keysPerWriter);
            if (random() % 5 == 0) {
                model.removeDataByKey(key);
                last.erase(key);
                contradictions += model.containData(key) ? 1 : 0;
            } else if (random() % 10 == 0) {
                putMany();
            } else {
                const Record record = chosenRecord([this](int limit) { return choose(random, limit); });
                const auto row = boost::make_shared<ValueRow>(key, record);
                model.updateData(row);
                last[key] = record;
                contradictions += model.getDataByKey(QString::fromStdString(key)) == row ? 0 : 1;
            }
        }
    }

    std::map<std::string, Record> last;
    int contradictions = 0; ///< a change of this thread was not there when it looked

private:
    void putMany()
    {
        QVector<ZB::IBaseHpfTableModel::Row> rows;
        for (quint64 i = random() % 300; i > 0; --i) {
            const std::string key = keyOf(number, random() % keysPerWriter);
            last[key] = chosenRecord([this](int limit) { return choose(random, limit); });
            rows.append(boost::make_shared<ValueRow>(key, last[key]));
        }
        model.updateDatas(rows);
    }

    ValueModel &model;
    const int number;
    std::mt19937_64 random;
};

/// Sorts and filters, as a user does.
void wishAround(ValueModel &model, quint64 seed, int steps)
{
    std::mt19937_64 random(seed);
    static constexpr int columns[] = {Quantity, Status, Price, Name, ZB::IBaseHpfTableModel::SortCustom};
    for (int step = 0; step < steps; ++step) {
        const int column = columns[random() % std::size(columns)];
        switch (random() % 6) {
        case 0:
        case 1:
            model.setSortColumns({{column, static_cast<int>(random() % 2)}, {Price, 1}});
            break;
        case 2:
            model.filter(Status, 0, {"S1", "S3"});
            break;
        case 3:
            model.narrow(Name, 1, {"6005"});
            break;
        case 4:
            model.clearFilter();
            break;
        default:
            model.setColumnStatEnable(Quantity, random() % 2 == 0);
        }
        HpfModelAccess::step(model, 1);
        if (random() % 4 == 0)
            HpfModelAccess::cancel(model);
    }
}

/// Looks at the model as the table and the rest of a program do.
int readAround(const ValueModel &model, const std::atomic<bool> &ended)
{
    int contradictions = 0;
    std::vector<ZB::HpfShownRow> page;
    while (!ended) {
        const int count = HpfModelAccess::fetch(model, 50, 60, page);
        for (int i = 0; i < count; ++i)
            contradictions += page[static_cast<std::size_t>(i)].row ? 0 : 1;
        HpfModelAccess::status(model);
        HpfModelAccess::progress(model);
        if (!page.empty())
            HpfModelAccess::indexOf(model, page.front().id);
        model.getStatColumnDouble(Price);
        contradictions += model.size() < 0 ? 1 : 0;
        QList<ZB::IBaseHpfTableModel::Row> rows;
        model.getDatas(rows);
        ZB::HpfDistinctTexts(model, Name).step(1);
    }
    return contradictions;
}

} // namespace

TEST(HpfModelThreads, WritersReadersAndUsersAtOnceEndInTheStateThatWasWrittenLast)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    ValueModel model;
    model.compareRecords = PlainModel::compareCustom;
    model.setColumnStatEnable(Price, true);
    std::atomic<int> calls{0};
    model.setChangeListener([&calls] { ++calls; });

    std::vector<Writer> writers;
    for (int i = 0; i < writerCount; ++i)
        writers.emplace_back(model, i, seed);
    std::atomic<bool> ended{false};
    std::vector<std::thread> writing;
    for (Writer &writer : writers)
        writing.emplace_back([&writer] { writer.run(2500); });
    int readerContradictions = 0;
    std::thread reading([&] { readerContradictions = readAround(model, ended); });
    std::thread wishing([&] { wishAround(model, seed, 150); });
    for (int i = 0; i < 200; ++i) {
        model.setUpdated(false);
        std::this_thread::yield();
    }
    for (std::thread &thread : writing)
        thread.join();
    wishing.join();
    ended = true;
    reading.join();
    EXPECT_EQ(readerContradictions, 0);
    EXPECT_GT(calls, 0);

    PlainModel plain;
    for (const Writer &writer : writers) {
        EXPECT_EQ(writer.contradictions, 0);
        for (const auto &[key, record] : writer.last)
            plain.put(key, record);
    }
    EXPECT_EQ(model.allSize(), static_cast<int>(plain.rows.size()));
    model.clearFilter();
    model.setSortColumns({{Quantity, 0}});
    EXPECT_EQ(model.size(), static_cast<int>(plain.rows.size()));
    plain.sums = {Price};
    EXPECT_TRUE(sameNumber(model.getStatColumnDouble(Price), plain.realSumOf(Price)));
    // Ties keep the order of arrival, which only the model knows: compare what is certain.
    QList<ZB::IBaseHpfTableModel::Row> rows;
    model.getDatas(rows);
    qint64 before = std::numeric_limits<qint64>::min();
    for (const auto &row : rows) {
        const Record &expected = writers[static_cast<std::size_t>(row->key()[0] - '0')].last.at(row->key());
        const qint64 quantity = row->getLongLong(Quantity);
        EXPECT_EQ(quantity, expected.quantity) << row->key();
        EXPECT_LE(before, quantity);
        before = quantity;
    }
}

TEST(HpfModelThreads, ClearingAmongWritersLeavesWhatComesAfterwards)
{
    const quint64 seed = std::random_device()();
    SCOPED_TRACE(seed);
    ValueModel model;
    model.setSortColumns({{Price, 0}});
    Writer writer(model, 0, seed);
    std::atomic<bool> ended{false};
    std::thread clearing([&] {
        std::mt19937_64 random(seed);
        while (!ended) {
            model.clear();
            model.setSortColumns({{random() % 2 == 0 ? Price : Name, 0}});
            HpfModelAccess::step(model, 0);
        }
    });
    writer.run(3000);
    ended = true;
    clearing.join();
    model.clear();
    EXPECT_EQ(model.size(), 0);
    model.addData(makeRow("b", 1, 1, 2, "b"));
    model.addData(makeRow("a", 1, 1, 1, "a"));
    EXPECT_EQ(shownKeys(model), "a b");
}

TEST(HpfModelThreads, TakingAListenerAwayWaitsForItsCall)
{
    using Clock = std::chrono::steady_clock;
    ValueModel model;
    std::atomic<bool> inCall{false};
    std::atomic<bool> takenAway{false};
    bool takenAwayDuringCall = false;
    model.setChangeListener([&] {
        inCall = true;
        const auto until = Clock::now() + std::chrono::milliseconds(50);
        while (Clock::now() < until && !takenAway)
            std::this_thread::yield();
        takenAwayDuringCall = takenAway;
    });
    std::thread changing([&] { model.setUpdated(true); });
    while (!inCall)
        std::this_thread::yield();
    model.setChangeListener({});
    takenAway = true;
    changing.join();
    EXPECT_FALSE(takenAwayDuringCall);
}
