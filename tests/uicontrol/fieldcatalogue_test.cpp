#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <limits>

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

    /// A field a line: its name, then what it shows for its samples and for no value.
    std::string table(int metaId) const
    {
        std::string lines;
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
            lines += def.name + (": " + (texts << absent).join(" | ").toStdString()) + '\n';
        }
        return lines;
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
    EXPECT_EQ(table(MetaOwnOrder), "委托时间: 09:30:00.120 default | - second\n"
                                   "证券代码: abc default |  default\n"
                                   "方向: 买入 rise | - second\n"
                                   "开平: 开仓 default | - second\n"
                                   "委托价格: 1,234,567.891 rise | -5.432 fall | - second\n"
                                   "委托数量: 1,234,567 default | -5 default | - second\n"
                                   "成交数量: 1,234,567 default | -5 default | - second\n"
                                   "成交均价: 1,234,567.891 default | -5.432 default | - second\n"
                                   "成交金额: 123.46万 default [万] | -5.43 default | - second\n"
                                   "未成数量: 1,234,567 default | -5 default | - second\n"
                                   "撤单数量: 1,234,567 default | -5 default | - second\n"
                                   "状态: 未报 default | - second\n"
                                   "更新时间: 09:30:00.120 default | - second\n"
                                   "返回信息: abc default |  default\n"
                                   "委托类型: 市价 default | - second\n"
                                   "资金账号: abc default |  default\n"
                                   "委托编号: 1234567 default | -5 default | - second\n"
                                   "合同编号: abc default |  default\n"
                                   "通道: 1234567 default | -5 default | - second\n"
                                   "备注: abc default |  default\n"
                                   "交易所: 上交所 default | - second\n"
                                   "交易日: 1234567 default | -5 default | - second\n"
                                   "序号: 1,234,567 default | -5 default | - second\n");
}

TEST_F(FieldCatalogue, Deals)
{
    EXPECT_EQ(table(MetaMarketDeal), "成交时间: 09:30:00.120 default | - second\n"
                                     "证券代码: abc default |  default\n"
                                     "方向: 买入 rise | - second\n"
                                     "开平: 开仓 default | - second\n"
                                     "成交价格: 1,234,567.891 rise | -5.432 fall | - second\n"
                                     "成交数量: 1,234,567 default | -5 default | - second\n"
                                     "成交金额: 123.46万 default [万] | -5.43 default | - second\n"
                                     "成交编号: 1234567 default | -5 default | - second\n"
                                     "买方委托: 1234567 default | -5 default | - second\n"
                                     "卖方委托: 1234567 default | -5 default | - second\n"
                                     "通道: 1234567 default | -5 default | - second\n"
                                     "交易所: 上交所 default | - second\n"
                                     "序号: 1,234,567 default | -5 default | - second\n");
    EXPECT_EQ(table(MetaOwnDeal), "成交时间: 09:30:00.120 default | - second\n"
                                  "证券代码: abc default |  default\n"
                                  "方向: 买入 rise | - second\n"
                                  "开平: 开仓 default | - second\n"
                                  "成交价格: 1,234,567.891 rise | -5.432 fall | - second\n"
                                  "成交数量: 1,234,567 default | -5 default | - second\n"
                                  "成交金额: 123.46万 default [万] | -5.43 default | - second\n"
                                  "手续费: 1,234,567.89 default | -5.43 default | - second\n"
                                  "成交编号: 1234567 default | -5 default | - second\n"
                                  "委托编号: 1234567 default | -5 default | - second\n"
                                  "平仓盈亏: +1,234,567.89 rise | -5.43 fall | - second\n"
                                  "合同编号: abc default |  default\n"
                                  "资金账号: abc default |  default\n"
                                  "通道: 1234567 default | -5 default | - second\n"
                                  "交易所: 上交所 default | - second\n"
                                  "交易日: 1234567 default | -5 default | - second\n"
                                  "序号: 1,234,567 default | -5 default | - second\n");
}

