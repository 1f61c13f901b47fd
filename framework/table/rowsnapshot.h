#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "frameworkexport.h"
#include "table/hpfmodelaccess.h"

namespace ZB {

using SharedModel = boost::shared_ptr<IBaseHpfTableModel>;

/// Rows as they stood at one moment, for whoever needs them on whichever thread: a pause, an export, a copy.
///
/// Whoever lets go of it last does not pay for it: many rows go on a worker thread. The last of them may take its model
/// along; it goes on the GUI thread, as the hold on the model does.
using RowSnapshot = std::shared_ptr<const std::vector<HpfShownRow>>;

/// The rows with a hold on their model, which may be empty. Any thread.
FRAMEWORK_API RowSnapshot makeSnapshot(std::vector<HpfShownRow> rows, const SharedModel &model);

/// Takes rows when it is called, on any thread and once. It holds the model as a snapshot does.
using RowTaker = std::function<RowSnapshot()>;

/// All shown rows of a model. A shared model is asked when the taker is called, since a million rows take their time
/// and a sort or a filter that is under way is finished first. One that somebody else owns is asked at once, for the
/// order that it has.
FRAMEWORK_API RowTaker takerOfAll(const IBaseHpfTableModel &model, const SharedModel &shared);
/// The rows of these ids as far as they exist, in this order.
FRAMEWORK_API RowTaker takerOf(std::vector<quint64> ids, const IBaseHpfTableModel &model, const SharedModel &shared);

} // namespace ZB
