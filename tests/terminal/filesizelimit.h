#pragma once

#include <QtGlobal>
#include <csignal>
#include <sys/resource.h>

/// Files cannot grow beyond that many bytes while it lives: a write that comes there fails as on a bad disk.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(qint64 bytes) : handler(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before);
        rlimit limit = before;
        limit.rlim_cur = rlim_t(bytes);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);
    }

private:
    rlimit before{};
    void (*handler)(int);
};
