#include <atomic>
#include <boost/make_shared.hpp>
#include <boost/thread/thread.hpp>
#include <gtest/gtest.h>
#include <random>

#include "model/chpfdata.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "records/fieldids.h"
#include "records/record.h"
#include "window/pagedrows.h"

using namespace terminal;
using namespace refhost;

namespace {

constexpr int openStatus = '2';
constexpr int filledStatus = '8';

class PagedRowsTest : public ::testing::Test
{
protected:
    PagedRowsTest()
        : rows(boost::make_shared<PagedRows>(MetaMarketOrder, kdservice::TraderStock)), pages(*rows->pages())
    {
    }
    ~PagedRowsTest() override { rows->clear(); }

    static boost::shared_ptr<OrderRecord> order(const std::string &key, qint64 quantity = 100, int status = openStatus,
                                                const std::string &code = "600000.SH")
    {
        auto record = makeOrder(MetaMarketOrder, key);
        record->setData(OrderCode, code);
        record->setData(OrderQuantity, quantity);
        record->setData(OrderStatus, status);
        return record;
    }
    static boost::shared_ptr<OrderRecord> order(int number) { return order("K" + std::to_string(number), number); }

    int columnOf(int field) const { return rows->fieldColumnMap().value(field); }

    void showPage(int first, int count)
    {
        pages.setStartIndex(first);
        pages.setPageCount(count);
        rows->onTimer();
    }

    /// Keys of the rows in their order.
    std::string shown() const
    {
        QList<PagedRows::Row> list;
        rows->getDatas(list);
        std::string text;
        for (const auto &row : qAsConst(list))
            text += row->key() + ' ';
        return text;
    }
    /// What they ought to be.
    std::string page() const
    {
        std::string text;
        for (int index = pages.startIndex(); index < pages.startIndex() + pages.pageCount(); ++index)
            if (const std::string key = pages.getDataKeyByIndex(index); !key.empty())
                text += key + ' ';
        return text;
    }
    /// Every row shows the very record that the paged model holds.
    bool recordsAgree() const
    {
        QList<PagedRows::Row> list;
        rows->getDatas(list);
        for (int i = 0; i < list.size(); ++i)
            if (static_cast<KV::CHpfData &>(*list[i]).getIData() != pages.getData(pages.startIndex() + i)->getIData())
                return false;
        return true;
    }

    const boost::shared_ptr<PagedRows> rows;
    KV::CHpfPageDataModel &pages;
};

} // namespace

TEST_F(PagedRowsTest, ASortedPageTakesManyRowsInBetweenTheSameTwo)
{
    pages.sortByColumnID(columnOf(OrderQuantity), 1);
    showPage(1, 3);
    rows->take({order(10), order(20), nullptr, order(30), order(40), order(50)});
    EXPECT_EQ(shown(), "K40 K30 K20 ");
    pages.reverseSortByColumn(columnOf(OrderQuantity));
    rows->onTimer();
    EXPECT_EQ(shown(), "K20 K30 K40 ");
    // Between the same two rows for as long as it takes to run out of room.
    pages.setPageCount(500);
    for (int i = 1; i < 200; ++i) {
        rows->take({order("M" + std::to_string(i), 20)});
        ASSERT_EQ(shown(), page()) << i;
    }
    EXPECT_EQ(rows->refills(), 1) << "the page was made longer without a step";
}

TEST_F(PagedRowsTest, ARemovalInFrontOfThePageReadsItAnew)
{
    pages.setExFilterStatus(1);
    showPage(2, 2);
    rows->take({order(1), order(2), order(3), order(4), order(5), order(6)});
    ASSERT_EQ(shown(), "K3 K4 ");
    rows->take({order("K4", 4, filledStatus)});
    EXPECT_EQ(shown(), "K3 K5 ");
    EXPECT_EQ(rows->refills(), 0);
    rows->take({order("K1", 1, filledStatus)});
    EXPECT_EQ(shown(), "K5 K6 ");
    EXPECT_EQ(rows->refills(), 1);
    rows->take({order("K6", 6, filledStatus), order(7), order(8), order(9)});
    ASSERT_EQ(shown(), "K5 K7 ");
    rows->take({order("K9", 9, filledStatus)});
    EXPECT_EQ(shown(), "K5 K7 ");
    EXPECT_EQ(rows->refills(), 1) << "what leaves behind the page moves none of it";
}

TEST_F(PagedRowsTest, OnlyRowsThatAreOthersAreTouched)
{
    showPage(0, 4);
    const auto changing = order(2);
    rows->take({order(1), changing, order(3)});
    const auto rowOf = [this](const char *key) { return rows->getDataByKey(QLatin1String(key)); };
    const auto first = rowOf("K1");
    const auto second = rowOf("K2");
    const auto third = rowOf("K3");
    rows->take({order("K3", 7), order(4), order(5)});
    changing->setData(OrderQuantity, qint64(900));
    rows->take({changing}); // the host has changed it in place
    rows->onTimer();
    EXPECT_EQ(rowOf("K1"), first);
    EXPECT_NE(rowOf("K2"), second);
    EXPECT_NE(rowOf("K3"), third);
    EXPECT_TRUE(recordsAgree());
}