TEST_F(FieldCatalogue, PositionsAndFunds)
{
    EXPECT_EQ(table(MetaPosition), "资金账号: abc default |  default\n"
                                   "证券代码: abc default |  default\n"
                                   "持仓方向: 多 default | - second\n"
                                   "多空: abc default |  default\n"
                                   "持仓数量: 1 234 567 default | -5 default | - second\n"
                                   "可用数量: 1 234 567 default | -5 default | - second\n"
                                   "冻结数量: 1 234 567 default | -5 default | - second\n"
                                   "今买数量: 1 234 567 default | -5 default | - second\n"
                                   "成本价: 1,234,567.891 default | -5.432 default | - second\n"
                                   "最新价: 1,234,567.891 rise | -5.432 fall | - second\n"
                                   "市值: 1 234 567.89 default | -5.43 default | - second\n"
                                   "浮动盈亏: +1 234 567.89 rise | -5.43 fall | - second\n"
                                   "盈亏比例: +123,456,789.12% rise [%] | -543.21% fall [%] | - second\n"
                                   "持仓盈亏: +1 234 567.89 rise | -5.43 fall | - second\n"
                                   "保证金: 1 234 567.89 default | -5.43 default | - second\n"
                                   "交易所: 上交所 default | - second\n");
    EXPECT_EQ(table(MetaFunds), "资金账号: abc default |  default\n"
                                "账户名称: abc default |  default\n"
                                "币种: 人民币 default | - second\n"
                                "总资产: 1 234 567.89 default | -5.43 default | - second\n"
                                "可用资金: 1 234 567.89 default | -5.43 default | - second\n"
                                "冻结资金: 1 234 567.89 default | -5.43 default | - second\n"
                                "可取资金: 1 234 567.89 default | -5.43 default | - second\n"
                                "持仓市值: 1 234 567.89 default | -5.43 default | - second\n"
                                "占用保证金: 1 234 567.89 default | -5.43 default | - second\n"
                                "持仓盈亏: +1 234 567.89 rise | -5.43 fall | - second\n"
                                "当日盈亏: +1 234 567.89 rise | -5.43 fall | - second\n"
                                "风险度: 123,456,789.12% default [%] | -543.21% default [%] | - second\n");
}

TEST_F(FieldCatalogue, InstrumentsAndQuotes)
{
    EXPECT_EQ(table(MetaInstrument), "证券代码: abc default |  default\n"
                                     "证券名称: abc default |  default\n"
                                     "交易所: 上交所 default | - second\n"
                                     "昨收: 1,234,567.89 default | -5.43 default | - second\n"
                                     "涨停: 1,234,567.89 default | -5.43 default | - second\n"
                                     "跌停: 1,234,567.89 default | -5.43 default | - second\n"
                                     "最小变动: 1,234,567.89 default | -5.43 default | - second\n"
                                     "交易单位: 1,234,567 default | -5 default | - second\n"
                                     "合约乘数: 1,234,567 default | -5 default | - second\n"
                                     "价格小数位: 1,234,567 default | -5 default | - second\n"
                                     "证券类别: 1,234,567 default | -5 default | - second\n");
    EXPECT_EQ(table(MetaQuote), "行情时间: 09:30:00 default | - second\n"
                                "证券代码: abc default |  default\n"
                                "最新价: 1,234,567.891 rise | -5.432 fall | - second\n"
                                "涨跌: +1,234,567.891 rise | -5.432 fall | - second\n"
                                "涨跌幅: +123,456,789.12% rise [%] | -543.21% fall [%] | - second\n"
                                "成交量: 123.46万 default [万] | -5 default | - second\n"
                                "成交额: 123.46万 default [万] | -5.43 default | - second\n"
                                "买一价: 1,234,567.891 rise | -5.432 fall | - second\n"
                                "买一量: 1,234,567 default | -5 default | - second\n"
                                "卖一价: 1,234,567.891 rise | -5.432 fall | - second\n"
                                "卖一量: 1,234,567 default | -5 default | - second\n"
                                "今开: 1,234,567.891 rise | -5.432 fall | - second\n"
                                "最高: 1,234,567.891 rise | -5.432 fall | - second\n"
                                "最低: 1,234,567.891 rise | -5.432 fall | - second\n"
                                "昨收: 1,234,567.891 default | -5.432 default | - second\n");
}
