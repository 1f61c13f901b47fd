#include "slowpagemodel.h"

#include <cmath>

namespace pagetest {

namespace {

std::string displayText(const SlowPageModel::Record &record, int column)
{
    // Only columns whose texts need no formatter are filtered in the tests.
    return column == TextColumn ? record.values.code : std::to_string(record.values.channel);
}

bool isEmpty(const Values &v, int column)
{
    switch (column) {
    case IntColumn:
        return v.channel == noInt;
    case LongColumn:
        return v.quantity == noLong;
    case DoubleColumn:
        return std::isnan(v.price) || v.price == noDouble;
    case CharColumn:
        return v.status == noInt;
    default:
        return false;
    }
}

template <typename T>
int three(T a, T b)
{
    return a == b ? 0 : a < b ? -1 : 1;
}

int compareText(const std::string &a, const std::string &b)
{
    return a.size() == b.size() ? three(a, b) : three(a.size(), b.size());
}

int compareValue(const Values &a, const Values &b, int column)
{
    switch (column) {
    case IntColumn:
        return three(a.channel, b.channel);
    case LongColumn:
        return three(a.quantity, b.quantity);
    case DoubleColumn:
        return a.price == b.price || std::abs(a.price - b.price) <= 1e-05 ? 0 : three(a.price, b.price);
    case TextColumn:
        return compareText(a.code, b.code);
    case CharColumn:
        return three(a.status, b.status);
    default:
        return three(a.lot, b.lot);
    }
}

/// +1 when only the first is empty under ascending order; turned round so that the final negation leaves it last.
int emptiesLast(bool a, bool b, int order)
{
    const int result = a == b ? 0 : a ? 1 : -1;
    return order == 0 ? result : -result;
}

} // namespace

int SlowPageModel::compare(const Record &a, const Record &b) const
{
    if (sortColumn < 0 || a.object == b.object)
        return 0;
    if (sortColumn == NestedColumn && (a.values.lot == noInt || b.values.lot == noInt))
        return 0;
    const bool emptyA = isEmpty(a.values, sortColumn);
    const bool emptyB = isEmpty(b.values, sortColumn);
    int result =
        emptyA || emptyB ? emptiesLast(emptyA, emptyB, sortOrder) : compareValue(a.values, b.values, sortColumn);
    if (result == 0) {
        const bool none = a.values.sequence == noInt || b.values.sequence == noInt;
        result = none ? emptiesLast(a.values.sequence == noInt, b.values.sequence == noInt, sortOrder)
                      : three(a.values.sequence, b.values.sequence);
    }
    if (result == 0)
        result = compareText(a.key, b.key);
    return sortOrder == 0 ? result : -result;
}

int SlowPageModel::find(const std::vector<Record> &list, const std::string &key) const
{
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i].key == key)
            return static_cast<int>(i);
    return -1;
}

int SlowPageModel::insertIndex(const std::vector<Record> &list, const Record &record) const
{
    const int n = static_cast<int>(list.size());
    const auto at = [&](int i) { return compare(list[static_cast<std::size_t>(i)], record); };
    if (n < 1)
        return 0;
    int lo = 0, hi = n - 1;
    while (lo <= hi) {
        const int mid = (lo + hi) / 2;
        const int c = at(mid);
        if (c == 0)
            return mid;
        if (c < 0)
            lo = mid + 1;
        else
            hi = mid - 1;
    }
    const bool hiOut = hi < 0 || hi >= n;
    if (lo >= 0 && lo < n) {
        if (at(lo) < 0)
            return lo + 1;
        if (hiOut)
            return 0;
        return at(hi) > 0 ? hi : lo;
    }
    if (hiOut)
        return lo;
    return at(hi) > 0 ? hi : n;
}

void SlowPageModel::place(std::vector<Record> &list, const Record &record, bool atEnd)
{
    const int index = sortColumn >= 0 ? insertIndex(list, record) : atEnd ? static_cast<int>(list.size()) : 0;
    list.insert(list.begin() + index, record);
}

void SlowPageModel::relocate(std::vector<Record> &list, int index)
{
    if (sortColumn < 0)
        return;
    const auto i = static_cast<std::size_t>(index);
    const bool misplaced =
        (i > 0 && compare(list[i - 1], list[i]) > 0) || (i + 1 < list.size() && compare(list[i], list[i + 1]) > 0);
    if (!misplaced)
        return;
    const Record record = list[i];
    list.erase(list.begin() + index);
    list.insert(list.begin() + insertIndex(list, record), record);
}

