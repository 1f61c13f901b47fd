#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QSemaphore>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtCore/QThreadPool>
#include <QtCore/QTimer>
#include <QtCore/QXmlStreamReader>
#include <QtTest/QTest>
#include <atomic>
#include <csignal>
#include <future>
#include <thread>
#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

#include "framework/tablefixture.h"
#include "popups/taskstrip.h"
#include "table/hpfmodelaccess.h"
#include "table/rowsnapshot.h"
#include "table/stopflag.h"
#include "table/tabletransfer.h"
#include "table/tablewriter.h"
#include "table/xlsxcheck.h"
#include "table/xlsxtablewriter.h"
#include "table/zipentry.h"

namespace tabletest {

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

/// The cells of a sheet, row by row: numbers as they are, texts in quotes, each with its place.
QString sheetText(const QString &path, const QString &sheet)
{
    QByteArray xml;
    const bool whole = ZB::readZipEntry(path, sheet, [&xml](const char *bytes, int size) {
        xml.append(bytes, size);
        return true;
    });
    if (!whole)
        return QStringLiteral("(no such sheet)");
    QXmlStreamReader reader(xml);
    QStringList lines;
    QString place;
    while (!reader.atEnd()) {
        reader.readNext();
        if (!reader.isStartElement())
            continue;
        if (reader.name() == QLatin1String("row"))
            lines.append(QString());
        else if (reader.name() == QLatin1String("c"))
            place = reader.attributes().value(QLatin1String("r")).toString();
        else if (reader.name() == QLatin1String("v"))
            lines.last() += QStringLiteral("%1=%2 ").arg(place, reader.readElementText());
        else if (reader.name() == QLatin1String("t"))
            lines.last() += QStringLiteral("%1=\"%2\" ").arg(place, reader.readElementText());
        else if (reader.name() == QLatin1String("f"))
            lines.last() += QStringLiteral("FORMULA ");
    }
    return lines.join(QLatin1Char('\n'));
}

/// Holds up a filter that asks for its text, and an export that asks for what it shows, until it is let go.
class HeldRow : public OrderRow
{
public:
    HeldRow(Order held, std::shared_future<void> gate) : OrderRow(std::move(held)), opened(std::move(gate)) {}

    QString getFilterQString(int column) override
    {
        opened.wait();
        return OrderRow::getFilterQString(column);
    }
    QString getDisplayQString(int column) override
    {
        if (QThread::currentThread() != QCoreApplication::instance()->thread()) // painted while it holds
            opened.wait();
        return OrderRow::getDisplayQString(column);
    }

private:
    const std::shared_future<void> opened;
};

#ifdef Q_OS_UNIX
/// No file of this process may grow beyond so many bytes while it lives.
class SmallDisk
{
public:
    explicit SmallDisk(rlim_t bytes)
    {
        ::getrlimit(RLIMIT_FSIZE, &former);
        const rlimit small{bytes, former.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    ~SmallDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &former);
        std::signal(SIGXFSZ, handler);
    }

private:
    void (*const handler)(int) = std::signal(SIGXFSZ, SIG_IGN);
    rlimit former{};
};
#endif

class TableExportTest : public TableTest
{
protected:
    ~TableExportTest() override { QThreadPool::globalInstance()->waitForDone(); }

    /// Asks for what is bought, which is not carried out before the gate is opened.
    void filterHalfWay()
    {
        const std::shared_future<void> opened = gate.get_future().share();
        model->updateData(boost::make_shared<HeldRow>(Order{"held", "600900", "长江电力", 2, 1, 1}, opened));
        QSet<QString> values{QStringLiteral("买入")};
        table->onFilterTrigger(Side, ZB::FilterExact, values);
        EXPECT_TRUE(ZB::HpfModelAccess::status(*model).pending);
    }
    void openSoon()
    {
        QTimer::singleShot(50, window.get(), [this] { gate.set_value(); });
    }
    QString codesIn(const QString &file) const
    {
        QStringList codes;
        for (const QString &line : QString::fromUtf8(contentOf(path(file))).split(QStringLiteral("\r\n")).mid(1))
            codes.append(line.section(QLatin1Char(','), 0, 0));
        return codes.join(QLatin1Char(' '));
    }

