#include "records/typecatalogue.h"

#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <map>

#include "kdservice/typemanager.h"
#include "records/record.h"
#include "zb/numberformat.h"

using namespace refhost;
using namespace kdservice;

namespace {

/// The columns of a table as a user of a trader type reads them.
std::string columns(const std::vector<int> &metaIds, EVxTraderType traderType)
{
    QStringList names;
    for (const FieldDes *field : TypeManager::instance()->getAllFields(metaIds, traderType))
        names << TypeManager::instance()->getFieldChsNameByType(field, traderType);
    return names.join(' ').toStdString();
}

} // namespace

TEST(TypeCatalogue, OrdersAndDealsHaveTheColumnsOfTheirTraders)
{
    EXPECT_EQ(
        columns({MetaMarketOrder}, TraderStock),
        "委托时间 证券代码 证券名称 方向 委托价格 委托数量 成交数量 成交均价 成交金额 未成数量 撤单数量 状态 更新时间 "
        "委托类型 委托编号 通道 交易所");
    EXPECT_EQ(
        columns({MetaOwnOrder}, TraderFuture),
        "委托时间 合约代码 合约名称 方向 开平 委托价格 委托手数 成交手数 成交均价 成交金额 未成手数 撤单手数 状态 "
        "更新时间 返回信息 委托类型 资金账号 委托编号 合同编号 通道 备注 交易所 交易日");
    EXPECT_EQ(columns({MetaMarketDeal}, TraderCredit),
              "成交时间 证券代码 证券名称 方向 成交价格 成交数量 成交金额 成交编号 买方委托 卖方委托 通道 交易所");
    EXPECT_EQ(columns({MetaOwnDeal}, TraderStockOption), "成交时间 合约代码 合约名称 方向 开平 成交价格 成交张数 "
                                                         "成交金额 手续费 成交编号 委托编号 平仓盈亏 合同编号 资金账号 "
                                                         "通道 交易所 交易日");
    EXPECT_EQ(columns({MetaPosition}, TraderStock),
              "资金账号 证券代码 证券名称 多空 持仓数量 可用数量 冻结数量 今买数量 成本价 "
              "最新价 市值 浮动盈亏 盈亏比例 持仓盈亏 保证金 交易所");
    EXPECT_EQ(
        columns({MetaFunds}, TraderFuture),
        "资金账号 账户名称 币种 动态权益 可用资金 冻结资金 可取资金 持仓市值 占用保证金 持仓盈亏 当日盈亏 风险度");
    EXPECT_EQ(columns({MetaMarketOrder, MetaOwnOrder}, TraderStock), columns({MetaOwnOrder}, TraderStock))
        << "several types share what they have in common";
    EXPECT_EQ(columns({}, TraderStock), "");
}

TEST(TypeCatalogue, TradersThatItDoesNotKnowSeeWhatEverybodySees)
{
    const auto unknown = static_cast<EVxTraderType>(4);
    EXPECT_EQ(columns({MetaMarketDeal}, unknown), columns({MetaMarketDeal}, TraderStock));
    EXPECT_EQ(columns({MetaMarketDeal}, TraderNone), columns({MetaMarketDeal}, TraderStock));
}

TEST(TypeCatalogue, FieldIdsMeanOneFieldOnly)
{
    std::map<int, std::pair<int, std::string>> seen;
    for (const int metaId :
         {MetaInstrument, MetaMarketOrder, MetaMarketDeal, MetaOwnOrder, MetaPosition, MetaFunds, MetaOwnDeal}) {
        const RecordType *type = TypeCatalogue::instance().findType(metaId);
        ASSERT_NE(type, nullptr) << metaId;
        for (const FieldDef &def : type->def().fields) {
            const auto [place, added] = seen.insert({def.id, {def.type, def.name}});
            EXPECT_EQ(place->second, (std::pair<int, std::string>{def.type, def.name})) << def.id;
            ASSERT_NE(type->slot(def.id), nullptr) << def.id;
            EXPECT_EQ(type->slot(def.id)->fieldId, def.id);
        }
    }
    EXPECT_GT(seen.size(), 60u);
}

TEST(TypeCatalogue, NumbersThatAreNamesAreNeverGrouped)
{
    const FieldDes *number = TypeCatalogue::instance().findType(MetaMarketOrder)->field(OrderNumber);
    const utils::CFlags<utils::EFormatNumberFlag> flags = number->formatFlags | utils::FormatGroupDigits;
    EXPECT_EQ(ZB::formatLonglongNumber(12345678, 0, flags), QStringLiteral("12345678"));
}

TEST(TypeCatalogue, EveryEnumerationThatAFieldNamesIsThere)
{
    for (const int metaId : {MetaInstrument, MetaOwnOrder, MetaOwnDeal, MetaPosition, MetaFunds}) {
        for (const auto &[id, field] : TypeCatalogue::instance().findType(metaId)->fields()) {
            FieldDes::iterator found;
            if (!field->findFunc(DisplayEnum, found))
                continue;
            bool hasText = false;
            for (int value = 0; value < 256; ++value)
                hasText |= !TypeManager::instance()->getEnumItemName(found->second, value, TraderStock).isEmpty();
            EXPECT_TRUE(hasText) << id << " " << found->second;
        }
    }
}

