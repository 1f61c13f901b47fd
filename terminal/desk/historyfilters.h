#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtCore/QVector>

#include "kdservice/evxtradertype.h"
#include "trading/historyquery.h"
#include "zb/ibasehpftablemodel.h"

namespace terminal {

/// The filters of a history table's columns, and what they ask a desk file for. Columns go by their field. A plain
/// value.
class HistoryFilters
{
public:
    using Filter = ZB::IBaseHpfTableModel::ColumnFilter;

    /// Whether the file can be asked for values of this field.
    static bool canFilter(int field);

    /// What the file has, by which texts become its values.
    void setChoices(const trading::HistoryChoices &found) { choices = found; }
    /// An empty set takes the field's filter away.
    void set(int field, ZB::EFilterType type, const QSet<QString> &values);
    void clear() { filters.clear(); }
    const QMap<int, Filter> &all() const { return filters; }
    /// What the filter box of a field offers.
    QStringList menu(int field) const;
    /// Puts the filters into a query: each becomes the list of the file's values that it lets pass; one value that no
    /// row has, where it lets none.
    void putInto(trading::HistoryQuery &query) const;

private:
    /// A text of a filter's list and what the file has for it.
    using Choice = QPair<QString, QVariant>;

    QVector<Choice> choicesOf(int field) const;
    QVariantList passing(int field, const Filter &filter) const;

    QMap<int, Filter> filters;
    trading::HistoryChoices choices;
};

} // namespace terminal
