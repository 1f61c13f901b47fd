#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <vector>

#include "uicontrolexport.h"

namespace KV {

/// Takes personal data out of log lines: passwords, tokens and keys wherever a name tells of them, logins in addresses,
/// account numbers (those given, and what a name tells of), shareholder codes, identity and telephone numbers. A secret
/// becomes "***", a number "***" with its last two characters, so that lines can still be told apart.
///
/// Works on bytes: what is masked is ASCII or UTF-8, all other bytes stay as they are, whatever their encoding. Any
/// thread, one at a time.
class UICONTROL_API CLogMasker
{
public:
    explicit CLogMasker(const QStringList &accounts = {});
    ~CLogMasker();

    /// Whole lines; a secret that goes over a line's end is not found.
    QByteArray masked(const QByteArray &lines) const;

private:
    struct Rule
    {
        QRegularExpression pattern; ///< its groups are what is masked
        bool keepsEnd;
    };
    void add(const QByteArray &pattern, bool keepsEnd);

    std::vector<Rule> rules;
};

} // namespace KV
