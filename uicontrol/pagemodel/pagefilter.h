#pragma once

#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <string>
#include <unordered_map>

#include "filter/valuefilter.h"
#include "pagemodel/pagecolumns.h"
#include "pagemodel/pagerows.h"
#include "zb/efiltertype.h"

namespace KV {

using PageColumnFilters = QMap<int, QPair<ZB::EFilterType, QSet<QString>>>;

/// Which records of a paged model are shown: the column filters, the status mode of orders and the search for a code.
/// Not thread-safe.
class PageFilter
{
public:
    PageFilter(int dataTypeId, const PageColumns &pageColumns) : dataType(dataTypeId), columns(pageColumns) {}

    void setColumnFilters(const PageColumnFilters &filters);
    const PageColumnFilters &columnFilters() const { return filterMap; }
    void setCodeSearch(const QString &text);
    void setStatus(int mode) { status = mode; }
    int statusMode() const { return status; }

    /// Every filter.
    bool passesAll(const PageRow &row) const;
    /// The status mode, and for orders the search for a code.
    bool passesExtra(const PageRow &row) const;

    /// For filtering many records: keeps the answers of column filters by raw value where the text depends on nothing
    /// else, so that each text is made once. Short-lived: the user's number format may change between two uses.
    class Memory
    {
    private:
        friend class PageFilter;
        struct Column
        {
            std::unordered_map<qint64, bool> ofInteger;
            std::unordered_map<std::string, bool> ofText;
        };
        QMap<int, Column> columns;
    };
    bool passesAll(const PageRow &row, Memory &memory) const;

private:
    bool isOrderType() const;
    bool isDealType() const;
    bool passesColumn(const PageRow &row, int column, const core::ValueFilter &values, Memory *memory) const;
    bool passesRest(const PageRow &row) const;
    bool passesCode(const PageRow &row) const;

    int dataType;
    const PageColumns &columns;
    PageColumnFilters filterMap;
    QMap<int, core::ValueFilter> valueFilters;
    std::string codeSearch; ///< UTF-8
    int status = 1;
};

} // namespace KV
