#pragma once

#include <QtCore/QtGlobal>
#include <boost/thread/mutex.hpp>

namespace KV {

/// How far the batches of a threaded model are, and which of them are still wanted. A load begins with a batch that
/// finds nothing under way and ends when nothing is left or when it is cancelled; batches that come after that are
/// another load. Any thread; each call costs some 20 ns. Part of CHpfThreadDataModel, and not exported.
class CLoadCount
{
public:
    /// Of a batch: the number of the load that it is part of.
    using Ticket = quint64;
    static constexpr Ticket uncounted = 0; ///< of a batch that nobody counts and nobody cancels

    CLoadCount();
    ~CLoadCount();

    /// A batch is handed over. steps: what there is to do about it.
    Ticket enter(qint64 steps);
    /// So many steps of a batch are done, or about to be; false when it is not wanted any more.
    bool advance(Ticket ticket, qint64 steps);
    /// A batch is through or skipped.
    void leave(Ticket ticket);
    /// None of the batches so far is wanted any more; false when there are none.
    bool cancel();
    /// The same, and what of them is on its way is to be taken out again.
    void dismiss();
    bool isDismissed(Ticket ticket) const;

    /// Thousandths of all steps of the present load, below 1000 until its last batch has left; 1000 without one.
    int progress() const;
    /// Of the present load, or of the next one; above 0, each time another.
    quint64 number() const;

private:
    void endLoad();

    mutable boost::mutex mutex; ///< guards everything below
    quint64 presentLoad = 1;
    quint64 lastDismissed = 0; ///< this load and all before it
    int batches = 0;
    qint64 stepsInAll = 0;
    qint64 stepsDone = 0;
};

} // namespace KV
