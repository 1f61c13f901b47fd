#pragma once

#include <log4cxx/appenderskeleton.h>

#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "services/logline.h"

namespace refhost {

/// The appender of the root logger: warnings and errors to the standard error, everything to the listeners. Any thread.
class LogAppender : public log4cxx::AppenderSkeleton
{
public:
    LogAppender();
    ~LogAppender() override;

    int addListener(LogListener listener, std::vector<LogLine> *before);
    void removeListener(int id);

    /// Unlike the base, without the lock, since listeners are called from here.
    void doAppend(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &pool) override;
    void close() override;
    bool requiresLayout() const override;

protected:
    void append(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &pool) override;

private:
    using Listeners = std::map<int, LogListener>;

    std::mutex mutex;                                                           ///< guards what follows
    std::shared_ptr<const Listeners> listeners = std::make_shared<Listeners>(); ///< replaced, never changed
    std::deque<LogLine> newest;                                                 ///< lines
    int lastId = 0;
};

} // namespace refhost
