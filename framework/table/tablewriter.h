#pragma once

#include <QtCore/QString>
#include <QtCore/QVariant>
#include <memory>
#include <vector>

#include "frameworkexport.h"
#include "table/cellvalue.h"
#include "table/stopflag.h"

namespace ZB {

/// One column of an exported table.
struct ExportColumn
{
    int column = -1; ///< model column
    QString header;
    QVariant::Type type = QVariant::Invalid;
    int characters = 10; ///< how wide it is, about
};

/// Writes one table to one file. It works beside the target and puts the whole in its place with finish(); until then,
/// and after any failure, the target is what it was and nothing is left beside it. One thread, any.
class FRAMEWORK_API TableWriter
{
public:
    TableWriter();
    /// Takes everything back unless finish() has been called.
    virtual ~TableWriter();

    TableWriter(const TableWriter &) = delete;
    TableWriter &operator=(const TableWriter &) = delete;

    /// Once, first; rowCount as far as it is known. False on failure, as the next two.
    virtual bool begin(const std::vector<ExportColumn> &columns, qint64 rowCount) = 0;
    /// One value per column.
    virtual bool writeRow(const std::vector<CellValue> &values) = 0;
    /// May take seconds for millions of cells.
    virtual bool finish() = 0;
    /// Why it failed, for the user; empty while it did not.
    virtual QString errorText() const = 0;

    /// XLSX for a path that ends so, CSV for all others. The flag, which outlives the writer, is looked
    /// at during long steps and settled right before the target is replaced.
    static std::unique_ptr<TableWriter> forPath(const QString &path, StopFlag &flag);
};

} // namespace ZB
