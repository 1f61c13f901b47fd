#pragma once

#include <QtCore/QString>
#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include "frameworkexport.h"
#include "table/rowsnapshot.h"
#include "table/tablewriter.h"

namespace ZB {

/// Says which cells go along; the others are blank. Empty when all do. Any thread.
using CellChooser = std::function<bool(quint64 row, int column)>;

/// The values of the columns of one row.
void takeCells(const HpfShownRow &row, const std::vector<ExportColumn> &columns, const CellChooser &chosen,
               std::vector<CellValue> &values);

/// Writes rows on a worker thread of Qt's global pool: to a file, or to a text for the clipboard.
///
/// Made and watched on the GUI thread. The worker holds what it needs: whoever started it may be deleted meanwhile.
class FRAMEWORK_API ExportJob : public std::enable_shared_from_this<ExportJob>
{
public:
    /// Makes the writer, on the worker. The flag outlives it.
    using WriterFactory = std::function<std::unique_ptr<TableWriter>(StopFlag &flag)>;

    ExportJob(WriterFactory makeWriter, std::vector<ExportColumn> columns, RowTaker takeRows,
              CellChooser chosen = nullptr);
    ~ExportJob();

    /// finished: called on the GUI thread, unless the job has been cancelled and dropped before.
    void start(std::function<void()> finished);
    /// The worker stops soon and takes back what it wrote; false when it is too late for that, and all is about to be
    /// written.
    bool cancel();

    bool isFinished() const;
    /// Once finished: whether all is written, and why not.
    bool hasSucceeded() const;
    QString errorText() const;
    /// In thousandths; the last stretch is spent on packing.
    int progress() const;

private:
    void run();
    bool write();
    void tellFinished();

    const WriterFactory makeWriter;
    const std::vector<ExportColumn> columns;
    const CellChooser chosen;
    RowTaker takeRows; ///< the worker's, as soon as it runs
    std::atomic<qint64> rowCount{0};
    std::function<void()> finishedCallback;
    std::atomic<qint64> written{0};
    StopFlag stopFlag;
    std::atomic<bool> done{false};
    bool succeeded = false; ///< with the error: written before `done`, read after it
    QString error;
};

} // namespace ZB
