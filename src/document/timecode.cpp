#include "document/timecode.hpp"

#include <cmath>

#include "text/text.hpp"

namespace vornelt {

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

int32_t TcToFrames(std::string_view tc, int r) {
    // A well-formed timecode, read straight from its digits: every term is small and whole,
    // so the sum is the one below.
    if (tc.size() == 11 && IsDigit(tc[0]) && IsDigit(tc[1]) && IsDigit(tc[3]) && IsDigit(tc[4]) && IsDigit(tc[6]) &&
        IsDigit(tc[7]) && IsDigit(tc[9]) && IsDigit(tc[10])) {
        auto two = [&tc](size_t k) { return int32_t(tc[k] - '0') * 10 + int32_t(tc[k + 1] - '0'); };
        return ((two(0) * 60 + two(3)) * 60 + two(6)) * r + two(9);
    }
    const double rate = r;
    const double h = Val(Mid(tc, 1, 2));
    const double m = Val(Mid(tc, 4, 2));
    const double s = Val(Mid(tc, 7, 2));
    const double f = Val(Mid(tc, 10, 2));
    // Each term is truncated on its own; the sum wraps as a 32-bit integer would.
    uint32_t sum = uint32_t(ToInt32(f));
    sum += uint32_t(ToInt32(s * rate));
    sum += uint32_t(ToInt32(m * rate * 60.0));
    sum += uint32_t(ToInt32(h * rate * 60.0 * 60.0));
    return int32_t(sum);
}

std::string FramesToTc(int32_t n, int r) {
    const double frames = n;
    const int64_t hours = int64_t(std::floor(frames / (3600.0 * r)));
    const int64_t totalMinutes = int64_t(std::floor(frames / (60.0 * r)));
    const int64_t totalSeconds = int64_t(std::floor(frames / r));
    int64_t minutes = totalMinutes;
    if (minutes >= 60) minutes = totalMinutes - hours * 60;
    int64_t seconds = totalSeconds;
    if (seconds >= 60) seconds = totalSeconds - totalMinutes * 60;
    const int64_t rest = int64_t(n) - totalSeconds * r;
    return Format(hours, "00") + ":" + Format(minutes, "00") + ":" + Format(seconds, "00") + ":" + Format(rest, "00");
}

}  // namespace

int32_t TC_to_Frame24(std::string_view tc) { return TcToFrames(tc, 24); }
int32_t TC_to_Frame25(std::string_view tc) { return TcToFrames(tc, 25); }
int32_t TC_to_Frame30NonDrop(std::string_view tc) { return TcToFrames(tc, 30); }

std::string Frames24_to_TC(int32_t frames) { return FramesToTc(frames, 24); }
std::string Frames25_to_TC(int32_t frames) { return FramesToTc(frames, 25); }
std::string Frames30NonDrop_to_TC(int32_t frames) { return FramesToTc(frames, 30); }

}  // namespace vornelt
