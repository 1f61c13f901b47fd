#include <gtest/gtest.h>

#include <QtCore/QDateTime>
#include <limits>
#include <random>

#include "utils/timetext.h"
#include "zb/numberformat.h"

using namespace utils;

namespace {

std::string display(const std::string &bytes)
{
    return ZB::sToQs(bytes).toStdString();
}

} // namespace

TEST(RecordText, IsUtf8AndOtherwiseGb18030)
{
    EXPECT_EQ(display(""), "");
    EXPECT_EQ(display("贵州茅台 100股 \xF0\x9F\x93\x88"), "贵州茅台 100股 \xF0\x9F\x93\x88");
    EXPECT_EQ(display("*ST\xB9\xF3"), "*ST贵");
    EXPECT_EQ(display("\x95\x33\xC3\x39"), "𠝹") << "four bytes: a character that GBK does not have";
    EXPECT_EQ(ZB::sToQs(std::string("a\0b", 3)).size(), 3);
}

TEST(RecordText, BytesThatAreNoTextGiveSomethingToRead)
{
    // Cut, overlong, surrogate, out of range and stray bytes.
    for (const char *bytes : {"\xE8\xB4", "\xC0\xAF", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x80", "\xFF\xFE", "ab\xE8"})
        EXPECT_FALSE(ZB::sToQs(bytes).isEmpty()) << QByteArray(bytes).toHex().toStdString();
    EXPECT_TRUE(ZB::sToQs("ab\xE8").startsWith(QLatin1String("ab")));
}

TEST(TimeText, IsAbsentOutsideOfTheCalendar)
{
    EXPECT_EQ(getStrTimeByTime(1, ETimeText::DateTime), QLatin1String("1970-01-01 08:00:00"));
    EXPECT_EQ(getStrTimeByTime(253'402'271'999'999, ETimeText::DateTime), QLatin1String("9999-12-31 23:59:59"));
    for (const qint64 none : {std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min(), qint64(0),
                              qint64(-1), qint64(253'402'272'000'000)})
        EXPECT_EQ(getStrTimeByTime(none, ETimeText::Time), QLatin1String("-"));
}

TEST(TimeText, AgreesWithTheCalendarOfQt)
{
    const unsigned seed = std::random_device{}();
    std::mt19937_64 random(seed);
    const std::pair<ETimeText, const char *> kinds[] = {{ETimeText::DateTime, "yyyy-MM-dd HH:mm:ss"},
                                                        {ETimeText::TimeMillis, "HH:mm:ss.zzz"},
                                                        {ETimeText::Time, "HH:mm:ss"},
                                                        {ETimeText::Date, "yyyy-MM-dd"}};
    for (int round = 0; round < 20'000; ++round) {
        const auto time = static_cast<qint64>(random() % 253'402'271'999'999 + 1);
        const QDateTime expected = QDateTime::fromMSecsSinceEpoch(time, Qt::OffsetFromUTC, 8 * 3600);
        for (const auto &[kind, format] : kinds)
            ASSERT_EQ(getStrTimeByTime(time, kind), expected.toString(format)) << time << " seed " << seed;
    }
}

TEST(TimeText, DurationsAreHoursMinutesSeconds)
{
    EXPECT_EQ(secondsToTime(0), QLatin1String("0:00:00"));
    EXPECT_EQ(secondsToTime(59), QLatin1String("0:00:59"));
    EXPECT_EQ(secondsToTime(36'061), QLatin1String("10:01:01"));
    EXPECT_EQ(secondsToTime(std::numeric_limits<int>::max() - 1), QLatin1String("596523:14:06"));
    EXPECT_EQ(secondsToTime(std::numeric_limits<int>::max()), QLatin1String("-"));
}
