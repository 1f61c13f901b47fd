#include <gtest/gtest.h>

#include <algorithm>
#include <boost/make_shared.hpp>
#include <boost/thread/thread.hpp>
#include <future>

#include "kdservice/keyhash.h"
#include "pagemodel/pagecolumns.h"
#include "pagerecords.h"
#include "plainrecord.h"
#include "records/fieldids.h"

using namespace pagetest;

namespace {

/// A model over the test columns in which every status passes.
struct Model : KV::CHpfPageDataModel
{
    explicit Model(bool append = true, int type = metaId) : CHpfPageDataModel(type, kdservice::TraderStock, append)
    {
        setColumns(*this);
        setExFilterStatus(0);
    }

    std::string put(const std::string &key, const Values &values = {})
    {
        const Result result = addData(makeOrder(key, values));
        return "+" + result->enterKey + " -" + result->leaveKey;
    }

    std::string shown() const { return keysOf(getShowDatas()); }
    std::string everything() const { return keysOf(getAllDatas()); }
};

Values priced(double price, int sequence = 0)
{
    Values values;
    values.price = price;
    values.sequence = sequence;
    return values;
}

Values withStatus(int status, const std::string &code = "600000.SH")
{
    Values values;
    values.status = status;
    values.code = code;
    return values;
}

} // namespace

TEST(PageModelRules, NewRecordsGoWhereTheSequenceFlagSays)
{
    Model front(false);
    EXPECT_EQ(front.put("A"), "+A -");
    EXPECT_EQ(front.put("B"), "+B -");
    EXPECT_EQ(front.shown(), "B A");
    EXPECT_EQ(front.everything(), "B A");
    front.setAppendSeq(true);
    front.put("C");
    EXPECT_EQ(front.shown(), "B A C");
    EXPECT_TRUE(front.defaultSeqAscending());
}

TEST(PageModelRules, AnUpdateKeepsTheSequenceNumberAndACoverToo)
{
    Model model;
    model.put("A");
    model.put("B");
    model.put("A");
    model.put("C");
    const auto sequence = [&](const char *key) { return model.getDataByKey(kdservice::hashOfKey(key))->getDataSeq(); };
    EXPECT_EQ(sequence("A"), 0);
    EXPECT_EQ(sequence("C"), 2);

    // Hidden records are covered: they keep their number, and the counter goes on.
    model.setExFilterStatus(2);
    model.filterColumn({});
    model.put("B");
    EXPECT_EQ(sequence("B"), 1);
    model.put("D");
    EXPECT_EQ(sequence("D"), 4);
    EXPECT_EQ(model.size(), 0);
    EXPECT_EQ(model.originalSize(), 4);
}

TEST(PageModelRules, ResultsTellWhatEntersAndLeavesThePage)
{
    Model model;
    model.setPageCount(2);
    model.sortByColumnID(DoubleColumn, 0);
    for (const auto &[key, price] : {std::pair{"B", 2.0}, {"D", 4.0}, {"F", 6.0}, {"H", 8.0}})
        model.put(key, priced(price));
    model.setStartIndex(1);
    ASSERT_EQ(model.shown(), "B D F H");

    struct Case
    {
        const char *what;
        const char *key;
        double price;
        const char *result;
        const char *shown;
    };
    const Case cases[] = {
        {"in front of the page", "A", 1, "+B -F", "A B D F H"},
        {"inside the page", "C", 3, "+C -D", "A B C D F H"},
        {"behind the page", "I", 9, "+ -", "A B C D F H I"},
        {"an update that stays", "C", 3.5, "+C -", "A B C D F H I"},
        {"out of the page to the front", "C", 0.5, "+A -C", "C A B D F H I"},
        {"out of the page to the end", "A", 10, "+D -A", "C B D F H I A"},
        {"into the page from the end", "A", 3, "+A -D", "C B A D F H I"},
        {"into the page from the front", "C", 2.5, "+C -B", "B C A D F H I"},
        {"past the page to the end", "B", 11, "+D -C", "C A D F H I B"},
        {"past the page to the front", "B", 0, "+C -D", "B C A D F H I"},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(model.put(c.key, priced(c.price)), c.result) << c.what;
        EXPECT_EQ(model.shown(), c.shown) << c.what;
    }
    EXPECT_FALSE(model.addData(boost::shared_ptr<kdservice::IData>()));
    EXPECT_FALSE(model.addData(boost::make_shared<KV::CHpfPageData>(nullptr)));
}

