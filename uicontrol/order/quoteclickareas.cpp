#include "order/quoteclickareas.h"

#include <algorithm>

namespace KV {

namespace {

template <typename Area>
const Area *firstAt(const std::vector<Area> &areas, const QPoint &point)
{
    const auto found =
        std::find_if(areas.begin(), areas.end(), [&](const Area &area) { return area.rect.contains(point); });
    return found == areas.end() ? nullptr : &*found;
}

} // namespace

void QuoteClickAreas::clear()
{
    *this = QuoteClickAreas();
}

QuoteClickAreas::Hit QuoteClickAreas::at(const QPoint &point) const
{
    Hit hit;
    if (const Value *volume = firstAt(volumes, point))
        hit.volume = volume->value;
    if (const Value *price = firstAt(prices, point))
        hit.price = price->value;
    if (const PriceType *type = firstAt(priceTypes, point))
        hit.priceType = type->type;
    if (const Cancel *cancel = firstAt(cancels, point))
        hit.cancels.push_back(*cancel);
    for (const Cancel &button : cancelButtons)
        if (button.rect.contains(point))
            hit.cancels.push_back(button);
    return hit;
}

bool QuoteClickAreas::contains(const QPoint &point) const
{
    const Hit hit = at(point);
    return hit.volume || hit.price || hit.priceType || !hit.cancels.empty();
}

} // namespace KV
