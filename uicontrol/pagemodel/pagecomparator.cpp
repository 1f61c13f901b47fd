#include "pagemodel/pagecomparator.h"

#include <cmath>
#include <limits>
#include <string_view>

#include "kdservice/cdealdetailv2.h"
#include "kdservice/corderdetailv2.h"
#include "model/fieldvalue.h"
#include "pagemodel/pagecolumns.h"

namespace KV {

namespace {

constexpr double equalWithin = 1e-05;
constexpr int noSequence = std::numeric_limits<int>::max();

template <typename T>
int sign(T a, T b)
{
    return a < b ? -1 : a > b ? 1 : 0;
}

/// Equality first: the difference of two infinities is no number.
int compareReals(double a, double b)
{
    return a == b || std::fabs(a - b) <= equalWithin ? 0 : sign(a, b);
}

/// The shorter text is the smaller one, whatever it says.
int compareTexts(std::string_view a, std::string_view b)
{
    return a.size() != b.size() ? sign(a.size(), b.size()) : sign(a.compare(b), 0);
}

PageSortValue integerValue(qint64 value, qint64 absent)
{
    PageSortValue result;
    result.state = value == absent ? PageSortValue::State::Empty : PageSortValue::State::Integer;
    result.integer = value;
    return result;
}

PageSortValue realValue(double value)
{
    PageSortValue result;
    result.state = std::isnan(value) || isAbsent(value) ? PageSortValue::State::Empty : PageSortValue::State::Real;
    result.real = value;
    return result;
}

} // namespace

int PageComparator::compare(quint32 a, quint32 b) const
{
    if (columnId == NoColumn || a == b)
        return 0;
    const PageRow &rowA = rows[a];
    const PageRow &rowB = rows[b];
    if (rowA.record == rowB.record || rowA.sortValue.state == PageSortValue::State::Missing ||
        rowB.sortValue.state == PageSortValue::State::Missing)
        return 0;
    int result = compareValues(a, b);
    if (result == 0)
        result = compareTies(a, b);
    return order == 0 ? result : -result;
}

int PageComparator::emptyLast(bool emptyA, bool emptyB) const
{
    if (emptyA == emptyB)
        return 0;
    const int ascending = emptyA ? 1 : -1;
    return order == 0 ? ascending : -ascending;
}

int PageComparator::compareValues(quint32 a, quint32 b) const
{
    using State = PageSortValue::State;
    const PageSortValue &valueA = rows[a].sortValue;
    const PageSortValue &valueB = rows[b].sortValue;
    if (valueA.state == State::Empty || valueB.state == State::Empty)
        return emptyLast(valueA.state == State::Empty, valueB.state == State::Empty);
    if (valueA.state != valueB.state)
        return 0;
    switch (valueA.state) {
    case State::Integer:
        return sign(valueA.integer, valueB.integer);
    case State::Real:
        return compareReals(valueA.real, valueB.real);
    default:
        return compareTexts(rows.text(a), rows.text(b));
    }
}

int PageComparator::compareTies(quint32 a, quint32 b) const
{
    const PageRow &rowA = rows[a];
    const PageRow &rowB = rows[b];
    if (!(rowA.order && rowB.order) && !(rowA.deal && rowB.deal))
        return 0;
    const bool emptyA = rowA.entrySequence == noSequence;
    const bool emptyB = rowB.entrySequence == noSequence;
    const int bySequence = emptyA || emptyB ? emptyLast(emptyA, emptyB) : sign(rowA.entrySequence, rowB.entrySequence);
    return bySequence != 0 ? bySequence : compareTexts(rows.keyView(a), rows.keyView(b));
}

void captureSortValue(PageRows &rows, quint32 slot, const PageColumns &columns, int column, int codeColumn)
{
    PageRow &row = rows[slot];
    row.sortValue = PageSortValue();
    if (column < 0)
        return;
    if (column == codeColumn && row.order) {
        row.sortValue.state = PageSortValue::State::Text;
        rows.setText(slot, row.order->codeText());
        return;
    }
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *holder = columns.getFieldIDataPtr(*row.record, column, keep);
    if (!holder)
        return;
    const int fieldId = columns.fieldIdOf(column);
    switch (columns.field(column)->dataType) {
    case kdservice::ExtBool:
        row.sortValue = integerValue(holder->getBool(fieldId) ? 1 : 0, noSequence);
        break;
    case kdservice::ExtInt:
    case kdservice::ExtChar:
        row.sortValue = integerValue(holder->getInt(fieldId), std::numeric_limits<int>::max());
        break;
    case kdservice::ExtLong:
        row.sortValue = integerValue(holder->getLong(fieldId), std::numeric_limits<qint64>::max());
        break;
    case kdservice::ExtDouble:
        row.sortValue = realValue(holder->getDouble(fieldId));
        break;
    case kdservice::ExtString:
        row.sortValue.state = PageSortValue::State::Text;
        rows.setText(slot, holder->getString(fieldId));
        break;
    default:
        break;
    }
}

} // namespace KV
