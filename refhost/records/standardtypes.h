#pragma once

#include <utility>
#include <vector>

#include "records/typecatalogue.h"

namespace refhost {

/// Whether a set of traders (TraderSet) has a trader type (kdservice::EVxTraderType) in it.
bool traderFits(int traders, int traderType);

/// What the catalogue starts with.
std::vector<TypeDef> standardTypes();
std::vector<std::pair<std::string, std::vector<EnumItem>>> standardEnums();

std::vector<TypeDef> orderTypes();   ///< MetaMarketOrder, MetaOwnOrder
std::vector<TypeDef> dealTypes();    ///< MetaMarketDeal, MetaOwnDeal
std::vector<TypeDef> accountTypes(); ///< MetaInstrument, MetaPosition, MetaFunds
std::vector<TypeDef> quoteTypes();   ///< MetaQuote

/// Display functions that many fields have in common.
namespace display {
using Funcs = kdservice::FieldDes::FuncTable;
/// A text from an enumeration.
Funcs enumeration(const char *name);
/// A buy or a sell, in its colour.
Funcs direction();
/// An order's status, dimmed where it ended without a full fill.
Funcs status();
/// "time", "timems", "date" or "datetime".
Funcs time(const char *part);
/// A price with its instrument's decimals; coloured against the previous close where asked for.
Funcs price();
Funcs comparedPrice();
/// A number in the colour of its sign; one of a price with its instrument's decimals.
Funcs change();
Funcs priceChange();
} // namespace display

} // namespace refhost
