#include "services/userconfig.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include "services/logservice.h"

using namespace refhost;

namespace {

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot open");
}

int warnings(const std::function<void()> &work)
{
    int count = 0;
    testing::internal::CaptureStderr();
    const int id =
        LogService::instance().addListener([&count](const QString &, int level) { count += level > 0 ? 1 : 0; });
    work();
    LogService::instance().removeListener(id);
    testing::internal::GetCapturedStderr();
    return count;
}

} // namespace

TEST(UserConfig, KeepsSettingsAcrossRestarts)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("用户/config.ini"));
    {
        UserConfig config(path);
        EXPECT_TRUE(config.isSegmentedFormat());
        config.setSegmentedFormat(false);
        config.setValue(QStringLiteral("table/16202/columns"),
                        QStringList{QStringLiteral("代码"), QStringLiteral("a,b;c=d")});
        config.setValue(QStringLiteral("table/16202/widths"), QByteArray("\0\x01\xFF", 3));
        config.setValue(QStringLiteral("表格/宽度"), 1.5);
        config.setValue(QStringLiteral("gone/a"), 1);
        config.remove(QStringLiteral("gone"));
        config.setValue(QStringLiteral("taken/back"), 1);
        config.setValue(QStringLiteral("taken/back"), QVariant());
    }
    const UserConfig config(path);
    EXPECT_EQ(config.value(QStringLiteral("taken/back"), 7).toInt(), 7);
    EXPECT_FALSE(config.isSegmentedFormat());
    EXPECT_EQ(config.getSegmentedFormatFlag(), utils::FormatNone);
    EXPECT_EQ(config.value(QStringLiteral("table/16202/columns")).toStringList().join(QLatin1Char('|')),
              QStringLiteral("代码|a,b;c=d"));
    EXPECT_EQ(config.value(QStringLiteral("table/16202/widths")).toByteArray(), QByteArray("\0\x01\xFF", 3));
    EXPECT_EQ(config.value(QStringLiteral("表格/宽度")).toDouble(), 1.5);
    EXPECT_EQ(config.value(QStringLiteral("gone/a"), 7), 7);
    EXPECT_EQ(config.value(QStringLiteral("unknown")), QVariant());
}

TEST(UserConfig, InMemoryAnswersAlike)
{
    UserConfig config;
    config.setValue(QStringLiteral("a/b"), 1);
    config.setValue(QStringLiteral("a/c"), 2);
    config.setValue(QStringLiteral("ab"), 3);
    config.remove(QStringLiteral("a"));
    EXPECT_EQ(config.value(QStringLiteral("a/b"), 9), 9);
    EXPECT_EQ(config.value(QStringLiteral("ab")), 3);
    EXPECT_EQ(config.getSegmentedFormatFlag(), utils::FormatGroupDigits);
    EXPECT_TRUE(config.flush());
    EXPECT_EQ(config.path(), QString());
}

TEST(UserConfig, ABrokenFileIsKeptAsideAndReplaced)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("config.ini"));
    for (const QByteArray &bytes : {QByteArray("[user\nsegmentedFormat"), QByteArray("a=1\n\0\0\0\0", 8),
                                    QByteArray("no line of an ini file\n")}) {
        write(path, bytes);
        EXPECT_EQ(warnings([&path] {
                      UserConfig config(path);
                      EXPECT_EQ(config.value(QStringLiteral("a")), QVariant());
                      config.setValue(QStringLiteral("b"), 2);
                  }),
                  1);
        EXPECT_EQ(read(path + QStringLiteral(".broken")), bytes);
        EXPECT_EQ(UserConfig(path).value(QStringLiteral("b")), 2);
    }
}

#ifdef Q_OS_UNIX
/// Passwords stand in it.
TEST(UserConfig, NobodyButTheUserReadsTheFile)
{
    QTemporaryDir folder;
    const auto permissions = [](const QString &path) { return int(QFile::permissions(path)) & 0x7077; };
    const QString path = folder.filePath(QStringLiteral("config.ini"));
    for (const char *contents : {"[mail]\npassword=x\n", "no line of an ini file\n"}) {
        write(path, contents);
        ASSERT_TRUE(QFile::setPermissions(path, QFileDevice::Permissions(0x6664)));
        testing::internal::CaptureStderr();
        {
            UserConfig config(path);
            EXPECT_EQ(permissions(QFile::exists(path) ? path : path + ".broken"), 0x6000) << contents;
            config.setValue(QStringLiteral("b"), 2);
        }
        testing::internal::GetCapturedStderr();
        EXPECT_EQ(permissions(path), 0x6000) << contents; // written anew
    }
    QFile::setPermissions(path, QFileDevice::ReadOwner | QFileDevice::ReadGroup);
    const UserConfig config(path);
    EXPECT_EQ(permissions(path), 0x4000); // one that the user has locked stays so
    EXPECT_EQ(config.value(QStringLiteral("b")), 2);
}
#endif

TEST(UserConfig, AFileThatCannotBeWrittenCostsAWarningOnly)
{
    QTemporaryDir folder;
    write(folder.filePath(QStringLiteral("file")), "x");
    const QString path = folder.filePath(QStringLiteral("file/config.ini"));
    EXPECT_GE(warnings([&path] {
                  UserConfig config(path);
                  config.setValue(QStringLiteral("a"), 1);
                  EXPECT_EQ(config.value(QStringLiteral("a")), 1);
                  EXPECT_FALSE(config.flush());
              }),
              1);
}
