#pragma once

#include <log4cxx/spi/loggingevent.h>

#include <QtCore/QString>
#include <string>

namespace refhost {

/// "2023-07-11 09:30:00.120 WARN text" with a line break behind, UTF-8.
std::string fileLine(const log4cxx::spi::LoggingEvent &event);
/// "09:30:00.120 text".
QString panelLine(const log4cxx::spi::LoggingEvent &event);

} // namespace refhost
