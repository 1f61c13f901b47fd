#pragma once

#include <QtCore/QString>
#include <atomic>

#include "uicontrolexport.h"

namespace KV {

/// A file that is being written elsewhere.
struct LogCopy
{
    QString from;
    QString to;

    /// @name While the work is under way; any thread
    /// @{
    std::atomic<qint64> writtenBytes{0};
    std::atomic<bool> cancelled{false};
    std::atomic<bool> finished{false}; ///< what follows is complete
    /// @}

    QString problem; ///< why there is no copy, in the system's words; empty when there is, or when it was cancelled
};

/// Writes the copy, and sets `finished` at the end. An older file keeps its contents until the new one, whole and on
/// the disk, takes its name; a cancelled or failed copy leaves nothing. Not for the GUI thread.
UICONTROL_API void saveLogCopy(LogCopy &copy);

} // namespace KV
