#pragma once

#include <QtCore/QSaveFile>

#include "table/tablewriter.h"

namespace ZB {

/// Comma-separated values as RFC 4180 has them, in UTF-8 with a byte-order mark. A text that a spreadsheet would run
/// as a formula gets an apostrophe in front; numbers stay as they are.
class FRAMEWORK_API CsvTableWriter : public TableWriter
{
public:
    explicit CsvTableWriter(const QString &path);
    ~CsvTableWriter() override;

    bool begin(const std::vector<ExportColumn> &columns, qint64 rowCount) override;
    bool writeRow(const std::vector<CellValue> &values) override;
    bool finish() override;
    QString errorText() const override;

private:
    void appendText(const QString &text);
    bool endLine();
    bool flush();

    QSaveFile file;
    QByteArray buffer;
};

} // namespace ZB
