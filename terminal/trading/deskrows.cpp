#include "trading/deskrows.h"

#include <QtCore/QVariant>
#include <QtSql/QSqlQuery>

namespace trading::deskrows {

namespace {

/// Binds the values of a row one after the other.
class Binder
{
public:
    explicit Binder(QSqlQuery &bound) : query(bound) {}

    Binder &operator<<(const std::string &text)
    {
        query.bindValue(place++, QString::fromStdString(text));
        return *this;
    }
    Binder &operator<<(qint64 number)
    {
        query.bindValue(place++, number);
        return *this;
    }
    template <typename Code>
    Binder &code(Code value)
    {
        return *this << qint64(value);
    }

private:
    QSqlQuery &query;
    int place = 0;
};

/// Reads the values of a row one after the other.
class Reader
{
public:
    explicit Reader(const QSqlQuery &row) : query(row) {}

    Reader &operator>>(std::string &text)
    {
        text = query.value(place++).toString().toStdString();
        return *this;
    }
    Reader &operator>>(qint64 &number)
    {
        number = query.value(place++).toLongLong();
        return *this;
    }
    Reader &operator>>(int &number)
    {
        number = query.value(place++).toInt();
        return *this;
    }
    template <typename Code>
    Reader &code(Code &value)
    {
        value = static_cast<Code>(query.value(place++).toInt());
        return *this;
    }

private:
    const QSqlQuery &query;
    int place = 0;
};

} // namespace

const char *const orderColumns =
    "id, account, code, name, exchange, day, side, offset, price, quantity, cancelled, filled, amount, filled_today,"
    " amount_today, commission, stamp_duty, transfer_fee, held_old, held_today, status, entry_time, update_time,"
    " remark";

const char *const dealColumns = "id, order_id, account, code, name, exchange, day, side, offset, price, quantity,"
                                " amount, commission, stamp_duty, transfer_fee, realised, time";

void bind(QSqlQuery &query, const PaperOrder &order)
{
    Binder row(query);
    row << order.id << order.account << order.code << order.name << order.exchange << order.day;
    row.code(order.side).code(order.offset);
    row << order.price << order.quantity << order.cancelled << order.filled.quantity << order.filled.amount
        << order.filled.todayQuantity << order.filled.todayAmount << order.charges.commission << order.charges.stampDuty
        << order.charges.transferFee << order.heldOld << order.heldToday;
    row.code(order.status) << order.entryTime << order.updateTime << order.remark;
}

void bind(QSqlQuery &query, const PaperDeal &deal)
{
    Binder row(query);
    row << deal.id << deal.order << deal.account << deal.code << deal.name << deal.exchange << deal.day;
    row.code(deal.side).code(deal.offset);
    row << deal.price << deal.quantity << deal.amount << deal.charges.commission << deal.charges.stampDuty
        << deal.charges.transferFee << deal.realised << deal.time;
}

void read(const QSqlQuery &query, PaperOrder &order)
{
    Reader row(query);
    row >> order.id >> order.account >> order.code >> order.name >> order.exchange >> order.day;
    row.code(order.side).code(order.offset);
    row >> order.price >> order.quantity >> order.cancelled >> order.filled.quantity >> order.filled.amount >>
        order.filled.todayQuantity >> order.filled.todayAmount >> order.charges.commission >> order.charges.stampDuty >>
        order.charges.transferFee >> order.heldOld >> order.heldToday;
    row.code(order.status) >> order.entryTime >> order.updateTime >> order.remark;
}

void read(const QSqlQuery &query, PaperDeal &deal)
{
    Reader row(query);
    row >> deal.id >> deal.order >> deal.account >> deal.code >> deal.name >> deal.exchange >> deal.day;
    row.code(deal.side).code(deal.offset);
    row >> deal.price >> deal.quantity >> deal.amount >> deal.charges.commission >> deal.charges.stampDuty >>
        deal.charges.transferFee >> deal.realised >> deal.time;
}

} // namespace trading::deskrows
