#pragma once

/// Record types and their fields. One id means one field in every type; types of one kind (all orders, all deals) share
/// the ids. What a field is called, how it is shown and for whom stands in the tables of standardtypes_*.cpp.
namespace refhost {

enum MetaId : int
{
    MetaInstrument = 16201,  ///< nested in all others; one record per instrument, shared
    MetaMarketOrder = 16202, ///< orders of the market
    MetaMarketDeal = 16203,  ///< deals of the market
    MetaOwnOrder = 16204,    ///< orders of the user's accounts
    MetaPosition = 16205,
    MetaFunds = 16206,   ///< money of an account
    MetaOwnDeal = 16207, ///< deals of the user's accounts
    MetaQuote = 16208    ///< the present quote of an instrument
};

/// Types in brackets: L 64-bit integer, I integer, D double, S text, C one-character code, R nested record. Quantities
/// are shares or lots, prices and amounts yuan, times milliseconds since 1970 UTC. Unset fields hold no value.
enum FieldId : int
{
    InstrumentCode = 1620101, ///< S, with exchange: "600519.SH"
    InstrumentName,           ///< S
    InstrumentExchange,       ///< I, enumeration "exchange"
    InstrumentPriceDecimals,  ///< I
    InstrumentPrevClose,      ///< D
    InstrumentUpperLimit,     ///< D
    InstrumentLowerLimit,     ///< D
    InstrumentLot,            ///< I, the smallest quantity that can be bought
    InstrumentPriceTick,      ///< D
    InstrumentMultiplier,     ///< I, of futures and options
    InstrumentKind,           ///< I, one bit of KV::EFilterFlag

    OrderCode = 1620201, ///< S, with exchange
    OrderExchange,       ///< I, enumeration "exchange"
    OrderDirection,      ///< C, enumeration "direction"
    OrderOffset,         ///< C, enumeration "offset"
    OrderPrice,          ///< D, none for market orders
    OrderQuantity,       ///< L
    OrderFilled,         ///< L
    OrderCancelled,      ///< L
    OrderUnfilled,       ///< L, neither filled nor cancelled
    OrderAveragePrice,   ///< D, of what is filled
    OrderAmount,         ///< D, of what is filled
    OrderStatus,         ///< C, enumeration "orderstatus"
    OrderEntryTime,      ///< L
    OrderUpdateTime,     ///< L
    OrderAccount,        ///< S, own orders only
    OrderNumber,         ///< L, the exchange's
    OrderChannel,        ///< I
    OrderContract,       ///< S, the broker's number, own orders only
    OrderRemark,         ///< S, own orders only
    OrderSequence,       ///< I, order of entry; breaks ties of a sort
    OrderInstrument,     ///< R, MetaInstrument
    OrderKind,           ///< C, enumeration "orderkind"
    OrderDay,            ///< I, trading day yyyymmdd, own orders only

    DealCode = 1620301, ///< S, with exchange
    DealExchange,       ///< I, enumeration "exchange"
    DealDirection,      ///< C, enumeration "direction"; of the market: the side that took, none in an auction
    DealOffset,         ///< C, enumeration "offset"
    DealPrice,          ///< D
    DealQuantity,       ///< L
    DealAmount,         ///< D
    DealTime,           ///< L
    DealNumber,         ///< L, the exchange's
    DealBuyOrder,       ///< L, number of the buying order, deals of the market only
    DealSellOrder,      ///< L, number of the selling order, deals of the market only
    DealOrder,          ///< L, number of the user's order, own deals only
    DealAccount,        ///< S, own deals only
    DealChannel,        ///< I
    DealSequence,       ///< I, order of entry; breaks ties of a sort
    DealInstrument,     ///< R, MetaInstrument
    DealCommission,     ///< D, own deals only
    DealContract,       ///< S, the broker's number of the order, own deals only
    DealDay,            ///< I, trading day yyyymmdd, own deals only
    DealRealised,       ///< D, profit of what a deal closed, before fees, own deals only

    PositionCode = 1620501, ///< S, with exchange
    PositionExchange,       ///< I, enumeration "exchange"
    PositionSide,           ///< C, enumeration "side"
    PositionQuantity,       ///< L
    PositionAvailable,      ///< L, what can be sold or closed now
    PositionFrozen,         ///< L, in open orders
    PositionToday,          ///< L, bought or opened today
    PositionCostPrice,      ///< D
    PositionLastPrice,      ///< D
    PositionValue,          ///< D, at the last price
    PositionProfit,         ///< D, not realised
    PositionProfitRatio,    ///< D, 0.01 is one per cent
    PositionMargin,         ///< D
    PositionAccount,        ///< S
    PositionInstrument,     ///< R, MetaInstrument
    PositionSideName,       ///< S, the side in words, where positions of stocks and futures stand together
    PositionDayProfit,      ///< D, since the last settlement, not realised; of stocks since they were bought

    FundsAccount = 1620601, ///< S
    FundsName,              ///< S
    FundsCurrency,          ///< I, enumeration "currency"
    FundsTotal,             ///< D, total assets or equity
    FundsAvailable,         ///< D
    FundsFrozen,            ///< D, in open orders
    FundsWithdrawable,      ///< D
    FundsPositionValue,     ///< D
    FundsMargin,            ///< D
    FundsProfitToday,       ///< D
    FundsRiskRatio,         ///< D, 0.01 is one per cent
    FundsFloating,          ///< D, profit of the positions that is not realised

    QuoteCode = 1620801, ///< S, with exchange
    QuoteLast,           ///< D
    QuoteChange,         ///< D, last price less previous close
    QuoteChangeRatio,    ///< D, 0.01 is one per cent
    QuoteVolume,         ///< L, of the day
    QuoteTurnover,       ///< D, of the day
    QuoteBidPrice,       ///< D, the best one
    QuoteBidVolume,      ///< L
    QuoteAskPrice,       ///< D, the best one
    QuoteAskVolume,      ///< L
    QuoteOpen,           ///< D
    QuoteHigh,           ///< D
    QuoteLow,            ///< D
    QuotePrevClose,      ///< D, of futures the settlement price
    QuoteTime,           ///< L
    QuoteInstrument,     ///< R, MetaInstrument

    OrderRejectReason = 1621501 ///< S, own orders only
};

} // namespace refhost
