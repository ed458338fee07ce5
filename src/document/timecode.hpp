#pragma once
// Timecode HH:MM:SS:FF and frame numbers at 24, 25 and 30 frames per second, under the names
// the conversions have always had. Every other count goes through the list's FrameRate
// (vornelt/frame_rate.hpp), which these call.

#include <cstdint>
#include <string>
#include <string_view>

namespace vornelt {

// Each field (characters 1-2, 4-5, 7-8, 10-11) counts by its leading number, unchecked: a
// frame field of 75 adds 75 frames. A short or malformed text counts what its fields give.
int32_t TC_to_Frame24(std::string_view tc);
int32_t TC_to_Frame25(std::string_view tc);
int32_t TC_to_Frame30NonDrop(std::string_view tc);

// Hours have no bound and no wrap (100:00:00:00 is a timecode of twelve characters), and a
// negative frame number gives negative fields ("-01:-01:-01:24" for -1 at 25).
std::string Frames24_to_TC(int32_t frames);
std::string Frames25_to_TC(int32_t frames);
std::string Frames30NonDrop_to_TC(int32_t frames);

}  // namespace vornelt
