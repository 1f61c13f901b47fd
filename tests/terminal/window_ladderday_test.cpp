#include <QtCore/QFileInfo>
#include <QtTest/QTest>
#include <gtest/gtest.h>

#include "feedplayer.h"
#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"
#include "utils/timetext.h"
#include "window/ladderpanel.h"
#include "zb/ceventwidgett.h"

using namespace terminal;

namespace {

/// A ladder that is shown one snapshot after the other and clicked on like a trader does.
class DayWindow : public ZB::CEventWidgetT<QWidget>
{
public:
    DayWindow() : panel(this), graph(panel.findChild<KV::CQuotesGraphWidget *>())
    {
        resize(420, 600);
        panel.resize(420, 600);
        show();
    }
    bool handleEvent(int event, int, int, QString text, void *) override
    {
        told += QStringLiteral("%1 %2 ").arg(event).arg(text).toStdString();
        return true;
    }
    /// What a click on the place of a value tells; empty where there is none.
    std::string clickOn(const KV::QuoteValuePlace &place)
    {
        told.clear();
        QTest::mouseClick(graph, Qt::LeftButton, Qt::NoModifier, {place.right - 4, place.baseline - 3});
        return told;
    }

    LadderPanel panel;
    KV::CQuotesGraphWidget *graph;

private:
    std::string told;
};

std::string eventOf(int event, bool isThere, double value)
{
    if (!isThere)
        return {};
    return QStringLiteral("%1 %2 ").arg(event).arg(value, 0, 'f', 4).toStdString();
}

bool isThere(double price)
{
    return price != feed::absent<double> && price > 0;
}

/// Everything that the ladder has of one snapshot, clicked on; the first thing that is not as recorded, or nothing.
std::string wrongIn(DayWindow &window, const feed::QuoteSnapshot &quote)
{
    const KV::QuotesLayout places = window.graph->places();
    const auto compare = [&](const KV::QuoteValuePlace &place, const std::string &expected, const std::string &what) {
        const std::string got = window.clickOn(place);
        return got == expected ? std::string() : what + ": \"" + got + "\" instead of \"" + expected + "\"";
    };
    std::string wrong = compare(places.latest, eventOf(1128, isThere(quote.last), quote.last), "latest");
    const auto addSide = [&](const auto &rows, const auto &levels, const std::string &name) {
        for (std::size_t i = 0; i < rows.size() && wrong.empty(); ++i) {
            const bool hasVolume = levels[i].quantity > 0 && levels[i].quantity != feed::absent<qint64>;
            wrong = compare(rows[i].price, eventOf(1128, isThere(levels[i].price), levels[i].price),
                            name + " price " + std::to_string(i + 1));
            if (wrong.empty())
                wrong = compare(rows[i].volume, eventOf(1129, hasVolume, double(levels[i].quantity)),
                                name + " volume " + std::to_string(i + 1));
        }
    };
    addSide(places.asks, quote.asks, "ask");
    addSide(places.bids, quote.bids, "bid");
    return wrong;
}

int levelsOf(const std::array<feed::QuoteLevel, feed::QuoteSnapshot::depth> &side)
{
    int count = 0;
    for (std::size_t i = 0; i < 5; ++i)
        count += isThere(side[i].price) ? 1 : 0;
    return count;
}

/// A stretch of snapshots of one phase, in numbers of shown levels.
struct Stretch
{
    feed::TradingPhase phase;
    int snapshots = 0;
    int leastAsks = 5;
    int mostAsks = 0;
    int leastBids = 5;
    int mostBids = 0;
    int withoutLatest = 0;

