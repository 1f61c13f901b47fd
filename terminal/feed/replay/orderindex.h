#pragma once

#include <QtGlobal>

#include <vector>

namespace feed {

/// From an exchange's order number to the order's place. Numbers are unique in a number space, which is an exchange's
/// channel on one day. An open table of 16 bytes a slot, at most three quarters full.
class OrderIndex
{
public:
    /// The place of this order, or -1.
    int find(int numberSpace, qint64 orderNo) const;
    /// Adds an order that is not there yet.
    void insert(int numberSpace, qint64 orderNo, int place);

private:
    struct Slot
    {
        qint64 orderNo = 0;
        int numberSpace = 0;
        int place = -1;
    };

    size_t slotFor(int numberSpace, qint64 orderNo) const;
    void grow();

    std::vector<Slot> table;
    size_t used = 0;
};

} // namespace feed
