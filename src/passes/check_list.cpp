// CheckList: what in the list as read may not be what its author meant. It changes nothing;
// it only records what it finds.
#include <algorithm>
#include <string>
#include <vector>

#include "text/encodings.hpp"
#include "text/text.hpp"
#include "passes/passes.hpp"
#include "passes/rows.hpp"
#include "platform/platform.hpp"

namespace vornelt {

namespace {

int Digits2(std::string_view tc, size_t at) {
    const char a = tc[at], b = tc[at + 1];
    if (a < '0' || a > '9' || b < '0' || b > '9') return -1;
    return (a - '0') * 10 + (b - '0');
}

// A timecode that can exist at `fps` frames per second: the one test made on every timecode.
bool CanExist(std::string_view tc, int fps) {
    if (tc.size() != 11) return false;
    const int minutes = Digits2(tc, 3), seconds = Digits2(tc, 6), frames = Digits2(tc, 9);
    return Digits2(tc, 0) >= 0 && minutes >= 0 && minutes < 60 && seconds >= 0 && seconds < 60 && frames >= 0 &&
           frames < fps;
}

// Why a timecode of the list cannot exist at `fps` frames per second.
std::string WhyImpossible(std::string_view tc, int fps) {
    if (tc.size() != 11) return "not HH:MM:SS:FF";
    const int hours = Digits2(tc, 0), minutes = Digits2(tc, 3), seconds = Digits2(tc, 6), frames = Digits2(tc, 9);
    if (hours < 0 || minutes < 0 || seconds < 0 || frames < 0) return "a field that is no number";
    if (minutes >= 60) return "minute " + std::to_string(minutes);
    if (seconds >= 60) return "second " + std::to_string(seconds);
    if (frames >= fps) return "frame " + std::to_string(frames);
    return {};
}

// Lines other than events that a list may hold and Vornelt knows what to do with.
bool IsKnownNote(std::string_view line) {
    if (line.empty() || line[0] == '*') return true;
    for (const std::string_view start : {"TITLE:", "FCM:", "M2", "PEG A", "PEG B", "AUD", "SPLIT", ">>>",
                                         "EFFECTS NAME", "SMPTE FRAME CODE", "NON-DROP FRAME", "DROP FRAME"})
        if (StartsWithCI(line, start)) return true;
    return false;
}

struct TrackEnd {
    std::string_view track;
    int32_t recordOut;
    int32_t event;
};

}  // namespace

void CheckList(Document& m, LooksLike encoding, Platform& platform) {
    if (!m.report.recording) return;
    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Load);
    if (encoding == LooksLike::Utf8) report.push_back({ChangeKind::LooksLikeUtf8, -1, -1, 0, {}, {}});
    if (encoding == LooksLike::Utf16) report.push_back({ChangeKind::LooksLikeUtf16, -1, -1, 0, {}, {}});

    const int fps = int(m.frameRate);
    const size_t reelWidth = m.IsGrassValley ? 6 : 8;
    const size_t rows = passes_detail::RowsWithin(
        m.maxZeilen, {m.readOrigCompleteLine.size(), m.readOrigEventNumberStr.size(), m.readOrigRecInFrame.size(),
                      m.readOrigRecOutFrame.size(), m.readOrigSourceInFrame.size(), m.readOrigSourceOutFrame.size()});
    std::vector<TrackEnd> tracks;
    std::vector<std::string> longReels;
    // Every character of an all-ASCII list fits Mac OS Roman.
    const bool ascii = !m.cmxString || IsAscii(*m.cmxString);
    for (size_t i = 0; i < rows; ++i) {
        platform.Yield();
        const std::string_view line = m.readOrigCompleteLine(i);
        const int32_t row = int32_t(i);
        if (const std::string missing = ascii ? std::string() : CharactersNotInMacRoman(line); !missing.empty())
            report.push_back({ChangeKind::NotMacRoman, row, m.readOrigEventNumberInt[i], 0, missing, {}});

        if (m.readOrigEventNumberStr(i).empty()) {
            if (StartsWithCI(line, "FCM:") && InStr(line, "DROP") > 0 && InStr(line, "NON") == 0 && fps != 30)
                report.push_back({ChangeKind::DropFrameAtRate, row, -1, 0, std::string(Trim(Mid(line, 5))), {}});
            // A GVG list's first line with text is its title.
            const bool gvgTitle = m.IsGrassValley && row + 1 == m.indexStart;
            if (!IsKnownNote(line) && !gvgTitle)
                report.push_back({ChangeKind::UnknownLine, row, -1, 0, std::string(Left(line, 60)), {}});
            continue;
        }

        const int32_t event = m.readOrigEventNumberInt[i];
        for (const TextColumn* tc : {&m.readOrigSourceInTC, &m.readOrigSourceOutTC, &m.readOrigRecInTC, &m.readOrigRecOutTC}) {
            const std::string_view code = tc->Get(int64_t(i));
            if (!CanExist(code, fps)) {
                report.push_back({ChangeKind::ImpossibleTimecode, row, event, 0, std::string(code), WhyImpossible(code, fps)});
                break;
            }
        }
        const int32_t sourceIn = m.readOrigSourceInFrame[i], sourceOut = m.readOrigSourceOutFrame[i];
        if (sourceOut < sourceIn)
            report.push_back({ChangeKind::SourceOutBeforeIn, row, event, 0, std::string(m.readOrigSourceInTC(i)),
                              std::string(m.readOrigSourceOutTC(i))});
        const int32_t recordIn = m.readOrigRecInFrame[i], recordOut = m.readOrigRecOutFrame[i];
        if (recordOut < recordIn)
            report.push_back({ChangeKind::RecordBackwards, row, event, 0, std::string(m.readOrigRecInTC(i)),
                              std::string(m.readOrigRecOutTC(i))});

        // The rows of one event (a transition's two lines, a key's) may share their time.
        const std::string_view track = m.readOrigMode(i);
        auto end = std::find_if(tracks.begin(), tracks.end(), [&](const TrackEnd& t) { return EqualsCI(t.track, track); });
        if (end == tracks.end()) {
            tracks.push_back({track, recordOut, event});
        } else {
            if (end->event != event && recordIn < end->recordOut)
                report.push_back({ChangeKind::RecordOverlap, row, event, end->event, std::string(m.readOrigRecInTC(i)),
                                  std::string(end->track)});
            if (end->event != event || recordOut > end->recordOut) end->recordOut = recordOut;
            end->event = event;
        }

        const std::string_view reel = m.readOrigReelNames(i);
        if (size_t(Len(reel)) > reelWidth && std::find(longReels.begin(), longReels.end(), reel) == longReels.end()) {
            longReels.emplace_back(reel);
            report.push_back({ChangeKind::ReelTooLong, row, event, int32_t(Len(reel)), std::string(reel),
                              std::to_string(reelWidth) + (m.IsGrassValley ? " (GVG)" : " (CMX)")});
        }
    }
}

}  // namespace vornelt
