#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QVector>
#include <functional>
#include <random>
#include <vector>

#include "modelrows.h"

namespace modeltest {

/// The same table by the plainest means: a list that is filtered, sorted and summed anew at every question.
class PlainModel
{
public:
    struct Row
    {
        std::string key;
        Record record;
    };

    bool append = true;
    std::vector<Row> rows; ///< in the order of arrival
    QVector<QPair<int, int>> sort;
    QMap<int, QVector<QPair<int, QSet<QString>>>> filters;
    QSet<int> sums; ///< columns

    void put(const std::string &key, const Record &record);
    void remove(const std::string &key);

    bool passes(const Record &record) const;
    std::vector<Row> sorted() const;
    QString shownKeys() const;
    QString allKeys() const;
    /// Exact and rounded once; of integers the end of their range where the sum lies outside. Without statistics what
    /// means that there is none.
    double realSumOf(int column) const;
    qint64 integerSumOf(int column) const;

    /// The custom order of these tests: by the length of the name.
    static int compareCustom(const Record &a, const Record &b);

private:
    int compare(const Record &a, const Record &b) const;
};

/// Makes a choice: at least 0 and less than the number given, which is 256 at most.
using Choice = std::function<int(int)>;

int choose(std::mt19937_64 &random, int limit);
/// NaN is the same as NaN.
bool sameNumber(double a, double b);

/// A record of few values, so that much of it collides, the ends of every type among them; no sum of doubles in a plain
/// loop has all of them in it.
Record chosenRecord(const Choice &below);

} // namespace modeltest
