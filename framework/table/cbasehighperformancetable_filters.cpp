#include <algorithm>
#include <utility>

#include "popups/filterpopup.h"
#include "table/cbasehighperformancetable_p.h"
#include "table/filterconditions.h"

namespace ZB {

namespace {

/// The texts of the model's rows, and time for what the table itself has to gather.
class MenuTexts : public HpfDistinctTexts
{
public:
    MenuTexts(CBaseHighPerformanceTable &filteredTable, const IBaseHpfTableModel &model, int menuColumn)
        : HpfDistinctTexts(model, menuColumn), table(filteredTable), column(menuColumn)
    {
    }
    bool step(int milliseconds) override
    {
        gathered = table.gatherMenuItems(column, std::exchange(anew, false), milliseconds);
        return HpfDistinctTexts::step(milliseconds) && gathered >= 1000;
    }
    int progress() const override { return std::min(gathered, HpfDistinctTexts::progress()); }

private:
    CBaseHighPerformanceTable &table;
    const int column;
    bool anew = true;
    int gathered = 0;
};

} // namespace

void CBaseHighPerformanceTable::Private::openFilter(int column, const QRect &header)
{
    if (!model || !q->columnFilterable(column))
        return;
    closePopup();
    auto *box = new FilterPopup(column, model->columnHeader(column), q->columnFilters().value(column),
                                std::make_unique<MenuTexts>(*q, *model, column), q);
    box->setCountsShown(!isPaged()); // of one page only
    popup = box;
    QObject::connect(box, &FilterPopup::gathered, q, [this, box, column] { box->setTexts(q->getMenuItems(column)); });
    QObject::connect(box, &FilterPopup::chosen, q,
                     [this, column](int type, QSet<QString> values) { q->onFilterTrigger(column, type, values); });
    box->showAt(QRect(grid->mapToGlobal(header.topLeft()), header.size()));
    box->setFocus();
}

/// While its filter box is open, the texts that the box has gathered; otherwise gathers them now.
QStringList CBaseHighPerformanceTable::getMenuItems(int column)
{
    if (const auto *box = qobject_cast<FilterPopup *>(d->popup); box && box->isGathered() && box->column() == column)
        return box->texts();
    QStringList texts;
    if (!d->model || !d->hasColumn(column))
        return texts;
    HpfDistinctTexts gatherer(*d->model, column);
    while (!gatherer.step(1000)) {
    }
    for (const HpfDistinctTexts::Value &value : gatherer.values())
        texts.append(value.text);
    return texts;
}

int CBaseHighPerformanceTable::gatherMenuItems(int, bool, int)
{
    return 1000;
}

int CBaseHighPerformanceTable::workProgress() const
{
    const bool pending = d->model && HpfModelAccess::status(*d->model).pending;
    return pending ? std::min(999, HpfModelAccess::progress(*d->model)) : 1000;
}

void CBaseHighPerformanceTable::cancelWork()
{
    if (d->model)
        HpfModelAccess::cancel(*d->model);
}

QString CBaseHighPerformanceTable::workText() const
{
    return QStringLiteral("正在排序和筛选");
}

quint64 CBaseHighPerformanceTable::workNumber() const
{
    return 0;
}

void CBaseHighPerformanceTable::onFilterTrigger(int column, int type, QSet<QString> &values)
{
    if (!d->model || !columnFilterable(column) || !isFilterType(type))
        return;
    QPair<EFilterType, QSet<QString>> filter(EFilterType(type), values);
    setPaused(false);
    d->model->filterColumn(column, filter);
    d->settle();
    d->updateMarks();
    d->updateStatistics();
    d->saveSoon();
}

bool CBaseHighPerformanceTable::restoreFilter(int column, const FilterConditions &conditions)
{
    FilterCondition first = filterToTake(conditions);
    onFilterTrigger(column, first.first, first.second);
    FilterConditions further = conditions.mid(1);
    for (FilterCondition &condition : further)
        if (d->model)
            d->model->filterColumnCombin(column, condition);
    d->updateMarks();
    return true;
}

QMap<int, FilterConditions> CBaseHighPerformanceTable::Private::currentFilters() const
{
    return q->columnFilters();
}

bool CBaseHighPerformanceTable::Private::restoreFilter(int column, const FilterConditions &conditions)
{
    return q->restoreFilter(column, conditions);
}

void CBaseHighPerformanceTable::Private::takeFilter(int column, int type, QSet<QString> values)
{
    q->onFilterTrigger(column, type, values);
}

bool CBaseHighPerformanceTable::Private::hasFilters() const
{
    return isPaged() || !q->columnFilters().isEmpty();
}

void CBaseHighPerformanceTable::Private::clearFilters()
{
    q->clearFilter();
}

QMap<int, FilterConditions> CBaseHighPerformanceTable::columnFilters() const
{
    return d->model ? d->model->columnFilters() : QMap<int, FilterConditions>();
}

void CBaseHighPerformanceTable::clearFilter()
{
    setPaused(false);
    if (d->model)
        d->model->clearFilter();
    d->settle();
    d->updateMarks();
    if (!d->restorePending) // or what is not restored yet would be given up
        d->saveSoon();
}

} // namespace ZB
