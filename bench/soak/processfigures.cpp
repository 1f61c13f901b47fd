#include "soak/processfigures.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QStringList>
#include <algorithm>

namespace soak {

namespace {

constexpr double frame = 1000.0 / 60;
constexpr double standstill = 2000; ///< milliseconds; longer than any theme or scale of a whole window

/// The number of a line such as "VmRSS:    1234 kB".
int statusNumber(const QByteArray &status, const char *name)
{
    const int at = status.indexOf(name);
    if (at < 0)
        return 0;
    const int end = status.indexOf('\n', at);
    return status.mid(at + static_cast<int>(qstrlen(name)), end - at).simplified().split(' ').value(0).toInt();
}

template <typename Value>
std::vector<double> values(const std::vector<Figures> &samples, std::size_t from, std::size_t to, Value value)
{
    std::vector<double> all;
    for (std::size_t i = from; i < to; ++i)
        all.push_back(value(samples[i]));
    std::sort(all.begin(), all.end());
    return all;
}

} // namespace

Figures presentFigures()
{
    Figures figures;
    QFile file(QStringLiteral("/proc/self/status"));
    if (file.open(QIODevice::ReadOnly)) {
        const QByteArray status = file.readAll();
        figures.megabytes = statusNumber(status, "VmRSS:") / 1024.0;
        figures.threads = statusNumber(status, "Threads:");
    }
    file.close();
    figures.descriptors = QDir(QStringLiteral("/proc/self/fd")).entryList(QDir::Files | QDir::System).size();
    return figures;
}

double waitedForCore()
{
    QFile file(QStringLiteral("/proc/thread-self/schedstat"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().simplified().split(' ').value(1).toDouble() * 1e-6;
}

QString growth(const std::vector<Figures> &samples)
{
    const std::size_t third = samples.size() / 3;
    if (third < 3)
        return QStringLiteral("too short a run to tell");
    const auto compare = [&samples, third](auto value) {
        return std::make_pair(values(samples, third, 2 * third, value),
                              values(samples, samples.size() - third, samples.size(), value));
    };
    QStringList grown;
    const auto [memoryBefore, memoryAfter] = compare([](const Figures &figures) { return figures.megabytes; });
    const double more = memoryAfter[third / 2] - memoryBefore[third / 2];
    if (more > 16 && more > 0.05 * memoryBefore[third / 2])
        grown +=
            QStringLiteral("memory by %1 MB from %2 MB").arg(more, 0, 'f', 1).arg(memoryBefore[third / 2], 0, 'f', 1);
    const auto [threadsBefore, threadsAfter] = compare([](const Figures &figures) { return figures.threads; });
    if (threadsAfter.front() > threadsBefore.front())
        grown += QStringLiteral("threads from %1 to %2").arg(threadsBefore.front()).arg(threadsAfter.front());
    const auto [filesBefore, filesAfter] = compare([](const Figures &figures) { return figures.descriptors; });
    if (filesAfter.front() > filesBefore.front())
        grown += QStringLiteral("descriptors from %1 to %2").arg(filesBefore.front()).arg(filesAfter.front());
    const auto [stallBefore, stallAfter] = compare([](const Figures &figures) { return figures.worstStall; });
    if (stallAfter[third / 2] > frame && stallAfter[third / 2] > 2 * stallBefore[third / 2])
        grown += QStringLiteral("stalls from %1 to %2 ms").arg(stallBefore[third / 2]).arg(stallAfter[third / 2]);
    const auto [ownBefore, ownAfter] =
        compare([](const Figures &figures) { return figures.worstStall - figures.waited; });
    const double longest = std::max(ownBefore.back(), ownAfter.back());
    if (longest > standstill)
        grown += QStringLiteral("the window stood still for %1 ms").arg(longest);
    return grown.join(QStringLiteral(", "));
}

} // namespace soak
