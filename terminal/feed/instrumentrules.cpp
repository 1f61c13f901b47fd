#include "feed/instrumentrules.h"

#include <algorithm>
#include <cmath>

namespace feed {

namespace {

struct FutureProduct
{
    std::string_view letters;
    std::string_view exchange;
    std::string_view name;
    int multiplier;
    double tick;
    int decimals;
};

constexpr FutureProduct futureProducts[] = {
    {"AP", "CZCE", "苹果", 10, 1, 0},      {"CF", "CZCE", "棉花", 5, 5, 0},      {"CJ", "CZCE", "红枣", 5, 5, 0},
    {"FG", "CZCE", "玻璃", 20, 1, 0},      {"MA", "CZCE", "甲醇", 10, 1, 0},     {"OI", "CZCE", "菜油", 10, 1, 0},
    {"RM", "CZCE", "菜粕", 10, 1, 0},      {"SA", "CZCE", "纯碱", 20, 1, 0},     {"SR", "CZCE", "白糖", 10, 1, 0},
    {"TA", "CZCE", "PTA", 5, 2, 0},        {"UR", "CZCE", "尿素", 20, 1, 0},     {"a", "DCE", "豆一", 10, 1, 0},
    {"c", "DCE", "玉米", 10, 1, 0},        {"i", "DCE", "铁矿石", 100, 0.5, 1},  {"j", "DCE", "焦炭", 100, 0.5, 1},
    {"jm", "DCE", "焦煤", 60, 0.5, 1},     {"m", "DCE", "豆粕", 10, 1, 0},       {"p", "DCE", "棕榈油", 10, 2, 0},
    {"y", "DCE", "豆油", 10, 2, 0},        {"ag", "SHFE", "白银", 15, 1, 0},     {"al", "SHFE", "铝", 5, 5, 0},
    {"au", "SHFE", "黄金", 1000, 0.02, 2}, {"cu", "SHFE", "铜", 5, 10, 0},       {"ni", "SHFE", "镍", 1, 10, 0},
    {"rb", "SHFE", "螺纹钢", 10, 1, 0},    {"ru", "SHFE", "橡胶", 10, 5, 0},     {"zn", "SHFE", "锌", 5, 5, 0},
    {"sc", "INE", "原油", 1000, 0.1, 1},   {"IC", "CFFEX", "中证", 200, 0.2, 1}, {"IF", "CFFEX", "沪深", 300, 0.2, 1},
    {"IH", "CFFEX", "上证", 300, 0.2, 1},
};

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// Kinds that are not shares: funds and bonds quote three decimals, and B shares in dollars do too.
void refineByNumber(Instrument &instrument)
{
    const std::string_view code = instrument.code;
    const bool inShanghai = instrument.exchange == "SH";
    const bool inShenzhen = instrument.exchange == "SZ";
    const bool isFund = (inShanghai && startsWith(code, "5")) ||
                        (inShenzhen && (startsWith(code, "15") || startsWith(code, "16") || startsWith(code, "18")));
    const bool isBond = (inShanghai && (startsWith(code, "1") || startsWith(code, "0") || startsWith(code, "2"))) ||
                        (inShenzhen && (startsWith(code, "10") || startsWith(code, "11") || startsWith(code, "12")));
    const bool isDollarShare = inShanghai && startsWith(code, "900");
    if (isFund)
        instrument.kind = InstrumentKind::Fund;
    if (isBond) {
        instrument.kind = InstrumentKind::Bond;
        instrument.lot = 10;
    }
    if (isFund || isBond || isDollarShare) {
        instrument.priceDecimals = 3;
        instrument.tick = 0.001;
    }
    if (inShanghai && startsWith(code, "68"))
        instrument.lot = 1; // from 200 shares on, in steps of one
}

} // namespace

std::optional<Instrument> stockInstrument(std::string_view code)
{
    if (code.size() != 9 || code[6] != '.' || !std::all_of(code.begin(), code.begin() + 6, isDigit))
        return std::nullopt;
    const std::string_view suffix = code.substr(7);
    if (suffix != "SH" && suffix != "SZ" && suffix != "BJ")
        return std::nullopt;
    Instrument instrument;
    instrument.code = code;
    instrument.exchange = suffix;
    refineByNumber(instrument);
    return instrument;
}

std::optional<Instrument> futureInstrument(std::string_view code, std::string_view exchange)
{
    const auto isCodeSign = [](char c) { return isDigit(c) || isLetter(c) || c == '-' || c == '&' || c == ' '; };
    if (code.empty() || code.size() > 31 || !isLetter(code.front()) ||
        !std::all_of(code.begin(), code.end(), isCodeSign))
        return std::nullopt;
    Instrument instrument;
    instrument.code = code;
    instrument.exchange = exchange;
    instrument.kind = InstrumentKind::Future;
    instrument.priceDecimals = 0;
    instrument.tick = 1;
    instrument.lot = 1;
    const auto letterCount = std::find_if_not(code.begin(), code.end(), isLetter) - code.begin();
    const std::string_view letters = code.substr(0, size_t(letterCount));
    const std::string_view month = code.substr(letters.size());
    const bool isPlainContract = !month.empty() && std::all_of(month.begin(), month.end(), isDigit);
    for (const FutureProduct &product : futureProducts) {
        if (!isPlainContract || product.letters != letters || (!exchange.empty() && product.exchange != exchange))
            continue;
        instrument.exchange = product.exchange;
        instrument.name = std::string(product.name) + std::string(month);
        instrument.multiplier = product.multiplier;
        instrument.tick = product.tick;
        instrument.priceDecimals = product.decimals;
    }
    return instrument;
}

qint64 priceUnits(double price)
{
    return std::llround(price * priceUnitsPerOne);
}

double priceOfUnits(qint64 units)
{
    return double(units) / priceUnitsPerOne;
}

} // namespace feed
