#include "records/record.h"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <new>
#include <thread>

#include "kdservice/keyhash.h"

using namespace refhost;

namespace {

constexpr int noInt = std::numeric_limits<int>::max();
constexpr qint64 noLong = std::numeric_limits<qint64>::max();
constexpr double noDouble = std::numeric_limits<double>::max();

boost::shared_ptr<PlainRecord> instrument(const std::string &code, const std::string &name)
{
    const auto record = makePlain(MetaInstrument, code);
    record->setData(InstrumentCode, code);
    record->setData(InstrumentName, name);
    return record;
}

} // namespace

TEST(Record, IsOfTheClassOfItsType)
{
    const auto own = makeRecord(MetaOwnOrder, "k");
    EXPECT_NE(boost::dynamic_pointer_cast<kdservice::COrderDetailV2>(own), nullptr);
    EXPECT_NE(boost::dynamic_pointer_cast<kdservice::CDealDetailV2>(makeRecord(MetaMarketDeal, "k")), nullptr);
    EXPECT_EQ(boost::dynamic_pointer_cast<kdservice::COrderDetailV2>(makeRecord(MetaPosition, "k")), nullptr);
    EXPECT_EQ(own->getBaseId(), 16204);
    EXPECT_EQ(makeRecord(4711, "k"), nullptr);
    EXPECT_EQ(makeOrder(MetaMarketDeal, "k"), nullptr);
    EXPECT_EQ(makeDeal(4711, "k"), nullptr);
}

TEST(Record, KeepsItsKeyAndTheHashThatBelongsToIt)
{
    for (const std::string &key :
         {std::string(), std::string("600519.SH-1"), std::string(300, 'x'), std::string("zero\0inside", 11)}) {
        const auto record = makeDeal(MetaOwnDeal, key);
        EXPECT_EQ(record->getKey(), key);
        EXPECT_EQ(record->hashKey(), kdservice::hashOfKey(key));
        EXPECT_EQ(copyOf(*record)->getKey(), key);
    }
}

