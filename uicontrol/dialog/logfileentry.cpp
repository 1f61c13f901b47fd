#include "dialog/logfileentry.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <algorithm>

namespace KV {

namespace {

constexpr int dateLength = 10; ///< "2026-11-21"
constexpr double step = 1024;

LogFileEntry entryOf(const QFileInfo &info)
{
    LogFileEntry entry;
    entry.path = info.absoluteFilePath();
    entry.name = info.fileName();
    entry.size = info.size();
    entry.lastDay = info.lastModified().date();
    entry.firstDay = entry.lastDay;
    QFile file(entry.path);
    if (!file.open(QIODevice::ReadOnly)) {
        entry.problem = QStringLiteral("无法读取：%1").arg(file.errorString());
        return entry;
    }
    const QDate first = QDate::fromString(QString::fromLatin1(file.read(dateLength)), Qt::ISODate);
    if (first.isValid() && first < entry.lastDay)
        entry.firstDay = first;
    return entry;
}

} // namespace

QVector<LogFileEntry> listLogFiles(const QString &folder)
{
    QVector<LogFileEntry> entries;
    if (folder.isEmpty())
        return entries;
    const QStringList names{QStringLiteral("*.log"), QStringLiteral("*.log.*")};
    for (const QFileInfo &info : QDir(folder).entryInfoList(names, QDir::Files, QDir::Name))
        entries.push_back(entryOf(info));
    std::stable_sort(entries.begin(), entries.end(),
                     [](const LogFileEntry &left, const LogFileEntry &right) { return left.lastDay > right.lastDay; });
    return entries;
}

QString sizeText(qint64 bytes)
{
    if (bytes < qint64(step))
        return QStringLiteral("%1 B").arg(bytes);
    double number = double(bytes);
    const QStringList units{QStringLiteral("KB"), QStringLiteral("MB"), QStringLiteral("GB")};
    int unit = -1;
    while (number >= step && unit + 1 < units.size()) {
        number /= step;
        ++unit;
    }
    return QStringLiteral("%1 %2").arg(number, 0, 'f', 1).arg(units[unit]);
}

} // namespace KV
