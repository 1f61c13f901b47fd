#include "dialog/mailaddresses.h"

#include <QtCore/QRegularExpression>

namespace KV {

namespace {

constexpr int longestAddress = 254;

} // namespace

MailAddresses readMailAddresses(const QString &text)
{
    static const QRegularExpression separators(QStringLiteral("[\\s,;，；、]+"));
    // Words with dots between them; the host has at least two, and none begins or ends with a hyphen.
    static const QRegularExpression address(
        QStringLiteral("^[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]+(?:\\.[A-Za-z0-9!#$%&'*+/=?^_`{|}~-]+)*"
                       "@(?:[A-Za-z0-9](?:[A-Za-z0-9-]*[A-Za-z0-9])?\\.)+[A-Za-z](?:[A-Za-z0-9-]*[A-Za-z0-9])$"));
    MailAddresses read;
    for (const QString &part : text.split(separators, Qt::SkipEmptyParts)) {
        if (part.size() > longestAddress || !address.match(part).hasMatch()) {
            read.wrong = part;
            return read;
        }
        if (!read.addresses.contains(part, Qt::CaseInsensitive))
            read.addresses << part;
    }
    return read;
}

} // namespace KV
