#include "recordtable/recordrowcopy.h"

#include <limits>

#include "zb/cuiresource.h"

namespace ZB {

RecordRowCopy::RecordRowCopy(std::vector<Cell> copied) : cells(std::move(copied)) {}

RecordRowCopy::~RecordRowCopy() = default;

const RecordRowCopy::Cell *RecordRowCopy::cell(int column) const
{
    return column >= 0 && static_cast<std::size_t>(column) < cells.size() ? &cells[static_cast<std::size_t>(column)]
                                                                          : nullptr;
}

QString RecordRowCopy::getDisplayQString(int column)
{
    const Cell *found = cell(column);
    return found ? found->text : QString();
}

QString RecordRowCopy::getQString(int column)
{
    const Cell *found = cell(column);
    return found ? found->value.toString() : QString();
}

int RecordRowCopy::getInt(int column)
{
    const Cell *found = cell(column);
    return found && found->value.isValid() ? found->value.toInt() : std::numeric_limits<int>::max();
}

double RecordRowCopy::getDouble(int column)
{
    const Cell *found = cell(column);
    return found && found->value.isValid() ? found->value.toDouble() : std::numeric_limits<double>::max();
}

qint64 RecordRowCopy::getLongLong(int column)
{
    const Cell *found = cell(column);
    return found && found->value.isValid() ? found->value.toLongLong() : std::numeric_limits<qint64>::max();
}

const QColor *RecordRowCopy::getColor(int)
{
    return CUiResource::instance()->getColor(QStringLiteral("clr_table_text_default"));
}

std::string RecordRowCopy::key()
{
    return std::string();
}

} // namespace ZB
