#pragma once

#include <cstring>
#include <string>
#include <unordered_map>

#include "kdservice/fielddes.h"
#include "kdservice/idata.h"

namespace KV {

/// Answers about cells of one column by their raw value, so that a question about many records is worked out once per
/// value where the cell's text follows from the value alone. Short-lived: the user's number format may change between
/// two uses. Not thread-safe.
template <typename Answer>
class AnswersByValue
{
public:
    explicit AnswersByValue(const kdservice::FieldDes &fieldDes)
        : field(fieldDes), usable(textFollowsFromValue(fieldDes))
    {
    }

    /// holder: the record that holds the field `fieldId`.
    template <typename Compute>
    Answer answer(const kdservice::IData &holder, int fieldId, Compute compute)
    {
        if (!usable)
            return compute();
        switch (field.dataType) {
        case kdservice::ExtBool:
            return remembered(ofInteger, qint64(holder.getBool(fieldId)), compute);
        case kdservice::ExtInt:
        case kdservice::ExtChar:
            return remembered(ofInteger, qint64(holder.getInt(fieldId)), compute);
        case kdservice::ExtLong:
            return remembered(ofInteger, qint64(holder.getLong(fieldId)), compute);
        case kdservice::ExtDouble:
            return remembered(ofInteger, bitsOf(holder.getDouble(fieldId)), compute);
        case kdservice::ExtString:
            return remembered(ofText, holder.getString(fieldId), compute);
        default:
            return compute();
        }
    }

private:
    static constexpr std::size_t mostRemembered = 65536; ///< beyond that every answer is worked out

    /// Prices and names look into the record that the cell belongs to.
    static bool textFollowsFromValue(const kdservice::FieldDes &field)
    {
        kdservice::FieldDes::iterator found;
        for (const kdservice::EDisplayFunc func :
             {kdservice::DisplayPrice, kdservice::DisplayOptionName, kdservice::DisplayInstrumentName})
            if (field.findFunc(func, found))
                return false;
        return true;
    }

    static qint64 bitsOf(double value)
    {
        qint64 bits;
        std::memcpy(&bits, &value, sizeof bits);
        return bits;
    }

    template <typename Raw, typename Compute>
    static Answer remembered(std::unordered_map<Raw, Answer> &answers, Raw raw, Compute compute)
    {
        const auto known = answers.find(raw);
        if (known != answers.end())
            return known->second;
        Answer made = compute();
        if (answers.size() < mostRemembered)
            answers.emplace(std::move(raw), made);
        return made;
    }

    const kdservice::FieldDes &field;
    const bool usable;
    std::unordered_map<qint64, Answer> ofInteger; ///< doubles by their bits
    std::unordered_map<std::string, Answer> ofText;
};

} // namespace KV
