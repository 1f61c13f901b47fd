#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QObject>
#include <optional>
#include <unordered_map>

#include "desk/desklog.h"
#include "desk/deskrecords.h"
#include "desk/exchangedays.h"
#include "desk/toldaccounts.h"
#include "trading/desk.h"
#include "window/feedpump.h"
#include "window/marketlistener.h"

namespace terminal {

/// The desk of the program: it hears the market, takes orders, and tells tables, log and whoever else of everything
/// that happened, once that is stored. GUI thread; nothing waits but open().
///
/// The simulated exchange begins with the same day each time. Its days are moved here, so that those of the desk follow
/// each other: the first one to the day that the file stands at.
class TradeDesk : public QObject, public MarketListener
{
    Q_OBJECT

public:
    enum class Market
    {
        Simulated,
        Recorded
    };

    explicit TradeDesk(Market market, QObject *parent = nullptr);
    ~TradeDesk() override;

    /// Takes up the desk of a file, or begins it; before anything else, if at all. The text tells what is wrong, empty
    /// for nothing; the desk then goes on without a file.
    QString open(const QString &path);
    /// Opens what the program knows of accounts for stocks and futures, a million for each that is new, and tells the
    /// orders and deals of the present day. To be called once, after open().
    void begin();

    const trading::Desk &desk() const { return paper; }
    /// Charges and margins from now on.
    void setRules(const trading::TradingRules &rules);
    /// Orders that belong together: all of them go out, or none. The text tells why none did; empty for sent.
    QString send(const std::vector<trading::OrderRequest> &requests);
    /// The same for withdrawing one order; an order that was not stored is withdrawn too.
    QString cancel(qint64 order);

    /// Open orders to be withdrawn; what is left out does not narrow.
    struct Choice
    {
        std::string code;
        std::optional<feed::Side> side;
        qint64 price = 0; ///< feed::priceUnits
    };
    std::vector<qint64> openOrders(const Choice &choice) const;
    /// What is left of an order, at another price: of one that opens, as much as may be ordered. Empty for an order
    /// that has ended.
    std::optional<trading::OrderRequest> remainder(qint64 order, double price) const;
    /// Why an order cannot be withdrawn and its remainder sent; empty when both can.
    QString repriceRefusal(qint64 order, double price) const;
    /// Withdraws an order and sends its remainder; an order whose remainder would be refused stays.
    QString reprice(qint64 order, double price);

    /// The latest of a code; null before it comes. Valid until the next event.
    const feed::QuoteSnapshot *quote(const std::string &code) const;
    /// Milliseconds since the market was last heard of a code; absent when it never was.
    qint64 silence(const std::string &code) const;

    /// The books as they are, for judging orders.
    const std::map<std::string, trading::AccountBook> &books() const { return paper.broker().accounts(); }
    /// The books as the user may see them: without what is not stored yet.
    ToldAccounts &toldAccounts() { return told; }

    void takeInstrument(const feed::Instrument &instrument) override;
    void takeDeal(const feed::Deal &deal) override;
    void takeQuote(const feed::QuoteSnapshot &quote) override;

Q_SIGNALS:
    void ordersChanged(const terminal::FeedPump::Records &orders);
    void dealsMade(const terminal::FeedPump::Records &deals);
    /// The account has come to another trading day: what was told of the day before is past.
    void dayBegan(const QString &account, int day);
    /// An order has ended, in whatever way.
    void ended(qint64 order);
    /// An order was filled, in whole or in part; or rejected.
    void filled(const trading::PaperDeal &deal);
    void rejected(const trading::PaperOrder &order);
    /// Something that the user wanted to send did not go out; the call itself has told him why.
    void refused();
    /// Writing the file fails, or with an empty text works again.
    void storageProblemChanged(const QString &text);

private:
    struct Heard
    {
        feed::QuoteSnapshot quote;
        bool hasQuote = false;
        qint64 at = 0; ///< by the program's clock
    };

    void take(const trading::DeskChange &change);
    QString refuse(const QString &text);
    void tell(const std::vector<trading::PaperOrder> &orders, const std::vector<trading::PaperDeal> &deals);
    void openAccounts(trading::AccountKind kind);
    qint64 moved(qint64 time);
    Heard *hear(int instrument);

    const Market market;
    trading::Desk paper;
    ToldAccounts told;
    const DeskLog log;
    DeskRecords records;
    QElapsedTimer programClock;
    std::vector<std::string> codes; ///< by the feed's index
    std::unordered_map<std::string, Heard> heard;
    ExchangeDays days; ///< simulated
};

} // namespace terminal
