#include "model/ccolumnplan.h"

#include <algorithm>
#include <boost/thread/lock_guard.hpp>
#include <cstring>

#include "zb/cuiresource.h"

namespace KV {

namespace {

/// Colour keys come from a handful of literals; more than these are no longer kept, so that nothing grows for ever.
constexpr int rememberedColorKeys = 64;

int columnEnd(const ColumnMaps &maps)
{
    const int afterProperties = maps.properties.isEmpty() ? 0 : maps.properties.lastKey() + 1;
    const int afterFields = maps.fields.isEmpty() ? 0 : maps.fields.lastKey() + 1;
    return std::max(afterProperties, afterFields);
}

} // namespace

bool operator==(const ColumnMaps &a, const ColumnMaps &b)
{
    return a.traderType == b.traderType && a.columnOfField == b.columnOfField && a.fields == b.fields &&
           a.properties == b.properties;
}

CColumnPlan::CColumnPlan(const ColumnMaps &maps)
    : columnMaps(maps), layout(maps.columnOfField, maps.properties), columns(static_cast<std::size_t>(columnEnd(maps)))
{
    auto *resource = ZB::CUiResource::instance();
    plainColor = resource->getColor(QLatin1String(defaultTextColorKey));
    for (auto field = maps.columnOfField.begin(); field != maps.columnOfField.end(); ++field)
        plainColors.insert(field.key(), plainColor);
    for (const char *key : {riseColorKey, fallColorKey, equalColorKey, dimTextColorKey})
        fieldColors.emplace_back(key, resource->getColor(QLatin1String(key)));

    for (int number = 0; number < static_cast<int>(columns.size()); ++number) {
        Column &column = columns[static_cast<std::size_t>(number)];
        column.type = static_cast<QVariant::Type>(maps.properties.value(number).type);
        if (const kdservice::FieldDes *field = maps.fields.value(number, nullptr)) {
            column.format = CFieldFormat(*field, field->fieldId, maps.traderType);
            column.format.rememberEnumTexts();
        }
    }
}

CColumnPlan::~CColumnPlan() = default;

const QColor *CColumnPlan::fieldColor(const char *key) const
{
    for (const auto &[name, color] : fieldColors)
        if (std::strcmp(name, key) == 0)
            return color;
    return plainColor;
}

ColorMap CColumnPlan::painted(const ColorMap &colors, const QColor *color) const
{
    ColorMap result = colors;
    for (const int column : columnMaps.columnOfField)
        result.insert(column, color);
    return result;
}

ColorMap CColumnPlan::withAllColumns(const ColorMap &colors, const QString &key) const
{
    bool shared = colors.isSharedWith(plainColors);
    {
        const boost::lock_guard<boost::mutex> lock(mutex);
        const auto known = colorsOfKey.constFind(key);
        // Every column is painted anew, so a row in the colours of one key comes from the same start as a fresh one.
        for (auto other = colorsOfKey.constBegin(); !shared && other != colorsOfKey.constEnd(); ++other)
            shared = other->isSharedWith(colors);
        if (shared && known != colorsOfKey.constEnd())
            return *known;
    }
    const QColor *color = ZB::CUiResource::instance()->getColor(key);
    if (!shared)
        return painted(colors, color);
    const ColorMap result = painted(plainColors, color);
    const boost::lock_guard<boost::mutex> lock(mutex);
    if (colorsOfKey.size() >= rememberedColorKeys)
        return result;
    auto known = colorsOfKey.find(key);
    return known != colorsOfKey.end() ? *known : *colorsOfKey.insert(key, result);
}

} // namespace KV
