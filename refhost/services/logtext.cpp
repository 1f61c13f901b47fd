#include "services/logtext.h"

#include <log4cxx/level.h>

#include "utils/timetext.h"

namespace refhost {

namespace {

qint64 milliseconds(const log4cxx::spi::LoggingEvent &event)
{
    return event.getTimeStamp() / 1000;
}

} // namespace

std::string fileLine(const log4cxx::spi::LoggingEvent &event)
{
    const QString date = utils::getStrTimeByTime(milliseconds(event), utils::ETimeText::Date);
    const QString time = utils::getStrTimeByTime(milliseconds(event), utils::ETimeText::TimeMillis);
    return date.toStdString() + ' ' + time.toStdString() + ' ' + event.getLevel()->toString() + ' ' +
           event.getRenderedMessage() + '\n';
}

QString panelLine(const log4cxx::spi::LoggingEvent &event)
{
    return utils::getStrTimeByTime(milliseconds(event), utils::ETimeText::TimeMillis) + QLatin1Char(' ') +
           QString::fromStdString(event.getRenderedMessage());
}

} // namespace refhost
