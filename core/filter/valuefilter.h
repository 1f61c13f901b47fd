#pragma once

#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <vector>

namespace core {

/// Which texts of one column pass: those that meet every condition. A condition is a type and a set of strings.
///
/// | type | a text meets the condition when |
/// |---|---|
/// | 0 | the set holds exactly this text, case included |
/// | 1 | the text contains a non-empty string of the set, case ignored |
/// | 2 | the set does not hold this text |
/// | any other | never |
///
/// A condition with an empty set, of whatever type, filters nothing and is not kept. A value type; reading is safe on
/// several threads at once.
class ValueFilter
{
public:
    static constexpr int exactType = 0;
    static constexpr int containsType = 1;
    static constexpr int exceptType = 2;

    ValueFilter() = default;
    ValueFilter(int type, const QSet<QString> &values) { narrow(type, values); }

    /// Adds a condition to those that are there.
    void narrow(int type, const QSet<QString> &values);
    /// Nothing is filtered.
    bool isEmpty() const { return conditions.empty(); }
    bool passes(const QString &text) const;

private:
    struct Condition
    {
        int type;
        QSet<QString> values;
        QStringList needles; ///< the non-empty strings, for type 1
    };
    static bool meets(const Condition &condition, const QString &text);

    std::vector<Condition> conditions;
};

} // namespace core
