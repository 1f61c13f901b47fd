#pragma once

#include <QtCore/QString>
#include <QtCore/QVarLengthArray>
#include <vector>

#include "rows/chunkedsequence.h"
#include "rows/keptrows.h"
#include "rows/slotarray.h"
#include "rows/slotsort.h"
#include "rows/sortkey.h"
#include "stats/columnsum.h"

namespace core {

/// By which columns rows are ordered and which columns are summed. What the columns are called is the caller's
/// business.
struct Arrangement
{
    struct SortField
    {
        ValueKind kind;
        bool descending;
    };
    std::vector<SortField> sort; ///< the weightiest first; ties keep the order of arrival
    std::vector<ValueKind> sums; ///< Integer or Real
};

/// What is kept of a row: taken when it is handed in, so that a record may change unseen until it is handed in again.
struct RowValues
{
    QVarLengthArray<quint64, 4> sortKeys; ///< for each sort field what SortKey makes of the value; 0 for Custom
    QVarLengthArray<QString, 1> texts;    ///< the values of the sort fields of kind Text, in their order
    QVarLengthArray<quint64, 4> sums;     ///< for each summed column what ColumnSum::bitsOf makes of the value
    bool passes = true;                   ///< the filters
};

/// The order of rows under one arrangement, which of them pass the filters, and the sums over those.
///
/// A row is put, changed or removed in about a microsecond among a million, and everything that can be asked is right
/// at once. With a Custom sort field rows cannot be placed here: a new one goes to the end, a changed one stays, and
/// both count as misplaced until mergeMisplaced() or a new view. Knows slots and values, no records. Not thread-safe.
///
/// A new arrangement is a new view, made aside: adopt() what each row has, order(), then place().
class RowView
{
public:
    explicit RowView(const Arrangement &arrangement);
    ~RowView();

    RowView(const RowView &) = delete;
    RowView &operator=(const RowView &) = delete;

    const Arrangement &arrangement() const { return plan; }

    /// What a change did to what is shown.
    enum class Effect
    {
        None,  ///< nothing that can be asked here is another
        Order, ///< a shown row came, went or moved
    };

    /// `arrival` orders rows that are equal otherwise; it stays with the slot until the row is removed.
    Effect add(quint32 slot, qint64 arrival, const RowValues &values);
    Effect change(quint32 slot, const RowValues &values);
    Effect remove(quint32 slot);
    /// Has the processor fetch what a change of this row reads first; fetched, prefetchPlace() has it fetch where the
    /// row stands. Any slot.
    void prefetch(quint32 slot) const;
    void prefetchPlace(quint32 slot) const { sequence.prefetchChunk(slot); }
    bool contains(quint32 slot) const { return sequence.contains(slot); }

    /// All rows, or the shown ones, which pass the filters. Indexes as in ChunkedSequence.
    const ChunkedSequence &rows() const { return sequence; }
    int shownCount() const { return sequence.markedCount(); }

    bool passes(quint32 slot) const { return hasState(slot, KeptRows::passing); }
    qint64 arrivalOf(quint32 slot) const;
    /// What is kept of `count` slots from `first` on, for a view of another arrangement; slots that were never used
    /// have no row.
    void copyKept(quint32 first, quint32 count, KeptRows &kept) const;

    const ColumnSum &sum(int index) const { return sums[static_cast<std::size_t>(index)]; }
    /// Takes every row out of the sums; count() takes one in with other values. A row that changes or is filtered anew
    /// is counted again in any case.
    void uncountAll();
    void count(quint32 slot, const QVarLengthArray<quint64, 4> &values);

    /// Compares two rows by a Custom sort field.
    using Compare = SlotSort::Compare;

    /// Keeps what belongs to a row that place() will bring in, and counts it into the sums; remove() takes it back.
    void adopt(quint32 slot, const quint64 *keptWords, const QString *keptTexts, bool rowPasses);
    /// Sorts adopted slots. False when it was called off.
    bool order(std::vector<quint32> &slots, const Compare &customCompare, const SlotSort::CancelFlag &cancelled) const;
    /// Moves the misplaced slots of a list to where they belong; the others must be in order. False when called off.
    bool mergeMisplaced(std::vector<quint32> &slots, const std::vector<quint32> &misplaced,
                        const Compare &customCompare, const SlotSort::CancelFlag &cancelled) const;
    /// Makes adopted slots the rows, in the order given. False, and without rows, when called off.
    bool place(const std::vector<quint32> &slots, const SlotSort::CancelFlag *cancelled = nullptr);

    bool hasCustomField() const { return custom; }
    const std::vector<quint32> &misplacedSlots() const { return misplaced; }

    /// For tests: order, marks and sums are what the kept values say.
    bool checkConsistency() const;

private:
    using State = KeptRows::State;

    void ensure(quint32 slot);
    void keep(quint32 slot, const RowValues &values);
    bool sameOrder(quint32 slot, const RowValues &values) const;
    bool isBefore(quint32 slot, quint32 other) const;
    bool isBeforeBesides(quint32 slot, quint32 other) const;
    int compareField(std::size_t field, quint32 slot, quint32 other) const;
    int compareByAll(quint32 slot, quint32 other, const Compare &customCompare) const;
    void insert(quint32 slot);
    void setState(quint32 slot, State state, bool on);
    bool hasState(quint32 slot, State state) const { return (states[slot] & state) != 0; }
    void countIn(quint32 slot);
    void countOut(quint32 slot);
    void markMisplaced(quint32 slot);
    void noteArrival(quint32 slot);
    bool arrivedBefore(quint32 slot, quint32 other) const;
    quint64 leadingWord(quint32 slot) const { return custom ? 0 : words.block(slot)[0]; }

    const Arrangement plan;
    std::vector<int> textFields; ///< for each sort field its index among the texts, or -1
    int textCount = 0;
    int arrivalAt; ///< in a block of words: sort keys, arrival, summed values
    int sumsFrom;
    bool custom = false;

    ChunkedSequence sequence;
    SlotArray<quint64> words;
    SlotArray<QString> texts;
    SlotArray<quint8> states;
    std::vector<ColumnSum> sums;
    std::vector<quint32> misplaced; ///< may name rows that are gone

    // While slots are handed out in the order of arrival their numbers say who came first, which spares a look at rows
    // that lie anywhere in memory.
    bool slotsFollowArrival = true;
    quint32 lastSlot = 0;
    quint64 lastArrival = 0; ///< its key; 0 before the first row
};

} // namespace core
