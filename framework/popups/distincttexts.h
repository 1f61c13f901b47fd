#pragma once

#include <QtCore/QString>
#include <vector>

#include "frameworkexport.h"

namespace ZB {

/// The different texts of one column and how often each occurs, as its filter box offers them. GUI thread.
class FRAMEWORK_API DistinctTexts
{
public:
    struct Value
    {
        QString text;
        int count = 0;
    };

    DistinctTexts();
    virtual ~DistinctTexts();

    DistinctTexts(const DistinctTexts &) = delete;
    DistinctTexts &operator=(const DistinctTexts &) = delete;

    /// Works for about so long; true when finished.
    virtual bool step(int milliseconds) = 0;
    /// In thousandths.
    virtual int progress() const = 0;
    /// Once finished: in ascending order of the values, each text once.
    virtual const std::vector<Value> &values() const = 0;
    /// There are more texts than were collected.
    virtual bool isTruncated() const = 0;
};

} // namespace ZB
