// Any sequence of changes, sorts and filters leaves a table's model with the rows, the order and the sums of the
// plainest model that there is.

#include <QtCore/QCoreApplication>
#include <cmath>

#include "framework/plainmodel.h"
#include "fuzzinput.h"
#include "table/hpfmodelaccess.h"

using namespace modeltest;

namespace {

constexpr int mostSteps = 300;

class Twins
{
public:
    explicit Twins(fuzz::Input &bytes) : input(bytes)
    {
        model.compareRecords = PlainModel::compareCustom;
        for (const int column : {Quantity, Status, Price})
            model.setColumnStatEnable(column, true);
    }

    void step()
    {
        switch (input.below(16)) {
        case 0:
            sort();
            break;
        case 1:
            filter();
            break;
        case 2:
            plain.filters.clear();
            model.clearFilter();
            break;
        case 3:
            plain.append = !plain.append;
            model.setAppendSeq(plain.append);
            break;
        case 4:
            ZB::HpfModelAccess::step(model, input.below(3));
            break;
        case 5:
        case 6:
        case 7:
            remove();
            break;
        case 8:
            compare();
            break;
        default:
            put();
        }
    }

    void compare()
    {
        fuzz::require(allKeys(model) == plain.allKeys(), "another order of all rows");
        fuzz::require(shownKeys(model) == plain.shownKeys(), "other shown rows");
        for (const int column : {Quantity, Status, Price}) {
            const double sum = model.getStatColumnDouble(column);
            const double wanted = plain.sumOf(column);
            fuzz::require(sum == wanted || (sum != sum && wanted != wanted), "another sum");
        }
    }

private:
    std::string key() { return "k" + std::to_string(input.below(40)); }

    Record record()
    {
        // Few values, so that everything collides; sums of these are exact in doubles too.
        static const double prices[] = {0, 1, 1 + 1.0 / 1024, -1, noPrice, 0x1p40, -0x1p40, 0.25, 0.5, std::nan("")};
        Record made;
        made.quantity = input.below(5) == 0 ? noQuantity : input.below(6) - 2;
        made.status = input.below(5) == 0 ? noStatus : input.below(4);
        made.price = prices[input.below(10)];
        made.name = QString(input.below(3), QChar('x')) + QChar('a' + input.below(3));
        return made;
    }

    void put()
    {
        const std::string rowKey = key();
        const Record made = record();
        plain.put(rowKey, made);
        model.updateData(boost::make_shared<ValueRow>(rowKey, made));
    }

    void remove()
    {
        const std::string rowKey = key();
        plain.remove(rowKey);
        model.removeDataByKey(rowKey);
    }

    void sort()
    {
        static constexpr int columns[] = {Quantity, Status, Price, Name, ZB::IBaseHpfTableModel::SortCustom, 17};
        QVector<QPair<int, int>> chosen;
        for (int count = input.below(4); count > 0; --count)
            chosen.append({columns[input.below(6)], input.below(2)});
        plain.sort = chosen;
        model.setSortColumns(chosen);
    }

    void filter()
    {
        const int column = input.below(ColumnCount);
        const int type = input.below(3);
        QSet<QString> values;
        for (int count = input.below(4); count > 0; --count)
            values.insert(shownText(record(), column).left(type == 1 ? 2 : 20));
        if (input.below(2) == 0) {
            plain.filters[column].clear();
            model.filter(column, type, values);
        } else {
            model.narrow(column, type, values);
        }
        if (!values.isEmpty())
            plain.filters[column].append({type, values});
    }

    fuzz::Input &input;
    ValueModel model;
    PlainModel plain;
};

} // namespace

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv)
{
    static QCoreApplication application(*argc, *argv);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    fuzz::Input input(bytes, size);
    Twins twins(input);
    for (int step = 0; step < mostSteps && !input.isEmpty(); ++step)
        twins.step();
    twins.compare();
    return 0;
}
