#include "feedplayer.h"

#include <gtest/gtest.h>
#include <zlib.h>

#include <random>

using namespace feed;

namespace {

const QByteArray orderHeader = "MDDate,MDTime,SecurityType,Symbol,OrderType,OrderPrice,OrderQty,OrderBSFlag,ChannelNo,"
                               "ApplSeqNum,OrderNO,SecurityID\n";
const QByteArray tradeHeader = "MDDate,MDTime,TradeBuyNo,TradeSellNo,TradeBSFlag,TradePrice,TradeQty,TradeMoney,"
                               "ChannelNo,ApplSeqNum,SecurityID\n";

QByteArray orderRow(int number, const QByteArray &price = "10.5", const QByteArray &quantity = "100",
                    const QByteArray &code = "605580.SH")
{
    const QByteArray text = QByteArray::number(number);
    return "2023.07.11,09:30:00." + text.right(3).rightJustified(3, '0') + ",2,恒盛能源,2," + price + ',' + quantity +
           ",1,1," + text + ',' + text + ',' + code + '\n';
}

QByteArray orderFile(int rows)
{
    QByteArray content = orderHeader;
    for (int i = 1; i <= rows; ++i)
        content += orderRow(i);
    return content;
}

QByteArray gzipped(const QByteArray &content)
{
    QByteArray packed(content.size() + 1000, '\0');
    z_stream stream{};
    deflateInit2(&stream, 9, Z_DEFLATED, 15 + 16, 8, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(content.data()));
    stream.avail_in = uInt(content.size());
    stream.next_out = reinterpret_cast<Bytef *>(packed.data());
    stream.avail_out = uInt(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(int(stream.total_out));
    deflateEnd(&stream);
    return packed;
}

std::string orderNumbers(const PlayedFeed &played)
{
    std::string result;
    for (const auto &order : played.orders)
        result += (result.empty() ? "" : " ") + std::to_string(order.orderNo);
    return result;
}

} // namespace

TEST(FeedBadInput, ABadValueIsNamedWithFileLineAndColumnAndTheOtherLinesPlay)
{
    struct Case
    {
        QByteArray row;
        const char *message;
    };
    const Case cases[] = {
        {orderRow(2, "abc"), "error a.csv 第 3 行 第 6 列“OrderPrice”：“abc”不是数字"},
        {orderRow(2, ""), "error a.csv 第 3 行 第 6 列“OrderPrice”：没有填写"},
        {orderRow(2, "-1"), "error a.csv 第 3 行 第 6 列“OrderPrice”：“-1”是负数"},
        {orderRow(2, "nan"), "error a.csv 第 3 行 第 6 列“OrderPrice”：“nan”不是数字"},
        {orderRow(2, "inf"), "error a.csv 第 3 行 第 6 列“OrderPrice”：“inf”太大"},
        {orderRow(2, "1e400"), "error a.csv 第 3 行 第 6 列“OrderPrice”：“1e400”太大"},
        {orderRow(2, "10.5.1"), "error a.csv 第 3 行 第 6 列“OrderPrice”：“10.5.1”不是数字"},
        {orderRow(2, "10", "-100"), "error a.csv 第 3 行 第 7 列“OrderQty”：“-100”是负数"},
        {orderRow(2, "10", "0"), "error a.csv 第 3 行 第 7 列“OrderQty”：“0”太小"},
        {orderRow(2, "10", "1.5"), "error a.csv 第 3 行 第 7 列“OrderQty”：“1.5”不是整数"},
        {orderRow(2, "10", "99999999999999999999"),
         "error a.csv 第 3 行 第 7 列“OrderQty”：“99999999999999999999”太大"},
        {orderRow(2, "10", "100", "605580.XX"),
         "error a.csv 第 3 行 第 12 列“SecurityID”：“605580.XX”不是股票代码（六位数字加 .SH、.SZ 或 .BJ）"},
        {orderRow(2, "10", "100", "恒盛.SH"),
         "error a.csv 第 3 行 第 12 列“SecurityID”：“恒盛.SH”不是股票代码（六位数字加 .SH、.SZ 或 .BJ）"},
        {orderRow(2).replace("2023.07.11", "2023.02.29"), "error a.csv 第 3 行 第 1 列“MDDate”：“2023.02.29”不是日期"},
        {orderRow(2).replace("09:30:00", "24:30:00"), "error a.csv 第 3 行 第 2 列“MDTime”：“24:30:00.002”不是时间"},
        {orderRow(2).replace(",2,10.5", ",7,10.5"), "error a.csv 第 3 行 第 5 列“OrderType”：“7”不是已知的代码"},
        {orderRow(2).replace("100,1,1,", "100,3,1,"), "error a.csv 第 3 行 第 8 列“OrderBSFlag”：“3”不是已知的代码"},
        {orderRow(2).replace("100,1,1,", "100,1,"),
         "error a.csv 第 3 行 第 12 列“SecurityID”：这一行有 11 个字段，表头有 12 个"},
        {orderRow(2).replace(".SH", ".SH,1"),
         "error a.csv 第 3 行 第 12 列“SecurityID”：这一行有 13 个字段，表头有 12 个"},
        {orderRow(2).replace("恒盛能源", "\"恒盛能源"),
         "error a.csv 第 3 行 第 4 列“Symbol”：引号没有闭合，或者引号之后还有内容"},
        {orderRow(2).replace("10.5", QByteArray("1\0", 2) + "0.5"),
         "error a.csv 第 3 行 第 6 列“OrderPrice”：含有零字节"},
        {QByteArray(200000, 'x') + '\n', "error a.csv 第 3 行 第 1 列“MDDate”：这一行超过 65536 字节"},
        {orderRow(2, QByteArray(60, '7') + "中"),
         "error a.csv 第 3 行 第 6 列“OrderPrice”：“7777777777777777777777777777777777777777…”不是数字"},
    };
    for (const Case &bad : cases) {
        const ReplayFolder folder;
        const PlayedFeed played =
            folder.play({folder.write("a.csv", orderHeader + orderRow(1) + bad.row + orderRow(3))});
        EXPECT_TRUE(played.loaded) << bad.message;
        EXPECT_EQ(joined(played.messages), bad.message + std::string("\n"));
        EXPECT_EQ(orderNumbers(played), "1 3") << bad.message;
    }
}

TEST(FeedBadInput, WritersMayEndLinesQuoteOrderAndMarkFilesAsTheyPlease)
{
    const QByteArray plain = orderHeader + orderRow(1) + orderRow(2);
    QByteArray quoted = plain;
    quoted.replace(",", "\",\"").replace("\n", "\"\n\"");
    const QByteArray variants[] = {
        plain,
        QByteArray(plain).replace("\n", "\r\n"),
        "\xef\xbb\xbf" + plain,
        "\n\n" + QByteArray(plain).replace("\n", "\n\n"),
        plain.left(plain.size() - 1),
        '"' + quoted.left(quoted.size() - 1),
        QByteArray(plain).replace(",", " , "),
        QByteArray(plain).replace(",100,", ",100.00,"),
        QByteArray("OrderNO,SecurityID,Extra,MDTime,MDDate,OrderType,OrderPrice,OrderQty,OrderBSFlag,ChannelNo,"
                   "ApplSeqNum\n1,605580.SH,\"a,\"\"b\",09:30:00.001,2023.07.11,2,10.5,100,1,1,1\n"
                   "2,605580.SH,,09:30:00.002,2023-07-11,2,10.5,100,1,1,2\n"),
        gzipped(plain),
        gzipped(plain.left(200)) + gzipped(plain.mid(200)),
        gzipped(plain) + QByteArray(512, '\0'),
    };
    for (const QByteArray &variant : variants) {
        const ReplayFolder folder;
        const PlayedFeed played = folder.play({folder.write("any.name", variant)});
        EXPECT_EQ(joined(played.messages), "") << variant.toStdString();
        EXPECT_EQ(orderNumbers(played), "1 2") << variant.toStdString();
        ASSERT_EQ(played.orders.size(), 2u);
        EXPECT_EQ(played.orders[1].price, 10.5);
        EXPECT_EQ(played.orders[1].quantity, 100);
        EXPECT_EQ(played.orders[1].firstTime, 1689039000002) << "09:30 in China";
    }
}

TEST(FeedBadInput, ACutLastLineIsLeftOut)
{
    const QByteArray whole = orderFile(3);
    for (const int cut : {2, 3, 20, 60}) {
        const ReplayFolder folder;
        const PlayedFeed played = folder.play({folder.write("a.csv", whole.left(whole.size() - cut))});
        EXPECT_EQ(orderNumbers(played), "1 2") << cut;
        ASSERT_EQ(played.messages.size(), 1u) << cut;
        EXPECT_EQ(played.messages[0].find("error a.csv 第 4 行 第 "), 0u) << played.messages[0];
    }
}

TEST(FeedBadInput, OfATruncatedGzipFileTheWholeLinesPlay)
{
    const QByteArray packed = gzipped(orderFile(2000));
    const ReplayFolder folder;
    const PlayedFeed played = folder.play({folder.write("a.csv.gz", packed.left(packed.size() / 2))});
    EXPECT_TRUE(played.loaded);
    ASSERT_EQ(played.messages.size(), 1u);
    EXPECT_NE(played.messages[0].find("压缩数据不完整，请确认文件已传完；已读出的部分照常使用"), std::string::npos)
        << played.messages[0];
    ASSERT_GT(played.orders.size(), 100u);
    EXPECT_LT(played.orders.size(), 2000u);
    EXPECT_EQ(played.messages[0].substr(0, 9 + 3), "error a.csv.");
    EXPECT_NE(played.messages[0].find(".gz 第 " + std::to_string(played.orders.size() + 2) + " 行："),
              std::string::npos)
        << played.messages[0];
}

TEST(FeedBadInput, ADamagedGzipFileIsNotPlayedAtAll)
{
    QByteArray wrongSum = gzipped(orderFile(2000));
    wrongSum[wrongSum.size() - 6] = char(wrongSum[wrongSum.size() - 6] ^ 1);
    QByteArray wrongData = gzipped(orderFile(2000));
    for (int i = wrongData.size() / 2; i < wrongData.size() / 2 + 40; ++i)
        wrongData[i] = char(wrongData[i] ^ 0x55);
    const QByteArray wrongHead = QByteArray("\x1f\x8b") + QByteArray(100, '\x7f');
    for (const QByteArray &content : {wrongSum, wrongData, wrongHead}) {
        const ReplayFolder folder;
        folder.write("good.csv", orderFile(2));
        folder.write("wrong.csv.gz", content);
        const PlayedFeed played = folder.play({folder.path(".")});
        EXPECT_FALSE(played.loaded);
        ASSERT_FALSE(played.messages.empty());
        const std::string &last = played.messages.back();
        EXPECT_EQ(last.substr(0, 20), "fatal ./wrong.csv.gz") << last;
        EXPECT_NE(last.find("压缩数据已损坏，请重新获取文件"), std::string::npos) << last;
    }
}

TEST(FeedBadInput, APathThatGivesNothingToPlayFailsWithOneReason)
{
    const ReplayFolder folder;
    folder.write("empty.csv", "");
    folder.write("header.csv", orderHeader);
    folder.write("other.csv", "time,price\n1,2\n");
    folder.write("binary.gz", QByteArray("PK\x03\x04\0\0\n\xff\xfe", 9));
    folder.write("missing.csv", QByteArray(orderFile(2)).replace("OrderQty,", "Quantity,").replace("OrderNO", "No"));
    folder.write("twice.csv", QByteArray(orderFile(2)).replace("SecurityType", "OrderQty"));
    folder.write("notes/readme.txt", "nothing\n");
    struct Case
    {
        QStringList paths;
        const char *messages;
    };
    const Case cases[] = {
        {{}, "fatal 没有指定要回放的文件或文件夹\n"},
        {{""}, "fatal 指定的路径是空的\n"},
        {{folder.path("gone.csv")}, "fatal gone.csv：找不到这个文件或文件夹，请检查路径\n"},
        {{"/dev/null"}, "fatal /dev/null：既不是文件也不是文件夹\n"},
        {{folder.path("empty.csv")}, "fatal empty.csv：文件是空的\n"},
        {{folder.path("header.csv")},
         "warning header.csv 第 1 行：只有表头，没有数据\nfatal 文件里没有可以回放的数据\n"},
        {{folder.path("other.csv")},
         "fatal other.csv 第 1 行 第 1 "
         "列“time”：列名不符合任何已知的行情格式（沪市委托、沪市成交、深市成交、股票快照、期货 CTP 行情）\n"},
        {{folder.path("binary.gz")},
         "fatal binary.gz 第 1 行 第 1 "
         "列“PK????”：列名不符合任何已知的行情格式（沪市委托、沪市成交、深市成交、股票快照、期货 CTP 行情）\n"},
        {{folder.path("missing.csv")}, "fatal missing.csv 第 1 行：沪市委托文件缺少必需的列“OrderQty”、“OrderNO”\n"},
        {{folder.path("twice.csv")}, "fatal twice.csv 第 1 行 第 7 列“OrderQty”：列名重复，第 3 列已有\n"},
        {{folder.path("notes")},
         "warning notes/readme.txt 第 1 行 第 1 列“nothing”：列名不符合任何已知的行情格式，已略过\n"
         "fatal notes：文件夹里没有可以回放的行情文件（沪市委托、沪市成交、深市成交、股票快照、期货 CTP 行情）\n"},
    };
    for (const Case &bad : cases) {
        const PlayedFeed played = folder.play(bad.paths);
        EXPECT_FALSE(played.loaded) << bad.messages;
        EXPECT_EQ(joined(played.messages), bad.messages);
        EXPECT_TRUE(played.orders.empty());
    }
}

TEST(FeedBadInput, AFolderIsReadWithAllBelowItAndPassesOverWhatItDoesNotKnow)
{
    const ReplayFolder folder;
    folder.write("market/b/orders.csv", orderFile(2));
    folder.write("market/a/deals.csv", tradeHeader + "2023.07.11,09:30:01.000,1,2,0,10.5,100,1050,1,77,605580.SH\n");
    folder.write("market/notes.txt", "price list\n");
    folder.write("market/empty", "");
    const PlayedFeed played =
        folder.play({folder.path("market"), folder.path("market/b/orders.csv"), folder.path("market/b")});
    EXPECT_TRUE(played.loaded);
    EXPECT_EQ(joined(played.messages),
              "warning market/empty：文件是空的，已略过\n"
              "warning market/notes.txt 第 1 行 第 1 列“price list”：列名不符合任何已知的行情格式，已略过\n"
              "error market/a/deals.csv 第 2 行：委托 2 属于另一只股票或另一买卖方向\n");
    EXPECT_EQ(orderNumbers(played), "1 2");
    EXPECT_EQ(played.counters.duplicates, 0) << "a file that is reached by two paths is read once";
}

TEST(FeedBadInput, AFileOfNothingButBadLinesGivesTenMessagesAndACount)
{
    QByteArray content = orderHeader;
    for (int i = 1; i <= 5000; ++i)
        content += orderRow(i, "x");
    const ReplayFolder folder;
    const PlayedFeed played = folder.play({folder.write("a.csv", content)});
    EXPECT_FALSE(played.loaded);
    ASSERT_EQ(played.messages.size(), 12u);
    EXPECT_EQ(played.messages[9], "error a.csv 第 11 行 第 6 列“OrderPrice”：“x”不是数字");
    EXPECT_EQ(played.messages[10], "error a.csv：还有 4990 行有错误或警告，未逐一列出");
    EXPECT_EQ(played.messages[11], "fatal 文件里没有可以回放的数据");
}

TEST(FeedBadInput, RowsThatContradictEachOtherAreNamedAndTheFirstCounts)
{
    const ReplayFolder folder;
    const QByteArray deals = tradeHeader + "2023.07.11,09:30:01.000,1,9,1,10.5,60,630,1,20,605580.SH\n"
                                           "2023.07.11,09:30:02.000,1,8,1,10.5,70,735,1,21,605580.SH\n";
    const PlayedFeed played = folder.play(
        {folder.write("orders.csv", orderFile(1) + orderRow(1, "11") + orderRow(1).replace("1,1,1,1,", "1,1,5,1,")),
         folder.write("deals.csv", deals)});
    EXPECT_EQ(joined(played.messages),
              "error orders.csv 第 3 行“ApplSeqNum”列：编号 1 已用于 orders.csv 第 2 行，以那一行为准\n"
              "error orders.csv 第 4 行：委托 1 重复出现\n"
              "error deals.csv 第 3 行：成交或撤单的数量超过委托 1 的剩余数量\n");
    ASSERT_EQ(played.orders.size(), 3u);
    EXPECT_EQ(played.orders[0].price, 10.5);
    EXPECT_EQ(played.orders[0].filled, 130);
    EXPECT_EQ(played.orders[0].quantity, 130) << "deals are facts";
    EXPECT_EQ(played.orders[0].status, OrderStatus::Filled);
}

TEST(FeedBadInput, DamageAtRandomPlacesIsSurvivedAndReportedInBoundedWords)
{
    QByteArray snapshots = "MDDate,MDTime,SecurityID,PreClosePx,LastPx,OpenPx,HighPx,LowPx,TotalVolumeTrade,"
                           "TotalValueTrade,TradingPhaseCode,MaxPx,MinPx";
    QByteArray levels;
    for (const char *side : {"Buy", "Sell"})
        for (int level = 1; level <= 10; ++level) {
            const QByteArray number = QByteArray::number(level);
            snapshots += QByteArray(",") + side + "Price" + number + ',' + side + "OrderQty" + number;
            levels += ",10." + number + ",100";
        }
    const QByteArray snapshotRow =
        "\n2022.06.01,09:30:03.000,300918.SZ,8.18,8.2,8.1,8.3,8,500,4100,3,9.82,6.54" + levels;
    const QByteArray contents[] = {
        orderFile(30),
        tradeHeader + QByteArray("2023.07.11,09:30:01.000,1,9,1,10.5,60,630,1,20,605580.SH\n").repeated(20),
        QByteArray(
            "ChannelNo,ApplSeqNum,BidApplSeqNum,OfferApplSeqNum,SecurityID,TradePrice,TradeQty,ExecType,TradeTime\n") +
            QByteArray("2013,1845,1844,0,000001,0,200,4,2023.02.01T09:15:00.040\n").repeated(20),
        snapshots + snapshotRow.repeated(10),
        QByteArray(
            "TradingDay,InstrumentID,LastPrice,PreSettlementPrice,PreClosePrice,OpenPrice,HighestPrice,LowestPrice,"
            "Volume,Turnover,OpenInterest,UpperLimitPrice,LowerLimitPrice,UpdateTime,UpdateMillisec,BidPrice1,"
            "BidVolume1,AskPrice1,AskVolume1\n") +
            QByteArray("20200803,AP010,7169,7233,7185,7169,7169,7169,419,3003811,148703,7667,6799,08:59:00,000,7168,1,"
                       "7169,63\n")
                .repeated(20),
    };
    static const char *const insertions[] = {"\"",   ",", "\n",  "-", "9999999999999", "1e999", "\r",
                                             "\xff", ".", "nan", ""};
    const ReplayFolder folder;
    for (unsigned seed = 1; seed <= 300; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        std::mt19937 random(seed);
        QByteArray content = contents[random() % 5];
        const bool isPacked = random() % 4 == 0;
        if (isPacked)
            content = gzipped(content);
        for (unsigned damages = 1 + random() % 8; damages > 0; --damages) {
            const int place = int(random() % unsigned(content.size()));
            switch (random() % 4) {
            case 0:
                content[place] = char(random());
                break;
            case 1:
                content.insert(place, insertions[random() % 11]);
                break;
            case 2:
                content.remove(place, int(random() % 20));
                break;
            default:
                content.insert(place, content.mid(int(random() % unsigned(content.size())), int(random() % 50)));
            }
            if (content.isEmpty())
                content = "x";
        }
        const PlayedFeed played = folder.play({folder.write("damaged", content)});
        EXPECT_LE(played.messages.size(), 32u);
        EXPECT_EQ(played.loaded, !played.times.empty());
        for (const auto &order : played.orders)
            EXPECT_LE(order.filled + order.cancelled, order.quantity);
    }
}

TEST(FeedBadInput, LoadingIsGivenUpInTheMiddleOfAFileEvenWithoutALineEnd)
{
    const ReplayFolder folder;
    const QByteArray contents[] = {orderFile(20000), orderHeader + QByteArray(2'000'000, 'x')};
    for (const QByteArray &content : contents) {
        ReplayFeed replay({folder.write("a.csv", content)});
        BatchWriter writer;
        int calls = 0;
        EXPECT_FALSE(replay.load(writer, [&] { return ++calls < 3; }));
        EXPECT_EQ(calls, 3);
        EXPECT_LT(writer.counters().bytesRead, 200'000);
    }
}
