#include "benchcase.h"
#include "framepace.h"
#include "tablechecks.h"

#include <QtCore/QElapsedTimer>
#include <QtGui/QImage>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QTableWidget>
#include <algorithm>
#include <boost/smart_ptr/make_shared.hpp>
#include <ctime>
#include <random>
#include <utility>

#include "order/cquotesgraphwidget.h"
#include "order/cquotespriceslist.h"

namespace bench {

namespace {

constexpr int snapshotCount = 1000; ///< different ones, taken in turn
constexpr int updatesPerSecond = 5000;
constexpr int levels = quoter::QuoterAllData::depth;

using Snapshot = boost::shared_ptr<quoter::QuoterAllData>;

/// A price that walks by a tick or two, with volumes that change on every level: nothing can be kept from one frame to
/// the next.
std::vector<Snapshot> walk()
{
    std::mt19937 random(5);
    std::vector<Snapshot> snapshots;
    int cents = 1593;
    for (int i = 0; i < snapshotCount; ++i) {
        cents = std::clamp(cents + std::uniform_int_distribution<int>(-2, 2)(random), 1400, 1700);
        auto quote = boost::make_shared<quoter::QuoterAllData>();
        quote->latestPrice = cents / 100.0;
        quote->previousClose = 15.50;
        for (std::size_t level = 0; level < levels; ++level) {
            quote->askPrices[level] = (cents + 1 + static_cast<int>(level)) / 100.0;
            quote->bidPrices[level] = (cents - static_cast<int>(level)) / 100.0;
            quote->askVolumes[level] = std::uniform_int_distribution<int>(1, 99999)(random);
            quote->bidVolumes[level] = std::uniform_int_distribution<int>(1, 99999)(random);
        }
        snapshots.push_back(std::move(quote));
    }
    return snapshots;
}

boost::shared_ptr<kdservice::CInstrumentDetail> limits()
{
    auto detail = boost::make_shared<kdservice::CInstrumentDetail>();
    detail->upperLimitPrice = 17.05;
    detail->lowerLimitPrice = 13.95;
    detail->priceTick = 0.01;
    return detail;
}

std::unique_ptr<KV::CQuotesPricesList> makeLadder(KV::EQuoteType layout)
{
    auto ladder = std::make_unique<KV::CQuotesPricesList>(KV::OpParamQuotes);
    ladder->setQuoteType(layout);
    ladder->setStockCode(QStringLiteral("605580.SH"));
    ladder->setOrderNum(2, 1);
    ladder->show();
    QApplication::processEvents();
    return ladder;
}

/// Milliseconds from a snapshot to its finished picture.
double ourRepaint(KV::EQuoteType layout, int rounds)
{
    const std::vector<Snapshot> snapshots = walk();
    const auto detail = limits();
    const auto ladder = makeLadder(layout);
    auto *graph = ladder->findChild<KV::CQuotesGraphWidget *>();
    const auto paint = [&](const Snapshot &snapshot) {
        ladder->setQuoterAllData(snapshot, detail);
        graph->repaint();
    };
    paint(snapshots.front());
    const QImage first = graph->grab().toImage();
    std::size_t next = 1;
    const double median = medianOf(rounds, [&] {
        const Snapshot &snapshot = snapshots[next++ % snapshots.size()];
        return secondsOf([&] { paint(snapshot); }) * 1e3;
    });
    checkRepainted(first, graph->grab().toImage(), "our ladder");
    return median;
}

/// The same numbers in a table of items, as one would without a ladder of one's own: no bars, no click areas.
double stockRepaint(int rounds)
{
    const std::vector<Snapshot> snapshots = walk();
    QTableWidget table(2 * levels + 1, 2);
    table.horizontalHeader()->hide();
    table.verticalHeader()->setDefaultSectionSize(22);
    table.resize(200, 348);
    for (int row = 0; row < table.rowCount(); ++row)
        for (int column = 0; column < 2; ++column)
            table.setItem(row, column, new QTableWidgetItem);
    table.show();
    QApplication::processEvents();
    const auto put = [&table](int row, double price, qint64 volume, double close) {
        table.item(row, 0)->setText(QString::number(price, 'f', 2));
        table.item(row, 0)->setForeground(price > close ? Qt::red : Qt::darkGreen);
        table.item(row, 1)->setText(QString::number(volume));
    };
    std::size_t next = 0;
    const QImage empty = table.viewport()->grab().toImage();
    const double median = medianOf(rounds, [&] {
        const quoter::QuoterAllData &quote = *snapshots[next++ % snapshots.size()];
        return secondsOf([&] {
                   for (std::size_t i = 0; i < levels; ++i) {
                       put(levels - 1 - static_cast<int>(i), quote.askPrices[i], quote.askVolumes[i],
                           quote.previousClose);
                       put(levels + 1 + static_cast<int>(i), quote.bidPrices[i], quote.bidVolumes[i],
                           quote.previousClose);
                   }
                   put(levels, quote.latestPrice, 0, quote.previousClose);
                   table.viewport()->repaint();
               }) *
               1e3;
    });
    checkRepainted(empty, table.viewport()->grab().toImage(), "the stock table");
    return median;
}

std::vector<BenchRow> repaint(bool quick)
{
    const int rounds = quick ? 201 : 2001;
    const double stock = isStockWanted() ? stockRepaint(rounds) : 0;
    const auto row = [&](const char *name, KV::EQuoteType layout) {
        const double ours = ourRepaint(layout, rounds);
        return BenchRow{name, 1, "ms", ours, stock, stock / ours, snapshotCount};
    };
    return {row("ladder.repaint", KV::QuoteNormal), row("ladder.repaint_vertical", KV::QuoteLevel2Vertical),
            row("ladder.repaint_horizontal", KV::QuoteLevel2Horizontal)};
}

/// The longest turn of the event loop while snapshots came in: by the clock, and in processor time, which leaves out
/// what other programs took.
std::vector<BenchRow> updates(bool quick)
{
    const int seconds = quick ? 5 : 60;
    const std::vector<Snapshot> snapshots = walk();
    const auto detail = limits();
    const auto ladder = makeLadder(KV::QuoteLevel2Vertical);
    const PaintCount frames(ladder->findChild<KV::CQuotesGraphWidget *>());
    qint64 worst = 0;
    std::clock_t worstBusy = 0;
    QElapsedTimer clock;
    clock.start();
    long long given = 0;
    qint64 last = clock.nsecsElapsed();
    std::clock_t lastBusy = std::clock();
    while (clock.elapsed() < seconds * 1000LL) {
        for (; given < clock.elapsed() * updatesPerSecond / 1000; ++given)
            ladder->setQuoterAllData(snapshots[static_cast<std::size_t>(given % snapshotCount)], detail);
        QApplication::processEvents(QEventLoop::AllEvents, 1);
        const qint64 now = clock.nsecsElapsed();
        const std::clock_t nowBusy = std::clock();
        worst = std::max(worst, now - std::exchange(last, now));
        worstBusy = std::max(worstBusy, nowBusy - std::exchange(lastBusy, nowBusy));
    }
    const double busy = 1e3 * static_cast<double>(worstBusy) / CLOCKS_PER_SEC;
    return {{"ladder.updates", given, "ms worst", static_cast<double>(worst) * 1e-6, 0, 0},
            {"ladder.updates_cpu", given, "ms worst", busy, 0, 0},
            {"ladder.frames", given, "1/s", static_cast<double>(frames.paints()) / seconds, 0, 0}};
}

const BenchRegistration registrations[] = {{"ladder.repaint", repaint}, {"ladder.updates", updates}};

} // namespace

} // namespace bench
