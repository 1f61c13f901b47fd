#pragma once

#include "feed/feedbatch.h"

#include <functional>
#include <string>
#include <string_view>

namespace feed {

/// Tells what is wrong with one file. The first messages come in full; when the report ends, one more says how many
/// there were beyond them, so that a file of nothing but bad lines does not drown the log.
class FileReport
{
public:
    using Receiver = std::function<void(FeedMessage)>;
    using Severity = FeedMessage::Severity;
    static constexpr int fullMessages = 10;

    FileReport(std::string file, Receiver receiver);
    /// Sends the count of what was left out.
    ~FileReport();
    FileReport(const FileReport &) = delete;
    FileReport &operator=(const FileReport &) = delete;

    /// The line that the next messages are about, 0 for the file as a whole.
    void setLine(qint64 number) { line = number; }
    void add(Severity severity, std::string text, int column = 0, std::string_view header = {});

private:
    std::string file;
    Receiver receiver;
    qint64 line = 0;
    int sent = 0;
    int errors = 0;
    int leftOut = 0;
};

/// Text from a file, fit for a message: cut if long, what cannot be printed as ?.
std::string printable(std::string_view text);
/// The same in quotes.
std::string quotedForMessage(std::string_view text);

} // namespace feed
