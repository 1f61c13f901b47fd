#pragma once

#include "feed/daystatistics.h"
#include "feed/feedsource.h"
#include "feed/simulation/matchingengine.h"
#include "feed/simulation/orderflow.h"

#include <deque>
#include <memory>
#include <vector>

namespace feed {

/// An exchange that does not exist: a few stocks of invented companies and index futures, whose traders meet in
/// matching engines. The same seed gives the same events, whenever and however fast they are asked for. A day goes from
/// 09:30 to 15:00 with a break at noon and has about half a million events. The next weekday follows when it is ended:
/// what was open is withdrawn, and limits are set around the close, of futures around the settlement price, which is
/// the day's average price by volume.
class SimulatedFeed : public FeedSource
{
public:
    explicit SimulatedFeed(quint64 seed);
    ~SimulatedFeed() override;

    std::string name() const override;
    bool load(BatchWriter &writer, const std::function<bool()> &keepGoing) override;
    qint64 nextTime() const override;
    qint64 longestGap() const override;
    void step(BatchWriter &writer) override;
    void completeBatch(BatchWriter &writer) override;
    bool canEndDay() const override { return true; }
    void endDay(BatchWriter &writer) override;

private:
    /// How lively an instrument is.
    struct Pace
    {
        int typicalLots = 1;
        int meanPause = 300; ///< milliseconds
    };

    struct Stock
    {
        Stock(Instrument instrument, Pace pace, quint64 seed);

        Instrument instrument;
        const Pace pace;
        const quint64 seed;
        OrderFlow flow;
        MatchingEngine engine;
        DayStatistics statistics;
        qint64 nextTime = 0;
        int openingOrders = 0; ///< still to come before trading starts
        bool isChanged = false;
    };

    /// An exchange's numbering of all that happens.
    struct Channel
    {
        int number = 0;
        qint64 lastSequence = 0;
    };

    void addStock(const char *code, const char *name, double previousClose, Pace pace);
    void addFuture(const char *code, double previousSettlement, Pace pace);
    void add(Instrument instrument, Pace pace);
    void withdrawAll(BatchWriter &writer);
    Channel &channelOf(const Stock &stock);
    void place(Stock &stock, const OrderFlow::Action &action, BatchWriter &writer);
    void withdraw(Stock &stock, qint64 id, BatchWriter &writer);
    void addDeal(Stock &stock, const MatchingEngine::Fill &fill, BatchWriter &writer);
    void fillOrder(OrderState &order, const Deal &deal, BatchWriter &writer);
    void schedule(Stock &stock);
    QuoteSnapshot quoteOf(const Stock &stock) const;

    const quint64 seed;
    int day = 0;         ///< yyyymmdd
    qint64 midnight = 0; ///< at which it starts in China
    std::vector<std::unique_ptr<Stock>> stocks;
    std::deque<OrderState> orders; ///< by entry; the engines know an order by its entry + 1
    Channel shanghai{1, 0};
    Channel shenzhen{2011, 0};
    Channel futures{21, 0};
    std::vector<MatchingEngine::Fill> fills;
    qint64 now = 0;
};

} // namespace feed
