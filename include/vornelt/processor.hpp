#pragma once
// What the build counts on of the processor: on x86-64 the POPCNT instruction, which every
// x86-64 processor since 2008 has and the tables of a list use on every look-up. A program asks
// first and says so in words, instead of stopping on an instruction the processor lacks.
//
// The questions go straight to CPUID, one leaf each: the compiler's own way of asking reads
// every leaf there is, and under a hypervisor each read costs microseconds, which a program
// that converts one short list and ends would spend on nothing else.

namespace vornelt {

#if defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
namespace processor_detail {
// The feature bits of CPUID leaf 1 in ECX, which every x86-64 processor has. Asked in place,
// so that this header brings no macros of the compiler's CPUID header into its readers.
inline unsigned Leaf1Ecx() noexcept {
    unsigned a = 1, b = 0, c = 0, d = 0;
    __asm__ volatile("cpuid" : "+a"(a), "=b"(b), "+c"(c), "=d"(d));
    return c;
}
constexpr unsigned kPopcnt = 1u << 23, kOsxsave = 1u << 27, kAvx = 1u << 28;
__attribute__((target("xsave"))) inline unsigned long long EnabledStates() noexcept { return __builtin_ia32_xgetbv(0); }
__attribute__((target("avx"))) inline void ZeroUpperHalves() noexcept { __builtin_ia32_vzeroupper(); }
// AVX instructions may run: the processor has them and the system saves their registers.
inline bool AvxUsable() noexcept {
    const unsigned c = Leaf1Ecx();
    if (!(c & kAvx) || !(c & kOsxsave)) return false;
    return (EnabledStates() & 0x6) == 0x6;  // the SSE and AVX register states
}
}  // namespace processor_detail
#endif

// The name of an instruction the build uses and this processor lacks, or null.
inline const char* MissingProcessorFeature() noexcept {
#if defined(__POPCNT__) && defined(__x86_64__) && (defined(__GNUC__) || defined(__clang__))
    if (!(processor_detail::Leaf1Ecx() & processor_detail::kPopcnt)) return "POPCNT";
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
