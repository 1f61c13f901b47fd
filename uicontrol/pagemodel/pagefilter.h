#pragma once

#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <map>
#include <string>

#include "filter/valuefilter.h"
#include "pagemodel/answersbyvalue.h"
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
    PageFilter(int dataTypeId, const PageColumns &pageColumns) : dataType(dataTypeId), columns(&pageColumns) {}

    void setColumnFilters(const PageColumnFilters &filters);
    const PageColumnFilters &columnFilters() const { return filterMap; }
    void setCodeSearch(const QString &text);
    void setStatus(int mode) { status = mode; }
    int statusMode() const { return status; }
    QString codeText() const { return QString::fromStdString(codeSearch); }

    /// Column filters, status mode and search.
    bool isPassAllFilter(const PageRow &row) const;
    /// The status mode, and for orders the search for a code.
    bool isPassExFilter(const PageRow &row) const;

    /// For filtering many records: what the column filters said to raw values. Short-lived, like what it is made of.
    using Memory = std::map<int, AnswersByValue<bool>>;
    bool isPassAllFilter(const PageRow &row, Memory &memory) const;

private:
    bool isOrderType() const;
    bool isDealType() const;
    static bool testDataImpl(const core::ValueFilter &values, const QString &text) { return values.passes(text); }
    bool isPassColumnFilter(const PageRow &row, int column, const core::ValueFilter &values, Memory *memory) const;
    bool isPassAllFilter(const PageRow &row, Memory *memory) const;
    bool isPassCodeSearch(const PageRow &row) const;

    int dataType;
    const PageColumns *columns;
    PageColumnFilters filterMap;
    QMap<int, core::ValueFilter> valueFilters;
    std::string codeSearch; ///< UTF-8
    int status = 1;
};

} // namespace KV
