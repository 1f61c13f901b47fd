#include "model/fieldformatter.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <limits>

#include "records/record.h"
#include "services/instruments.h"
#include "services/userconfig.h"
#include "testrecords.h"

using namespace kdservice;
using refhost::FieldDef;

namespace {

constexpr int noInt = std::numeric_limits<int>::max();
constexpr qint64 noLong = std::numeric_limits<qint64>::max();
constexpr double noDouble = std::numeric_limits<double>::max();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();

/// 2023-07-11 09:30:00.120 in exchange time.
constexpr qint64 morning = 1689039000120;

/// One record type with one field of each way of showing a value.
class FieldFormatter : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        testrecords::registerTypes();
        auto &catalogue = refhost::TypeCatalogue::instance();
        catalogue.registerType({990101, refhost::RecordKind::Plain, {{50, ExtInt, "小数位"}}});
        FieldDef instrument{40, ExtData, "证券"};
        instrument.nestedMeta = 990101;
        type = catalogue.registerType({990100,
                                       refhost::RecordKind::Plain,
                                       {field(1, ExtBool),
                                        field(2, ExtInt),
                                        field(3, ExtInt, 0, utils::FormatUnit),
                                        field(4, ExtLong),
                                        field(5, ExtDouble, 2),
                                        field(6, ExtDouble, 1, utils::FormatPercent, {{DisplayChange, ""}}),
                                        field(7, ExtDouble, 2, utils::FormatUnit),
                                        field(8, ExtString),
                                        field(9, ExtChar),
                                        field(10, ExtChar, 0, 0, {{DisplayEnum, "testside"}, {DisplayDirection, ""}}),
                                        field(11, ExtInt, 0, 0, {{DisplayEnum, "testside"}}),
                                        field(12, ExtLong, 0, 0, {{DisplayTime, "time"}}),
                                        field(13, ExtLong, 0, 0, {{DisplayTime, "timems"}}),
                                        field(14, ExtLong, 0, 0, {{DisplayTime, "date"}}),
                                        field(15, ExtLong, 0, 0, {{DisplayTime, "datetime"}}),
                                        field(16, ExtInt, 0, 0, {{DisplayDuration, ""}}),
                                        field(17, ExtDouble, 2, 0, {{DisplayPrice, "50"}}),
                                        field(18, ExtDouble, 2, 0, {{DisplayPrice, "8"}}),
                                        field(19, ExtDouble, 2, 0, {{DisplayPrice, ""}, {DisplayComparePrice, "5"}}),
                                        field(20, ExtString, 0, 0, {{DisplayInstrumentName, ""}}),
                                        field(21, ExtString, 0, 0, {{DisplayOptionName, "8"}}),
                                        field(22, ExtChar, 0, 0, {{DisplayStatus, ""}}),
                                        spaced(23, ExtLong),
                                        spaced(24, ExtDouble),
                                        field(25, ExtDouble, 2, 0, {{DisplayPrice, "50"}, {DisplayChange, ""}}),
                                        instrument}});
    }

    static FieldDef field(int id, EXT_DATA_TYPE dataType, int precision = 0, int format = 0,
                          FieldDes::FuncTable funcs = {})
    {
        FieldDef def{id, dataType, "", precision};
        def.format = format;
        def.funcs = std::move(funcs);
        return def;
    }

    static FieldDef spaced(int id, EXT_DATA_TYPE dataType)
    {
        FieldDef def = field(id, dataType, dataType == ExtDouble ? 2 : 0);
        def.properties = refhost::GroupedSum;
        return def;
    }

    void SetUp() override { record = refhost::makePlain(*type, "key"); }
    void TearDown() override { refhost::setUserConfig(nullptr); }

    /// "text colour unit value", the colour without its first two words.
    std::string shown(int id, EVxTraderType traderType = TraderStock)
    {
        QString text;
        QString color = QStringLiteral("clr_text_default");
        QString unit;
        QVariant value;
        EXPECT_TRUE(KV::formatField(record, record->getFieldDes(id), id, text, color, unit, value, traderType));
        return QStringList{text, color.section('_', 2), unit, value.toString()}.join(' ').toStdString();
    }
    template <typename Value>
    std::string shown(int id, Value value)
    {
        record->setData(id, value);
        return shown(id);
    }

    static const refhost::RecordType *type;
    boost::shared_ptr<refhost::PlainRecord> record;
};

