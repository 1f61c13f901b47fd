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

/// Plays a day through every layout; each snapshot is taken, the first of each phase and every thirtieth also clicked
/// on.
void playDay(const QString &path)
{
    feed::ReplayFeed replay({path});
    const PlayedFeed played = playFeed(replay);
    ASSERT_TRUE(played.loaded);
    DayWindow window;
    window.panel.setInstrument(played.instruments.at(0));
    feed::TradingPhase phase{-1};
    int number = 0;
    for (const feed::QuoteSnapshot &quote : played.quotes) {
        const bool isNew = std::exchange(phase, quote.phase) != quote.phase;
        window.panel.setQuote(quote, 0);
        if (!isNew && ++number % 30 != 0)
            continue;
        for (const KV::EQuoteType layout : {KV::QuoteNormal, KV::QuoteLevel2Vertical, KV::QuoteLevel2Horizontal}) {
            window.panel.setLayoutKind(layout);
            window.graph->grab();
            ASSERT_EQ(wrongIn(window, quote), "")
                << utils::getStrTimeByTime(quote.time, utils::ETimeText::DateTime).toStdString() << " layout "
                << layout;
        }
    }
}

} // namespace

/// A stock from the opening auction to the close, one of Shanghai with its hours after the close, and a future with one
/// level only.
TEST(LadderDay, RecordedDaysShowAndGiveWhatWasRecorded)
{
    for (const char *name : {"szse_snapshot_2022-06-01_300918.csv", "sse_snapshot_2023-03-23_688293.csv",
                             "ctp_tick_2020-08-03_AP010.csv.gz"}) {
        const QString path = QStringLiteral(SHARED_DATA_DIR "/snapshots/") + QLatin1String(name);
        if (!QFileInfo::exists(path))
            GTEST_SKIP() << "no recorded data at " << path.toStdString();
        SCOPED_TRACE(name);
        playDay(path);
    }
}
