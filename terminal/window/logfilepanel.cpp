#include "window/logfilepanel.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QTime>

#include "log/chpflogwidget.h"
#include "services/logline.h"

namespace terminal {

namespace {

QString sizeText(qint64 bytes)
{
    return QLocale(QLocale::English).formattedDataSize(bytes, 1, QLocale::DataSizeTraditionalFormat);
}

} // namespace

LogFilePanel::LogFilePanel(const QString &path, int widgetId, QWidget *parent)
    : LogPanel(QFileInfo(path).fileName().isEmpty() ? path : QFileInfo(path).fileName(), widgetId,
               QStringLiteral("file"), parent),
      follower(path)
{
    setOrigin(QDir::toNativeSeparators(path));
    setNotice(QStringLiteral("正在读取"));
    connect(&follower, &LogFollower::arrived, this, &LogFilePanel::take);
    connect(&follower, &LogFollower::loaded, this, [this] { setNotice(standingNotice(), !problem.isEmpty()); });
    connect(&log(), &KV::CHpfLogWidget::sigCleared, this, [this] { // what keeps the file from being read still does
        skipped = 0;
        setNotice(standingNotice(), !problem.isEmpty());
    });
    follower.start();
}

LogFilePanel::~LogFilePanel() = default;

bool LogFilePanel::isSettled()
{
    return follower.isCaughtUp() && LogPanel::isSettled();
}

void LogFilePanel::take(const LogFileNews &news)
{
    if (news.event != LogFileEvent::None || news.skipped > 0)
        tellEvent(news);
    for (const LogFileBlock &block : news.blocks)
        add(block.text, block.level);
    if (news.encoding != encoding) {
        encoding = news.encoding;
        setOrigin(QStringLiteral("%1  ·  %2").arg(QDir::toNativeSeparators(follower.path()), encoding));
    }
    const bool isNew = news.event != LogFileEvent::None || news.zeroBytes != zeroBytes;
    zeroBytes = news.zeroBytes;
    if (isNew)
        setNotice(standingNotice(), !problem.isEmpty());
}

/// What becomes of the file stands between its lines too, or they would seem to go on where they do not.
void LogFilePanel::tellEvent(const LogFileNews &news)
{
    problem = news.problem;
    skipped = news.skipped;
    QString text;
    if (news.event == LogFileEvent::Truncated)
        text = QStringLiteral("文件被清空，从头读取");
    else if (news.event == LogFileEvent::Replaced)
        text = QStringLiteral("文件被替换，从头读取");
    else if (news.event == LogFileEvent::Lost)
        text = problem;
    else if (news.event == LogFileEvent::Opened)
        text = QStringLiteral("文件又可以读取");
    else
        text = QStringLiteral("文件增长太快，略去 %1").arg(sizeText(skipped));
    const bool isFirst = !wasOpened;
    wasOpened = wasOpened || news.event == LogFileEvent::Opened;
    if (!isFirst)
        add(QStringLiteral("──── %1 %2 ────").arg(QTime::currentTime().toString(QStringLiteral("HH:mm:ss")), text),
            refhost::LogWarning);
}

QString LogFilePanel::standingNotice() const
{
    if (!problem.isEmpty())
        return problem;
    QStringList parts;
    if (skipped > 0)
        parts << QStringLiteral("文件较长：略去前面的 %1，只读入末尾（最多 50,001 行、64 MB）").arg(sizeText(skipped));
    if (zeroBytes)
        parts << QStringLiteral("文件含有二进制零字节，显示为 ␀");
    return parts.join(QStringLiteral("  ·  "));
}

} // namespace terminal
