#pragma once

namespace core {

/// Tells the processor that an address will be read soon, where the compiler knows how to; no effect otherwise,
/// whatever the address.
inline void prefetch(const void *address)
{
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

} // namespace core
