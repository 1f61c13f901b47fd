#pragma once

#include <QtCore/QString>
#include <memory>
#include <string>
#include <vector>

#include "records/recordtype.h"

namespace refhost {

/// One value of an enumeration and what users read for it.
struct EnumItem
{
    int value = 0;
    const char *text = "";      ///< UTF-8
    int forTraders = Everybody; ///< TraderSet; the first item of a value that fits counts
};

/// Holds what kdservice::TypeManager answers with. Starts with the types of fieldids.h; a program or a test adds its
/// own. Any thread.
class REFHOST_API TypeCatalogue
{
public:
    static TypeCatalogue &instance();

    /// Adds a type, or replaces the one of that meta id for later look-ups; what was made from the old one stays valid.
    /// Fields of one id twice: the first counts.
    const RecordType *registerType(const TypeDef &def);
    void registerEnum(const std::string &name, const std::vector<EnumItem> &items);

    /// Null for an unknown id. Takes a shared lock: who makes many records keeps the pointer.
    const RecordType *findType(int metaId) const;
    /// The type and the line of the table that a description belongs to; nulls when it is not the catalogue's.
    struct Entry
    {
        const RecordType *type = nullptr;
        const FieldDef *def = nullptr;
    };
    Entry findField(const kdservice::FieldDes *field) const;
    /// Empty when unknown.
    QString enumText(const std::string &name, int value, int traderType) const;

    TypeCatalogue(const TypeCatalogue &) = delete;
    TypeCatalogue &operator=(const TypeCatalogue &) = delete;

private:
    TypeCatalogue();
    ~TypeCatalogue();
    struct Contents;
    std::unique_ptr<Contents> contents;
};

} // namespace refhost
