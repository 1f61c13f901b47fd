#pragma once

#include "feed/marketdata.h"
#include "trading/money.h"

#include <string>
#include <vector>

/// Paper trading: what a desk keeps. Plain values, no thread. Prices are feed::priceUnits, quantities shares or lots,
/// times milliseconds since 1970 UTC, days yyyymmdd. Codes are those of the record types.
namespace trading {

enum class AccountKind : char
{
    Stock = 0,
    Future = 1
};

/// What an order does to the position. Stocks are opened by buying and closed by selling.
enum class Offset : char
{
    Open = '0',
    Close = '1',
    CloseToday = '3',
    CloseYesterday = '4'
};

enum class PositionSide : char
{
    Long = '0',
    Short = '1'
};

struct Account
{
    std::string id;
    std::string name; ///< UTF-8
    AccountKind kind = AccountKind::Stock;
    int day = 0;         ///< trading day that its books stand at; 0 before the first
    Money initial = 0;   ///< what it was opened with
    Money balance = 0;   ///< stocks: cash; futures: equity at the last settlement, with closed profits and fees since
    Money dayStart = 0;  ///< equity at the start of the day
    Money soldToday = 0; ///< proceeds of stocks that cannot be withdrawn before the next day
};

struct OrderRequest
{
    std::string account;
    std::string code;
    feed::Side side = feed::Side::Buy;
    Offset offset = Offset::Open; ///< futures only
    double price = feed::absent<double>;
    qint64 quantity = 0;
};

/// What exchanges, state and broker charge, each to the cent.
struct Charges
{
    Money commission = 0;
    Money stampDuty = 0;
    Money transferFee = 0;

    Money total() const { return commission + stampDuty + transferFee; }
};

/// What has been filled of an order. The part that closed positions of the same day may cost a fee of its own.
struct Filled
{
    qint64 quantity = 0;
    Money amount = 0; ///< exact; what deals move is rounded to the cent, of all of it
    qint64 todayQuantity = 0;
    Money todayAmount = 0;
};

struct PaperOrder
{
    qint64 id = 0; ///< dense, from 1, in order of entry, over all days of the desk
    std::string account;
    std::string code;
    std::string name;
    std::string exchange;
    int day = 0;
    feed::Side side = feed::Side::Buy;
    Offset offset = Offset::Open;
    qint64 price = 0;
    qint64 quantity = 0;
    qint64 cancelled = 0;
    Filled filled;
    Charges charges;
    qint64 heldOld = 0;   ///< still set aside in the position, of what stood there before the day
    qint64 heldToday = 0; ///< the same, of what was opened on the day
    feed::OrderStatus status = feed::OrderStatus::Sending;
    qint64 entryTime = 0;
    qint64 updateTime = 0;
    std::string remark; ///< why it ended, where it did not end by itself; UTF-8

    qint64 openQuantity() const { return quantity - filled.quantity - cancelled; }
    bool isOpen() const;
    bool opensPosition() const { return offset == Offset::Open; }
};

struct PaperDeal
{
    qint64 id = 0; ///< dense, from 1, over all days of the desk
    qint64 order = 0;
    std::string account;
    std::string code;
    std::string name;
    std::string exchange;
    int day = 0;
    feed::Side side = feed::Side::Buy;
    Offset offset = Offset::Open;
    qint64 price = 0;
    qint64 quantity = 0;
    Money amount = 0; ///< to the cent
    Charges charges;
    Money realised = 0; ///< profit of what it closed, before charges; 0 for one that opens
    qint64 time = 0;
};

/// A part of a position.
struct Lots
{
    qint64 quantity = 0;
    Money basis = 0; ///< what its profit counts from: cost, or for futures the value at the last settlement
    qint64 held = 0; ///< set aside by open orders; not stored, follows from them
};

struct Position
{
    std::string account;
    std::string code;
    std::string name;
    std::string exchange;
    PositionSide side = PositionSide::Long;
    feed::InstrumentKind kind = feed::InstrumentKind::Stock;
    int multiplier = 1;
    Lots old;             ///< from before the day
    Lots today;           ///< bought or opened on the day
    Money openCost = 0;   ///< what all of it was opened at; stocks: with charges
    qint64 lastPrice = 0; ///< 0 before the first; as of the last change that was stored

    qint64 quantity() const { return old.quantity + today.quantity; }
    Money basis() const { return old.basis + today.basis; }
};

/// What a future's profit came to when a day was closed: it moved into the balance, and the position goes on from
/// `price`.
struct Settlement
{
    std::string account;
    std::string code;
    PositionSide side = PositionSide::Long;
    int day = 0;
    qint64 quantity = 0;
    qint64 price = 0;
    Money profit = 0;
};

/// An account as it stood when a day was closed.
struct DayClose
{
    std::string account;
    int day = 0;
    Money balance = 0;
    Money equity = 0;
};

/// Money of an account at the last prices.
struct Funds
{
    Money balance = 0;
    Money total = 0; ///< assets or equity
    Money available = 0;
    Money frozen = 0; ///< in open orders
    Money withdrawable = 0;
    Money positionValue = 0;
    Money floating = 0; ///< profit that is not realised
    Money margin = 0;
    Money profitToday = 0;
};

/// Everything that changed in one go; stored whole or not at all. Orders, positions and accounts come with their latest
/// values; a position without quantity is gone.
struct DeskChange
{
    std::vector<Account> accounts;
    std::vector<PaperOrder> orders;
    std::vector<PaperDeal> deals;
    std::vector<Position> positions;
    std::vector<Settlement> settlements;
    std::vector<DayClose> days;

    bool isEmpty() const;
};

/// What a desk starts from: accounts, positions, and orders and deals of each account's present day.
struct DeskState
{
    std::vector<Account> accounts;
    std::vector<PaperOrder> orders;
    std::vector<PaperDeal> deals;
    std::vector<Position> positions;
    qint64 lastOrder = 0; ///< highest number given so far
    qint64 lastDeal = 0;
};

} // namespace trading
