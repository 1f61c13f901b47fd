#pragma once

#include "feed/batchwriter.h"
#include "feed/feedsource.h"
#include "feed/replay/replayfeed.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <string>
#include <vector>

/// Everything that a source gave, event by event and without a thread.
struct PlayedFeed
{
    bool loaded = false;
    std::vector<feed::Instrument> instruments; ///< by index, latest
    std::vector<feed::OrderState> orders;      ///< by entry, latest
    std::vector<feed::OrderState> updates;     ///< every change of an order
    std::vector<feed::Deal> deals;
    std::vector<feed::QuoteSnapshot> quotes;
    std::vector<std::string>
        messages;              ///< "warning|error|fatal", a blank, the text; a temporary folder's path is left out
    std::vector<qint64> times; ///< of the events
    feed::FeedCounters counters;
};

/// Plays until the end or until `mostEvents` are played. `hiddenPath` is cut out of the messages.
inline PlayedFeed playFeed(feed::FeedSource &source, qint64 mostEvents = 1'000'000'000,
                           const std::string &hiddenPath = {})
{
    PlayedFeed played;
    feed::BatchWriter writer;
    feed::FeedBatch batch;
    const auto place = [](auto &values, size_t index, const auto &value) {
        if (index >= values.size())
            values.resize(index + 1);
        values[index] = value;
    };
    const auto collect = [&] {
        writer.handOver(batch);
        for (const auto &instrument : batch.instruments)
            place(played.instruments, size_t(instrument.index), instrument);
        for (const auto &order : batch.orders)
            place(played.orders, size_t(order.entry), order);
        played.updates.insert(played.updates.end(), batch.orders.begin(), batch.orders.end());
        played.deals.insert(played.deals.end(), batch.deals.begin(), batch.deals.end());
        played.quotes.insert(played.quotes.end(), batch.quotes.begin(), batch.quotes.end());
        for (const auto &message : batch.messages) {
            static const char *const severities[] = {"warning ", "error ", "fatal "};
            std::string text = message.toText();
            for (size_t at; !hiddenPath.empty() && (at = text.find(hiddenPath)) != std::string::npos;)
                text.erase(at, hiddenPath.size());
            played.messages.push_back(severities[int(message.severity)] + text);
        }
        played.counters = batch.counters;
    };
    played.loaded = source.load(writer, [] { return true; });
    collect();
    for (qint64 i = 0; played.loaded && i < mostEvents && source.nextTime() != feed::absent<qint64>; ++i) {
        played.times.push_back(source.nextTime());
        source.step(writer);
        source.completeBatch(writer);
        collect();
    }
    return played;
}

/// A folder of hand-written files.
class ReplayFolder
{
public:
    QString path(const QString &name) const { return folder.filePath(name); }
    QString write(const QString &name, const QByteArray &content) const
    {
        QDir(folder.path()).mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            return QString();
        return path(name);
    }
    PlayedFeed play(const QStringList &paths) const
    {
        feed::ReplayFeed replay(paths);
        return playFeed(replay, 1'000'000'000, folder.path().toStdString() + '/');
    }

private:
    QTemporaryDir folder;
};

/// Texts one below the other, for comparing whole lists.
inline std::string joined(const std::vector<std::string> &lines)
{
    std::string result;
    for (const std::string &line : lines)
        result += line + '\n';
    return result;
}
