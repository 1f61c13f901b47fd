#pragma once

#include <QtCore/QVariant>
#include <vector>

#include "zb/ibasehpftabledata.h"

namespace ZB {

/// What a row showed at one moment, for whoever carries it out of the table: search, copy, export. Any thread.
class RecordRowCopy : public IBaseHpfTableData
{
public:
    struct Cell
    {
        QString text; ///< with its unit
        QVariant value;
    };

    /// cells: by column; columns without one are empty.
    explicit RecordRowCopy(std::vector<Cell> cells);
    ~RecordRowCopy() override;

    QString getDisplayQString(int column) override;
    QString getQString(int column) override;
    int getInt(int column) override;
    double getDouble(int column) override;
    qint64 getLongLong(int column) override;
    const QColor *getColor(int column) override;
    std::string key() override;

private:
    const Cell *cell(int column) const;

    const std::vector<Cell> cells;
};

} // namespace ZB
