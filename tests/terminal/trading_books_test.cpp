#include <array>
#include <gtest/gtest.h>
#include <map>

#include "trading_futureledger.h"
#include "trading_random.h"

using namespace tradingtest;
using feed::Side;
using trading::Money;
using trading::Offset;
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

/// The books worked out anew from the deals alone, by rules written down a second time.
class Recount
{
public:
    Recount(const Archive &archive, const RandomTrading &market)
    {
        for (const trading::PaperDeal &deal : archive.deals)
            add(deal);
        for (const auto &[id, order] : archive.orders)
            chargeAndFreeze(order, archive.accounts.at(order.account).day);
        for (const trading::Settlement &settlement : archive.settlements)
            settled += settlement.profit;
        for (size_t i = 0; i < market.instruments.size(); ++i)
            last[market.instruments[i].code] =
                feed::priceUnits(market.priceOf(int(i), market.prices[i])) / 100 * market.instruments[i].multiplier;
    }

    std::string stockText() const
    {
        const Money cash = 1'000'000 * trading::yuan + stockFlow - stockFees;
        Money value = 0;
        for (const auto &[key, quantity] : net)
            if (isStock(key.first))
                value += quantity * last.at(key.first);
        return trading::moneyText(cash + value).toStdString() + ' ' +
               trading::moneyText(cash - stockFrozen).toStdString() + ' ' +
               trading::moneyText(stockFrozen).toStdString();
    }

    /// Equity knows no settlements: money that has come in and gone out, and what is held at the last prices.
    std::string futureText() const
    {
        Money equity = 1'000'000 * trading::yuan - futureFees + futureFlow;
        for (const auto &[key, quantity] : net)
            if (!isStock(key.first))
                equity += (key.second == PositionSide::Long ? quantity : -quantity) * last.at(key.first);
        return trading::moneyText(equity).toStdString();
    }
    Money futureBalance() const { return 1'000'000 * trading::yuan - futureFees + realised + settled; }

    std::string positionsText() const
    {
        std::string text;
        for (const auto &[key, quantity] : net)
            if (quantity != 0)
                text += key.first + (key.second == PositionSide::Long ? " long " : " short ") +
                        std::to_string(quantity) + '\n';
        return text;
    }

    static bool isStock(const std::string &code) { return code.find('.') != std::string::npos; }

private:
    using Key = std::pair<std::string, PositionSide>;

    static Key keyOf(const std::string &code, Side side, Offset offset)
    {
        if (isStock(code))
            return {code, PositionSide::Long};
        const bool opens = offset == Offset::Open;
        return {code, (side == Side::Buy) == opens ? PositionSide::Long : PositionSide::Short};
    }

    void add(const trading::PaperDeal &deal)
    {
        const bool grows = isStock(deal.code) ? deal.side == Side::Buy : deal.offset == Offset::Open;
        net[keyOf(deal.code, deal.side, deal.offset)] += grows ? deal.quantity : -deal.quantity;
        const Money flow = deal.side == Side::Sell ? deal.amount : -deal.amount;
        (isStock(deal.code) ? stockFlow : futureFlow) += flow;
        if (!isStock(deal.code))
            realised += deal.realised;
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
    static Money stockCharges(Side side, Money amount)
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
        if (!isStock(order.code)) {
            futureFees += sum.charges;
            return;
        }
        const Money fees = sum.quantity == 0 ? 0 : stockCharges(order.side, sum.amount);
        EXPECT_EQ(fees, sum.charges) << "order " << order.id;
        stockFees += fees;
        if (order.isOpen() && order.day == day && order.side == Side::Buy) {
            const Money open = order.price / 100 * order.openQuantity();
            stockFrozen += open + stockCharges(order.side, sum.amount + open) - fees;
        }
    }

    struct Sum
    {
        qint64 quantity = 0;
        Money amount = 0;
        Money charges = 0;
    };

