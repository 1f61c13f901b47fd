#pragma once

#include <QtCore/QRect>
#include <array>
#include <optional>
#include <vector>

#include "kv/epricetype.h"
#include "uicontrolexport.h"

namespace KV {

/// What a click on the last painted picture of a ladder means. Areas may overlap; in each list the first one counts.
/// Part of CQuotesGraphWidget, of no use by itself.
struct UICONTROL_API QuoteClickAreas
{
    struct PriceType
    {
        QRect rect;
        int type = PriceLimit;
    };
    struct Value
    {
        QRect rect;
        double value = 0;
    };
    /// level: from 1; 0 for all levels.
    struct Cancel
    {
        static constexpr int buying = 48;
        static constexpr int selling = 49;

        QRect rect;
        int side = 0;
        int level = 0;
    };
    /// What lies at one point.
    struct Hit
    {
        std::optional<double> volume;
        std::optional<double> price;
        std::optional<int> priceType;
        std::vector<Cancel> cancels; ///< the first of the levels', then the buttons
    };

    std::vector<PriceType> priceTypes;
    std::vector<Value> prices;
    std::vector<Value> volumes;
    std::vector<Cancel> cancels;
    std::array<Cancel, 2> cancelButtons;

    void clear();
    Hit at(const QPoint &point) const;
    /// Whether a click on this point means anything.
    bool contains(const QPoint &point) const;
};

} // namespace KV
