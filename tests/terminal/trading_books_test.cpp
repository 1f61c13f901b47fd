#include <gtest/gtest.h>
#include <map>

#include "trading_futureledger.h"
#include "trading_random.h"

using namespace tradingtest;
using feed::Side;
using trading::Money;
using trading::PaperBroker;
using trading::PositionSide;

namespace {

/// Every change of a desk, kept the way a file keeps it.
class Archive
{
public:
    void take(const trading::DeskChange &change)
    {
        for (const trading::Account &account : change.accounts)
            accounts[account.id] = account;
        for (const trading::PaperOrder &order : change.orders)
            orders[order.id] = order;
        deals.insert(deals.end(), change.deals.begin(), change.deals.end());
        for (const trading::Position &position : change.positions) {
            const auto key = std::make_tuple(position.account, position.code, position.side);
            if (position.quantity() == 0)
                positions.erase(key);
            else
                positions[key] = position;
        }
        settlements.insert(settlements.end(), change.settlements.begin(), change.settlements.end());
    }

    trading::DeskState state() const
    {
        trading::DeskState state;
        for (const auto &[id, account] : accounts)
            state.accounts.push_back(account);
        for (const auto &[id, order] : orders)
            if (order.day == accounts.at(order.account).day)
                state.orders.push_back(order);
        for (const auto &[key, position] : positions)
            state.positions.push_back(position);
        state.lastOrder = orders.empty() ? 0 : orders.rbegin()->first;
        state.lastDeal = qint64(deals.size());
        return state;
    }

    std::map<std::string, trading::Account> accounts;
    std::map<qint64, trading::PaperOrder> orders;
    std::vector<trading::PaperDeal> deals;
    std::map<std::tuple<std::string, std::string, PositionSide>, trading::Position> positions;
    std::vector<trading::Settlement> settlements;
};

/// Every order held against its deals, and the stock account worked out anew from them by rules written down a second
/// time.
class StockRecount
{
public:
    StockRecount(const Archive &archive, const std::map<std::string, Money> &last)
    {
        for (const trading::PaperDeal &deal : archive.deals)
            add(deal);
        for (const auto &[id, order] : archive.orders)
            chargeAndFreeze(order, archive.accounts.at(order.account).day);
        for (const auto &[code, quantity] : net)
            value += quantity * last.at(code);
    }

    std::string fundsText() const
    {
        return trading::moneyText(cash + value).toStdString() + ' ' + trading::moneyText(cash - frozen).toStdString() +
               ' ' + trading::moneyText(frozen).toStdString();
    }

    std::map<std::string, qint64> net; ///< by code

private:
    struct Sum
    {
        qint64 quantity = 0;
        Money amount = 0;
        Money charges = 0;
    };

    void add(const trading::PaperDeal &deal)
    {
        if (deal.account == "S1") {
            const int sign = deal.side == Side::Buy ? 1 : -1;
            net[deal.code] += sign * deal.quantity;
            cash -= sign * deal.amount;
        }
        Sum &sum = sums[deal.order];
        sum.quantity += deal.quantity;
        sum.amount += deal.amount;
        sum.charges += deal.charges.total();
    }

