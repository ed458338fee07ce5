#pragma once
// What the build counts on of the processor: on x86-64 the POPCNT instruction, which every
// x86-64 processor since 2008 has and the tables of a list use on every look-up. A program asks
// first and says so in words, instead of stopping on an instruction the processor lacks.

namespace vornelt {

// The name of an instruction the build uses and this processor lacks, or null.
inline const char* MissingProcessorFeature() noexcept {
#if defined(__POPCNT__) && defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    __builtin_cpu_init();
    if (!__builtin_cpu_supports("popcnt")) return "POPCNT";
#endif
    return nullptr;
}

}  // namespace vornelt
