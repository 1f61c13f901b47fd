#pragma once

#include <QtGlobal>

#include <array>
#include <limits>
#include <string>

/// Plain values of market data. No thread, no ownership; everything may be copied.
/// Times are milliseconds since 1970-01-01 UTC. Prices are in the instrument's currency per unit, quantities in shares
/// (lots for futures). A value that is not known is the largest of its type, as everywhere in this program.
namespace feed {

template <typename T>
constexpr T absent = std::numeric_limits<T>::max();

/// Milliseconds by which clocks in China are ahead of UTC.
constexpr qint64 chinaOffset = 8 * 60 * 60 * 1000;

/// Codes as the record types store them.
enum class Side : char
{
    Buy = '0',
    Sell = '1'
};

enum class OrderStatus : char
{
    NotSent = '0',        ///< 未报
    Sending = '1',        ///< 待报
    Accepted = '2',       ///< 已报
    Cancelling = '3',     ///< 已报待撤
    PartCancelling = '4', ///< 部成待撤
    PartCancelled = '5',  ///< 部撤: a part was filled, the rest withdrawn
    Cancelled = '6',      ///< 已撤
    PartFilled = '7',     ///< 部成
    Filled = '8',         ///< 已成
    Rejected = '9'        ///< 废单
};

/// Who moved last in a deal. Auctions have no such side.
enum class DealKind : char
{
    Auction = 0,
    BuyerInitiated = 1,
    SellerInitiated = 2
};

enum class InstrumentKind : char
{
    Stock,
    Fund,
    Bond,
    Future
};

/// The number is the exchanges' phase code.
enum class TradingPhase : char
{
    BeforeOpening = 0,
    OpeningAuction = 1,
    BeforeContinuous = 2,
    Continuous = 3,
    LunchBreak = 4,
    ClosingAuction = 5,
    Closed = 6,
    JustClosed = 10,
    AfterHours = 11,
    Unknown = std::numeric_limits<char>::max()
};

struct Instrument
{
    int index = 0;        ///< dense, from 0: place of the instrument in its feed
    std::string code;     ///< as recorded, "605580.SH", "AP010"
    std::string name;     ///< UTF-8, empty where no file tells it
    std::string exchange; ///< "SH", "SZ", "BJ", for futures "CZCE" and so on; empty when unknown
    InstrumentKind kind = InstrumentKind::Stock;
    int priceDecimals = 2;
    double tick = 0.01;
    int lot = 100;      ///< smallest regular step of a buy quantity
    int multiplier = 1; ///< units per quantity, the contract size of a future
    double previousClose = absent<double>;
    double previousSettlement = absent<double>; ///< futures only
    double upperLimit = absent<double>;
    double lowerLimit = absent<double>;
};

struct OrderState
{
    int entry = 0; ///< dense, from 0, in order of first appearance: place among the feed's orders and sequence of entry
    int instrument = 0;
    int day = 0;     ///< trading day as yyyymmdd
    int channel = 0; ///< exchange channel that numbered the order
    qint64 orderNo = 0;
    Side side = Side::Buy;
    OrderStatus status = OrderStatus::Accepted;
    bool isListed = false;         ///< false while only its deals and cancels are known
    double price = absent<double>; ///< absent for an order that is not listed, and at no price
    qint64 quantity = 0;           ///< filled + cancelled + what is still open
    qint64 filled = 0;
    qint64 cancelled = 0;
    double amount = 0; ///< sum of price x quantity x multiplier of its deals
    qint64 firstTime = 0;
    qint64 lastTime = 0;

    qint64 openQuantity() const { return quantity - filled - cancelled; }
    /// The status that follows from the quantities of an order that the exchange took.
    OrderStatus statusOfQuantities() const;
};

struct Deal
{
    int entry = 0; ///< dense, from 0, in order of appearance: place among the feed's deals and sequence of entry
    int instrument = 0;
    int day = 0;
    int channel = 0;
    qint64 sequence = 0; ///< number of the deal in its channel
    DealKind kind = DealKind::Auction;
    double price = 0;
    qint64 quantity = 0;
    double amount = 0;
    qint64 buyOrderNo = 0;
    qint64 sellOrderNo = 0;
    qint64 time = 0;
};

/// One price level. A level that does not exist has an absent price.
struct QuoteLevel
{
    double price = absent<double>;
    qint64 quantity = absent<qint64>;
    int orders = absent<int>; ///< how many orders stand there, where known
};

struct QuoteSnapshot
{
    static constexpr int depth = 10;

    int instrument = 0;
    qint64 time = 0;
    TradingPhase phase = TradingPhase::Unknown;
    double last = absent<double>;
    double previousClose = absent<double>;
    double previousSettlement = absent<double>;
    double open = absent<double>;
    double high = absent<double>;
    double low = absent<double>;
    double upperLimit = absent<double>;
    double lowerLimit = absent<double>;
    qint64 volume = absent<qint64>;
    double turnover = absent<double>;
    qint64 openInterest = absent<qint64>;
    std::array<QuoteLevel, depth> bids; ///< best first
    std::array<QuoteLevel, depth> asks; ///< best first
};

/// What prices of the day are compared with: of futures the settlement price, else the previous close, as the quote
/// tells it or else the instrument; absent when neither knows.
double referencePrice(const QuoteSnapshot &quote, const Instrument &instrument);

/// Unique text of an order in its feed: day, exchange, channel, order number.
std::string orderKey(const OrderState &order, const Instrument &instrument);
/// Unique text of a deal in its feed: day, exchange, channel, sequence.
std::string dealKey(const Deal &deal, const Instrument &instrument);

} // namespace feed
