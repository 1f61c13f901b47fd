#pragma once

#include <QtCore/QMap>
#include <QtCore/QSet>
#include <QtCore/QVector>
#include <map>
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

    void put(const std::string &key, const Record &record);
    void remove(const std::string &key);

    bool passes(const Record &record) const;
    std::vector<Row> sorted() const;
    QString shownKeys() const;
    QString allKeys() const;
    double sumOf(int column) const;

    /// The custom order of these tests: by the length of the name.
    static int compareCustom(const Record &a, const Record &b);

private:
    int compare(const Record &a, const Record &b) const;
};

Record randomRecord(std::mt19937_64 &random);

} // namespace modeltest