    std::string text() const
    {
        const auto range = [](int least, int most) {
            return least == most ? std::to_string(most) : std::to_string(least) + "-" + std::to_string(most);
        };
        return "phase " + std::to_string(int(phase)) + ": " + std::to_string(snapshots) + ", asks " +
               range(leastAsks, mostAsks) + ", bids " + range(leastBids, mostBids) + ", without latest " +
               std::to_string(withoutLatest);
    }
};

/// Plays a day through every layout; each snapshot is taken, the first of each phase and every thirtieth also clicked
/// on. Returns the day in stretches.
std::vector<std::string> playDay(const QString &path)
{
    feed::ReplayFeed replay({path});
    const PlayedFeed played = playFeed(replay);
    EXPECT_TRUE(played.loaded);
    DayWindow window;
    window.panel.setInstrument(played.instruments.at(0));
    std::vector<Stretch> stretches;
    int number = 0;
    int wrongs = 0;
    for (const feed::QuoteSnapshot &quote : played.quotes) {
        const bool isNew = stretches.empty() || stretches.back().phase != quote.phase;
        if (isNew)
            stretches.push_back({quote.phase});
        Stretch &stretch = stretches.back();
        ++stretch.snapshots;
        stretch.leastAsks = std::min(stretch.leastAsks, levelsOf(quote.asks));
        stretch.mostAsks = std::max(stretch.mostAsks, levelsOf(quote.asks));
        stretch.leastBids = std::min(stretch.leastBids, levelsOf(quote.bids));
        stretch.mostBids = std::max(stretch.mostBids, levelsOf(quote.bids));
        stretch.withoutLatest += isThere(quote.last) ? 0 : 1;
        window.panel.setQuote(quote, 0);
        if (!isNew && ++number % 30 != 0)
            continue;
        for (const KV::EQuoteType layout : {KV::QuoteNormal, KV::QuoteLevel2Vertical, KV::QuoteLevel2Horizontal}) {
            window.panel.setLayoutKind(layout);
            window.graph->grab();
            const std::string wrong = wrongIn(window, quote);
            EXPECT_EQ(wrong, "") << utils::getStrTimeByTime(quote.time, utils::ETimeText::DateTime).toStdString()
                                 << " layout " << layout;
            wrongs += wrong.empty() ? 0 : 1;
        }
        if (wrongs > 5)
            break;
    }
    std::vector<std::string> lines;
    for (const Stretch &stretch : stretches)
        lines.push_back(stretch.text());
    return lines;
}

} // namespace

TEST(LadderDay, AStockFromTheOpeningAuctionToTheCloseShowsAndGivesWhatWasRecorded)
{
    const QString path = QStringLiteral(SHARED_DATA_DIR "/snapshots/szse_snapshot_2022-06-01_300918.csv");
    if (!QFileInfo::exists(path))
        GTEST_SKIP() << "no recorded data at " << path.toStdString();
    EXPECT_EQ(joined(playDay(path)), "phase 1: 16, asks 0-1, bids 0-1, without latest 16\n"
                                     "phase 2: 5, asks 5, bids 5, without latest 0\n"
                                     "phase 3: 1560, asks 5, bids 5, without latest 0\n"
                                     "phase 4: 88, asks 5, bids 5, without latest 0\n"
                                     "phase 3: 1126, asks 5, bids 5, without latest 0\n"
                                     "phase 5: 13, asks 0-1, bids 0-1, without latest 0\n"
                                     "phase 6: 3, asks 5, bids 5, without latest 0\n");
}

TEST(LadderDay, AStockOfShanghaiWithItsHoursAfterTheClose)
{
    const QString path = QStringLiteral(SHARED_DATA_DIR "/snapshots/sse_snapshot_2023-03-23_688293.csv");
    if (!QFileInfo::exists(path))
        GTEST_SKIP() << "no recorded data at " << path.toStdString();
    EXPECT_EQ(joined(playDay(path)), "phase 0: 61, asks 0, bids 0, without latest 61\n"
                                     "phase 1: 37, asks 0, bids 0, without latest 37\n"
                                     "phase 2: 11, asks 5, bids 5, without latest 11\n"
                                     "phase 3: 876, asks 5, bids 5, without latest 1\n"
                                     "phase 4: 180, asks 5, bids 5, without latest 0\n"
                                     "phase 3: 876, asks 5, bids 5, without latest 0\n"
                                     "phase 5: 17, asks 0-1, bids 0-1, without latest 0\n"
                                     "phase 10: 15, asks 5, bids 5, without latest 0\n"
                                     "phase 11: 253, asks 0, bids 0-1, without latest 0\n"
                                     "phase 6: 60, asks 5, bids 5, without latest 0\n");
}

TEST(LadderDay, AFutureWithOneLevelOnly)
{
    const QString path = QStringLiteral(SHARED_DATA_DIR "/snapshots/ctp_tick_2020-08-03_AP010.csv.gz");
    if (!QFileInfo::exists(path))
        GTEST_SKIP() << "no recorded data at " << path.toStdString();
    EXPECT_EQ(joined(playDay(path)), "phase 127: 12514, asks 0-1, bids 0-1, without latest 0\n");
}
