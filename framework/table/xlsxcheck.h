#pragma once

#include <QtCore/QString>
#include <vector>

#include "frameworkexport.h"
#include "table/stopflag.h"

namespace ZB {

/// Whether a workbook on disk is whole: as many sheets as given, each with exactly so many cells. The library that
/// writes workbooks keeps a sheet in a temporary file first and does not notice when the disk is full there, so a cut
/// sheet would pass for a success. Reads and unpacks everything, some hundred megabytes a second. Any thread; stops
/// with false when it is told to.
FRAMEWORK_API bool isWholeWorkbook(const QString &path, const std::vector<qint64> &cellsOfSheets, const StopFlag &flag);

} // namespace ZB
