#pragma once

#include <QtCore/QString>

class QSqlDatabase;
class QSqlError;

namespace trading {

/// The tables of a desk file. Prices, money and times are the whole numbers of the desk's types; orders and deals keep
/// all days, under dense numbers from 1, so that the row with number n is the n-th.
namespace deskschema {

/// What a desk file of this program says it is; a newer one is not touched.
constexpr int version = 2;

/// Makes the tables in an empty file, and checks those of an old one and brings them up to this version. The text tells
/// what is wrong, empty for nothing.
QString prepare(QSqlDatabase &database);
/// An error of the database in words for the user.
QString problemText(const QSqlError &error);

} // namespace deskschema

} // namespace trading
