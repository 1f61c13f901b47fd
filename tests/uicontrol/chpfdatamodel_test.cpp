#include "model/chpfdatamodel.h"

#include <gtest/gtest.h>

#include <limits>

#include "model/chpfdata.h"
#include "model/chpfextradatamodel.h"
#include "records/fieldids.h"
#include "records/record.h"
#include "records/typecatalogue.h"
#include "services/instruments.h"
#include "services/userconfig.h"
#include "testrecords.h"
#include "zb/cuiresource.h"

using namespace testrecords;

namespace {

/// Opens the catalogue side of a model and counts how often it is emptied.
class OpenModel : public KV::CHpfDataModel
{
public:
    using KV::CHpfDataModel::CHpfDataModel;
    using KV::CHpfDataModel::initColumns;

    void clear() override
    {
        ++clears;
        KV::CHpfDataModel::clear();
    }

    int clears = 0;
};

std::string headers(const KV::CHpfDataModel &model)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts << model.columnHeader(column);
    return texts.join(QLatin1Char(' ')).toStdString();
}

/// A line for each column.
std::string columns(const KV::CHpfDataModel &model)
{
    QString lines;
    for (int column = 0; column < model.columnCount(); ++column) {
        KV::CHpfDataColumnProperty property;
        model.getColumnProperty(column, property);
        lines += QStringLiteral("%1 %2 %3 %4%5%6%7%8\n")
                     .arg(model.columnHeader(column), QLatin1String(QVariant::typeToName(model.columnType(column))))
                     .arg(property.alignment)
                     .arg(property.fieldId)
                     .arg(property.statEnable ? " sum" : "", property.flag8 ? " filter" : "",
                          property.flag11 ? " bold" : "", model.columnFlashChange(column) ? " flash" : "");
    }
    return lines.toStdString();
}

void addRows(const ModelPtr &model, std::initializer_list<RecordPtr> records)
{
    for (const RecordPtr &record : records)
        model->addData(makeRow(model, record));
}

KV::CHpfDataColumnProperty namedColumn(const char *name, QVariant::Type type = QVariant::Invalid)
{
    KV::CHpfDataColumnProperty property;
    property.name = QString::fromUtf8(name);
    property.type = type;
    return property;
}

/// A record type whose fields differ in what their statistics text looks like.
enum StatField : int
{
    StatPlain = 1,
    StatFromZero,
    StatLong,
    StatLongFromZero,
    StatSilent,
    StatGrouped,
    StatText,
    StatBool
};
constexpr int MetaStat = 990200;

void registerStatType()
{
    using namespace kdservice;
    using refhost::Sum;
    const auto everybody = refhost::Everybody;
    refhost::TypeCatalogue::instance().registerType(
        {MetaStat,
         refhost::RecordKind::Plain,
         {{StatPlain, ExtDouble, "普通", 2, Sum, everybody, utils::FormatSign},
          {StatFromZero, ExtDouble, "不负", 2, Sum | refhost::SumFromZero},
          {StatLong, ExtLong, "整数", 0, Sum},
          {StatLongFromZero, ExtInt, "整数不负", 0, Sum | refhost::SumFromZero},
          {StatSilent, ExtDouble, "无文字", 2, Sum | refhost::NoSumText},
          {StatGrouped, ExtDouble, "分组", 2, Sum | refhost::GroupedSum},
          {StatText, ExtString, "文字", 0, Sum},
          {StatBool, ExtBool, "是否", 0, Sum}}});
}

PlainPtr statRecord(const char *key, double number)
{
    const PlainPtr record = refhost::makePlain(MetaStat, key);
    for (const int id : {StatPlain, StatFromZero, StatSilent, StatGrouped})
        record->setData(id, number);
    record->setData(StatLong, static_cast<qint64>(number));
    record->setData(StatLongFromZero, static_cast<int>(number));
    record->setData(StatText, "9");
    record->setData(StatBool, true);
    return record;
}

