#pragma once

#include <QtCore/QHash>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <boost/thread/mutex.hpp>
#include <vector>

#include "model/cfieldformat.h"
#include "model/chpfdatacolumnproperty.h"
#include "model/cstatlayout.h"

class QColor;

namespace KV {

/// Text colours of a row by column. Maps are shared, copied when written: most rows of a model have the same.
using ColorMap = QMap<int, const QColor *>;

/// What a model's maps of columns say at one moment.
struct ColumnMaps
{
    QMap<int, int> columnOfField;
    QMap<int, CHpfDataColumnProperty> properties;
    QMap<int, kdservice::FieldDes *> fields;
    kdservice::EVxTraderType traderType = kdservice::TraderNone;
};

bool operator==(const ColumnMaps &a, const ColumnMaps &b);

/// Everything that the rows of a model have in common, worked out once per column set: how each column's field becomes
/// text, where statistic values stand, and the colour maps that rows share.
///
/// Unchanged once made, but for the colour maps by key, which are guarded; any thread. Made without any lock, since it
/// asks the catalogue and the resource service.
class CColumnPlan
{
public:
    struct Column
    {
        CFieldFormat format;
        QVariant::Type type = QVariant::Invalid; ///< invalid where only a field is left of a wider column set
    };

    explicit CColumnPlan(const ColumnMaps &maps);
    ~CColumnPlan();

    const ColumnMaps &maps() const { return columnMaps; }
    /// Null for a column that has neither a property nor a field.
    const Column *column(int number) const
    {
        return number >= 0 && static_cast<std::size_t>(number) < columns.size()
                   ? &columns[static_cast<std::size_t>(number)]
                   : nullptr;
    }
    const CStatLayout &statLayout() const { return layout; }

    const QColor *defaultColor() const { return plainColor; }
    /// The colours that rows start with, keyed by field ids.
    const ColorMap &defaultColors() const { return plainColors; }
    /// `colors` with every column in one colour.
    ColorMap withAllColumns(const ColorMap &colors, const QString &key) const;
    /// The colour behind one of the keys of CFieldFormat::colorKey.
    const QColor *fieldColor(const char *key) const;

private:
    ColorMap painted(const ColorMap &colors, const QColor *color) const;

    const ColumnMaps columnMaps;
    const CStatLayout layout;
    std::vector<Column> columns;
    const QColor *plainColor;
    ColorMap plainColors;
    std::vector<std::pair<const char *, const QColor *>> fieldColors;

    mutable boost::mutex mutex;                   ///< guards the maps by key
    mutable QHash<QString, ColorMap> colorsOfKey; ///< plainColors with every column in the colour of a key
};

} // namespace KV
