#include "table/tabletransfer.h"

#include <QtCore/QEventLoop>
#include <QtCore/QPointer>
#include <QtGui/QClipboard>
#include <QtGui/QGuiApplication>
#include <algorithm>

#include "popups/taskstrip.h"
#include "table/texttablewriter.h"

namespace ZB {

namespace {

constexpr qint64 cellsCopiedAtOnce = 20000;
constexpr int progressMilliseconds = 100;

void copyNow(bool withHeader, const std::vector<ExportColumn> &columns, const RowSnapshot &rows,
             const CellChooser &chosen)
{
    const auto text = std::make_shared<QString>();
    TextTableWriter writer(withHeader, text);
    writer.begin(columns, qint64(rows->size()));
    std::vector<CellValue> values;
    for (const HpfShownRow &row : *rows) {
        takeCells(row, columns, chosen, values);
        writer.writeRow(values);
    }
    writer.finish();
    QGuiApplication::clipboard()->setText(*text);
}

} // namespace

TableTransfer::TableTransfer(TaskStrip *taskStrip) : strip(taskStrip)
{
    progress.setInterval(progressMilliseconds);
    connect(&progress, &QTimer::timeout, this, &TableTransfer::showProgress);
    connect(strip, &TaskStrip::cancelRequested, this, [this] {
        if (!job || !job->cancel())
            return; // all is written by now
        cancelled = true;
        end();
    });
}

TableTransfer::~TableTransfer()
{
    end();
}

bool TableTransfer::isRunning() const
{
    return job != nullptr;
}

QString TableTransfer::errorText() const
{
    return error;
}

bool TableTransfer::wasCancelled() const
{
    return cancelled;
}

bool TableTransfer::exportTo(const QString &path, std::vector<ExportColumn> columns, RowTaker rows)
{
    if (job) {
        error = QStringLiteral("另一个导出或复制正在进行");
        return false;
    }
    const auto running = std::make_shared<ExportJob>(
        [path](StopFlag &stop) { return TableWriter::forPath(path, stop); }, std::move(columns), std::move(rows));
    QPointer<TableTransfer> self(this);
    QEventLoop loop;
    connect(this, &TableTransfer::stopped, &loop, &QEventLoop::quit);
    begin(running, QStringLiteral("正在导出"));
    running->start([guard = QPointer<QEventLoop>(&loop)] {
        if (guard)
            guard->quit();
    });
    loop.exec();
    if (!self)
        return false;
    const bool whole = running->hasSucceeded() && !cancelled;
    error = cancelled ? QString() : running->errorText();
    if (job == running)
        end();
    return whole;
}

void TableTransfer::copy(bool withHeader, std::vector<ExportColumn> columns, qint64 rowCount, RowTaker rows,
                         CellChooser chosen)
{
    if (rowCount * qint64(columns.size()) <= cellsCopiedAtOnce)
        return copyNow(withHeader, columns, rows(), chosen);
    if (job) {
        strip->setTask(task + QStringLiteral("（完成后再复制）"));
        return showProgress();
    }
    const auto text = std::make_shared<QString>();
    const auto running = std::make_shared<ExportJob>(
        [withHeader, text](StopFlag &) { return std::make_unique<TextTableWriter>(withHeader, text); },
        std::move(columns), std::move(rows), std::move(chosen));
    begin(running, QStringLiteral("正在复制"));
    running->start([self = QPointer<TableTransfer>(this), running, text] {
        if (!self || self->job != running)
            return;
        if (running->hasSucceeded())
            QGuiApplication::clipboard()->setText(*text);
        self->end();
    });
}

void TableTransfer::begin(const std::shared_ptr<ExportJob> &newJob, const QString &newTask)
{
    job = newJob;
    task = newTask;
    cancelled = false;
    error.clear();
    strip->setTask(task);
    strip->setProgress(0);
    progress.start();
}

/// Not shown before the first tick: what is over soon needs no sign.
void TableTransfer::showProgress()
{
    strip->setProgress(job->progress());
    strip->show();
}

void TableTransfer::end()
{
    if (!job)
        return;
    job->cancel();
    job.reset();
    progress.stop();
    strip->hide();
    Q_EMIT stopped();
}

} // namespace ZB
