#include <gtest/gtest.h>

#include <QtCore/QMap>
#include <QtCore/QStringList>

#include "kdservice/typemanager.h"
#include "model/fieldformatter.h"
#include "records/record.h"
#include "services/userconfig.h"

using namespace kdservice;
using namespace refhost;

namespace {

/// 2023-07-11 09:30:00.120 in exchange time.
constexpr qint64 morning = 1689039000120;

/// What every field of the catalogue shows, as a user with grouped digits sees it.
class FieldCatalogue : public testing::Test
{
protected:
    void SetUp() override
    {
        auto config = std::make_unique<UserConfig>();
        config->setSegmentedFormat(true);
        refhost::setUserConfig(std::move(config));
        instrument = makePlain(MetaInstrument, "510050.SH");
        instrument->setData(InstrumentPriceDecimals, 3);
        instrument->setData(InstrumentPrevClose, 2.5);
    }
    void TearDown() override { refhost::setUserConfig(nullptr); }

    static int firstCode(const std::string &name, EVxTraderType trader)
    {
        for (int code = 0; code < 256; ++code)
            if (!TypeManager::instance()->getEnumItemName(name, code, trader).isEmpty())
                return code;
        return -1;
    }

    /// Samples of what the field can hold: of numbers a large one and one below zero.
    static QVector<double> samplesOf(const FieldDes &field)
    {
        FieldDes::iterator found;
        if (field.findFunc(DisplayEnum, found))
            return {double(firstCode(found->second, TraderFuture))};
        if (field.findFunc(DisplayTime, found))
            return {double(morning)};
        if (field.dataType == ExtString)
            return {0};
        return {1234567.8912, -5.4321};
    }

    static void fill(IData &record, const FieldDes &field, double sample)
    {
        switch (field.dataType) {
        case ExtInt:
        case ExtChar:
            return record.setData(field.fieldId, static_cast<int>(sample));
        case ExtLong:
            return record.setData(field.fieldId, static_cast<qint64>(sample));
        case ExtDouble:
            return record.setData(field.fieldId, sample);
        default:
            return record.setData(field.fieldId, std::string("abc"));
        }
    }

    /// "text colour", the colour without its first word, and the unit in brackets where there is one.
    static QString shown(const boost::shared_ptr<IData> &record, const FieldDes &field)
    {
        QString text;
        QString color;
        QString unit;
        QVariant value;
        EXPECT_TRUE(KV::formatField(record, &field, field.fieldId, text, color, unit, value, TraderFuture));
        return text + QLatin1Char(' ') + color.section('_', -1) +
               (unit.isEmpty() ? QString() : QLatin1String(" [") + unit + QLatin1Char(']'));
    }

    /// What fields show for their samples and then for no value, a line for all that show the same: their names.
    std::string table(int metaId) const
    {
        QStringList lines;
        QMap<QString, QStringList> names;
        for (const FieldDef &def : TypeCatalogue::instance().findType(metaId)->def().fields) {
            if (def.type == ExtData)
                continue;
            const auto record = makeRecord(metaId, "key");
            nest(record);
            const FieldDes &field = *record->getFieldDes(def.id);
            const QString absent = shown(record, field);
            QStringList texts;
            for (const double sample : samplesOf(field)) {
                fill(*record, field, sample);
                texts << shown(record, field);
            }
            const QString line = (texts << absent).join(QLatin1String(" | "));
            if (!names.contains(line))
                lines << line;
            names[line] << QString::fromUtf8(def.name);
        }
        QString all;
        for (const QString &line : lines)
            all += line + QLatin1String(": ") + names[line].join(QLatin1Char(' ')) + QLatin1Char('\n');
        return all.toStdString();
    }

    void nest(const boost::shared_ptr<IData> &record) const
    {
        if (auto plain = boost::dynamic_pointer_cast<PlainRecord>(record)) {
            plain->setNested(PositionInstrument, instrument);
            plain->setNested(QuoteInstrument, instrument);
        } else if (auto order = boost::dynamic_pointer_cast<OrderRecord>(record)) {
            order->setNested(OrderInstrument, instrument);
        } else if (auto deal = boost::dynamic_pointer_cast<DealRecord>(record)) {
            deal->setNested(DealInstrument, instrument);
        }
    }

    boost::shared_ptr<PlainRecord> instrument;
};

} // namespace

