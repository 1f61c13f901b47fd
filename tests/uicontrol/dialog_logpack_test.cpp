#include <gtest/gtest.h>

#include <KZip>

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QMap>
#include <QtCore/QTemporaryDir>
#include <random>
#include <thread>

#include "dialog/clogpacker.h"
#include "dialog/clogpackfolder.h"
#include "dialog/clogsaver.h"
#include "printtext.h"

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#endif

namespace {

class LogPacking : public testing::Test
{
protected:
    LogPacking() : formerTemp(qgetenv("TMPDIR"))
    {
        QDir(folder.path()).mkpath("tmp");
        qputenv("TMPDIR", QFile::encodeName(folder.filePath("tmp")));
    }
    ~LogPacking() override
    {
        EXPECT_EQ(QDir(folder.filePath("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size(), 0);
        if (formerTemp.isEmpty())
            qunsetenv("TMPDIR");
        else
            qputenv("TMPDIR", formerTemp);
    }

    void write(const QString &name, const QByteArray &contents)
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(contents), contents.size());
    }

    KV::LogPackRequest request() const
    {
        KV::LogPackRequest made;
        made.files = KV::listLogFiles(folder.path());
        return made;
    }

    /// "name: contents" of each file in a pack.
    static QMap<QString, QByteArray> contents(const KV::LogPack &pack)
    {
        QMap<QString, QByteArray> files;
        KZip zip(pack.path);
        if (!zip.open(QIODevice::ReadOnly))
            return {{pack.problem, {}}};
        for (const QString &name : zip.directory()->entries())
            files[name] = zip.directory()->file(name)->data();
        return files;
    }

    QTemporaryDir folder;
    QByteArray formerTemp;
};

} // namespace

TEST_F(LogPacking, FilesThatGrowAndRotateGoAlongAsTheyWereAtTheStart)
{
    QByteArray first;
    while (first.size() < 12 << 20)
        first += "2026-11-21 09:30:00.120 INFO " + QByteArray::number(first.size()) + '\n';
    write("terminal.log", first);
    write("terminal.log.1", "the one before\n");
    KV::LogPack pack;
    const KV::LogPackRequest wanted = request();
    std::thread worker([&] { KV::packLogs(wanted, pack); });
    while (pack.readBytes == 0 && !pack.finished)
        std::this_thread::yield();
    QFile growing(folder.filePath("terminal.log"));
    ASSERT_TRUE(growing.open(QIODevice::Append));
    growing.write("later\n");
    growing.close();
    QFile::remove(folder.filePath("terminal.log.1"));
    QFile::rename(folder.filePath("terminal.log"), folder.filePath("terminal.log.1"));
    write("terminal.log", "new\n");
    worker.join();
    const QMap<QString, QByteArray> all{{"terminal.log", first}, {"terminal.log.1", "the one before\n"}};
    EXPECT_TRUE(contents(pack) == all) << pack.problem.toStdString();
    EXPECT_EQ(pack.totalBytes, first.size() + 15);
    EXPECT_EQ(pack.notes.size(), 0);
}

TEST_F(LogPacking, FilesThatCannotBeReadAreNamedAndTheOthersGoAlong)
{
    write("a.log", "first\n");
    write("b.log", "second\n");
    KV::LogPackRequest wanted = request();
    QFile::remove(folder.filePath("a.log"));
    KV::LogPack pack;
    KV::packLogs(wanted, pack);
    EXPECT_EQ(contents(pack), (QMap<QString, QByteArray>{{"b.log", "second\n"}}));
    EXPECT_EQ(pack.notes.size(), 1);
    EXPECT_TRUE(pack.notes.join("").startsWith("a.log 没有发送：")) << pack.notes.join("").toStdString();
    pack.folder.reset();
    QFile::remove(folder.filePath("b.log"));
    KV::LogPack none;
    KV::packLogs(wanted, none);
    EXPECT_EQ(none.problem, "没有可以读取的日志文件");
#ifdef Q_OS_LINUX
    ASSERT_TRUE(QFile::link("/proc/self/mem", folder.filePath("c.log"))); // opens, and cannot be read
    wanted.files = {{folder.filePath("c.log"), "c.log", 100, {}, {}, {}}};
    KV::LogPack failing;
    KV::packLogs(wanted, failing);
    EXPECT_TRUE(failing.problem.isEmpty());
    EXPECT_EQ(contents(failing).value("c.log"), "");
    EXPECT_EQ(failing.notes.join("|"), "c.log 比列出时短，可能已经轮换"); // it says that it is empty
#endif
}

TEST_F(LogPacking, AFileThatHasBecomeShorterIsSaidToHave)
{
    write("a.log", "first\nsecond\n");
    write("b.log", QByteArray("password=a\n").repeated(2 << 20)); // takes a while
    const KV::LogPackRequest wanted = request();
    write("a.log", "new\n"); // rotated between list and pack
    KV::LogPack pack;
    std::thread worker([&] { KV::packLogs(wanted, pack); });
    while (pack.readBytes < 1000 && !pack.finished)
        std::this_thread::yield();
    QFile::resize(folder.filePath("b.log"), 11); // emptied in place while it is read
    worker.join();
    EXPECT_EQ(pack.notes.join("|"), "a.log 比列出时短，可能已经轮换|b.log 没有读完：文件在读取时变短");
    EXPECT_EQ(contents(pack).value("a.log"), "new\n");
    EXPECT_TRUE(contents(pack).value("b.log").startsWith("password=***\n"));
    EXPECT_FALSE(contents(pack).value("b.log").contains("password=a"));
}

TEST_F(LogPacking, NamesOfFilesAreMaskedAndStayDifferent)
{
    write("user88001234.log", "a");
    write("user99001234.log", "b");
    write("plain.log", "c");
    KV::LogPackRequest wanted = request();
    wanted.accounts = QStringList{"88001234", "99001234"};
    KV::LogPack pack;
    KV::packLogs(wanted, pack);
    EXPECT_EQ(contents(pack).keys().join(" "), "2-userxxx34.log plain.log userxxx34.log");
}

TEST_F(LogPacking, WhatAKilledProcessHasLeftIsTakenAwayAndNothingElse)
{
    const QDir temp(folder.filePath("tmp"));
    const auto left = [&temp] { return temp.entryList(QDir::AllEntries | QDir::NoDotAndDotDot).join(" "); };
    write("a.log", "first\n");
    KV::LogPack mine;
    KV::packLogs(request(), mine);
    const QString own = left();
    EXPECT_TRUE(own.startsWith("sendlog-")) << own.toStdString();
    ASSERT_TRUE(temp.mkpath("sendlog-just/made"));
    KV::CLogPackFolder::removeLeftOvers();
    EXPECT_TRUE(temp.exists(own) && temp.exists("sendlog-just")) << left().toStdString();
    temp.rmpath("sendlog-just/made");
#ifdef Q_OS_UNIX
    const pid_t child = fork();
    if (child == 0) {
        KV::LogPack lost;
        KV::packLogs(request(), lost);
        kill(getpid(), lost.problem.isEmpty() ? SIGKILL : SIGTERM);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_EQ(WTERMSIG(status), SIGKILL);
    EXPECT_EQ(temp.entryList({"sendlog-*"}).size(), 2);
    ASSERT_TRUE(temp.mkpath("sendlog-target") &&
                QFile::link(temp.filePath("sendlog-target"), temp.filePath("sendlog-link")));
    KV::CLogPackFolder::removeLeftOvers();
    QFile::remove(temp.filePath("sendlog-link"));
    temp.rmdir("sendlog-target");
    EXPECT_EQ(left(), own);
#endif
    EXPECT_TRUE(QFile::exists(mine.path));
}

TEST_F(LogPacking, ASavedFileIsWholeOrTheOlderOneStays)
{
    const QDir mine(folder.filePath("mine"));
    mine.mkpath(".");
    const auto saved = [&](bool cancelled) {
        KV::LogCopy copy;
        copy.from = folder.filePath("from");
        copy.to = mine.filePath("logs.zip");
        copy.cancelled = cancelled;
        KV::saveLogCopy(copy);
        QFile file(copy.to);
        EXPECT_TRUE(copy.finished && file.open(QIODevice::ReadOnly));
        EXPECT_EQ(mine.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden).join(" "),
                  "logs.zip logs.zip.part");
        return file.readAll().left(5) + QByteArray::number(file.size()) + (copy.problem.isEmpty() ? "" : " failed");
    };
    write("from", QByteArray(3 << 20, 'x'));
    write("mine/logs.zip", "older");
    write("mine/logs.zip.part", "somebody's");
    EXPECT_EQ(saved(true), "older5");
#ifdef Q_OS_UNIX
    struct rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    struct rlimit limit = before;
    limit.rlim_cur = 2 << 20; // a disk that gets full
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    setrlimit(RLIMIT_FSIZE, &limit);
    EXPECT_EQ(saved(false), "older5 failed");
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
#endif
    EXPECT_EQ(saved(false), "xxxxx" + QByteArray::number(3 << 20));
    QFile::remove(folder.filePath("from"));
    EXPECT_EQ(saved(false), "xxxxx" + QByteArray::number(3 << 20) + " failed");
}

#ifdef Q_OS_UNIX
TEST_F(LogPacking, MoreFilesThanAProcessMayOpenGoAlongAllTheSame)
{
    for (int file = 0; file < 300; ++file)
        write(QStringLiteral("%1.log").arg(file), QByteArray::number(file));
    struct rlimit before;
    getrlimit(RLIMIT_NOFILE, &before);
    struct rlimit limit = before;
    limit.rlim_cur = 200;
    KV::LogPack pack;
    setrlimit(RLIMIT_NOFILE, &limit);
    KV::packLogs(request(), pack);
    setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_EQ(pack.notes.join("|"), "");
    EXPECT_EQ(pack.fileCount, 300);
}

TEST_F(LogPacking, APipeAmongTheLogsIsNeitherListedNorWaitedFor)
{
    ASSERT_EQ(mkfifo(QFile::encodeName(folder.filePath("pipe.log")).constData(), 0600), 0);
    write("a.log", "x");
    ASSERT_EQ(request().files.size(), 1);
    EXPECT_EQ(request().files[0].name, "a.log");
}

TEST_F(LogPacking, AFullDiskIsSaidAndNothingStays)
{
    QByteArray noise;
    std::mt19937 random(3);
    while (noise.size() < 3 << 20)
        noise += char(random());
    write("a.log", noise);
    struct rlimit before;
    getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t most : {rlim_t(0), rlim_t(1000), rlim_t(1) << 20}) {
        struct rlimit limit = before;
        limit.rlim_cur = most;
        setrlimit(RLIMIT_FSIZE, &limit);
        KV::LogPack pack;
        KV::packLogs(request(), pack);
        setrlimit(RLIMIT_FSIZE, &before);
        EXPECT_TRUE(pack.problem.contains("磁盘可能已满")) << pack.problem.toStdString();
        EXPECT_TRUE(pack.folder == nullptr);
    }
    std::signal(SIGXFSZ, handler);
    qputenv("TMPDIR", QFile::encodeName(folder.filePath("a.log")));
    KV::LogPack pack;
    KV::packLogs(request(), pack);
    qputenv("TMPDIR", QFile::encodeName(folder.filePath("tmp")));
    EXPECT_TRUE(pack.problem.startsWith("无法创建临时目录")) << pack.problem.toStdString();
}
#endif

