#pragma once

#include <QtCore/QHash>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <optional>

#include "pagemodel/answersbyvalue.h"

namespace KV {

class PageColumns;

/// Gathers the distinct texts of one column, in the order of its values. Not thread-safe.
class PageMenu
{
public:
    PageMenu(const PageColumns &pageColumns, int columnId);

    void add(const kdservice::IData &record);
    /// Ascending: numbers as numbers, no value last, texts as texts.
    QStringList items() const;

private:
    void addText(const QString &text, const QVariant &value) { valueOfText.insert(text, value); }

    const PageColumns &columns;
    const int column;
    std::optional<AnswersByValue<bool>> seen;
    QHash<QString, QVariant> valueOfText; ///< with one of the values that have this text
};

} // namespace KV
