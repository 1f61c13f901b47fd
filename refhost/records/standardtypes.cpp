#include "records/standardtypes.h"

#include "records/fieldids.h"

namespace refhost {

std::vector<TypeDef> standardTypes()
{
    std::vector<TypeDef> all = accountTypes();
    for (auto &&types : {orderTypes(), dealTypes(), quoteTypes()})
        all.insert(all.end(), types.begin(), types.end());
    return all;
}

namespace display {

Funcs enumeration(const char *name)
{
    return {{kdservice::DisplayEnum, name}};
}

Funcs direction()
{
    return {{kdservice::DisplayEnum, "direction"}, {kdservice::DisplayDirection, ""}};
}

Funcs status()
{
    return {{kdservice::DisplayEnum, "orderstatus"}, {kdservice::DisplayStatus, "orderstatus"}};
}

Funcs time(const char *part)
{
    return {{kdservice::DisplayTime, part}};
}

Funcs price()
{
    return {{kdservice::DisplayPrice, std::to_string(InstrumentPriceDecimals)}};
}

Funcs comparedPrice()
{
    Funcs funcs = price();
    funcs[kdservice::DisplayComparePrice] = std::to_string(InstrumentPrevClose);
    return funcs;
}

Funcs change()
{
    return {{kdservice::DisplayChange, ""}};
}

Funcs priceChange()
{
    Funcs funcs = price();
    funcs[kdservice::DisplayChange] = "";
    return funcs;
}

} // namespace display

std::vector<std::pair<std::string, std::vector<EnumItem>>> standardEnums()
{
    return {
        {"direction", {{'0', "买入"}, {'1', "卖出"}}},
        {"offset",
         {{'0', "开仓"}, {'1', "平仓"}, {'2', "强平"}, {'3', "平今"}, {'4', "平昨"}, {'5', "强减"}, {'6', "本地强平"}}},
        {"orderstatus",
         {{'0', "未报"},
          {'1', "待报"},
          {'2', "已报"},
          {'3', "已报待撤"},
          {'4', "部成待撤"},
          {'5', "部撤"},
          {'6', "已撤"},
          {'7', "部成"},
          {'8', "已成"},
          {'9', "废单"},
          {'V', "确认"}}},
        {"orderkind", {{'1', "市价"}, {'2', "限价"}, {'U', "本方最优"}}},
        {"exchange",
         {{1, "上交所"},
          {2, "深交所"},
          {3, "北交所"},
          {4, "中金所"},
          {5, "上期所"},
          {6, "大商所"},
          {7, "郑商所"},
          {8, "能源中心"},
          {9, "广期所"}}},
        {"side",
         {{'0', "多", FutureTraders},
          {'1', "空", FutureTraders},
          {'0', "权利", OptionTraders},
          {'1', "义务", OptionTraders},
          {'2', "备兑", OptionTraders},
          {'0', "持有"}}},
        {"currency", {{0, "人民币"}, {1, "美元"}, {2, "港币"}}},
    };
}

} // namespace refhost