    std::map<Key, qint64> net;
    std::map<qint64, Sum> sums;
    std::map<std::string, Money> last; ///< value of one
    Money stockFlow = 0;
    Money stockFees = 0;
    Money stockFrozen = 0;
    Money futureFlow = 0;
    Money futureFees = 0;
    Money realised = 0;
    Money settled = 0;
};

std::string quantitiesText(const PaperBroker &broker, const std::string &account)
{
    std::string text;
    for (const auto &[key, position] : broker.accounts().at(account).positions())
        text += key.first + (key.second == PositionSide::Long ? " long " : " short ") +
                std::to_string(position.quantity()) + '\n';
    return text;
}

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
            const Recount recount(archive, market);
            ASSERT_EQ(fundsText(broker, "S1"), recount.stockText()) << day;
            const trading::Funds funds = broker.accounts().at("F1").funds();
            ASSERT_EQ(trading::moneyText(funds.total).toStdString(), recount.futureText()) << day;
            ASSERT_EQ(funds.balance, recount.futureBalance()) << day;
            const auto last = valuesOf(market, market.prices);
            ASSERT_EQ(trading::moneyText(funds.balance).toStdString() + ' ' +
                          trading::moneyText(funds.margin).toStdString() + ' ' +
                          trading::moneyText(funds.available).toStdString(),
                      ledger.fundsText(last, openFutures(broker)))
                << day;
            ASSERT_EQ(positionsText(broker, "F1"), ledger.positionsText()) << day;
            ASSERT_EQ(profitText(broker, archive, "S1"),
                      fundsText(broker, "S1").substr(0, fundsText(broker, "S1").find(' ')));
            ASSERT_EQ(profitText(broker, archive, "F1"), trading::moneyText(funds.total).toStdString());
            ASSERT_EQ(quantitiesText(broker, "S1") + quantitiesText(broker, "F1"), recount.positionsText()) << day;

            PaperBroker again;
            ASSERT_TRUE(again.restore(archive.state()));
            for (const trading::PaperOrder &order : archive.state().orders)
                EXPECT_NE(again.orders().at(order.id).status, feed::OrderStatus::Sending);
            for (const feed::Instrument &instrument : market.instruments)
                again.takeInstrument(instrument);
            show(again, market, at(day, 10, 10));
            ASSERT_EQ(booksText(again), booksText(broker)) << day;
            market.endDay();
            ledger.endDay(valuesOf(market, {market.settlements.begin(), market.settlements.end()}));
        }
        EXPECT_GT(archive.deals.size(), 500u);
        EXPECT_GT(archive.settlements.size(), 5u);
        EXPECT_GT(refused, 500);
    }
}

TEST(TradingBooks, AreNotTakenUpWhenTheyContradictEachOther)
{
    trading::DeskState good;
    good.accounts = {stockAccount()};
    trading::Position position;
    position.account = "S1";
    position.code = "600001.SH";
    position.old.quantity = 100;
    good.positions = {position};
    trading::PaperOrder order;
    order.id = 1;
    order.account = "S1";
    order.code = "600001.SH";
    order.side = Side::Sell;
    order.offset = Offset::Close;
    order.price = feed::priceUnits(10);
    order.quantity = order.heldOld = 100;
    good.orders = {order};
    EXPECT_TRUE(PaperBroker().restore(good));

    trading::DeskState heldTwice = good;
    heldTwice.orders.push_back(order);
    heldTwice.orders[1].id = 2;
    EXPECT_FALSE(PaperBroker().restore(heldTwice));
    trading::DeskState unknownAccount = good;
    unknownAccount.positions[0].account = "S2";
    EXPECT_FALSE(PaperBroker().restore(unknownAccount));
    trading::DeskState overfilled = good;
    overfilled.orders[0].filled.quantity = 200;
    EXPECT_FALSE(PaperBroker().restore(overfilled));
    trading::DeskState negative = good;
    negative.positions[0].today.quantity = -100;
    EXPECT_FALSE(PaperBroker().restore(negative));
}
