#pragma once

#include "trading/desktypes.h"

class QSqlQuery;

namespace trading {

/// How orders and deals stand in a row of their tables.
namespace deskrows {

/// The columns in the order in which the functions below take and give them.
extern const char *const orderColumns;
extern const char *const dealColumns;

void bind(QSqlQuery &query, const PaperOrder &order);
void bind(QSqlQuery &query, const PaperDeal &deal);
/// Of the row at which the query stands.
void read(const QSqlQuery &query, PaperOrder &order);
void read(const QSqlQuery &query, PaperDeal &deal);

} // namespace deskrows

} // namespace trading
