#include <gtest/gtest.h>

#include <boost/make_shared.hpp>
#include <map>

#include "conformance/findingtext.h"
#include "trade.h"

TEST(Consumer, DeliversEventsAndHasTheServicesAsTheyShouldBe)
{
    EXPECT_EQ(lines(conformance::checkServices()), "");
    EXPECT_EQ(lines(conformance::checkEvents()), "");
}

TEST(Consumer, DescribesItsRecords)
{
    conformance::HostSample sample;
    for (const char *key : {"1", "2"})
        sample.records.push_back(boost::make_shared<Trade>(key, "600000.SH", 10.5, 100));
    sample.traderTypes = {kdservice::TraderStock};
    EXPECT_EQ(lines(conformance::checkRecords(sample)), "");
}

TEST(Consumer, WritesNumbersWithoutUnitsSignsAndPercentages)
{
    EXPECT_EQ(lines(conformance::checkTexts()),
              R"(ZB::formatIntNumber(1234567), flags 393216: "1,234,567" instead of "1 234 567"
ZB::formatLonglongNumber(1234567), flags 393216: "1,234,567" instead of "1 234 567"
ZB::formatIntNumber(12345), flags 4: "12345" instead of "1.23万"
ZB::formatLonglongNumber(12345), flags 4: "12345" instead of "1.23万"
ZB::formatIntNumber(250000000), flags 4: "250000000" instead of "2.50亿"
ZB::formatLonglongNumber(250000000), flags 4: "250000000" instead of "2.50亿"
ZB::formatIntNumber(0), flags 16: "0" instead of "-"
ZB::formatLonglongNumber(0), flags 16: "0" instead of "-"
ZB::formatIntNumber(42), flags 1: "42" instead of "+42"
ZB::formatLonglongNumber(42), flags 1: "42" instead of "+42"
ZB::formatDoubleNumber(1.005, 2), flags 0: "1.00" instead of "1.01"
ZB::formatDoubleNumber(-0.004, 2), flags 0: "-0.00" instead of "0.00"
ZB::formatDoubleNumber(0.1234, 2), flags 2: "0.12" instead of "12.34%"
ZB::formatDoubleNumber(1e+08, 0), flags 4: "99999999" instead of "1.00亿"
ZB::formatDoubleNumber(1.5, 2), flags 8: "1.50" instead of "1.5"
ZB::formatDoubleNumber(2, 2), flags 8: "2.00" instead of "2"
ZB::formatDoubleNumber(0.001, 2), flags 16: "0.00" instead of "-"
ZB::formatDoubleNumber(3.5, 1), flags 1: "3.5" instead of "+3.5"
ZB::sToQs of GB18030: "����" instead of "贵州"
)");
}

TEST(Consumer, HasOneImageForAllAHandfulOfColoursAndNoStyleSheets)
{
    std::map<std::string, int> kinds;
    for (const conformance::Finding &finding : conformance::checkResources({}))
        ++kinds[finding.subject.section(QLatin1Char('_'), 0, 0).toStdString() + ": " + finding.what.toStdString()];
    std::string text;
    for (const auto &[kind, count] : kinds)
        text += kind + (count > 1 ? ", of several\n" : "\n");
    EXPECT_EQ(text, "QLineEdit: no style sheet\n"
                    "QMenu: no style sheet\n"
                    "clr: the same as for a key that no theme has: probably missing, of several\n"
                    "img: the same as for a key that no theme has: probably missing, of several\n");
}
