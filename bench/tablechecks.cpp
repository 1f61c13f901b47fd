#include "tablechecks.h"

#include <string>
#include <unordered_map>

#include "model/chpfdata.h"
#include "records/fieldids.h"

namespace bench {

namespace {

/// value: of a row by its number.
template <typename Value>
void checkMonotonous(int rows, int wanted, bool falling, const char *whose, Value value)
{
    if (rows != wanted)
        qFatal("%s table has %d rows and not %d", whose, rows, wanted);
    double last = rows > 0 ? value(0) : 0;
    for (int row = 1; row < rows; ++row) {
        const double present = value(row);
        if (falling ? present > last : present < last)
            qFatal("row %d of %s table is out of order: %g after %g", row, whose, present, last);
        last = present;
    }
}

} // namespace

void checkOrder(const OurTable &ours, int rows, bool falling)
{
    const int column = ours.column(refhost::OrderPrice);
    checkMonotonous(ours.model->size(), rows, falling, "our",
                    [&](int row) { return ours.model->getData(row)->getDouble(column); });
}

void checkOrder(const StockTable &stock, int rows, bool falling)
{
    const int column = stock.model->columnOfField(refhost::OrderPrice);
    checkMonotonous(stock.proxy->rowCount(), rows, falling, "the stock",
                    [&](int row) { return stock.proxy->index(row, column).data(StockModel::SortRole).toDouble(); });
}

void checkHeld(const OurTable &ours, const Records &records)
{
    std::unordered_map<std::string, const kdservice::IData *> lastOfKey;
    for (const auto &record : records)
        lastOfKey[record->getKey()] = record.get();
    for (const auto &[key, record] : lastOfKey) {
        const auto row =
            boost::dynamic_pointer_cast<KV::CHpfData>(ours.model->getDataByKey(QString::fromStdString(key)));
        if (!row || row->getIData().get() != record)
            qFatal("our table does not hold %s as it was given last", key.c_str());
    }
}

void checkPassed(const OurTable &ours, int column, const QString &text)
{
    for (int row = 0; row < ours.model->size(); ++row)
        if (const QString shown = ours.model->getData(row)->getFilterQString(column); shown != text)
            qFatal("row %d shows %s though the filter asks for %s", row, qUtf8Printable(shown), qUtf8Printable(text));
}

void checkRepainted(const QImage &before, const QImage &after, const char *what)
{
    if (before == after)
        qFatal("nothing was painted: %s", what);
}

void checkPicture(OurTable &ours, const QImage &before)
{
    const QImage shown = ours.picture();
    checkRepainted(before, shown, "our table");
    ours.table->themeChanged(); // drops what was painted
    ours.paint();
    if (shown != ours.picture())
        qFatal("our table does not show what it shows when all of it is painted");
}

} // namespace bench
