#pragma once

#include "records/fieldblock.h"

namespace refhost {

/// Answers the record interface from a FieldBlock. `Base` is the contract's class of the kind of record.
template <typename Base>
class RecordOf : public Base
{
public:
    RecordOf(const RecordType &type, const std::string &key, void *memory) : block(type, key, memory) {}
    RecordOf(const RecordOf &other, void *memory) : block(other.block, memory) {}

    int getInt(int id) const override { return block.getInt(id); }
    qint64 getLong(int id) const override { return block.getLong(id); }
    double getDouble(int id) const override { return block.getDouble(id); }
    std::string getString(int id) const override { return block.getString(id); }
    bool getBool(int id) const override { return block.getBool(id); }
    boost::shared_ptr<kdservice::IData> getIData(int id) const override { return block.getNested(id); }
    std::string getKey() const override { return block.key(); }
    quint64 hashKey() const override { return block.hashKey(); }
    int getBaseId() const override { return block.type().metaId(); }
    const kdservice::IData::FieldMap &getFieldDes() const override { return block.type().fields(); }
    const kdservice::FieldDes *getFieldDes(int id) const override { return block.type().field(id); }

    void setData(int id, const int &value) override { block.set(id, value); }
    void setData(int id, const qint64 &value) override { block.set(id, value); }
    void setData(int id, const double &value) override { block.set(id, value); }
    void setData(int id, const bool &value) override { block.set(id, value); }
    void setData(int id, const std::string &value) override { block.set(id, value); }
    /// Keeps a text literal from being taken for a bool.
    void setData(int id, const char *value) { block.set(id, std::string(value)); }
    /// Only before the record is handed over.
    void setNested(int id, boost::shared_ptr<kdservice::IData> record) { block.setNested(id, std::move(record)); }

    const FieldBlock &values() const { return block; }

protected:
    FieldBlock block;
};

} // namespace refhost
