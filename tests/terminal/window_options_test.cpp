#include <QtCore/QRegularExpression>
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
    if (options.tour)
        words << QStringLiteral("tour");
    for (const QString &path :
         {options.shotsDir, options.logFile, options.logDir, options.deskFile, options.configFile})
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
    EXPECT_EQ(
        describe(
            "--theme=light --rise=green --shots out --tour --log a.log --log-dir logs --desk my.db --config user.ini"),
        "speed=1 seed=1 light rise=1 tour out a.log logs my.db user.ini");
}

TEST(WindowOptions, AWrongValueIsRefusedWithItsOptionAndWhatIsAllowed)
{
    const struct
    {
        const char *line;
        const char *text;
    } cases[] = {
        {"--speed 0", "--speed：“0”既不是大于 0 的数，也不是 max"},
        {"--speed -1", "--speed：“-1”既不是大于 0 的数，也不是 max"},
        {"--speed nan", "--speed：“nan”既不是大于 0 的数，也不是 max"},
        {"--speed fast", "--speed：“fast”既不是大于 0 的数，也不是 max"},
        {"--seed -1", "--seed：“-1”不是整数"},
        {"--seed 1.5", "--seed：“1.5”不是整数"},
        {"--seconds 0", "--seconds：“0”不是 0.1 到 1000000 之间的数"},
        {"--seconds inf", "--seconds：“inf”不是 0.1 到 1000000 之间的数"},
        {"--scale 99", "--scale：“99”不是 100 到 300 之间的数"},
        {"--scale 301", "--scale：“301”不是 100 到 300 之间的数"},
        {"--size 639x360", "--size：“639x360”不是 640x360 到 8192x8192 之间的大小"},
        {"--size 1400", "--size：“1400”不是 640x360 到 8192x8192 之间的大小"},
        {"--size 99999x99999", "--size：“99999x99999”不是 640x360 到 8192x8192 之间的大小"},
        {"--theme blue", "--theme：“blue”不是 dark、light 之一"},
        {"--rise pink", "--rise：“pink”不是 red、green、orange 之一"},
        {"--shots=", "--shots：值是空的"},
        {"--tour", "--tour：需要与 --shots 一起给出"},
        {"--shots a --shots b", "--shots：只能给出一次"},
        {"data.csv", "“data.csv”不是选项；录制的文件用 --replay 给出"},
        {"--unknown", "没有选项 --unknown"},
        {"--seed 1 -q", "没有选项 -q"},
        {"--seed 1 --replay", "--replay：缺少值"},
        {"--headless=3 --seed 1", "--headless：不带值"},
        {"--help=3", "--help：不带值"},
        {"--speed 0 --scale 1", "--speed：“0”既不是大于 0 的数，也不是 max"},
    };
    for (const auto &known : cases) {
        const ParsedOptions parsed = parse(known.line);
        EXPECT_EQ(parsed.action, ParsedOptions::Action::Refuse) << known.line;
        EXPECT_EQ(parsed.text.toStdString(), known.text);
    }
}

TEST(WindowOptions, HelpNamesEveryOptionAndWinsOverWrongValues)
{
    const ParsedOptions help = parse("--help --scale 1");
    ASSERT_EQ(help.action, ParsedOptions::Action::Print);
    for (const char *name : {"replay", "speed", "seed", "headless", "seconds", "shots", "tour", "size", "theme", "rise",
                             "scale", "log-dir", "config", "help", "version"})
        EXPECT_TRUE(help.text.contains(QStringLiteral("--") + QLatin1String(name))) << name;
    EXPECT_EQ(parse("-h").text, help.text);
    EXPECT_FALSE(QRegularExpression(QStringLiteral("[a-z]{3,} [a-z]{2,} [a-z]{2,}")).match(help.text).hasMatch())
        << "in the user's language: " << help.text.toStdString();
    const ParsedOptions version = parse("-v");
    ASSERT_EQ(version.action, ParsedOptions::Action::Print);
    EXPECT_TRUE(QRegularExpression(QStringLiteral("^terminal \\d+\\.\\d+\\.\\d+\n$")).match(version.text).hasMatch());
}
