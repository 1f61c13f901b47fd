#include <array>
#include <utility>

#include "rows/prefetch.h"
#include "table/cdatatable_p.h"
#include "table/columntotals.h"

namespace KV {

namespace {

/// How many changes before its turn comes one of them is looked at, to have fetched what the next look reads.
constexpr int recordAhead = 48;
constexpr int keyAhead = 40;
constexpr int entryAhead = 20;
constexpr int rowAhead = 10;

} // namespace

/// The key of a record that is handed in.
struct CDataTable::KnownKey
{
    explicit KnownKey(std::string key) : text(std::move(key)), hash(Index::hashOf(text)) {}
    KnownKey() = default;

    std::string text;
    quint64 hash = 0;
};

int CDataTable::updateDataField(const RecordPtr &record, int field, bool flag)
{
    return record ? takeField({record, field}, KnownKey(record->getKey()), flag) : -1;
}

/// Records, entries and rows lie anywhere in memory: having fetched ahead of time what the changes read, many at once,
/// saves most of the waiting. What was seen ahead is looked up again in its turn, as those before it may have had it
/// removed.
QVector<int> CDataTable::updateDataFields(const QVector<FieldChange> &list)
{
    const QVector<FieldChange> changes = list; // hooks may change what the caller gave
    const int count = changes.size();
    std::array<KnownKey, keyAhead + 1> keys;
    const auto keyOf = [&keys](int change) -> KnownKey & {
        return keys[static_cast<std::size_t>(change) % keys.size()];
    };
    const auto isRecord = [&](int change) { return change >= 0 && change < count && changes[change].record; };
    QVector<int> rows;
    rows.reserve(count);
    for (int now = -recordAhead; now < count; ++now) {
        if (isRecord(now + recordAhead))
            core::prefetchObject(changes[now + recordAhead].record.get());
        if (isRecord(now + keyAhead)) {
            keyOf(now + keyAhead) = KnownKey(changes[now + keyAhead].record->getKey());
            keyToRow->prefetch(keyOf(now + keyAhead).hash);
        }
        if (isRecord(now + entryAhead))
            prefetchEntry(keyOf(now + entryAhead));
        if (isRecord(now + rowAhead))
            prefetchRow(keyOf(now + rowAhead), changes[now + rowAhead].field);
        if (now >= 0)
            rows.append(changes[now].record ? takeField(changes[now], keyOf(now), false) : -1);
    }
    return rows;
}

void CDataTable::prefetchEntry(const KnownKey &key) const
{
    if (const Entry *entry = keyToRow->likely(key.hash)) {
        core::prefetch(entry);
        core::prefetch(entry + 1); // it lies in two lines of the processor's cache
    }
}

void CDataTable::prefetchRow(const KnownKey &key, int field) const
{
    const Entry *entry = keyToRow->likely(key.hash);
    if (!entry || entry->second.row < 0)
        return;
    core::prefetch(entry->second.record.get());                     // it is let go
    const auto place = static_cast<std::size_t>(entry->second.row); // unless earlier rows have gone
    if (place >= rowToKey.size())
        return;
    core::prefetch(rowToKey.data() + place);
    totals->prefetch(field, place);
}

int CDataTable::takeField(const FieldChange &change, const KnownKey &key, bool flag)
{
    const auto &[record, field] = change;
    Entry *const known = keyToRow->entryOf(key.text, key.hash);
    if (!known)
        return -1;
    known->second.record = record;
    if (known->second.row < 0)
        return showStored(*known, flag);
    const quint64 removalsBefore = removals;
    const bool passes = passData(record);
    const Entry *const entry = stillStored(*known, record, removalsBefore);
    const int row = entry ? entry->second.row : keyToRowID(key.text);
    if (!entry || !passes || row < 0)
        return row;
    ShownRow &shown = rowFor(row);
    shown.shown = record;
    shown.hasChanged = true;
    const int column = fieldID2columnID(field);
    takeSummed(field, column, shown);
    markCell(row, column);
    repaint(flag);
    return flag ? keyToRowID(key.text) : row; // painting calls hooks
}

} // namespace KV
