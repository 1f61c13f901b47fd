#include <gtest/gtest.h>

#include <QtTest/QTest>

#include "docs/readmerecords.h"
#include "records/record.h"
#include "services/userconfig.h"
#include "table/chpfdatatable.h"

extern void (*const examples[])(QWidget *parent, const readme::Record &order, const readme::Records &orders,
                                const readme::Records &records);
extern const int exampleCount;

TEST(Readme, ItsExampleShowsTheRecordsThatItLoads)
{
    refhost::setUserConfig(std::make_unique<refhost::UserConfig>());
    ASSERT_EQ(exampleCount, 1);
    const auto made = [](const std::string &name, int count) {
        readme::Records records;
        for (int i = 0; i < count; ++i)
            records.push_back(refhost::makeOrder(refhost::MetaMarketOrder, name + std::to_string(i)));
        return records;
    };
    {
        QWidget window;
        window.show();
        examples[0](&window, made("one", 1).front(), made("some", 20), made("many", 3000));
        auto *table = window.findChild<KV::CHpfDataTable *>();
        ASSERT_NE(table, nullptr);
        EXPECT_TRUE(QTest::qWaitFor([table] { return table->getAllDatas().size() == 3000; }));
    }
    refhost::setUserConfig(nullptr);
}
