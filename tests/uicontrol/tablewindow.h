#pragma once

#include <gtest/gtest.h>

#include <QtWidgets/QWidget>
#include <memory>

#include "grid/gridview.h"
#include "table/chpfdatatable.h"
#include "testrecords.h"

namespace testrecords {

/// A table over tickets in a shown window of its own, with a configuration in memory.
class TableWindow : public testing::Test
{
protected:
    explicit TableWindow(bool paged = false);
    ~TableWindow() override;

    /// What the posted events and a redraw bring about.
    void settle();
    ZB::GridView *grid() const { return table->findChild<ZB::GridView *>(); }
    /// Texts of the header and of every row, "|" between cells, a line each.
    std::string shown() const;
    std::string statistics() const;
    /// "title: text" of the open information boxes.
    std::string boxes() const;

    static constexpr int tableId = 77;
    std::unique_ptr<QWidget> window;
    KV::CHpfDataTable *table = nullptr;
};

} // namespace testrecords
