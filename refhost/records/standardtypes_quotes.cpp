#include "records/fieldids.h"
#include "records/standardtypes.h"

namespace refhost {

namespace {

using namespace kdservice;
constexpr int Percent = utils::FormatPercent;
constexpr int Signed = utils::FormatSign;
constexpr int Unit = utils::FormatUnit;
constexpr unsigned int Price = AlignRight | NoSumText;

// clang-format off

std::vector<FieldDef> quoteFields()
{
    // In the order of the columns. The name of the instrument (sequence 30) comes from the nested record.
    return {
        // id                type       name       dec properties                visible for        format            display
        {QuoteTime,        ExtLong,   "行情时间",  0, AlignCentre,               Everybody,         0,                display::time("time"), {}, TextStore::Own, -1, {}, 10},
        {QuoteCode,        ExtString, "证券代码",  0, AlignCentre | Filterable,  Everybody,         0,                {}, {{DerivativeTraders, "合约代码"}}, TextStore::Shared, -1, {}, 20},
        {QuoteInstrument,  ExtData,   "证券",      0, 0,                         Everybody,         0,                {}, {}, TextStore::Own, MetaInstrument, {InstrumentName}, 35},
        {QuoteLast,        ExtDouble, "最新价",    2, Price | Flash,             Everybody,         0,                display::comparedPrice(), {}, TextStore::Own, -1, {}, 40},
        {QuoteChange,      ExtDouble, "涨跌",      2, Price,                     Everybody,         Signed,           display::priceChange(), {}, TextStore::Own, -1, {}, 50},
        {QuoteChangeRatio, ExtDouble, "涨跌幅",    2, Price,                     Everybody,         Signed | Percent, display::change(), {}, TextStore::Own, -1, {}, 60},
        {QuoteVolume,      ExtLong,   "成交量",    0, AlignRight | NoSumText,    Everybody,         Unit,             {}, {}, TextStore::Own, -1, {}, 70},
        {QuoteTurnover,    ExtDouble, "成交额",    2, AlignRight | Sum,          Everybody,         Unit,             {}, {}, TextStore::Own, -1, {}, 80},
        {QuoteBidPrice,    ExtDouble, "买一价",    2, Price | Flash,             Everybody,         0,                display::comparedPrice(), {}, TextStore::Own, -1, {}, 90},
        {QuoteBidVolume,   ExtLong,   "买一量",    0, AlignRight | NoSumText,    Everybody,         0,                {}, {}, TextStore::Own, -1, {}, 100},
        {QuoteAskPrice,    ExtDouble, "卖一价",    2, Price | Flash,             Everybody,         0,                display::comparedPrice(), {}, TextStore::Own, -1, {}, 110},
        {QuoteAskVolume,   ExtLong,   "卖一量",    0, AlignRight | NoSumText,    Everybody,         0,                {}, {}, TextStore::Own, -1, {}, 120},
        {QuoteOpen,        ExtDouble, "今开",      2, Price,                     Everybody,         0,                display::comparedPrice(), {}, TextStore::Own, -1, {}, 130},
        {QuoteHigh,        ExtDouble, "最高",      2, Price,                     Everybody,         0,                display::comparedPrice(), {}, TextStore::Own, -1, {}, 140},
        {QuoteLow,         ExtDouble, "最低",      2, Price,                     Everybody,         0,                display::comparedPrice(), {}, TextStore::Own, -1, {}, 150},
        {QuotePrevClose,   ExtDouble, "昨收",      2, Price,                     Everybody,         0,                display::price(), {{DerivativeTraders, "昨结算"}}, TextStore::Own, -1, {}, 160},
    };
}

// clang-format on

} // namespace

std::vector<TypeDef> quoteTypes()
{
    return {{MetaQuote, RecordKind::Plain, quoteFields()}};
}

} // namespace refhost
