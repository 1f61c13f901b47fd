#include <gtest/gtest.h>
#include <list>
#include <map>
#include <random>

#include "uicontrol/logcache.h"

namespace {

using KV::LogTextData;
using KV::LogTextPtr;

/// The lists of a cache kept by the letter of the rules, one piece after the other, nothing shared, nothing swapped.
class PlainCache
{
public:
    explicit PlainCache(TestCache &cache) : cutter(cache) {}

    void add(const QString &text, int level)
    {
        auto &list = levels[level];
        for (const QString &line : text.split(QLatin1Char('\n'))) {
            ++lineId;
            for (const QString &part : cutter.getSplitSize(line)) {
                const auto piece = boost::make_shared<LogTextData>(LogTextData{part, level, lineId});
                if (all.size() > 50000)
                    all.pop_front();
                if (list.size() > 50000)
                    list.pop_front();
                all.push_back(piece);
                list.push_back(piece);
            }
        }
    }

    void reset()
    {
        std::list<LogTextPtr> records;
        int previous = 0;
        for (const LogTextPtr &piece : all) {
            if (records.empty() || piece->lineId != previous)
                records.push_back(piece);
            else
                records.back()->text += piece->text;
            previous = piece->lineId;
        }
        all.clear();
        for (const LogTextPtr &record : records)
            for (const QString &part : cutter.getSplitSize(record->text))
                all.push_back(boost::make_shared<LogTextData>(LogTextData{part, record->level, record->lineId}));
    }

    std::string describeAll() const { return text(all); }
    std::string describeLevel(int level) const
    {
        const auto found = levels.find(level);
        return found == levels.end() ? std::string() : text(found->second);
    }

    void clear()
    {
        all.clear();
        levels.clear();
    }

private:
    static std::string text(const std::list<LogTextPtr> &list)
    {
        std::string out;
        for (const LogTextPtr &piece : list)
            out += describe(*piece, 0) + "\n";
        return out;
    }

    TestCache &cutter;
    std::list<LogTextPtr> all;
    std::map<int, std::list<LogTextPtr>> levels;
    int lineId = 0;
};

int below(std::mt19937 &random, unsigned n)
{
    return static_cast<int>(random() % n);
}

QString randomText(std::mt19937 &random, int lines)
{
    QString text;
    for (int i = 0; i < lines; ++i) {
        if (i > 0)
            text += QLatin1Char('\n');
        for (int left = below(random, 5) == 0 ? below(random, 120) : below(random, 12); left > 0; --left)
            text += below(random, 3) == 0 ? QChar(0x4E00 + below(random, 900)) : QChar('a' + below(random, 26));
    }
    return text;
}

} // namespace

TEST(LogCache, ABlockBecomesNumberedLines)
{
    const auto cache = makeCache();
    const int base = newestNumber();
    cache->doData(QStringLiteral("a\nb\n"), 1);
    cache->doData(QString(), 2);
    cache->doData(QStringLiteral("\n\nc\r"), 1);
    EXPECT_EQ(describe(*cache, std::nullopt, base), "1:1:a\n2:1:b\n3:1:\n4:2:\n5:1:\n6:1:\n7:1:c\r\n");
    EXPECT_EQ(describe(*cache, 1, base), "1:1:a\n2:1:b\n3:1:\n5:1:\n6:1:\n7:1:c\r\n");
    EXPECT_EQ(describe(*cache, 2, base), "4:2:\n");
    EXPECT_EQ(cache->getData(1), cache->getDataByLevel(1, 1)) << "lists share their pieces";
    EXPECT_EQ(newestNumber(), base + 8) << "all caches count together";
}

TEST(LogCache, IndexesOutsideGiveNothing)
{
    const auto cache = makeCache();
    EXPECT_EQ(cache->getData(0), nullptr);
    EXPECT_EQ(cache->getDataByLevel(0, 7), nullptr);
    EXPECT_EQ(cache->getDataSizeByLevel(-3), 0);
    cache->doData(QStringLiteral("x"), 7);
    EXPECT_EQ(cache->getData(cache->getDataSize()), nullptr);
    EXPECT_EQ(cache->getData(-1), nullptr);
    EXPECT_EQ(cache->getDataByLevel(-1, 7), nullptr);
    EXPECT_EQ(cache->getData(std::numeric_limits<int>::max()), nullptr);
    EXPECT_TRUE(cache->getPieces(std::nullopt, 5, 5).empty());
    EXPECT_EQ(cache->getPieces(7, -4, std::numeric_limits<int>::max()).size(), 1U);
}

TEST(LogCache, AllTextStartsLinesWithALineFeedButForALastSinglePiece)
{
    const auto textOf = [](const QStringList &lines) {
        const auto cache = makeCache();
        cache->setSplitWidth(120);
        cache->setAutoLine(true);
        for (const QString &line : lines)
            cache->doData(line, 0);
        QString text = QStringLiteral("before:");
        cache->getAllText(text);
        return text.toStdString();
    };
    const QString wide(40, QLatin1Char('w'));
    EXPECT_EQ(textOf({}), "before:");
    EXPECT_EQ(textOf({"x"}), "before:x");
    EXPECT_EQ(textOf({"x", "y"}), "before:\nxy");
    EXPECT_EQ(textOf({"x", "y", "z"}), "before:\nx\nyz");
    EXPECT_EQ(textOf({wide}), "before:\n" + wide.toStdString());
    EXPECT_EQ(textOf({"x", wide}), "before:\nx\n" + wide.toStdString());
}

