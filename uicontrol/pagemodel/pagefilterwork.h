#pragma once

#include <vector>

#include "pagemodel/pagefilter.h"
#include "pagemodel/pagelist.h"
#include "pagemodel/pagestatistics.h"
#include "pagemodel/pagework.h"

namespace KV {

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
