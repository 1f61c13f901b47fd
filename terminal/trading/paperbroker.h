#pragma once

#include "trading/accountbook.h"
#include "trading/paperqueue.h"
#include "trading/refusal.h"
#include "trading/tradingrules.h"

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace trading {

/// A broker whose orders reach no exchange: it fills them against what the feed shows, and keeps the books of its
/// accounts. How orders fill is told by PaperQueue.
///
/// An order that was taken in does not trade before confirm(): until then it may not be stored yet. What changes is
/// collected for takeChanges(). When the market's clock comes into another trading day of an account, its open orders
/// end, its day is closed, and the next begins; a day may be before the last one, since recorded days can be played in
/// any order. One thread; nothing here waits.
class PaperBroker
{
public:
    explicit PaperBroker(TradingRules rules = {});
    PaperBroker(const PaperBroker &) = delete;
    PaperBroker &operator=(const PaperBroker &) = delete;

    /// Charges and margins from now on; what has been charged stays. Open orders set aside what they need by the new
    /// ones.
    void setRules(const TradingRules &newRules);
    /// To be called first, if at all. False when the books do not agree with one another; nothing is taken then.
    bool restore(const DeskState &state);
    /// Opens an account with its initial money. A known one is left as it is.
    void openAccount(const Account &account);

    /// The market, in the order of its events.
    void takeInstrument(const feed::Instrument &instrument);
    void takeDeal(const feed::Deal &deal);
    void takeQuote(const feed::QuoteSnapshot &quote);
    /// The market's clock alone.
    void takeTime(qint64 time) { advance(time); }

    struct Answer
    {
        qint64 order = 0; ///< 0 when refused
        Refusal refusal;
    };
    Answer submit(const OrderRequest &request);
    /// What submit() would refuse the request for; reserves nothing.
    Refusal check(const OrderRequest &request) const;
    /// The same for requests that are to be submitted one after the other: each is judged with what those before it set
    /// aside.
    Refusal check(const std::vector<OrderRequest> &requests) const;
    /// The order is stored: it goes into the market. Nothing for one that has ended meanwhile.
    void confirm(qint64 order);
    /// Ends an order that is not confirmed, which then was never sent.
    void reject(qint64 order, const std::string &reason);
    Refusal cancel(qint64 order);
    /// Why an order could not be withdrawn, or such a request not be sent in its place: what the order sets aside
    /// counts as free.
    Refusal checkReplacement(qint64 order, const OrderRequest &request) const;

    /// The largest quantity that check() lets pass for such a request, whose own quantity counts for nothing.
    qint64 largestQuantity(OrderRequest request) const;

    const std::map<std::string, AccountBook> &accounts() const { return books; }
    /// Orders of the accounts' present days.
    const std::map<qint64, PaperOrder> &orders() const { return dayOrders; }
    /// Null for a code that the feed has not told.
    const feed::Instrument *instrument(const std::string &code) const;
    /// Valid as long as the broker; others after setRules().
    const TradingRules &tradingRules() const { return rules; }
    /// What the code alone tells, for an instrument that the feed has not told.
    static feed::Instrument instrumentByCode(const std::string &code, const std::string &exchange);
    /// The market's clock; absent before the first event.
    qint64 now() const { return clock; }

    /// Notes positions as changed whose price has moved since they were told: a restart on a later day counts from the
    /// prices that are stored. Happens by itself every ten seconds of the market's clock.
    void tellPrices();
    bool hasChanges() const;
    /// What has changed since the call before.
    DeskChange takeChanges();

private:
    struct Market
    {
        feed::Instrument instrument;
        PaperQueue queue;
    };

    static PaperOrder orderOf(const OrderRequest &request, const feed::Instrument &instrument);
    Market *market(const std::string &code);
    Refusal checkPlace(const OrderRequest &request) const;
    bool isClosed(const feed::Instrument &instrument) const;
    Refusal checkCancel(qint64 order) const;
    AccountBook &bookOf(const PaperOrder &order) { return books.at(order.account); }
    void advance(qint64 time);
    void startDay(AccountBook &book, int day);
    void enter(Market &place, PaperOrder &order);
    void book(Market &place, const std::vector<PaperQueue::Fill> &fills);
    void end(PaperOrder &order, feed::OrderStatus status, const std::string &remark);
    void noteChange(const PaperOrder &order);

    TradingRules rules; ///< the books know where it is
    std::map<std::string, AccountBook> books;
    std::map<qint64, PaperOrder> dayOrders;
    std::vector<Market> markets; ///< by the feed's index
    std::unordered_map<std::string, size_t> indexOf;
    qint64 clock = feed::absent<qint64>;
    qint64 lastOrder = 0;
    qint64 lastDeal = 0;
    std::vector<PaperQueue::Fill> fills;

    DeskChange collected;
    std::set<qint64> changedOrders;
    std::set<std::string> changedAccounts;
    std::set<std::pair<std::string, AccountBook::PositionKey>> changedPositions;
};

} // namespace trading
