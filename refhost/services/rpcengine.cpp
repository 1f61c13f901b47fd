#include "net/rpcengine.h"

#include <log4cxx/logger.h>

#include <QtCore/QCoreApplication>
#include <boost/asio/executor_work_guard.hpp>
#include <boost/smart_ptr/make_shared.hpp>
#include <exception>
#include <map>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "services/strandservice.h"
#include "utils/clogcenter.h"

namespace net {

namespace {

using boost::asio::io_service;

constexpr int threadCount = 2;

struct Pool
{
    io_service service{threadCount};
    std::mutex mutex; ///< guards everything below
    std::map<std::string, boost::shared_ptr<io_service::strand>> strands;
    std::optional<boost::asio::executor_work_guard<io_service::executor_type>> work;
    std::vector<std::thread> threads;
};

Pool &pool()
{
    // Never destroyed: tasks that nobody ran may hold what their destructors would need at the end of the process.
    static Pool *made = new Pool;
    return *made;
}

/// A task that throws costs that task, not the thread of all others.
void work(io_service &service)
{
    for (;;) {
        try {
            service.run();
            return;
        } catch (const std::exception &error) {
            LOG4CXX_ERROR(utils::getStdLogger(), std::string("任务异常：") + error.what());
        }
    }
}

void start(Pool &engine)
{
    engine.service.restart();
    engine.work.emplace(engine.service.get_executor());
    for (int index = 0; index < threadCount; ++index)
        engine.threads.emplace_back([&engine] { work(engine.service); });
    static std::once_flag once;
    std::call_once(once, [] { qAddPostRoutine(refhost::finishStrands); });
}

} // namespace

RPCEngine::RPCEngine() = default;
RPCEngine::~RPCEngine() = default;

RPCEngine *RPCEngine::instance()
{
    static RPCEngine engine;
    return &engine;
}

boost::shared_ptr<io_service::strand> RPCEngine::getStrand(const std::string &name)
{
    Pool &engine = pool();
    const std::lock_guard<std::mutex> lock(engine.mutex);
    if (engine.threads.empty())
        start(engine);
    boost::shared_ptr<io_service::strand> &strand = engine.strands[name];
    if (strand == nullptr)
        strand = boost::make_shared<io_service::strand>(engine.service);
    return strand;
}

} // namespace net

namespace refhost {

void finishStrands()
{
    std::vector<std::thread> threads;
    {
        net::Pool &engine = net::pool();
        const std::lock_guard<std::mutex> lock(engine.mutex);
        engine.work.reset();
        threads.swap(engine.threads);
    }
    for (std::thread &thread : threads)
        thread.join();
}

} // namespace refhost
