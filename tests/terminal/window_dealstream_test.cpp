#include <gtest/gtest.h>

#include <QtTest/QTest>
#include <boost/asio/io_service.hpp>
#include <boost/asio/strand.hpp>
#include <future>
#include <memory>

#include "grid/gridview.h"
#include "kdservice/idata.h"
#include "loggedin.h"
#include "model/chpfdatamodel.h"
#include "net/rpcengine.h"
#include "popups/taskstrip.h"
#include "records/fieldids.h"
#include "records/record.h"
#include "table/chpfdatatable.h"
#include "window/dealstreampanel.h"
#include "window/marketpage.h"

using namespace terminal;

namespace {

/// The strand of bulk loads stands still until the end of its life.
class StandingStrand
{
public:
    StandingStrand()
    {
        net::RPCEngine::instance()->getStrand("uicontrol_hpf_data_model")->post([gate = release.get_future().share()] {
            gate.wait();
        });
    }
    ~StandingStrand() { release.set_value(); }

private:
    std::promise<void> release;
};

FeedPump::Records deals(int first, int count)
{
    FeedPump::Records records;
    for (int number = first; number < first + count; ++number) {
        const auto deal = refhost::makeDeal(refhost::MetaMarketDeal, "deal-" + std::to_string(number));
        deal->setData(refhost::DealQuantity, qint64(number));
        records.append(deal);
    }
    return records;
}

class DealStreamTest : public ::testing::Test
{
protected:
    DealStreamTest()
    {
        page = std::make_unique<MarketPage>();
        page->resize(1200, 600);
        page->show();
    }
    const LoggedIn user;
    std::unique_ptr<MarketPage> page;
};

} // namespace

TEST_F(DealStreamTest, DealsComeInWholeAndInOrderThoughTheirRowsAreLateAndEscapeIsPressed)
{
    KV::CHpfDataTable &table = page->dealStream().table();
    auto *grid = table.findChild<ZB::GridView *>();
    constexpr int slice = 256;
    constexpr int slices = 40;
    auto standing = std::make_unique<StandingStrand>();
    for (int number = 0; number < slices; ++number)
        page->takeDeals(deals(number * slice, slice));
    EXPECT_FALSE(page->isSettled());
    EXPECT_EQ(page->dealStream().allCount(), 0);
    QTest::qWait(500); // long enough for a strip over the table
    for (const auto *strip : grid->findChildren<ZB::TaskStrip *>())
        EXPECT_FALSE(strip->isVisible()) << "a stream cannot be stopped";
    QTest::keyClick(grid, Qt::Key_Escape);
    table.cancelWork();
    standing.reset();
    ASSERT_TRUE(QTest::qWaitFor([this] { return page->isSettled(); }, 60000));
    ASSERT_EQ(page->dealStream().allCount(), slices * slice);
    int expected = 0;
    const int quantity = table.getColumnIdByFileId(refhost::DealQuantity);
    for (const auto &row : table.getAllDatas())
        ASSERT_EQ(row->getLongLong(quantity), expected++);
}

TEST_F(DealStreamTest, APageThatGoesTakesTheDealsAlongThatAreOnTheirWay)
{
    FeedPump::Records records = deals(0, 2000);
    const boost::weak_ptr<kdservice::IData> last = records.back();
    {
        const StandingStrand standing;
        page->takeDeals(records);
        records.clear();
        page.reset();
    }
    EXPECT_TRUE(QTest::qWaitFor([&last] { return last.expired(); }, 60000));
}
