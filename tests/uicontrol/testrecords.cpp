#include "testrecords.h"

#include <boost/make_shared.hpp>

#include "records/typecatalogue.h"
#include "zb/cuiresource.h"

namespace testrecords {

namespace {

using namespace kdservice;
using refhost::FieldDef;
using refhost::TypeCatalogue;
using refhost::TypeDef;

constexpr auto Kind = refhost::RecordKind::Plain;

TypeDef ticketType()
{
    using namespace refhost;
    FieldDef left{TicketLeft, ExtData, "左"};
    left.nestedMeta = MetaInner;
    left.nestedColumns = {InnerPrice, InnerShared};
    FieldDef right{TicketRight, ExtData, "右"};
    right.nestedMeta = MetaInner;
    FieldDef side{TicketSide, ExtChar, "方向", 0, AlignCentre | Filterable};
    side.funcs = {{DisplayEnum, "testside"}, {DisplayDirection, ""}};
    FieldDef value{TicketValue, ExtDouble, "金额", 2, Sum | GroupedSum | Flash};
    value.namesFor = {{FutureTraders, "权益"}};
    left.sequence = 200;
    return {MetaTicket,
            Kind,
            {{TicketText, ExtString, "备注", 0, AlignLeft | Bold},
             side,
             {TicketLots, ExtInt, "手数", 0, Sum},
             {TicketVolume, ExtLong, "数量", 0, Sum | AlignRight, refhost::Everybody, utils::FormatSign},
             value,
             {TicketOpen, ExtBool, "开仓", 0, AlignCentre, StockTraders},
             left,
             right}};
}

TypeDef innerType()
{
    FieldDef core{InnerCore, ExtData, "核"};
    core.nestedMeta = MetaCore;
    // Behind the columns of a ticket.
    FieldDef price{InnerPrice, ExtDouble, "价格", 3};
    price.sequence = 1000;
    FieldDef shared{InnerShared, ExtInt, "共有", 0, refhost::Sum};
    shared.sequence = 1010;
    return {MetaInner, Kind, {price, shared, core}};
}

TypeDef wideType()
{
    static std::vector<std::string> names;
    TypeDef type{MetaWide, Kind, {}};
    for (int number = 0; number < wideColumns; ++number)
        names.push_back("列" + std::to_string(number));
    for (int number = 0; number < wideColumns; ++number)
        type.fields.push_back({WideFirst + number, ExtInt, names[static_cast<std::size_t>(number)].c_str()});
    return type;
}

TypeDef namesType()
{
    TypeDef type{MetaNames, Kind, {}};
    int id = NameFirst;
    for (const char *name : {"价格", "价格-元", "买-卖-差", "", "-价", "价-"})
        type.fields.push_back({id++, ExtString, name});
    return type;
}

} // namespace

void registerTypes()
{
    static const bool once = [] {
        auto &catalogue = TypeCatalogue::instance();
        catalogue.registerEnum("testside", {{'0', "买入"}, {'1', "卖出"}, {'2', "融券", refhost::StockTraders}});
        catalogue.registerType({MetaCore, Kind, {{CoreDeep, ExtInt, "深处"}}});
        catalogue.registerType(innerType());
        catalogue.registerType(ticketType());
        catalogue.registerType(wideType());
        catalogue.registerType(namesType());
        return true;
    }();
    Q_UNUSED(once)
}

PlainPtr makeTicket(const std::string &key)
{
    return refhost::makePlain(MetaTicket, key);
}

PlainPtr makeInner(double price, int shared)
{
    const PlainPtr inner = refhost::makePlain(MetaInner, "inner");
    inner->setData(InnerPrice, price);
    inner->setData(InnerShared, shared);
    return inner;
}

PlainPtr fullTicket(const std::string &key, int number)
{
    const PlainPtr ticket = makeTicket(key);
    ticket->setData(TicketText, "第" + std::to_string(number));
    ticket->setData(TicketSide, number % 2 == 0 ? "0" : "1");
    ticket->setData(TicketLots, number);
    ticket->setData(TicketVolume, static_cast<qint64>(number) * 100);
    ticket->setData(TicketValue, number + 0.25);
    ticket->setData(TicketOpen, number % 3 == 0);
    return ticket;
}

std::string rowText(const KV::CHpfDataModel &model, ZB::IBaseHpfTableData &row)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts << row.getDisplayQString(column);
    return texts.join(QLatin1Char('|')).toStdString();
}

std::string shownKeys(const KV::CHpfDataModel &model)
{
    QList<ZB::IBaseHpfTableModel::Row> rows;
    model.getDatas(rows);
    QStringList keys;
    for (const auto &row : rows)
        keys << row->qsKey();
    return keys.join(QLatin1Char(' ')).toStdString();
}

std::string colorName(const QColor *color)
{
    for (const char *key :
         {"clr_text_default", "clr_global_rise", "clr_global_fall", "clr_global_equal", "clr_text_second"})
        if (color == ZB::CUiResource::instance()->getColor(QLatin1String(key)))
            return std::string(key).substr(std::string(key).rfind('_') + 1);
    return "?";
}

boost::shared_ptr<KV::CHpfData> makeRow(const ModelPtr &model, const RecordPtr &record)
{
    return boost::make_shared<KV::CHpfData>(record, model->fieldColumnMap(), model);
}

} // namespace testrecords
