#pragma once

namespace core {

/// Tells the processor that an address will be read soon, where the compiler knows how to; no effect otherwise,
/// whatever the address.
inline void prefetch(const void *address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address);
    // GCC takes a function that does nothing else for one without effect, and leaves calls of it out.
    __asm__ volatile("" : : "r"(address));
#else
    static_cast<void>(address);
#endif
}

/// All of a small object behind a shared pointer, with the count of its holders, which stands in front of it where both
/// were made at once.
inline void prefetchObject(const void *object)
{
    constexpr int lineSize = 64;
    constexpr int inFront = 32;
    constexpr int lines = 3;
    for (int line = 0; object && line < lines; ++line)
        prefetch(static_cast<const char *>(object) - inFront + line * lineSize);
}

} // namespace core
