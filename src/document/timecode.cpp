#include "document/timecode.hpp"

#include "vornelt/frame_rate.hpp"

namespace vornelt {

namespace {

FrameRate Rate(std::string_view name) { return FrameRate::Named(name).value_or(FrameRate()); }

}  // namespace

// The conversions under their names of old: each is its rate's own.
int32_t TC_to_Frame24(std::string_view tc) { return Rate("24").Frames(tc); }
int32_t TC_to_Frame25(std::string_view tc) { return Rate("25").Frames(tc); }
int32_t TC_to_Frame30NonDrop(std::string_view tc) { return Rate("30").Frames(tc); }

std::string Frames24_to_TC(int32_t frames) { return Rate("24").Timecode(frames); }
std::string Frames25_to_TC(int32_t frames) { return Rate("25").Timecode(frames); }
std::string Frames30NonDrop_to_TC(int32_t frames) { return Rate("30").Timecode(frames); }

}  // namespace vornelt
