#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <vector>

namespace KV {

/// What is personal in a log line: the groups of a regular expression. Patterns are matched without case against lines
/// whose bytes each stand for one character. Whatever may repeat is bounded or never given back, so that no line costs
/// more than its length.
struct LogMaskRule
{
    QByteArray pattern;
    bool keepsEnd; ///< the last characters stay, so that lines can still be told apart
};

/// In the order in which they are applied. `accounts`: numbers that are personal wherever they stand.
std::vector<LogMaskRule> logMaskRules(const QStringList &accounts);

} // namespace KV
