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

std::vector<Line> table()
{
    // In the order of the columns. The name of the instrument (sequence 30) comes from the nested record.
    // clang-format off
    return {
        // in     id                 type       name        dec properties                            visible for        format  display
        {Both,   {OrderEntryTime,    ExtLong,   "委托时间",  0, AlignCentre,                          Everybody,         0,    display::time("timems")}},
        {Both,   {OrderCode,         ExtString, "证券代码",  0, AlignCentre | Filterable,             Everybody,         0,    {}, {{DerivativeTraders, "合约代码"}}, TextStore::Shared}},
        {Both,   {OrderInstrument,   ExtData,   "证券",      0, 0,                                    Everybody,         0,    {}, {}, TextStore::Own, MetaInstrument, {InstrumentName}}},
        {Both,   {OrderDirection,    ExtChar,   "方向",      0, AlignCentre | Filterable,             Everybody,         0,    display::direction()}},
        {Market, {OrderOffset,       ExtChar,   "开平",      0, AlignCentre | Filterable,             DerivativeTraders, 0,    display::enumeration("offset")}},
        {Own,    {OrderOffset,       ExtChar,   "开平",      0, AlignCentre | Filterable,             Everybody,         0,    display::enumeration("offset")}},
        {Both,   {OrderPrice,        ExtDouble, "委托价格",  2, AlignRight | NoSumText,               Everybody,         0,    display::comparedPrice()}},
        {Both,   {OrderQuantity,     ExtLong,   "委托数量",  0, AlignRight | Sum,                     Everybody,         0,    {}, {{FutureTraders, "委托手数"}, {OptionTraders, "委托张数"}}}},
        {Both,   {OrderFilled,       ExtLong,   "成交数量",  0, AlignRight | Sum | Flash,             Everybody,         0,    {}, {{FutureTraders, "成交手数"}, {OptionTraders, "成交张数"}}}},
        {Both,   {OrderAveragePrice, ExtDouble, "成交均价",  3, AlignRight | NoSumText | Flash,       Everybody,         0,    {}}},
        {Both,   {OrderAmount,       ExtDouble, "成交金额",  2, AlignRight | Sum | Flash,             Everybody,         Unit, {}}},
        {Both,   {OrderUnfilled,     ExtLong,   "未成数量",  0, AlignRight | Sum | Flash | SumFromZero, Everybody,       0,    {}, {{FutureTraders, "未成手数"}, {OptionTraders, "未成张数"}}}},
        {Both,   {OrderCancelled,    ExtLong,   "撤单数量",  0, AlignRight | Sum | Flash,             Everybody,         0,    {}, {{FutureTraders, "撤单手数"}, {OptionTraders, "撤单张数"}}}},
        {Both,   {OrderStatus,       ExtChar,   "状态",      0, AlignCentre | Filterable | Flash,     Everybody,         0,    display::status()}},
        {Both,   {OrderUpdateTime,   ExtLong,   "更新时间",  0, AlignCentre,                          Everybody,         0,    display::time("timems")}},
        {Own,    {OrderRejectReason, ExtString, "返回信息",  0, AlignLeft,                            Everybody,         0,    {}}},
        {Both,   {OrderKind,         ExtChar,   "委托类型",  0, AlignCentre | Filterable,             Everybody,         0,    display::enumeration("orderkind")}},
        {Own,    {OrderAccount,      ExtString, "资金账号",  0, AlignCentre | Filterable,             Everybody,         0,    {}, {}, TextStore::Shared}},
        {Both,   {OrderNumber,       ExtLong,   "委托编号",  0, AlignRight,                           Everybody,         Name, {}}},
        {Own,    {OrderContract,     ExtString, "合同编号",  0, AlignLeft,                            Everybody,         0,    {}}},
        {Both,   {OrderChannel,      ExtInt,    "通道",      0, AlignRight,                           Everybody,         Name, {}}},
        {Own,    {OrderRemark,       ExtString, "备注",      0, AlignLeft | Filterable,               Everybody,         0,    {}}},
        {Both,   {OrderExchange,     ExtInt,    "交易所",    0, AlignCentre | Filterable,             Everybody,         0,    display::enumeration("exchange")}},
        {Own,    {OrderDay,          ExtInt,    "交易日",    0, AlignCentre | Filterable,             Everybody,         Name, {}}},
        {Both,   {OrderSequence,     ExtInt,    "序号",      0, AlignRight,                           Hidden,            0,    {}}},
    };
    // clang-format on
}

TypeDef orders(int metaId, RecordSet set)
{
    TypeDef type{metaId, RecordKind::Order, {}, OrderCode, OrderStatus, OrderSequence};
    int sequence = 0;
    for (Line &line : table()) {
        line.def.sequence = sequence += 10;
        if ((line.in & set) != 0)
            type.fields.push_back(std::move(line.def));
    }
    return type;
}

} // namespace

std::vector<TypeDef> orderTypes()
{
    return {orders(MetaMarketOrder, Market), orders(MetaOwnOrder, Own)};
}

} // namespace refhost