    QString path(const QString &name) const { return folder.filePath(name); }
    QStringList files() const { return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden); }

    void write(const QString &name, const QByteArray &content) const
    {
        QFile file(path(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    }

    void fill(int rows)
    {
        for (int row = 0; row < rows; ++row)
            model->put({std::to_string(row), QString::number(row), QStringLiteral("n"), 0, 1.5, row});
        settle();
    }

    QTemporaryDir folder;
    std::promise<void> gate;
};

TEST_F(TableExportTest, CsvHasTheShownRowsAndColumnsAndNoFormulas)
{
    model->put({"f", "+86", "a,b \"c\"\nd", 0, -2.5, -7});
    model->put({"g", "@x", "-1", 0, 0.0, 0});
    table->setColumnVisible(Side, false);
    grid()->setColumnOrder({Quantity, Code, Name, Side, Price});
    EXPECT_TRUE(table->exportData(path("out.csv")));
    EXPECT_TRUE(contentOf(path("out.csv")).startsWith("\xEF\xBB\xBF"));
    EXPECT_EQ(QString::fromUtf8(contentOf(path("out.csv"))), QStringLiteral("数量,代码,名称,价格\r\n"
                                                                            "300,600000,浦发银行,10.25\r\n"
                                                                            "1200000,000001,平安银行,12.5\r\n"
                                                                            "100,300918,南山智尚,15.93\r\n"
                                                                            "700,600000,浦发银行,\r\n"
                                                                            "50,688293,'=奥浦迈,98.7\r\n"
                                                                            "-7,'+86,\"a,b \"\"c\"\"\nd\",-2.5\r\n"
                                                                            "0,'@x,'-1,0\r\n"));
    EXPECT_EQ(files(), QStringList({"out.csv"}));
}

TEST_F(TableExportTest, AFilterThatIsUnderWayIsFinishedFirst)
{
    const auto exported = [this] {
        openSoon();
        EXPECT_TRUE(table->exportData(path("out.csv")));
        table->clearFilter();
        model->size();
        gate = std::promise<void>();
        return codesIn("out.csv");
    };
    for (const bool isShared : {true, false}) {
        if (!isShared)
            table->setDataModel(model.get());
        filterHalfWay();
        table->setSortColumns({{Price, 1}});
        EXPECT_EQ(exported(), "688293 300918 600000 ");
        filterHalfWay(); // and on the way back
        table->clearFilter();
        EXPECT_EQ(exported(), "688293 300918 000001 600000 600900 600000 ");
    }
    filterHalfWay();
    QTimer::singleShot(0, window.get(), [this] { delete table; });
    openSoon();
    EXPECT_FALSE(table->exportData(path("gone.csv")));
    EXPECT_EQ(files(), QStringList({"out.csv"}));
}

TEST_F(TableExportTest, APauseDuringAFilterHoldsTheFilteredRows)
{
    int number = 0;
    for (const bool isShared : {true, false}) {
        if (!isShared)
            table->setDataModel(model.get());
        gate = std::promise<void>();
        filterHalfWay();
        table->setPaused(true);
        gate.set_value();
        EXPECT_TRUE(QTest::qWaitFor([&] {
            model->put({"new" + std::to_string(number++), "600001", "邯郸钢铁", 0, 3, 3});
            return grid()->source()->rowCount() < model->size();
        })) << "the rows are held";
        for (qint64 row = 0; row < grid()->source()->rowCount(); ++row)
            EXPECT_EQ(grid()->source()->cellText(row, Side), "买入") << isShared;
        table->setPaused(false);
        table->clearFilter();
        model->size();
    }
}

TEST_F(TableExportTest, RowsThatComeInOnTopPushNoneOut)
{
    model->setAppendSeq(false);
    for (int number = 0; number < 5000; ++number)
        model->put({"old" + std::to_string(number), "1", "n", 0, 1, 1});
    constexpr int rounds = 1000;
    std::atomic<int> round{0};
    std::thread feed([&] {
        for (int number = 1; number <= rounds; ++number) {
            const auto row =
                boost::make_shared<OrderRow>(Order{"new" + std::to_string(number), "1", "n", 0, 1, number});
            while (round < number)
                std::this_thread::yield();
            model->updateData(row);
        }
    });
    int whole = 0;
    while (round < rounds) {
        ++round;
        whole += ZB::takerOfAll(*model, nullptr)()->back().row->key() == "e" ? 1 : 0;
    }
    feed.join();
    EXPECT_EQ(whole, rounds) << "times the oldest row was the last one";
}

TEST_F(TableExportTest, WorkbooksHaveTypedCells)
{
    model->put({"f", "<&>", "_x0041_\x01", 1, 0.1, (qint64(1) << 60) + 1});
    EXPECT_TRUE(table->exportData(path("out.XLSX")));
    EXPECT_EQ(sheetText(path("out.XLSX"), QStringLiteral("xl/worksheets/sheet1.xml")),
              QStringLiteral("A1=\"代码\" B1=\"名称\" C1=\"方向\" D1=\"价格\" E1=\"数量\" \n"
                             "A2=\"600000\" B2=\"浦发银行\" C2=\"买入\" D2=10.25 E2=300 \n"
                             "A3=\"000001\" B3=\"平安银行\" C3=\"卖出\" D3=12.5 E3=1200000 \n"
                             "A4=\"300918\" B4=\"南山智尚\" C4=\"买入\" D4=15.93 E4=100 \n"
                             "A5=\"600000\" B5=\"浦发银行\" C5=\"卖出\" E5=700 \n"
                             "A6=\"688293\" B6=\"=奥浦迈\" C6=\"买入\" D6=98.7 E6=50 \n"
                             "A7=\"<&>\" B7=\"_x005F_x0041__x0001_\" C7=\"卖出\" D7=0.1 E7=\"1152921504606846977\" "));
    EXPECT_EQ(files(), QStringList({"out.XLSX"}));
}

TEST_F(TableExportTest, MoreRowsThanASheetHoldsGoOn)
{
    ZB::StopFlag never;
    std::vector<ZB::ExportColumn> columns(1);
    columns[0].header = QStringLiteral("数量");
    {
        ZB::XlsxTableWriter writer(path("out.xlsx"), never, 3);
        ASSERT_TRUE(writer.begin(columns, 5));
        for (qint64 row = 0; row < 5; ++row)
            ASSERT_TRUE(writer.writeRow({ZB::CellNumber{row, 0, false, false}}));
        EXPECT_FALSE(QFile::exists(path("out.xlsx")));
        ASSERT_TRUE(writer.finish());
    }
    QStringList sheets;
    for (int sheet = 1; sheet <= 3; ++sheet)
        sheets.append(sheetText(path("out.xlsx"), QStringLiteral("xl/worksheets/sheet%1.xml").arg(sheet)));
    EXPECT_EQ(sheets.join(QStringLiteral("---\n")), QStringLiteral("A1=\"数量\" \nA2=0 \nA3=1 ---\n"
                                                                   "A1=\"数量\" \nA2=2 \nA3=3 ---\n"
                                                                   "A1=\"数量\" \nA2=4 "));
}

TEST_F(TableExportTest, AWorkbookThatLacksACellIsNotTakenForWhole)
{
    ASSERT_TRUE(table->exportData(path("out.xlsx")));
    const ZB::StopFlag never;
    ZB::StopFlag stopped;
    stopped.stop();
    EXPECT_TRUE(ZB::isWholeWorkbook(path("out.xlsx"), {29}, never));
    EXPECT_FALSE(ZB::isWholeWorkbook(path("out.xlsx"), {30}, never));
    EXPECT_FALSE(ZB::isWholeWorkbook(path("out.xlsx"), {29, 0}, never));
    EXPECT_FALSE(ZB::isWholeWorkbook(path("out.xlsx"), {29}, stopped));
    const QByteArray whole = contentOf(path("out.xlsx"));
    for (const int length : {0, 10, whole.size() / 2, whole.size() - 30, whole.size() - 1}) {
        QFile cut(path("cut.xlsx"));
        ASSERT_TRUE(cut.open(QIODevice::WriteOnly));
        cut.write(whole.left(length));
        cut.close();
        EXPECT_FALSE(ZB::isWholeWorkbook(path("cut.xlsx"), {29}, never)) << length;
    }
}

TEST_F(TableExportTest, AFailureLeavesTheOldFileAndNothingBeside)
{
    for (const QString &name : {QStringLiteral("old.csv"), QStringLiteral("old.xlsx")}) {
        write(name, "old");
        fill(3000);
        std::promise<void> written;
        model->updateData(
            boost::make_shared<HeldRow>(Order{"2999", "600900", "长江电力", 0, 1, 1}, written.get_future().share()));
        QTimer::singleShot(0, table, [this, &written] {
            Q_EMIT grid()->findChildren<ZB::TaskStrip *>().last()->cancelRequested();
            written.set_value();
        });
        EXPECT_FALSE(table->exportData(path(name)));
        QThreadPool::globalInstance()->waitForDone();
        EXPECT_EQ(contentOf(path(name)), "old");
    }
    EXPECT_EQ(files(), QStringList({"old.csv", "old.xlsx"}));
    for (const char *suffix : {"csv", "xlsx"}) {
        EXPECT_FALSE(table->exportData(path(QStringLiteral("missing/folder.") + QLatin1String(suffix))));
        QDir(folder.path()).mkdir(QStringLiteral("folder.") + QLatin1String(suffix));
        EXPECT_FALSE(table->exportData(path(QStringLiteral("folder.") + QLatin1String(suffix))));
    }
    EXPECT_FALSE(table->exportData(QString()));
    EXPECT_EQ(files(), QStringList({"old.csv", "old.xlsx"}));
    EXPECT_TRUE(table->exportData(path("old.csv")));
}

TEST_F(TableExportTest, AnExportIsEitherStoppedOrItsFileCounts)
{
    std::vector<ZB::ExportColumn> columns(1);
    for (const QString &name : {QStringLiteral("out.csv"), QStringLiteral("out.xlsx")}) {
        write(name, "old");
        const auto writeOne = [&](ZB::StopFlag &flag, bool stopLast) {
            const auto writer = ZB::TableWriter::forPath(path(name), flag);
            EXPECT_TRUE(writer->begin(columns, 1) && writer->writeRow({QStringLiteral("new")}));
            EXPECT_EQ(stopLast && flag.stop(), stopLast);
            return writer->finish();
        };
        ZB::StopFlag stopped;
        EXPECT_FALSE(writeOne(stopped, true)) << qPrintable(name);
        EXPECT_EQ(contentOf(path(name)), "old");
        ZB::StopFlag late;
        EXPECT_TRUE(writeOne(late, false));
        EXPECT_FALSE(late.stop()) << "the new file is in its place";
        EXPECT_NE(contentOf(path(name)), "old");
    }
    EXPECT_EQ(files(), QStringList({"out.csv", "out.xlsx"}));
}

#ifdef Q_OS_UNIX
TEST_F(TableExportTest, AFullDiskFailsAndLeavesTheOldFile)
{
    fill(20000);
    for (const QString &name : {QStringLiteral("old.csv"), QStringLiteral("old.xlsx")}) {
        write(name, "old");
        bool whole = true;
        {
            const SmallDisk disk(1 << 16);
            whole = table->exportData(path(name));
            QThreadPool::globalInstance()->waitForDone();
        }
        EXPECT_FALSE(whole) << qPrintable(name);
        EXPECT_EQ(contentOf(path(name)), "old");
        EXPECT_TRUE(table->exportData(path(QStringLiteral("new") + name.mid(3)))) << "with room again";
    }
    EXPECT_EQ(files(), QStringList({"new.csv", "new.xlsx", "old.csv", "old.xlsx"}));
}

TEST_F(TableExportTest, AFullDiskIsWhatTheUserReads)
{
    std::vector<ZB::ExportColumn> columns(1);
    for (const char *name : {"out.csv", "out.xlsx"}) {
        ZB::StopFlag flag;
        const auto writer = ZB::TableWriter::forPath(path(QLatin1String(name)), flag);
        ASSERT_TRUE(writer->begin(columns, 1000));
        const SmallDisk disk(1 << 12);
        bool whole = true;
        for (int row = 0; row < 1000 && whole; ++row)
            whole = writer->writeRow({QString(100, QLatin1Char('x'))});
        EXPECT_FALSE(whole && writer->finish()) << name;
        EXPECT_FALSE(writer->errorText().isEmpty()) << name;
    }
    EXPECT_EQ(files(), QStringList());
}
#endif

TEST_F(TableExportTest, WhoHasToWaitForAnotherExportIsTold)
{
    ZB::TaskStrip strip(window.get());
    ZB::TableTransfer transfer(&strip);
    QSemaphore taking;
    const auto noRows = [&taking] {
        taking.acquire();
        return ZB::makeSnapshot({}, nullptr);
    };
    QTimer::singleShot(0, table, [&] {
        EXPECT_FALSE(transfer.exportTo(path("second.csv"), {}, noRows));
        EXPECT_EQ(transfer.errorText(), QStringLiteral("另一个导出或复制正在进行"));
        EXPECT_FALSE(strip.isVisible()) << "too short to show";
        transfer.copy(false, std::vector<ZB::ExportColumn>(1), 1000000, noRows, nullptr);
        EXPECT_TRUE(strip.isVisible()) << "a large copy";
        taking.release();
    });
    EXPECT_TRUE(transfer.exportTo(path("first.csv"), {}, noRows));
    EXPECT_EQ(transfer.errorText(), QString());
    EXPECT_FALSE(strip.isVisible());
    EXPECT_EQ(files(), QStringList({"first.csv"}));
}

TEST_F(TableExportTest, ALineOfOneBlankCellIsNotEmpty)
{
    table->setColumnVisible(Code, false);
    table->setColumnVisible(Name, false);
    table->setColumnVisible(Side, false);
    table->setColumnVisible(Quantity, false);
    EXPECT_TRUE(table->exportData(path("out.csv")));
    EXPECT_EQ(QString::fromUtf8(contentOf(path("out.csv"))),
              QStringLiteral("价格\r\n10.25\r\n12.5\r\n15.93\r\n\"\"\r\n98.7\r\n"));
}

TEST_F(TableExportTest, TheTableMayGoDuringAnExport)
{
    for (const char *name : {"gone.csv", "gone.xlsx"}) {
        rebuild(model);
        fill(5000);
        QTimer::singleShot(0, table, [this] { delete table; });
        EXPECT_FALSE(table->exportData(path(QLatin1String(name))));
        QThreadPool::globalInstance()->waitForDone();
    }
    EXPECT_EQ(files(), QStringList());
}

TEST_F(TableExportTest, RowsAndModelMayGoDuringAnExport)
{
    fill(5000);
    QTimer::singleShot(0, table, [this] {
        table->setDataModel(nullptr);
        model->clear();
        model.reset();
    });
    EXPECT_TRUE(table->exportData(path("out.csv")));
    EXPECT_EQ(contentOf(path("out.csv")).count('\n'), 5006);
}

} // namespace

} // namespace tabletest