TEST(PageModelRules, ARecordThatNoLongerPassesLeavesAndTheNextMovesUp)
{
    Model model;
    model.setPageCount(2);
    model.setExFilterStatus(1);
    for (const char *key : {"A", "B", "C"})
        model.put(key);
    EXPECT_EQ(model.put("A", withStatus('8')), "+C -A");
    EXPECT_EQ(model.shown(), "B C");
    EXPECT_EQ(model.everything(), "A B C");
    // Hidden now: coming back is an add to the visible list, over the hidden record.
    model.totalCountChange();
    EXPECT_EQ(model.put("A"), "+ -");
    EXPECT_EQ(model.shown(), "B C A");
    EXPECT_FALSE(model.totalCountChange());
    // In front of the page all of it moves; what comes in is told where the record went into the page before it went.
    model.sortByColumnID(DoubleColumn, 0);
    model.setStartIndex(1);
    const char *keys[] = {"A", "B", "C", "D", "E"};
    for (int i = 0; i < 5; ++i)
        model.put(keys[i], priced(i));
    Values closed = priced(1.5);
    closed.status = '8';
    EXPECT_EQ(model.put("A", closed), "+D -A");
    EXPECT_EQ(model.shown(), "B C D E");
    closed.price = 1;
    EXPECT_EQ(model.put("B", closed), "+ -B");
    EXPECT_EQ(model.shown(), "C D E");
}

TEST(PageModelRules, TheOrderOfTwoDoesNotDependOnWhichCameFirst)
{
    const auto with = [](auto member, const auto &choices) {
        std::vector<Values> list;
        for (const auto &choice : choices) {
            list.emplace_back();
            list.back().*member = choice;
        }
        return list;
    };
    constexpr double infinite = std::numeric_limits<double>::infinity();
    const std::map<int, std::vector<Values>> valuesOfColumn{
        {IntColumn, with(&Values::channel, std::vector<int>{std::numeric_limits<int>::min(), -1, 0, noInt - 1, noInt})},
        {LongColumn,
         with(&Values::quantity, std::vector<qint64>{std::numeric_limits<qint64>::min(), 0, 1, noLong - 1, noLong})},
        {DoubleColumn,
         with(&Values::price, std::vector<double>{-infinite, -noDouble, 10, 10.000006, 10.000012, infinite, noDouble,
                                                  std::numeric_limits<double>::quiet_NaN()})},
        {TextColumn, with(&Values::code, std::vector<std::string>{"", "9", "10", "AB", "\xff"})},
        {CharColumn, with(&Values::status, std::vector<int>{'0', '9', 'V', noInt})},
        {NestedColumn, with(&Values::lot, std::vector<int>{1, 100, 200})},
    };
    for (const auto &[column, values] : valuesOfColumn)
        for (const int order : {0, 1, 7})
            for (std::size_t i = 0; i < values.size(); ++i)
                for (std::size_t j = 0; j < values.size(); ++j) {
                    Model sorted;
                    sorted.put("A", values[i]);
                    sorted.put("B", values[j]);
                    sorted.sortByColumnID(column, order);
                    Model swapped;
                    swapped.put("B", values[j]);
                    swapped.put("A", values[i]);
                    swapped.sortByColumnID(column, order);
                    Model placed;
                    placed.sortByColumnID(column, order);
                    placed.put("B", values[j]);
                    placed.put("A", values[i]);
                    EXPECT_EQ(sorted.shown(), swapped.shown()) << column << ' ' << order << ' ' << i << ' ' << j;
                    EXPECT_EQ(sorted.shown(), placed.shown()) << column << ' ' << order << ' ' << i << ' ' << j;
                }
}

TEST(PageModelRules, MissingValuesAreLastInBothDirectionsForEveryType)
{
    struct Case
    {
        int column;
        Values low, high, none;
    };
    const auto with = [](auto member, auto value) {
        Values values;
        values.*member = value;
        return values;
    };
    const Case cases[] = {
        {IntColumn, with(&Values::channel, -1), with(&Values::channel, 7), with(&Values::channel, noInt)},
        {LongColumn, with(&Values::quantity, qint64(-5)), with(&Values::quantity, qint64(1) << 40),
         with(&Values::quantity, noLong)},
        {DoubleColumn, priced(-1e300), priced(1e300), priced(noDouble)},
        {DoubleColumn, priced(-std::numeric_limits<double>::infinity()),
         priced(std::numeric_limits<double>::infinity()), priced(std::numeric_limits<double>::quiet_NaN())},
        {CharColumn, withStatus('0'), withStatus('9'), withStatus(noInt)},
    };
    for (const Case &c : cases) {
        Model model;
        model.put("none", c.none);
        model.put("high", c.high);
        model.put("low", c.low);
        model.sortByColumnID(c.column, 0);
        EXPECT_EQ(model.shown(), "low high none") << "column " << c.column;
        model.sortByColumnID(c.column, 1);
        EXPECT_EQ(model.everything(), "high low none") << "column " << c.column;
        model.put("low", c.high);
        model.put("late", c.low);
        EXPECT_EQ(model.shown(), "high low late none") << "column " << c.column;
    }
}

