#include "pagemodel/pagecomparator.h"

#include <cmath>
#include <limits>
#include <string_view>

namespace KV {

namespace {

using State = PageSortKey::State;

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

} // namespace

int PageComparator::compare(quint32 a, quint32 b) const
{
    if (columnId < 0 || a == b)
        return 0;
    const PageSortKey &keyA = keys[a];
    const PageSortKey &keyB = keys[b];
    const bool same = keyA.record == keyB.record && keyA.record != nullptr;
    if (same || keyA.state == State::Missing || keyB.state == State::Missing)
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
    const PageSortKey &keyA = keys[a];
    const PageSortKey &keyB = keys[b];
    if (keyA.state == State::Empty || keyB.state == State::Empty)
        return emptyLast(keyA.state == State::Empty, keyB.state == State::Empty);
    if (keyA.state != keyB.state)
        return 0;
    switch (keyA.state) {
    case State::Integer:
        return sign(keyA.integer, keyB.integer);
    case State::Real:
        return compareReals(keyA.real, keyB.real);
    default:
        return compareTexts(keys.text(a), keys.text(b));
    }
}

int PageComparator::compareTies(quint32 a, quint32 b) const
{
    const PageSortKey &keyA = keys[a];
    const PageSortKey &keyB = keys[b];
    if (keyA.kind != keyB.kind || keyA.kind == PageSortKey::Kind::Other)
        return 0;
    const bool emptyA = keyA.entrySequence == noSequence;
    const bool emptyB = keyB.entrySequence == noSequence;
    const int bySequence = emptyA || emptyB ? emptyLast(emptyA, emptyB) : sign(keyA.entrySequence, keyB.entrySequence);
    return bySequence != 0 ? bySequence : compareTexts(keys.keyText(a), keys.keyText(b));
}

} // namespace KV
