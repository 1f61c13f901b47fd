#pragma once

#include <log4cxx/appenderskeleton.h>

#include <QtCore/QFile>

#include "refhostexport.h"

namespace refhost {

/// Writes log lines to a file in UTF-8, each at once. A file that has grown to its limit becomes `name.1`, that one
/// `name.2` and so on; the oldest goes. Any thread: log4cxx appends one line at a time.
class REFHOST_API LogFileAppender : public log4cxx::AppenderSkeleton
{
public:
    LogFileAppender(const QString &path, qint64 maxBytes, int olderFiles);
    ~LogFileAppender() override;

    /// False, with the reason in errorText(), when the file cannot be written.
    bool open();
    QString errorText() const { return file.errorString(); }

    void close() override;
    bool requiresLayout() const override;

protected:
    void append(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &pool) override;

private:
    void rotate();

    QFile file;
    qint64 maxBytes;
    int olderFiles;
};

} // namespace refhost