const refhost::RecordType *FieldFormatter::type = nullptr;

} // namespace

TEST_F(FieldFormatter, EveryDataTypeHasItsTextAndItsStatisticValue)
{
    EXPECT_EQ(shown(1, true), "是 default  true");
    EXPECT_EQ(shown(1, false), "否 default  false");
    EXPECT_EQ(shown(2, 1234567), "1234567 default  1234567");
    EXPECT_EQ(shown(2, -3), "-3 default  0");
    EXPECT_EQ(shown(4, qint64(9876543210)), "9876543210 default  9876543210");
    EXPECT_EQ(shown(4, qint64(-1)), "-1 default  0");
    EXPECT_EQ(shown(5, 15.929999999999999), "15.93 default  15.93");
    EXPECT_EQ(shown(5, -2.5), "-2.50 default  -2.5");
    EXPECT_EQ(shown(8, std::string("浦发 银行")), "浦发 银行 default  ");
    EXPECT_EQ(shown(9, std::string("A")), "A default  ");
}

TEST_F(FieldFormatter, NumbersThatAreNoneAreCalledInvalid)
{
    EXPECT_EQ(shown(5, notANumber), "非法值 default  0");
    EXPECT_EQ(shown(5, infinity), "非法值 default  0");
    EXPECT_EQ(shown(5, -infinity), "非法值 default  0");
}

TEST_F(FieldFormatter, UnitsStandBehindNumbers)
{
    EXPECT_EQ(shown(3, 9999), "9999 default  9999");
    EXPECT_EQ(shown(3, 123456), "12.35万 default 万 123456");
    EXPECT_EQ(shown(7, 1234567890.0), "12.35亿 default 亿 1234567890");
    EXPECT_EQ(shown(6, 0.0123), "1.2% rise % 0.0123");
    EXPECT_EQ(shown(6, -0.0123), "-1.2% fall % -0.0123");
    EXPECT_EQ(shown(6, 0.0), "0.0% equal % 0");
}

TEST_F(FieldFormatter, NumbersFollowTheGroupingOfTheUser)
{
    auto config = std::make_unique<refhost::UserConfig>();
    refhost::UserConfig *user = config.get();
    refhost::setUserConfig(std::move(config));
    user->setSegmentedFormat(true);
    EXPECT_EQ(shown(2, 1234567), "1,234,567 default  1234567");
    EXPECT_EQ(shown(4, qint64(9876543210)), "9,876,543,210 default  9876543210");
    EXPECT_EQ(shown(5, 1234.5), "1,234.50 default  1234.5");
    EXPECT_EQ(shown(12, morning), "09:30:00 default  1689039000120");
    EXPECT_EQ(shown(23, qint64(9007199254740993)), "9 007 199 254 740 993 default  9007199254740993");
    EXPECT_EQ(shown(24, -1234567.891), "-1 234 567.89 default  -1234567.891");
    user->setSegmentedFormat(false);
    EXPECT_EQ(shown(2), "1234567 default  1234567");
    EXPECT_EQ(shown(23), "9007199254740993 default  9007199254740993");
}

TEST_F(FieldFormatter, EnumerationsReadAsTheTraderTypeSaysAndUnknownValuesAsTheyAre)
{
    EXPECT_EQ(shown(10, std::string("0")), "买入 rise  ");
    EXPECT_EQ(shown(10, std::string("1")), "卖出 fall  ");
    EXPECT_EQ(shown(10, std::string("2")), "融券 default  ");
    EXPECT_EQ(shown(10, TraderFuture), "2 default  ");
    EXPECT_EQ(shown(11, 49), "卖出 default  49");
    EXPECT_EQ(shown(11, 1000), "1000 default  1000");
    EXPECT_EQ(shown(11, -7), "-7 default  0");
}

