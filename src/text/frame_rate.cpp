// The frame-rate type: the table's rows, and timecode text counted in frames at a rate.
#include "vornelt/frame_rate.hpp"

#include <algorithm>
#include <array>
#include <cmath>

#include "text/text.hpp"

namespace vornelt {

namespace {

constexpr size_t kRateCount = std::size(frame_rate_table::kRows);

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

std::span<const FrameRate> FrameRate::All() noexcept {
    struct Table {
        std::array<FrameRate, kRateCount> rates;
        constexpr Table() {
            for (size_t k = 0; k < kRateCount; ++k) rates[k] = FrameRate(k);
        }
    };
    static constexpr Table kTable;
    return kTable.rates;
}

std::optional<FrameRate> FrameRate::Named(std::string_view name) noexcept {
    for (const FrameRate rate : All())
        if (rate.Name() == name) return rate;
    return std::nullopt;
}

std::optional<FrameRate> FrameRate::OfValue(double value) noexcept {
    for (const FrameRate rate : All())
        if (rate.Value() == value) return rate;
    return std::nullopt;
}

std::optional<FrameRate> FrameRate::Parse(std::string_view text, ErrorStatus* error) {
    if (const std::optional<FrameRate> rate = Named(text)) return rate;
    Fail(error, ErrorStatus::Outcome::BadOption,
         "frame rate " + std::string(text) + ": Vornelt reads " + Names() + " frames per second");
    return std::nullopt;
}

std::string FrameRate::Names() {
    // In ascending order of frames per second, the way an editor counts them.
    std::array<FrameRate, kRateCount> sorted;
    std::copy(All().begin(), All().end(), sorted.begin());
    std::sort(sorted.begin(), sorted.end(), [](FrameRate a, FrameRate b) { return a.Value() < b.Value(); });
    std::string names;
    for (size_t k = 0; k < sorted.size(); ++k) {
        if (k > 0) names += k + 1 == sorted.size() ? " or " : ", ";
        names += sorted[k].Name();
    }
    return names;
}

int32_t FrameRate::Frames(std::string_view tc) const noexcept {
    const int32_t r = TimecodeFps();
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

std::string FrameRate::Timecode(int32_t n) const {
    const int64_t r = TimecodeFps();
    const double frames = n;
    const int64_t hours = int64_t(std::floor(frames / (3600.0 * double(r))));
    const int64_t totalMinutes = int64_t(std::floor(frames / (60.0 * double(r))));
    const int64_t totalSeconds = int64_t(std::floor(frames / double(r)));
    int64_t minutes = totalMinutes;
    if (minutes >= 60) minutes = totalMinutes - hours * 60;
    int64_t seconds = totalSeconds;
    if (seconds >= 60) seconds = totalSeconds - totalMinutes * 60;
    const int64_t rest = int64_t(n) - totalSeconds * r;
    return Format(hours, "00") + ":" + Format(minutes, "00") + ":" + Format(seconds, "00") + ":" + Format(rest, "00");
}

}  // namespace vornelt