std::string statTexts(const KV::CHpfDataModel &model)
{
    QStringList texts;
    for (int column = 0; column < model.columnCount(); ++column)
        texts << model.getStatDispalyQString(column);
    return texts.join(QLatin1Char('|')).toStdString();
}

} // namespace

TEST(HpfDataModel, ColumnsComeFromTheCatalogueInItsOrder)
{
    const Guarded<> model;
    EXPECT_EQ(columns(*model), "备注 QString 129 8 bold\n"
                               "方向 QString 132 7 filter\n"
                               "手数 int 130 3 sum\n"
                               "数量 qlonglong 130 5 sum\n"
                               "金额 double 130 6 sum flash\n"
                               "开仓 bool 132 9\n"
                               "价格 double 130 21\n"
                               "共有 int 130 22 sum\n");
    EXPECT_EQ(model->fieldColumnMap(),
              (QMap<int, int>{{8, 0}, {7, 1}, {3, 2}, {5, 3}, {6, 4}, {9, 5}, {21, 6}, {22, 7}}));
    EXPECT_EQ(model->getBackgroundColor(0),
              ZB::CUiResource::instance()->getColor(QStringLiteral("clr_table_background")));
    EXPECT_TRUE(model->appendSeq());
}

TEST(HpfDataModel, ColumnsThatDoNotExistHaveNothing)
{
    const Guarded<> model;
    for (const int column : {-1, int(ticketColumns), std::numeric_limits<int>::max()}) {
        KV::CHpfDataColumnProperty property = namedColumn("untouched");
        kdservice::FieldDes *field = nullptr;
        EXPECT_FALSE(model->getColumnProperty(column, property) || model->getFieldDesID(column, &field));
        EXPECT_EQ(property.name, QStringLiteral("untouched"));
        EXPECT_EQ(model->columnHeader(column), QString());
        EXPECT_EQ(model->columnType(column), QVariant::Invalid);
        EXPECT_EQ(model->columnFlag(column).value(), 0);
        EXPECT_FALSE(model->columnFlashChange(column));
        EXPECT_EQ(model->getStatDispalyQString(column), QString());
    }
}

TEST(HpfDataModel, AModelWithoutATypeGetsItsColumnsLater)
{
    const Guarded<OpenModel> model(-1);
    EXPECT_EQ(model->columnCount(), 0);
    model->setMetaID(MetaTicket);
    EXPECT_EQ(headers(*model), "备注 方向 手数 数量 金额 开仓 价格 共有");
    EXPECT_EQ(model->getMetaID(), MetaTicket);
    model->setMetaID(4711);
    EXPECT_EQ(model->columnCount(), 0);
}

TEST(HpfDataModel, OnlyAChangeOfTypeOrTraderEmptiesTheModel)
{
    const Guarded<OpenModel> model;
    addRows(model.pointer(), {fullTicket("T1", 1)});
    model->setMetaID(MetaTicket);
    model->setTradeType(kdservice::TraderStock);
    EXPECT_EQ(model->clears, 0);
    EXPECT_EQ(model->allSize(), 1);
    model->setTradeType(kdservice::TraderFuture);
    model->setTradeType(kdservice::TraderFuture);
    EXPECT_EQ(model->clears, 1);
    EXPECT_EQ(model->allSize(), 0);
    EXPECT_EQ(model->tradeType(), kdservice::TraderFuture);
    EXPECT_EQ(headers(*model), "备注 方向 手数 数量 权益 价格 共有");
    model->setMetaID(MetaInner);
    EXPECT_EQ(model->clears, 2);
    EXPECT_EQ(headers(*model), "价格 共有");
}

