#pragma once

#include <QtCore/QPointer>
#include <QtCore/QTemporaryDir>
#include <memory>
#include <random>
#include <vector>

#include "records/record.h"

namespace KV {
class CAccountsComboBox;
class CDataTable;
class CHpfDataTable;
class CStockCodeLineEdit;
} // namespace KV

namespace terminal {
class PagedStreamTable;
}

namespace soak {

/// What a day opens, uses and closes again: a record table, a paged table, the filter box and the box of columns of a
/// table, the tree of accounts, the list of codes, an export to a folder that goes with this object. GUI thread.
class BriefPanels
{
public:
    using Orders = std::vector<boost::shared_ptr<refhost::OrderRecord>>;

    /// The boxes are those of `table`, and its rows are exported; the controls stand in `form`.
    BriefPanels(KV::CHpfDataTable *table, const Orders &orders, QWidget *form, unsigned seed);
    ~BriefPanels();

    static constexpr int stepsOfRound = 10;
    /// The next thing of a round; what it is called. An export lets events through and returns when its file is there,
    /// the other things at once.
    static QString nameOf(int step);
    void act(int step);

    int boxes() const { return boxCount; }
    int exports() const { return exportCount; }

private:
    void openRecords();
    void useRecords();
    void openPages();
    void usePages();
    void openBox(int key, Qt::KeyboardModifiers modifiers);
    void closeBox();
    void openLists();
    void closeLists();
    void exportRows();

    std::mt19937 random;
    const Orders &orders;
    KV::CHpfDataTable *table;
    KV::CAccountsComboBox *accounts;
    KV::CStockCodeLineEdit *codes;
    std::unique_ptr<KV::CDataTable> records;
    std::unique_ptr<terminal::PagedStreamTable> pages;
    QPointer<QWidget> box;
    QTemporaryDir folder;
    int boxCount = 0;
    int exportCount = 0;
};

} // namespace soak