TEST_F(FieldFormatter, TimesShowThePartThatTheirFieldAsksFor)
{
    EXPECT_EQ(shown(12, morning), "09:30:00 default  1689039000120");
    EXPECT_EQ(shown(13, morning), "09:30:00.120 default  1689039000120");
    EXPECT_EQ(shown(14, morning), "2023-07-11 default  1689039000120");
    EXPECT_EQ(shown(15, morning), "2023-07-11 09:30:00 default  1689039000120");
    EXPECT_EQ(shown(12, qint64(-5)), "- second  0");
    EXPECT_EQ(shown(16, 3725), "1:02:05 default  3725");
    EXPECT_EQ(shown(16, -1), "- second  0");
}

TEST_F(FieldFormatter, PricesTakeTheDecimalsOfTheirInstrument)
{
    EXPECT_EQ(shown(17, 10.5), "10.50 default  10.5");
    const auto instrument = refhost::makePlain(990101, "instrument");
    instrument->setData(50, 4);
    record->setNested(40, instrument);
    EXPECT_EQ(shown(17), "10.5000 default  10.5");
    EXPECT_EQ(shown(25, -0.0004), "-0.0004 fall  -0.0004");
    EXPECT_EQ(shown(25, 0.0), "0.0000 equal  0") << "no move is one too";

    const auto known = refhost::makePlain(refhost::MetaInstrument, "510050.SH");
    known->setData(refhost::InstrumentCode, "510050.SH");
    known->setData(refhost::InstrumentName, "上证50ETF");
    known->setData(refhost::InstrumentPriceDecimals, 3);
    refhost::Instruments::put(known);
    EXPECT_EQ(shown(18, 2.5), "2.50 default  2.5");
    record->setData(8, "510050.SH");
    EXPECT_EQ(shown(18), "2.500 default  2.5");
    EXPECT_EQ(shown(18, 0.0), "- second  0");
    EXPECT_EQ(shown(18, notANumber), "- second  0");
}

TEST_F(FieldFormatter, AComparedPriceTakesTheColourOfItsMove)
{
    record->setData(5, 10.0);
    EXPECT_EQ(shown(19, 10.01), "10.01 rise  10.01");
    EXPECT_EQ(shown(19, 9.99), "9.99 fall  9.99");
    EXPECT_EQ(shown(19, 10.000001), "10.00 equal  10.000001");
    EXPECT_EQ(shown(19, 0.0), "- second  0") << "no price has not fallen";
    record->setData(5, noDouble);
    EXPECT_EQ(shown(19, 10.01), "10.01 equal  10.01");
}

TEST_F(FieldFormatter, NamesAreLookedUpAndTheCodeShowsWhereNoneIsKnown)
{
    const auto known = refhost::makePlain(refhost::MetaInstrument, "600519.SH");
    known->setData(refhost::InstrumentCode, "600519.SH");
    known->setData(refhost::InstrumentName, "贵州茅台");
    refhost::Instruments::put(known);
    refhost::Instruments::putOptionName("10004567", "50ETF购7月2500");
    EXPECT_EQ(shown(20, std::string("600519.SH")), "贵州茅台 default  ");
    EXPECT_EQ(shown(20, std::string("999999.SH")), "999999.SH default  ");
    record->setData(8, "10004567");
    EXPECT_EQ(shown(21, std::string("购2500")), "50ETF购7月2500 default  ");
    record->setData(8, "10000000");
    EXPECT_EQ(shown(21), "购2500 default  ");
}

TEST_F(FieldFormatter, AnOrderThatEndedWithoutAFullFillIsDimmed)
{
    std::string dimmed;
    for (const char status : std::string("0123456789V"))
        if (shown(22, std::string(1, status)).find("second") != std::string::npos)
            dimmed += status;
    EXPECT_EQ(dimmed, "569");
}

TEST_F(FieldFormatter, NothingIsTouchedWithoutARecordOrADescription)
{
    QString text = QStringLiteral("a");
    QString color = QStringLiteral("b");
    QString unit = QStringLiteral("c");
    QVariant value = 4;
    const boost::shared_ptr<IData> none;
    EXPECT_FALSE(KV::formatField(none, record->getFieldDes(2), 2, text, color, unit, value, TraderStock));
    EXPECT_FALSE(KV::formatField(record, nullptr, 2, text, color, unit, value, TraderStock));
    EXPECT_EQ((text + color + unit + value.toString()).toStdString(), "abc4");
}
