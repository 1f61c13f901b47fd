#include <QtCore/QCoreApplication>
#include <limits>

#include "framework/tablefixture.h"
#include "grid/gridsource.h"

namespace tabletest {

namespace {

using TableRowsTest = TableTest;

/// Only the row "a" flashes, wherever it stands.
class FlashingModel : public OrderModel
{
public:
    bool isFlashChange(int row, int) const override
    {
        const auto shown = getData(row);
        return shown && shown->key() == "a";
    }
};

TEST_F(TableRowsTest, ARowIsAskedForItsFlashWhereItStandsNow)
{
    rebuild(boost::make_shared<FlashingModel>());
    for (const Order &order : fiveOrders())
        model->put(order);
    settle();
    EXPECT_NE(grid()->source()->flash(0, Price), ZB::GridFlash::None);
    EXPECT_EQ(grid()->source()->flash(1, Price), ZB::GridFlash::None);
    model->setAppendSeq(false);
    model->put({"new", "600001", "n", 0, 1, 1}); // not fetched yet
    EXPECT_NE(grid()->source()->flash(0, Price), ZB::GridFlash::None);
    EXPECT_EQ(grid()->source()->flash(1, Price), ZB::GridFlash::None);
}

TEST_F(TableRowsTest, ANumberThatComesOrGoesHasNoDirection)
{
    rebuild(boost::make_shared<FlashingModel>());
    std::string directions;
    for (const double price : {10.0, 10.5, noPrice, 10.25, 10.0}) {
        model->put({"a", "600000", "浦发银行", 0, price, 300});
        settle();
        const ZB::GridFlash flash = grid()->source()->flash(0, Price);
        directions += flash == ZB::GridFlash::Rise ? '+' : flash == ZB::GridFlash::Fall ? '-' : '=';
    }
    EXPECT_EQ(directions, "=+==-");
}

TEST(FlashDirection, OfWholeNumbersThatComeOrGoThereIsNone)
{
    const auto directionOf = [](auto from, auto to, QVariant::Type type) {
        return ZB::flashOfChange(static_cast<double>(to) - static_cast<double>(from), type);
    };
    constexpr int noCount = std::numeric_limits<int>::max();
    constexpr qint64 noQuantity = std::numeric_limits<qint64>::max();
    EXPECT_EQ(directionOf(7, noCount, QVariant::Int), ZB::GridFlash::Equal);
    EXPECT_EQ(directionOf(noCount, 7, QVariant::Int), ZB::GridFlash::Equal);
    EXPECT_EQ(directionOf(7, 8, QVariant::Int), ZB::GridFlash::Rise);
    EXPECT_EQ(directionOf(noQuantity, qint64(7), QVariant::LongLong), ZB::GridFlash::Equal);
    EXPECT_EQ(directionOf(qint64(3'000'000'000), qint64(0), QVariant::LongLong), ZB::GridFlash::Fall);
}

TEST_F(TableRowsTest, WholeSumsAreGroupedLikeTheCellsAboveThem)
{
    model->setColumnStatEnable(Quantity, true);
    model->clear();
    for (const qint64 quantity : {1000000, 234567})
        model->put({std::to_string(quantity), "600000", "浦发银行", 0, 1.5, quantity});
    settle();
    EXPECT_EQ(grid()->source()->statisticsText(Quantity), QStringLiteral("1,234,567"));
    KV::getUserConfig()->setSegmentedFormat(false);
    EXPECT_EQ(grid()->source()->statisticsText(Quantity), QStringLiteral("1234567"));
}

TEST_F(TableRowsTest, SumsWithUnitsAreGroupedToo)
{
    class SummingModel : public OrderModel
    {
    public:
        QString getStatDispalyQString(int) const override { return sum; }
        QString sum;
    };
    const auto summing = boost::make_shared<SummingModel>();
    rebuild(summing);
    const auto shownSum = [&](const char *text) {
        summing->sum = QString::fromUtf8(text);
        return grid()->source()->statisticsText(Price).toStdString();
    };
    EXPECT_EQ(shownSum("6432.95万"), "6,432.95万");
    EXPECT_EQ(shownSum("-1234567.5"), "-1,234,567.5");
    EXPECT_EQ(shownSum("1 234.50"), "1 234.50");
    EXPECT_EQ(shownSum("68.13亿"), "68.13亿");
    EXPECT_EQ(shownSum("非法值"), "非法值");
    EXPECT_EQ(shownSum(""), "");
    KV::getUserConfig()->setSegmentedFormat(false);
    EXPECT_EQ(shownSum("6432.95万"), "6432.95万");
}

TEST_F(TableRowsTest, TwoTablesOverOneModelBothSeeItsChanges)
{
    auto *other = new ZB::CBaseHighPerformanceTable(tableId + 1, window.get(), ZB::MenuAll);
    window->layout()->addWidget(other);
    other->installDataModel(model);
    QCoreApplication::processEvents();
    other->updateTable();
    settle();
    ZB::GridSource *const sources[] = {grid()->source(), other->findChild<ZB::GridView *>()->source()};
    for (const ZB::GridSource *source : sources)
        source->revision();
    const quint64 before[] = {sources[0]->epoch(), sources[1]->epoch()};
    model->setUpdated(true); // as a computed column does
    for (int i = 0; i < 2; ++i) {
        sources[i]->revision();
        EXPECT_GT(sources[i]->epoch(), before[i]) << "table " << i;
    }
}

} // namespace

} // namespace tabletest
