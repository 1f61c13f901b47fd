#pragma once

namespace KV {

/// How a price ladder is laid out. Accounts other than stock and option ones always get the ordinary layout.
enum EQuoteType : int
{
    QuoteLevel2Vertical = 0,
    QuoteLevel2Horizontal = 1,
    QuoteNormal = 2
};

} // namespace KV
