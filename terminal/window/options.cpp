#include "window/options.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QLocale>
#include <QtCore/QRegularExpression>
#include <cmath>
#include <limits>

namespace terminal {

namespace {

constexpr int smallestWidth = 640;
constexpr int smallestHeight = 360;
constexpr int largestSide = 8192;

struct OptionText
{
    const char *name;
    const char *value; ///< empty for a switch
    const char *text;
};

// In the order in which --help lists them.
const OptionText optionTexts[] = {
    {"replay", "路径", "回放录制的文件，或文件夹中所有认识的文件；可以给出多次。不给出时由模拟交易所提供行情"},
    {"speed", "倍数", "行情时间与实际时间之比：1（默认）为原速，max 为尽可能快"},
    {"seed", "数字", "模拟交易所的随机种子，默认 1；种子相同则行情相同"},
    {"headless", "",
     "不显示窗口、无人操作地运行，最后打印一行 JSON。回放完毕并全部显示后结束，或到 --seconds 为止，"
     "以先到者为准；模拟交易所不会自行结束，不给出 --seconds 时运行 10 秒"},
    {"seconds", "秒数", "运行这么久后结束"},
    {"shots", "文件夹", "结束时写入每一页的截图，两种主题，100 % 和 150 %"},
    {"tour", "", "与 --shots 一起：再逐一打开表格的每个功能，各写入一张截图"},
    {"size", "宽x高", "窗口在 100 % 时的大小，以像素计"},
    {"theme", "名称", "主题：dark（深色）或 light（浅色）"},
    {"rise", "颜色", "上涨的颜色：red（红）、green（绿）或 orange（橙）；下跌相应为绿、红、蓝"},
    {"scale", "百分比", "整个界面的缩放，100 到 300"},
    {"log", "文件", "显示一个日志文件（UTF-8 或 GB18030），并随其增长继续读取"},
    {"log-dir", "文件夹", "本程序的日志写在哪里"},
    {"desk", "文件", "交易桌面文件：委托、成交、持仓和资金保存在其中，下次继续。不给出时只保留到退出"},
    {"config", "文件", "用户设置。使用 --headless 时，不给出则既不读取也不写入设置"},
    {"help", "", "打印本说明（也可写作 -h）"},
    {"version", "", "打印版本（也可写作 -v）"},
};

QString helpText()
{
    QString text = QStringLiteral("用法：terminal [选项]\n练习用的交易终端：回放录制的行情，或模拟行情。\n\n选项：\n");
    for (const OptionText &option : optionTexts) {
        const QString value = QString::fromUtf8(option.value);
        text += QStringLiteral("  --%1%2\n      %3\n")
                    .arg(QLatin1String(option.name), value.isEmpty() ? value : QStringLiteral(" <%1>").arg(value),
                         QString::fromUtf8(option.text));
    }
    return text;
}

/// Why a command line could not be taken apart.
QString problemOf(const QCommandLineParser &parser, const QStringList &arguments)
{
    const QStringList unknown = parser.unknownOptionNames();
    if (!unknown.isEmpty())
        return QStringLiteral("没有选项 %1")
            .arg((unknown.first().size() > 1 ? QStringLiteral("--") : QStringLiteral("-")) + unknown.first());
    for (const QString &argument : arguments) {
        const QString name = argument.section(QLatin1Char('='), 0, 0);
        for (const OptionText &option : optionTexts)
            if (*option.value == 0 && argument.contains(QLatin1Char('=')) &&
                name == QStringLiteral("--") + QLatin1String(option.name))
                return QStringLiteral("%1：不带值").arg(name);
    }
    return QStringLiteral("%1：缺少值").arg(arguments.last());
}

ParsedOptions refuse(const QString &text)
{
    ParsedOptions result;
    result.action = ParsedOptions::Action::Refuse;
    result.text = text;
    return result;
}

ParsedOptions print(const QString &text)
{
    ParsedOptions result;
    result.action = ParsedOptions::Action::Print;
    result.text = text;
    return result;
}

/// Reads the values one by one; keeps the first thing that is wrong.
class ValueReader
{
public:
    explicit ValueReader(const QCommandLineParser &commandLine) : parser(commandLine) {}

    QString error;

    QString text(const QString &name)
    {
        if (parser.values(name).size() > 1)
            fail(name, QStringLiteral("只能给出一次"));
        if (parser.isSet(name) && parser.value(name).isEmpty())
            fail(name, QStringLiteral("值是空的"));
        return parser.value(name);
    }

    /// Within the bounds, both included.
    std::optional<double> number(const QString &name, double least, double most)
    {
        if (!parser.isSet(name))
            return std::nullopt;
        bool isNumber = false;
        const QString given = text(name);
        const double value = given.toDouble(&isNumber);
        if (!isNumber || !std::isfinite(value) || value < least || value > most) {
            fail(name, QStringLiteral("“%1”不是 %2 到 %3 之间的数")
                           .arg(given)
                           .arg(least, 0, 'f', QLocale::FloatingPointShortest)
                           .arg(most, 0, 'f', QLocale::FloatingPointShortest));
            return std::nullopt;
        }
        return value;
    }

