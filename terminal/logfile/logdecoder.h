#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

class QTextCodec;

namespace terminal {

/// Turns the lines of a log file into text. Each line tells by its bytes whether it is UTF-8 or GB18030, so a file that
/// changes from one to the other in the middle stays readable. One thread at a time.
class LogDecoder
{
public:
    LogDecoder();

    /// One line without its terminator. Bytes that belong to no character become U+FFFD, a run of zero bytes U+2400.
    QString decode(const char *bytes, int length);
    /// How many bytes at the end of a line's beginning are the first ones of a character that is not complete.
    int unfinished(const char *bytes, int length) const;

    /// The encoding of most lines so far: "UTF-8" or "GB18030"; empty while all of them were ASCII.
    QString encoding() const;
    bool sawZeroBytes() const { return zeroBytes; }

private:
    bool isUtf8(const char *bytes, int length) const;

    QTextCodec *gb18030;
    qint64 utf8Lines = 0;
    qint64 gb18030Lines = 0;
    bool zeroBytes = false;
};

} // namespace terminal