bool SlowPageModel::passesExtra(const Record &record) const
{
    const std::string open = "0123"
                             "47",
                      filled = "8V", ended = "569";
    const auto isOneOf = [&](const std::string &codes) {
        return record.values.status < 128 && codes.find(static_cast<char>(record.values.status)) != std::string::npos;
    };
    const bool byStatus = status == 0 || (status == 1 && isOneOf(open)) || (status == 2 && isOneOf(filled)) ||
                          (status == 3 && isOneOf(ended));
    return byStatus && record.values.code.find(search) != std::string::npos;
}

bool SlowPageModel::passes(const Record &record) const
{
    for (const auto &[column, filter] : filters) {
        bool any = filter.second.empty();
        for (const std::string &text : filter.second)
            any = any || (filter.first == 0 ? displayText(record, column) == text
                                            : displayText(record, column).find(text) != std::string::npos);
        if (!any)
            return false;
    }
    return passesExtra(record);
}

void SlowPageModel::add(Record record)
{
    const int known = find(all, record.key);
    const int shown = find(visible, record.key);
    if (shown >= 0) {
        record.dataSeq = all[static_cast<std::size_t>(known)].dataSeq;
        all[static_cast<std::size_t>(known)] = record;
        relocate(all, known);
        visible[static_cast<std::size_t>(shown)] = record;
        relocate(visible, shown);
        if (!passesExtra(record)) {
            visible.erase(visible.begin() + find(visible, record.key));
            countChanged = true;
        }
        return;
    }
    record.dataSeq = known >= 0 ? all[static_cast<std::size_t>(known)].dataSeq : counter;
    ++counter;
    if (passes(record))
        place(visible, record, append);
    if (known >= 0) {
        all[static_cast<std::size_t>(known)] = record;
        relocate(all, known);
    } else {
        place(all, record, append);
        countChanged = true;
    }
}

void SlowPageModel::remove(const std::string &key)
{
    const int known = find(all, key);
    if (known < 0)
        return;
    all.erase(all.begin() + known);
    if (const int shown = find(visible, key); shown >= 0)
        visible.erase(visible.begin() + shown);
    countChanged = true;
}

void SlowPageModel::clear()
{
    all.clear();
    visible.clear();
    counter = 0;
    countChanged = true;
}

void SlowPageModel::sort(int column, int order)
{
    sortColumn = column;
    sortOrder = order;
    for (std::vector<Record> *list : {&visible, &all}) {
        // Runs of one, two, four ... entries merged, an entry of the right run first only when it is smaller.
        for (std::size_t width = 1; width < list->size(); width *= 2) {
            std::vector<Record> merged;
            for (std::size_t first = 0; first < list->size(); first += 2 * width) {
                std::size_t a = first, b = std::min(first + width, list->size());
                const std::size_t aEnd = b, bEnd = std::min(first + 2 * width, list->size());
                while (a < aEnd || b < bEnd)
                    merged.push_back(b < bEnd && (a == aEnd || compare((*list)[b], (*list)[a]) < 0) ? (*list)[b++]
                                                                                                    : (*list)[a++]);
            }
            list->swap(merged);
        }
    }
}

void SlowPageModel::rebuild()
{
    visible.clear();
    for (const Record &record : all)
        if (passes(record))
            place(visible, record, true);
    countChanged = true;
}

void SlowPageModel::dropFilters()
{
    filters.clear();
    visible = all;
    countChanged = true;
}

double SlowPageModel::sum(int column) const
{
    long double total = 0;
    for (const Record &record : visible) {
        if (column == LongColumn && record.values.quantity != noLong)
            total += static_cast<long double>(record.values.quantity);
        if (column == IntColumn && record.values.channel != noInt)
            total += record.values.channel;
        if (column == DoubleColumn && std::isfinite(record.values.price) && record.values.price != noDouble)
            total += record.values.price;
    }
    return static_cast<double>(total);
}

std::string SlowPageModel::keys(const std::vector<Record> &list)
{
    std::string text;
    for (const Record &record : list)
        text += (text.empty() ? "" : " ") + record.key;
    return text;
}

} // namespace pagetest
