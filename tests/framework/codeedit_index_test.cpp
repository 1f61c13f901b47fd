#include <gtest/gtest.h>

#include <QtCore/QStringList>
#include <random>

#include "codes/charreadings.h"
#include "codes/codesearch.h"
#include "kdservice/evxtradertype.h"
#include "printtext.h"

using namespace ZB;

namespace {

KV::InstrumentItem item(const QString &code, const QString &name, KV::EFilterFlag kind = KV::FilterStock)
{
    const int traders = kind == KV::FilterIndex    ? 0
                        : kind == KV::FilterFuture ? kdservice::TraderFuture
                                                   : kdservice::TraderStock;
    return {code, name, QString(), kind, traders};
}

std::vector<KV::InstrumentItem> someInstruments()
{
    return {item("000001.SH", "上证指数", KV::FilterIndex),
            item("000001.SZ", "平安银行"),
            item("000002.SZ", "万 科Ａ"),
            item("000338.SZ", "潍柴动力"),
            item("002936.SZ", "郑州银行"),
            item("510050.SH", "上证50ETF", KV::FilterFund),
            item("600000.SH", "浦发银行"),
            item("600019.SH", "宝钢股份"),
            item("600519.SH", "贵州茅台"),
            item("601005.SH", "*ST重钢"),
            item("601077.SH", "渝农商行"),
            item("601963.SH", "重庆银行"),
            item("600129.SH", "太极集团"),
            item("AP010", "苹果2010", KV::FilterFuture),
            item("rb2410", "螺纹钢2410", KV::FilterFuture)};
}

std::shared_ptr<const CodeIndex> indexOf(std::vector<KV::InstrumentItem> items)
{
    static CharReadings readings;
    return std::make_shared<const CodeIndex>(std::move(items), readings);
}

/// "code name" of each hit, the answering parts in brackets.
QStringList found(CodeSearch &search, const QString &text)
{
    search.find(text);
    QStringList lines;
    for (const CodeHit &hit : search.hits()) {
        const auto marked = [](QString shown, const TextPart &part) {
            return part.length == 0 ? shown
                                    : shown.insert(part.start + part.length, QLatin1Char(']')).insert(part.start, '[');
        };
        lines << marked(search.item(hit).code, search.codePart(hit)) + QLatin1Char(' ') +
                     marked(search.item(hit).name, search.namePart(hit));
    }
    return lines;
}

struct CodeEditIndex : testing::Test
{
    CodeEditIndex() { search.setIndex(indexOf(someInstruments())); }
    QString find(const QString &text) { return found(search, text).join(QStringLiteral(", ")); }
    CodeSearch search;
};

} // namespace

TEST_F(CodeEditIndex, FindsByCodeNameAndInitialsAndMarksWhatAnswers)
{
    const struct
    {
        const char *text;
        const char *answer;
    } cases[] = {
        {"600519", "[600519].SH 贵州茅台"},
        {"600519.sh", "[600519.SH] 贵州茅台"},
        {"sh600519", "[600519.SH] 贵州茅台"},
        {"SZ00000", "[000001.SZ] 平安银行, [000002.SZ] 万 科Ａ"},
        {"６００５１９", "[600519].SH 贵州茅台"},
        {"000001", "[000001].SZ 平安银行, [000001].SH 上证指数"},
        {"0519", "60[0519].SH 贵州茅台"},
        {"gzmt", "600519.SH [贵州茅台]"},
        {"GZ", "600519.SH [贵州]茅台"},
        {"mt", "600519.SH 贵州[茅台]"},
        {"茅台", "600519.SH 贵州[茅台]"},
        {"贵州m", "600519.SH [贵州茅]台"},
        {"wka", "000002.SZ [万 科Ａ]"},
        {"万科", "000002.SZ [万 科]Ａ"},
        {"stzg", "601005.SH *[ST重钢]"},
        {"*ST", "601005.SH *[ST]重钢"},
        {"50etf", "510050.SH 上证[50ETF]"},
        {"ap0", "[AP0]10 苹果2010"},
        {"2410", "rb2410 螺纹钢[2410]"},
        {"xyz", ""},
        {"???", ""},
    };
    for (const auto &one : cases)
        EXPECT_EQ(find(QString::fromUtf8(one.text)), QString::fromUtf8(one.answer)) << one.text;
}

TEST_F(CodeEditIndex, ACharacterOfTwoReadingsIsFoundUnderBoth)
{
    for (const char *text : {"cqyh", "zqyh", "cqyx"})
        EXPECT_EQ(find(text), QStringLiteral("601963.SH [重庆银行]")) << text;
    EXPECT_EQ(find("stcg"), QStringLiteral("601005.SH *[ST重钢]"));
    CharReadings readings;
    const struct
    {
        const char16_t *character;
        const char *letters;
    } cases[] = {{u"长", "cz"}, {u"厦", "sx"},  {u"行", "hx"}, {u"乐", "ly"}, {u"藏", "cz"},
                 {u"曾", "cz"}, {u"单", "cds"}, {u"会", "hk"}, {u"车", "cj"}, {u"柏", "b"},
                 {u"贵", "g"},  {u"亿", "y"},   {u"鄂", "e"},  {u"7", "7"}};
    for (const auto &one : cases) {
        quint64 letters = 0;
        for (const char *letter = one.letters; *letter != 0; ++letter)
            letters |= initialBit(char32_t(*letter));
        EXPECT_EQ(readings.initialsOf(*one.character), letters) << one.letters;
    }
}

