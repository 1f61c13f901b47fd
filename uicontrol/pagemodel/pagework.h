#pragma once

#include <vector>

#include "pagemodel/pagefilter.h"
#include "pagemodel/pagelist.h"
#include "pagemodel/pagelistsort.h"
#include "pagemodel/pagestatistics.h"

namespace KV {

class PageModelCore;

/// A sort or a filter of a paged model in the making. It works beside the lists, which stay as they are and take
/// changes until it is done: those are noted here and brought in at the end, as if the work was asked for after them.
/// Under the model's exclusive lock throughout.
class PageWork
{
public:
    explicit PageWork(PageModelCore &modelCore) : core(modelCore) {}
    virtual ~PageWork();

    PageWork(const PageWork &) = delete;
    PageWork &operator=(const PageWork &) = delete;

    virtual bool isFilter() const = 0;
    /// A record is about to come into its slot, to change there, or to leave the model.
    void note(quint32 slot, bool leaves);
    /// Carries on; true when nothing is left to do and the lists are the new ones.
    bool step(const PageDeadline &deadline);
    /// In thousandths.
    virtual int progress() const = 0;

protected:
    /// One stretch of the work, until the deadline; true when all of it is done but for what is noted.
    virtual bool prepare(const PageDeadline &deadline) = 0;
    virtual void noted(quint32 slot, bool leaves) = 0;
    /// Brings a record that was noted to its place, or out.
    virtual void settle(quint32 slot) = 0;
    /// The new lists become the model's.
    virtual void publish() = 0;

    bool isNoted(quint32 slot) const { return slot < marks.size() && marks[slot]; }
    void dropNoted(std::vector<quint32> &slotList) const;
    /// About a millisecond's work lies between two looks at the clock.
    static constexpr quint32 slotsPerPiece = 256;

    PageModelCore &core;

private:
    std::vector<bool> marks; ///< by slot
    std::vector<quint32> waiting;
    std::size_t settled = 0; ///< of those that waited
    bool started = false;
    bool prepared = false;
};

/// Sorts both lists by a column.
class PageSortWork : public PageWork
{
public:
    PageSortWork(PageModelCore &modelCore, int sortColumn, int sortOrder);

    bool isFilter() const override { return false; }
    int progress() const override;

protected:
    bool prepare(const PageDeadline &deadline) override;
    void noted(quint32 slot, bool leaves) override;
    void settle(quint32 slot) override;
    void publish() override;

private:
    enum class Phase
    {
        Capture,
        SortAll,
        SortVisible,
        PlaceAll,
        PlaceVisible,
        Done
    };
    bool captureSome(const PageDeadline &deadline);
    void takeLists();

    const int column;
    const int order;
    PageSortKeys keys;
    PageComparator comparator;
    Phase phase = Phase::Capture;
    quint32 nextSlot = 0;
    bool sameLists = false; ///< the visible list is the all list
    PageListSort allSort;
    PageListSort visibleSort;
    std::vector<quint32> allOrder;
    PageList all;
    PageList visible;
};

/// Makes the visible list anew from the all list.
class PageFilterWork : public PageWork
{
public:
    /// Whether the list takes what passes the filters, or every record whatever they say.
    enum class Mode
    {
        Passing,
        Everything
    };
    PageFilterWork(PageModelCore &modelCore, const PageFilter &wanted, Mode filterMode);
    /// The same from the beginning.
    PageFilterWork(PageModelCore &modelCore, const PageFilterWork &other);

    bool isFilter() const override { return true; }
    int progress() const override;

protected:
    bool prepare(const PageDeadline &deadline) override;
    void noted(quint32 slot, bool leaves) override;
    void settle(quint32 slot) override;
    void publish() override;

private:
    /// What a test said, kept for the log until the list is the model's: the record may change and be tested again.
    struct Outcome
    {
        static constexpr int NotPassed = -1;
        quint32 slot;
        int index; ///< where it was put, while so many were on the list with it
        int size;
    };

    bool testSome(const PageDeadline &deadline);
    void test(quint32 slot);
    bool passes(quint32 slot);
    void take(quint32 slot, int index);
    void keepOutcome(const Outcome &outcome);
    void logOutcomes() const;
    bool isSorted() const;
    int placeOf(quint32 slot) const;

    const PageFilter filter;
    const Mode mode;
    PageFilter::Memory memory;
    bool listed = false; ///< `order` is taken
    bool placed = false;
    std::vector<quint32> order;
    std::size_t next = 0;
    std::vector<quint32> passing;  ///< while the list is not sorted
    std::vector<Outcome> outcomes; ///< while the log is on
    PageList visible;
    PageStatistics statistics;
};

} // namespace KV
