#pragma once
// A hint to the processor: the bytes of a text are wanted soon. Texts read one row after
// another from places scattered through a long list cost a miss of the cache each; asked
// for a few rows ahead, the misses overlap with the work on the rows in between.

#include <string_view>

namespace vornelt {

inline void Prefetch(std::string_view text) noexcept {
#if defined(__GNUC__) || defined(__clang__)
    if (text.empty()) return;
    __builtin_prefetch(text.data());
    __builtin_prefetch(text.data() + text.size() - 1);
#else
    (void)text;
#endif
}

}  // namespace vornelt
