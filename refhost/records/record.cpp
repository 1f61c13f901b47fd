#include "records/record.h"

#include <boost/smart_ptr/make_shared.hpp>
#include <new>

namespace refhost {

namespace {

/// What a record's allocation is asked for and where its values end up.
struct BlockPlace
{
    std::size_t bytes = 0;
    void *memory = nullptr;
};

/// Allocates room for a record's values behind the record, so that both are one allocation.
template <typename T>
class TailAllocator
{
public:
    using value_type = T;

    explicit TailAllocator(BlockPlace &target) : place(&target) {}
    template <typename Other>
    TailAllocator(const TailAllocator<Other> &other) : place(other.place)
    {
    }

    T *allocate(std::size_t count)
    {
        static_assert(alignof(T) <= alignof(std::max_align_t) && sizeof(T) % alignof(void *) == 0);
        auto *memory = static_cast<unsigned char *>(::operator new(sizeof(T) * count + place->bytes));
        place->memory = memory + sizeof(T) * count;
        return reinterpret_cast<T *>(memory);
    }
    void deallocate(T *memory, std::size_t) noexcept { ::operator delete(memory); }

    template <typename Other>
    bool operator==(const TailAllocator<Other> &) const
    {
        return true;
    }
    template <typename Other>
    bool operator!=(const TailAllocator<Other> &) const
    {
        return false;
    }

    BlockPlace *place; ///< used while allocating only
};

template <typename T>
boost::shared_ptr<T> make(const RecordType &type, const std::string &key)
{
    BlockPlace place{FieldBlock::bytesFor(type, key.size())};
    // The constructor's argument is read after the allocation has filled it in.
    return boost::allocate_shared<T>(TailAllocator<T>(place), type, key, place.memory);
}

template <typename T>
boost::shared_ptr<T> copy(const T &record)
{
    BlockPlace place{record.values().bytes()};
    return boost::allocate_shared<T>(TailAllocator<T>(place), record, place.memory);
}

template <typename T>
boost::shared_ptr<T> makeOfKind(const RecordType *type, RecordKind kind, const std::string &key)
{
    return type != nullptr && type->kind() == kind ? make<T>(*type, key) : boost::shared_ptr<T>();
}

} // namespace

boost::shared_ptr<kdservice::IData> makeRecord(const RecordType &type, const std::string &key)
{
    switch (type.kind()) {
    case RecordKind::Order:
        return make<OrderRecord>(type, key);
    case RecordKind::Deal:
        return make<DealRecord>(type, key);
    default:
        return make<PlainRecord>(type, key);
    }
}

boost::shared_ptr<kdservice::IData> makeRecord(int metaId, const std::string &key)
{
    const RecordType *type = TypeCatalogue::instance().findType(metaId);
    return type == nullptr ? boost::shared_ptr<kdservice::IData>() : makeRecord(*type, key);
}

boost::shared_ptr<OrderRecord> makeOrder(const RecordType &type, const std::string &key)
{
    return makeOfKind<OrderRecord>(&type, RecordKind::Order, key);
}

boost::shared_ptr<DealRecord> makeDeal(const RecordType &type, const std::string &key)
{
    return makeOfKind<DealRecord>(&type, RecordKind::Deal, key);
}

boost::shared_ptr<PlainRecord> makePlain(const RecordType &type, const std::string &key)
{
    return makeOfKind<PlainRecord>(&type, RecordKind::Plain, key);
}

boost::shared_ptr<OrderRecord> makeOrder(int metaId, const std::string &key)
{
    return makeOfKind<OrderRecord>(TypeCatalogue::instance().findType(metaId), RecordKind::Order, key);
}

boost::shared_ptr<DealRecord> makeDeal(int metaId, const std::string &key)
{
    return makeOfKind<DealRecord>(TypeCatalogue::instance().findType(metaId), RecordKind::Deal, key);
}

boost::shared_ptr<PlainRecord> makePlain(int metaId, const std::string &key)
{
    return makeOfKind<PlainRecord>(TypeCatalogue::instance().findType(metaId), RecordKind::Plain, key);
}

boost::shared_ptr<OrderRecord> copyOf(const OrderRecord &record)
{
    return copy(record);
}

boost::shared_ptr<DealRecord> copyOf(const DealRecord &record)
{
    return copy(record);
}

boost::shared_ptr<PlainRecord> copyOf(const PlainRecord &record)
{
    return copy(record);
}

} // namespace refhost