TEST(LogCache, OnlyWidthsAboveAHundredCutAndOnlyWhenWrapping)
{
    const auto cache = makeCache();
    cache->doData(QString(400, QLatin1Char('m')), 0);
    EXPECT_EQ(cache->getDataSize(), 1);
    cache->setSplitWidth(101);
    EXPECT_EQ(cache->getDataSize(), 1) << "not wrapping";
    cache->setAutoLine(true);
    const int narrow = cache->getDataSize();
    EXPECT_GT(narrow, 20);
    for (const int ignored : {100, 0, -1, std::numeric_limits<int>::min()}) {
        cache->setSplitWidth(ignored);
        EXPECT_EQ(cache->getSplitWidth(), 101) << ignored;
    }
    cache->setSplitWidth(202);
    EXPECT_LT(cache->getDataSize(), narrow);
    EXPECT_EQ(cache->getDataSizeByLevel(0), 1) << "level lists stay as they were cut";
    cache->setAutoLine(false);
    EXPECT_EQ(cache->getDataSize(), 1);
}

TEST(LogCache, WithoutAWidthAnEmptyLineDisappearsAndOthersAreCutAtTheirShortest)
{
    const auto cache = makeCache();
    cache->setAutoLine(true);
    EXPECT_EQ(cache->getSplitSize(QString()), QStringList());
    EXPECT_EQ(cache->getSplitSize(QStringLiteral("0123456789")), QStringList{QStringLiteral("0123456789")});
    EXPECT_EQ(cache->getSplitSize(QString(32, QLatin1Char('x'))).join(QLatin1Char(' ')),
              QStringLiteral("xxxxxxxxx xxxxxxxxxx xxxxxxxxxx xxx"));
    const int base = newestNumber();
    cache->doData(QStringLiteral("\na"), 0);
    EXPECT_EQ(describe(*cache, std::nullopt, base), "2:0:a\n") << "the empty line has its number all the same";
}

TEST(LogCache, EachListDropsItsOldestPieceBehind50001)
{
    const auto cache = makeCache();
    const int base = newestNumber();
    for (int i = 0; i < 6; ++i)
        cache->doData(QString(9999, QLatin1Char('\n')), i % 2);
    EXPECT_EQ(cache->getState(std::nullopt).size, 50001);
    EXPECT_EQ(cache->getState(std::nullopt).trimmed, 9999);
    EXPECT_EQ(cache->getData(0)->lineId, base + 10000);
    EXPECT_EQ(cache->getDataSizeByLevel(0), 30000) << "what all lines have lost the level keeps";
    EXPECT_EQ(cache->getDataByLevel(0, 0)->lineId, base + 1);

    const int next = newestNumber();
    cache->doData(QString(199999, QLatin1Char('\n')), 0); // one block of more than a list holds
    EXPECT_EQ(cache->getDataSize(), 50001);
    EXPECT_EQ(cache->getDataSizeByLevel(0), 50001);
    EXPECT_EQ(cache->getState(std::nullopt).trimmed, 9999 + 200000);
    EXPECT_EQ(cache->getState(0).trimmed, 30000 + 200000 - 50001);
    EXPECT_EQ(cache->getData(50000)->lineId, next + 200000);
    EXPECT_EQ(cache->getData(0), cache->getDataByLevel(0, 0));
    EXPECT_EQ(cache->getDataSizeByLevel(1), 30000);
}

TEST(LogCache, RandomBlocksAndCuttingsKeepTheListsOfThePlainRules)
{
    const unsigned seed = std::random_device{}();
    SCOPED_TRACE("seed " + std::to_string(seed));
    std::mt19937 random(seed);
    const auto cache = makeCache();
    PlainCache plain(*cache);
    const int base = newestNumber();
    bool wrap = false;
    for (int step = 0; step < 300; ++step) {
        const int before = cache->getSplitWidth();
        switch (below(random, 8)) {
        case 0:
            cache->setAutoLine(wrap = !wrap);
            plain.reset();
            break;
        case 1:
            cache->setSplitWidth(90 + below(random, 300));
            if (cache->getSplitWidth() != before)
                plain.reset();
            break;
        case 2:
            if (below(random, 8) == 0) {
                cache->clear();
                plain.clear();
            }
            break;
        default: {
            const QString text = randomText(random, 1 + below(random, 6));
            const int level = below(random, 3);
            cache->doData(text, level);
            plain.add(text, level);
        }
        }
        ASSERT_EQ(describe(*cache, std::nullopt, base), plain.describeAll()) << "step " << step;
        for (int level = 0; level < 3; ++level)
            ASSERT_EQ(describe(*cache, level, base), plain.describeLevel(level))
                << "level " << level << " step " << step;
    }
}

TEST(LogCache, APieceInHandStaysAsItWasWhenLinesAreCutAnew)
{
    const auto cache = makeCache();
    cache->setSplitWidth(150);
    cache->setAutoLine(true);
    cache->doData(QString(60, QLatin1Char('w')), 0);
    const LogTextPtr held = cache->getDataByLevel(0, 0);
    const QString text = held->text;
    cache->setAutoLine(false);
    EXPECT_EQ(held->text, text);
    EXPECT_EQ(cache->getDataByLevel(0, 0)->text, QString(60, QLatin1Char('w')));
}
