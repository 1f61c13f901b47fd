#include "benchcase.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QFile>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtWidgets/QApplication>
#include <algorithm>
#include <cstdio>

std::vector<BenchCase> &benchCases()
{
    static std::vector<BenchCase> cases;
    return cases;
}

BenchRegistration::BenchRegistration(std::string name, std::function<std::vector<BenchRow>(bool quick)> run)
{
    benchCases().push_back({std::move(name), std::move(run)});
}

namespace {

bool stockWanted = true;

std::vector<std::function<void()>> &endings()
{
    static std::vector<std::function<void()>> list;
    return list;
}

} // namespace

void atBenchEnd(std::function<void()> letGo)
{
    endings().push_back(std::move(letGo));
}

bool isStockWanted()
{
    return stockWanted;
}

double stockSecondsOf(const std::function<void()> &work)
{
    return stockWanted ? secondsOf(work) : 0;
}

double secondsOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return static_cast<double>(timer.nsecsElapsed()) * 1e-9;
}

double medianOf(int rounds, const std::function<double()> &measure)
{
    std::vector<double> results;
    for (int i = 0; i < std::max(rounds, 1); ++i)
        results.push_back(measure());
    std::sort(results.begin(), results.end());
    const std::size_t middle = results.size() / 2;
    return results.size() % 2 == 1 ? results[middle] : (results[middle - 1] + results[middle]) / 2;
}

namespace {

long long recordsOf(const BenchRow &row)
{
    return row.records > 0 ? row.records : row.n;
}

void printRow(const BenchRow &row, bool quick)
{
    std::printf("%-26s %10lld of %10lld  %14.6g %-10s", row.name.c_str(), row.n, recordsOf(row), row.ours,
                row.unit.c_str());
    if (row.stock > 0)
        std::printf(" stock %14.6g  ratio %10.4g", row.stock, row.ratio);
    if (quick)
        std::printf("  (quick)");
    std::printf("\n");
    std::fflush(stdout);
}

/// A short run says so, beside its smaller n and its fewer records.
QJsonObject toJson(const BenchRow &row, bool quick)
{
    return {{"name", QString::fromStdString(row.name)},
            {"n", row.n},
            {"records", recordsOf(row)},
            {"quick", quick},
            {"unit", QString::fromStdString(row.unit)},
            {"ours", row.ours},
            {"stock", row.stock},
            {"ratio", row.ratio}};
}

bool wanted(const std::string &name, const QStringList &chosen)
{
    return chosen.isEmpty() || std::any_of(chosen.begin(), chosen.end(), [&](const QString &prefix) {
               return QString::fromStdString(name).startsWith(prefix);
           });
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    bool quick = false;
    QString jsonPath;
    QStringList chosen;
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    for (int i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--quick")
            quick = true;
        else if (arguments[i] == "--ours")
            stockWanted = false;
        else if (arguments[i] == "--json" && i + 1 < arguments.size())
            jsonPath = arguments[++i];
        else if (!arguments[i].startsWith('-'))
            chosen << arguments[i];
        else {
            std::fprintf(stderr,
                         "unknown option %s; usage: scripts/bench [--quick] [--ours] [--json FILE] [NAME ...]\n",
                         qUtf8Printable(arguments[i]));
            return 2;
        }
    }

    QJsonArray rows;
    for (const BenchCase &benchCase : benchCases()) {
        if (!wanted(benchCase.name, chosen))
            continue;
        for (const BenchRow &row : benchCase.run(quick)) {
            printRow(row, quick);
            rows.append(toJson(row, quick));
        }
    }
    for (const std::function<void()> &letGo : endings())
        letGo();
    if (rows.isEmpty()) {
        std::fprintf(stderr, "no benchmark of that name\n");
        return 2;
    }
    if (!jsonPath.isEmpty()) {
        QFile file(jsonPath);
        const QByteArray text = QJsonDocument(rows).toJson();
        if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
            std::fprintf(stderr, "%s: %s\n", qUtf8Printable(jsonPath), qUtf8Printable(file.errorString()));
            return 2;
        }
    }
    return 0;
}
