// The sentences of the report: each item in words for an editor, made when it is shown.
#include <algorithm>

#include "session/report.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

namespace {

// A clip chain's rows stand in chainRows from the item's start up to a -1.
int32_t ChainLength(const ChangeItem& item, const Document& m) {
    const std::vector<int32_t>& rows = m.report.chainRows;
    int32_t n = 0;
    for (size_t k = size_t(item.number); k < rows.size() && rows[k] >= 0; ++k) ++n;
    return n;
}

// The source a chain covers: its lowest source in to its highest source out.
std::string ChainSource(const ChangeItem& item, const Document& m) {
    const std::vector<int32_t>& rows = m.report.chainRows;
    int32_t in = INT32_MAX, out = INT32_MIN;
    for (size_t k = size_t(item.number); k < rows.size() && rows[k] >= 0; ++k) {
        const size_t row = size_t(rows[k]);
        if (row < m.copySourceInFrame.size()) in = std::min(in, m.copySourceInFrame[row]);
        if (row < m.copySourceOutFrame.size()) out = std::max(out, m.copySourceOutFrame[row]);
    }
    return m.Timecode(in) + " to " + m.Timecode(out);
}

// What the mirror list shows of a chain whose lines are on black or auxiliary reels: those
// keep their own reel, so the chain's name stands on its other lines only, or nowhere.
std::string ChainKeeps(const ChangeItem& item, const Document& m) {
    const std::vector<int32_t>& rows = m.report.chainRows;
    std::vector<std::string> reserved;
    size_t lines = 0;
    for (size_t k = size_t(item.number); k < rows.size() && rows[k] >= 0; ++k, ++lines) {
        const std::string reel(Trim(m.copyReelNames.Get(rows[k])));
        if (IsReservedReel(reel) && std::find(reserved.begin(), reserved.end(), reel) == reserved.end())
            reserved.push_back(reel);
    }
    size_t kept = 0;
    for (size_t k = size_t(item.number); k < rows.size() && rows[k] >= 0; ++k)
        kept += IsReservedReel(Trim(m.copyReelNames.Get(rows[k]))) ? 1 : 0;
    if (kept == 0) return {};
    std::string names;
    for (const std::string& r : reserved) names.append(names.empty() ? "" : ", ").append(r);
    std::string out = kept == lines ? "; its lines keep their reel " : "; of its lines, those on ";
    out.append(names);
    out.append(kept == lines ? " in the mirror list, so this name stands nowhere in it"
                             : " keep that reel in the mirror list");
    return out;
}

// A motion line that the writer judged by the speed the list loaded before has on its line.
std::string MotionText(const ChangeItem& item) {
    const bool freeze = Val(item.before) == 0.0;
    const bool kept = item.number != 0;
    std::string out = "Event " + std::to_string(item.event) + ": motion line of speed " + item.before +
                      (kept ? " kept although " : " left out although ") +
                      (freeze ? "Remove Freeze Frames" : "Remove Speed Changes") + (kept ? " is on" : " is off");
    out.append(": the window judges a motion line by the speed on the same line of the first list it loaded (");
    out.append(item.after).append("). Open the list in a new run of Vornelt, or convert it with vornelt-convert, to ");
    out.append(kept ? "leave it out" : "keep it");
    return out;
}

// The chain's event numbers, or its lines.
std::string ChainRows(const ChangeItem& item, const Document& m, bool events) {
    const std::vector<int32_t>& rows = m.report.chainRows;
    std::string out;
    for (size_t k = size_t(item.number); k < rows.size() && rows[k] >= 0; ++k) {
        if (k > size_t(item.number)) out += ", ";
        const size_t row = size_t(rows[k]);
        out += std::to_string(events ? (row < m.readOrigEventNumberInt.size() ? m.readOrigEventNumberInt[row] : -1)
                                     : int32_t(row) + 1);
    }
    return out;
}

std::string Quoted(std::string_view s) {
    std::string quoted;
    quoted.reserve(s.size() + 2);
    return quoted.append(1, '"').append(s).append(1, '"');
}

// The rates that count timecode as `rate` does with drop frame or without it, for a sentence:
// "29.97 fps drop frame (29.97df)"; when none does, every rate that counts it so.
std::string RatesThatKeep(FrameRate rate, bool dropFrame) {
    std::string same, any;
    for (const FrameRate r : FrameRate::All()) {
        if (r.DropFrame() != dropFrame) continue;
        std::string text(r.Title());
        text.append(" (").append(r.Name()).append(")");
        if (r.TimecodeFps() == rate.TimecodeFps()) same.append(same.empty() ? "" : " or ").append(text);
        any.append(any.empty() ? "" : " or ").append(text);
    }
    return same.empty() ? any : same;
}

// A list that says drop frame, read at a rate that counts none.
std::string DropFrameText(const ChangeItem& item, FrameRate rate) {
    std::string text = "The list says " + Quoted(item.before);
    text.append(", but was read at ").append(rate.Title());
    text.append(
        " non-drop frame: the new list says NON-DROP FRAME, and an online system reads its timecodes as "
        "non-drop frame, up to 3.6 seconds per hour away from the cut.");
    return text.append(" Read it at ").append(RatesThatKeep(rate, true)).append(" to keep it drop frame.");
}

// A list that says non-drop frame, read at a rate that counts drop frame.
std::string NonDropFrameText(const ChangeItem& item, FrameRate rate) {
    std::string text = "The list says " + Quoted(item.before);
    text.append(", but was read at ").append(rate.Title());
    text.append(
        ": the new list says DROP FRAME, and its timecodes were counted in drop frame, up to 3.6 seconds per "
        "hour away from the cut. Read it at ");
    return text.append(RatesThatKeep(rate, false)).append(" to keep it non-drop frame.");
}

}  // namespace

