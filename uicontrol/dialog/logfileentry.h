#pragma once

#include <QtCore/QDate>
#include <QtCore/QString>
#include <QtCore/QVector>

#include "uicontrolexport.h"

namespace KV {

/// A log file as it lies in the folder of logs.
struct LogFileEntry
{
    QString path;
    QString name;
    qint64 size = 0; ///< bytes
    QDate firstDay;  ///< of its first line, where that tells, else the last day
    QDate lastDay;   ///< of its last change
    QString problem; ///< why it cannot be read; empty when it can
};

/// The log files of a folder ("*.log", "*.log.1" ...), the newest first. Reads the first line of each: not for the GUI
/// thread.
UICONTROL_API QVector<LogFileEntry> listLogFiles(const QString &folder);

/// "1023 B", "1.0 KB", "12.4 MB", "2.0 GB".
UICONTROL_API QString sizeText(qint64 bytes);

} // namespace KV