TEST_F(LogPacking, LinesOfAnyLengthKeepTheirSecrets)
{
    const QByteArray blanks = QByteArray("word ").repeated((1 << 20) / 5 - 1);
    const struct
    {
        QByteArray file;
        QByteArray packed;
    } cases[] = {
        {"", ""},
        {"\n\n", "\n\n"},
        {"no end password=x", "no end password=***"},
        {blanks + "password=geheim and" + QByteArray(1 << 20, 'x') + "\nnext\n", // the cut goes through the name
         blanks + QString("［此行过长，省略 %1 字节］\nnext\n").arg(19 + (1 << 20)).toUtf8()},
        {QByteArray(3 << 20, 'x'), QString("［此行过长，省略 %1 字节］\n").arg(3 << 20).toUtf8()},
        {QByteArray(3 << 20, 'x') + "\ny", QString("［此行过长，省略 %1 字节］\ny").arg(3 << 20).toUtf8()},
        {QByteArray("password=a\n").repeated(60000), QByteArray("password=***\n").repeated(60000)},
    };
    for (const auto &each : cases) {
        write("a.log", each.file);
        KV::LogPack pack;
        KV::packLogs(request(), pack);
        const QByteArray got = contents(pack).value("a.log", pack.problem.toUtf8());
        EXPECT_TRUE(got == each.packed) << each.file.size() << ": " << got.right(200).toStdString();
    }
}
