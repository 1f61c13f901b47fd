#include "records/fieldids.h"
#include "records/standardtypes.h"

namespace refhost {

namespace {

enum RecordSet : unsigned int
{
    Market = 1,
    Own = 2,
    Both = 3
};

struct Line
{
    RecordSet in;
    FieldDef def;
};

using namespace kdservice;
constexpr int Hidden = Nobody;
constexpr int Unit = utils::FormatUnit;
constexpr int Name = utils::FormatNoGroups; ///< of a number that only names
constexpr int Signed = utils::FormatSign;

std::vector<Line> table()
{
    // In the order of the columns. The name of the instrument (sequence 30) comes from the nested record.
    // clang-format off
    return {
        // in     id                type       name        dec properties                      visible for        format  display
        {Both,   {DealTime,         ExtLong,   "成交时间",  0, AlignCentre,                    Everybody,         0,    display::time("timems")}},
        {Both,   {DealCode,         ExtString, "证券代码",  0, AlignCentre | Filterable,       Everybody,         0,    {}, {{DerivativeTraders, "合约代码"}}, TextStore::Shared}},
        {Both,   {DealInstrument,   ExtData,   "证券",      0, 0,                              Everybody,         0,    {}, {}, TextStore::Own, MetaInstrument, {InstrumentName}}},
        {Both,   {DealDirection,    ExtChar,   "方向",      0, AlignCentre | Filterable,       Everybody,         0,    display::direction()}},
        {Market, {DealOffset,       ExtChar,   "开平",      0, AlignCentre | Filterable,       DerivativeTraders, 0,    display::enumeration("offset")}},
        {Own,    {DealOffset,       ExtChar,   "开平",      0, AlignCentre | Filterable,       Everybody,         0,    display::enumeration("offset")}},
        {Both,   {DealPrice,        ExtDouble, "成交价格",  2, AlignRight | NoSumText,         Everybody,         0,    display::comparedPrice()}},
        {Both,   {DealQuantity,     ExtLong,   "成交数量",  0, AlignRight | Sum,               Everybody,         0,    {}, {{FutureTraders, "成交手数"}, {OptionTraders, "成交张数"}}}},
        {Both,   {DealAmount,       ExtDouble, "成交金额",  2, AlignRight | Sum,               Everybody,         Unit, {}}},
        {Own,    {DealCommission,   ExtDouble, "手续费",    2, AlignRight | Sum,               Everybody,         0,    {}}},
        {Both,   {DealNumber,       ExtLong,   "成交编号",  0, AlignRight,                     Everybody,         Name, {}}},
        {Market, {DealBuyOrder,     ExtLong,   "买方委托",  0, AlignRight,                     Everybody,         Name, {}}},
        {Market, {DealSellOrder,    ExtLong,   "卖方委托",  0, AlignRight,                     Everybody,         Name, {}}},
        {Own,    {DealOrder,        ExtLong,   "委托编号",  0, AlignRight,                     Everybody,         Name, {}}},
        {Own,    {DealRealised,     ExtDouble, "平仓盈亏",  2, AlignRight | Sum,               Everybody,         Signed, display::change()}},
        {Own,    {DealContract,     ExtString, "合同编号",  0, AlignLeft,                      Everybody,         0,    {}}},
        {Own,    {DealAccount,      ExtString, "资金账号",  0, AlignCentre | Filterable,       Everybody,         0,    {}, {}, TextStore::Shared}},
        {Both,   {DealChannel,      ExtInt,    "通道",      0, AlignRight,                     Everybody,         Name, {}}},
        {Both,   {DealExchange,     ExtInt,    "交易所",    0, AlignCentre | Filterable,       Everybody,         0,    display::enumeration("exchange")}},
        {Own,    {DealDay,          ExtInt,    "交易日",    0, AlignCentre | Filterable,       Everybody,         Name, {}}},
        {Both,   {DealSequence,     ExtInt,    "序号",      0, AlignRight,                     Hidden,            0,    {}}},
    };
    // clang-format on
}

TypeDef deals(int metaId, RecordSet set)
{
    TypeDef type{metaId, RecordKind::Deal, {}, DealCode, -1, DealSequence};
    int sequence = 0;
    for (Line &line : table()) {
        line.def.sequence = sequence += 10;
        if ((line.in & set) != 0)
            type.fields.push_back(std::move(line.def));
    }
    return type;
}

} // namespace

std::vector<TypeDef> dealTypes()
{
    return {deals(MetaMarketDeal, Market), deals(MetaOwnDeal, Own)};
}

} // namespace refhost
