#pragma once

#include <QtCore/QSaveFile>

#include "table/tablewriter.h"

namespace ZB {

/// Comma-separated values as RFC 4180 has them, in UTF-8 with a byte-order mark. A text that a spreadsheet would run
/// as a formula gets an apostrophe in front; numbers stay as they are. A line is never empty, since readers skip such
/// ones: a single blank cell is "".
class FRAMEWORK_API CsvTableWriter : public TableWriter
{
public:
    CsvTableWriter(const QString &path, StopFlag &flag);
    ~CsvTableWriter() override;

    bool begin(const std::vector<ExportColumn> &columns, qint64 rowCount) override;
    bool writeRow(const std::vector<CellValue> &values) override;
    bool finish() override;
    QString errorText() const override;

private:
    void appendText(const QString &text);
    bool endLine();
    bool flush();

    StopFlag &stopFlag;
    QSaveFile file;
    QByteArray buffer;
    bool failed = false;
    int lineStart = 0; ///< of the last line in the buffer
};

} // namespace ZB
