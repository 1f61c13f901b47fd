#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

/// What a target does with one input. Returns 0; anything wrong ends the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *bytes, std::size_t size);
/// Called once before the first input.
extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);

namespace fuzz {

/// Ends the program with the reason: the input has shown a fault.
[[noreturn]] inline void fail(const std::string &reason)
{
    std::fprintf(stderr, "fault: %s\n", reason.c_str());
    std::abort();
}

inline void require(bool good, const std::string &reason)
{
    if (!good)
        fail(reason);
}

/// Takes an input apart, front to back; what is asked for behind its end is zero or empty.
class Input
{
public:
    Input(const std::uint8_t *bytes, std::size_t size) : at(bytes), end(bytes + size) {}

    bool isEmpty() const { return at == end; }

    template <typename Number>
    Number number()
    {
        Number value{};
        const std::size_t wanted = sizeof value;
        const std::size_t there = std::min(wanted, static_cast<std::size_t>(end - at));
        std::memcpy(&value, at, there);
        at += there;
        return value;
    }
    /// At least 0 and less than `limit`.
    int below(int limit) { return number<std::uint8_t>() % limit; }
    /// Up to `most` bytes.
    QByteArray bytes(int most)
    {
        const auto length = static_cast<int>(std::min<std::ptrdiff_t>(end - at, most));
        const QByteArray taken(reinterpret_cast<const char *>(at), length);
        at += length;
        return taken;
    }
    QByteArray rest() { return bytes(static_cast<int>(end - at)); }
    /// Any UTF-16, halves of surrogate pairs included.
    QString text(int most)
    {
        const QByteArray taken = bytes(2 * most);
        return QString(reinterpret_cast<const QChar *>(QByteArray(taken).append('\0').constData()), taken.size() / 2);
    }

private:
    const std::uint8_t *at;
    const std::uint8_t *const end;
};

} // namespace fuzz
