#pragma once

#include <memory>
#include <random>
#include <vector>

#include "benchcase.h"
#include "ourtable.h"
#include "stocktable.h"

namespace bench {

/// The records of a run and both tables over them. One for the whole program: a million rows are made once.
class TableSetting
{
public:
    /// The one of this run. quick: few rows; only the first call decides.
    static TableSetting &instance(bool quick);

    int count() const { return rowCount; }
    const std::vector<OrderPtr> &orders() const { return list; }
    Records records() const { return Records(list.begin(), list.end()); }

    /// Loaded on first use.
    OurTable &ours();
    StockTable &stock();
    /// Takes tables away that have got other rows than those of orders().
    void letGo();
    /// Both by falling price.
    void sortByPrice();

    /// New records for keys drawn at random.
    using Change = OrderPtr (*)(const OrderPtr &order, std::mt19937 &random);
    std::vector<OrderPtr> changed(int howMany, Change change);
    std::vector<OrderPtr> changed(const std::vector<std::size_t> &drawn, Change change);
    /// Places in orders().
    std::vector<std::size_t> drawn(int howMany);
    /// Some of the records, from first to last.
    Records sample() const;
    /// Records under new keys.
    std::vector<OrderPtr> added(int howMany);

    /// A figure that is the better the smaller it is; says how many records the tables had.
    BenchRow row(const char *name, long long n, const char *unit, double ours, double stock) const;
    BenchRow milliseconds(const char *name, long long n, double ourSeconds, double stockSeconds) const;

    static constexpr int batch = 2000;

private:
    explicit TableSetting(int rows);

    int rowCount;
    std::mt19937 random;
    std::vector<OrderPtr> list;
    std::unique_ptr<OurTable> ourTable;
    std::unique_ptr<StockTable> stockTable;
    int nextNew = 0;
};

/// A figure that is the better the smaller it is.
BenchRow smallerIsBetter(const char *name, long long n, const char *unit, double ours, double stock);

constexpr double toMilliseconds = 1e3;

} // namespace bench
