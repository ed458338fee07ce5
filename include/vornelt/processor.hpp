#pragma once
// What the build counts on of the processor: on x86-64 the POPCNT instruction, which every
// x86-64 processor since 2008 has and the tables of a list use on every look-up. A program asks
// first and says so in words, instead of stopping on an instruction the processor lacks.
//
// The questions go straight to CPUID, one leaf each: the compiler's own way of asking reads
// every leaf there is, and under a hypervisor each read costs microseconds, which a program
// that converts one short list and ends would spend on nothing else.

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
#include <cpuid.h>
#endif

namespace vornelt {

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
namespace processor_detail {
// The feature bits of CPUID leaf 1 in ECX.
inline unsigned Leaf1Ecx() noexcept {
    unsigned a = 0, b = 0, c = 0, d = 0;
    return __get_cpuid(1, &a, &b, &c, &d) ? c : 0;
}
__attribute__((target("xsave"))) inline unsigned long long EnabledStates() noexcept { return __builtin_ia32_xgetbv(0); }
__attribute__((target("avx"))) inline void ZeroUpperHalves() noexcept { __builtin_ia32_vzeroupper(); }
// AVX instructions may run: the processor has them and the system saves their registers.
inline bool AvxUsable() noexcept {
    const unsigned c = Leaf1Ecx();
    if (!(c & bit_AVX) || !(c & bit_OSXSAVE)) return false;
    return (EnabledStates() & 0x6) == 0x6;  // the SSE and AVX register states
}
}  // namespace processor_detail
#endif

// The name of an instruction the build uses and this processor lacks, or null.
inline const char* MissingProcessorFeature() noexcept {
#if defined(__POPCNT__) && defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    if (!(processor_detail::Leaf1Ecx() & bit_POPCNT)) return "POPCNT";
#endif
    return nullptr;
}

// Marks the upper halves of the vector registers unused. Code that leaves them in use (vector
// code of a toolkit that does not clear them on its way out) makes every SSE instruction after
// it wait on them: the core runs at less than half its speed until they are cleared. A program
// that calls into such code clears them before it hands work to the core.
inline void ClearUpperVectorHalves() noexcept {
#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    static const bool avx = processor_detail::AvxUsable();
    if (avx) processor_detail::ZeroUpperHalves();
#endif
}

}  // namespace vornelt
