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

/// Records without the field come last.
bool goesBefore(const PageMenu::Item &a, const PageMenu::Item &b)
{
    if (a.type != b.type)
        return b.type == QVariant::Invalid;
    if (a.real != b.real)
        return a.real < b.real;
    return a.integer != b.integer ? a.integer < b.integer : a.text < b.text;
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

void PageMenu::addText(const QString &text, const QVariant &value)
{
    const int before = texts.size();
    texts.insert(text);
    if (texts.size() != before)
        gathered.push_back(itemOf(text, value));
}

bool PageMenu::arrange(const PageDeadline &deadline)
{
    if (!std::exchange(arranging, true)) {
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
    QStringList list;
    list.reserve(static_cast<int>(gathered.size()));
    for (const quint32 index : order.take())
        list.append(gathered[index].text);
    return list;
}

} // namespace KV
