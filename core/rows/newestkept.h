#pragma once

#include <QtCore/QHash>
#include <deque>
#include <optional>

namespace core {

/// Values by key, of which only the newest stay: one that comes when all room is taken sends the oldest away.
template <typename Value, typename Key = quint64>
class NewestKept
{
public:
    explicit NewestKept(std::size_t most) : room(most) {}

    std::optional<Value> find(const Key &key) const
    {
        const auto found = values.constFind(key);
        return found == values.constEnd() ? std::nullopt : std::optional<Value>(*found);
    }
    /// Returns the value that had to go. The key must be a new one.
    std::optional<Value> add(const Key &key, const Value &value)
    {
        std::optional<Value> gone;
        if (order.size() >= room) {
            gone = values.take(order.front());
            order.pop_front();
        }
        values.insert(key, value);
        order.push_back(key);
        return gone;
    }
    const QHash<Key, Value> &all() const { return values; }

private:
    const std::size_t room; ///< at least 1
    QHash<Key, Value> values;
    std::deque<Key> order; ///< of their keys, the oldest first
};

} // namespace core
