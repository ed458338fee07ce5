#pragma once
// The number of bits set in a word.

#include <bit>
#include <cstdint>

namespace vornelt {

inline int BitCount(uint64_t x) noexcept {
#if defined(__POPCNT__) || !(defined(__x86_64__) || defined(__i386__))
    return std::popcount(x);
#else
    // Without the instruction the compiler calls a library routine; this is quicker.
    x = x - ((x >> 1) & 0x5555555555555555ull);
    x = (x & 0x3333333333333333ull) + ((x >> 2) & 0x3333333333333333ull);
    x = (x + (x >> 4)) & 0x0F0F0F0F0F0F0F0Full;
    return int((x * 0x0101010101010101ull) >> 56);
#endif
}

}  // namespace vornelt
