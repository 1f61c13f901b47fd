#include "table/hpfmodelaccess.h"

#include "table/hpfmodelstate.h"

namespace ZB {

HpfModelState &HpfModelAccess::stateOf(const IBaseHpfTableModel &model)
{
    return *model.state;
}

HpfModelStatus HpfModelAccess::status(const IBaseHpfTableModel &model)
{
    return stateOf(model).status();
}

int HpfModelAccess::rowCount(const IBaseHpfTableModel &model)
{
    return status(model).shown;
}

int HpfModelAccess::fetch(const IBaseHpfTableModel &model, int first, int count, std::vector<HpfShownRow> &rows)
{
    stateOf(model).fetch(first, count, rows);
    return static_cast<int>(rows.size());
}

void HpfModelAccess::ids(const IBaseHpfTableModel &model, int first, int count, std::vector<quint64> &ids)
{
    stateOf(model).fetchIds(first, count, ids);
}

int HpfModelAccess::indexOf(const IBaseHpfTableModel &model, quint64 id)
{
    int index;
    stateOf(model).shownIndexes(&id, 1, &index);
    return index;
}

std::vector<int> HpfModelAccess::indexesOf(const IBaseHpfTableModel &model, const std::vector<quint64> &ids)
{
    std::vector<int> indexes(ids.size());
    stateOf(model).shownIndexes(ids.data(), static_cast<int>(ids.size()), indexes.data());
    return indexes;
}

HpfModelAccess::Row HpfModelAccess::rowOf(const IBaseHpfTableModel &model, quint64 id)
{
    return stateOf(model).rowOfId(id);
}

quint64 HpfModelAccess::idAt(const IBaseHpfTableModel &model, int index)
{
    std::vector<HpfShownRow> rows;
    fetch(model, index, 1, rows);
    return rows.empty() ? 0 : rows.front().id;
}

quint64 HpfModelAccess::idOfKey(const IBaseHpfTableModel &model, const std::string &key)
{
    return stateOf(model).idOfKey(key);
}

bool HpfModelAccess::step(const IBaseHpfTableModel &model, int milliseconds)
{
    return stateOf(model).settleInBackground(milliseconds);
}

int HpfModelAccess::progress(const IBaseHpfTableModel &model)
{
    return stateOf(model).progress();
}

bool HpfModelAccess::cancel(IBaseHpfTableModel &model)
{
    const bool cancelled = stateOf(model).cancel();
    if (cancelled)
        model.setUpdated(true);
    return cancelled;
}

} // namespace ZB
