#include "log/clogaccessible.h"

#include <algorithm>
#include <utility>

#include "log/chpflogwidget.h"

namespace KV {

namespace {

/// A key holds the number of its list above these bits, below them the row's number since the list's first one.
constexpr int rowBits = 48;

QAccessibleInterface *makeInterface(const QString &, QObject *object)
{
    auto *log = qobject_cast<CHpfLogWidget *>(object);
    return log ? new CLogAccessible(log) : nullptr;
}

/// None while nobody listens.
CLogAccessible *listening(CHpfLogWidget *log)
{
    return QAccessible::isActive() ? dynamic_cast<CLogAccessible *>(QAccessible::queryAccessibleInterface(log))
                                   : nullptr;
}

} // namespace

CLogAccessible::CLogAccessible(CHpfLogWidget *log) : AccessibleItems(log, QAccessible::List), told(present()) {}

CLogAccessible::~CLogAccessible() = default;

void CLogAccessible::install()
{
    static const bool installed = (QAccessible::installFactory(makeInterface), true);
    Q_UNUSED(installed)
}

CHpfLogWidget &CLogAccessible::log() const
{
    return *static_cast<CHpfLogWidget *>(object());
}

CLogAccessible::State CLogAccessible::present() const
{
    const bool isThere = log().selectedLine >= 0 && log().selectedLine < log().lineCount;
    return {log().listNumber, log().lineCount, log().knownTrimmed,
            isThere ? log().knownTrimmed + log().selectedLine : -1, log().selectAll};
}

void CLogAccessible::tellChanges(CHpfLogWidget *log)
{
    CLogAccessible *self = listening(log);
    if (!self)
        return;
    const State before = std::exchange(self->told, self->present());
    self->tellRowChanges(before);
    if (before.selected != self->told.selected || before.all != self->told.all)
        self->tellSelection();
}

/// Rows come at the end and go at the front; whatever else happens makes it another list.
void CLogAccessible::tellRowChanges(const State &before) const
{
    using Change = QAccessibleTableModelChangeEvent;
    const int gone = static_cast<int>(std::clamp<qint64>(told.trimmed - before.trimmed, 0, before.rows));
    const int come = told.rows - (before.rows - gone);
    if (told.list != before.list || told.trimmed < before.trimmed || come < 0) {
        tellRows(Change::ModelReset, 0, 0);
        return;
    }
    if (gone > 0)
        tellRows(Change::RowsRemoved, 0, gone - 1);
    if (come > 0)
        tellRows(Change::RowsInserted, told.rows - come, told.rows - 1);
}

void CLogAccessible::focusCame(CHpfLogWidget *log)
{
    if (const CLogAccessible *self = listening(log))
        self->tellFocus();
}

QString CLogAccessible::text(QAccessible::Text kind) const
{
    const QString given = AccessibleItems::text(kind);
    if (!given.isEmpty())
        return given;
    if (kind == QAccessible::Name)
        return QStringLiteral("日志");
    if (kind != QAccessible::Description)
        return {};
    const QString count = QStringLiteral("共 %1 行").arg(rowCount());
    return log().isFollowing() ? count + QStringLiteral("，跟随最新") : count;
}

int CLogAccessible::rowCount() const
{
    return log().lineCount;
}

quint64 CLogAccessible::keyOf(int index) const
{
    return quint64(log().listNumber) << rowBits | static_cast<quint64>(log().knownTrimmed + index);
}

int CLogAccessible::indexOf(quint64 key) const
{
    const auto number = static_cast<qint64>(key & ((quint64(1) << rowBits) - 1));
    const qint64 index = number - log().knownTrimmed;
    const bool isThere = keyOf(0) >> rowBits == key >> rowBits && index >= 0 && index < rowCount();
    return isThere ? static_cast<int>(index) : -1;
}

/// The list may have lost rows at its front since the log looked at it; each turn has seen it shorter.
QString CLogAccessible::textOf(int index) const
{
    const qint64 number = log().knownTrimmed + index;
    CModelTextCache::ListState state;
    for (qint64 trimmed = log().knownTrimmed; number >= trimmed; trimmed = state.trimmed) {
        const int at = static_cast<int>(number - trimmed);
        const std::vector<LogTextPtr> pieces = log().cache->getPieces(log().filter(), at, 1, &state);
        if (state.trimmed == trimmed)
            return pieces.empty() ? QString() : pieces.front()->text;
    }
    return {};
}

QRect CLogAccessible::rectOf(int index) const
{
    const QRect rows(QPoint(0, 0), log().geometry.size);
    return log().geometry.rowRect(index - log().topLine) & rows;
}

QAccessibleInterface *CLogAccessible::childAt(int x, int y) const
{
    const QPoint at = log().mapFromGlobal(QPoint(x, y));
    return log().rect().contains(at) ? item(log().topLine + log().geometry.rowAt(at.y())) : nullptr;
}

bool CLogAccessible::isSelected(int index) const
{
    return log().selectAll || index == log().selectedLine;
}

int CLogAccessible::currentIndex() const
{
    return log().selectedLine < log().lineCount ? log().selectedLine : -1;
}

int CLogAccessible::selectedRowCount() const
{
    return log().selectAll ? rowCount() : currentIndex() < 0 ? 0 : 1;
}

QList<int> CLogAccessible::selectedRows() const
{
    QList<int> rows;
    if (!log().selectAll)
        return currentIndex() < 0 ? rows : QList<int>{currentIndex()};
    rows.reserve(rowCount());
    for (int row = 0; row < rowCount(); ++row)
        rows.append(row);
    return rows;
}

QList<int> CLogAccessible::selectedRowsInSight() const
{
    QList<int> rows;
    const int end = std::min(log().topLine + log().geometry.pageLines(), rowCount());
    for (int row = log().topLine; row < end; ++row)
        if (isSelected(row))
            rows.append(row);
    return rows;
}

bool CLogAccessible::selectRow(int row)
{
    if (row < 0 || row >= rowCount())
        return false;
    log().selectRow(row);
    return true;
}

bool CLogAccessible::unselectRow(int row)
{
    if (!isRowSelected(row))
        return false;
    log().selectRow(-1);
    return true;
}

} // namespace KV
