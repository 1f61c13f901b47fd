#include "records/fieldblock.h"

#include <array>
#include <atomic>
#include <cstring>
#include <limits>
#include <memory>
#include <mutex>
#include <new>

#include "kdservice/keyhash.h"
#include "records/sharedtext.h"

namespace refhost {

namespace {

using Store = FieldSlot::Store;
using AtomicLong = std::atomic<qint64>;
using AtomicDouble = std::atomic<double>;
using AtomicInt = std::atomic<int>;
using AtomicByte = std::atomic<unsigned char>;
using AtomicText = std::atomic<const std::string *>;
using OwnText = std::unique_ptr<std::string>; ///< null for an empty text
using Nested = boost::shared_ptr<kdservice::IData>;

static_assert(sizeof(AtomicLong) == 8 && sizeof(AtomicDouble) == 8 && sizeof(AtomicInt) == 4 &&
                  sizeof(AtomicByte) == 1 && sizeof(AtomicText) == sizeof(void *) && sizeof(OwnText) == sizeof(void *),
              "the layout of a record counts on atomics of the size of their values");

constexpr int noInt = std::numeric_limits<int>::max();
constexpr qint64 noLong = std::numeric_limits<qint64>::max();
constexpr double noDouble = std::numeric_limits<double>::max();
constexpr auto relaxed = std::memory_order_relaxed;

/// In front of the values, which stay aligned.
std::size_t bytesOfKey(std::size_t length)
{
    constexpr std::size_t alignment = 8;
    return (length + alignment - 1) / alignment * alignment;
}

std::mutex &ownTextLock(const void *block)
{
    // A lock per record would be larger than most of its texts.
    static std::array<std::mutex, 64> locks;
    return locks[(reinterpret_cast<std::uintptr_t>(block) >> 6) % locks.size()];
}

} // namespace

std::size_t FieldBlock::bytesFor(const RecordType &type, std::size_t keyLength)
{
    return bytesOfKey(keyLength) + type.blockSize();
}

FieldBlock::FieldBlock(const RecordType &type, const std::string &key, void *place)
    : recordType(type), memory(static_cast<unsigned char *>(place) + bytesOfKey(key.size())),
      hash(kdservice::hashOfKey(key)), keyLength(static_cast<std::uint32_t>(key.size()))
{
    std::memcpy(place, key.data(), keyLength);
    initialise();
}

FieldBlock::FieldBlock(const FieldBlock &other, void *place)
    : recordType(other.recordType), memory(static_cast<unsigned char *>(place) + bytesOfKey(other.keyLength)),
      hash(other.hash), keyLength(other.keyLength)
{
    std::memcpy(place, other.keyText(), keyLength);
    initialise();
    copyValues(other);
}

void FieldBlock::initialise()
{
    for (const FieldSlot &slot : recordType.fieldSlots()) {
        void *place = memory + slot.offset;
        switch (slot.store) {
        case Store::Long:
            new (place) AtomicLong(noLong);
            break;
        case Store::Double:
            new (place) AtomicDouble(noDouble);
            break;
        case Store::Int:
            new (place) AtomicInt(noInt);
            break;
        case Store::Char:
        case Store::Bool:
            new (place) AtomicByte(0);
            break;
        case Store::SharedText:
            new (place) AtomicText(nullptr);
            break;
        case Store::OwnText:
            new (place) OwnText;
            break;
        case Store::Nested:
            new (place) Nested;
            break;
        }
    }
}

void FieldBlock::copyValues(const FieldBlock &other)
{
    for (const FieldSlot &slot : recordType.fieldSlots()) {
        switch (slot.store) {
        case Store::Long:
            at<AtomicLong>(slot)->store(other.at<AtomicLong>(slot)->load(relaxed), relaxed);
            break;
        case Store::Double:
            at<AtomicDouble>(slot)->store(other.at<AtomicDouble>(slot)->load(relaxed), relaxed);
            break;
        case Store::Int:
            at<AtomicInt>(slot)->store(other.at<AtomicInt>(slot)->load(relaxed), relaxed);
            break;
        case Store::Char:
        case Store::Bool:
            at<AtomicByte>(slot)->store(other.at<AtomicByte>(slot)->load(relaxed), relaxed);
            break;
        case Store::SharedText:
            at<AtomicText>(slot)->store(other.at<AtomicText>(slot)->load(relaxed), relaxed);
            break;
        case Store::OwnText:
            set(slot.fieldId, other.getString(slot.fieldId));
            break;
        case Store::Nested:
            *at<Nested>(slot) = *other.at<Nested>(slot);
            break;
        }
    }
}

FieldBlock::~FieldBlock()
{
    for (const FieldSlot &slot : recordType.fieldSlots()) {
        if (slot.store == Store::OwnText)
            at<OwnText>(slot)->~OwnText();
        else if (slot.store == Store::Nested)
            at<Nested>(slot)->~Nested();
    }
}

const char *FieldBlock::keyText() const
{
    return reinterpret_cast<const char *>(memory - bytesOfKey(keyLength));
}

std::string FieldBlock::key() const
{
    return std::string(keyText(), keyLength);
}

const FieldSlot *FieldBlock::find(int id, Store store) const
{
    const FieldSlot *slot = recordType.slot(id);
    return slot != nullptr && slot->store == store ? slot : nullptr;
}

int FieldBlock::getInt(int id) const
{
    const FieldSlot *slot = recordType.slot(id);
    if (slot == nullptr)
        return noInt;
    if (slot->store == Store::Int)
        return at<AtomicInt>(*slot)->load(relaxed);
    if (slot->store != Store::Char)
        return noInt;
    const unsigned char code = at<AtomicByte>(*slot)->load(relaxed);
    return code == 0 ? noInt : code;
}

qint64 FieldBlock::getLong(int id) const
{
    const FieldSlot *slot = find(id, Store::Long);
    return slot == nullptr ? noLong : at<AtomicLong>(*slot)->load(relaxed);
}

double FieldBlock::getDouble(int id) const
{
    const FieldSlot *slot = find(id, Store::Double);
    return slot == nullptr ? noDouble : at<AtomicDouble>(*slot)->load(relaxed);
}

bool FieldBlock::getBool(int id) const
{
    const FieldSlot *slot = find(id, Store::Bool);
    return slot != nullptr && at<AtomicByte>(*slot)->load(relaxed) != 0;
}

std::string FieldBlock::getString(int id) const
{
    const FieldSlot *slot = recordType.slot(id);
    if (slot == nullptr)
        return {};
    if (slot->store == Store::SharedText) {
        // Acquire: the text may have been stored for the first time by another thread.
        const std::string *text = at<AtomicText>(*slot)->load(std::memory_order_acquire);
        return text == nullptr ? std::string() : *text;
    }
    if (slot->store == Store::OwnText) {
        const std::lock_guard<std::mutex> lock(ownTextLock(this));
        const OwnText &text = *at<OwnText>(*slot);
        return text == nullptr ? std::string() : *text;
    }
    if (slot->store != Store::Char)
        return {};
    const unsigned char code = at<AtomicByte>(*slot)->load(relaxed);
    return code == 0 ? std::string() : std::string(1, static_cast<char>(code));
}

Nested FieldBlock::getNested(int id) const
{
    const FieldSlot *slot = find(id, Store::Nested);
    return slot == nullptr ? Nested() : *at<Nested>(*slot);
}

void FieldBlock::setChar(const FieldSlot &slot, int code)
{
    at<AtomicByte>(slot)->store(code > 0 && code < 256 ? static_cast<unsigned char>(code) : 0, relaxed);
}

void FieldBlock::set(int id, int value)
{
    const FieldSlot *slot = recordType.slot(id);
    if (slot == nullptr)
        return;
    if (slot->store == Store::Int)
        at<AtomicInt>(*slot)->store(value, relaxed);
    else if (slot->store == Store::Char)
        setChar(*slot, value);
    else
        set(id, value == noInt ? noLong : static_cast<qint64>(value));
}

void FieldBlock::set(int id, qint64 value)
{
    const FieldSlot *slot = recordType.slot(id);
    if (slot != nullptr && slot->store == Store::Long)
        at<AtomicLong>(*slot)->store(value, relaxed);
    else if (slot != nullptr && slot->store == Store::Double)
        at<AtomicDouble>(*slot)->store(value == noLong ? noDouble : static_cast<double>(value), relaxed);
}

void FieldBlock::set(int id, double value)
{
    if (const FieldSlot *slot = find(id, Store::Double))
        at<AtomicDouble>(*slot)->store(value, relaxed);
}

void FieldBlock::set(int id, bool value)
{
    if (const FieldSlot *slot = find(id, Store::Bool))
        at<AtomicByte>(*slot)->store(value ? 1 : 0, relaxed);
}

void FieldBlock::set(int id, const std::string &value)
{
    const FieldSlot *slot = recordType.slot(id);
    if (slot == nullptr)
        return;
    if (slot->store == Store::SharedText) {
        at<AtomicText>(*slot)->store(value.empty() ? nullptr : sharedText(value), std::memory_order_release);
    } else if (slot->store == Store::OwnText) {
        OwnText text = value.empty() ? nullptr : std::make_unique<std::string>(value);
        const std::lock_guard<std::mutex> lock(ownTextLock(this));
        at<OwnText>(*slot)->swap(text);
    } else if (slot->store == Store::Char && value.size() <= 1) {
        setChar(*slot, value.empty() ? 0 : static_cast<unsigned char>(value[0]));
    }
}

void FieldBlock::setNested(int id, Nested record)
{
    if (const FieldSlot *slot = find(id, Store::Nested))
        *at<Nested>(*slot) = std::move(record);
}

} // namespace refhost
