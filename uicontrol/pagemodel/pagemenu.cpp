#include "pagemodel/pagemenu.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include "pagemodel/pagecolumns.h"

namespace KV {

namespace {

/// NaN is no value, as the largest double is.
double realOf(const QVariant &value)
{
    const double real = value.toDouble();
    return std::isnan(real) ? std::numeric_limits<double>::max() : real;
}

PageMenu::Item itemOf(const QString &text, const QVariant &value)
{
    PageMenu::Item item;
    item.text = text;
    item.type = value.type();
    if (item.type == QVariant::Double)
        item.real = realOf(value);
    else if (item.type != QVariant::String)
        item.integer = value.toLongLong();
    return item;
}

bool goesBefore(const PageMenu::Item &a, const PageMenu::Item &b)
{
    if (a.type == b.type && a.real != b.real)
        return a.real < b.real;
    if (a.type == b.type && a.integer != b.integer)
        return a.integer < b.integer;
    return a.text < b.text;
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

bool PageMenu::arrange(const PageDeadline &deadline)
{
    if (!std::exchange(collected, true)) {
        gathered.reserve(static_cast<std::size_t>(valueOfText.size()));
        for (auto it = valueOfText.cbegin(); it != valueOfText.cend(); ++it)
            gathered.push_back(itemOf(it.key(), it.value()));
        std::vector<quint32> unsorted(gathered.size());
        std::iota(unsorted.begin(), unsorted.end(), 0u);
        order = core::SteppedSort(std::move(unsorted));
    }
    return order.step(
        [this](quint32 a, quint32 b) {
            return goesBefore(gathered[a], gathered[b]) ? -1 : goesBefore(gathered[b], gathered[a]) ? 1 : 0;
        },
        [&] { return deadline.isDue(); });
}

QStringList PageMenu::items()
{
    QStringList texts;
    texts.reserve(static_cast<int>(gathered.size()));
    for (const quint32 index : order.take())
        texts.append(gathered[index].text);
    return texts;
}

} // namespace KV
