#include <gtest/gtest.h>

#include <QtCore/QDirIterator>
#include <QtCore/QRegularExpression>
#include <set>

#include "docs/contentof.h"

namespace {

void addNumbers(const QString &text, const QString &pattern, std::set<int> &numbers)
{
    const QRegularExpression line(pattern, QRegularExpression::MultilineOption);
    for (auto lines = line.globalMatch(text); lines.hasNext();)
        numbers.insert(lines.next().captured(1).toInt());
}

/// Numbers that the controls give names like `eventCleared` and `pageEvent`.
std::set<int> eventsInSources()
{
    std::set<int> numbers;
    for (const char *folder : {"/framework", "/uicontrol"})
        for (QDirIterator file(QStringLiteral(PROJECT_FOLDER) + QLatin1String(folder), {"*.h", "*.cpp"}, QDir::Files,
                               QDirIterator::Subdirectories);
             file.hasNext();)
            addNumbers(contentOf(file.next()), QStringLiteral("constexpr int (?:event|\\w+Event)\\w* = (\\d+);"),
                       numbers);
    addNumbers(contentOf(QStringLiteral(PROJECT_FOLDER "/host/zb/ewidgetevent.h")),
               QStringLiteral("^    Event\\w+ = (\\d+)"), numbers);
    return numbers;
}

std::string printed(const std::set<int> &numbers)
{
    std::string text;
    for (const int number : numbers)
        text += std::to_string(number) + ' ';
    return text;
}

} // namespace

TEST(EventGuide, HasARowForEveryEventOfTheControlsAndForNoOther)
{
    std::set<int> told;
    addNumbers(contentOf(QStringLiteral(PROJECT_FOLDER "/docs/events.md")), QStringLiteral("^\\| (\\d+) \\|"), told);
    const std::set<int> sent = eventsInSources();
    EXPECT_GT(sent.size(), 15U);
    EXPECT_EQ(printed(told), printed(sent));
}
