#pragma once

#include <string>
#include <unordered_map>

#include "pagemodel/pagerows.h"

namespace KV {

class PageColumns;

/// What a comparison needs of one record, taken when the record was handed in: the order of the lists rests on it, and
/// not on what the host does to the record afterwards.
struct PageSortKey
{
    enum class State : unsigned char
    {
        Missing, ///< the record does not have the column's field
        Empty,   ///< it has no value there
        Integer,
        Real,
        Text ///< in PageSortKeys::text
    };
    enum class Kind : unsigned char
    {
        Other,
        Order,
        Deal
    };

    const kdservice::IData *record = nullptr; ///< only to tell one from another; null once it may be gone
    union {
        qint64 integer = 0;
        double real;
    };
    int entrySequence = 0;
    State state = State::Missing;
    Kind kind = Kind::Other;
    bool keyKept = false; ///< the record has left the model; its key text is kept here
};

/// The sort keys of one sort column, by slot. Not thread-safe.
class PageSortKeys
{
public:
    explicit PageSortKeys(const PageRows &pageRows) : rows(pageRows) {}

    PageSortKeys(const PageSortKeys &) = delete;
    PageSortKeys &operator=(const PageSortKeys &) = delete;

    /// Which column capture() reads; below 0 none. Under `code` orders compare by their code; -1 for none.
    void setColumn(int columnId, int code)
    {
        column = columnId;
        codeColumn = code;
    }
    /// Takes the value from the record in a slot.
    void capture(quint32 slot, const PageColumns &columns);
    /// For a record that is about to be another one, or none: where it lay the next one may be made, and that is not
    /// it.
    void forgetRecord(quint32 slot);
    /// For a record that is about to leave the model and is compared for a while yet.
    void keepKey(quint32 slot);

    bool contains(quint32 slot) const { return slot < keys.size(); }
    const PageSortKey &operator[](quint32 slot) const { return keys[slot]; }
    /// The text of a slot whose value is a text.
    const std::string &text(quint32 slot) const { return texts[slot]; }
    std::string_view keyText(quint32 slot) const;
    /// Once none of the records that have left is compared any more.
    void forgetKept() { keptKeys.clear(); }

    void swap(PageSortKeys &other);

private:
    void setText(PageSortKey &key, quint32 slot, std::string text);

    const PageRows &rows;
    int column = -1;
    int codeColumn = -1;
    core::SlotArray<PageSortKey> keys;
    core::SlotArray<std::string> texts; ///< only while the column is a text
    std::unordered_map<quint32, std::string> keptKeys;
};

} // namespace KV
