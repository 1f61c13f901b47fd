#pragma once

#include <functional>
#include <string>
#include <vector>

/// One measured figure: ours and the stock Qt way over the same data in the same process. `ratio` is how many times
/// ours is better; `stock` and `ratio` are 0 where there is no stock way to compare with.
struct BenchRow
{
    std::string name;
    long long n = 0; ///< records, lines or cells that the figure stands for
    std::string unit;
    double ours = 0;
    double stock = 0;
    double ratio = 0;
    long long records = 0; ///< records or lines that were held all the while; 0 where that is n
};

/// A group of figures. `quick` asks for smaller n.
struct BenchCase
{
    std::string name; ///< prefix of the names of its rows, for choosing on the command line
    std::function<std::vector<BenchRow>(bool quick)> run;
};

/// All cases of the program, in the order in which they were linked.
std::vector<BenchCase> &benchCases();

/// A static object of this type puts a case on the list.
struct BenchRegistration
{
    BenchRegistration(std::string name, std::function<std::vector<BenchRow>(bool quick)> run);
};

/// Called once after the last case, while the application still stands: whoever keeps widgets between cases lets go of
/// them.
void atBenchEnd(std::function<void()> letGo);

/// Seconds that one call takes, steady clock.
double secondsOf(const std::function<void()> &work);
/// The same for the stock side, 0 without a call when that one was not asked for.
double stockSecondsOf(const std::function<void()> &work);
bool isStockWanted();
/// The median of `rounds` results of `measure`.
double medianOf(int rounds, const std::function<double()> &measure);
