#include "feed/replay/packedquotes.h"
#include "feedplayer.h"

#include <gtest/gtest.h>

#include <QFileInfo>

#include <map>
#include <random>
#include <sstream>

using namespace feed;

namespace {

template <typename T>
std::string valueText(T value)
{
    std::ostringstream out;
    out.precision(12);
    if (value == absent<T>)
        return "-";
    out << value;
    return out.str();
}

/// All of a snapshot but its instrument.
std::string quoteText(const QuoteSnapshot &q)
{
    std::ostringstream out;
    out << q.time << " phase " << int(q.phase);
    for (const double value :
         {q.last, q.previousClose, q.previousSettlement, q.open, q.high, q.low, q.upperLimit, q.lowerLimit, q.turnover})
        out << ' ' << valueText(value);
    out << " volume " << valueText(q.volume) << " interest " << valueText(q.openInterest);
    for (const auto *levels : {&q.bids, &q.asks}) {
        out << " :";
        for (const QuoteLevel &level : *levels)
            if (level.price != absent<double>)
                out << ' ' << valueText(level.price) << 'x' << valueText(level.quantity) << '('
                    << valueText(level.orders) << ')';
    }
    return out.str();
}

QuoteSnapshot randomQuote(std::mt19937_64 &random)
{
    const auto price = [&] {
        switch (random() % 6) {
        case 0:
            return absent<double>;
        case 1:
            return -double(random() % 1'000'000) / 1000;
        default:
            return double(random() % 100'000'000) / 100;
        }
    };
    const auto count = [&] { return random() % 8 ? qint64(random() % 1'000'000'000'000) : absent<qint64>; };
    QuoteSnapshot quote;
    quote.time = qint64(random() % 5);
    quote.phase = random() % 2 ? TradingPhase::Unknown : TradingPhase::Continuous;
    for (double *field : {&quote.last, &quote.previousClose, &quote.previousSettlement, &quote.open, &quote.high,
                          &quote.low, &quote.upperLimit, &quote.lowerLimit})
        *field = price();
    quote.volume = count();
    quote.turnover = random() % 5 ? double(random()) : absent<double>;
    quote.openInterest = count();
    for (auto *levels : {&quote.bids, &quote.asks})
        for (QuoteLevel &level : *levels)
            if (random() % 3)
                level = {price(), count(), random() % 3 ? int(random() % 2'000'000'000) : absent<int>};
    return quote;
}

/// The phases of a day one after the other, each with its number of snapshots.
std::string phasesText(const PlayedFeed &played)
{
    std::ostringstream out;
    int count = 0;
    for (size_t i = 0; i < played.quotes.size(); ++i) {
        ++count;
        if (i + 1 < played.quotes.size() && played.quotes[i + 1].phase == played.quotes[i].phase)
            continue;
        out << int(played.quotes[i].phase) << 'x' << count << ' ';
        count = 0;
    }
    return out.str();
}

QString dataPath(const char *name)
{
    return QStringLiteral(SHARED_DATA_DIR "/snapshots/") + QString::fromUtf8(name);
}

} // namespace

TEST(PackedQuotes, GiveBackWhatWasPutInOnceAndInOrderOfTime)
{
    for (unsigned seed = 1; seed <= 10; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937_64 random(seed);
        PackedQuotes packed;
        std::map<qint64, std::vector<std::string>> expected;
        std::vector<QuoteSnapshot> earlier;
        qint64 repeated = 0;
        for (int i = 0; i < 300; ++i) {
            const bool repeats = !earlier.empty() && random() % 4 == 0;
            const QuoteSnapshot quote = repeats ? earlier[random() % earlier.size()] : randomQuote(random);
            packed.append(quote);
            earlier.push_back(quote);
            auto &atTime = expected[quote.time];
            if (std::find(atTime.begin(), atTime.end(), quoteText(quote)) == atTime.end())
                atTime.push_back(quoteText(quote));
            else
                ++repeated;
        }
        EXPECT_EQ(packed.settle(), repeated);
        std::vector<std::string> expectedTexts;
        for (const auto &[time, texts] : expected)
            expectedTexts.insert(expectedTexts.end(), texts.begin(), texts.end());
        std::vector<std::string> texts;
        for (size_t i = 0; i < packed.size(); ++i)
            texts.push_back(quoteText(packed.quote(i)));
        EXPECT_EQ(joined(texts), joined(expectedTexts));
    }
}

TEST(SnapshotFiles, StocksAndFuturesAreReadAsTheyWereRecorded)
{
    if (!QFileInfo(dataPath("")).exists())
        GTEST_SKIP() << "no recorded data in " << SHARED_DATA_DIR;
    struct Case
    {
        const char *file;
        size_t place;
        const char *instrument;
        const char *quote;
        const char *phases;
    };
    const Case cases[] = {
        {"szse_snapshot_2022-06-01_300918.csv", 0, "300918.SZ  SZ 2 0.01 8.18 9.82 6.54",
         "1654046103000 phase 1 - 8.18 - - - - 9.82 6.54 0 volume 0 interest - : :",
         "1x16 2x5 3x1560 4x88 3x1126 5x13 6x3 "},
        {"sse_snapshot_2023-03-23_688293.csv", 0, "688293.SH  SH 2 0.01 112.3 134.76 89.84",
         "1679532323000 phase 0 - 112.3 - - - - 134.76 89.84 0 volume 0 interest - : :",
         "0x61 1x37 2x11 3x876 4x180 3x876 5x17 10x15 11x253 6x60 "},
        {"ctp_tick_2020-08-03_AP010.csv.gz", 1, "AP010 苹果010 CZCE 0 1 7185 7667 6799",
         "1596416340000 phase 127 7169 7185 7233 7169 7169 7169 7667 6799 3003811 volume 419 interest 148703"
         " : 7168x1(-) : 7169x63(-)",
         "127x12514 "},
    };
    for (const Case &recorded : cases) {
        ReplayFeed replay({dataPath(recorded.file)});
        const PlayedFeed played = playFeed(replay);
        EXPECT_EQ(joined(played.messages), "");
        EXPECT_EQ(phasesText(played), recorded.phases);
        EXPECT_EQ(quoteText(played.quotes.at(recorded.place)), recorded.quote);
        ASSERT_EQ(played.instruments.size(), 1u);
        const Instrument &i = played.instruments[0];
        EXPECT_EQ(i.code + ' ' + i.name + ' ' + i.exchange + ' ' + valueText(i.priceDecimals) + ' ' +
                      valueText(i.tick) + ' ' + valueText(i.previousClose) + ' ' + valueText(i.upperLimit) + ' ' +
                      valueText(i.lowerLimit),
                  recorded.instrument);
        for (const QuoteSnapshot &quote : played.quotes)
            for (size_t level = 1; level < quote.bids.size(); ++level) {
                ASSERT_TRUE(quote.bids[level].price == absent<double> ||
                            quote.bids[level].price < quote.bids[level - 1].price);
                ASSERT_TRUE(quote.asks[level].price == absent<double> ||
                            quote.asks[level].price > quote.asks[level - 1].price);
            }
    }
}
