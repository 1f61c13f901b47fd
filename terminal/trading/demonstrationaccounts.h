#pragma once

#include <map>
#include <string>
#include <vector>

#include "trading/accountsource.h"

namespace trading {

/// Accounts that show what positions and funds look like while nobody trades: the market's deals in stocks are dealt
/// out to them. A plain value class; one thread.
///
/// The rule: of n accounts the deal with the feed's number e belongs to account e mod n. Where the seller came last the
/// account sells, as much of it as it holds; in all other deals it buys, unless its cash does not pay for the whole. It
/// trades at the deal's price, pays no charges, and may sell on the day on which it bought. What it sells takes its
/// part of the position's cost along, rounded down to a hundredth of a cent.
class DemonstrationAccounts final : public AccountSource
{
public:
    explicit DemonstrationAccounts(int count = 5, Money initial = 50'000'000 * yuan);
    ~DemonstrationAccounts() override;
    DemonstrationAccounts(const DemonstrationAccounts &) = delete;
    DemonstrationAccounts &operator=(const DemonstrationAccounts &) = delete;

    /// The market, in the order of its events. An instrument comes before its deals and quotes.
    void takeInstrument(const feed::Instrument &instrument);
    void takeDeal(const feed::Deal &deal);
    void takeQuote(const feed::QuoteSnapshot &quote);

    const std::map<std::string, AccountBook> &books() const override { return accounts; }
    AccountChanges takeChanges() override;

private:
    const feed::Instrument *known(int index) const;
    void trade(AccountBook &book, const feed::Instrument &instrument, const feed::Deal &deal);
    void setLastPrice(const feed::Instrument &instrument, double price);
    void noteChange(const AccountBook &book, const std::string &code);

    const TradingRules rules; ///< free of charge
    std::map<std::string, AccountBook> accounts;
    std::vector<AccountBook *> sequence;
    std::vector<feed::Instrument> instruments; ///< by the feed's index; without a code where it was never told
    AccountChanges changes;
};

} // namespace trading