TEST(TypeCatalogue, EnumerationsReadAsTradersKnowThem)
{
    QStringList texts;
    for (const int status : {48, 49, 50, 51, 52, 53, 54, 55, 56, 57, 86})
        texts << TypeManager::instance()->getEnumItemName("orderstatus", status, TraderStock);
    EXPECT_EQ(texts.join(' ').toStdString(), "未报 待报 已报 已报待撤 部成待撤 部撤 已撤 部成 已成 废单 确认");
    EXPECT_EQ(TypeManager::instance()->getEnumItemName("side", '1', TraderFuture), QStringLiteral("空"));
    EXPECT_EQ(TypeManager::instance()->getEnumItemName("side", '1', TraderOption), QStringLiteral("义务"));
    EXPECT_EQ(TypeManager::instance()->getEnumItemName("side", '1', TraderStock), QString());
    EXPECT_EQ(TypeManager::instance()->getEnumItemName("orderstatus", 255, TraderStock), QString());
    EXPECT_EQ(TypeManager::instance()->getEnumItemName("no such", 48, TraderStock), QString());
}

TEST(TypeCatalogue, TakesTypesOfOthers)
{
    TypeDef def{90001, RecordKind::Order, {}, 5, 7, 6};
    def.fields = {{5, ExtString, "代码"},
                  {2000000000, ExtDouble, "价-一-二", 3, Sum | AlignRight, StockTraders, utils::FormatSign},
                  {6, ExtInt, "次序", 0, 0, Nobody},
                  {7, ExtChar, "状态"},
                  {-3, ExtBool, "旗"},
                  {5, ExtInt, "twice"},
                  {8, ExtInvalid, "no type"}};
    const RecordType *type = TypeCatalogue::instance().registerType(def);
    EXPECT_EQ(columns({90001}, TraderStock), "代码 价-一-二 状态 旗");
    EXPECT_EQ(columns({90001}, TraderFuture), "代码 状态 旗");

    const auto record = makeOrder(90001, "k");
    record->setData(5, "abc");
    record->setData(6, 9);
    record->setData(7, '5');
    record->setData(-3, true);
    record->setData(2000000000, 1.5);
    EXPECT_EQ(record->codeText(), "abc");
    EXPECT_EQ(record->entrySequence(), 9);
    EXPECT_TRUE(record->getBool(-3));
    EXPECT_EQ(record->getDouble(2000000000), 1.5);
    EXPECT_EQ(record->getFieldDes(8), nullptr);

    const FieldDes *price = record->getFieldDes(2000000000);
    EXPECT_TRUE(price->getProperty(1));
    EXPECT_FALSE(price->getProperty(2));
    EXPECT_FALSE(price->getProperty(32));
    EXPECT_FALSE(price->getProperty(-1));
    EXPECT_TRUE(TypeManager::instance()->getFieldVisibleByType(price, TraderStock));
    EXPECT_FALSE(TypeManager::instance()->getFieldVisibleByType(price, TraderFuture));

    // Registered again, the type is another one; records and descriptions of the first stay as they are.
    def.fields = {{5, ExtString, "别的"}};
    TypeCatalogue::instance().registerType(def);
    EXPECT_EQ(columns({90001}, TraderStock), "别的");
    EXPECT_EQ(record->getDouble(2000000000), 1.5);
    EXPECT_EQ(TypeCatalogue::instance().findField(price).type, type);
}

TEST(TypeCatalogue, KnowsNothingOfForeignDescriptions)
{
    FieldDes foreign;
    foreign.fieldId = OrderPrice;
    EXPECT_EQ(TypeManager::instance()->getFieldChsNameByType(&foreign, TraderStock), QString());
    EXPECT_EQ(TypeManager::instance()->getFieldChsNameByType(nullptr, TraderStock), QString());
    EXPECT_FALSE(TypeManager::instance()->getFieldVisibleByType(&foreign, TraderStock));
    FieldDes::iterator untouched = foreign.funcs.end();
    EXPECT_FALSE(foreign.findFunc(DisplayEnum, untouched));
    EXPECT_EQ(untouched, foreign.funcs.end());
}

TEST(TypeCatalogue, FollowsNestedRecordsInwards)
{
    const auto order = makeOrder(MetaOwnOrder, "k");
    const auto instrument = makePlain(MetaInstrument, "600519.SH");
    const TypeManager *manager = TypeManager::instance();
    EXPECT_EQ(manager->getLastIData(order, {}), order);
    EXPECT_EQ(manager->getLastIData(order, {OrderInstrument}), nullptr);
    order->setNested(OrderInstrument, instrument);
    EXPECT_EQ(manager->getLastIData(order, {OrderInstrument}), instrument);
    EXPECT_EQ(manager->getLastIData(order, {OrderInstrument, InstrumentName}), nullptr);
    EXPECT_EQ(manager->getLastIData({}, {OrderInstrument}), nullptr);
}
