#include "log/clogblockqueue.h"

#include <QtCore/QStringList>
#include <atomic>
#include <boost/smart_ptr/make_shared.hpp>
#include <gtest/gtest.h>
#include <mutex>

#include "uicontrol/logcache.h"

namespace {

using KV::CLogBlockQueue;
using KV::LogBlock;

constexpr qint64 bound = 1 << 20;

/// Holds the worker up until it is told to go on, and writes down what it is given.
class HeldSink : public KV::CLogBlockSink
{
public:
    explicit HeldSink(int keptAtMost) : kept(keptAtMost) {}

    void takeBlock(const LogBlock &block) override
    {
        const std::lock_guard<std::mutex> wait(gate);
        numbers += block.skipped;
        for (const QString &line : block.text.split(QLatin1Char('\n'))) {
            ++numbers;
            if (!line.isEmpty())
                lines << QStringLiteral("%1:%2").arg(numbers).arg(line.left(8));
        }
        ++blocks;
    }
    int keptLines() const override { return kept; }

    /// The lines with text so far, as "number:text".
    QStringList taken()
    {
        const std::lock_guard<std::mutex> wait(gate);
        return lines;
    }

    std::mutex gate; ///< the worker waits while a test holds it
    std::atomic<qint64> numbers{0};
    std::atomic<int> blocks{0};

private:
    const int kept;
    QStringList lines;
};

LogBlock blockFor(const boost::shared_ptr<HeldSink> &sink, const QString &text, int level)
{
    LogBlock block;
    block.sink = sink;
    block.text = text;
    block.level = level;
    return block;
}

QString longLine(int number)
{
    return QStringLiteral("line%1 ").arg(number, 4, 10, QLatin1Char('0')).leftJustified(1000, QLatin1Char('.'));
}

} // namespace

TEST(LogQueue, TheGuiThreadNeverWaitsAndDropsOnlyWhatNoListCouldKeep)
{
    const auto sink = boost::make_shared<HeldSink>(100);
    CLogBlockQueue queue(bound);
    {
        const std::lock_guard<std::mutex> held(sink->gate);
        queue.add(blockFor(sink, longLine(0), 1));
        EXPECT_TRUE(waitFor([&] { return queue.queuedBytes() == 0; })) << "the worker has the first block in hand";
        queue.add(blockFor(sink, longLine(1), 2)); // the only line of its level
        for (int i = 2; i < 4000; i += 2)
            queue.add(blockFor(sink, longLine(i) + QStringLiteral("\n\n") + longLine(i + 1), 1));
        EXPECT_LT(queue.queuedBytes(), bound + bound / 2);
    }
    queue.add(blockFor(sink, QStringLiteral("end"), 3));
    ASSERT_TRUE(waitFor([&] { return sink->taken().value(0) != QString() && sink->taken().last().endsWith("end"); }));
    const QStringList taken = sink->taken();

    EXPECT_EQ(sink->numbers, 1 + 1 + 1999 * 3 + 1) << "dropped lines keep their numbers";
    EXPECT_EQ(taken.value(0), QStringLiteral("1:line0000"));
    EXPECT_TRUE(taken.contains(QStringLiteral("2:line0001"))) << "its level has no later line";
    const QStringList newest = taken.mid(taken.size() - 101);
    QStringList expected;
    for (int i = 3900; i < 4000; ++i)
        expected << QStringLiteral("%1:line%2").arg(3 + (i - 2) / 2 * 3 + i % 2 * 2).arg(i);
    expected << QStringLiteral("6000:end");
    EXPECT_EQ(newest.join(QLatin1Char('\n')).toStdString(), expected.join(QLatin1Char('\n')).toStdString());
    EXPECT_LT(taken.size(), 1600);
}

TEST(LogQueue, ABlockLargerThanTheBoundLosesItsOldestLines)
{
    const auto sink = boost::make_shared<HeldSink>(10);
    CLogBlockQueue queue(bound);
    QStringList lines;
    for (int i = 0; i < 2000; ++i)
        lines << longLine(i);
    queue.add(blockFor(sink, lines.join(QLatin1Char('\n')), 0));
    ASSERT_TRUE(waitFor([&] { return sink->blocks == 1; }));
    EXPECT_EQ(sink->numbers, 2000);
    EXPECT_EQ(sink->taken().size(), 10);
    EXPECT_EQ(sink->taken().value(0), QStringLiteral("1991:line1990"));
}

TEST(LogQueue, OtherThreadsWaitForRoomAndLoseNothing)
{
    const auto sink = boost::make_shared<HeldSink>(1);
    CLogBlockQueue queue(bound);
    std::atomic<int> added{0};
    std::thread writer;
    {
        const std::lock_guard<std::mutex> held(sink->gate);
        writer = std::thread([&] {
            for (int i = 0; i < 2000; ++i, ++added)
                queue.add(blockFor(sink, longLine(i), 0));
        });
        EXPECT_TRUE(waitFor([&] { return queue.queuedBytes() >= bound; }));
        EXPECT_LT(added, 600);
        EXPECT_LT(queue.queuedBytes(), bound + 4096);
    }
    writer.join();
    ASSERT_TRUE(waitFor([&] { return sink->blocks == 2000; }));
    EXPECT_EQ(sink->taken().size(), 2000);
}

TEST(LogQueue, AStoppedQueueForgetsItsBlocksAndStartsAgain)
{
    const auto sink = boost::make_shared<HeldSink>(1000);
    CLogBlockQueue queue(bound);
    std::thread stopper;
    {
        const std::lock_guard<std::mutex> held(sink->gate);
        for (int i = 0; i < 50; ++i)
            queue.add(blockFor(sink, longLine(i), 0));
        stopper = std::thread([&] { queue.stop(); });
        EXPECT_TRUE(waitFor([&] { return queue.queuedBytes() == 0; }));
    }
    stopper.join();
    EXPECT_LE(sink->blocks, 1);
    const int before = sink->blocks;
    queue.add(blockFor(sink, QStringLiteral("again"), 0));
    ASSERT_TRUE(waitFor([&] { return sink->blocks == before + 1; }));
}
