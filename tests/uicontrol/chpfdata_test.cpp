#include "model/chpfdata.h"

#include <gtest/gtest.h>

#include "model/chpfextradatamodel.h"
#include "testrecords.h"
#include "zb/cuiresource.h"

using namespace testrecords;

namespace {

/// Opens what rows keep to themselves and to derived rows.
class OpenRow : public KV::CHpfData
{
public:
    using KV::CHpfData::CHpfData;
    using KV::CHpfData::entrustColorKey;
    using KV::CHpfData::getData;
    using KV::CHpfData::getIDataString;
    using KV::CHpfData::resetColorKey;
};

boost::shared_ptr<OpenRow> openRow(const ModelPtr &model, const RecordPtr &record)
{
    return boost::make_shared<OpenRow>(record, model->fieldColumnMap(), model);
}

/// Columns that no single record type has: of an inner record's own nested record too.
class DeepModel : public KV::CHpfDataModel
{
public:
    DeepModel(int metaId, kdservice::EVxTraderType traderType) : KV::CHpfDataModel(metaId, traderType)
    {
        initColumns({MetaTicket, MetaCore});
    }
};

std::string rawTexts(KV::CHpfData &row)
{
    QStringList texts;
    for (int column = 0; column < ticketColumns; ++column)
        texts << row.getQString(column);
    return texts.join(QLatin1Char('|')).toStdString();
}

std::string numbers(KV::CHpfData &row)
{
    QStringList texts;
    for (int column = 0; column < ticketColumns; ++column)
        texts << QStringLiteral("%1 %2 %3")
                     .arg(row.getInt(column))
                     .arg(row.getDouble(column))
                     .arg(row.getLongLong(column));
    return texts.join(QLatin1Char('|')).toStdString();
}

std::string colors(KV::CHpfData &row)
{
    std::string names;
    for (int column = 0; column < ticketColumns; ++column)
        names += colorName(row.getColor(column)) + ' ';
    return names;
}

/// Statistic values of the columns, "-" where there is none.
std::string statistics(const KV::CHpfData &row)
{
    QStringList values;
    for (int column = 0; column < ticketColumns; ++column) {
        const QVariant value = row.getStatValue(column);
        values << (value.isValid() ? QString::fromLatin1(value.typeName()) + '=' + value.toString() : "-");
    }
    return values.join(QLatin1Char(' ')).toStdString();
}

} // namespace

TEST(HpfData, ARowAnswersForEveryKindOfField)
{
    const Guarded<> model;
    const PlainPtr ticket = fullTicket("T1", 7);
    ticket->setNested(TicketLeft, makeInner(1.5, 20));
    const auto row = makeRow(model.pointer(), ticket);
    EXPECT_EQ(row->key(), "T1");
    EXPECT_EQ(row->qsKey(), QStringLiteral("T1"));
    EXPECT_EQ(rowText(*model, *row), "第7|卖出|7|+700|7.25|否|1.500|20");
    EXPECT_EQ(rawTexts(*row), "第7|1|7|700|7.25|false|1.5|20");
    EXPECT_EQ(numbers(*row), "0 0 0|1 1 1|7 7 7|700 700 700|7 7.25 7|0 0 0|2 1.5 2|20 20 20");
    EXPECT_EQ(statistics(*row), "- - int=7 qlonglong=700 double=7.25 - - int=20");
    EXPECT_EQ(colors(*row), "default default default default default default default default ");
    EXPECT_EQ(row->getIData(), ticket);
}

TEST(HpfData, ARowWithoutARecordIsEmpty)
{
    const Guarded<> model;
    const auto row = makeRow(model.pointer(), RecordPtr());
    EXPECT_EQ(row->key(), "");
    EXPECT_EQ(rowText(*model, *row), "|||||||");
    EXPECT_EQ(rawTexts(*row), "|||||||");
    EXPECT_EQ(numbers(*row), "0 0 0|0 0 0|0 0 0|0 0 0|0 0 0|0 0 0|0 0 0|0 0 0");
    EXPECT_EQ(colors(*row), "default default default default default default default default ");
    EXPECT_EQ(statistics(*row), "- - - - - - - -");
}

