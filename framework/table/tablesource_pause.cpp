#include <QtCore/QCoreApplication>
#include <QtCore/QRunnable>
#include <QtCore/QThreadPool>

#include "table/tablesource.h"

namespace ZB {

namespace {

constexpr int rowsTakenAtOnce = 50000;

} // namespace

void TableSource::pause(const std::function<void()> &taken)
{
    if (holding || !model)
        return;
    const HpfModelStatus status = HpfModelAccess::status(*model);
    holding = std::make_shared<Pause>();
    holding->arrivals = status.arrivals;
    holding->data = status.dataEpoch;
    if (!sharedModel)
        return takeWhenSettled();
    if (!status.pending && status.shown <= rowsTakenAtOnce) {
        holding->rows = takerOfAll(*model, sharedModel)();
        return;
    }
    const auto keep = [this, taken, run = std::weak_ptr<Pause>(holding)](const RowSnapshot &rows) {
        if (const auto pause = run.lock()) {
            pause->rows = rows;
            touch();
            taken();
        }
    };
    QThreadPool::globalInstance()->start(QRunnable::create([take = takerOfAll(*model, sharedModel), keep] {
        const RowSnapshot rows = take();
        if (QCoreApplication *application = QCoreApplication::instance())
            QMetaObject::invokeMethod(
                application, [rows, keep] { keep(rows); }, Qt::QueuedConnection);
    }));
}

void TableSource::takeWhenSettled()
{
    if (!holding || holding->rows || !model || sharedModel || HpfModelAccess::status(*model).pending)
        return;
    holding->rows = takerOfAll(*model, sharedModel)();
    touch();
}

void TableSource::resume()
{
    holding.reset();
    pausedIndex.clear();
}

bool TableSource::isPaused() const
{
    return holding != nullptr;
}

qint64 TableSource::arrivalsSincePause() const
{
    return holding && model ? qint64(HpfModelAccess::status(*model).arrivals - holding->arrivals) : 0;
}

const std::vector<HpfShownRow> *TableSource::heldRows() const
{
    return holding && holding->rows ? holding->rows.get() : nullptr;
}

RowTaker TableSource::allRows() const
{
    if (heldRows())
        return [rows = holding->rows] { return rows; };
    return takerOfAll(*model, sharedModel);
}

RowTaker TableSource::rowsOfIds(std::vector<GridRowId> ids) const
{
    if (!heldRows())
        return takerOf(std::move(ids), *model, sharedModel);
    std::vector<HpfShownRow> rows;
    for (const GridRowId id : ids)
        if (auto row = rowOfId(id))
            rows.push_back({id, 0, std::move(row)});
    return [snapshot = makeSnapshot(std::move(rows), sharedModel)] { return snapshot; };
}

} // namespace ZB
