#pragma once

#include <vector>

#include "account/accountlistcolumn.h"
#include "window/barbutton.h"

namespace KV {
class CAccountListColumnSettingWidget;
class CDataTable;
} // namespace KV

namespace terminal {

/// Opens the column settings of an account list below itself, and brings what the user arranges there into the table,
/// which keeps it. The table must outlive the button.
class ColumnsButton : public BarButton
{
    Q_OBJECT

public:
    /// The fields of the columns that are shown without a user's choice, in their order; the first `locked` are locked.
    ColumnsButton(KV::CDataTable &table, const std::vector<int> &shownFields, int locked, QWidget *parent);
    ~ColumnsButton() override;

private:
    QVector<KV::CAccountListColumn> defaultColumns(const std::vector<int> &shownFields, int locked) const;
    void openSettings();
    void arrange(const QVector<KV::CAccountListColumn> &columns);

    KV::CDataTable &table;
    KV::CAccountListColumnSettingWidget *settings;
};

} // namespace terminal
