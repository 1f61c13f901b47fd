#pragma once

#include <QtCore/qglobal.h>
#include <vector>

#include "pagemodel/pagedeadline.h"

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

} // namespace KV
