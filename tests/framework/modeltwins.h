#pragma once

#include "plainmodel.h"

namespace modeltest {

/// One table twice: the model under test and the plain one, changed alike by whoever makes the choices.
class ModelTwins
{
public:
    /// below(n): the next choice, at least 0 and less than n, which is 256 at most.
    ModelTwins(Choice below, int keyCount);

    /// Adds rows under keys of their own, which are changed too from then on.
    void fill(int rowCount);
    void changeSomething();
    /// How the model under test differs from the plain one; empty when it does not.
    QString difference() const;

private:
    QString differenceOfRows(const QStringList &shown) const;
    QString differenceOfLookUps() const;
    static std::string filledKey(int number);
    std::string key() const;
    void putOne();
    void changeInPlace();
    void enableSum(int column, bool enable);
    void sumAnew();
    void changeAndCancel();
    void putMany();
    void removeSome();
    void clear();
    void sort();
    void filter();

    const Choice below;
    const int keyCount;
    int filledRows = 0;
    ValueModel model;
    PlainModel plain;
};

} // namespace modeltest
