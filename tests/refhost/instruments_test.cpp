#include "services/instruments.h"

#include <gtest/gtest.h>

#include <thread>

#include "kv/instrumentlookup.h"
#include "records/record.h"

using namespace refhost;

namespace {

boost::shared_ptr<PlainRecord> instrument(const std::string &code, const std::string &name, int decimals)
{
    const auto record = makePlain(MetaInstrument, code);
    record->setData(InstrumentCode, code);
    record->setData(InstrumentName, name);
    record->setData(InstrumentPriceDecimals, decimals);
    return record;
}

} // namespace

TEST(Instruments, AreFoundByTheirFullCode)
{
    const auto first = instrument("600519.SH", "贵州茅台", 2);
    EXPECT_TRUE(Instruments::put(first));
    EXPECT_EQ(Instruments::find("600519.SH"), first);
    EXPECT_EQ(KV::getInstrumentText("600519.SH").name, QStringLiteral("贵州茅台"));
    EXPECT_EQ(KV::getInstrumentText("600519.SH").priceDecimals, 2);
    EXPECT_EQ(KV::getInstrumentText("600519").name, QString());
    EXPECT_EQ(KV::getInstrumentText("600519").priceDecimals, -1);

    first->setData(InstrumentName, "XD贵州茅");
    EXPECT_EQ(KV::getInstrumentText("600519.SH").name, QStringLiteral("XD贵州茅"));
    EXPECT_TRUE(Instruments::put(instrument("600519.SH", "茅台", std::numeric_limits<int>::max())));
    EXPECT_EQ(KV::getInstrumentText("600519.SH").name, QStringLiteral("茅台"));
    EXPECT_EQ(KV::getInstrumentText("600519.SH").priceDecimals, -1);

    EXPECT_FALSE(Instruments::put({}));
    EXPECT_FALSE(Instruments::put(makePlain(MetaInstrument, "no code")));

    Instruments::putOptionName("10005678.SH", "50ETF购12月2500");
    EXPECT_EQ(KV::getExOptName("10005678.SH"), QStringLiteral("50ETF购12月2500"));
    EXPECT_EQ(KV::getExOptName("600519.SH"), QString());
}

TEST(Instruments, MayBeAddedWhileOthersLookThemUp)
{
    std::thread adding([] {
        for (int number = 0; number < 2000; ++number)
            Instruments::put(instrument(std::to_string(number % 100) + ".SZ", "名" + std::to_string(number), 3));
    });
    for (int number = 0; number < 4000; ++number) {
        const KV::InstrumentText text = KV::getInstrumentText(std::to_string(number % 100) + ".SZ");
        EXPECT_TRUE(text.priceDecimals == -1 || text.name.startsWith(QStringLiteral("名")));
    }
    adding.join();
}
