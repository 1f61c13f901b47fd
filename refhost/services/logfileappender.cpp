#include "services/logfileappender.h"

#include "services/logtext.h"

namespace refhost {

LogFileAppender::LogFileAppender(const QString &path, qint64 limit, int keptFiles)
    : file(path), maxBytes(limit), olderFiles(keptFiles)
{
}

LogFileAppender::~LogFileAppender()
{
    finalize();
}

bool LogFileAppender::open()
{
    return file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
}

void LogFileAppender::close()
{
    file.close();
}

bool LogFileAppender::requiresLayout() const
{
    return false;
}

void LogFileAppender::append(const log4cxx::spi::LoggingEventPtr &event, log4cxx::helpers::Pool &)
{
    if (!file.isOpen())
        return;
    if (file.size() >= maxBytes)
        rotate();
    const std::string line = fileLine(*event);
    file.write(line.data(), static_cast<qint64>(line.size()));
}

void LogFileAppender::rotate()
{
    const auto older = [this](int number) { return file.fileName() + QLatin1Char('.') + QString::number(number); };
    file.close();
    QFile::remove(older(olderFiles));
    for (int number = olderFiles; number > 1; --number)
        QFile::rename(older(number - 1), older(number));
    QFile::rename(file.fileName(), older(1));
    open();
}

} // namespace refhost
