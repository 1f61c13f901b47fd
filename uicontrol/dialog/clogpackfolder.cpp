#include "dialog/clogpackfolder.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace KV {

namespace {

const QString namePart = QStringLiteral("sendlog-");
constexpr int justMadeSeconds = 60; ///< its process may not have come to lock it

std::unique_ptr<QLockFile> lockOf(const QString &folder)
{
    auto lock = std::make_unique<QLockFile>(folder + QStringLiteral("/in-use.lock"));
    lock->setStaleLockTime(0); // however long a mail takes: only the end of its process frees it
    return lock;
}

bool isLeftBehind(const QFileInfo &folder)
{
    const bool wasLocked = QFileInfo::exists(folder.filePath() + QStringLiteral("/in-use.lock"));
    if (!wasLocked && folder.lastModified().secsTo(QDateTime::currentDateTime()) < justMadeSeconds)
        return false;
    return lockOf(folder.filePath())->tryLock(0);
}

} // namespace

CLogPackFolder::CLogPackFolder() : folder(QDir::temp().filePath(namePart + QStringLiteral("XXXXXX")))
{
    if (!folder.isValid()) {
        reason = QStringLiteral("无法创建临时目录：%1").arg(folder.errorString());
        return;
    }
    lock = lockOf(folder.path());
    if (!lock->tryLock(0))
        reason = QStringLiteral("无法写入临时目录，磁盘可能已满：%1").arg(folder.path());
}

/// The lock goes before its file does.
CLogPackFolder::~CLogPackFolder()
{
    lock.reset();
}

void CLogPackFolder::removeLeftOvers()
{
    const auto folders = QDir::temp().entryInfoList({namePart + QLatin1Char('*')}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo &each : folders)
        if (isLeftBehind(each))
            QDir(each.filePath()).removeRecursively();
}

} // namespace KV
