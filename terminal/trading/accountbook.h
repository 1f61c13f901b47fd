#pragma once

#include "trading/desktypes.h"
#include "trading/tradingrules.h"

#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace trading {

/// The books of one account: money, positions and what open orders set aside. Knows no market beyond the last prices
/// that it is told. One thread.
class AccountBook
{
public:
    using PositionKey = std::pair<std::string, PositionSide>; ///< code and side

    AccountBook(Account account, const TradingRules &rules);

    const Account &account() const { return state; }
    const std::map<PositionKey, Position> &positions() const { return held; }
    const Position *position(const PositionKey &key) const;
    /// The same with the last price in it.
    const Position *pricedPosition(const PositionKey &key);
    Funds funds() const;
    /// What a position of a future binds; from its value at the last settlement.
    Money margin(const Position &position) const { return rules.margin(position.code, position.basis()); }
    /// 0 where no price has been told.
    qint64 lastPrice(const std::string &code) const;

    /// What a closing order could still close, of what stood before the day and of what was opened on it.
    struct Closable
    {
        qint64 old = 0;
        qint64 today = 0;
    };
    Closable closable(const feed::Instrument &instrument, PositionSide side, Offset offset) const;
    /// What an opening order sets aside: price or margin, and charges. What it has been charged already counts less.
    Money fundsNeeded(const PaperOrder &order, const feed::Instrument &instrument) const;

    void restore(const Position &position);
    /// Sets aside what a new order needs, and for a closing one notes in the order which lots those are.
    void reserve(PaperOrder &order, const feed::Instrument &instrument);
    /// The same for an order that was reserved in an earlier run.
    void restoreReservation(const PaperOrder &order, const feed::Instrument &instrument);
    /// After the rules have changed: sets aside the money that an open order needs by them.
    void reserveAnew(const PaperOrder &order, const feed::Instrument &instrument);
    /// Frees what an ended order has not used.
    void release(PaperOrder &order);
    /// Books a fill. The deal has no number yet.
    PaperDeal fill(PaperOrder &order, const feed::Instrument &instrument, qint64 price, qint64 quantity, qint64 time);

    void setLastPrice(const std::string &code, qint64 price);
    /// The exchange's settlement price of the day before, when it differs from the price that closeDay() took.
    void resettle(const std::string &code, qint64 price, std::vector<Settlement> &settlements);
    /// Closes the account's day and begins the next. Its orders must have ended. The first day only begins. Adds to the
    /// change what a later reader could not tell from account and positions: settlements and the day's close.
    void startDay(int day, DeskChange &change);

    static PositionKey keyOf(const PaperOrder &order, feed::InstrumentKind kind);

private:
    Money valueOf(const Position &position, qint64 quantity) const;
    Money open(Position &position, Money cost, qint64 quantity);
    Money close(Position &position, Lots &lots, qint64 quantity, Money amount);
    void settle(Position &position, qint64 price, std::vector<Settlement> &settlements);
    Position &positionFor(const PaperOrder &order, const feed::Instrument &instrument);

    Account state;
    const TradingRules &rules;
    std::map<PositionKey, Position> held;
    std::unordered_map<std::string, qint64> lastPrices;
    std::unordered_map<qint64, Money> frozenOf; ///< by order
};

} // namespace trading
