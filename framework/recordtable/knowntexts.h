#pragma once

#include "popups/distincttexts.h"

namespace ZB {

/// The texts of a filter box, gathered beforehand.
class KnownTexts : public DistinctTexts
{
public:
    explicit KnownTexts(std::vector<Value> values);
    ~KnownTexts() override;

    bool step(int milliseconds) override;
    int progress() const override;
    const std::vector<Value> &values() const override;
    bool isTruncated() const override;

private:
    const std::vector<Value> known;
};

} // namespace ZB