TEST(HpfDataModel, RowsFollowTheColumnsThroughEveryChangeOfTrader)
{
    const Guarded<> model;
    for (const auto trader : {kdservice::TraderFuture, kdservice::TraderStock, kdservice::TraderFuture}) {
        model->setTradeType(trader);
        const auto row = makeRow(model.pointer(), fullTicket("T1", 3));
        const bool stock = trader == kdservice::TraderStock;
        EXPECT_EQ(rowText(*model, *row), stock ? "第3|卖出|3|+300|3.25|是||" : "第3|卖出|3|+300|3.25||");
        EXPECT_EQ(row->getStatValue(ColumnVolume), QVariant(qint64(300)));
        row->setAllColorKey(QStringLiteral("clr_global_rise"));
        EXPECT_EQ(colorName(row->getColor(model->columnCount() - 1)), "rise");
    }
}

TEST(HpfDataModel, AHeaderIsTheNameUpToASingleHyphen)
{
    const Guarded<> model(MetaNames);
    EXPECT_EQ(headers(*model), "价格 价格 买-卖-差   价");
}

TEST(HpfDataModel, TheReasonOfARejectedOrderHasItsOwnName)
{
    const Guarded<> own(refhost::MetaOwnOrder);
    EXPECT_EQ(own->columnHeader(own->fieldColumnMap().value(refhost::OrderRejectReason)), QStringLiteral("废单原因"));
    refhost::TypeCatalogue::instance().registerType(
        {990201, refhost::RecordKind::Plain, {{refhost::OrderRejectReason, kdservice::ExtString, "返回信息"}}});
    const Guarded<> other(990201);
    EXPECT_EQ(headers(*other), "返回信息");
}

TEST(HpfDataModel, NumberColumnsAskForGroupsWhenTheUserDoes)
{
    const Guarded<> model;
    const auto flags = [&model] {
        QStringList values;
        for (int column = 0; column < model->columnCount(); ++column)
            values << QString::number(model->columnFlag(column).value(), 16);
        return values.join(QLatin1Char(' ')).toStdString();
    };
    refhost::setUserConfig(nullptr);
    EXPECT_EQ(flags(), "0 0 0 1 0 0 0 0");
    auto config = std::make_unique<refhost::UserConfig>();
    config->setSegmentedFormat(true);
    refhost::setUserConfig(std::move(config));
    EXPECT_EQ(flags(), "0 0 20000 20001 20000 0 20000 20000");
    refhost::setUserConfig(nullptr);
}

TEST(HpfDataModel, StatisticsTextsFollowTheirField)
{
    registerStatType();
    refhost::setUserConfig(nullptr);
    const Guarded<> model(MetaStat);
    EXPECT_EQ(statTexts(*model), "0.00|0.00|0|0||0.00||");
    addRows(model.pointer(), {statRecord("a", 1234567.5), statRecord("b", 1.005)});
    EXPECT_EQ(statTexts(*model), "+1234568.51|1234568.51|1234568|1234568||1234568.51||");
    model->resetStatData();
    EXPECT_EQ(statTexts(*model), "+1234568.51|1234568.51|1234568|1234568||1234568.51||") << "summed anew";

    auto config = std::make_unique<refhost::UserConfig>();
    config->setSegmentedFormat(true);
    refhost::setUserConfig(std::move(config));
    EXPECT_EQ(statTexts(*model), "+1234568.51|1234568.51|1234568|1234568||1 234 568.51||");
    refhost::setUserConfig(nullptr);

    addRows(model.pointer(), {statRecord("a", -5), statRecord("b", 0)});
    EXPECT_EQ(statTexts(*model), "-5.00|0.00|-5|0||-5.00||");
    addRows(model.pointer(), {statRecord("c", std::numeric_limits<double>::quiet_NaN())});
    EXPECT_EQ(model->getStatDispalyQString(0), QStringLiteral("非法值"));
}

TEST(HpfDataModel, AColumnWithoutStatisticsOrWithoutAFieldHasNoText)
{
    registerStatType();
    const Guarded<> model(MetaStat);
    addRows(model.pointer(), {statRecord("a", 7)});
    model->setColumnStatEnable(0, false);
    model->setColumnStatEnable(2, false);
    EXPECT_EQ(statTexts(*model), "|7.00||7||7.00||");
    model->setColumnStatEnable(2, true);
    EXPECT_EQ(statTexts(*model), "|7.00|7|7||7.00||");
    const int extra = model->addColumn(namedColumn("计算", QVariant::Double), QStringLiteral("无"), true);
    model->setColumnStatEnable(extra, true);
    model->getExtraDataModel()->addData(QStringLiteral("a"), extra, 5.0, nullptr);
    EXPECT_EQ(model->getStatDispalyQString(extra), QString()) << "there is no field that says how";
}

