#pragma once

#include <vector>

#include "window/feedpump.h"
#include "window/panel.h"

namespace KV {
class CHpfDataTable;
}

namespace terminal {

/// A panel with a high-volume table of records of one type. Starts out with the columns that a trader of such records
/// looks for; the table itself keeps what the user makes of them.
class TablePanel : public Panel
{
    Q_OBJECT

public:
    ~TablePanel() override;

    KV::CHpfDataTable &table() const { return *dataTable; }
    /// Takes new and changed records in; they show with the next frame after they are in.
    virtual void take(const FeedPump::Records &records);
    /// All that was taken is in the table.
    virtual bool isSettled() const;
    /// Rows that pass the filters, and all rows; on every page, where there are pages.
    virtual int shownCount() const;
    virtual int allCount() const;
    /// Shows the number of rows in the title. Called a few times a second.
    void refresh() override;
    void showNow() override;

protected:
    /// How a column starts out.
    struct Column
    {
        int fieldId;
        int width; ///< pixels at 100 %: what its largest ordinary value needs
    };

    TablePanel(const QString &caption, int tableId, int metaId, QWidget *parent);
    /// With a table of its own kind, which becomes the panel's.
    TablePanel(const QString &caption, KV::CHpfDataTable *table, QWidget *parent);

    /// The columns that are shown from the start, in their order; the first `frozen` of them do not scroll sideways.
    void arrangeColumns(const std::vector<Column> &columns, int frozen);

private:
    KV::CHpfDataTable *dataTable;
};

} // namespace terminal
