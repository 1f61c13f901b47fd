#include "feed/replay/replayfile.h"

#include "feed/replay/replayformat.h"
#include "feed/replay/replaystore.h"

#include <algorithm>

namespace feed {

namespace {

using Severity = FileReport::Severity;

std::string missingText(const FormatMatch &match)
{
    std::string text;
    for (const std::string_view name : match.missing)
        text += (text.empty() ? "" : "、") + quotedForMessage(name);
    return std::string(match.format->name) + "文件缺少必需的列" + text;
}

} // namespace

ReplayFile::ReplayFile(ReplayStore &rowStore, FileReport &fileReport, DataFile::Progress progress)
    : store(rowStore), report(fileReport), data(std::move(progress)), lines(data)
{
}

ReplayFile::Outcome ReplayFile::load(const QString &path, const std::string &pathText)
{
    data.open(path);
    if (const auto outcome = readHeaders())
        return *outcome;
    if (!data.isCompressed() && path.endsWith(QLatin1String(".gz"), Qt::CaseInsensitive))
        report.add(Severity::Warning, "文件名以 .gz 结尾，内容却没有压缩");
    return readRows(store.addFile(pathText));
}

std::optional<ReplayFile::Outcome> ReplayFile::readHeaders()
{
    CsvLine line;
    bool hasLine = false;
    while ((hasLine = lines.next(line)) && line.text.empty()) {
    }
    report.setLine(hasLine ? line.number : 0);
    if (data.state() == DataFile::State::Interrupted)
        return Outcome::Interrupted;
    if (data.state() != DataFile::State::Good && (!hasLine || data.state() == DataFile::State::Corrupt)) {
        report.add(Severity::Fatal, data.problem());
        return Outcome::Unusable;
    }
    if (!hasLine) {
        unknownReason = "文件是空的";
        return Outcome::Unknown;
    }
    std::vector<std::string> headers;
    if (!line.tooLong && fields.split(line.text))
        headers.assign(fields.values().begin(), fields.values().end());
    reader = std::make_unique<FieldReader>(std::move(headers), report);
    const FormatMatch match = recogniseFormat(*reader);
    if (!match.format) {
        unknownReason = "列名不符合任何已知的行情格式";
        unknownHeader = reader->headers().empty() ? std::string() : reader->headers().front();
        return Outcome::Unknown;
    }
    if (!match.missing.empty()) {
        report.add(Severity::Fatal, missingText(match));
        return Outcome::Unusable;
    }
    if (!headersAreUnique(match.format->neededColumns()))
        return Outcome::Unusable;
    decoder = match.format->makeDecoder(*reader);
    return std::nullopt;
}

bool ReplayFile::headersAreUnique(const std::vector<std::string_view> &needed)
{
    bool good = true;
    const auto &headers = reader->headers();
    for (size_t i = 0; i < headers.size(); ++i) {
        const auto first = size_t(std::find(headers.begin(), headers.end(), headers[i]) - headers.begin());
        if (first == i || headers[i].empty())
            continue;
        const bool isNeeded = std::find(needed.begin(), needed.end(), headers[i]) != needed.end();
        report.add(isNeeded ? Severity::Fatal : Severity::Warning,
                   "列名重复，第 " + std::to_string(first + 1) + " 列已有", int(i) + 1, headers[i]);
        good = good && !isNeeded;
    }
    return good;
}

ReplayFile::Outcome ReplayFile::readRows(quint16 fileNumber)
{
    bool hasRows = false;
    CsvLine line;
    while (lines.next(line)) {
        if (line.text.empty())
            continue;
        hasRows = true;
        // The line at which reading ended is cut for that reason, which is reported once.
        if (!line.terminated && data.state() != DataFile::State::Good)
            continue;
        if (!splitLine(line))
            continue;
        reader->setLine(fields.values(), line.number);
        decoder->decode(*reader, store, fileNumber);
    }
    return endOfRows(line.number, hasRows);
}

bool ReplayFile::splitLine(const CsvLine &line)
{
    if (line.tooLong) {
        rejectLine(line, 1, "这一行超过 " + std::to_string(CsvLines::longestLine) + " 字节");
        return false;
    }
    const size_t zero = line.text.find('\0');
    if (zero != std::string_view::npos) {
        rejectLine(line, 1 + int(std::count(line.text.begin(), line.text.begin() + ptrdiff_t(zero), ',')),
                   "含有零字节");
        return false;
    }
    if (!fields.split(line.text)) {
        rejectLine(line, fields.badField(), "引号没有闭合，或者引号之后还有内容");
        return false;
    }
    const size_t expected = reader->headers().size();
    const size_t count = fields.values().size();
    if (count == expected)
        return true;
    rejectLine(line, int(std::min(count, expected)) + (count < expected ? 1 : 0),
               "这一行有 " + std::to_string(count) + " 个字段，表头有 " + std::to_string(expected) + " 个");
    return false;
}

void ReplayFile::rejectLine(const CsvLine &line, int column, const std::string &text)
{
    const auto &headers = reader->headers();
    const size_t place = size_t(column) - 1;
    report.setLine(line.number);
    report.add(Severity::Error, line.terminated ? text : "最后一行不完整：" + text, column,
               place < headers.size() ? std::string_view(headers[place]) : std::string_view());
}

ReplayFile::Outcome ReplayFile::endOfRows(qint64 lastLine, bool hasRows)
{
    const DataFile::State state = data.state();
    if (state == DataFile::State::Interrupted)
        return Outcome::Interrupted;
    if (state == DataFile::State::Good && !hasRows)
        report.add(Severity::Warning, "只有表头，没有数据");
    if (state == DataFile::State::Good)
        return Outcome::Loaded;
    const bool canBeUsed = state == DataFile::State::Truncated || state == DataFile::State::TrailingBytes;
    report.setLine(lastLine);
    report.add(canBeUsed ? Severity::Error : Severity::Fatal,
               data.problem() + (canBeUsed ? "；已读出的部分照常使用" : ""));
    return canBeUsed ? Outcome::Loaded : Outcome::Unusable;
}

} // namespace feed