TEST_F(PagedRowsTest, SumsAreThoseOfEveryPage)
{
    showPage(0, 2);
    rows->setUpdated(false);
    rows->take({order(1), order(2), order(3), order(4)});
    const int quantity = columnOf(OrderQuantity);
    EXPECT_EQ(rows->getStatDispalyQString(quantity).toStdString(), "10");
    EXPECT_EQ(rows->getStatDispalyQString(columnOf(OrderCode)).toStdString(), "");
    rows->setUpdated(false);
    rows->take({order("K4", 40)});
    EXPECT_FALSE(rows->updated());
    rows->onTimer();
    EXPECT_TRUE(rows->updated()) << "the sum is another one, though no row of the page is";
    EXPECT_EQ(rows->getStatDispalyQString(quantity).toStdString(), "46");
    const auto expectOther = [&](const char *what, const char *sum) {
        EXPECT_TRUE(rows->updated()) << what;
        EXPECT_EQ(rows->getStatDispalyQString(quantity).toStdString(), sum) << what;
    };
    rows->setUpdated(false);
    rows->onTimer();
    EXPECT_FALSE(rows->updated());
    pages.filterColumn({{quantity, {ZB::FilterExact, {"1", "2", "3"}}}});
    rows->onTimer();
    expectOther("a filter that hides rows of another page", "6");
    rows->setUpdated(false);
    pages.removeDataByKey(std::string("K3"));
    rows->onTimer();
    expectOther("a removal from another page", "3");
}

TEST_F(PagedRowsTest, OtherThreadsReadRowsAndPagesMeanwhile)
{
    pages.setWorkPerCall(0);
    showPage(3, 20);
    std::atomic<bool> done{false};
    std::atomic<int> rounds{0};
    boost::thread_group readers;
    for (int reader = 0; reader < 2; ++reader) {
        readers.create_thread([&] {
            for (; !done; ++rounds) {
                QList<PagedRows::Row> list;
                rows->getDatas(list);
                for (const auto &row : qAsConst(list))
                    ASSERT_FALSE(row->getQString(columnOf(OrderCode)).isEmpty());
                for (const auto &page : pages.getPageDatas())
                    ASSERT_FALSE(page->getIData()->getKey().empty());
                pages.getStatColumnLongLong(columnOf(OrderQuantity));
            }
        });
    }
    for (int step = 0; step < 300 || rounds < 20; ++step) {
        rows->take({order(step % 400), order("K" + std::to_string(step % 50), step % 7)});
        if (step % 20 == 0) {
            pages.reverseSortByColumn(columnOf(OrderQuantity));
            pages.filterColumn({});
        }
        pages.step(0);
        if (step % 3 == 0)
            rows->onTimer();
        rows->getStatDispalyQString(columnOf(OrderQuantity));
    }
    done = true;
    readers.join_all();
    rows->onTimer();
    EXPECT_EQ(shown(), page());
    EXPECT_TRUE(recordsAgree());
}

TEST_F(PagedRowsTest, RandomChangesLeaveThePageOfThePagedModel)
{
    for (const unsigned seed : {1u, 2u, 3u, 4u}) {
        std::mt19937 random(seed);
        const auto draw = [&random](int low, int high) {
            return std::uniform_int_distribution<int>(low, high)(random);
        };
        pages.clear();
        showPage(2, 5);
        for (int step = 0; step < 1500; ++step) {
            SCOPED_TRACE("seed " + std::to_string(seed) + ", step " + std::to_string(step));
            switch (draw(0, 15)) {
            case 0:
                pages.sortByColumnID(columnOf(draw(0, 1) ? OrderQuantity : OrderCode), draw(0, 1));
                rows->onTimer();
                break;
            case 1:
                pages.clearSort();
                break;
            case 2:
                pages.setExFilterStatus(draw(0, 2));
                pages.setFilter(draw(0, 2) ? QString() : QStringLiteral("000001"));
                pages.filterColumn({});
                rows->onTimer();
                break;
            case 3:
                showPage(draw(0, 20), draw(0, 12));
                break;
            case 4:
                if (const std::string key = "K" + std::to_string(draw(0, 30)); pages.removeDataByKey(key), draw(0, 1))
                    rows->removeDataByKey(key); // by the table, which does both
                rows->onTimer();
                break;
            default: {
                QVector<PagedRows::Record> batch;
                for (int count = draw(1, 4); count > 0; --count)
                    batch.append(order("K" + std::to_string(draw(0, 30)), draw(1, 5),
                                       draw(0, 2) ? openStatus : filledStatus, draw(0, 1) ? "600000.SH" : "000001.SZ"));
                rows->take(batch);
            }
            }
            ASSERT_EQ(shown(), page());
            ASSERT_TRUE(recordsAgree());
        }
    }
}