TEST(Record, GivesBackWhatEachTypeOfFieldWasSetToAndNothingBefore)
{
    const auto order = makeOrder(MetaOwnOrder, "k");
    const auto text = [&order] {
        const auto nested = order->getIData(OrderInstrument);
        return std::to_string(order->getLong(OrderQuantity)) + ' ' + std::to_string(order->getInt(OrderChannel)) + ' ' +
               std::to_string(order->getInt(OrderStatus)) + '/' + order->getString(OrderStatus) + ' ' +
               std::to_string(order->orderStatus()) + ' ' + std::to_string(order->entrySequence()) + ' ' +
               order->codeText() + ' ' + order->getString(OrderRemark) + ' ' +
               (nested ? nested->getString(InstrumentName) : "none");
    };
    const std::string none = std::to_string(noInt);
    EXPECT_EQ(text(), std::to_string(noLong) + ' ' + none + ' ' + none + "/ " + none + ' ' + none + "   none");
    EXPECT_EQ(order->getDouble(OrderPrice), noDouble);
    order->setData(OrderQuantity, qint64(5'000'000'000));
    order->setData(OrderPrice, 15.929999999999999);
    order->setData(OrderChannel, -7);
    order->setData(OrderStatus, 56);
    order->setData(OrderSequence, 12);
    order->setData(OrderCode, "600519.SH");
    order->setData(OrderRemark, std::string("止损 & 一段比较长的备注文字"));
    order->setNested(OrderInstrument, instrument("600519.SH", "贵州茅台"));
    EXPECT_EQ(text(), "5000000000 -7 56/8 56 12 600519.SH 止损 & 一段比较长的备注文字 贵州茅台");
    EXPECT_EQ(order->getDouble(OrderPrice), 15.929999999999999);
    order->setData(OrderRemark, "");
    order->setData(OrderCode, "");
    order->setData(OrderStatus, "9");
    EXPECT_EQ(text(), "5000000000 -7 57/9 57 12   贵州茅台");
}

TEST(Record, WidensNumbersAndIgnoresWhatDoesNotFit)
{
    const auto order = makeOrder(MetaOwnOrder, "k");
    order->setData(OrderQuantity, 300);
    order->setData(OrderPrice, 15);
    order->setData(OrderAmount, qint64(7));
    EXPECT_EQ(order->getLong(OrderQuantity), 300);
    EXPECT_EQ(order->getDouble(OrderPrice), 15.0);
    EXPECT_EQ(order->getDouble(OrderAmount), 7.0);

    order->setData(OrderQuantity, noInt);
    order->setData(OrderAmount, noLong);
    EXPECT_EQ(order->getLong(OrderQuantity), noLong);
    EXPECT_EQ(order->getDouble(OrderAmount), noDouble);

    order->setData(OrderFilled, 1);
    order->setData(OrderFilled, 2.5);
    order->setData(OrderFilled, "3");
    order->setData(OrderFilled, true);
    order->setData(OrderStatus, 300);
    order->setData(OrderStatus, "ab");
    order->setData(DealPrice, 1.0);
    EXPECT_EQ(order->getLong(OrderFilled), 1);
    EXPECT_EQ(order->getString(OrderStatus), "");
    EXPECT_EQ(order->getDouble(DealPrice), noDouble);
    EXPECT_EQ(order->getDouble(OrderFilled), noDouble);
    EXPECT_EQ(order->getInt(OrderFilled), noInt);
    EXPECT_EQ(order->getLong(OrderPrice), noLong);
    EXPECT_EQ(order->getString(OrderFilled), "");
    EXPECT_FALSE(order->getBool(OrderFilled));
}

TEST(Record, CopyIsIndependentAndSharesItsInstrument)
{
    const auto order = makeOrder(MetaOwnOrder, "k");
    order->setData(OrderFilled, 100);
    order->setData(OrderRemark, "first");
    order->setNested(OrderInstrument, instrument("000001.SZ", "平安银行"));
    const auto copy = copyOf(*order);
    copy->setData(OrderFilled, 200);
    copy->setData(OrderRemark, "second");
    EXPECT_EQ(order->getLong(OrderFilled), 100);
    EXPECT_EQ(order->getString(OrderRemark), "first");
    EXPECT_EQ(copy->getString(OrderRemark), "second");
    EXPECT_EQ(copy->getIData(OrderInstrument), order->getIData(OrderInstrument));
}

TEST(Record, OrderOfTheMarketStaysSmall)
{
    // Everything an order takes: the allocation is one, its values and key lie behind the record.
    const auto order = makeOrder(MetaMarketOrder, "600519.SH-12345678");
    const auto *record = reinterpret_cast<const unsigned char *>(order.get());
    EXPECT_LE(order->values().bytes() + sizeof(OrderRecord), 200u);
    // The counted block in front of a record of boost::allocate_shared takes no more than eight pointers.
    EXPECT_LE(order->values().bytes() + sizeof(OrderRecord) + 8 * sizeof(void *), 250u);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(record) % alignof(void *), 0u);
}

TEST(Record, MayBeReadWhileItIsChanged)
{
    const auto order = makeOrder(MetaOwnOrder, "k");
    const auto name = instrument("600519.SH", "贵州茅台");
    order->setNested(OrderInstrument, name);
    std::atomic<bool> stop{false};
    std::vector<std::thread> readers;
    std::atomic<int> wrong{0};
    for (int reader = 0; reader < 3; ++reader) {
        readers.emplace_back([&] {
            while (!stop) {
                const std::string remark = order->getString(OrderRemark);
                const std::string code = order->getString(OrderCode);
                const qint64 filled = order->getLong(OrderFilled);
                if (!(remark.empty() || remark == std::string(remark.size(), remark[0])) ||
                    !(code.empty() || code.size() == 9) || !(filled == noLong || filled % 0x100000001 == 0) ||
                    copyOf(*order)->getIData(OrderInstrument)->getString(InstrumentCode) != "600519.SH")
                    ++wrong;
            }
        });
    }
    for (qint64 step = 0; step < 20000; ++step) {
        order->setData(OrderFilled, step * 0x100000001);
        order->setData(OrderPrice, static_cast<double>(step));
        order->setData(OrderRemark,
                       std::string(static_cast<std::size_t>(step % 40), static_cast<char>('a' + step % 20)));
        order->setData(OrderCode, "60" + std::to_string(1000 + step % 50) + ".SH");
    }
    stop = true;
    for (std::thread &reader : readers)
        reader.join();
    EXPECT_EQ(wrong, 0);
}