TEST_F(CodeEditIndex, BetterAnswersComeFirst)
{
    search.setIndex(indexOf({item("ST1.SH", "绿地"), item("ST", "甲"), item("600003.SH", "上泰"),
                             item("600002.SH", "上泰股份"), item("600001.SH", "*ST丙"), item("600004.SH", "大上泰"),
                             item("AST9", "乙"), item("600005.SH", "石塔", KV::FilterIndex)}));
    EXPECT_EQ(found(search, "st"),
              QStringList({"[ST] 甲", "[ST]1.SH 绿地", "600003.SH [上泰]", "600005.SH [石塔]", "600001.SH *[ST]丙",
                           "600002.SH [上泰]股份", "600004.SH 大[上泰]", "A[ST]9 乙"}));
}

TEST_F(CodeEditIndex, AnEmptyTextFindsEverythingTradedFirst)
{
    search.find(QString());
    ASSERT_EQ(search.hits().size(), someInstruments().size());
    EXPECT_EQ(search.item(search.hits().front()).code, QStringLiteral("000001.SZ"));
    EXPECT_EQ(search.item(search.hits().back()).code, QStringLiteral("000001.SH"));
}

TEST_F(CodeEditIndex, FiltersLeaveOutWhatTheFieldDoesNotOffer)
{
    CodeFilter filter;
    filter.traderTypes = kdservice::TraderFuture;
    search.setFilter(filter);
    EXPECT_EQ(find("0"), QStringLiteral("[0]00001.SH 上证指数, AP010 苹果2[0]10, rb2410 螺纹钢241[0]"));
    filter.isTradedOnly = true;
    search.setFilter(filter);
    EXPECT_EQ(find("0000"), QString());
    filter = CodeFilter();
    filter.kinds = KV::FilterFund | KV::FilterIndex;
    search.setFilter(filter);
    EXPECT_EQ(find("sz"), QStringLiteral("510050.SH [上证]50ETF, 000001.SH [上证]指数"));
    filter = CodeFilter();
    filter.hasWhiteList = true;
    filter.whiteList = {{"SZ", {}}, {"SH", {"600519"}}, {"", {"rb2410"}}};
    search.setFilter(filter);
    EXPECT_EQ(find("yh"), QStringLiteral("000001.SZ 平安[银行], 002936.SZ 郑州[银行]"));
    EXPECT_EQ(find("60"), QStringLiteral("[60]0519.SH 贵州茅台"));
    EXPECT_EQ(find("10"), QStringLiteral("rb2410 螺纹钢24[10]"));
}

TEST_F(CodeEditIndex, OnlyACodeThatStandsAloneIsExact)
{
    for (const auto &[text, exact] : {std::pair("600519", true),
                                      {"000001", false},
                                      {"000001.sz", true},
                                      {"sz000001", true},
                                      {"60051", false},
                                      {"gzmt", false},
                                      {"", false}}) {
        search.find(text);
        EXPECT_EQ(search.isExact(), exact) << text;
    }
}

/// Every name that a text answers, worked out character by character from all ways to write it.
TEST_F(CodeEditIndex, RandomTextsFindWhatASlowWalkOverAllSpellingsFinds)
{
    const unsigned seed = std::random_device{}();
    std::mt19937 random(seed);
    const QStringList characters = {"重", "庆", "银", "行", "长", "安", "a", "5", "厦"};
    const QStringList spellings = {"cz重", "q庆", "y银", "hx行", "cz长", "a安", "a", "5", "xs厦"};
    const auto pick = [&random](int n) { return std::uniform_int_distribution<int>(0, n - 1)(random); };
    for (int round = 0; round < 40; ++round) {
        std::vector<KV::InstrumentItem> items;
        std::vector<QStringList> ways; // per item, per character
        for (int i = 0; i < 30; ++i) {
            QString name;
            QStringList spelling;
            for (int length = 1 + pick(5); length > 0; --length) {
                const int at = pick(characters.size());
                name += characters[at];
                spelling << spellings[at];
            }
            items.push_back(item(QStringLiteral("x%1").arg(100 + i), name));
            ways.push_back(spelling);
        }
        search.setIndex(indexOf(items));
        QString text;
        for (int length = 1 + pick(3); length > 0; --length) {
            const QString spelling = spellings[pick(spellings.size())];
            text += spelling[pick(spelling.size())];
        }
        QStringList expected;
        for (std::size_t i = 0; i < items.size(); ++i) {
            bool answers = items[i].code.contains(text);
            for (int at = 0; !answers && at + text.size() <= ways[i].size(); ++at) {
                answers = true;
                for (int k = 0; k < text.size(); ++k)
                    answers = answers && ways[i][at + k].contains(text[k]);
            }
            if (answers)
                expected << items[i].code;
        }
        QStringList codes;
        search.find(text);
        for (const CodeHit &hit : search.hits())
            codes << search.item(hit).code;
        codes.sort();
        EXPECT_EQ(codes, expected) << "seed " << seed << " text " << text.toStdString();
    }
}
