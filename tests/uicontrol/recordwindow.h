#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "../eventwindow.h"
#include "table/cdatatable.h"
#include "testrecords.h"

namespace testrecords {

/// Opens what derived tables use, and notes what its hooks are asked.
class OpenTable : public KV::CDataTable
{
public:
    using KV::CDataTable::CDataTable;
    using KV::CDataTable::getMetaIDs;
    using KV::CDataTable::initColumns;
    using KV::CDataTable::onFilter;
    using KV::CDataTable::resetTableColumnID;
    using KV::CDataTable::showFilterMenu;
    using KV::CDataTable::takeColumnFilter;

    /// What a derived table might do in its hooks, for the record that the hook is called with.
    std::function<void(const RecordPtr &)> whileShowing;
    std::function<void(const RecordPtr &)> whilePassing;
    std::function<void(int row)> whileFilling;
    int shownRecords = 0;
    std::vector<int> shownFields;
    std::vector<int> changedFields; ///< those that the hook was told to have changed

protected:
    bool passFilter(const RecordPtr &record, int column, int type, QString text) const override;
    void showData(const RecordPtr &record, int row, int firstColumn) override;
    void showDataFieldImpl(bool flag, const RecordPtr &record, int row, int column, const kdservice::FieldDes *field,
                           int fieldId, int trader) override;
};

/// A record table over tickets in a shown window of its own, with a configuration in memory.
class RecordWindow : public testing::Test
{
protected:
    RecordWindow();
    ~RecordWindow() override;

    static constexpr int tableId = 78;
    /// A row per line in the order on the screen: key, then the texts of its cells, "|" between them.
    std::string shown() const;
    /// Keys in the order on the screen, separated by blanks.
    std::string keys() const;
    std::string statistics() const;
    void filter(int column, int type, QSet<QString> values);
    /// Tickets "a", "b" ... with the numbers 1, 2 ...
    void addTickets(int count);

    std::unique_ptr<EventWindow> window;
    OpenTable *table = nullptr;
};

} // namespace testrecords
