#pragma once

#include <algorithm>
#include <cmath>
#include <map>
#include <string>
#include <utility>

#include "feedplayer.h"

/// The rule by which deals are dealt out to demonstration accounts once more, deal by deal, in plain arithmetic of its
/// own. Money in ten-thousandths of a yuan.
struct DealRecount
{
    struct Held
    {
        qint64 quantity = 0;
        qint64 cost = 0;
    };

    DealRecount(const PlayedFeed &played, int accounts, qint64 initial)
    {
        for (const feed::Deal &deal : played.deals) {
            const std::string account = "DEMO0" + std::to_string(deal.entry % accounts + 1);
            const std::string &code = played.instruments[static_cast<size_t>(deal.instrument)].code;
            const qint64 price = std::llround(deal.price * 100) * 100;
            qint64 &money = cash.try_emplace(account, initial).first->second;
            lastPrice[code] = price;
            Held &position = held[{account, code}];
            if (deal.kind == feed::DealKind::SellerInitiated)
                sell(position, money, price, std::min(deal.quantity, position.quantity));
            else if (price * deal.quantity <= money)
                buy(position, money, price, deal.quantity);
        }
    }

    static void buy(Held &position, qint64 &money, qint64 price, qint64 quantity)
    {
        money -= price * quantity;
        position.quantity += quantity;
        position.cost += price * quantity;
    }

    static void sell(Held &position, qint64 &money, qint64 price, qint64 quantity)
    {
        if (quantity == 0)
            return;
        money += price * quantity;
        position.cost -= position.cost * quantity / position.quantity;
        position.quantity -= quantity;
    }

    std::map<std::pair<std::string, std::string>, Held> held; ///< by account and code
    std::map<std::string, qint64> cash;                       ///< by account
    std::map<std::string, qint64> lastPrice;                  ///< by code
};
