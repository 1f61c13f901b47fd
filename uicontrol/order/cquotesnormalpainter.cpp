#include "order/cquotesnormalpainter.h"

namespace KV {

CQuotesNormalPainter::~CQuotesNormalPainter() = default;

/// A ladder too low for a line of its own says it in the place of the change.
void CQuotesNormalPainter::drawAge()
{
    if (!layout.age.isEmpty())
        CQuotesPainter::drawAge();
    else
        drawValue(layout.change, view.age, *look.warning, Kind::Plain, 0);
}

} // namespace KV
