#include <gtest/gtest.h>

#include <atomic>
#include <boost/asio/post.hpp>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

#include "net/rpcengine.h"
#include "services/strandservice.h"

TEST(Strands, RunTheTasksOfOneInOrderOffTheThreadThatPosts)
{
    const auto strand = net::RPCEngine::instance()->getStrand("order");
    std::vector<int> done; // unguarded: tasks of one strand never run at once
    std::atomic<bool> elsewhere{true};
    const std::thread::id here = std::this_thread::get_id();
    for (int task = 0; task < 5000; ++task)
        boost::asio::post(*strand, [&done, &elsewhere, here, task] {
            done.push_back(task);
            if (std::this_thread::get_id() == here)
                elsewhere = false;
        });
    std::promise<void> end;
    boost::asio::post(*strand, [&end] { end.set_value(); });
    end.get_future().wait();
    EXPECT_EQ(done.size(), 5000u);
    EXPECT_TRUE(std::is_sorted(done.begin(), done.end()));
    EXPECT_TRUE(elsewhere);
}

TEST(Strands, SurviveATaskThatThrows)
{
    const auto strand = net::RPCEngine::instance()->getStrand("throwing");
    testing::internal::CaptureStderr();
    std::promise<void> end;
    for (int task = 0; task < 5; ++task)
        boost::asio::post(*strand, [] { throw std::runtime_error("no good"); });
    boost::asio::post(*strand, [&end] { end.set_value(); });
    end.get_future().wait();
    EXPECT_NE(testing::internal::GetCapturedStderr().find("no good"), std::string::npos);
}

TEST(Strands, FinishWhatIsPostedAndStartAgainWhenAskedFor)
{
    net::RPCEngine *engine = net::RPCEngine::instance();
    const auto strand = engine->getStrand("finish");
    std::atomic<int> done{0};
    for (int task = 0; task < 100; ++task)
        boost::asio::post(*strand, [&done, strand] {
            ++done;
            boost::asio::post(*strand, [&done] { ++done; });
        });
    refhost::finishStrands();
    EXPECT_EQ(done, 200);

    std::promise<void> later;
    boost::asio::post(*strand, [&later] { later.set_value(); });
    EXPECT_EQ(engine->getStrand("finish"), strand);
    later.get_future().wait();
    refhost::finishStrands();
    refhost::finishStrands();
}
