#pragma once

#include <vector>

#include "frameworkexport.h"
#include "table/hpfmodelaccess.h"

namespace ZB {

/// Lets go of many rows without holding up the GUI thread: on a worker thread, but for the last one, which may take its
/// model along and goes on the GUI thread. Few rows go at once. GUI thread.
FRAMEWORK_API void releaseRows(std::vector<HpfShownRow> rows);

} // namespace ZB
