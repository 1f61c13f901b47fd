#pragma once

#include <array>
#include <map>

#include "table/tablewriter.h"

struct lxw_format;
struct lxw_workbook;
struct lxw_worksheet;

namespace ZB {

/// A workbook with typed cells: numbers keep their value and are shown as the table shows them, texts never become
/// formulas. Rows beyond what a sheet holds go on to further sheets, each with the header.
class FRAMEWORK_API XlsxTableWriter : public TableWriter
{
public:
    /// The flag is looked at while the finished file is checked. rowsPerSheet: the header included.
    XlsxTableWriter(const QString &path, StopFlag &flag, int rowsPerSheet = 1048576);
    ~XlsxTableWriter() override;

    bool begin(const std::vector<ExportColumn> &columns, qint64 rowCount) override;
    bool writeRow(const std::vector<CellValue> &values) override;
    bool finish() override;
    QString errorText() const override;

    static constexpr int maximumTextLength = 32767; ///< of a cell; longer texts are cut

private:
    bool beginSheet();
    void endSheet();
    bool writeCell(int column, const CellValue &value);
    bool writeText(int column, const QString &text, lxw_format *format);
    bool writeNumber(int column, const CellNumber &number);
    lxw_format *formatOf(const CellNumber &number);
    bool moveToTarget();
    bool fail(const QString &reason);

    QString target;
    StopFlag &stopFlag;
    int rowsPerSheet;
    QString working; ///< the file beside the target that grows
    std::vector<ExportColumn> columns;
    QString error;
    lxw_workbook *workbook = nullptr;
    lxw_worksheet *sheet = nullptr;
    lxw_format *headerFormat = nullptr;
    std::map<std::array<int, 3>, lxw_format *> formats; ///< by decimals, percent, groups
    std::vector<qint64> cellsOfSheets;
    int row = 0; ///< next free row of the sheet
};

} // namespace ZB
