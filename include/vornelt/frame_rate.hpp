#pragma once
// The frame rates Vornelt reads lists at: one table, and a value type that holds only its rows.
// Every count of frames in the program (the reader's frame numbers, the key repair's out
// points, the report's timecodes) goes through the rate of the list, and every place that
// offers a rate (the frame-rate question, the converter's --fps, Python's fps) lists the rows
// of this table.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "vornelt/error.hpp"

namespace vornelt {

namespace frame_rate_table {

struct Row {
    std::string_view name;   // what the converter's --fps and Python's fps take: "25"
    std::string_view label;  // the row of the frame-rate question: "25 fps Non-Drop Frame - PAL"
    std::string_view title;  // short, for messages and reports: "25 (PAL)"
    double value;            // frames per second, as the document has held it: 25.0
    int32_t timecodeFps;     // frame numbers counted in one second of timecode: 25
    bool dropFrame;          // whether its timecode skips frame numbers
};

// In the order the frame-rate question lists them.
inline constexpr Row kRows[] = {
    {"30", "30 fps Non-Drop Frame - NTSC", "30 (NTSC)", 30.0, 30, false},
    {"25", "25 fps Non-Drop Frame - PAL", "25 (PAL)", 25.0, 25, false},
    {"24", "24 fps Non-Drop Frame - FILM", "24 (film)", 24.0, 24, false},
};
inline constexpr size_t kPal = 1;  // the row the question opens on
static_assert(kRows[kPal].name == "25");

}  // namespace frame_rate_table

class FrameRate {
public:
    // 25 frames per second (PAL): the question's first answer.
    constexpr FrameRate() noexcept = default;

    // Every rate, in the order the frame-rate question lists them.
    static std::span<const FrameRate> All() noexcept;
    // The rate of a name ("25"), or none.
    static std::optional<FrameRate> Named(std::string_view name) noexcept;
    // The rate of a number of frames per second (25.0), or none.
    static std::optional<FrameRate> OfValue(double value) noexcept;
    // The rate a text names ("25"); otherwise none, and `error` (BadOption) tells the rates
    // there are: "frame rate 29: Vornelt reads 24, 25 or 30 frames per second".
    static std::optional<FrameRate> Parse(std::string_view text, ErrorStatus* error);
    // The names, for a message: "24, 25 or 30".
    static std::string Names();

    std::string_view Name() const noexcept { return Row().name; }
    std::string_view Label() const noexcept { return Row().label; }
    std::string_view Title() const noexcept { return Row().title; }
    double Value() const noexcept { return Row().value; }
    int32_t TimecodeFps() const noexcept { return Row().timecodeFps; }
    bool DropFrame() const noexcept { return Row().dropFrame; }
    // Its place in All(): the row of the frame-rate question.
    size_t Index() const noexcept { return row_; }

    // HH:MM:SS:FF as a frame number from 00:00:00:00. Each field counts by its leading number,
    // unchecked: a frame field of 75 adds 75 frames; a short or malformed text counts what its
    // fields give.
    int32_t Frames(std::string_view timecode) const noexcept;
    // A frame number as HH:MM:SS:FF. Hours have no bound and no wrap, and a negative number
    // gives negative fields ("-01:-01:-01:24" for -1 at 25).
    std::string Timecode(int32_t frames) const;

    friend constexpr bool operator==(FrameRate a, FrameRate b) noexcept { return a.row_ == b.row_; }

private:
    constexpr explicit FrameRate(size_t row) noexcept : row_(uint8_t(row)) {}
    constexpr const frame_rate_table::Row& Row() const noexcept { return frame_rate_table::kRows[row_]; }

    uint8_t row_ = frame_rate_table::kPal;
};

}  // namespace vornelt