TEST(HpfData, ARowWithoutAModelIsEmptyButHasItsKey)
{
    registerTypes();
    const auto row = boost::make_shared<KV::CHpfData>(fullTicket("T1", 7), QMap<int, int>{{TicketLots, 0}}, nullptr);
    row->setAllColorKey(QStringLiteral("clr_global_rise"));
    row->setColorKey(1, QStringLiteral("clr_global_fall"));
    EXPECT_EQ(row->key(), "T1");
    EXPECT_EQ(row->getDisplayQString(0), QString());
    EXPECT_EQ(row->getInt(0), 0);
    EXPECT_EQ(colorName(row->getColor(0)) + colorName(row->getColor(1)), "defaultfall");
}

TEST(HpfData, ColumnsThatDoNotExistHoldNothing)
{
    const Guarded<> model;
    const auto row = makeRow(model.pointer(), fullTicket("T1", 7));
    for (const int column : {-1, int(ticketColumns), 1000000, std::numeric_limits<int>::max()}) {
        EXPECT_EQ(row->getDisplayQString(column) + row->getQString(column), QString());
        EXPECT_EQ(row->getInt(column) + row->getLongLong(column), 0);
        EXPECT_EQ(row->getDouble(column), 0);
        EXPECT_EQ(colorName(row->getColor(column)), "default");
    }
}

TEST(HpfData, AbsentNumbersAreRawInNumbersAndZeroInStatistics)
{
    const Guarded<> model;
    const auto row = makeRow(model.pointer(), makeTicket("T1"));
    EXPECT_EQ(rowText(*model, *row), "|-|-|-|-|否||");
    EXPECT_EQ(row->getInt(ColumnLots), std::numeric_limits<int>::max());
    EXPECT_EQ(row->getLongLong(ColumnVolume), std::numeric_limits<qint64>::max());
    EXPECT_EQ(row->getDouble(ColumnValue), std::numeric_limits<double>::max());
    EXPECT_EQ(statistics(*row), "- - int=0 qlonglong=0 double=0 - - -");
}

TEST(HpfData, TheFirstNestedRecordOnTheWayGivesTheValueAndTheLastOneTheStatistics)
{
    const Guarded<> model;
    const PlainPtr ticket = makeTicket("T1");
    ticket->setNested(TicketRight, makeInner(9.0, 90));
    EXPECT_EQ(rowText(*model, *makeRow(model.pointer(), ticket)), "|-|-|-|-|否|9.000|90");

    const PlainPtr both = makeTicket("T2");
    both->setNested(TicketRight, makeInner(9.0, 90));
    both->setNested(TicketLeft, makeInner(4.0, 40));
    const auto row = makeRow(model.pointer(), both);
    EXPECT_EQ(rowText(*model, *row), "|-|-|-|-|否|4.000|40");
    EXPECT_EQ(row->getStatValue(ColumnShared), QVariant(90));
}

TEST(HpfData, FieldsAreFoundAtAnyDepthBeforeThoseOfLaterRecords)
{
    const Guarded<DeepModel> model;
    const PlainPtr ticket = makeTicket("T1");
    const PlainPtr left = makeInner(4.0, 40);
    const PlainPtr right = makeInner(9.0, 90);
    for (const auto &[inner, deep] : {std::pair{left, 400}, std::pair{right, 900}}) {
        const PlainPtr core = refhost::makePlain(MetaCore, "core");
        core->setData(CoreDeep, deep);
        inner->setNested(InnerCore, core);
    }
    ticket->setNested(TicketLeft, left);
    ticket->setNested(TicketRight, right);
    const int column = model->fieldColumnMap().value(CoreDeep, -1);
    ASSERT_GE(column, 0);
    EXPECT_EQ(makeRow(model.pointer(), ticket)->getInt(column), 400);
    left->setNested(InnerCore, nullptr);
    EXPECT_EQ(makeRow(model.pointer(), ticket)->getInt(column), 900);
}

TEST(HpfData, ARecordThatContainsItselfEndsTheSearch)
{
    const Guarded<> model;
    const PlainPtr ticket = fullTicket("T1", 7);
    ticket->setNested(TicketLeft, ticket);
    const auto row = makeRow(model.pointer(), ticket);
    EXPECT_EQ(row->getDisplayQString(ColumnPrice), QString());
    EXPECT_EQ(row->getInt(ColumnLots), 7);
    ticket->setNested(TicketLeft, nullptr);
}

