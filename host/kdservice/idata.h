#pragma once

#include <QtCore/qglobal.h>
#include <boost/shared_ptr.hpp>
#include <map>
#include <string>

#include "hostexport.h"

namespace kdservice {

struct FieldDes;

/// One business record: an order, a deal, a position, an account. Fields are addressed by id; a field that the record
/// does not have, or that holds another type, answers with "no value" (the largest value of the type, an empty text,
/// false, an empty pointer).
///
/// Threading: every call may come from any thread; a record that changes while others read it locks for itself.
/// Ownership: held by boost::shared_ptr everywhere.
class HOST_API IData
{
public:
    using FieldMap = std::map<int, FieldDes *>;

    IData();
    virtual ~IData();

    IData(const IData &) = delete;
    IData &operator=(const IData &) = delete;

    virtual int getInt(int id) const = 0;
    virtual qint64 getLong(int id) const = 0;
    virtual double getDouble(int id) const = 0;
    /// UTF-8.
    virtual std::string getString(int id) const = 0;
    virtual bool getBool(int id) const = 0;
    /// The nested record of a field of type ExtData.
    virtual boost::shared_ptr<IData> getIData(int id) const = 0;

    /// Unique among the records of one kind; never changes while the record lives.
    virtual std::string getKey() const = 0;
    /// hashOfKey(getKey()) unless overridden by a record that keeps it.
    virtual quint64 hashKey() const;
    /// The record's meta (type) id.
    virtual int getBaseId() const = 0;

    /// All fields of the record, ascending by id; one map shared by all records of a type.
    virtual const FieldMap &getFieldDes() const = 0;
    /// Null for an id that the record does not have.
    virtual const FieldDes *getFieldDes(int id) const = 0;

    /// A field that the record does not have, or whose type cannot take the value, is left as it is. Not for text
    /// literals, which C++ hands to the form for bool: std::string("...").
    virtual void setData(int id, const int &value) = 0;
    virtual void setData(int id, const qint64 &value) = 0;
    virtual void setData(int id, const double &value) = 0;
    virtual void setData(int id, const bool &value) = 0;
    virtual void setData(int id, const std::string &value) = 0;
};

} // namespace kdservice
