#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>

#include "hostexport.h"
#include "zb/cbasetablesettingparam.h"
#include "zb/efiltertype.h"

namespace ZB {

/// What every table of the host offers, whichever family it belongs to. GUI thread. Columns are model columns, from 0,
/// whatever their place on the screen.
class HOST_API IBaseTable
{
public:
    IBaseTable();
    virtual ~IBaseTable();

    IBaseTable(const IBaseTable &) = delete;
    IBaseTable &operator=(const IBaseTable &) = delete;

    virtual int tableId() const = 0;
    /// Whether users may filter a column by its values; false for columns that do not exist.
    virtual bool columnFilterable(int column) const = 0;
    /// The user has chosen a filter (type: EFilterType) for a column; an empty set takes the filter off. Hands what
    /// makes sense for a filterable column to takeColumnFilter() unless overridden.
    virtual void onFilterTrigger(int column, int type, QSet<QString> &values);

    virtual CBaseTableSettingParam getTableSetting() = 0;
    /// Applies what fits the table's columns and ignores the rest.
    virtual void setTableSetting(const CBaseTableSettingParam &setting) = 0;
    /// Writes the rows that pass the filters and the visible columns to a file: XLSX for a path that ends so, CSV for
    /// all others. Returns when the file is there; events are handled meanwhile, so the table may be gone then. False
    /// when that failed, when the user stopped it, and while another export or copy is under way.
    virtual bool exportData(QString path) = 0;

protected:
    /// Carries a filter out that onFilterTrigger() has let through. Does nothing unless overridden.
    virtual void takeColumnFilter(int column, EFilterType type, const QSet<QString> &values);
};

} // namespace ZB
