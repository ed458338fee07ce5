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
    const auto same = [](std::string_view a, std::string_view b) {
        if (a.size() != b.size()) return false;
        for (size_t k = 0; k < a.size(); ++k)
            if ((a[k] >= 'A' && a[k] <= 'Z' ? char(a[k] + 32) : a[k]) != b[k]) return false;
        return true;
    };
    for (const FrameRate rate : All())
        if (same(name, rate.Name())) return rate;
    return std::nullopt;
}

std::optional<FrameRate> FrameRate::OfValue(double value) noexcept {
    for (const FrameRate rate : All())
        if (!rate.DropFrame() && rate.Value() == value) return rate;
    return std::nullopt;
}

std::optional<FrameRate> FrameRate::Parse(std::string_view text, ErrorStatus* error) {
    if (const std::optional<FrameRate> rate = Named(text)) return rate;
    std::string details = "frame rate ";
    details.append(text).append(": Vornelt reads ").append(Names()).append(" frames per second");
    Fail(error, ErrorStatus::Outcome::BadOption, std::move(details));
    return std::nullopt;
}

std::string FrameRate::Names() {
    // In ascending order of frames per second, the way an editor counts them; non-drop first.
    std::array<FrameRate, kRateCount> sorted;
    std::copy(All().begin(), All().end(), sorted.begin());
    std::sort(sorted.begin(), sorted.end(), [](FrameRate a, FrameRate b) {
        return a.Value() != b.Value() ? a.Value() < b.Value() : a.Dropped() < b.Dropped();
    });
    std::string names;
    for (size_t k = 0; k < sorted.size(); ++k) {
        if (k > 0) names += k + 1 == sorted.size() ? " or " : ", ";
        names += sorted[k].Name();
    }
    return names;
}

namespace {

// The frame numbers drop frame has skipped before minute `minutes` of the day (counted from
// 00:00): `dropped` at each minute but every tenth.
int64_t SkippedBefore(int64_t minutes, int32_t dropped) { return dropped * (minutes - minutes / 10); }

// A timecode that is not two digits in each field: each field counts by its leading number,
// each term is truncated on its own, and the sum wraps as a 32-bit integer would. Out of line,
// so that the well-formed timecodes of the reader's hot path pay nothing for it.
[[gnu::noinline]] int32_t FramesOfFields(std::string_view tc, int32_t fps, int32_t dropped) noexcept {
    const double rate = fps;
    const double h = Val(Mid(tc, 1, 2));
    const double m = Val(Mid(tc, 4, 2));
    const double s = Val(Mid(tc, 7, 2));
    const double f = Val(Mid(tc, 10, 2));
    uint32_t sum = uint32_t(ToInt32(f));
    sum += uint32_t(ToInt32(s * rate));
    sum += uint32_t(ToInt32(m * rate * 60.0));
    sum += uint32_t(ToInt32(h * rate * 60.0 * 60.0));
    if (dropped != 0) sum -= uint32_t(uint64_t(SkippedBefore(int64_t(ToInt32(h)) * 60 + ToInt32(m), dropped)));
    return int32_t(sum);
}

}  // namespace

int32_t FrameRate::Frames(std::string_view tc) const noexcept {
    const frame_rate_table::Row& row = Row();
    // A well-formed timecode, read straight from its digits: every term is small and whole,
    // so the sum is the one of the fields' terms.
    if (tc.size() == 11 && IsDigit(tc[0]) && IsDigit(tc[1]) && IsDigit(tc[3]) && IsDigit(tc[4]) && IsDigit(tc[6]) &&
        IsDigit(tc[7]) && IsDigit(tc[9]) && IsDigit(tc[10])) {
        auto two = [&tc](size_t k) { return uint32_t(tc[k] - '0') * 10 + uint32_t(tc[k + 1] - '0'); };
        const uint32_t minutes = two(0) * 60 + two(3);
        const uint32_t frames = (minutes * 60 + two(6)) * uint32_t(row.timecodeFps) + two(9);
        if (row.dropped == 0) return int32_t(frames);
        return int32_t(frames - uint32_t(row.dropped) * (minutes - minutes / 10));
    }
    return FramesOfFields(tc, row.timecodeFps, row.dropped);
}

std::string FrameRate::Timecode(int32_t n, char frameSeparator) const {
    const int64_t r = TimecodeFps();
    // In drop frame, the number the label has when no frame number is skipped.
    int64_t count = n;
    if (const int64_t dropped = Dropped(); dropped != 0) {
        const int64_t perMinute = 60 * r - dropped;
        const int64_t perTenMinutes = 10 * perMinute + dropped;
        int64_t tens = count / perTenMinutes;
        if (count % perTenMinutes < 0) --tens;
        const int64_t within = count - tens * perTenMinutes;  // 0 up to perTenMinutes - 1
        // The first minute of ten skips nothing; each further one skips `dropped` at its start.
        count += 9 * dropped * tens + dropped * ((within - dropped) / perMinute);
    }
    const double frames = double(count);
    const int64_t hours = int64_t(std::floor(frames / (3600.0 * double(r))));
    const int64_t totalMinutes = int64_t(std::floor(frames / (60.0 * double(r))));
    const int64_t totalSeconds = int64_t(std::floor(frames / double(r)));
    int64_t minutes = totalMinutes;
    if (minutes >= 60) minutes = totalMinutes - hours * 60;
    int64_t seconds = totalSeconds;
    if (seconds >= 60) seconds = totalSeconds - totalMinutes * 60;
    const int64_t rest = count - totalSeconds * r;
    std::string out;
    out.reserve(11);
    out.append(Format(hours, "00")).append(1, ':').append(Format(minutes, "00")).append(1, ':');
    out.append(Format(seconds, "00")).append(1, frameSeparator).append(Format(rest, "00"));
    return out;
}

}  // namespace vornelt
