#include "feed/replay/replayinputs.h"

#include <QDirIterator>
#include <QFileInfo>

namespace feed {

ReplayInputs::ReplayInputs(const QStringList &paths, const Complaint &complain)
{
    if (paths.isEmpty())
        complain(QString(), "no path is given");
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (path.isEmpty())
            complain(path, "an empty path is given");
        else if (info.isDir())
            addFolder(path);
        else if (info.isFile())
            addFile(path).isNamed = true;
        else
            complain(path, info.exists() ? "is neither a file nor a folder" : "does not exist");
    }
}

void ReplayInputs::addFolder(const QString &path)
{
    const int folder = int(folderPaths.size());
    folderPaths.append(path);
    QStringList files;
    QDirIterator entries(path, QDir::Files, QDirIterator::Subdirectories | QDirIterator::FollowSymlinks);
    while (entries.hasNext())
        files.append(entries.next());
    files.sort();
    for (const QString &file : qAsConst(files))
        addFile(file).folders.push_back(folder);
}

ReplayInput &ReplayInputs::addFile(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    const auto known = placeOfFile.constFind(canonical);
    if (known != placeOfFile.constEnd())
        return found[*known];
    placeOfFile.insert(canonical, found.size());
    bytes += info.size();
    found.push_back({path, false, {}});
    return found.back();
}

} // namespace feed
