#pragma once

#include <map>
#include <string>
#include <unordered_map>

#include "trading/accountsource.h"

namespace trading {
class PaperBroker;
}

namespace terminal {

/// The accounts of a desk as its user has been told of them: what is on its way to the file is not in them yet, so that
/// nothing that is seen can be lost. They are valued at the latest prices. One thread.
class ToldAccounts : public trading::AccountSource
{
public:
    /// The broker outlives it; only its rules and instruments are asked for.
    explicit ToldAccounts(const trading::PaperBroker &broker);
    ~ToldAccounts() override;

    void take(const trading::DeskChange &change);
    /// feed::priceUnits.
    void setLastPrice(const std::string &code, qint64 price);
    /// Charges, margins and what orders set aside are others by now.
    void rulesChanged();

    const std::map<std::string, trading::AccountBook> &books() const override { return shown; }
    trading::AccountChanges takeChanges() override;

private:
    using PositionKey = trading::AccountBook::PositionKey;

    /// What was told of an account last.
    struct Told
    {
        trading::Account account;
        std::map<PositionKey, trading::Position> positions;
        std::map<qint64, trading::PaperOrder> openOrders;
    };

    void rebuild(const std::string &account);

    const trading::PaperBroker &broker;
    std::map<std::string, Told> told;
    std::map<std::string, trading::AccountBook> shown;
    std::unordered_map<std::string, qint64> lastPrices;
    trading::AccountChanges changes;
};

} // namespace terminal