    /// The place of the given word among `words`.
    std::optional<int> choice(const QString &name, const QStringList &words)
    {
        if (!parser.isSet(name))
            return std::nullopt;
        const int index = words.indexOf(text(name));
        if (index < 0)
            fail(name, QStringLiteral("“%1”不是 %2 之一").arg(parser.value(name), words.join(QStringLiteral("、"))));
        return index < 0 ? std::nullopt : std::optional<int>(index);
    }

    void fail(const QString &name, const QString &what)
    {
        if (error.isEmpty())
            error = QStringLiteral("--%1：%2").arg(name, what);
    }

    const QCommandLineParser &parser;
};

double readSpeed(ValueReader &read)
{
    const QString name = QStringLiteral("speed");
    if (!read.parser.isSet(name))
        return 1;
    if (read.text(name) == QLatin1String("max"))
        return std::numeric_limits<double>::infinity();
    bool isNumber = false;
    const double value = read.parser.value(name).toDouble(&isNumber);
    if (isNumber && std::isfinite(value) && value > 0)
        return value;
    read.fail(name, QStringLiteral("“%1”既不是大于 0 的数，也不是 max").arg(read.parser.value(name)));
    return 1;
}

quint64 readSeed(ValueReader &read)
{
    const QString name = QStringLiteral("seed");
    if (!read.parser.isSet(name))
        return 1;
    bool isNumber = false;
    const quint64 value = read.text(name).toULongLong(&isNumber);
    if (!isNumber)
        read.fail(name, QStringLiteral("“%1”不是整数").arg(read.parser.value(name)));
    return value;
}

std::optional<QSize> readSize(ValueReader &read)
{
    const QString name = QStringLiteral("size");
    if (!read.parser.isSet(name))
        return std::nullopt;
    static const QRegularExpression form(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = form.match(read.text(name));
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    if (match.hasMatch() && size.width() >= smallestWidth && size.height() >= smallestHeight &&
        size.width() <= largestSide && size.height() <= largestSide)
        return size;
    read.fail(name, QStringLiteral("“%1”不是 %2x%3 到 %4x%4 之间的大小")
                        .arg(read.parser.value(name))
                        .arg(smallestWidth)
                        .arg(smallestHeight)
                        .arg(largestSide));
    return std::nullopt;
}

Options readOptions(ValueReader &read)
{
    Options options;
    options.replayPaths = read.parser.values(QStringLiteral("replay"));
    options.speed = readSpeed(read);
    options.seed = readSeed(read);
    options.headless = read.parser.isSet(QStringLiteral("headless"));
    options.seconds = read.number(QStringLiteral("seconds"), 0.1, 1e6);
    options.shotsDir = read.text(QStringLiteral("shots"));
    options.tour = read.parser.isSet(QStringLiteral("tour"));
    if (options.tour && options.shotsDir.isEmpty())
        read.fail(QStringLiteral("tour"), QStringLiteral("需要与 --shots 一起给出"));
    options.size = readSize(read);
    if (const auto theme = read.choice(QStringLiteral("theme"), {QStringLiteral("dark"), QStringLiteral("light")}))
        options.dark = *theme == 0;
    if (const auto rise = read.choice(QStringLiteral("rise"),
                                      {QStringLiteral("red"), QStringLiteral("green"), QStringLiteral("orange")}))
        options.riseFall = static_cast<refhost::RiseFall>(*rise);
    if (const auto percent = read.number(QStringLiteral("scale"), 100, 300))
        options.scale = static_cast<int>(std::lround(*percent));
    options.logFile = read.text(QStringLiteral("log"));
    options.logDir = read.text(QStringLiteral("log-dir"));
    options.deskFile = read.text(QStringLiteral("desk"));
    options.configFile = read.text(QStringLiteral("config"));
    return options;
}

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    for (const OptionText &option : optionTexts) {
        QStringList names{QLatin1String(option.name)};
        if (names.first() == QLatin1String("help") || names.first() == QLatin1String("version"))
            names.prepend(names.first().left(1));
        parser.addOption({names, QString(), QString::fromUtf8(option.value)});
    }

    if (!parser.parse(arguments))
        return refuse(problemOf(parser, arguments));
    if (parser.isSet(QStringLiteral("help")))
        return print(helpText());
    if (parser.isSet(QStringLiteral("version")))
        return print(QStringLiteral("terminal " TERMINAL_VERSION "\n"));
    if (!parser.positionalArguments().isEmpty())
        return refuse(
            QStringLiteral("“%1”不是选项；录制的文件用 --replay 给出").arg(parser.positionalArguments().constFirst()));
    ValueReader read(parser);
    ParsedOptions result;
    result.options = readOptions(read);
    return read.error.isEmpty() ? result : refuse(read.error);
}

} // namespace terminal
