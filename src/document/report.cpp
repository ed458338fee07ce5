#include "document/report.hpp"

#include "document/document.hpp"
#include "document/timecode.hpp"
#include "text/text.hpp"

#include <algorithm>

namespace vornelt {

namespace {

struct KindInfo {
    std::string_view name;
    std::string_view heading;
    Severity severity;
};

constexpr KindInfo kKinds[kChangeKinds] = {
    {"key-out-point", "Key events given an out point", Severity::Change},
    {"clip-chain", "Clip chains given a reel name", Severity::Change},
    {"freeze-frame-removed", "Freeze frames removed", Severity::Change},
    {"speed-change-removed", "Speed changes removed", Severity::Change},
    {"audio-left-out", "Audio left out", Severity::Change},
    {"key-track-left-out", "Key track left out", Severity::Change},
    {"wipe-to-dissolve", "Wipes made dissolves", Severity::Change},
    {"key-to-dissolve", "Keys made dissolves", Severity::Change},
    {"reel-renamed", "Reels renamed in the mirror list", Severity::Change},
    {"title-applied", "Title", Severity::Change},
    {"movie-applied", "Rendered movie", Severity::Change},
    {"master-reel-applied", "Master reel", Severity::Change},
    {"impossible-timecode", "Timecodes that cannot exist at this frame rate", Severity::Warning},
    {"drop-frame-at-rate", "Drop frame list at 24 or 25 fps", Severity::Warning},
    {"record-backwards", "Record times that run backwards", Severity::Warning},
    {"record-overlap", "Record times that overlap on one track", Severity::Warning},
    {"source-out-before-in", "Source out before source in", Severity::Warning},
    {"unknown-line", "Lines Vornelt does not know", Severity::Warning},
    {"not-mac-roman", "Characters saved as \"?\"", Severity::Warning},
    {"reel-too-long", "Reel names too long for the list", Severity::Warning},
    {"looks-like-utf8", "File looks like UTF-8", Severity::Warning},
    {"looks-like-utf16", "File looks like UTF-16", Severity::Warning},
    {"comment-before-first-event", "Comment lines ahead of the first event", Severity::Warning},
};

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
    std::string (*toTimecode)(int32_t) = m.frameRate == 24.0   ? Frames24_to_TC
                                         : m.frameRate == 30.0 ? Frames30NonDrop_to_TC
                                                               : Frames25_to_TC;
    return toTimecode(in) + " to " + toTimecode(out);
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

}  // namespace

std::string_view KindName(ChangeKind kind) { return kKinds[size_t(kind)].name; }
std::string_view KindHeading(ChangeKind kind) { return kKinds[size_t(kind)].heading; }
Severity KindSeverity(ChangeKind kind) { return kKinds[size_t(kind)].severity; }
std::string_view SeverityName(Severity severity) { return severity == Severity::Change ? "change" : "warning"; }

std::string ItemText(const ChangeItem& item, const Document& m) {
    const std::string event = "Event " + std::to_string(item.event);
    const std::string fps = std::to_string(int(m.frameRate)) + " fps";
    switch (item.kind) {
        case ChangeKind::KeyOutPoint:
            return event + ": key of length zero given the length of the line before, record out " + item.before +
                   " became " + item.after;
        case ChangeKind::ClipChain:
            return std::string(Trim(m.cleanClipReelName.Get(item.row))) + ": " + std::to_string(ChainLength(item, m)) +
                   " lines of one source clip (events " + ChainRows(item, m, true) + " on lines " +
                   ChainRows(item, m, false) + "), source " + ChainSource(item, m);
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
        case ChangeKind::MasterReelApplied:
            return "Every event of the mirror list is on the master reel " + item.after + " (" +
                   std::to_string(item.number) + " events)";
        case ChangeKind::ImpossibleTimecode:
            return event + ": timecode " + item.before + " cannot exist at " + fps + " (" + item.after +
                   "): was the frame rate answered right?";
        case ChangeKind::DropFrameAtRate:
            return "The list says " + Quoted(item.before) + ", but was read at " + fps +
                   ": drop frame exists only at 30 fps. Was the frame rate answered right?";
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
