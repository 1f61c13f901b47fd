#include "feed/replay/replayloader.h"

#include "feed/batchwriter.h"
#include "feed/replay/replayformat.h"
#include "feed/replay/replaystore.h"

#include <QFileInfo>

namespace feed {

namespace {

using Severity = FeedMessage::Severity;

/// Warnings about files passed over that come in full; a folder may hold anything.
constexpr int fullWarnings = 20;

std::string rowPlace(const ReplayStore &store, const EventRow &row)
{
    return store.filePath(row.file) + " 第 " + std::to_string(row.line) + " 行";
}

} // namespace

ReplayLoader::ReplayLoader(ReplayStore &rowStore, BatchWriter &batchWriter, std::function<bool()> goOn)
    : store(rowStore), writer(batchWriter), keepGoing(std::move(goOn))
{
}

void ReplayLoader::tell(FeedMessage message)
{
    failed = failed || message.severity == Severity::Fatal;
    writer.addMessage(std::move(message));
}

void ReplayLoader::tell(Severity severity, const std::string &file, const std::string &text)
{
    FeedMessage message;
    message.severity = severity;
    message.file = file;
    message.text = text;
    tell(std::move(message));
}

bool ReplayLoader::load(const QStringList &paths)
{
    const ReplayInputs inputs(paths, [this](const QString &path, const std::string &text) {
        tell(Severity::Fatal, path.toStdString(), text);
    });
    writer.counters().bytesTotal = inputs.totalBytes();
    usedFilesOfFolder.assign(size_t(inputs.folders().size()), 0);
    for (const ReplayInput &input : inputs.files())
        if (!loadFile(input))
            return false;
    if (passedOver > fullWarnings)
        tell(Severity::Warning, {}, "另外略过了 " + std::to_string(passedOver - fullWarnings) + " 个文件");
    checkFolders(inputs.folders());
    settle();
    if (!failed && store.rowCount() == 0)
        tell(Severity::Fatal, {}, "文件里没有可以回放的数据");
    return !failed;
}

bool ReplayLoader::loadFile(const ReplayInput &input)
{
    const std::string path = input.path.toStdString();
    FileReport report(path, [this](FeedMessage message) { tell(std::move(message)); });
    ReplayFile file(store, report, [this](qint64 bytes) {
        writer.counters().bytesRead = bytesOfEarlierFiles + bytes;
        return keepGoing();
    });
    const ReplayFile::Outcome outcome = file.load(input.path, path);
    if (outcome == ReplayFile::Outcome::Interrupted)
        return false;
    if (outcome == ReplayFile::Outcome::Unknown)
        passOver(input, file);
    else
        for (const int folder : input.folders)
            ++usedFilesOfFolder[size_t(folder)];
    bytesOfEarlierFiles += QFileInfo(input.path).size();
    writer.counters().bytesRead = bytesOfEarlierFiles;
    return keepGoing();
}

void ReplayLoader::passOver(const ReplayInput &input, const ReplayFile &file)
{
    if (!input.isNamed && ++passedOver > fullWarnings)
        return;
    FeedMessage message;
    message.severity = input.isNamed ? Severity::Fatal : Severity::Warning;
    message.file = input.path.toStdString();
    message.text = file.whyUnknown();
    if (!input.isNamed)
        message.text += "，已略过";
    else if (!file.firstHeader().empty())
        message.text += "（" + knownFormatNames() + "）";
    if (!file.firstHeader().empty()) {
        message.line = 1;
        message.column = 1;
        message.header = printable(file.firstHeader());
    }
    tell(std::move(message));
}

void ReplayLoader::checkFolders(const QStringList &folders)
{
    for (int i = 0; i < folders.size(); ++i)
        if (usedFilesOfFolder[size_t(i)] == 0)
            tell(Severity::Fatal, folders[i].toStdString(),
                 "文件夹里没有可以回放的行情文件（" + knownFormatNames() + "）");
}

void ReplayLoader::settle()
{
    FileReport report({}, [this](FeedMessage message) { tell(std::move(message)); });
    writer.counters().duplicates += store.settle([&](const EventRow &first, const EventRow &dropped) {
        report.add(Severity::Error, rowPlace(store, dropped) + "“ApplSeqNum”列：编号 " +
                                        std::to_string(dropped.sequence) + " 已用于 " + rowPlace(store, first) +
                                        "，以那一行为准");
    });
}

} // namespace feed
