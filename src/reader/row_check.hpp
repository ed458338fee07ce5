#pragma once
// The check of the list as read, made by the reader on each line as it takes it apart: what
// may not be what the list's author meant (a timecode that cannot exist at the rate the user
// answered, record times that run backwards or overlap on a track, a line Vornelt does not
// know, a character Mac OS Roman cannot hold, a reel too long for the form). It changes
// nothing; it records what it finds into the load's section of the report. The reader has
// every field of the line in hand, so the check reads no table.

#include <cstdint>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "document/document.hpp"

namespace vornelt {

class RowCheck {
public:
    // The fields of one line as the reader found them; `number` empty: the line is no event.
    struct Line {
        int32_t row;
        std::string_view text;  // the trimmed line
        bool ascii;
        std::string_view number, reel, mode;
        int32_t event;
        std::string_view sourceIn, sourceOut, recordIn, recordOut;
        int32_t sourceInFrame, sourceOutFrame, recordInFrame, recordOutFrame;
    };

    RowCheck(Document& m, FrameRate rate);
    void Check(const Line& line);
    // Once the header is read: the form and the title line are known.
    void Finish();

private:
    struct TrackEnd {
        std::string_view track;
        uint64_t key;  // an ASCII track of up to eight characters in capitals; 0 for any other
        int32_t recordOut;
        int32_t event;
    };
    struct LongReel {
        std::string_view name;
        int32_t row, event, length;
    };

    Document& m_;
    std::vector<ChangeItem>& items_;
    FrameRate rate_;
    bool frameModeSaid_ = false;  // a word on the frame count mode is said once
    std::vector<TrackEnd> tracks_;
    // The first line of each name longer than the narrower form takes, and those names.
    std::vector<LongReel> longReels_;
    struct NameHash {
        size_t operator()(std::string_view name) const noexcept;
    };
    std::unordered_set<std::string_view, NameHash> longNames_;
};

}  // namespace vornelt
