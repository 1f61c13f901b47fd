#include "table/hpfmodelcontent.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>
#include <QtCore/QThread>
#include <mutex>
#include <vector>

#include "table/hpfmodelworker.h"

namespace ZB {

namespace {

using Row = HpfModelContent::Row;

constexpr int fewRows = 4096; ///< destroyed within a millisecond or two

/// Lets go of rows on the GUI thread. The event that wakes it carries nothing.
class LastRows : public QObject
{
public:
    static LastRows &instance()
    {
        static LastRows lastRows;
        return lastRows;
    }

    void add(Row row)
    {
        if (!QCoreApplication::instance())
            return;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            rows.push_back(std::move(row));
        }
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        takeAll();
        return true;
    }

private:
    LastRows()
    {
        if (QCoreApplication *const application = QCoreApplication::instance())
            moveToThread(application->thread());
        qAddPostRoutine([] {
            HpfModelWorker::arranging().finish();
            HpfModelWorker::reading().finish();
            HpfModelWorker::releasing().finish();
            instance().takeAll();
        });
    }

    void takeAll()
    {
        std::vector<Row> taken;
        const std::lock_guard<std::mutex> lock(mutex);
        taken.swap(rows);
    }

    std::mutex mutex;
    std::vector<Row> rows; ///< guarded by the mutex
};

Row takeOneRow(HpfModelContent &content)
{
    for (quint32 slot = 0; slot < content.slots.limit(); ++slot) {
        if (content.slots.row(slot))
            return std::move(content.slots.row(slot));
    }
    return Row();
}

} // namespace

void HpfModelContent::release(std::unique_ptr<HpfModelContent> content)
{
    if (content->slots.size() <= fewRows)
        return;
    // A std::function is copied, so it shares what it owns.
    std::shared_ptr<HpfModelContent> shared = std::move(content);
    LastRows::instance();
    HpfModelWorker::releasing().post([held = std::move(shared)]() mutable {
        Row last = takeOneRow(*held);
        held.reset();
        LastRows::instance().add(std::move(last));
    });
}

void HpfModelContent::release(std::unique_ptr<core::RowView> view)
{
    if (view->rows().size() <= fewRows)
        return;
    HpfModelWorker::releasing().post(
        [held = std::shared_ptr<core::RowView>(std::move(view))]() mutable { held.reset(); });
}

} // namespace ZB
