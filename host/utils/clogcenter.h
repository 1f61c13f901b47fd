#pragma once

#include <log4cxx/logger.h>

#include <QtCore/QString>

#include "hostexport.h"

namespace utils {

/// Which details go to the debug file. Implemented by the host; any thread.
class HOST_API CLogCenter
{
public:
    static CLogCenter *instance();

    /// Whether messages of a debug id (911 the paged model, 51 the record table's sums ...) are wanted.
    bool isDebugIdEnabled(int id) const;
    void setDebugIdEnabled(int id, bool enabled);

    CLogCenter(const CLogCenter &) = delete;
    CLogCenter &operator=(const CLogCenter &) = delete;

private:
    CLogCenter();
    ~CLogCenter();
};

/// The program's standard logger; never null.
HOST_API log4cxx::LoggerPtr getStdLogger();
/// A logger by name, "KDDbgFile" being the debug file; never null.
HOST_API log4cxx::LoggerPtr getLogger(const char *name);

/// The folder with the log files of the program, the older ones included; empty where it writes none. Any thread.
HOST_API QString getLogFolder();

} // namespace utils
