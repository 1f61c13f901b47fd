#include <QtCore/QRegularExpression>
#include <cmath>
#include <gtest/gtest.h>

#include "window/options.h"

using namespace terminal;

namespace {

ParsedOptions parse(const QString &line)
{
    return parseOptions((QStringLiteral("terminal ") + line).simplified().split(QLatin1Char(' ')));
}

/// The options that a line gives, as text; what is not given is left out.
std::string describe(const QString &line)
{
    const ParsedOptions parsed = parse(line);
    if (parsed.action != ParsedOptions::Action::Run)
        return parsed.text.toStdString();
    const Options &options = parsed.options;
    QStringList words;
    for (const QString &path : options.replayPaths)
        words << QStringLiteral("replay=") + path;
    words << QStringLiteral("speed=%1 seed=%2").arg(options.speed).arg(options.seed);
    if (options.headless)
        words << QStringLiteral("headless");
    if (options.seconds)
        words << QStringLiteral("seconds=%1").arg(*options.seconds);
    if (options.size)
        words << QStringLiteral("size=%1,%2").arg(options.size->width()).arg(options.size->height());
    if (options.dark)
        words << (*options.dark ? QStringLiteral("dark") : QStringLiteral("light"));
    if (options.riseFall)
        words << QStringLiteral("rise=%1").arg(int(*options.riseFall));
    if (options.scale)
        words << QStringLiteral("scale=%1").arg(*options.scale);
    for (const QString &path : {options.shotsDir, options.logFile, options.logDir, options.configFile})
        if (!path.isEmpty())
            words << path;
    return words.join(QLatin1Char(' ')).toStdString();
}

} // namespace

TEST(WindowOptions, EveryOptionIsReadAndAbsentOnesStayOpen)
{
    EXPECT_EQ(describe(""), "speed=1 seed=1");
    EXPECT_EQ(describe("--replay a --replay b/c.csv --speed max --headless --seconds 2.5"),
              "replay=a replay=b/c.csv speed=inf seed=1 headless seconds=2.5");
    EXPECT_EQ(describe("--speed 0.25 --seed 18446744073709551615"), "speed=0.25 seed=18446744073709551615");
    EXPECT_EQ(describe("--size 640x360 --theme dark --rise orange --scale 150"),
              "speed=1 seed=1 size=640,360 dark rise=2 scale=150");
    EXPECT_EQ(describe("--theme=light --rise=green --shots out --log a.log --log-dir logs --config user.ini"),
              "speed=1 seed=1 light rise=1 out a.log logs user.ini");
}

TEST(WindowOptions, AWrongValueIsRefusedWithItsOptionAndWhatIsAllowed)
{
    const struct
    {
        const char *line;
        const char *text;
    } cases[] = {
        {"--speed 0", "--speed: \"0\" is neither a number above 0 nor max"},
        {"--speed -1", "--speed: \"-1\" is neither a number above 0 nor max"},
        {"--speed nan", "--speed: \"nan\" is neither a number above 0 nor max"},
        {"--speed fast", "--speed: \"fast\" is neither a number above 0 nor max"},
        {"--seed -1", "--seed: \"-1\" is not a whole number"},
        {"--seed 1.5", "--seed: \"1.5\" is not a whole number"},
        {"--seconds 0", "--seconds: \"0\" is not a number from 0.1 to 1e+06"},
        {"--seconds inf", "--seconds: \"inf\" is not a number from 0.1 to 1e+06"},
        {"--scale 99", "--scale: \"99\" is not a number from 100 to 300"},
        {"--scale 301", "--scale: \"301\" is not a number from 100 to 300"},
        {"--size 639x360", "--size: \"639x360\" is not a size from 640x360 to 8192x8192"},
        {"--size 1400", "--size: \"1400\" is not a size from 640x360 to 8192x8192"},
        {"--size 99999x99999", "--size: \"99999x99999\" is not a size from 640x360 to 8192x8192"},
        {"--theme blue", "--theme: \"blue\" is none of dark, light"},
        {"--rise pink", "--rise: \"pink\" is none of red, green, orange"},
        {"--shots=", "--shots: empty"},
        {"--shots a --shots b", "--shots: given more than once"},
        {"data.csv", "\"data.csv\" is no option; recorded files are named by --replay"},
        {"--speed 0 --scale 1", "--speed: \"0\" is neither a number above 0 nor max"},
    };
    for (const auto &known : cases) {
        const ParsedOptions parsed = parse(known.line);
        EXPECT_EQ(parsed.action, ParsedOptions::Action::Refuse) << known.line;
        EXPECT_EQ(parsed.text.toStdString(), known.text);
    }
    for (const char *line : {"--unknown", "--replay", "--headless=3"})
        EXPECT_EQ(parse(line).action, ParsedOptions::Action::Refuse) << line;
}

TEST(WindowOptions, HelpNamesEveryOptionAndWinsOverWrongValues)
{
    const ParsedOptions help = parse("--help --scale 1");
    ASSERT_EQ(help.action, ParsedOptions::Action::Print);
    for (const char *name : {"replay", "speed", "seed", "headless", "seconds", "shots", "size", "theme", "rise",
                             "scale", "log-dir", "config", "help", "version"})
        EXPECT_TRUE(help.text.contains(QStringLiteral("--") + QLatin1String(name))) << name;
    const ParsedOptions version = parse("--version");
    ASSERT_EQ(version.action, ParsedOptions::Action::Print);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^terminal \\d+\\.\\d+\\.\\d+\n$")).match(version.text).hasMatch());
}
