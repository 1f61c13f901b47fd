#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "table/exportjob.h"

namespace ZB {

class TaskStrip;

/// Carries rows out of a table, to a file or to the clipboard, with progress and a way to stop. One at a time.
class FRAMEWORK_API TableTransfer : public QObject
{
    Q_OBJECT

public:
    explicit TableTransfer(TaskStrip *strip);
    /// Stops what is going on; the worker cleans up by itself.
    ~TableTransfer() override;

    bool isRunning() const;
    /// Returns when the file is in its place, or with false when that failed, was cancelled, or this went away: events
    /// are handled meanwhile.
    bool exportTo(const QString &path, std::vector<ExportColumn> columns, RowTaker rows);
    /// Few rows at once, many in the background, unless something is on its way: the strip says so then.
    void copy(bool withHeader, std::vector<ExportColumn> columns, qint64 rowCount, RowTaker rows, CellChooser chosen);
    /// Why the last export failed; empty when it did not or was cancelled.
    QString errorText() const;
    bool wasCancelled() const;

private:
    void begin(const std::shared_ptr<ExportJob> &newJob, const QString &task);
    void showProgress();
    void end();

    TaskStrip *strip;
    std::shared_ptr<ExportJob> job;
    QTimer progress;
    QString task; ///< what the strip says
    QString error;
    bool cancelled = false;

Q_SIGNALS:
    void stopped();
};

} // namespace ZB
