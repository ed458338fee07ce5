#pragma once
// The frame rates Vornelt reads lists at: one table, and a value type that holds only its rows.
// Every count of frames in the program (the reader's frame numbers, the key repair's out
// points, the report's timecodes) goes through the rate of the list, and every place that
// offers a rate (the frame-rate question, the converter's --fps, Python's fps, the page) lists
// the rows of this table.
//
// Timecode counts whole frames of timecode per second. At 29.97 and 59.94 drop frame the
// timecode skips frame numbers (SMPTE ST 12-1): 00 and 01 at 29.97, 00 to 03 at 59.94, at the
// start of every minute but 00, 10, 20, 30, 40 and 50. Non-drop 23.976, 29.97 and 59.94 count
// their timecode exactly as 24, 30 and 60 do.

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
    std::string_view name;   // what the converter's --fps and Python's fps take: "25", "29.97df"
    std::string_view label;  // the row of the frame-rate question: "25 fps Non-Drop Frame - PAL"
    std::string_view title;  // how a sentence names it: "25 fps", "29.97 fps drop frame"
    double value;            // frames per second, as the document has held it: 25.0, 29.97
    int32_t timecodeFps;     // frame numbers counted in one second of timecode: 25
    int32_t dropped;         // frame numbers skipped at the start of a minute not divisible by ten
};

// In the order the frame-rate question lists them: the three rates of old first.
inline constexpr Row kRows[] = {
    {"30", "30 fps Non-Drop Frame - NTSC", "30 fps", 30.0, 30, 0},
    {"25", "25 fps Non-Drop Frame - PAL", "25 fps", 25.0, 25, 0},
    {"24", "24 fps Non-Drop Frame - FILM", "24 fps", 24.0, 24, 0},
    {"29.97df", "29.97 fps Drop Frame - NTSC", "29.97 fps drop frame", 29.97, 30, 2},
    {"29.97", "29.97 fps Non-Drop Frame - NTSC", "29.97 fps", 29.97, 30, 0},
    {"23.976", "23.976 fps Non-Drop Frame - FILM", "23.976 fps", 23.976, 24, 0},
    {"59.94df", "59.94 fps Drop Frame - HD", "59.94 fps drop frame", 59.94, 60, 4},
    {"59.94", "59.94 fps Non-Drop Frame - HD", "59.94 fps", 59.94, 60, 0},
    {"60", "60 fps Non-Drop Frame - HD", "60 fps", 60.0, 60, 0},
    {"50", "50 fps Non-Drop Frame - PAL HD", "50 fps", 50.0, 50, 0},
    {"48", "48 fps Non-Drop Frame - FILM HFR", "48 fps", 48.0, 48, 0},
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
    // The rate of a name ("25", "29.97df"; letters in either case), or none.
    static std::optional<FrameRate> Named(std::string_view name) noexcept;
    // The non-drop rate of a number of frames per second (25.0, 29.97), or none: a number
    // names no drop-frame rate.
    static std::optional<FrameRate> OfValue(double value) noexcept;
    // The rate a text names ("25"); otherwise none, and `error` (BadOption) tells the rates
    // there are: "frame rate 29: Vornelt reads 23.976, 24, 25, ... or 60 frames per second".
    static std::optional<FrameRate> Parse(std::string_view text, ErrorStatus* error);
    // The names, for a message, in the order of their frames per second: "23.976, 24, ... or 60".
    static std::string Names();

    std::string_view Name() const noexcept { return Row().name; }
    std::string_view Label() const noexcept { return Row().label; }
    std::string_view Title() const noexcept { return Row().title; }
    double Value() const noexcept { return Row().value; }
    int32_t TimecodeFps() const noexcept { return Row().timecodeFps; }
    // Frame numbers drop frame skips at the start of a minute (0: the rate counts none).
    int32_t Dropped() const noexcept { return Row().dropped; }
    bool DropFrame() const noexcept { return Row().dropped != 0; }
    // Its place in All(): the row of the frame-rate question.
    size_t Index() const noexcept { return row_; }

    // HH:MM:SS:FF as a frame number from 00:00:00:00; the separator before the frames (":" or
    // ";") is not looked at. Each field counts by its leading number, unchecked: a frame field
    // of 75 adds 75 frames; a short or malformed text counts what its fields give. In drop
    // frame the numbers skipped before the label are taken off, so 00:01:00;02 is frame 1800 at
    // 29.97 drop frame; a label that drop frame skips counts as if the skipped numbers were
    // there (01:01:00;00 is two frames before 01:01:00;02).
    int32_t Frames(std::string_view timecode) const noexcept;
    // A frame number as HH:MM:SS:FF, with `frameSeparator` before the frames. Hours have no
    // bound and no wrap, and a negative number gives negative fields ("-01:-01:-01:24" for -1
    // at 25).
    std::string Timecode(int32_t frames, char frameSeparator = ':') const;

    friend constexpr bool operator==(FrameRate a, FrameRate b) noexcept { return a.row_ == b.row_; }

private:
    constexpr explicit FrameRate(size_t row) noexcept : row_(uint8_t(row)) {}
    constexpr const frame_rate_table::Row& Row() const noexcept { return frame_rate_table::kRows[row_]; }

    uint8_t row_ = frame_rate_table::kPal;
};

}  // namespace vornelt