TEST(PageModelRules, TextsSortByLengthThenByBytesAndTiesBySequenceThenKey)
{
    Model model;
    for (const auto &[key, code] : {std::pair{"1", "600001.SH"}, {"2", "AP010"}, {"3", "600000.SH"}, {"4", "AP009"}}) {
        Values values;
        values.code = code;
        model.put(key, values);
    }
    model.sortByColumnID(TextColumn, 0);
    EXPECT_EQ(model.shown(), "4 2 3 1");

    Model ties;
    ties.put("b", priced(1, 7));
    ties.put("aa", priced(1, 7));
    ties.put("c", priced(1.000005, 3));
    ties.put("d", priced(1, noInt));
    ties.sortByColumnID(DoubleColumn, 0);
    EXPECT_EQ(ties.shown(), "c b aa d");
    ties.sortByColumnID(DoubleColumn, 5);
    EXPECT_EQ(ties.shown(), "aa b c d");
}

TEST(PageModelRules, ReversingTogglesTheCurrentColumnOnly)
{
    Model model;
    const auto state = [&] { return std::to_string(model.sortColumn()) + ":" + std::to_string(model.sortOrder()); };
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(state(), "2:1");
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(state(), "2:0");
    model.reverseSortByColumn(DoubleColumn);
    EXPECT_EQ(state(), "2:1");
    model.reverseSortByColumn(IntColumn);
    EXPECT_EQ(state(), "0:1");
    model.sortByColumnID(IntColumn, 3);
    model.reverseSortByColumn(IntColumn);
    EXPECT_EQ(state(), "0:3");
    model.clearSort();
    EXPECT_EQ(model.sortColumn(), -1);
}

TEST(PageModelRules, StatusModesAndTheCodeSearchChooseRecords)
{
    Model model;
    for (const char status : std::string("0123456789V"))
        model.put(std::string(1, status), withStatus(status, status < '5' ? "600000.SH" : "AP010"));
    const auto shownIn = [&](int mode, const char *search) {
        model.setExFilterStatus(mode);
        model.setFilter(search);
        model.filterColumn({});
        return model.shown();
    };
    EXPECT_EQ(shownIn(0, ""), "0 1 2 3 4 5 6 7 8 9 V");
    EXPECT_EQ(shownIn(1, ""), "0 1 2 3 4 7");
    EXPECT_EQ(shownIn(2, ""), "8 V");
    EXPECT_EQ(shownIn(3, ""), "5 6 9");
    EXPECT_EQ(shownIn(4, ""), "");
    EXPECT_EQ(shownIn(1, "AP"), "7");
    EXPECT_EQ(shownIn(0, "ap"), "") << "the search is case-sensitive";

    // Deals know no status, and are found by their own code; other records are found by none.
    Model deals(true, 16203);
    const auto deal = refhost::makeDeal(refhost::MetaMarketDeal, "D");
    deal->setData(refhost::DealCode, "600000.SH");
    deals.addData(deal);
    deals.setExFilterStatus(1);
    deals.filterColumn({});
    EXPECT_EQ(deals.shown(), "D");
    deals.setFilter("AP");
    deals.filterColumn({});
    EXPECT_EQ(deals.shown(), "");
    Model others(true, 16205);
    others.setFilter("6");
    others.put("A");
    EXPECT_EQ(others.shown(), "");
}

