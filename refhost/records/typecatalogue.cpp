#include "records/typecatalogue.h"

#include <map>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

#include "records/standardtypes.h"

namespace refhost {

namespace {

struct EnumText
{
    int forTraders = Everybody;
    QString text;
};
using EnumTexts = std::unordered_map<int, std::vector<EnumText>>;

} // namespace

struct TypeCatalogue::Contents
{
    mutable std::shared_mutex mutex;                      ///< guards everything below
    std::vector<std::unique_ptr<const RecordType>> types; ///< all ever registered, so that old records stay valid
    std::unordered_map<int, const RecordType *> typeOfMeta;
    std::unordered_map<const kdservice::FieldDes *, Entry> fields;
    std::map<std::string, EnumTexts> enums;
};

bool traderFits(int traders, int traderType)
{
    return traders == Everybody || (traders & traderType) != 0;
}

TypeCatalogue &TypeCatalogue::instance()
{
    // Never destroyed: records may be read by threads that outlive main().
    static TypeCatalogue *catalogue = new TypeCatalogue;
    return *catalogue;
}

TypeCatalogue::TypeCatalogue() : contents(std::make_unique<Contents>())
{
    for (const TypeDef &def : standardTypes())
        registerType(def);
    for (const auto &[name, items] : standardEnums())
        registerEnum(name, items);
}

TypeCatalogue::~TypeCatalogue() = default;

const RecordType *TypeCatalogue::registerType(const TypeDef &def)
{
    auto made = std::make_unique<const RecordType>(def);
    const RecordType *type = made.get();
    const std::unique_lock<std::shared_mutex> lock(contents->mutex);
    contents->types.push_back(std::move(made));
    contents->typeOfMeta[type->metaId()] = type;
    for (const auto &[id, field] : type->fields())
        contents->fields[field] = {type, type->fieldDef(field)};
    return type;
}

void TypeCatalogue::registerEnum(const std::string &name, const std::vector<EnumItem> &items)
{
    EnumTexts texts;
    for (const EnumItem &item : items)
        texts[item.value].push_back({item.forTraders, QString::fromUtf8(item.text)});
    const std::unique_lock<std::shared_mutex> lock(contents->mutex);
    contents->enums[name] = std::move(texts);
}

const RecordType *TypeCatalogue::findType(int metaId) const
{
    const std::shared_lock<std::shared_mutex> lock(contents->mutex);
    const auto found = contents->typeOfMeta.find(metaId);
    return found == contents->typeOfMeta.end() ? nullptr : found->second;
}

TypeCatalogue::Entry TypeCatalogue::findField(const kdservice::FieldDes *field) const
{
    const std::shared_lock<std::shared_mutex> lock(contents->mutex);
    const auto found = contents->fields.find(field);
    return found == contents->fields.end() ? Entry() : found->second;
}

QString TypeCatalogue::enumText(const std::string &name, int value, int traderType) const
{
    const std::shared_lock<std::shared_mutex> lock(contents->mutex);
    const auto found = contents->enums.find(name);
    if (found == contents->enums.end())
        return {};
    const auto texts = found->second.find(value);
    if (texts == found->second.end())
        return {};
    for (const EnumText &text : texts->second)
        if (traderFits(text.forTraders, traderType))
            return text.text;
    return {};
}

} // namespace refhost