TEST_F(FieldCatalogue, Orders)
{
    EXPECT_EQ(table(MetaOwnOrder),
              "09:30:00.120 default | - second: 委托时间 更新时间\n"
              "abc default |  default: 证券代码 返回信息 资金账号 合同编号 备注\n"
              "买入 rise | - second: 方向\n"
              "开仓 default | - second: 开平\n"
              "1,234,567.891 rise | -5.432 fall | - second: 委托价格\n"
              "1,234,567 default | -5 default | - second: 委托数量 成交数量 未成数量 撤单数量 序号\n"
              "1,234,567.891 default | -5.432 default | - second: 成交均价\n"
              "123.46万 default [万] | -5.43 default | - second: 成交金额\n"
              "未报 default | - second: 状态\n"
              "市价 default | - second: 委托类型\n"
              "1234567 default | -5 default | - second: 委托编号 通道 交易日\n"
              "上交所 default | - second: 交易所\n");
}

TEST_F(FieldCatalogue, Deals)
{
    EXPECT_EQ(table(MetaMarketDeal), "09:30:00.120 default | - second: 成交时间\n"
                                     "abc default |  default: 证券代码\n"
                                     "买入 rise | - second: 方向\n"
                                     "开仓 default | - second: 开平\n"
                                     "1,234,567.891 rise | -5.432 fall | - second: 成交价格\n"
                                     "1,234,567 default | -5 default | - second: 成交数量 序号\n"
                                     "123.46万 default [万] | -5.43 default | - second: 成交金额\n"
                                     "1234567 default | -5 default | - second: 成交编号 买方委托 卖方委托 通道\n"
                                     "上交所 default | - second: 交易所\n");
    EXPECT_EQ(table(MetaOwnDeal), "09:30:00.120 default | - second: 成交时间\n"
                                  "abc default |  default: 证券代码 合同编号 资金账号\n"
                                  "买入 rise | - second: 方向\n"
                                  "开仓 default | - second: 开平\n"
                                  "1,234,567.891 rise | -5.432 fall | - second: 成交价格\n"
                                  "1,234,567 default | -5 default | - second: 成交数量 序号\n"
                                  "123.46万 default [万] | -5.43 default | - second: 成交金额\n"
                                  "1,234,567.89 default | -5.43 default | - second: 手续费\n"
                                  "1234567 default | -5 default | - second: 成交编号 委托编号 通道 交易日\n"
                                  "+1,234,567.89 rise | -5.43 fall | - second: 平仓盈亏\n"
                                  "上交所 default | - second: 交易所\n");
}

TEST_F(FieldCatalogue, PositionsAndFunds)
{
    EXPECT_EQ(table(MetaPosition), "abc default |  default: 资金账号 证券代码 多空\n"
                                   "多 default | - second: 持仓方向\n"
                                   "1 234 567 default | -5 default | - second: 持仓数量 可用数量 冻结数量 今买数量\n"
                                   "1,234,567.891 default | -5.432 default | - second: 成本价\n"
                                   "1,234,567.891 rise | -5.432 fall | - second: 最新价\n"
                                   "1 234 567.89 default | -5.43 default | - second: 市值 保证金\n"
                                   "+1 234 567.89 rise | -5.43 fall | - second: 浮动盈亏 持仓盈亏\n"
                                   "+123,456,789.12% rise [%] | -543.21% fall [%] | - second: 盈亏比例\n"
                                   "上交所 default | - second: 交易所\n");
    EXPECT_EQ(table(MetaFunds),
              "abc default |  default: 资金账号 账户名称\n"
              "人民币 default | - second: 币种\n"
              "1 234 567.89 default | -5.43 default | - second: 总资产 可用资金 冻结资金 可取资金 持仓市值 占用保证金\n"
              "+1 234 567.89 rise | -5.43 fall | - second: 持仓盈亏 当日盈亏\n"
              "123,456,789.12% default [%] | -543.21% default [%] | - second: 风险度\n");
}

TEST_F(FieldCatalogue, InstrumentsAndQuotes)
{
    EXPECT_EQ(table(MetaInstrument),
              "abc default |  default: 证券代码 证券名称\n"
              "上交所 default | - second: 交易所\n"
              "1,234,567.89 default | -5.43 default | - second: 昨收 涨停 跌停 最小变动\n"
              "1,234,567 default | -5 default | - second: 交易单位 合约乘数 价格小数位 证券类别\n");
    EXPECT_EQ(table(MetaQuote), "09:30:00 default | - second: 行情时间\n"
                                "abc default |  default: 证券代码\n"
                                "1,234,567.891 rise | -5.432 fall | - second: 最新价 买一价 卖一价 今开 最高 最低\n"
                                "+1,234,567.891 rise | -5.432 fall | - second: 涨跌\n"
                                "+123,456,789.12% rise [%] | -543.21% fall [%] | - second: 涨跌幅\n"
                                "123.46万 default [万] | -5 default | - second: 成交量\n"
                                "123.46万 default [万] | -5.43 default | - second: 成交额\n"
                                "1,234,567 default | -5 default | - second: 买一量 卖一量\n"
                                "1,234,567.891 default | -5.432 default | - second: 昨收\n");
}
