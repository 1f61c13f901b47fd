#include "window/options.h"

#include <QtCore/QCommandLineParser>
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
    {"replay", "path",
     "Replay a recorded file, or every known file in a folder; may be given several times. Without it "
     "a simulated exchange gives the data."},
    {"speed", "factor", "Market time over real time: 1 (the default) is recorded time, max as fast as possible."},
    {"seed", "number", "Seed of the simulated exchange; the same seed gives the same day. Default 1."},
    {"headless", "",
     "Run off screen and without a user, then print one line of JSON. Ends when the replay is over and "
     "all of it has been shown, or after --seconds, whichever comes first; a simulated exchange never "
     "ends by itself, so --seconds is 10 there unless given."},
    {"seconds", "number", "End after so many seconds."},
    {"shots", "folder", "At the end write a screenshot of every page, in both themes, at 100 % and 150 %."},
    {"size", "WxH", "Size of the window at 100 %, in pixels."},
    {"theme", "name", "dark or light."},
    {"rise", "colour", "Colour of rising prices: red, green or orange (falling: green, red, blue)."},
    {"scale", "percent", "Scale of everything, 100 to 300."},
    {"log", "file", "Show a log file, UTF-8 or GB18030, and follow it as it grows."},
    {"log-dir", "folder", "Where the log files go."},
    {"config", "file", "The user's settings. With --headless none are read or written unless this is given."},
};

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
            fail(name, QStringLiteral("given more than once"));
        if (parser.isSet(name) && parser.value(name).isEmpty())
            fail(name, QStringLiteral("empty"));
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
            fail(name, QStringLiteral("\"%1\" is not a number from %2 to %3").arg(given).arg(least).arg(most));
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
            fail(name,
                 QStringLiteral("\"%1\" is none of %2").arg(parser.value(name), words.join(QStringLiteral(", "))));
        return index < 0 ? std::nullopt : std::optional<int>(index);
    }

    void fail(const QString &name, const QString &what)
    {
        if (error.isEmpty())
            error = QStringLiteral("--%1: %2").arg(name, what);
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
    read.fail(name, QStringLiteral("\"%1\" is neither a number above 0 nor max").arg(read.parser.value(name)));
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
        read.fail(name, QStringLiteral("\"%1\" is not a whole number").arg(read.parser.value(name)));
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
    read.fail(name, QStringLiteral("\"%1\" is not a size from %2x%3 to %4x%4")
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
    options.configFile = read.text(QStringLiteral("config"));
    return options;
}

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("A trading terminal for practice: recorded or simulated markets."));
    for (const OptionText &option : optionTexts)
        parser.addOption({QLatin1String(option.name), QLatin1String(option.text), QLatin1String(option.value)});
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this text."));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")},
                                     QStringLiteral("Print the version."));
    parser.addOption(help);
    parser.addOption(version);

    if (!parser.parse(arguments))
        return refuse(parser.errorText());
    if (parser.isSet(help))
        return print(parser.helpText());
    if (parser.isSet(version))
        return print(QStringLiteral("terminal " TERMINAL_VERSION "\n"));
    if (!parser.positionalArguments().isEmpty())
        return refuse(QStringLiteral("\"%1\" is no option; recorded files are named by --replay")
                          .arg(parser.positionalArguments().constFirst()));
    ValueReader read(parser);
    ParsedOptions result;
    result.options = readOptions(read);
    return read.error.isEmpty() ? result : refuse(read.error);
}

} // namespace terminal
