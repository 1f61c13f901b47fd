#pragma once

#include <QtGui/QImage>

#include "ourtable.h"
#include "stocktable.h"

namespace bench {

/// @name A figure counts only for work that was done. Each of these ends the program with a message when it was not.
/// @{
/// Every row of ours by falling (or rising) price, and as many as wanted.
void checkOrder(const OurTable &ours, int rows, bool falling = true);
void checkOrder(const StockTable &stock, int rows, bool falling = true);
/// Under each of the records' keys stands the last of that key.
void checkHeld(const OurTable &ours, const Records &records);
/// Every row shows this text in the column.
void checkPassed(const OurTable &ours, int column, const QString &text);
/// What is on the screen is what a table shows that is painted from nothing, and is other than `before`.
void checkPicture(OurTable &ours, const QImage &before);
/// The two pictures are not the same.
void checkRepainted(const QImage &before, const QImage &after, const char *what);
/// @}

} // namespace bench