std::string ItemText(const ChangeItem& item, const Document& m) {
    const std::string event = "Event " + std::to_string(item.event);
    const std::string fps(m.frameRate.Title());
    switch (item.kind) {
        case ChangeKind::KeyOutPoint:
            return event + ": key of length zero given the length of the line before, record out " + item.before +
                   " became " + item.after;
        case ChangeKind::ClipChain:
            return std::string(Trim(m.cleanClipReelName.Get(item.row))) + ": " + std::to_string(ChainLength(item, m)) +
                   " lines of one source clip (events " + ChainRows(item, m, true) + " on lines " +
                   ChainRows(item, m, false) + "), source " + ChainSource(item, m) + ChainKeeps(item, m);
        case ChangeKind::FreezeFrameRemoved: return event + ": freeze frame removed (speed " + item.before + ")";
        case ChangeKind::SpeedChangeRemoved: return event + ": speed change removed (speed " + item.before + ")";
        case ChangeKind::AudioLeftOut:
            if (!item.after.empty()) return event + ": audio of " + item.before + " left out, kept as " + item.after;
            return event + ": audio event " + item.before + " left out";
        case ChangeKind::KeyTrackLeftOut: return event + ": key line " + item.before + " left out";
        case ChangeKind::WipeToDissolve:
            return event + ": wipe " + item.before + " made a dissolve of " + item.after + " frames";
        case ChangeKind::KeyToDissolve: return event + ": key " + item.before + " made a dissolve";
        case ChangeKind::ReelRenamed:
            return event + ": reel " + std::string(Trim(m.readOrigReelNames.Get(item.row))) + " became " +
                   std::string(Trim(m.cleanClipReelName.Get(item.row)));
        case ChangeKind::TitleApplied: return "Title " + Quoted(item.before) + " became " + Quoted(item.after);
        case ChangeKind::MovieApplied: return "Comment lines name the rendered movie " + Quoted(item.after);
        case ChangeKind::MirrorList:
            return "Every event line's source timecodes are its record timecodes, on the rendered master movie (" +
                   std::to_string(item.number) + " events)";
        case ChangeKind::EventOnHeaderLine:
            return "Event " + std::to_string(item.event) + " on line " + std::to_string(item.row + 1) +
                   " is not in the new list: the first two lines of a list are taken as its title and FCM lines";
        case ChangeKind::MotionJudgedByListBefore: return MotionText(item);
        case ChangeKind::MasterReelApplied:
            return "Every event of the mirror list is on the master reel " + item.after + " (" +
                   std::to_string(item.number) + " events)";
        case ChangeKind::ImpossibleTimecode:
            return event + ": timecode " + item.before + " cannot exist at " + fps + " (" + item.after +
                   "): was the frame rate answered right?";
        case ChangeKind::DropFrameAtRate: return DropFrameText(item, m.frameRate);
        case ChangeKind::NonDropFrameAtRate: return NonDropFrameText(item, m.frameRate);
        case ChangeKind::RecordBackwards:
            return event + ": record out " + item.after + " stands before record in " + item.before;
        case ChangeKind::RecordOverlap:
            return event + ": record in " + item.before + " on track " + item.after + " lies inside event " +
                   std::to_string(item.number) + " on the same track";
        case ChangeKind::SourceOutBeforeIn:
            return event + ": source out " + item.after + " stands before source in " + item.before;
        case ChangeKind::UnknownLine:
            return "Neither an event nor a note Vornelt knows, left out of the new list: " + Quoted(item.before);
        case ChangeKind::NotMacRoman:
            return "Mac OS Roman cannot hold " + Quoted(item.before) + ": saved as \"?\" where the line is written";
        case ChangeKind::ReelTooLong:
            return event + ": reel " + item.before + " has " + std::to_string(item.number) +
                   " characters; the list takes " + item.after;
        case ChangeKind::LooksLikeUtf8:
            return "The file looks like UTF-8, but every list is read as Windows Latin 1: accented clip names come out "
                   "garbled. Save it as Windows Latin 1 (ANSI) and open it again.";
        case ChangeKind::LooksLikeUtf16:
            return "The file looks like UTF-16, but every list is read as Windows Latin 1: it cannot be read as it "
                   "stands. Save it as Windows Latin 1 (ANSI) and open it again.";
        case ChangeKind::CommentBeforeFirstEvent:
            return "The new list has comment lines ahead of its first event line, because the first event " +
                   item.before + "; some strict readers refuse such a list";
    }
    return {};
}

}  // namespace vornelt
