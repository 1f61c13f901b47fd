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
        text += (text.empty() ? "" : ", ") + quotedForMessage(name);
    const bool isOne = match.missing.size() == 1;
    return (isOne ? "column " : "columns ") + text + (isOne ? " is" : " are") + " missing, which a file of " +
           std::string(match.format->name) + " needs";
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
        report.add(Severity::Warning, "is not compressed, although its name says so");
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
        unknownReason = "is empty";
        return Outcome::Unknown;
    }
    std::vector<std::string> headers;
    if (!line.tooLong && fields.split(line.text))
        headers.assign(fields.values().begin(), fields.values().end());
    reader = std::make_unique<FieldReader>(std::move(headers), report);
    const FormatMatch match = recogniseFormat(*reader);
    if (!match.format) {
        unknownReason = "no known format has these columns";
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
                   "stands twice, first as column " + std::to_string(first + 1), int(i) + 1, headers[i]);
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
        rejectLine(line, 1, "the line is longer than " + std::to_string(CsvLines::longestLine) + " bytes");
        return false;
    }
    const size_t zero = line.text.find('\0');
    if (zero != std::string_view::npos) {
        rejectLine(line, 1 + int(std::count(line.text.begin(), line.text.begin() + ptrdiff_t(zero), ',')),
                   "holds a zero byte");
        return false;
    }
    if (!fields.split(line.text)) {
        rejectLine(line, fields.badField(), "a quote is not closed, or something follows it");
        return false;
    }
    const size_t expected = reader->headers().size();
    const size_t count = fields.values().size();
    if (count == expected)
        return true;
    rejectLine(line, int(std::min(count, expected)) + (count < expected ? 1 : 0),
               "the line has " + std::to_string(count) + " fields, the header " + std::to_string(expected));
    return false;
}

void ReplayFile::rejectLine(const CsvLine &line, int column, const std::string &text)
{
    const auto &headers = reader->headers();
    const size_t place = size_t(column) - 1;
    report.setLine(line.number);
    report.add(Severity::Error, line.terminated ? text : "the last line is cut: " + text, column,
               place < headers.size() ? std::string_view(headers[place]) : std::string_view());
}

ReplayFile::Outcome ReplayFile::endOfRows(qint64 lastLine, bool hasRows)
{
    const DataFile::State state = data.state();
    if (state == DataFile::State::Interrupted)
        return Outcome::Interrupted;
    if (state == DataFile::State::Good && !hasRows)
        report.add(Severity::Warning, "has a header and no rows");
    if (state == DataFile::State::Good)
        return Outcome::Loaded;
    const bool canBeUsed = state == DataFile::State::Truncated || state == DataFile::State::TrailingBytes;
    report.setLine(lastLine);
    report.add(canBeUsed ? Severity::Error : Severity::Fatal,
               data.problem() + (canBeUsed ? "; what was read before is used" : ""));
    return canBeUsed ? Outcome::Loaded : Outcome::Unusable;
}

} // namespace feed
