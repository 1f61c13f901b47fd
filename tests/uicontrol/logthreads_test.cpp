#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "uicontrol/logcache.h"

namespace {

QString numbered(int writer, int block, int lines)
{
    QStringList text;
    for (int i = 0; i < lines; ++i)
        text << QStringLiteral("%1/%2/%3").arg(writer).arg(block).arg(i);
    return text.join(QLatin1Char('\n'));
}

} // namespace

TEST(LogThreads, TenWritersAndReadersFindEveryBlockWholeAndNumberedInARow)
{
    constexpr int writers = 10;
    constexpr int blocks = 60;
    constexpr int lines = 9;
    const auto cache = makeCache();
    cache->setSplitWidth(300);
    std::atomic<bool> done{false};
    std::atomic<qint64> characters{0};
    const auto read = [&] {
        while (!done) {
            const int size = cache->getDataSize();
            for (int i = std::max(size - 50, 0); i < size; ++i)
                if (const auto piece = cache->getData(i))
                    characters += piece->text.size() + piece->level;
            cache->getDataSizeByLevel(3);
            QString all;
            cache->getAllText(all);
            cache->takeChanged();
        }
    };
    std::vector<std::thread> threads;
    threads.emplace_back(read);
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&cache, writer] {
            for (int block = 0; block < blocks; ++block)
                cache->dataCallBack(numbered(writer, block, lines), writer);
        });
    for (int i = 0; i < 60; ++i) { // meanwhile the window is resized and wraps
        cache->setSplitWidth(200 + i);
        cache->setAutoLine(i % 2 == 0);
    }
    ASSERT_TRUE(waitFor([&] { return cache->getDataSize() == writers * blocks * lines; }));
    done = true;
    for (std::thread &thread : threads)
        thread.join();

    const auto pieces = cache->getPieces(std::nullopt, 0, cache->getDataSize());
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const QString expected =
            pieces[i]->text.section(QLatin1Char('/'), 0, 1) + QStringLiteral("/%1").arg(static_cast<int>(i) % lines);
        ASSERT_EQ(pieces[i]->text, expected) << "a block is torn at " << i;
        ASSERT_EQ(pieces[i]->lineId, pieces[0]->lineId + static_cast<int>(i));
    }
    for (int writer = 0; writer < writers; ++writer) {
        QStringList expected;
        for (int block = 0; block < blocks; ++block)
            expected << numbered(writer, block, lines);
        QStringList found;
        for (const auto &piece : cache->getPieces(writer, 0, blocks * lines))
            found << piece->text;
        EXPECT_EQ(found.join(QLatin1Char('\n')).toStdString(), expected.join(QLatin1Char('\n')).toStdString());
    }
}

TEST(LogThreads, ClearingAmongWritersAndReadersTearsNoBlock)
{
    constexpr int writers = 10;
    constexpr int lines = 9;
    const auto cache = makeCache();
    std::atomic<bool> done{false};
    std::vector<std::thread> threads;
    for (int writer = 0; writer < writers; ++writer)
        threads.emplace_back([&cache, writer] {
            for (int block = 0; block < 200; ++block)
                cache->dataCallBack(numbered(writer, block, lines), writer);
        });
    threads.emplace_back([&] {
        while (!done)
            for (const auto &piece : cache->getPieces(std::nullopt, 0, cache->getDataSize()))
                EXPECT_FALSE(piece->text.isEmpty());
    });
    for (int i = 0; i < 200; ++i) {
        cache->clear();
        const auto pieces = cache->getPieces(std::nullopt, 0, cache->getDataSize());
        EXPECT_EQ(pieces.size() % lines, 0U);
        for (std::size_t line = 0; line < pieces.size(); ++line)
            EXPECT_EQ(pieces[line]->text.section(QLatin1Char('/'), 2).toInt(), static_cast<int>(line) % lines);
    }
    for (int writer = 0; writer < writers; ++writer)
        threads[static_cast<std::size_t>(writer)].join();
    cache->clear();
    EXPECT_TRUE(cache->takeChanged());
    EXPECT_FALSE(cache->takeChanged());
    cache->dataCallBack(QStringLiteral("end"), 1);
    ASSERT_TRUE(waitFor([&] { return cache->getDataSizeByLevel(1) > 0; }));
    done = true;
    threads.back().join();
    EXPECT_EQ(cache->getDataSize(), 1) << "nothing from before the last clearing comes after it";
}

TEST(LogThreads, AQueuedBlockKeepsItsCacheAlive)
{
    const int base = newestNumber();
    auto cache = makeCache();
    const boost::weak_ptr<TestCache> watched = cache;
    for (int block = 0; block < 200; ++block)
        cache->dataCallBack(numbered(1, block, 50), 0);
    cache.reset();
    ASSERT_TRUE(waitFor([&] { return watched.expired(); }));
    EXPECT_EQ(newestNumber(), base + 200 * 50 + 1) << "every line has taken its number";
}

TEST(LogThreads, ABlockThatIsOvertakenByAChangeOfWidthIsCutForTheNewOne)
{
    const auto cache = makeCache();
    cache->setSplitWidth(150);
    cache->setAutoLine(true);
    const QString slow = QStringLiteral("عربي ").repeated(20000); // shaped many times: tens of milliseconds at least
    cache->dataCallBack(slow, 0);
    cache->setAutoLine(false);
    cache->dataCallBack(QStringLiteral("end"), 1);
    ASSERT_TRUE(waitFor([&] { return cache->getDataSizeByLevel(1) == 1; }));
    EXPECT_EQ(cache->getDataSize(), 2);
    EXPECT_EQ(cache->getData(0)->text, slow);
}