TEST(PageModelRules, RecordsOfOtherKindsAndOfTwoKindsHaveNoTieBreak)
{
    const auto lots = [](const auto &record, int field, int lot) {
        const auto instrument = refhost::makePlain(refhost::MetaInstrument, "I");
        instrument->setData(refhost::InstrumentLot, lot);
        record->setNested(field, instrument);
        return record;
    };
    const auto order = [&](const char *key, int sequence) {
        const auto record = refhost::makeOrder(metaId, key);
        record->setData(refhost::OrderSequence, sequence);
        return lots(record, refhost::OrderInstrument, 100);
    };
    const auto deal = [&](const char *key, int sequence) {
        const auto record = refhost::makeDeal(refhost::MetaMarketDeal, key);
        record->setData(refhost::DealSequence, sequence);
        return lots(record, refhost::DealInstrument, 100);
    };
    const auto plain = [](const char *key, int lot) {
        const auto record = refhost::makePlain(refhost::MetaInstrument, key);
        record->setData(refhost::InstrumentLot, lot);
        return record;
    };
    const struct
    {
        const char *what;
        std::vector<boost::shared_ptr<kdservice::IData>> records;
        const char *shown;
    } cases[] = {
        {"equal records of no known kind", {plain("c", 100), plain("b", 100), plain("a", 1)}, "a c b"},
        {"an order and a deal", {order("9", 9), deal("1", 1)}, "9 1"},
        {"deals among themselves", {deal("9", 9), deal("1", 1), deal("10", 1)}, "1 10 9"},
    };
    for (const auto &each : cases) {
        Model model(true, 16205);
        for (const auto &record : each.records)
            model.addData(record);
        model.sortByColumnID(NestedColumn, 0);
        EXPECT_EQ(model.shown(), each.shown) << each.what;
    }
}

TEST(PageModelRules, AFilterOfAnUnknownTypeRejectsAndAnUnknownColumnHasNoText)
{
    Model model;
    model.put("A");
    const auto shownWith = [&](int column, int type, const QSet<QString> &values) {
        model.filterColumn({{column, {ZB::EFilterType(type), values}}});
        return model.shown();
    };
    const QString code = QStringLiteral("600000.SH");
    EXPECT_EQ(shownWith(TextColumn, ZB::FilterExact, {code}), "A");
    EXPECT_EQ(shownWith(TextColumn, ZB::FilterContains, {QStringLiteral("sh")}), "A") << "whatever the case";
    for (const int type : {2, 7, -1})
        for (const QString &text : {code, QStringLiteral("another")})
            EXPECT_EQ(shownWith(TextColumn, type, {text}), "") << type;
    EXPECT_EQ(shownWith(TextColumn, 2, {}), "A") << "nothing is asked for";
    EXPECT_EQ(shownWith(99, ZB::FilterExact, {code}), "");
    EXPECT_EQ(shownWith(99, ZB::FilterExact, {QString()}), "A");
    EXPECT_EQ(model.put("B"), "+B -") << "a new record is tested likewise";
    model.filterColumn({{99, {ZB::FilterExact, {code}}}});
    EXPECT_EQ(model.put("C"), "+ -");
    EXPECT_EQ(model.everything(), "A B C");
}

TEST(PageModelRules, ClearingTheFiltersMayLeaveTheListAsItIs)
{
    Model model;
    for (const auto &[key, code] : {std::pair{"A", "600000.SH"}, {"B", "AP010"}})
        model.put(key, withStatus('0', code));
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"AP010"}}}});
    model.totalCountChange();
    model.clearFilter(false);
    EXPECT_TRUE(model.columnFilters().isEmpty());
    EXPECT_EQ(model.shown(), "B");
    EXPECT_TRUE(model.totalCountChange());
    model.put("C");
    EXPECT_EQ(model.shown(), "B C") << "but the next record passes";
    model.setFilter("AP");
    model.clearFilter(true);
    EXPECT_EQ(model.shown(), "A B C") << "every record, whatever is searched for";
    model.clearFilter(true);
    EXPECT_EQ(model.shown(), "A B C");
}

TEST(PageModelRules, TheSourceOfTheExtraFilterIsKeptAndAsksNothing)
{
    Model model;
    EXPECT_EQ(model.exFilterSource(), 0);
    model.setExFilterSource(7);
    model.put("A");
    model.filterColumn({});
    EXPECT_EQ(model.exFilterSource(), 7);
    EXPECT_EQ(model.shown(), "A");
}

