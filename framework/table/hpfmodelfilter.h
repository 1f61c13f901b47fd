#pragma once

#include <QtCore/QHash>
#include <QtCore/QString>
#include <memory>
#include <mutex>

#include "filter/valuefilter.h"
#include "table/hpfmodelcolumn.h"

namespace ZB {

/// Answers by raw value, so that text is made once for every distinct value of a column and not once for every row. Not
/// thread-safe.
///
/// A cell without a raw value (0 with an empty raw text, or no text) says nothing about the text that filters match:
/// such a row is asked itself. No more than 65,536 answers are kept.
template <typename Answer>
class HpfAnswersByValue
{
public:
    /// The answer for the row's value when it is known. When it is not, remember() may be told it afterwards.
    const Answer *find(const HpfModelColumn &column, IBaseHpfTableData &row)
    {
        kind = Kind::Nothing;
        if (column.kind() != core::ValueKind::Text) {
            number = column.number(row);
            if (number != 0) {
                kind = Kind::Number;
                return found(numbers, number);
            }
        }
        text = column.text(row);
        if (text.isEmpty())
            return nullptr;
        kind = Kind::Text;
        return found(texts, text);
    }

    /// The answer for the value of the last find().
    void remember(const Answer &answer)
    {
        constexpr int most = 65536;
        if (kind == Kind::Number && numbers.size() < most)
            numbers.insert(number, answer);
        else if (kind == Kind::Text && texts.size() < most)
            texts.insert(text, answer);
    }

private:
    enum class Kind
    {
        Nothing,
        Number,
        Text
    };
    template <typename Key>
    static const Answer *found(const QHash<Key, Answer> &answers, const Key &key)
    {
        const auto place = answers.constFind(key);
        return place == answers.constEnd() ? nullptr : &place.value();
    }

    QHash<quint64, Answer> numbers;
    QHash<QString, Answer> texts;
    Kind kind = Kind::Nothing;
    quint64 number = 0;
    QString text;
};

/// The filter of one column of a model. What passes is settled when the filter is made. Safe on every thread.
class HpfModelFilter
{
public:
    using Answers = HpfAnswersByValue<bool>;

    /// newContext: IBaseHpfTableModel::textContext of the column.
    HpfModelFilter(const HpfModelColumn &filteredColumn, int newContext, const core::ValueFilter &filter);

    const HpfModelColumn &source() const { return column; }
    int textContext() const { return context; }
    /// Whether a row passes; `answers` are those that this filter gave before, and belong to the caller's thread.
    bool passes(IBaseHpfTableData &row, Answers &answers) const;

private:
    const HpfModelColumn column;
    const int context;
    const core::ValueFilter conditions;
};

} // namespace ZB
