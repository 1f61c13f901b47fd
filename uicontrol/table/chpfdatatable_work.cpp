// Long works on all of the rows: loads of the data model, sorts and filters of either model.

#include <algorithm>

#include "model/chpfthreaddatamodel.h"
#include "pagemodel/chpfpagedatamodel.h"
#include "table/chpfdatatable.h"

namespace KV {

using Base = ZB::CBaseHighPerformanceTable;

void CHpfDataTable::setLoadsShown(bool shown)
{
    loadsShown = shown;
}

/// Null when nothing is being loaded that the user is to hear of.
CHpfThreadDataModel *CHpfDataTable::loadingModel() const
{
    auto *model = loadsShown ? dynamic_cast<CHpfThreadDataModel *>(dataModel.get()) : nullptr;
    return model != nullptr && model->loadProgress() < 1000 ? model : nullptr;
}

/// A load comes first: what is sorted and filtered meanwhile is not all of the rows.
int CHpfDataTable::workProgress() const
{
    if (const auto *loading = loadingModel())
        return std::min(999, loading->loadProgress());
    return pageModel && pageModel->isPending() ? std::min(999, pageModel->progress()) : Base::workProgress();
}

QString CHpfDataTable::workText() const
{
    return loadingModel() != nullptr ? QStringLiteral("正在载入") : Base::workText();
}

quint64 CHpfDataTable::workNumber() const
{
    const auto *loading = loadingModel();
    return loading != nullptr ? loading->loadNumber() : Base::workNumber();
}

/// Only what is shown is stopped: a sort that waits behind a load is still wanted.
void CHpfDataTable::cancelWork()
{
    if (auto *loading = loadingModel(); loading != nullptr && loading->cancelLoad())
        return;
    Base::cancelWork();
    if (!pageModel || !pageModel->cancel())
        return;
    markPageSort();
    showPages();
}

} // namespace KV
