#pragma once

#include <boost/shared_ptr.hpp>
#include <string>

#include "records/recordtype.h"

namespace refhost {

/// The values of one record: a flat block behind a type description, with the key in front of it, since whoever takes a
/// change reads the key first and few of the values.
///
/// Threading: every call from any thread. Numbers, codes and shared texts are atomics (a read costs what a plain read
/// costs); own texts are guarded by one of 64 locks that all records share, about 20 ns a read. Each field changes at
/// once; several fields of a record do not change together. setNested() only before the record is handed over.
class REFHOST_API FieldBlock
{
public:
    /// memory: bytesFor(type, key.size()) bytes, aligned for a pointer; outlives the block.
    FieldBlock(const RecordType &type, const std::string &key, void *memory);
    /// The values and the key of another block.
    FieldBlock(const FieldBlock &other, void *memory);
    ~FieldBlock();
    FieldBlock(const FieldBlock &) = delete;
    FieldBlock &operator=(const FieldBlock &) = delete;

    static std::size_t bytesFor(const RecordType &type, std::size_t keyLength);
    std::size_t bytes() const { return bytesFor(recordType, keyLength); }

    const RecordType &type() const { return recordType; }
    std::string key() const;
    quint64 hashKey() const { return hash; }

    int getInt(int id) const;
    qint64 getLong(int id) const;
    double getDouble(int id) const;
    std::string getString(int id) const;
    bool getBool(int id) const;
    boost::shared_ptr<kdservice::IData> getNested(int id) const;

    /// A value goes to a field of its own type or of a wider number type (int to long or double, "no value" staying
    /// that); an integer or a text of one character goes to a code. Anything else, or an unknown id, is ignored.
    void set(int id, int value);
    void set(int id, qint64 value);
    void set(int id, double value);
    void set(int id, bool value);
    void set(int id, const std::string &value);
    void setNested(int id, boost::shared_ptr<kdservice::IData> record);

private:
    template <typename T>
    T *at(const FieldSlot &slot) const
    {
        return reinterpret_cast<T *>(memory + slot.offset);
    }
    const FieldSlot *find(int id, FieldSlot::Store store) const;
    const char *keyText() const;
    void initialise();
    void copyValues(const FieldBlock &other);
    void setChar(const FieldSlot &slot, int code);

    const RecordType &recordType;
    unsigned char *memory; ///< the values
    quint64 hash;
    std::uint32_t keyLength;
};

} // namespace refhost