TEST(PageModelRules, AMovedResultIsEmptyAndACopiedPageSharesTheRecord)
{
    const std::string longKey(100, 'k'); // too long to lie within a text
    for (const std::string &key : {std::string("a"), longKey}) {
        KV::CUpdatePageDataResult source;
        source.enterKey = key;
        source.leaveKey = key + '2';
        const KV::CUpdatePageDataResult copy(source);
        KV::CUpdatePageDataResult made(std::move(source));
        EXPECT_EQ(source.enterKey + source.leaveKey, "");
        KV::CUpdatePageDataResult assigned;
        assigned.enterKey = "former";
        assigned = std::move(made);
        EXPECT_EQ(made.enterKey + made.leaveKey, "");
        EXPECT_EQ(assigned.enterKey + assigned.leaveKey, key + key + '2');
        auto &itself = assigned;
        assigned = std::move(itself);
        EXPECT_EQ(assigned.enterKey + assigned.leaveKey, copy.enterKey + copy.leaveKey);
    }
    KV::CHpfPageData page(makeOrder("A", {}));
    EXPECT_EQ(page.getDataSeq(), 0);
    page.setDataSeq(7);
    KV::CHpfPageData copy(page);
    KV::CHpfPageData assigned(makeOrder("B", {}));
    assigned = page;
    EXPECT_EQ(copy.getIData(), page.getIData());
    EXPECT_EQ(assigned.getIData(), page.getIData());
    EXPECT_EQ(copy.getDataSeq() + assigned.getDataSeq(), 14);
    copy.setIData(makeOrder("C", {}));
    copy.setDataSeq(8);
    EXPECT_EQ(page.getIData()->getKey() + std::to_string(page.getDataSeq()), "A7");
}

TEST(PageModelRules, TwoKeysOfOneHashAreBothKept)
{
    Model model;
    const auto record = [](const char *key) { return boost::make_shared<PlainRecord>(key, 42); };
    model.addData(record("first"));
    model.addData(record("second"));
    EXPECT_EQ(model.shown(), "first second");
    model.addData(record("first"));
    EXPECT_EQ(model.size(), 2);
    model.removeDataByKey(quint64(42));
    EXPECT_EQ(model.size(), 1);
    EXPECT_TRUE(model.containData(42));
}

/// Destructors are the host's, and may well ask the model.
TEST(PageModelRules, RecordsAreDestroyedWithoutTheLock)
{
    Model model;
    std::string destroyed;
    const auto record = [&](const char *key) {
        return boost::make_shared<PlainRecord>(key, kdservice::hashOfKey(key), [&model, &destroyed, key] {
            auto asked = std::make_shared<std::promise<void>>();
            const std::future<void> answer = asked->get_future();
            boost::thread([&model, asked] {
                model.originalSize();
                asked->set_value();
            }).detach();
            destroyed += key;
            if (answer.wait_for(std::chrono::seconds(5)) != std::future_status::ready)
                destroyed += " under the lock ";
        });
    };
    model.addData(record("a"));
    model.addData(record("a"));
    EXPECT_EQ(destroyed, "a") << "an update";
    model.setExFilterStatus(4);
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"none"}}}});
    model.addData(record("a"));
    EXPECT_EQ(destroyed, "aa") << "a cover";
    model.addData(record("b"));
    model.removeDataByKey(std::string("a"));
    EXPECT_EQ(destroyed, "aaa");
    model.clear();
    EXPECT_EQ(destroyed, "aaab");
}

/// What a page holds is the host's to change; the model sees it when it is handed in again.
TEST(PageModelRules, ARecordStaysTheModelsWhenItsPageGetsAnother)
{
    Model model;
    std::string destroyed;
    const auto record = [&destroyed](const char *key) {
        return boost::make_shared<PlainRecord>(key, kdservice::hashOfKey(key), [&destroyed, key] { destroyed += key; });
    };
    model.addData(record("a"));
    const auto page = model.getData(0);
    page->setIData(record("a"));
    EXPECT_EQ(destroyed, "");
    EXPECT_EQ(model.getMenuItems(TextColumn).size(), 1);
    model.addData(page);
    EXPECT_EQ(destroyed, "a");
    page->setIData(nullptr);
    model.sortByColumnID(TextColumn, 1);
    model.filterColumn({});
    EXPECT_FALSE(model.addData(page));
    EXPECT_EQ(model.size(), 1);
    model.clear();
    EXPECT_EQ(destroyed, "aa");
}

