// Recorded files of any content are refused or played: times never run back, and no quantity is negative.

#include <QtCore/QDir>
#include <QtCore/QTemporaryDir>

#include "fuzzinput.h"
#include "terminal/feedplayer.h"

namespace {

constexpr char fileBorder[] = "\n%%\n"; ///< between the files of one input

QTemporaryDir *folder;

} // namespace

extern "C" int LLVMFuzzerInitialize(int *, char ***)
{
    const QString memory = QStringLiteral("/dev/shm");
    folder = new QTemporaryDir(QFileInfo(memory).isWritable() ? memory + QStringLiteral("/replay-XXXXXX") : QString());
    std::atexit([] { delete folder; });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size)
{
    QByteArray content(reinterpret_cast<const char *>(bytes), static_cast<int>(size));
    QStringList paths;
    for (int number = 0; number < 3 && !content.isNull(); ++number) {
        const int border = content.indexOf(fileBorder);
        const QString path = folder->filePath(QStringLiteral("file%1.csv").arg(number));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(border < 0 ? content : content.left(border)) < 0)
            fuzz::fail("the temporary folder cannot be written");
        paths += path;
        content = border < 0 ? QByteArray() : content.mid(border + static_cast<int>(sizeof fileBorder) - 1);
    }

    feed::ReplayFeed replay(paths);
    const PlayedFeed played = playFeed(replay, 5000);
    fuzz::require(played.loaded || !played.messages.empty(), "nothing was loaded, and nothing said why");
    for (std::size_t i = 1; i < played.times.size(); ++i)
        fuzz::require(played.times[i] >= played.times[i - 1], "time ran back");
    for (const feed::Deal &deal : played.deals)
        fuzz::require(deal.quantity > 0, "a deal over nothing");
    return 0;
}
