#pragma once

#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <array>

#include "kdservice/idata.h"
#include "model/cfieldformat.h"
#include "model/chpfdatacolumnproperty.h"
#include "pagemodel/origindata.h"

namespace KV {

/// The columns of a paged model: which field each one shows, of which type, and how it becomes text. Not thread-safe.
class PageColumns
{
public:
    explicit PageColumns(kdservice::EVxTraderType traderType) : trader(traderType) {}

    void setTraderType(kdservice::EVxTraderType type);
    kdservice::EVxTraderType traderType() const { return trader; }
    void setFieldDesMap(const QMap<int, kdservice::FieldDes *> &map);
    void setPropertyMap(const QMap<int, CHpfDataColumnProperty> &map) { properties = map; }
    void setFieldColumnMap(const QMap<int, int> &map);

    /// Another one after fields or texts have changed.
    quint64 revision() const { return changes; }
    const QMap<int, kdservice::FieldDes *> &fieldDesMap() const { return descriptions; }
    const QMap<int, CHpfDataColumnProperty> &propertyMap() const { return properties; }
    /// 0 for an unknown column.
    int fieldIdOf(int column) const;
    /// Null for an unknown column.
    const kdservice::FieldDes *field(int column) const { return descriptions.value(column, nullptr); }
    /// Null for an unknown column.
    const CFieldFormat *format(int column) const;
    QVariant::Type type(int column) const;

    /// The part of a record that holds the column's field; null when there is none. `keep` holds a nested one.
    const kdservice::IData *getFieldIDataPtr(const kdservice::IData &record, int column,
                                             boost::shared_ptr<kdservice::IData> &keep) const;
    bool value(const kdservice::IData &record, int column, QVariant &out) const;
    bool origin(const kdservice::IData &record, int column, QString &text, OriginData &origin) const;

private:
    static constexpr int directColumns = 64;

    void rebuild();
    void setFieldId(int column, int fieldId);

    kdservice::EVxTraderType trader;
    QMap<int, kdservice::FieldDes *> descriptions;
    QMap<int, CHpfDataColumnProperty> properties;
    QMap<int, int> columnOfField;
    std::array<int, directColumns> directFieldIds{}; ///< field ids of the first columns
    QMap<int, int> furtherFieldIds;                  ///< those of all others
    QMap<int, CFieldFormat> formats;
    quint64 changes = 0;
};

} // namespace KV
