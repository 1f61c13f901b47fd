#include "pagemodel/pagemenu.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "pagemodel/pagecolumns.h"

namespace KV {

namespace {

/// NaN is no value, as the largest double is.
double realOf(const QVariant &value)
{
    const double real = value.toDouble();
    return std::isnan(real) ? std::numeric_limits<double>::max() : real;
}

bool goesBefore(const std::pair<QString, QVariant> &a, const std::pair<QString, QVariant> &b)
{
    const QVariant &valueA = a.second;
    const QVariant &valueB = b.second;
    if (valueA.type() != QVariant::String && valueA.type() == valueB.type()) {
        if (valueA.type() == QVariant::Double) {
            if (realOf(valueA) != realOf(valueB))
                return realOf(valueA) < realOf(valueB);
        } else if (valueA.toLongLong() != valueB.toLongLong()) {
            return valueA.toLongLong() < valueB.toLongLong();
        }
    }
    return a.first < b.first;
}

} // namespace

PageMenu::PageMenu(const PageColumns &pageColumns, int columnId) : columns(pageColumns), column(columnId)
{
    if (const kdservice::FieldDes *field = columns.field(column))
        seen.emplace(*field);
}

void PageMenu::add(const kdservice::IData &record)
{
    boost::shared_ptr<kdservice::IData> keep;
    const kdservice::IData *part = columns.getFieldIDataPtr(record, column, keep);
    if (!part) {
        addText(QString(), QVariant());
        return;
    }
    seen->answer(*part, columns.fieldIdOf(column), [&] {
        QVariant value;
        columns.value(*part, column, value);
        addText(columns.format(column)->text(*part), value);
        return true;
    });
}

QStringList PageMenu::items() const
{
    std::vector<std::pair<QString, QVariant>> sorted;
    for (auto it = valueOfText.cbegin(); it != valueOfText.cend(); ++it)
        sorted.emplace_back(it.key(), it.value());
    std::sort(sorted.begin(), sorted.end(), goesBefore);
    QStringList texts;
    for (const auto &entry : sorted)
        texts.append(entry.first);
    return texts;
}

} // namespace KV