TEST(HpfData, ExtraColumnsCoverEverythingButLongIntegers)
{
    const Guarded<> model;
    auto *extra = model->getExtraDataModel();
    const auto row = makeRow(model.pointer(), fullTicket("T1", 7));
    extra->addColumn(ColumnLots, KV::CExtraColumnInfo(QStringLiteral("无"), 1, utils::FormatNone));
    EXPECT_EQ(row->getDisplayQString(ColumnLots) + row->getQString(ColumnLots), QStringLiteral("无无"));
    EXPECT_EQ(row->getInt(ColumnLots) + row->getDouble(ColumnLots), 0);
    extra->addData(QStringLiteral("T1"), ColumnLots, 12.25,
                   ZB::CUiResource::instance()->getColor(QStringLiteral("clr_global_fall")));
    EXPECT_EQ(row->getDisplayQString(ColumnLots) + ' ' + row->getQString(ColumnLots), QStringLiteral("12.3 12.3"));
    EXPECT_EQ(row->getInt(ColumnLots), 12);
    EXPECT_EQ(row->getDouble(ColumnLots), 12.25);
    EXPECT_EQ(row->getLongLong(ColumnLots), 7);
    EXPECT_EQ(colorName(row->getColor(ColumnLots)), "fall");
    row->setColorKey(ColumnLots, QStringLiteral("clr_global_rise"));
    EXPECT_EQ(colorName(row->getColor(ColumnLots)), "fall");
}

TEST(HpfData, ColoursOfTheWholeRowAndOfSingleColumns)
{
    const Guarded<> model;
    const auto row = makeRow(model.pointer(), fullTicket("T1", 7));
    const auto other = makeRow(model.pointer(), fullTicket("T2", 8));
    row->setAllColorKey(QStringLiteral("clr_global_rise"));
    EXPECT_EQ(colors(*row), "rise rise rise rise rise rise rise rise ");
    row->setColorKey(ColumnVolume, QStringLiteral("clr_global_fall"));
    EXPECT_EQ(colors(*row), "rise rise rise fall rise rise rise rise ");
    other->setAllColorKey(QStringLiteral("clr_global_rise"));
    other->setAllColorKey(QStringLiteral("clr_global_equal"));
    EXPECT_EQ(colors(*other), "equal equal equal equal equal equal equal equal ");
    row->setAllColorKey(QStringLiteral("clr_text_default"));
    EXPECT_EQ(colors(*row), "default default default default default default default default ");
    row->setColorKey(500, QStringLiteral("clr_global_fall"));
    EXPECT_EQ(colorName(row->getColor(500)), "fall");
}

TEST(HpfData, ResettingColoursGoesByFieldIds)
{
    const Guarded<> model;
    const auto row = openRow(model.pointer(), fullTicket("T1", 7));
    row->setAllColorKey(QStringLiteral("clr_global_rise"));
    // The ids of lots and of the volume are the numbers of the columns of the volume and of being open.
    row->resetColorKey({{TicketLots, ColumnLots}, {TicketVolume, ColumnVolume}});
    EXPECT_EQ(colors(*row), "rise rise rise default rise default rise rise ");
}

TEST(HpfData, SidesHaveTheirColours)
{
    const Guarded<> model;
    const auto row = openRow(model.pointer(), fullTicket("T1", 7));
    EXPECT_STREQ(row->entrustColorKey(kdservice::EntrustBuy), "clr_global_rise");
    EXPECT_STREQ(row->entrustColorKey(kdservice::EntrustSell), "clr_global_fall");
    EXPECT_STREQ(row->entrustColorKey(static_cast<kdservice::EEntrustBS>(50)), "clr_text_default");
}

TEST(HpfData, FieldColoursShowOnceTheModelAsksForThem)
{
    const Guarded<> model;
    const auto sells = makeRow(model.pointer(), fullTicket("T1", 7));
    const auto empty = makeRow(model.pointer(), makeTicket("T2"));
    model->setFieldColors(true);
    EXPECT_EQ(colors(*sells), "default fall default default default default default default ");
    EXPECT_EQ(colors(*empty), "default second second second second default default default ");
    sells->setAllColorKey(QStringLiteral("clr_global_rise"));
    EXPECT_EQ(colors(*sells), "rise rise rise rise rise rise rise rise ");
    model->setFieldColors(false);
    EXPECT_EQ(colors(*empty), "default default default default default default default default ");
}

