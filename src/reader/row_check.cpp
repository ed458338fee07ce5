#include "reader/row_check.hpp"

#include <algorithm>
#include <cstring>
#include <string>

#include "text/encodings.hpp"
#include "text/text.hpp"

namespace vornelt {

namespace {

int Digits2(std::string_view tc, size_t at) {
    const unsigned a = unsigned(tc[at]) - '0', b = unsigned(tc[at + 1]) - '0';
    return a > 9 || b > 9 ? -1 : int(a * 10 + b);
}

// A timecode that can exist at the rate: the one test made on every timecode. Drop frame skips
// the first `Dropped()` frame numbers of every minute but the tenth.
bool CanExist(std::string_view tc, FrameRate rate) {
    if (tc.size() != 11) return false;
    const int minutes = Digits2(tc, 3), seconds = Digits2(tc, 6), frames = Digits2(tc, 9);
    return Digits2(tc, 0) >= 0 && minutes >= 0 && minutes < 60 && seconds >= 0 && seconds < 60 && frames >= 0 &&
           frames < rate.TimecodeFps() && (seconds != 0 || frames >= rate.Dropped() || minutes % 10 == 0);
}

// Why a timecode of the list cannot exist at the rate.
std::string WhyImpossible(std::string_view tc, FrameRate rate) {
    if (tc.size() != 11) return "not HH:MM:SS:FF";
    const int hours = Digits2(tc, 0), minutes = Digits2(tc, 3), seconds = Digits2(tc, 6), frames = Digits2(tc, 9);
    if (hours < 0 || minutes < 0 || seconds < 0 || frames < 0) return "a field that is no number";
    if (minutes >= 60) return "minute " + std::to_string(minutes);
    if (seconds >= 60) return "second " + std::to_string(seconds);
    if (frames >= rate.TimecodeFps()) return "frame " + std::to_string(frames);
    if (frames < rate.Dropped()) {
        std::string why = "frame ";
        return why.append(tc.substr(9, 2))
            .append(", which drop frame skips at the start of minute ")
            .append(tc.substr(3, 2));
    }
    return {};
}

// The first drop-frame timecode of a line (HH:MM:SS;FF), or "".
std::string_view DropFrameTimecode(std::string_view line) {
    for (size_t at = 0; at + 11 <= line.size(); ++at) {
        const std::string_view tc = line.substr(at, 11);
        if (tc[8] == ';' && tc[2] == ':' && tc[5] == ':' && Digits2(tc, 0) >= 0 && Digits2(tc, 3) >= 0 &&
            Digits2(tc, 6) >= 0 && Digits2(tc, 9) >= 0)
            return tc;
    }
    return {};
}

// Lines other than events that a list may hold and Vornelt knows what to do with.
bool IsKnownNote(std::string_view line) {
    if (line.empty() || line[0] == '*') return true;
    for (const std::string_view start : {"TITLE:", "FCM:", "M2", "PEG A", "PEG B", "AUD", "SPLIT", ">>>",
                                         "EFFECTS NAME", "SMPTE FRAME CODE", "NON-DROP FRAME", "DROP FRAME"})
        if (BeginsCI(line, start)) return true;
    return false;
}

// The few tracks of a list are short ASCII texts: such a track in capitals, as one number
// that equals another exactly when the two tracks are the same in any case; 0 for any other
// track, which is compared the general way.
uint64_t TrackKey(std::string_view track) {
    if (track.empty() || track.size() > 8) return 0;
    uint64_t key = 0;
    for (const char c : track) {
        if (static_cast<unsigned char>(c) >= 0x80) return 0;
        key = key << 8 | uint64_t(c >= 'a' && c <= 'z' ? c - 32 : c);
    }
    return key;
}

}  // namespace

// Reel names are short: one multiplication for a name of up to eight bytes.
size_t RowCheck::NameHash::operator()(std::string_view name) const noexcept {
    if (name.size() > 8) return std::hash<std::string_view>()(name);
    uint64_t word = 0;
    std::memcpy(&word, name.data(), name.size());
    return size_t((word ^ name.size()) * 0x9E3779B97F4A7C15ull >> 16);
}

RowCheck::RowCheck(Document& m, FrameRate rate) : m_(m), items_(m.report.Section(ReportSection::Load)), rate_(rate) {}

void RowCheck::Check(const Line& l) {
    if (!l.ascii) {
        if (const std::string missing = CharactersNotInMacRoman(l.text); !missing.empty())
            items_.push_back({ChangeKind::NotMacRoman, l.row, l.event, 0, missing, {}});
    }

    if (l.number.empty()) {
        // A list that counts drop frame, by its FCM line or by its timecodes (";" before the
        // frames), read at a rate that counts none, or a list that says non-drop frame read at a
        // rate that counts drop frame: said once.
        if (!frameModeSaid_) {
            const bool fcm = BeginsCI(l.text, "FCM:") && InStr(l.text, "DROP") > 0;
            const bool nonDrop = fcm && InStr(l.text, "NON") > 0;
            if (fcm && nonDrop == rate_.DropFrame()) {
                items_.push_back({nonDrop ? ChangeKind::NonDropFrameAtRate : ChangeKind::DropFrameAtRate,
                                  l.row,
                                  -1,
                                  0,
                                  std::string(Trim(Mid(l.text, 5))),
                                  {}});
                frameModeSaid_ = true;
            } else if (const std::string_view tc = rate_.DropFrame() ? std::string_view() : DropFrameTimecode(l.text);
                       !tc.empty()) {
                items_.push_back({ChangeKind::DropFrameAtRate, l.row, -1, 0, std::string(tc), {}});
                frameModeSaid_ = true;
            }
        }
        // A GVG list's first line with text is its title: that line leaves again in Finish.
        if (!IsKnownNote(l.text))
            items_.push_back({ChangeKind::UnknownLine, l.row, -1, 0, std::string(Left(l.text, 60)), {}});
        return;
    }

    for (const std::string_view code : {l.sourceIn, l.sourceOut, l.recordIn, l.recordOut}) {
        if (!CanExist(code, rate_)) {
            items_.push_back(
                {ChangeKind::ImpossibleTimecode, l.row, l.event, 0, std::string(code), WhyImpossible(code, rate_)});
            break;
        }
    }
    if (l.sourceOutFrame < l.sourceInFrame)
        items_.push_back(
            {ChangeKind::SourceOutBeforeIn, l.row, l.event, 0, std::string(l.sourceIn), std::string(l.sourceOut)});
    if (l.recordOutFrame < l.recordInFrame)
        items_.push_back(
            {ChangeKind::RecordBackwards, l.row, l.event, 0, std::string(l.recordIn), std::string(l.recordOut)});

    // The rows of one event (a transition's two lines, a key's) may share their time.
    const uint64_t key = TrackKey(l.mode);
    auto end = std::find_if(tracks_.begin(), tracks_.end(), [&](const TrackEnd& t) {
        return key != 0 && t.key != 0 ? t.key == key : EqualsCI(t.track, l.mode);
    });
    if (end == tracks_.end()) {
        tracks_.push_back({l.mode, key, l.recordOutFrame, l.event});
    } else {
        if (end->event != l.event && l.recordInFrame < end->recordOut)
            items_.push_back({ChangeKind::RecordOverlap, l.row, l.event, end->event, std::string(l.recordIn),
                              std::string(end->track)});
        if (end->event != l.event || l.recordOutFrame > end->recordOut) end->recordOut = l.recordOutFrame;
        end->event = l.event;
    }

    // A name of no more bytes than the narrower form takes has no more characters either.
    if (l.reel.size() > 6) {
        const int32_t length = int32_t(Len(l.reel));
        if (length > 6 && longNames_.insert(l.reel).second) longReels_.push_back({l.reel, l.row, l.event, length});
    }
}

void RowCheck::Finish() {
    if (m_.IsGrassValley) {
        const int32_t title = m_.indexStart - 1;
        auto it = std::find_if(items_.begin(), items_.end(), [&](const ChangeItem& item) {
            return item.kind == ChangeKind::UnknownLine && item.row == title;
        });
        if (it != items_.end()) items_.erase(it);
    }
    // The first line of each name too long for the list's form.
    const int32_t width = m_.IsGrassValley ? 6 : 8;
    for (const LongReel& r : longReels_)
        if (r.length > width)
            items_.push_back({ChangeKind::ReelTooLong, r.row, r.event, r.length, std::string(r.name),
                              std::to_string(width) + (m_.IsGrassValley ? " (GVG)" : " (CMX)")});
}

}  // namespace vornelt
