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

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
namespace processor_detail {
__attribute__((target("avx"))) inline void ZeroUpperHalves() noexcept { __builtin_ia32_vzeroupper(); }
}  // namespace processor_detail
#endif

// Marks the upper halves of the vector registers unused. Code that leaves them in use (vector
// code of a toolkit that does not clear them on its way out) makes every SSE instruction after
// it wait on them: the core runs at less than half its speed until they are cleared. A program
// that calls into such code clears them before it hands work to the core.
inline void ClearUpperVectorHalves() noexcept {
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    static const bool avx = [] {
        __builtin_cpu_init();
        return __builtin_cpu_supports("avx") != 0;
    }();
    if (avx) processor_detail::ZeroUpperHalves();
#endif
}

}  // namespace vornelt
