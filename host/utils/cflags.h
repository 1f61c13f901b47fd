#pragma once

namespace utils {

/// A set of bits of one enumeration, combined without casts. A value type of one int; safe on every thread.
template <typename Enum>
class CFlags
{
public:
    constexpr CFlags() = default;
    constexpr CFlags(Enum flag) : bits(static_cast<int>(flag)) {}
    constexpr explicit CFlags(int value) : bits(value) {}

    constexpr int value() const { return bits; }
    constexpr bool testFlag(Enum flag) const
    {
        return (bits & static_cast<int>(flag)) == static_cast<int>(flag) && (static_cast<int>(flag) != 0 || bits == 0);
    }

    constexpr CFlags operator|(CFlags other) const { return CFlags(bits | other.bits); }
    constexpr CFlags operator&(CFlags other) const { return CFlags(bits & other.bits); }
    constexpr CFlags operator~() const { return CFlags(~bits); }
    constexpr CFlags &operator|=(CFlags other)
    {
        bits |= other.bits;
        return *this;
    }
    constexpr bool operator==(CFlags other) const { return bits == other.bits; }
    constexpr bool operator!=(CFlags other) const { return bits != other.bits; }

private:
    int bits = 0;
};

} // namespace utils
