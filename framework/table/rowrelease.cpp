#include "table/rowrelease.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QRunnable>
#include <QtCore/QThreadPool>

namespace ZB {

namespace {

constexpr std::size_t fewRows = 2000;

} // namespace

void releaseRows(std::vector<HpfShownRow> rows)
{
    if (rows.size() <= fewRows)
        return;
    const auto held = std::make_shared<std::vector<HpfShownRow>>(std::move(rows));
    QThreadPool::globalInstance()->start(QRunnable::create([held] {
        held->erase(held->begin() + 1, held->end());
        if (QCoreApplication *application = QCoreApplication::instance())
            QMetaObject::invokeMethod(
                application, [held] { held->clear(); }, Qt::QueuedConnection);
    }));
}

} // namespace ZB
