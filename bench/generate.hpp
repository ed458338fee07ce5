#pragma once
// Large lists for the benchmarks: cuts, two-line dissolves, wipes, two-line keys, audio
// events, motion lines and comments, in CMX or GVG form. Deterministic for a seed.
#include <cstdint>
#include <string>

namespace vornelt::bench {

enum class Shape {
    Mixed,       // a conform list as editors meet them
    SameSource,  // most events share one source timecode
    OneChain,    // every event runs on from the one before: one clip chain
};

struct ListOptions {
    int events = 1000;
    bool gvg = false;
    Shape shape = Shape::Mixed;
    uint32_t seed = 1;
};

// The list as the bytes of a file, lines ended by CR LF.
std::string GenerateList(const ListOptions& options);

}  // namespace vornelt::bench
