#pragma once

#include <QtCore/qglobal.h>
#include <string>

namespace kdservice {

/// The 64-bit key that belongs to a record's key text. Records, rows, tables and paged models all use this function, so
/// that a key in one form finds the record that was stored under the other. Two texts can share a hash: whoever indexes
/// by it tells them apart by the text. FNV-1a (Fowler, Noll, Vo) with a final mix, so that close keys fall far apart.
inline quint64 hashOfKey(const char *text, std::size_t length)
{
    quint64 hash = 14695981039346656037ull;
    for (std::size_t i = 0; i < length; ++i)
        hash = (hash ^ static_cast<unsigned char>(text[i])) * 1099511628211ull;
    hash ^= hash >> 32;
    hash *= 0x9E3779B97F4A7C15ull;
    return hash ^ (hash >> 29);
}

inline quint64 hashOfKey(const std::string &key)
{
    return hashOfKey(key.data(), key.size());
}

} // namespace kdservice
