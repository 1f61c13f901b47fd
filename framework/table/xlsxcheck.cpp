#include "table/xlsxcheck.h"

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <algorithm>

#include "table/zipentry.h"

namespace ZB {

namespace {

/// Counts how often a cell begins in a stream that comes in pieces.
class CellCount
{
public:
    void add(const char *bytes, int size)
    {
        tail.append(bytes, size);
        static const QByteArray begin = QByteArrayLiteral("<c r=");
        int from = 0;
        for (int at; (at = tail.indexOf(begin, from)) >= 0; from = at + begin.size())
            ++cells;
        tail = tail.mid(std::max(from, tail.size() - begin.size() + 1));
    }

    qint64 count() const { return cells; }

private:
    QByteArray tail; ///< what may be the front part of the next beginning
    qint64 cells = 0;
};

/// Whether the archive ends where its directory does. Its reader forgives a missing end.
bool hasEnd(const QString &path)
{
    constexpr qint64 endRecordSize = 22;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && file.size() > endRecordSize && file.seek(file.size() - endRecordSize) &&
           file.read(4) == QByteArrayLiteral("PK\x05\x06");
}

} // namespace

bool isWholeWorkbook(const QString &path, const std::vector<qint64> &cellsOfSheets, const StopFlag &flag)
{
    if (!hasEnd(path))
        return false;
    for (std::size_t sheet = 0; sheet < cellsOfSheets.size(); ++sheet) {
        CellCount cells;
        const QString name = QStringLiteral("xl/worksheets/sheet%1.xml").arg(sheet + 1);
        const bool read = readZipEntry(path, name, [&cells, &flag](const char *bytes, int size) {
            cells.add(bytes, size);
            return !flag.isStopped();
        });
        if (!read || cells.count() != cellsOfSheets[sheet])
            return false;
    }
    return true;
}

} // namespace ZB