TEST(HpfDataModel, AnExtraColumnOverARecordColumnShowsItsOwnSum)
{
    registerStatType();
    const Guarded<> model(MetaStat);
    addRows(model.pointer(), {statRecord("a", 7), statRecord("b", 8), statRecord("c", 9)});
    auto *extra = model->getExtraDataModel();
    const KV::CExtraColumnInfo info(QString(), 1, utils::FormatSign);
    for (const int column : {0, 2}) {
        extra->addColumn(column, info);
        EXPECT_EQ(model->getStatDispalyQString(column), QString());
        model->setColumnStatEnable(column, true);
        extra->addData(QStringLiteral("a"), column, 1.25, nullptr);
        extra->addData(QStringLiteral("c"), column, 2, nullptr);
    }
    EXPECT_EQ(statTexts(*model), "+3.3|24.00|3|24||24.00||");

    QPair<ZB::EFilterType, QSet<QString>> filter(ZB::FilterExact, {QStringLiteral("7.00"), QStringLiteral("8.00")});
    model->filterColumn(1, filter);
    model->reCalcExStat();
    EXPECT_EQ(statTexts(*model), "+1.3|15.00|1|15||15.00||");
    model->clear();
    EXPECT_EQ(statTexts(*model), "|0.00||0||0.00||");
}

TEST(HpfDataModel, FieldsOfAWiderSetStayBehindTheLastColumn)
{
    const Guarded<> model(MetaWide);
    ASSERT_EQ(model->columnCount(), wideColumns);
    model->setMetaID(MetaTicket);
    EXPECT_EQ(model->columnCount(), ticketColumns);
    EXPECT_EQ(model->columnFieldDesMap().size(), wideColumns);
    kdservice::FieldDes *field = nullptr;
    ASSERT_TRUE(model->getFieldDesID(wideColumns - 1, &field));
    EXPECT_EQ(field->fieldId, WideFirst + wideColumns - 1);
    EXPECT_EQ(model->columnType(wideColumns - 1), QVariant::Invalid);

    const PlainPtr wide = refhost::makePlain(MetaWide, "w");
    wide->setData(WideFirst + ticketColumns, 77);
    const auto row = makeRow(model.pointer(), wide);
    EXPECT_EQ(row->getInt(ticketColumns), 77);
    EXPECT_EQ(row->getDisplayQString(ticketColumns), QStringLiteral("77"));
}

TEST(HpfDataModel, AColumnThatComesAfterItsSortSortsByItsOwnType)
{
    const Guarded<> model;
    auto *extra = model->getExtraDataModel();
    extra->addData(QStringLiteral("a"), ticketColumns, 10.0, nullptr);
    extra->addData(QStringLiteral("b"), ticketColumns, 9.0, nullptr);
    extra->addColumn(ticketColumns, KV::CExtraColumnInfo(QStringLiteral("-"), 2, utils::FormatNone));
    model->setSortColumns({{ticketColumns, 0}});
    addRows(model.pointer(), {makeTicket("a"), makeTicket("b")});
    EXPECT_EQ(shownKeys(*model), "a b") << "as texts";
    model->addColumn(namedColumn("计算", QVariant::Double), QStringLiteral("-"), true);
    EXPECT_EQ(shownKeys(*model), "b a");
}

