#pragma once
// The plan of the new list: what each of its lines is, in order, as the writer decided it from
// the copy tables and the options. The text of the list is the plan written out in the list's
// columns; the report and the What Changed window read the plan to know where a row of the
// list as read stands in the new list.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "text/change_log.hpp"

namespace vornelt {

enum class LineKind : uint8_t {
    Title,          // "TITLE: ..." (CMX) or the title alone (GVG)
    FrameCodeMode,  // "FCM: NON-DROP FRAME" or "FCM: DROP FRAME" (CMX), "SMPTE FRAME CODE" (GVG)
    Blank,          // the empty line behind the header
    Comments,       // generated comment lines, one or more
    Event,          // an event line of 78 characters, written from its row's fields
    Note,           // a row kept as it was read (a motion or an audio line)
};

struct PlannedLine {
    LineKind kind = LineKind::Blank;
    // Event and Note: the row of the list as read. Any other line: the row of the line before
    // it, so that rows never decrease down the plan.
    uint32_t row = 0;
    uint32_t line = 0;  // where it stands in the new list, from 1
    // Comments: its text in ListPlan::comments, each line ended by a carriage return; lines with
    // the same text may share it.
    uint32_t begin = 0;
    uint32_t end = 0;
};

// The options that shape the lines, as the plan was made under them.
struct PlanOptions {
    bool grassValley = false;
    bool mirror = false;
    bool keyToDissolve = false;
    bool audio = false;
    bool removeFreezeFrames = false;
    bool removeSpeedChanges = false;
    bool comments = false;
    int wipeTable = 0;  // the row of the wipe-names popup: 0 Final Cut Pro, 1 SMPTE
};

// What the mirror list does with the reel of each row without a master reel: a reel of black
// or auxiliary keeps its name, any other takes the name of its clip chain. Worked out once for
// the reels as they stand, not at every rendering.
struct MirrorReels {
    enum : uint8_t { Keeps = 0, Renamed = 1, SameName = 2 };
    std::vector<uint8_t> rows;
    ChangeLog::Version reels{}, chains{};  // the reel tables they were worked out from
};

// The rows a run must look at: every row with an event number, and the rows without one whose
// line begins with a letter of "MPAS" (motion, audio and split lines). The rest are comments,
// clip names and blank lines, which leave no trace in the plan. Rows without an event number
// keep the text they were read with until the next load, and a load fills the event numbers
// anew, so the set holds while those stay as they are.
struct RowsToVisit {
    std::vector<uint64_t> bits;  // one bit per row
    // The rows whose line begins with "SPLIT". An event line written in a row's place never
    // does, so this holds as well.
    std::vector<uint64_t> split;
    ChangeLog::Version numbers{};  // the event numbers they were worked out from
    const void* text = nullptr;    // the text of the lines
};

// What a run reads of each row's texts, as a byte: whether the row has an event number, what
// its transition adds to the comment block of its event, and whether its line is a motion or
// an audio line (for a row with an event number, whether it was read as one). A row's code is worked out the
// first time a run needs it and kept while the tables it comes from stand, so that a click
// that changes none of them reads a byte a row instead of the rows' texts.
struct RowCodes {
    enum : uint8_t {
        Known = 1,       // the rest of the byte is worked out
        Number = 2,      // an event number that is not empty
        NoDuration = 4,  // no transition duration
        // A motion line ("M2", "PEG A", "PEG B") and an audio line ("AUD"): for a row with an
        // event number, as it was read, and the line as it stands is to be looked at.
        Motion = 8,
        Audio = 16,
        FormShift = 5,   // two bits from here: what a further row of an event adds to its block
        Numbered = 128,  // an event number, which may be empty
    };
    enum Form : uint8_t { Nothing = 0, Dissolve = 1, Wipe = 2, Key = 3 };
    std::vector<uint8_t> rows;
    ChangeLog::Version numbers{}, trans{}, durations{};  // the tables they were read from
    const void* text = nullptr;                          // the text of the lines
};

struct ListPlan {
    PlanOptions options;
    std::string title;       // the sequence title
    std::string masterReel;  // the reel every event line of a mirror list carries; "" for none
    bool dropFrame = false;  // the list is read at a drop-frame rate
    std::vector<PlannedLine> lines;
    std::string comments;    // the texts of the comment lines
    uint32_t lineCount = 0;  // the lines of the new list
    MirrorReels mirrorReels;
    RowsToVisit rowsToVisit;
    RowCodes rowCodes;

    // The event line of a row in the new list, or null when the row has none.
    const PlannedLine* EventLineOf(uint32_t row) const {
        const auto at = std::lower_bound(lines.begin(), lines.end(), row,
                                         [](const PlannedLine& l, uint32_t r) { return l.row < r; });
        for (auto it = at; it != lines.end() && it->row == row; ++it)
            if (it->kind == LineKind::Event) return &*it;
        return nullptr;
    }
    // The planned lines of the rows first to last, with the comment lines that follow them.
    std::pair<const PlannedLine*, const PlannedLine*> LinesOf(uint32_t first, uint32_t last) const {
        const auto from = std::lower_bound(lines.begin(), lines.end(), first,
                                           [](const PlannedLine& l, uint32_t r) { return l.row < r; });
        const auto to =
            std::upper_bound(from, lines.end(), last, [](uint32_t r, const PlannedLine& l) { return r < l.row; });
        return {lines.data() + (from - lines.begin()), lines.data() + (to - lines.begin())};
    }
};

}  // namespace vornelt
