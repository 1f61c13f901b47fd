#pragma once

#include <QtCore/QSet>
#include <QtCore/QStringList>
#include <QtCore/QVariant>
#include <deque>
#include <optional>

#include "pagemodel/answersbyvalue.h"
#include "pagemodel/pagedeadline.h"
#include "rows/steppedsort.h"

namespace KV {

class PageColumns;

/// Gathers the distinct texts of one column, in the order of its values. The columns must be the same for as long as
/// records are added. Not thread-safe.
class PageMenu
{
public:
    PageMenu(const PageColumns &pageColumns, int columnId);

    /// A text that is offered, and what it is ordered by.
    struct Item
    {
        QString text;
        QVariant::Type type = QVariant::Invalid;
        qint64 integer = 0;
        double real = 0;
    };

    void add(const kdservice::IData &record);
    /// Puts the texts in order, once all records are added; goes on until the deadline, true when it is done.
    bool arrange(const PageDeadline &deadline);
    /// What was put in order; call it once. Ascending: numbers as numbers, no value last, texts as texts.
    QStringList items();

private:
    void addText(const QString &text, const QVariant &value);

    const PageColumns &columns;
    const int column;
    std::optional<AnswersByValue<bool>> seen;
    QSet<QString> texts;
    std::deque<Item> gathered; ///< of each text, with the first value that had it; grows without being copied
    bool arranging = false;
    core::SteppedSort order;
};

} // namespace KV
