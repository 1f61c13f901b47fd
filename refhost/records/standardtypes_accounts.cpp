#include "records/fieldids.h"
#include "records/standardtypes.h"

namespace refhost {

namespace {

using namespace kdservice;
constexpr int Percent = utils::FormatPercent;
constexpr int Signed = utils::FormatSign;
constexpr unsigned int Money = AlignRight | Sum | GroupedSum;

// clang-format off

std::vector<FieldDef> instrumentFields()
{
    // Code and name stand at 20 and 30 in every table that shows them, whatever the record they are nested in.
    std::vector<FieldDef> fields = {
        // id                      type       name         dec properties                visible for  format  display
        {InstrumentCode,           ExtString, "证券代码",   0, AlignCentre | Filterable, Everybody,         0, {}, {{DerivativeTraders, "合约代码"}}, TextStore::Shared, -1, {}, 20},
        {InstrumentName,           ExtString, "证券名称",   0, AlignLeft | Filterable,   Everybody,         0, {}, {{DerivativeTraders, "合约名称"}}, TextStore::Shared, -1, {}, 30},
        {InstrumentExchange,       ExtInt,    "交易所",     0, AlignCentre | Filterable, Everybody,         0, display::enumeration("exchange")},
        {InstrumentPrevClose,      ExtDouble, "昨收",       2, AlignRight | NoSumText,   Everybody,         0, display::price(), {{DerivativeTraders, "昨结算"}}},
        {InstrumentUpperLimit,     ExtDouble, "涨停",       2, AlignRight | NoSumText,   Everybody,         0, display::price()},
        {InstrumentLowerLimit,     ExtDouble, "跌停",       2, AlignRight | NoSumText,   Everybody,         0, display::price()},
        {InstrumentPriceTick,      ExtDouble, "最小变动",   2, AlignRight | NoSumText,   Everybody,         0, display::price()},
        {InstrumentLot,            ExtInt,    "交易单位",   0, AlignRight,               Everybody,         0, {}},
        {InstrumentMultiplier,     ExtInt,    "合约乘数",   0, AlignRight,               DerivativeTraders, 0, {}},
        {InstrumentPriceDecimals,  ExtInt,    "价格小数位", 0, AlignRight,               Nobody,            0, {}},
        {InstrumentKind,           ExtInt,    "证券类别",   0, AlignCentre,              Nobody,            0, {}},
    };
    return fields;
}

std::vector<FieldDef> positionFields()
{
    return {
        // id                 type       name        dec properties                        visible for        format            display
        {PositionAccount,     ExtString, "资金账号",  0, AlignCentre | Filterable,         Everybody,         0,                {}, {}, TextStore::Shared},
        {PositionCode,        ExtString, "证券代码",  0, AlignCentre | Filterable,         Everybody,         0,                {}, {{DerivativeTraders, "合约代码"}}, TextStore::Shared},
        {PositionInstrument,  ExtData,   "证券",      0, 0,                                Everybody,         0,                {}, {}, TextStore::Own, MetaInstrument, {InstrumentName}},
        {PositionSide,        ExtChar,   "持仓方向",  0, AlignCentre | Filterable,         DerivativeTraders, 0,                display::enumeration("side")},
        {PositionSideName,    ExtString, "多空",      0, AlignCentre | Filterable,         Everybody,         0,                {}, {}, TextStore::Shared},
        {PositionQuantity,    ExtLong,   "持仓数量",  0, AlignRight | Sum | GroupedSum | Flash, Everybody,         0,                {}, {{FutureTraders, "持仓手数"}, {OptionTraders, "持仓张数"}}},
        {PositionAvailable,   ExtLong,   "可用数量",  0, AlignRight | Sum | GroupedSum | Flash, Everybody,         0,                {}, {{FutureTraders, "可平手数"}, {OptionTraders, "可平张数"}}},
        {PositionFrozen,      ExtLong,   "冻结数量",  0, AlignRight | Sum | GroupedSum | SumFromZero, Everybody,         0,                {}, {{FutureTraders, "冻结手数"}, {OptionTraders, "冻结张数"}}},
        {PositionToday,       ExtLong,   "今买数量",  0, AlignRight | Sum | GroupedSum,    Everybody,         0,                {}, {{DerivativeTraders, "今仓"}}},
        {PositionCostPrice,   ExtDouble, "成本价",    3, AlignRight | NoSumText,           Everybody,         0,                {}, {{DerivativeTraders, "开仓均价"}}},
        {PositionLastPrice,   ExtDouble, "最新价",    2, AlignRight | NoSumText | Flash,   Everybody,         0,                display::comparedPrice()},
        {PositionValue,       ExtDouble, "市值",      2, Money | Flash | Bold,             Everybody,         0,                {}, {{FutureTraders, "合约价值"}}},
        {PositionProfit,      ExtDouble, "浮动盈亏",  2, Money | Flash | Bold,             Everybody,         Signed,           display::change()},
        {PositionProfitRatio, ExtDouble, "盈亏比例",  2, AlignRight | NoSumText,           Everybody,         Signed | Percent, display::change()},
        {PositionDayProfit,   ExtDouble, "持仓盈亏",  2, Money | Flash,                    Everybody,         Signed,           display::change()},
        {PositionMargin,      ExtDouble, "保证金",    2, Money,                            Everybody,         0,                {}},
        {PositionExchange,    ExtInt,    "交易所",    0, AlignCentre | Filterable,         Everybody,         0,                display::enumeration("exchange")},
    };
}

std::vector<FieldDef> fundsFields()
{
    return {
        // id                type       name        dec properties               visible for        format   display
        {FundsAccount,       ExtString, "资金账号",  0, AlignCentre | Filterable, Everybody,         0,       {}, {}, TextStore::Shared},
        {FundsName,          ExtString, "账户名称",  0, AlignLeft | Filterable,   Everybody,         0,       {}, {}, TextStore::Shared},
        {FundsCurrency,      ExtInt,    "币种",      0, AlignCentre | Filterable, Everybody,         0,       display::enumeration("currency")},
        {FundsTotal,         ExtDouble, "总资产",    2, Money | Flash | Bold,     Everybody,         0,       {}, {{FutureTraders, "动态权益"}}},
        {FundsAvailable,     ExtDouble, "可用资金",  2, Money | Flash,            Everybody,         0,       {}},
        {FundsFrozen,        ExtDouble, "冻结资金",  2, Money | SumFromZero,      Everybody,         0,       {}},
        {FundsWithdrawable,  ExtDouble, "可取资金",  2, Money,                    Everybody,         0,       {}},
        {FundsPositionValue, ExtDouble, "持仓市值",  2, Money | Flash,            Everybody,         0,       {}},
        {FundsMargin,        ExtDouble, "占用保证金", 2, Money,                   Everybody,         0,       {}},
        {FundsFloating,      ExtDouble, "持仓盈亏",  2, Money | Flash,            Everybody,         Signed,  display::change()},
        {FundsProfitToday,   ExtDouble, "当日盈亏",  2, Money | Flash | Bold,     Everybody,         Signed,  display::change()},
        {FundsRiskRatio,     ExtDouble, "风险度",    2, AlignRight | NoSumText,   DerivativeTraders, Percent, {}},
    };
}

// clang-format on

} // namespace

std::vector<TypeDef> accountTypes()
{
    return {{MetaInstrument, RecordKind::Plain, instrumentFields(), InstrumentCode},
            {MetaPosition, RecordKind::Plain, positionFields(), PositionCode},
            {MetaFunds, RecordKind::Plain, fundsFields()}};
}

} // namespace refhost
