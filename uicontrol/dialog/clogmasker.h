#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <vector>

#include "uicontrolexport.h"

namespace KV {

/// Takes personal data out of log lines: passwords, tokens and keys wherever a name tells of them (key and value, JSON,
/// JSON within JSON, XML, HTTP headers, command lines, FIX fields, Chinese labels), logins in addresses, private keys,
/// account numbers (those given, and what a name tells of), shareholder codes, identity and telephone numbers. A secret
/// becomes "***", a number "***" with its last two characters, so that lines can still be told apart. In doubt it takes
/// out more: what stands behind a password without a blank goes with it.
///
/// Works on bytes: what is masked is ASCII or UTF-8, all other bytes stay as they are, whatever their encoding. Any
/// thread, one at a time.
class UICONTROL_API CLogMasker
{
public:
    explicit CLogMasker(const QStringList &accounts = {});
    ~CLogMasker();

    /// Whole lines. A secret that goes over a line's end is found only where it is a private key. A line that is too
    /// involved to be searched is left out, and a note stands in its place.
    QByteArray masked(const QByteArray &lines) const;

private:
    struct Rule
    {
        QRegularExpression pattern; ///< its groups are what is masked
        bool keepsEnd;
    };
    static bool apply(const Rule &rule, QString &text);
    bool maskAll(QString &text) const;
    QByteArray maskedByLine(const QByteArray &lines) const;

    std::vector<Rule> rules;
};

} // namespace KV
