#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QString>
#include <QtCore/QThread>
#include <boost/smart_ptr/make_shared.hpp>
#include <string>

#include "log/cmodeltextcache.h"

/// A log cache whose inner steps a test may take itself.
class TestCache : public KV::CModelTextCache
{
public:
    using CModelTextCache::doData;
    using CModelTextCache::getSplitSize;
};

inline boost::shared_ptr<TestCache> makeCache()
{
    return boost::make_shared<TestCache>();
}

/// Waits until `done` holds; false after half a minute.
template <typename Condition>
bool waitFor(const Condition &done)
{
    QElapsedTimer timer;
    timer.start();
    while (!done()) {
        if (timer.elapsed() > 30000)
            return false;
        QThread::msleep(1);
    }
    return true;
}

/// A piece as "number:level:text", numbers counted from `base`.
inline std::string describe(const KV::LogTextData &piece, int base)
{
    return std::to_string(piece.lineId - base) + ":" + std::to_string(piece.level) + ":" + piece.text.toStdString();
}

/// All pieces of a list, one a line.
inline std::string describe(const KV::CModelTextCache &cache, std::optional<int> level, int base)
{
    std::string text;
    for (const KV::LogTextPtr &piece : cache.getPieces(level, 0, cache.getState(level).size))
        text += describe(*piece, base) + "\n";
    return text;
}

/// The number that the newest source line of the process has.
inline int newestNumber()
{
    const auto probe = makeCache();
    probe->doData(QStringLiteral("probe"), 0);
    return probe->getData(0)->lineId;
}
