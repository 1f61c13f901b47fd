#include "dialog/logmaskrules.h"

#include <QtCore/QRegularExpression>
#include <algorithm>

namespace KV {

namespace {

constexpr int shortestAccount = 3; ///< what is shorter stands in every line for something else
constexpr int longEnough = 6;      ///< from here on a number is not part of another word by chance

const QByteArray secretNames =
    "(?:passw(?:or)?d|pass_?-?phrase|pass_?-?code|pwd|psw|secret|token|(?:api|access|private|session|secret)_?-?key|"
    "session_?-?id|credential|authorization|cookie|(?:auth|verify|verification)_?-?code|captcha|"
    "(?<![A-Za-z])(?:pass|pin|otp|sid)(?![A-Za-z]))[A-Za-z0-9_.-]{0,40}";
const QByteArray chineseSecrets = "(?:密码|口令|令牌|验证码|动态码|授权码|密钥|私钥)";
const QByteArray numberNames =
    "(?:account|acct|client(?![A-Za-z_-]{0,20}order)|customer|investor|holder|user|mobile|phone|passport|"
    "(?<![A-Za-z])(?:uid|cust|tel|fund|login|(?:bank|id|credit)?_?-?card|(?:id|cert|acc)_?-?(?:no|num|id)))"
    "[A-Za-z0-9_-]{0,40}";
const QByteArray chineseNumbers =
    "(?:账号|账户|帐号|帐户|客户号|客户代码|客户编号|用户名|用户号|登录名|股东代码|股东号|投资者代码|投资者|"
    "证件号码?|身份证号?码?|手机号?码?|电话|银行卡号?|卡号)";
const QByteArray headerNames =
    "(?:(?:proxy-)?authorization|(?:set-)?cookie|x-[a-z-]{0,30}(?:key|token|auth|secret)[a-z-]{0,20})[ \\t]*:[ \\t]*";

/// Between a name and its value: a closing quote or bracket, escaped or not, then a sign. A value may stand on the next
/// line when that is indented.
const QByteArray sign = "[\\\\\"'\\])]{0,8}[ \\t]{0,40}(?::|=|>|：|%3[AD])[>= \\t]{0,40}(?:\\r?\\n[ \\t]{1,40})?";
const QByteArray signOrBracket = "(?:" + sign + "|(?=\\[|（|【))";

/// What ends a value without quotes, unless more of the value follows: the next name, a blank, the end.
const QByteArray nextName = "/?[A-Za-z_][A-Za-z0-9_.-]{0,40}[\"'\\\\]{0,4}[ \\t]{0,4}[:=>]";
const QByteArray plainValue = "(?:[^\\s,;&|\"'<>)\\]}\\\\]|<(?![/\\s]|\\z)|[,;&|](?!\\s|\\z|[\"'\\\\{\\[<]{0,4}" +
                              nextName + ")|[\"'>)\\]}\\\\](?!\\s|\\z|[\"'\\\\\\])},;&]|" + nextName + "))++";
/// Escaped quotes, as in JSON within JSON, end where a quote is escaped no deeper than the first one was.
const QByteArray quotedValue = "\"((?:\\\\.|[^\"\\\\\\r\\n])++)|'((?:\\\\.|[^'\\\\\\r\\n])++)|"
                               "\\\\[\"']((?:[^\\\\\\r\\n]|\\\\\\\\[^\\r\\n]|\\\\[^\"'\\\\\\r\\n])++)|"
                               "\\\\{2,3}[\"']([^\\r\\n]+?)(?=(?<!\\\\)\\\\{2,3}[\"']|[\\r\\n]|\\z)|"
                               "“((?:(?!”)[^\\r\\n])++)";
const QByteArray secretValue =
    "(?:" + quotedValue + "|(?<object>\\{(?:[^{}\\r\\n]++|(?&object))*+\\}?)|\\[([^\\]\\r\\n]++)|(" + plainValue + "))";
const QByteArray numberValue = "[\\\\\"'\\[(<{]{0,8}(?:（|【|“)?([0-9]{4}(?:[ -][0-9]{2,7}){2,5}(?![0-9])|"
                               "(?=[A-Za-z_-]{0,40}[0-9])[0-9A-Za-z_-]{4,}+)";

const QByteArray fixField = "(?:\\x01|\\||\\^A|<SOH>)";

void addSecrets(std::vector<LogMaskRule> &rules)
{
    const auto secret = [&rules](const QByteArray &pattern) { rules.push_back({pattern, false}); };
    secret("-----BEGIN [A-Z ]{0,30}PRIVATE KEY-----((?:[A-Za-z0-9+/=\\s]|\\\\[rn])++)");
    secret("\\A([A-Za-z0-9+/=\\s]++)-----END [A-Z ]{0,30}PRIVATE KEY-----"); // its start was in the lines before
    secret("(?<=\")" + headerNames + "([^\"\\r\\n]++)");
    secret("(?<=')" + headerNames + "([^'\\r\\n]++)");
    secret("(?<![A-Za-z\"'-])" + headerNames + "([^\\r\\n]++)");
    secret("://([^\\s/\"'<>:@]*+):([^\\s/\"'<>]+)@");
    secret("://([^\\s/\"'<>:@]{6,}+)@");
    secret("(?<![A-Za-z])(?:bearer|basic)[ \\t]+(?=[A-Za-z._~/-]{0,400}[0-9+=])([A-Za-z0-9._~+/=-]{6,}+)");
    secret("(?<![A-Za-z0-9_-])(eyJ[A-Za-z0-9_-]{8,}+\\.[A-Za-z0-9_-]++(?:\\.[A-Za-z0-9_-]*+)?)");
    secret("<[A-Za-z0-9_.:-]{0,40}" + secretNames + "[ \\t][^<>\\r\\n]{0,400}>[ \\t]*([^<\\r\\n]++)");
    secret(secretNames + "[\"'\\\\]{1,4}[ \\t,]{0,10}[\"'\\\\]{0,4}value" + sign + secretValue);
    secret(secretNames + signOrBracket + secretValue);
    secret("(?<![A-Za-z0-9])--?" + secretNames + "[ \\t]+(?!-)" + secretValue);
    secret("[?&](?:key|sig|sign|signature|code|auth|ticket|session)=([^&\\s\"'#<>]++)");
    secret(fixField + "(?:554|925)=((?:(?!" + fixField + ")[^\\r\\n])++)");
    secret(chineseSecrets + "[\\\\\"'\\]]{0,4}(?:为|是)?(?:" + sign +
           "|[ \\t]+(?=[!-~]|（|【|“)|(?=[\\[({\"'0-9A-Za-z]|（|【|“))" + secretValue);
}

void addNumbers(std::vector<LogMaskRule> &rules)
{
    const auto number = [&rules](const QByteArray &pattern) { rules.push_back({pattern, true}); };
    number(numberNames + signOrBracket + numberValue);
    number(fixField + "(?:1|553)=" + numberValue);
    number(chineseNumbers + "[\\\\\"'\\]]{0,4}(?:为|是)?[ \\t]{0,40}(?::|=|：|>)?[>= \\t]{0,40}" + numberValue);
    number("(?<![0-9A-Za-z])([A-E][0-9]{9})(?![0-9A-Za-z])");
    number("(?<![0-9])([1-9][0-9]{5}(?:19|20)[0-9]{2}(?:0[1-9]|1[0-2])(?:0[1-9]|[12][0-9]|3[01])[0-9]{3}[0-9X])"
           "(?![0-9A-Za-z])");
    number("(?<![0-9.])(1[3-9][0-9]{9}|1[3-9][0-9]-[0-9]{4}-[0-9]{4})(?![0-9.])");
}

/// A long number is one's own next to letters too (user88001234.log), a short one only as a word.
QByteArray wholeAccount(const QString &account)
{
    const QByteArray text = QRegularExpression::escape(account).toUtf8();
    const auto besides = [&account](QChar edge) {
        return account.size() < longEnough ? "[0-9A-Za-z]" : edge.isDigit() ? "[0-9]" : "[A-Za-z]";
    };
    return QByteArray("(?<!") + besides(account.front()) + ")" + text + "(?!" + besides(account.back()) + ")";
}

} // namespace

std::vector<LogMaskRule> logMaskRules(const QStringList &accounts)
{
    std::vector<LogMaskRule> rules;
    addSecrets(rules);
    addNumbers(rules);
    QStringList known;
    for (const QString &account : accounts)
        if (account.size() >= shortestAccount)
            known << account;
    // The longest first, or one that begins with another would be found as that one.
    std::sort(known.begin(), known.end(),
              [](const QString &left, const QString &right) { return left.size() > right.size(); });
    QByteArrayList patterns;
    for (const QString &account : known)
        patterns << wholeAccount(account);
    if (!patterns.isEmpty())
        rules.push_back({'(' + patterns.join('|') + ')', true});
    return rules;
}

} // namespace KV
