#include <gtest/gtest.h>

#include "conformance/findingtext.h"

TEST(WrongHost, IsToldWhichServicesItLacks)
{
    EXPECT_EQ(lines(conformance::checkServices()), "utils::CLogCenter::instance: null\n"
                                                   "utils::getStdLogger: null\n"
                                                   "utils::getLogger: null\n"
                                                   "net::RPCEngine::getStrand: no strand\n"
                                                   "KV::CUserConfig: null although somebody is logged in\n");
}

TEST(WrongHost, IsToldHowItsEventsShouldTravel)
{
    EXPECT_EQ(
        lines(conformance::checkEvents()),
        R"(ZB::CEventDeliverer::deliverEvent: "control:1128,1,-2,文,own panel:1128,1,-2,文,own window:1128,1,-2,文,own control:1128,1,-2,文,own panel:1128,1,-2,文,own window:1128,1,-2,文,own" instead of "control:1128,1,-2,文,own panel:1128,1,-2,文,own window:1128,1,-2,文,own"
ZB::CEventDeliverer::deliverEvent: false although the event was dealt with
ZB::CEventDeliverer::deliverEvent of a sender that is destroyed on the way: "button:5,1,0,,own panel:5,1,0,,own window:5,1,0,,own panel:5,1,0,,own window:5,1,0,,own" instead of "button:5,1,0,,own panel:5,1,0,,own"
)");
}
