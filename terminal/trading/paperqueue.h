#pragma once

#include "feed/marketdata.h"

#include <array>
#include <map>
#include <vector>

namespace trading {

/// Fills paper orders of one instrument against what its feed shows. Prices are feed::priceUnits. The feed knows
/// nothing of paper orders, so they trade by these rules, which rather fill too late than too early:
///
/// - An order that arrives takes what the other side's visible levels hold, best first, as far as its price allows,
/// each
///   at the level's price. One that arrives while nothing can be traded against does so with the first book that can.
///   What paper orders took of a level is gone for them until the feed's own quantity there falls, and so is what the
///   feed's deals took since its last snapshot.
/// - What is left rests, behind all that the feed shows at its price. Deals of the feed at this price shorten the queue
///   ahead of it, and fill it by what they exceed the queue; a visible quantity smaller than the queue shortens it too.
///   An order at a price that the feed does not reach yet queues behind what is there when it comes in sight. Behind
///   fewer levels than the feed has ever shown there is nothing.
/// - A deal of the feed at a worse price than the order's fills it at once, at the order's price, up to the deal's
///   quantity: whoever made that deal would have met the paper order first. So does the other side's visible quantity
///   at the order's price or a better one.
/// - In auctions orders rest only. An auction's deals fill those whose price is better than the deal's, at that price.
/// - Several paper orders fill by price, then time; one deal's quantity is given out once. They never meet each other.
///
/// Of an instrument without deals in its feed the growth of a snapshot's volume counts as one deal: at its last price,
/// or as an auction's deal where the auction lies between the two snapshots.
class PaperQueue
{
public:
    struct Fill
    {
        qint64 id = 0;
        qint64 price = 0;
        qint64 quantity = 0;
    };

    void submit(qint64 id, feed::Side side, qint64 price, qint64 quantity, std::vector<Fill> &fills);
    /// Does nothing for an order that does not rest.
    void cancel(qint64 id);
    void takeDeal(const feed::Deal &deal, std::vector<Fill> &fills);
    /// Outside of the exchange's hours a snapshot is not `isOpen`: it tells of deals, but nothing trades against it.
    void takeQuote(const feed::QuoteSnapshot &quote, std::vector<Fill> &fills, bool isOpen = true);
    /// The exchange's hours have ended since the last snapshot.
    void close() { isMatching = false; }

    /// Quantity of the feed in front of a resting order; absent when its price has not been in sight.
    qint64 queueAhead(qint64 id) const;
    bool isEmpty() const { return bids.orders.empty() && asks.orders.empty(); }

private:
    struct Resting
    {
        qint64 id = 0;
        qint64 price = 0;
        qint64 quantity = 0;
        qint64 ahead = feed::absent<qint64>;
        bool hasArrived = false; ///< has met a book that can be traded against
    };

    struct Level
    {
        qint64 price = 0;
        qint64 quantity = 0;
        qint64 left = 0; ///< what deals since the snapshot have not taken
    };

    /// One side of the feed's book and the paper orders on it.
    struct Half
    {
        int sign = 1;                   ///< 1 for bids, where more is better, -1 for asks
        std::vector<Level> levels;      ///< visible, best first
        bool isWhole = false;           ///< there is nothing behind the visible levels
        std::map<qint64, qint64> taken; ///< by price: what paper orders took of the level
        std::vector<Resting> orders;    ///< by price, then time

        bool isBetter(qint64 a, qint64 b) const { return sign * a > sign * b; }
        bool isInSight(qint64 price) const;
        qint64 visibleAt(qint64 price) const;
        void takeLevels(const std::array<feed::QuoteLevel, feed::QuoteSnapshot::depth> &quoted);
        /// Forgets what was taken of quantities that the feed no longer shows.
        void returnTaken();
        void takeOff(qint64 price, qint64 quantity);
        void shortenQueues();
        void dropFilled();
    };

    struct Print
    {
        qint64 price = 0;
        qint64 quantity = 0;
        bool isAuction = false;
    };

    static void hit(Half &half, const Print &print, std::vector<Fill> &fills);
    /// Gives an order what the other side shows at its price or better. Makes trades at `ownPrice`, or at the levels'
    /// prices when that is 0.
    static void take(Half &other, Resting &order, qint64 ownPrice, std::vector<Fill> &fills);
    void takeVolume(const feed::QuoteSnapshot &quote, std::vector<Fill> &fills);

    Half bids;
    Half asks{-1, {}, false, {}, {}};
    bool isMatching = false;     ///< the visible levels can be traded against
    bool isAuctionAhead = false; ///< what trades next trades in an auction
    bool hasDeals = false;       ///< the feed tells the instrument's deals
    size_t mostLevels = 0;       ///< the most that a side has ever shown
    qint64 lastVolume = feed::absent<qint64>;
};

} // namespace trading
