#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <string>
#include <vector>

namespace feed {

/// A file to read.
struct ReplayInput
{
    QString path;
    bool isNamed = false;     ///< itself, not only found in a folder
    std::vector<int> folders; ///< that it was found in, as places in ReplayInputs::folders()
};

/// The files that a list of paths means: the named ones, and all below the named folders. Each comes once, by whatever
/// ways it is reached, in order of the paths and, inside a folder, of its names.
class ReplayInputs
{
public:
    /// Hears of a path that leads to nothing.
    using Complaint = std::function<void(const QString &path, const std::string &text)>;

    ReplayInputs(const QStringList &paths, const Complaint &complain);

    const std::vector<ReplayInput> &files() const { return found; }
    const QStringList &folders() const { return folderPaths; }
    /// Sum of the files' sizes on the disk.
    qint64 totalBytes() const { return bytes; }

private:
    void addFolder(const QString &path);
    /// The entry of this file, new or met before.
    ReplayInput &addFile(const QString &path);

    std::vector<ReplayInput> found;
    QStringList folderPaths;
    QHash<QString, size_t> placeOfFile; ///< by canonical path
    qint64 bytes = 0;
};

} // namespace feed
