#include "dialog/clogmasker.h"

#include <algorithm>

namespace KV {

namespace {

const QString mask = QStringLiteral("***");
constexpr int keptEnd = 2;
constexpr int shortestWithEnd = 6; ///< of a shorter number the end would say too much
constexpr int shortestAccount = 3; ///< what is shorter stands in every line for something else

/// Behind a name: a quote, escaped or not, then what stands between name and value.
const QByteArray between = "[\\\\\"']*\\s*(?::|=|>|：)[>\\s]*";
/// A quoted value, or one without blanks.
const QByteArray secretValue = "(?:\\\\?\"([^\"\\\\\\r\\n]+)|'([^'\\r\\n]+)|([^\\s,;&\"'<>)\\]}\\\\]+))";
const QByteArray numberValue = "[\\\\\"']*([0-9A-Za-z_-]*[0-9][0-9A-Za-z_-]{3,})";
const QByteArray isOrBlank = "(?:为|是)?(?:\\s*(?::|=|：)\\s*|\\s+)";
const QByteArray isOrNothing = "(?:为|是)?[\\\\\"']*\\s*(?::|=|：)?\\s*";

QString masking(const QString &text, bool keepsEnd)
{
    return keepsEnd && text.size() >= shortestWithEnd ? mask + text.right(keptEnd) : mask;
}

} // namespace

CLogMasker::CLogMasker(const QStringList &accounts)
{
    add("://([^\\s/:@\"']*):([^\\s/@\"']+)@", false);
    add("(?:bearer|basic)\\s+([A-Za-z0-9._~+/=-]{6,})", false);
    add("(eyJ[A-Za-z0-9_-]{8,}\\.[A-Za-z0-9_-]+\\.?[A-Za-z0-9_-]*)", false);
    add("cookie\\s*:\\s*([^\\r\\n]+)", false);
    add("(?:passw(?:or)?d|passphrase|pwd|secret|token|api_?-?key|access_?-?key|private_?-?key|session_?-?id|credential|"
        "authorization)[A-Za-z_]*" +
            between + secretValue,
        false);
    add("(?:密码|口令|令牌|验证码|密钥)" + isOrBlank + secretValue, false);
    add("(?:account|acct|client|customer|investor|holder|user)[A-Za-z_]*" + between + numberValue, true);
    add("(?:账号|账户|帐号|帐户|客户号|客户代码|股东代码|投资者代码|证件号码?|身份证号?码?|手机号?码?|卡号)" +
            isOrNothing + numberValue,
        true);
    add("(?<![0-9A-Za-z])([A-E][0-9]{9})(?![0-9A-Za-z])", true);
    add("(?<![0-9])([1-9][0-9]{5}(?:19|20)[0-9]{2}(?:0[1-9]|1[0-2])(?:0[1-9]|[12][0-9]|3[01])[0-9]{3}[0-9X])"
        "(?![0-9A-Za-z])",
        true);
    add("(?<![0-9.])(1[3-9][0-9]{9})(?![0-9.])", true);
    QByteArrayList known;
    for (const QString &account : accounts)
        if (account.size() >= shortestAccount)
            known << QRegularExpression::escape(account).toUtf8();
    // The longest first, or one that begins with another would be found as that one.
    std::sort(known.begin(), known.end(),
              [](const QByteArray &left, const QByteArray &right) { return left.size() > right.size(); });
    if (!known.isEmpty())
        add("(?<![0-9A-Za-z])(" + known.join('|') + ")(?![0-9A-Za-z])", true);
}

CLogMasker::~CLogMasker() = default;

/// Patterns and lines meet as bytes, each one a character.
void CLogMasker::add(const QByteArray &pattern, bool keepsEnd)
{
    rules.push_back(
        {QRegularExpression(QString::fromLatin1(pattern), QRegularExpression::CaseInsensitiveOption), keepsEnd});
    rules.back().pattern.optimize();
}

QByteArray CLogMasker::masked(const QByteArray &lines) const
{
    QString text = QLatin1String(lines.constData(), lines.size());
    for (const Rule &rule : rules) {
        QRegularExpressionMatchIterator hits = rule.pattern.globalMatch(text);
        if (!hits.hasNext())
            continue;
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
        text = changed + text.midRef(at);
    }
    return text.toLatin1();
}

} // namespace KV
