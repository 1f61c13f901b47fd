#include "table/exportjob.h"

#include <algorithm>

#include "threads/callqueue.h"
#include "threads/poolwork.h"

namespace ZB {

namespace {

constexpr int shareOfRows = 850; ///< thousandths of the time that rows take, the rest being the packing of the file

} // namespace

void takeCells(const HpfShownRow &row, const std::vector<ExportColumn> &columns, const CellChooser &chosen,
               std::vector<CellValue> &values)
{
    values.resize(columns.size());
    std::transform(columns.begin(), columns.end(), values.begin(), [&row, &chosen](const ExportColumn &column) {
        return !chosen || chosen(row.id, column.column) ? cellValue(*row.row, column.column, column.type) : CellValue();
    });
}

ExportJob::ExportJob(WriterFactory factory, std::vector<ExportColumn> exportColumns, RowTaker rowTaker,
                     CellChooser chooser)
    : makeWriter(std::move(factory)), columns(std::move(exportColumns)), chosen(std::move(chooser)),
      takeRows(std::move(rowTaker))
{
}

ExportJob::~ExportJob() = default;

void ExportJob::start(std::function<void()> finished)
{
    finishedCallback = std::move(finished);
    core::runInPool([job = shared_from_this()] { job->run(); });
}

bool ExportJob::cancel()
{
    return stopFlag.stop();
}

bool ExportJob::isFinished() const
{
    return done;
}

bool ExportJob::hasSucceeded() const
{
    return done && succeeded;
}

QString ExportJob::errorText() const
{
    return done ? error : QString();
}

int ExportJob::progress() const
{
    if (done)
        return 1000;
    const qint64 count = rowCount;
    return count ? int(written * shareOfRows / count) : 0;
}

void ExportJob::run()
{
    succeeded = write();
    done = true;
    tellFinished();
}

bool ExportJob::write()
{
    const RowSnapshot rows = std::exchange(takeRows, nullptr)();
    rowCount = qint64(rows->size());
    const auto writer = makeWriter(stopFlag);
    const auto writeAll = [this, &rows, &writer] {
        if (!writer->begin(columns, rowCount))
            return false;
        std::vector<CellValue> values;
        for (const HpfShownRow &row : *rows) {
            takeCells(row, columns, chosen, values);
            if (stopFlag.isStopped() || !writer->writeRow(values))
                return false;
            ++written;
        }
        return writer->finish();
    };
    const bool whole = writeAll();
    error = writer->errorText();
    return whole;
}

void ExportJob::tellFinished()
{
    core::postToApplication([job = shared_from_this()] {
        if (const auto callback = std::move(job->finishedCallback))
            callback();
    });
}

} // namespace ZB
