#pragma once

#include <log4cxx/appenderskeleton.h>
#include <log4cxx/helpers/transcoder.h>
#include <log4cxx/spi/loggingevent.h>
#include <set>
#include <string>
#include <vector>

/// What the loggers are told that it is added to, as UTF-8, and on which levels.
class LoggedLines : public log4cxx::AppenderSkeleton
{
public:
    void close() override {}
    bool requiresLayout() const override { return false; }

    /// All lines, `separator` between them.
    std::string text(char separator) const
    {
        std::string joined;
        for (std::size_t i = 0; i < lines.size(); ++i)
            joined += (i > 0 ? std::string(1, separator) : std::string()) + lines[i];
        return joined;
    }

    std::vector<std::string> lines;
    std::set<int> levels;

protected:
    void append(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &) override
    {
        std::string line;
        log4cxx::helpers::Transcoder::encodeUTF8(event->getMessage(), line);
        lines.push_back(line);
        levels.insert(event->getLevel()->toInt());
    }
};