TEST(PageModelRules, APageWithoutRowsReportsNothingAndOddPagesAreHarmless)
{
    Model model;
    model.setPageCount(0);
    EXPECT_EQ(model.put("A"), "+ -");
    EXPECT_FALSE(model.isIndexAtShowRegion(0));
    model.setPageCount(std::numeric_limits<int>::max());
    model.setStartIndex(std::numeric_limits<int>::max());
    EXPECT_EQ(model.put("B"), "+ -");
    model.setStartIndex(-3);
    EXPECT_EQ(model.put("C"), "+C -");
    EXPECT_FALSE(model.getData(-1));
    EXPECT_FALSE(model.getData(3));
    EXPECT_FALSE(model.getDataFromAll(3));
    EXPECT_EQ(model.getDataKeyByIndex(7), "");
    EXPECT_EQ(model.getFiledIdByColumn(NestedColumn), refhost::InstrumentLot);
    EXPECT_EQ(model.getFiledIdByColumn(99), 0);
}

TEST(PageModelRules, MenuItemsAreTheTextsOfAllRecordsAndCellsTellTheirValue)
{
    Model model;
    for (const auto &[key, code] : {std::pair{"A", "600001.SH"}, {"B", "AP010"}, {"C", "600001.SH"}}) {
        Values values;
        values.code = code;
        model.put(key, values);
    }
    model.filterColumn({{TextColumn, {ZB::FilterExact, {"AP010"}}}});
    EXPECT_EQ(model.shown(), "B");
    EXPECT_EQ(model.getMenuItems(TextColumn), QStringList({"600001.SH", "AP010"}));

    QVariant value;
    EXPECT_TRUE(model.getValue(DoubleColumn, makeOrder("X", priced(12.5)), value));
    EXPECT_EQ(value.toDouble(), 12.5);
    EXPECT_FALSE(model.getValue(NestedColumn, makeOrder("X", {}), value));
    QString text;
    KV::OriginData origin;
    EXPECT_TRUE(model.getIDataStringByColID(DoubleColumn, makeOrder("X", priced(15.929999999999999)), text, origin));
    EXPECT_EQ(text, "15.93");
}

TEST(PageModelRules, MenuItemsStandInTheOrderOfTheirValues)
{
    Model model;
    for (const int channel : {10, 9, noInt, -2, 100, 9}) {
        Values values;
        values.channel = channel;
        values.price = channel == noInt ? noDouble : channel / 4.0;
        values.lot = channel == 9 ? noInt : channel; // of noInt: without the field
        model.put(std::to_string(model.originalSize()), values);
    }
    const QStringList channels = model.getMenuItems(IntColumn);
    EXPECT_EQ(channels.mid(0, 4), QStringList({"-2", "9", "10", "100"})) << channels.join(' ').toStdString();
    EXPECT_EQ(channels.size(), 5) << "no value comes last";
    const QStringList prices = model.getMenuItems(DoubleColumn);
    EXPECT_EQ(prices.mid(0, 4), QStringList({"-0.50", "2.25", "2.50", "25.00"})) << prices.join(' ').toStdString();
    EXPECT_EQ(prices.size(), 5);
    EXPECT_EQ(model.getMenuItems(NestedColumn), QStringList({"-2", "10", "100", ""}));
}

TEST(PageModelRules, ReadersAndWritersGoOnSideBySide)
{
    Model model;
    model.setColumnStatEnable(LongColumn, true);
    boost::thread_group writers;
    for (int writer = 0; writer < 3; ++writer) {
        writers.create_thread([&model, writer] {
            for (int i = 0; i < 2000; ++i) {
                model.put(std::to_string(i % 500), priced(i % 37, writer));
                if (i % 400 == 0)
                    model.reverseSortByColumn(writer == 0 ? DoubleColumn : LongColumn);
                if (i % 500 == 0)
                    model.filterColumn({{TextColumn, {ZB::FilterContains, {"600"}}}});
                if (i % 50 == 0)
                    model.removeDataByKey(kdservice::hashOfKey(std::to_string(i % 500)));
            }
        });
    }
    std::atomic<bool> done{false};
    boost::thread reader([&] {
        while (!done) {
            int rows = 0;
            for (const auto &page : model.getShowDatas())
                rows += page->getIData()->getKey().empty() ? 0 : 1;
            ASSERT_LE(rows, 500);
            ASSERT_LE(model.getStatColumnLongLong(LongColumn), 500 * 100);
            model.getDataIndexByKey(kdservice::hashOfKey("7"));
            model.totalCountChange();
        }
    });
    writers.join_all();
    done = true;
    reader.join();
    EXPECT_TRUE(model.checkConsistency());
    EXPECT_EQ(model.size(), model.originalSize());
    EXPECT_EQ(model.getStatColumnLongLong(LongColumn), qint64(model.size()) * 100);
}
