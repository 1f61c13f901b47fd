#pragma once

#include <map>
#include <string>
#include <vector>

#include "pagerecords.h"

namespace pagetest {

/// The paged model as one would write it down: two plain vectors, everything looked for from the front, nothing shared
/// with the real one. Records are copies of the values as they were handed in.
class SlowPageModel
{
public:
    struct Record
    {
        std::string key;
        Values values;
        const void *object = nullptr; ///< which host record it is
        int dataSeq = 0;
    };

    bool append = false;
    int sortColumn = -1;
    int sortOrder = 0;
    int status = 1;
    std::string search;
    std::map<int, std::pair<int, std::vector<std::string>>> filters; ///< column to type and display texts

    std::vector<Record> all;
    std::vector<Record> visible;
    bool countChanged = false;

    void add(Record record);
    void remove(const std::string &key);
    void clear();
    void sort(int column, int order);
    void rebuild();
    void dropFilters();

    bool passesExtra(const Record &record) const;
    bool passes(const Record &record) const;
    int compare(const Record &a, const Record &b) const;
    /// Of the finite values of a number column over the visible list, the largest of the type not among them.
    double sum(int column) const;
    /// Where the key stands, -1 for nowhere; where a record would be put.
    int find(const std::vector<Record> &list, const std::string &key) const;
    int insertIndex(const std::vector<Record> &list, const Record &record) const;

    static std::string keys(const std::vector<Record> &list);

private:
    int counter = 0;

    void relocate(std::vector<Record> &list, int index);
    void place(std::vector<Record> &list, const Record &record, bool atEnd);
};

} // namespace pagetest