TEST(HpfDataModel, FiltersAskRowsWhoseTextsFollowFromMoreThanTheirValues)
{
    using namespace kdservice;
    constexpr int metaPriced = 990210;
    enum Field : int
    {
        Name = 1,
        Decimals,
        Price,
        Volume
    };
    refhost::FieldDef name{Name, ExtString, "名称"};
    name.funcs = {{DisplayInstrumentName, ""}};
    refhost::FieldDef price{Price, ExtDouble, "价格", 2};
    price.funcs = {{DisplayPrice, std::to_string(int(Decimals))}};
    refhost::TypeCatalogue::instance().registerType(
        {metaPriced, refhost::RecordKind::Plain, {name, {Decimals, ExtInt, "小数"}, price, {Volume, ExtLong, "数量"}}});
    auto config = std::make_unique<refhost::UserConfig>();
    refhost::UserConfig *const user = config.get();
    user->setSegmentedFormat(true);
    refhost::setUserConfig(std::move(config));
    const Guarded<> model(metaPriced);
    const auto put = [&model](const char *key, int decimals) {
        const PlainPtr record = refhost::makePlain(metaPriced, key);
        record->setData(Name, std::string("990210.SH"));
        record->setData(Decimals, decimals);
        record->setData(Price, 10.5);
        record->setData(Volume, qint64(1200));
        addRows(model.pointer(), {record});
    };
    const auto filter = [&model](int field, const QString &text) {
        QPair<ZB::EFilterType, QSet<QString>> condition(ZB::FilterExact, {text});
        model->clearFilter();
        model->filterColumn(model->fieldColumnMap().value(field), condition);
        return shownKeys(*model);
    };
    put("fund", 3);
    put("share", 2);
    EXPECT_EQ(filter(Price, QStringLiteral("10.50")), "share");
    EXPECT_EQ(filter(Price, QStringLiteral("10.500")), "fund");

    EXPECT_EQ(filter(Name, QStringLiteral("新名字")), "");
    const auto instrument = refhost::makePlain(refhost::MetaInstrument, "990210.SH");
    instrument->setData(refhost::InstrumentCode, std::string("990210.SH"));
    instrument->setData(refhost::InstrumentName, std::string("新名字"));
    refhost::Instruments::put(instrument);
    put("share", 2);
    EXPECT_EQ(shownKeys(*model), "share");

    EXPECT_EQ(filter(Volume, QStringLiteral("1,200")), "fund share");
    user->setSegmentedFormat(false);
    put("share", 2);
    EXPECT_EQ(shownKeys(*model), "");
    EXPECT_EQ(filter(Volume, QStringLiteral("1200")), "fund share");
    refhost::setUserConfig(nullptr);
}

TEST(HpfDataModel, NewColumnsDropAddedOnesAndKeepOverlays)
{
    const Guarded<OpenModel> model(MetaWide);
    auto *extra = model->getExtraDataModel();
    const int added = model->addColumn(namedColumn("计算"), QStringLiteral("无"), true);
    extra->addData(QStringLiteral("T1"), added, 3, nullptr);
    extra->addColumn(1, KV::CExtraColumnInfo(QStringLiteral("盖住"), 0, utils::FormatNone));
    model->setColumnStatEnable(added, true);
    model->initColumns({MetaWide});
    EXPECT_EQ(model->columnCount(), wideColumns);
    EXPECT_FALSE(extra->exist(added) || extra->columnStatEnable(added));
    EXPECT_TRUE(extra->exist(1));
    EXPECT_EQ(makeRow(model.pointer(), refhost::makePlain(MetaWide, "T1"))->getDisplayQString(1),
              QStringLiteral("盖住"));
    EXPECT_EQ(model->addColumn(namedColumn("计算"), QStringLiteral("无"), true), added);
    EXPECT_EQ(extra->getString(QStringLiteral("T1"), added), QStringLiteral("3"));
}

TEST(HpfDataModel, ChangesOfExtraValuesMarkTheModelAsChanged)
{
    const Guarded<> model;
    model->setUpdated(false);
    model->getExtraDataModel()->addData(QStringLiteral("T1"), 3, 1, nullptr);
    EXPECT_TRUE(model->updated());
    model->setUpdated(false);
    model->setFieldColors(true);
    EXPECT_TRUE(model->updated());
}
