#pragma once

#include <QtCore/QLockFile>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <memory>

#include "uicontrolexport.h"

namespace KV {

/// A folder of its own in the temporary folder, for as long as this lives. A process that is killed leaves its folders
/// behind; whoever asks next takes them away, and knows by a lock in each that its process is gone. Any thread, one at
/// a time.
class UICONTROL_API CLogPackFolder
{
public:
    CLogPackFolder();
    ~CLogPackFolder();
    CLogPackFolder(const CLogPackFolder &) = delete;
    CLogPackFolder &operator=(const CLogPackFolder &) = delete;

    /// Why it cannot be used, in words for the user; empty when it can.
    QString problem() const { return reason; }
    QString filePath(const QString &name) const { return folder.filePath(name); }

    /// Removes the folders of processes that are gone. Reads the temporary folder: not for the GUI thread.
    static void removeLeftOvers();

private:
    QTemporaryDir folder;
    std::unique_ptr<QLockFile> lock;
    QString reason;
};

} // namespace KV
