#pragma once

#include <QtCore/QMap>
#include <QtCore/QVariant>
#include <memory>

namespace kdservice {
class IData;
}

namespace KV {

class CStatLayout;
struct FieldValue;

/// The last statistic values of one row: one small block, laid out by its model's columns, in the row itself as a rule.
/// Not thread-safe. Part of CHpfData, and not exported.
class CStatValues
{
public:
    CStatValues();
    ~CStatValues();

    /// Takes the values of a record and of its nested records; a field that stands in several of them counts as it was
    /// met last, in ascending order of field ids. Columns whose field the record does not have keep their value as long
    /// as the layout is the same, which must outlive this object.
    void take(const kdservice::IData &record, const CStatLayout &layout);
    /// The same with another map of field ids to columns than the one the layout was made of.
    void take(const kdservice::IData &record, const CStatLayout &layout, const QMap<int, int> &fieldColumnMap);

    /// Invalid for a column that has no value.
    QVariant value(int column) const;

private:
    void layOut(const CStatLayout &newLayout);
    void takeFields(const kdservice::IData &record, int depth);
    void takeMapped(const kdservice::IData &record, const QMap<int, int> &fieldColumnMap, int depth);
    void store(int slot, const FieldValue &value);

    static constexpr std::size_t inPlace = 4; ///< more slots than tables have as a rule

    qint64 *values() { return more ? more.get() : few; }
    const qint64 *values() const { return more ? more.get() : few; }

    const CStatLayout *layout = nullptr;
    std::unique_ptr<qint64[]> more; ///< where there are more slots than `few` holds
    qint64 few[inPlace] = {};       ///< one per slot: an integer, or the bits of a double; all bits set for none
};

} // namespace KV
