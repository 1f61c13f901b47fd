#pragma once

#include <vector>

#include "window/panel.h"

namespace KV {
class CDataTable;
}

namespace terminal {

/// A panel with a record table. Starts out with the columns that a trader of such records looks for; the table itself
/// keeps what the user makes of them.
class RecordPanel : public Panel
{
    Q_OBJECT

public:
    ~RecordPanel() override;

    KV::CDataTable &table() const { return *recordTable; }
    void refresh() override;
    void showNow() override;

protected:
    /// How a column starts out.
    struct Column
    {
        int fieldId;
        int width; ///< pixels at 100 %: what its largest ordinary value needs
    };

    /// The panel takes the table. unit: what its rows are counted in ("条").
    RecordPanel(const QString &caption, const QString &unit, KV::CDataTable *table, QWidget *parent);

    /// The columns that are shown from the start; the first `frozen` of them do not scroll sideways.
    void arrangeColumns(const std::vector<Column> &columns, int frozen);
    /// How many records there are, shown or not. What the table stores, unless overridden.
    virtual int recordCount() const;
    /// What the title says behind the number of rows; empty for nothing.
    virtual QString remark() const;

private:
    KV::CDataTable *recordTable;
    QString rowUnit;
};

} // namespace terminal
