#pragma once
// The kinds of what a conversion changes or finds, with their stable names ("key-out-point",
// for files and Python), their headings for people and their severity: one table, checked
// against the enumeration when it is compiled.

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace vornelt {

enum class ChangeKind : uint8_t {
    // Repairs at load.
    KeyOutPoint,
    ClipChain,
    // Removals and changes under the options.
    FreezeFrameRemoved,
    SpeedChangeRemoved,
    AudioLeftOut,
    KeyTrackLeftOut,
    WipeToDissolve,
    KeyToDissolve,
    ReelRenamed,
    MirrorList,
    TitleApplied,
    MovieApplied,
    MasterReelApplied,
    // The check of the list as read.
    ImpossibleTimecode,
    DropFrameAtRate,
    NonDropFrameAtRate,
    RecordBackwards,
    RecordOverlap,
    SourceOutBeforeIn,
    UnknownLine,
    NotMacRoman,
    ReelTooLong,
    LooksLikeUtf8,
    LooksLikeUtf16,
    // The check of the new list.
    EventOnHeaderLine,
    MotionJudgedByListBefore,
    CommentBeforeFirstEvent,
};
inline constexpr size_t kChangeKinds = size_t(ChangeKind::CommentBeforeFirstEvent) + 1;

enum class Severity : uint8_t { Change, Warning };

namespace report_kinds {

struct Row {
    ChangeKind kind;
    std::string_view name;
    std::string_view heading;
    Severity severity;
};

inline constexpr Row kRows[] = {
    {ChangeKind::KeyOutPoint, "key-out-point", "Key events given an out point", Severity::Change},
    {ChangeKind::ClipChain, "clip-chain", "Clip chains given a reel name", Severity::Change},
    {ChangeKind::FreezeFrameRemoved, "freeze-frame-removed", "Freeze frames removed", Severity::Change},
    {ChangeKind::SpeedChangeRemoved, "speed-change-removed", "Speed changes removed", Severity::Change},
    {ChangeKind::AudioLeftOut, "audio-left-out", "Audio left out", Severity::Change},
    {ChangeKind::KeyTrackLeftOut, "key-track-left-out", "Key track left out", Severity::Change},
    {ChangeKind::WipeToDissolve, "wipe-to-dissolve", "Wipes made dissolves", Severity::Change},
    {ChangeKind::KeyToDissolve, "key-to-dissolve", "Keys made dissolves", Severity::Change},
    {ChangeKind::ReelRenamed, "reel-renamed", "Reels renamed in the mirror list", Severity::Change},
    {ChangeKind::MirrorList, "mirror-list", "Mirror list on the master movie", Severity::Change},
    {ChangeKind::TitleApplied, "title-applied", "Title", Severity::Change},
    {ChangeKind::MovieApplied, "movie-applied", "Rendered movie", Severity::Change},
    {ChangeKind::MasterReelApplied, "master-reel-applied", "Master reel", Severity::Change},
    {ChangeKind::ImpossibleTimecode, "impossible-timecode", "Timecodes that cannot exist at this frame rate",
     Severity::Warning},
    {ChangeKind::DropFrameAtRate, "drop-frame-at-rate", "Drop frame list read as non-drop frame", Severity::Warning},
    {ChangeKind::NonDropFrameAtRate, "non-drop-frame-at-rate", "Non-drop frame list read as drop frame",
     Severity::Warning},
    {ChangeKind::RecordBackwards, "record-backwards", "Record times that run backwards", Severity::Warning},
    {ChangeKind::RecordOverlap, "record-overlap", "Record times that overlap on one track", Severity::Warning},
    {ChangeKind::SourceOutBeforeIn, "source-out-before-in", "Source out before source in", Severity::Warning},
    {ChangeKind::UnknownLine, "unknown-line", "Lines Vornelt does not know", Severity::Warning},
    {ChangeKind::NotMacRoman, "not-mac-roman", "Characters saved as \"?\"", Severity::Warning},
    {ChangeKind::ReelTooLong, "reel-too-long", "Reel names too long for the list", Severity::Warning},
    {ChangeKind::LooksLikeUtf8, "looks-like-utf8", "File looks like UTF-8", Severity::Warning},
    {ChangeKind::LooksLikeUtf16, "looks-like-utf16", "File looks like UTF-16", Severity::Warning},
    {ChangeKind::EventOnHeaderLine, "event-on-header-line", "Events on the title and FCM lines, not in the new list",
     Severity::Warning},
    {ChangeKind::MotionJudgedByListBefore, "motion-judged-by-list-before",
     "Motion lines judged by the list loaded before", Severity::Warning},
    {ChangeKind::CommentBeforeFirstEvent, "comment-before-first-event", "Comment lines ahead of the first event",
     Severity::Warning},
};

// Every kind has its row, at its own place.
constexpr bool RowsMatchKinds() {
    if (std::size(kRows) != kChangeKinds) return false;
    for (size_t k = 0; k < kChangeKinds; ++k)
        if (kRows[k].kind != ChangeKind(k)) return false;
    return true;
}
static_assert(RowsMatchKinds(), "report_kinds::kRows must list every ChangeKind in the order of the enumeration");

}  // namespace report_kinds

// The stable name of a kind ("key-out-point"), its heading ("Key events given an out point")
// and its severity.
constexpr std::string_view KindName(ChangeKind kind) { return report_kinds::kRows[size_t(kind)].name; }
constexpr std::string_view KindHeading(ChangeKind kind) { return report_kinds::kRows[size_t(kind)].heading; }
constexpr Severity KindSeverity(ChangeKind kind) { return report_kinds::kRows[size_t(kind)].severity; }
constexpr std::string_view SeverityName(Severity severity) {
    return severity == Severity::Change ? "change" : "warning";
}

}  // namespace vornelt
