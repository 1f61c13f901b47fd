#include "dialog/clogmasker.h"

#include "dialog/logmaskrules.h"

namespace KV {

namespace {

const QString mask = QStringLiteral("***");
constexpr int keptEnd = 2;
constexpr int shortestWithEnd = 6; ///< of a shorter number the end would say too much

QString masking(const QString &text, bool keepsEnd)
{
    return keepsEnd && text.size() >= shortestWithEnd ? mask + text.right(keptEnd) : mask;
}

} // namespace

/// Patterns and lines meet as bytes, each one a character.
CLogMasker::CLogMasker(const QStringList &accounts)
{
    for (const LogMaskRule &rule : logMaskRules(accounts)) {
        rules.push_back(
            {QRegularExpression(QString::fromLatin1(rule.pattern), QRegularExpression::CaseInsensitiveOption),
             rule.keepsEnd});
        Q_ASSERT_X(rules.back().pattern.isValid(), rule.pattern.constData(),
                   rules.back().pattern.errorString().toUtf8().constData());
        rules.back().pattern.optimize();
    }
}

CLogMasker::~CLogMasker() = default;

/// False when the text could not be searched to its end: the expression's engine gives up beyond its limits, which
/// looks like the end of the matches to those who do not ask.
bool CLogMasker::apply(const Rule &rule, QString &text)
{
    QRegularExpressionMatchIterator hits = rule.pattern.globalMatch(text);
    QString changed;
    int at = 0;
    while (hits.hasNext()) {
        const QRegularExpressionMatch hit = hits.next();
        for (int group = 1; group <= hit.lastCapturedIndex(); ++group) {
            if (hit.capturedStart(group) < at || hit.capturedLength(group) == 0 || hit.captured(group) == mask)
                continue;
            changed += text.midRef(at, hit.capturedStart(group) - at);
            changed += masking(hit.captured(group), rule.keepsEnd);
            at = hit.capturedEnd(group);
        }
    }
    if (!hits.isValid())
        return false;
    if (at > 0)
        text = changed + text.midRef(at);
    return true;
}

bool CLogMasker::maskAll(QString &text) const
{
    for (const Rule &rule : rules)
        if (!apply(rule, text))
            return false;
    return true;
}

QByteArray CLogMasker::masked(const QByteArray &lines) const
{
    QString text = QLatin1String(lines.constData(), lines.size());
    return maskAll(text) ? text.toLatin1() : maskedByLine(lines);
}

QByteArray CLogMasker::maskedByLine(const QByteArray &lines) const
{
    QByteArray all;
    for (int at = 0; at < lines.size();) {
        const int lineEnd = lines.indexOf('\n', at);
        const int next = lineEnd < 0 ? lines.size() : lineEnd + 1;
        QString line = QLatin1String(lines.constData() + at, next - at);
        if (maskAll(line))
            all += line.toLatin1();
        else
            all += QStringLiteral("［此行无法检查，省略 %1 字节］").arg(next - at).toUtf8() + (lineEnd < 0 ? "" : "\n");
        at = next;
    }
    return all;
}

} // namespace KV
