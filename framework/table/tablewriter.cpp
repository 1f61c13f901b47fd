#include "table/tablewriter.h"

#include "table/csvtablewriter.h"
#include "table/xlsxtablewriter.h"

namespace ZB {

TableWriter::TableWriter() = default;

TableWriter::~TableWriter() = default;

std::unique_ptr<TableWriter> TableWriter::forPath(const QString &path, StopFlag &flag)
{
    if (path.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive))
        return std::make_unique<XlsxTableWriter>(path, flag);
    return std::make_unique<CsvTableWriter>(path, flag);
}

} // namespace ZB