TEST(HpfData, ANewRecordReplacesTheOldOneAndOriginDataOnlyItsStatistics)
{
    const Guarded<> model;
    const auto row = makeRow(model.pointer(), fullTicket("T1", 7));
    row->setColorKey(ColumnText, QStringLiteral("clr_global_rise"));
    row->updateOriginData(fullTicket("T1", 8), model->fieldColumnMap());
    EXPECT_EQ(rowText(*model, *row), "第7|卖出|7|+700|7.25|否||");
    EXPECT_EQ(statistics(*row), "- - int=8 qlonglong=800 double=8.25 - - -");
    row->updateData(fullTicket("T1", 9), model->fieldColumnMap(), true);
    EXPECT_EQ(rowText(*model, *row), "第9|卖出|9|+900|9.25|是||");
    EXPECT_EQ(statistics(*row), "- - int=9 qlonglong=900 double=9.25 - - -");
    EXPECT_EQ(colorName(row->getColor(ColumnText)), "rise");
    row->updateData(RecordPtr(), model->fieldColumnMap());
    EXPECT_EQ(row->key() + rowText(*model, *row), "|||||||");
    EXPECT_EQ(statistics(*row), "- - int=9 qlonglong=900 double=9.25 - - -");
}

TEST(HpfData, AMapOfOnesOwnDecidesWhichFieldsFillTheStatistics)
{
    const Guarded<> model;
    // The volume goes to the column of lots, and to a column without statistics nothing goes.
    const QMap<int, int> map{{TicketVolume, ColumnLots}, {TicketLots, ColumnText}, {CoreDeep, ColumnVolume}};
    const auto row = boost::make_shared<KV::CHpfData>(fullTicket("T1", 7), map, model.pointer());
    EXPECT_EQ(statistics(*row), "- - int=700 - - - - -");
    EXPECT_EQ(row->getInt(ColumnLots), 7);
}

TEST(HpfData, DerivedRowsReadValuesAndTexts)
{
    const Guarded<> model;
    const auto row = openRow(model.pointer(), fullTicket("T1", 7));
    QVariant value = QStringLiteral("untouched");
    EXPECT_FALSE(row->getData(ColumnPrice, value));
    EXPECT_EQ(value, QVariant(QStringLiteral("untouched")));
    EXPECT_TRUE(row->getData(ColumnSide, value));
    EXPECT_EQ(value, QVariant(QStringLiteral("1")));
    EXPECT_TRUE(row->getData(ColumnOpen, value));
    EXPECT_EQ(value, QVariant(false));
    model->getExtraDataModel()->addColumn(ColumnLots, KV::CExtraColumnInfo());
    EXPECT_EQ(row->getIDataString(ColumnLots), QStringLiteral("7"));
}

TEST(HpfData, StatisticsOfManyColumnsAndOfRecordTypesByTheDozen)
{
    constexpr int metaFirst = 991000, fieldFirst = 3001, count = 12;
    std::vector<refhost::FieldDef> fields;
    for (int i = 0; i < count; ++i) {
        fields.push_back({fieldFirst + i, kdservice::ExtInt, "数", 0, refhost::Sum});
        refhost::TypeCatalogue::instance().registerType({metaFirst + i, refhost::RecordKind::Plain, fields});
    }
    const Guarded<> model(metaFirst + count - 1);
    for (const bool seenBefore : {false, true})
        for (int last = 0; last < count; ++last) {
            const PlainPtr record = refhost::makePlain(metaFirst + last, "r");
            for (int i = 0; i <= last; ++i)
                record->setData(fieldFirst + i, 100 * last + i);
            const auto row = makeRow(model.pointer(), record);
            for (int i = 0; i < count; ++i)
                EXPECT_EQ(row->getStatValue(i), i <= last ? QVariant(100 * last + i) : QVariant())
                    << "type " << last << (seenBefore ? ", seen before" : "");
        }
}

TEST(HpfData, ARowIsSmallAndKeepsItsModel)
{
    // With up to four statistic values; more stand elsewhere.
    EXPECT_LE(sizeof(KV::CHpfData), 15 * sizeof(void *) + 4 * sizeof(qint64));
    registerTypes();
    auto model = boost::make_shared<KV::CHpfDataModel>(MetaTicket, kdservice::TraderStock);
    const boost::weak_ptr<KV::CHpfDataModel> watch = model;
    auto row = makeRow(model, fullTicket("T1", 7));
    model.reset();
    ASSERT_FALSE(watch.expired());
    EXPECT_EQ(row->getDisplayQString(ColumnLots), QStringLiteral("7"));
    row.reset();
    EXPECT_TRUE(watch.expired());
}
