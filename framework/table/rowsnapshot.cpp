#include "table/rowsnapshot.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QThread>
#include <limits>

#include "threads/callqueue.h"
#include "threads/poolwork.h"

namespace ZB {

namespace {

constexpr std::size_t fewRows = 20000; ///< are taken and let go at once

bool isGuiThread()
{
    const QCoreApplication *application = QCoreApplication::instance();
    return application && application->thread() == QThread::currentThread();
}

/// Runs on the GUI thread, at once when this is it; here when there is none any more.
void onGuiThread(const std::function<void()> &function)
{
    if (isGuiThread() || !core::postToApplication(function))
        function();
}

/// A hold on a model that ends on the GUI thread, wherever it is let go.
std::shared_ptr<SharedModel> heldForGui(const SharedModel &model)
{
    return std::shared_ptr<SharedModel>(new SharedModel(model),
                                        [](SharedModel *hold) { onGuiThread([hold] { delete hold; }); });
}

struct Kept
{
    std::vector<HpfShownRow> rows;
    std::shared_ptr<SharedModel> model;
};

void releaseHere(Kept *kept)
{
    if (kept->rows.size() > 1)
        kept->rows.erase(kept->rows.begin() + 1, kept->rows.end());
    onGuiThread([kept] { delete kept; });
}

void release(Kept *kept)
{
    if (isGuiThread() && kept->rows.size() > fewRows)
        core::runInPool([kept] { releaseHere(kept); });
    else
        releaseHere(kept);
}

RowSnapshot snapshotOf(std::vector<HpfShownRow> rows, std::shared_ptr<SharedModel> model)
{
    const std::shared_ptr<Kept> kept(new Kept{std::move(rows), std::move(model)}, release);
    return RowSnapshot(kept, &kept->rows);
}

/// Without asking for their number first: rows that come in between at the top would push the last ones out.
std::vector<HpfShownRow> allRows(const IBaseHpfTableModel &model)
{
    std::vector<HpfShownRow> rows;
    HpfModelAccess::fetch(model, 0, std::numeric_limits<int>::max(), rows);
    return rows;
}

std::vector<HpfShownRow> rowsOf(const std::vector<quint64> &ids, const IBaseHpfTableModel &model)
{
    std::vector<HpfShownRow> rows;
    rows.reserve(ids.size());
    for (const quint64 id : ids)
        if (auto row = HpfModelAccess::rowOf(model, id))
            rows.push_back({id, 0, std::move(row)});
    return rows;
}

RowTaker takerOfTaken(std::vector<HpfShownRow> rows, const SharedModel &shared)
{
    return [snapshot = makeSnapshot(std::move(rows), shared)] { return snapshot; };
}

} // namespace

RowSnapshot makeSnapshot(std::vector<HpfShownRow> rows, const SharedModel &model)
{
    return snapshotOf(std::move(rows), heldForGui(model));
}

RowTaker takerOfAll(const IBaseHpfTableModel &model, const SharedModel &shared)
{
    const HpfModelStatus status = HpfModelAccess::status(model);
    if (!shared || (!status.pending && std::size_t(status.shown) <= fewRows))
        return takerOfTaken(allRows(model), shared);
    return [hold = heldForGui(shared)] {
        (*hold)->size(); // finishes a sort or a filter that is under way
        return snapshotOf(allRows(**hold), hold);
    };
}

RowTaker takerOf(std::vector<quint64> ids, const IBaseHpfTableModel &model, const SharedModel &shared)
{
    if (!shared || ids.size() <= fewRows)
        return takerOfTaken(rowsOf(ids, model), shared);
    return [ids = std::move(ids), hold = heldForGui(shared)] { return snapshotOf(rowsOf(ids, **hold), hold); };
}

} // namespace ZB
