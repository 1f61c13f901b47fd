#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>
#include <boost/make_shared.hpp>
#include <boost/shared_ptr.hpp>
#include <string>

#include "model/chpfdata.h"
#include "model/chpfdatamodel.h"
#include "records/record.h"

/// Record types made for the tests, small enough to be read at a glance, and how rows and models print.
namespace testrecords {

enum MetaId : int
{
    MetaTicket = 990001, ///< every kind of value, and two nested records
    MetaInner = 990002,  ///< nested in a ticket, twice
    MetaCore = 990003,   ///< nested in an inner record
    MetaWide = 990004,   ///< more columns than a ticket has
    MetaNames = 990005   ///< texts whose column names have hyphens
};

/// Small, so that they can be mistaken for columns.
enum FieldId : int
{
    TicketLots = 3,   ///< int, summed
    TicketLeft = 4,   ///< nested, MetaInner
    TicketVolume = 5, ///< 64-bit int, summed
    TicketValue = 6,  ///< double with two decimals, summed
    TicketSide = 7,   ///< code, enumeration "testside", coloured by side
    TicketText = 8,   ///< text
    TicketOpen = 9,   ///< bool
    TicketRight = 10, ///< nested, MetaInner
    InnerPrice = 21,  ///< double with three decimals
    InnerShared = 22, ///< int, summed
    InnerCore = 23,   ///< nested, MetaCore
    CoreDeep = 31,    ///< int
    WideFirst = 1001, ///< int; WideFirst + n for n below wideColumns
    NameFirst = 2001  ///< text
};
constexpr int wideColumns = 12;

/// Columns of a ticket, in order.
enum TicketColumn : int
{
    ColumnText,
    ColumnSide,
    ColumnLots,
    ColumnVolume,
    ColumnValue,
    ColumnOpen,
    ColumnPrice,
    ColumnShared,
    ticketColumns
};

using RecordPtr = boost::shared_ptr<kdservice::IData>;
using PlainPtr = boost::shared_ptr<refhost::PlainRecord>;
using ModelPtr = boost::shared_ptr<KV::CHpfDataModel>;

/// Registers the types, once.
void registerTypes();
/// Without values.
PlainPtr makeTicket(const std::string &key);
/// With values in all of its own fields that follow from the number.
PlainPtr fullTicket(const std::string &key, int number);
PlainPtr makeInner(double price, int shared);

/// The texts of all columns, separated by "|".
std::string rowText(const KV::CHpfDataModel &model, ZB::IBaseHpfTableData &row);
/// Keys of the rows that pass the filters, in their order, separated by blanks.
std::string shownKeys(const KV::CHpfDataModel &model);
/// The last part of a colour's key among those that rows use ("default", "rise", "fall", "equal", "second"); "?" for
/// any other.
std::string colorName(const QColor *color);

boost::shared_ptr<KV::CHpfData> makeRow(const ModelPtr &model, const RecordPtr &record);

/// A model that is emptied when the test ends, so that rows and model let go of each other.
template <typename Model = KV::CHpfDataModel>
class Guarded
{
public:
    explicit Guarded(int metaId = MetaTicket, kdservice::EVxTraderType traderType = kdservice::TraderStock)
    {
        registerTypes();
        model = boost::make_shared<Model>(metaId, traderType);
    }
    ~Guarded() { model->clear(); }
    Guarded(const Guarded &) = delete;
    Guarded &operator=(const Guarded &) = delete;

    Model *operator->() const { return model.get(); }
    Model &operator*() const { return *model; }
    const boost::shared_ptr<Model> &pointer() const { return model; }

private:
    boost::shared_ptr<Model> model;
};

} // namespace testrecords
