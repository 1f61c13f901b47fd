#pragma once

#include "table/tablewriter.h"

namespace ZB {

/// Tab-separated text, as spreadsheets take it from the clipboard: lines end with a line feed, texts with tabs, quotes
/// or line breaks stand in quotes. An absent value is an empty cell.
class FRAMEWORK_API TextTableWriter : public TableWriter
{
public:
    /// target: gets the text with finish(); the caller reads it after that.
    TextTableWriter(bool withHeader, std::shared_ptr<QString> target);
    ~TextTableWriter() override;

    bool begin(const std::vector<ExportColumn> &columns, qint64 rowCount) override;
    bool writeRow(const std::vector<CellValue> &values) override;
    bool finish() override;
    QString errorText() const override;

private:
    void append(const QString &text, bool first);

    const bool withHeader;
    std::shared_ptr<QString> target;
    QString text;
};

} // namespace ZB
