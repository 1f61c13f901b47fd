#pragma once

#include <QtCore/QString>
#include <boost/shared_ptr.hpp>
#include <set>
#include <string>
#include <vector>

#include "hostexport.h"
#include "kdservice/evxtradertype.h"
#include "kdservice/fielddes.h"

namespace kdservice {

class IData;

/// The process-wide catalogue of record types: which fields exist, what they are called, how enumerations read.
/// Implemented by the host. Threading: every call may come from any thread.
class HOST_API TypeManager
{
public:
    using FieldSet = std::set<FieldDes *, FieldDes::classCompare>;

    static TypeManager *instance();

    /// The fields that are the columns of a table showing records of these types for a trader type, in column order.
    /// Fields of nested records are among them where the catalogue says so. Empty for unknown types.
    FieldSet getAllFields(const std::vector<int> &metaIds, EVxTraderType traderType) const;
    /// What users of a trader type read for a field; empty for a field that the catalogue does not hold.
    QString getFieldChsNameByType(const FieldDes *field, EVxTraderType traderType) const;
    bool getFieldVisibleByType(const FieldDes *field, EVxTraderType traderType) const;
    /// The text of an enumerated value; empty for an unknown enumeration or value.
    QString getEnumItemName(const std::string &enumName, int value, EVxTraderType traderType) const;
    /// Follows nested-record fields from a record inwards; empty when one on the way is missing.
    boost::shared_ptr<IData> getLastIData(boost::shared_ptr<IData> record, const std::vector<int> &path) const;

    TypeManager(const TypeManager &) = delete;
    TypeManager &operator=(const TypeManager &) = delete;

private:
    TypeManager();
    ~TypeManager();
};

} // namespace kdservice