    /// To the cent, halves upwards, of hundred-thousandths.
    static Money share(Money amount, Money hundredThousandths)
    {
        return (amount * hundredThousandths + 5'000'000) / 10'000'000 * 100;
    }
    static Money charges(Side side, Money amount)
    {
        return std::max<Money>(50'000, share(amount, 25)) + share(amount, 1) +
               (side == Side::Sell ? share(amount, 50) : 0);
    }

    void chargeAndFreeze(const trading::PaperOrder &order, int day)
    {
        const Sum sum = sums[order.id];
        EXPECT_EQ(sum.quantity, order.filled.quantity) << "order " << order.id;
        EXPECT_EQ(sum.amount, order.filled.amount) << "order " << order.id;
        EXPECT_EQ(sum.charges, order.charges.total()) << "order " << order.id;
        if (order.account != "S1")
            return;
        const Money fees = sum.quantity == 0 ? 0 : charges(order.side, sum.amount);
        EXPECT_EQ(fees, sum.charges) << "order " << order.id;
        cash -= fees;
        if (order.isOpen() && order.day == day && order.side == Side::Buy) {
            const Money open = order.price / 100 * order.openQuantity();
            frozen += open + charges(order.side, sum.amount + open) - fees;
        }
    }

    std::map<qint64, Sum> sums;
    Money cash = 1'000'000 * trading::yuan;
    Money value = 0;
    Money frozen = 0;
};

/// Everything that a restart has to bring back.
std::string booksText(const PaperBroker &broker)
{
    std::string text;
    for (const char *account : {"S1", "F1"}) {
        const trading::Funds funds = broker.accounts().at(account).funds();
        text += fundsText(broker, account) + ' ' + trading::moneyText(funds.margin).toStdString() + '\n' +
                positionsText(broker, account);
        for (const auto &[key, position] : broker.accounts().at(account).positions())
            text += std::to_string(position.old.held) + ' ' + std::to_string(position.today.held) + '\n';
    }
    for (const auto &[id, order] : broker.orders())
        if (order.isOpen())
            text += std::to_string(id) + ' ' + std::to_string(order.openQuantity()) + '\n';
    return text;
}

/// What a profit counts from is the cost of what is left: what was earned and what is still to be earned is all that
/// the account has gained. Of a future the same holds from its opening on, settlements or not.
std::string profitText(const PaperBroker &broker, const Archive &archive, const char *account)
{
    const trading::AccountBook &book = broker.accounts().at(account);
    const bool isStock = book.account().kind == trading::AccountKind::Stock;
    Money gained = 0;
    for (const trading::PaperDeal &deal : archive.deals)
        if (deal.account == account)
            gained += deal.realised - (isStock && deal.side == Side::Buy ? 0 : deal.charges.total());
    for (const trading::Settlement &settlement : archive.settlements)
        if (settlement.account == account)
            gained += settlement.profit;
    for (const auto &[key, position] : book.positions()) {
        const Money value = book.lastPrice(key.first) / 100 * position.quantity() * position.multiplier;
        gained +=
            (key.second == PositionSide::Long ? 1 : -1) * (value - (isStock ? position.openCost : position.basis()));
    }
    return trading::moneyText(book.account().initial + gained).toStdString();
}

std::vector<trading::PaperOrder> openFutures(const PaperBroker &broker)
{
    std::vector<trading::PaperOrder> open;
    for (const auto &[id, order] : broker.orders())
        if (order.account == "F1" && order.isOpen())
            open.push_back(order);
    return open;
}

/// Values of one lot or share by code.
std::map<std::string, Money> valuesOf(RandomTrading &market, const std::vector<qint64> &ticks)
{
    std::map<std::string, Money> values;
    for (size_t i = 0; i < ticks.size(); ++i)
        values[market.instruments[i].code] =
            feed::priceUnits(market.priceOf(int(i), ticks[i])) / 100 * market.instruments[i].multiplier;
    return values;
}

/// Last prices and nothing to trade with.
void show(PaperBroker &broker, RandomTrading &market, qint64 time)
{
    for (size_t i = 0; i < market.instruments.size(); ++i)
        broker.takeQuote(quote(int(i), time, {}, {}, market.priceOf(int(i), market.prices[i])));
}

} // namespace

TEST(TradingBooks, AgreeWithARecountOfTheDealsAfterRandomDays)
{
    for (unsigned seed = 1; seed <= 6; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomTrading market(seed);
        Archive archive;
        FutureLedger ledger(1'000'000 * trading::yuan);
        PaperBroker broker;
        broker.openAccount(stockAccount());
        broker.openAccount(futureAccount());
        for (const feed::Instrument &instrument : market.instruments)
            broker.takeInstrument(instrument);
        std::string dayStart = "1000000.00";
        int refused = 0;
        for (const int day : {monday, tuesday, 20240320, 20240321, friday, nextMonday}) {
            for (int second = 0; second < 1500; ++second) {
                const qint64 time = at(day, 9 + second / 1200, 30 + second % 1200 / 60, second % 60);
                broker.takeQuote(market.nextQuote(time));
                broker.takeDeal(market.nextDeal(time));
                const PaperBroker::Answer answer = broker.submit(market.nextRequest());
                refused += answer.order == 0;
                if (answer.order > 0)
                    ledger.takeOrder(broker.orders().at(answer.order));
                if (market.below(3) > 0)
                    broker.confirm(answer.order);
                if (!broker.orders().empty() && market.below(2) == 0)
                    broker.cancel(broker.orders().rbegin()->first - market.below(30));
                const trading::DeskChange change = broker.takeChanges();
                archive.take(change);
                for (const trading::PaperDeal &deal : change.deals) {
                    const trading::PaperOrder &order = archive.orders.at(deal.order);
                    EXPECT_TRUE(deal.side == Side::Buy ? deal.price <= order.price : deal.price >= order.price);
                    if (deal.account == "F1")
                        ledger.takeDeal(deal, deal.code == "rb2410" ? 10 : 300);
                }
            }
            show(broker, market, at(day, 10, 10));
            archive.take(broker.takeChanges());
            const auto last = valuesOf(market, market.prices);
            const StockRecount recount(archive, last);
            ASSERT_EQ(fundsText(broker, "S1"), recount.fundsText()) << day;
            for (const auto &[key, position] : broker.accounts().at("S1").positions())
                ASSERT_EQ(position.quantity(), recount.net.at(key.first)) << day;
            const trading::Funds funds = broker.accounts().at("F1").funds();
            ASSERT_EQ(trading::moneyText(funds.total - funds.profitToday).toStdString(), dayStart) << day;
            ASSERT_EQ(trading::moneyText(funds.balance).toStdString() + ' ' +
                          trading::moneyText(funds.margin).toStdString() + ' ' +
                          trading::moneyText(funds.available).toStdString(),
                      ledger.fundsText(last, openFutures(broker)))
                << day;
            ASSERT_EQ(positionsText(broker, "F1"), ledger.positionsText()) << day;
            ASSERT_EQ(profitText(broker, archive, "S1"),
                      fundsText(broker, "S1").substr(0, fundsText(broker, "S1").find(' ')));
            ASSERT_EQ(profitText(broker, archive, "F1"), trading::moneyText(funds.total).toStdString());

            PaperBroker again;
            ASSERT_TRUE(again.restore(archive.state()));
            for (const trading::PaperOrder &order : archive.state().orders)
                EXPECT_NE(again.orders().at(order.id).status, feed::OrderStatus::Sending);
            for (const feed::Instrument &instrument : market.instruments)
                again.takeInstrument(instrument);
            show(again, market, at(day, 10, 10));
            ASSERT_EQ(booksText(again), booksText(broker)) << day;
            market.endDay();
            const auto settled = valuesOf(market, {market.settlements.begin(), market.settlements.end()});
            ledger.endDay(settled);
            dayStart = ledger.fundsText(settled, {});
            dayStart.erase(dayStart.find(' '));
        }
        EXPECT_GT(archive.deals.size(), 500u);
        EXPECT_GT(archive.settlements.size(), 5u);
        EXPECT_GT(refused, 500);
    }
}
