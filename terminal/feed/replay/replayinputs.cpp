#include "feed/replay/replayinputs.h"

#include <QDirIterator>
#include <QFileInfo>

namespace feed {

ReplayInputs::ReplayInputs(const QStringList &paths, const Complaint &complain)
{
    if (paths.isEmpty())
        complain(QString(), "没有指定要回放的文件或文件夹");
    for (const QString &path : paths) {
        const QFileInfo info(path);
        if (path.isEmpty())
            complain(path, "指定的路径是空的");
        else if (info.isDir())
            addFolder(path);
        else if (info.isFile())
            addFile(path).isNamed = true;
        else
            complain(path, info.exists() ? "既不是文件也不是文件夹" : "找不到这个文件或文件夹，请检查路径");
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
