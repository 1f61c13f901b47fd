#include "table/xlsxcheck.h"

#include <QtCore/QByteArray>
#include <algorithm>

#include "table/ziparchive.h"

namespace ZB {

namespace {

/// Counts how often a cell begins in a stream that comes in pieces.
class CellCount
{
public:
    void add(const char *bytes, qint64 size)
    {
        tail.append(bytes, int(size));
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

} // namespace

bool isWholeWorkbook(const QString &path, const std::vector<qint64> &cellsOfSheets, const std::atomic<bool> &cancelled)
{
    ZipArchive archive(path);
    if (!archive.open())
        return false;
    for (std::size_t sheet = 0; sheet < cellsOfSheets.size(); ++sheet) {
        const QString name = QStringLiteral("xl/worksheets/sheet%1.xml").arg(sheet + 1);
        const auto &entries = archive.entries();
        const auto entry = std::find_if(entries.begin(), entries.end(),
                                        [&name](const ZipArchive::Entry &each) { return each.name == name; });
        if (entry == entries.end())
            return false;
        CellCount cells;
        const bool read = archive.read(*entry, [&cells, &cancelled](const char *bytes, qint64 size) {
            cells.add(bytes, size);
            return !cancelled;
        });
        if (!read || cells.count() != cellsOfSheets[sheet])
            return false;
    }
    return true;
}

} // namespace ZB
