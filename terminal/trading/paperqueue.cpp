#include "trading/paperqueue.h"

#include "feed/instrumentrules.h"

#include <algorithm>
#include <utility>

namespace trading {

namespace {

/// What trades in these phases, or at their end, trades at one price.
bool isAuctionPhase(feed::TradingPhase phase)
{
    return phase == feed::TradingPhase::BeforeOpening || phase == feed::TradingPhase::OpeningAuction ||
           phase == feed::TradingPhase::BeforeContinuous || phase == feed::TradingPhase::ClosingAuction;
}

} // namespace

bool PaperQueue::Half::isInSight(qint64 price) const
{
    return isWhole || (!levels.empty() && !isBetter(levels.back().price, price));
}

qint64 PaperQueue::Half::visibleAt(qint64 price) const
{
    for (const Level &level : levels)
        if (level.price == price)
            return level.quantity;
    return 0;
}

void PaperQueue::Half::takeLevels(const std::array<feed::QuoteLevel, feed::QuoteSnapshot::depth> &quoted)
{
    levels.clear();
    for (const feed::QuoteLevel &level : quoted)
        if (level.price != feed::absent<double> && level.price > 0 && level.quantity != feed::absent<qint64> &&
            level.quantity > 0)
            levels.push_back({feed::priceUnits(level.price), level.quantity, level.quantity});
}

void PaperQueue::Half::returnTaken()
{
    for (auto it = taken.begin(); it != taken.end();) {
        if (isInSight(it->first))
            it->second = std::min(it->second, visibleAt(it->first));
        it = it->second == 0 ? taken.erase(it) : std::next(it);
    }
}

/// A deal of the feed at this price came after what was better had gone.
void PaperQueue::Half::takeOff(qint64 price, qint64 quantity)
{
    for (Level &level : levels) {
        if (isBetter(level.price, price))
            level.left = 0;
        else if (level.price == price)
            level.left = std::max<qint64>(0, level.left - quantity);
    }
}

void PaperQueue::Half::shortenQueues()
{
    for (Resting &order : orders)
        if (isInSight(order.price))
            order.ahead = std::min(order.ahead, visibleAt(order.price));
}

void PaperQueue::Half::dropFilled()
{
    orders.erase(std::remove_if(orders.begin(), orders.end(), [](const Resting &order) { return order.quantity == 0; }),
                 orders.end());
}

void PaperQueue::take(Half &other, Resting &order, qint64 ownPrice, std::vector<Fill> &fills)
{
    for (const Level &level : other.levels) {
        if (order.quantity == 0 || other.isBetter(order.price, level.price))
            return;
        qint64 &taken = other.taken[level.price];
        const qint64 quantity = std::min(order.quantity, std::max<qint64>(0, level.left - taken));
        taken += quantity;
        if (quantity == 0)
            continue;
        order.quantity -= quantity;
        fills.push_back({order.id, ownPrice > 0 ? ownPrice : level.price, quantity});
    }
}

void PaperQueue::submit(qint64 id, feed::Side side, qint64 price, qint64 quantity, std::vector<Fill> &fills)
{
    Half &own = side == feed::Side::Buy ? bids : asks;
    Half &other = side == feed::Side::Buy ? asks : bids;
    Resting order{id, price, quantity, feed::absent<qint64>, isMatching};
    if (isMatching) {
        take(other, order, 0, fills);
        if (own.isInSight(price))
            order.ahead = own.visibleAt(price);
    }
    if (order.quantity == 0)
        return;
    const auto place = std::find_if(own.orders.begin(), own.orders.end(),
                                    [&](const Resting &resting) { return own.isBetter(price, resting.price); });
    own.orders.insert(place, order);
}

void PaperQueue::cancel(qint64 id)
{
    for (Half *half : {&bids, &asks})
        half->orders.erase(std::remove_if(half->orders.begin(), half->orders.end(),
                                          [id](const Resting &order) { return order.id == id; }),
                           half->orders.end());
}

qint64 PaperQueue::queueAhead(qint64 id) const
{
    for (const Half *half : {&bids, &asks})
        for (const Resting &order : half->orders)
            if (order.id == id)
                return order.ahead;
    return feed::absent<qint64>;
}

void PaperQueue::hit(Half &half, const Print &print, std::vector<Fill> &fills)
{
    qint64 given = 0;
    for (Resting &order : half.orders) {
        if (half.isBetter(print.price, order.price))
            break; // sorted: those that follow are no better
        qint64 quantity = 0;
        if (half.isBetter(order.price, print.price)) {
            order.ahead = 0;
            quantity = std::min(order.quantity, print.quantity - given);
        } else if (!print.isAuction && order.ahead != feed::absent<qint64>) {
            const qint64 surplus = print.quantity - given - order.ahead;
            order.ahead = std::max<qint64>(0, order.ahead - print.quantity);
            quantity = std::clamp<qint64>(surplus, 0, order.quantity);
        }
        if (quantity == 0)
            continue;
        given += quantity;
        order.quantity -= quantity;
        const bool atPrint = print.isAuction || !order.hasArrived;
        fills.push_back({order.id, atPrint ? print.price : order.price, quantity});
    }
    half.dropFilled();
}

void PaperQueue::takeDeal(const feed::Deal &deal, std::vector<Fill> &fills)
{
    hasDeals = true;
    const Print print{feed::priceUnits(deal.price), deal.quantity, deal.kind == feed::DealKind::Auction};
    if (print.price <= 0 || print.quantity <= 0)
        return;
    if (deal.kind != feed::DealKind::BuyerInitiated)
        hit(bids, print, fills);
    if (deal.kind != feed::DealKind::SellerInitiated)
        hit(asks, print, fills);
    if (deal.kind == feed::DealKind::SellerInitiated)
        bids.takeOff(print.price, print.quantity);
    if (deal.kind == feed::DealKind::BuyerInitiated)
        asks.takeOff(print.price, print.quantity);
}

/// Who moved last shows by the side of the book that the last price lies on; between them it may have been either.
void PaperQueue::takeVolume(const feed::QuoteSnapshot &quote, std::vector<Fill> &fills)
{
    const qint64 before = std::exchange(lastVolume, quote.volume);
    if (before != feed::absent<qint64> && quote.volume < before) { // another day
        bids.taken.clear();
        asks.taken.clear();
    }
    if (hasDeals || before == feed::absent<qint64> || quote.volume == feed::absent<qint64> || quote.volume <= before)
        return;
    const bool isAuction = isAuctionAhead || quote.phase == feed::TradingPhase::OpeningAuction ||
                           quote.phase == feed::TradingPhase::BeforeContinuous;
    const bool isOpening = isAuction && before == 0 && quote.open != feed::absent<double> && quote.open > 0;
    const double price = isOpening ? quote.open : quote.last;
    if ((!isAuction && !isMatching) || price == feed::absent<double> || price <= 0)
        return;
    const Print print{feed::priceUnits(price), quote.volume - before, isAuction};
    const bool tookAsk = !asks.levels.empty() && print.price >= asks.levels.front().price;
    const bool tookBid = !bids.levels.empty() && print.price <= bids.levels.front().price;
    if (isAuction || !tookAsk || tookBid)
        hit(bids, print, fills);
    if (isAuction || !tookBid || tookAsk)
        hit(asks, print, fills);
}

void PaperQueue::takeQuote(const feed::QuoteSnapshot &quote, std::vector<Fill> &fills, bool isOpen)
{
    takeVolume(quote, fills);
    bids.takeLevels(quote.bids);
    asks.takeLevels(quote.asks);
    mostLevels = std::max({mostLevels, bids.levels.size(), asks.levels.size()});
    bids.isWhole = bids.levels.size() < mostLevels;
    asks.isWhole = asks.levels.size() < mostLevels;
    const bool isCrossed =
        !bids.levels.empty() && !asks.levels.empty() && bids.levels.front().price >= asks.levels.front().price;
    const bool isTrading = quote.phase == feed::TradingPhase::Continuous || quote.phase == feed::TradingPhase::Unknown;
    isMatching = isOpen && isTrading && !isCrossed;
    // Between the end of the opening auction and the continuous session its deals are told, but nothing trades.
    isAuctionAhead = isAuctionPhase(quote.phase) ? quote.phase != feed::TradingPhase::BeforeContinuous ||
                                                       quote.volume == feed::absent<qint64> || quote.volume == 0
                                                 : isTrading && isCrossed;
    if (!isMatching)
        return;
    for (const auto &[own, other] : {std::pair(&bids, &asks), std::pair(&asks, &bids)}) {
        other->returnTaken();
        for (Resting &order : own->orders) {
            take(*other, order, order.hasArrived ? order.price : 0, fills);
            order.hasArrived = true;
        }
        own->dropFilled();
        own->shortenQueues();
    }
}

} // namespace trading
