#pragma once
// Vornelt as a library: one edit decision list in, the list that the Vornelt window would
// save out, byte for byte.
//
// Convert is reentrant: every call works on a document of its own, so lists may be
// converted on several threads at once. It throws nothing; what is wrong with the options
// comes back in the result.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vornelt {

// The table that names wipes in the generated comment lines.
enum class WipeNames { FinalCutPro, Smpte };

// The options of a conversion, with the window's defaults.
struct ConvertOptions {
    int fps = 25;                    // frames per second of the list: 24, 25 or 30
    bool mirror = true;              // the mirror list on one rendered master movie
    bool keys = true;                // the key track V2
    bool audio = true;               // the audio events
    bool removeFreezeFrames = true;  // motion lines of speed 0 left out
    bool removeSpeedChanges = true;  // motion lines of any other speed left out
    bool wipesToDissolves = true;    // wipes become dissolves of the same length
    bool keysToDissolves = false;    // keys become dissolves of the same length
    bool comments = true;            // generated comment lines for every event
    WipeNames wipeNames = WipeNames::Smpte;
    std::optional<std::string> title;  // the sequence title (in capitals); none: the list's own
    std::optional<std::string> movie;  // the rendered movie named in the comment lines
    std::optional<std::string> reel;   // the master reel of the mirror list
    bool report = true;                // fill ConvertResult::report
};

enum class ListForm { CMX, GVG };

// One thing the conversion changed or found.
struct ReportItem {
    std::string kind;      // a stable name: "key-out-point", "wipe-to-dissolve", "impossible-timecode", ...
    std::string severity;  // "change" or "warning"
    int event = -1;        // the event number as read; -1: none
    int lineRead = 0;      // the line in the list as read, from 1; 0: the list as a whole
    int lineWritten = 0;   // the line in the new list, from 1; 0: not in it
    std::string text;      // what happened, for an editor to read
};

// How many items of one kind there are.
struct ReportCount {
    std::string kind;
    std::string severity;
    std::string heading;  // "Wipes made dissolves"
    int count = 0;
};

// What changed: every repair and removal under the options in force, and what the check of
// the list found. Items stand grouped by kind, in the order of `counts`, each kind in the
// order of the lines.
struct ConvertReport {
    std::vector<ReportItem> items;
    std::vector<ReportCount> counts;  // the kinds that have items
    int oneLineChains = 0;            // clip chains of a single line: counted, not listed
    int fps = 25;
    ListForm form = ListForm::CMX;
    int Changes() const noexcept;
    int Warnings() const noexcept;
};

// The report as text for an editor, headed by the list's name: the counts first, then the
// items of each kind.
std::string FormatReport(const ConvertReport& report, std::string_view name);

enum class ConvertStatus {
    Converted,   // `bytes` holds the list
    BadOptions,  // an option the list cannot take; `error` says which and why
    Failed,      // the list could not be converted (no memory); `error` says why
};

struct ConvertResult {
    ConvertStatus status = ConvertStatus::Failed;
    std::string bytes;  // the saved list: CR LF line ends, Mac OS Roman
    ListForm form = ListForm::CMX;
    // What the window would have shown on the way, in order (the question on a reserved
    // reel name, for one).
    std::vector<std::string> messages;
    std::string error;     // with BadOptions or Failed: what went wrong, for a person to read
    ConvertReport report;  // with Converted, when options.report asked for it

    bool ok() const noexcept { return status == ConvertStatus::Converted; }
};

// What is wrong with the options before any list is read ("--reel: letters and digits
// only, at most 8 characters"); empty when nothing is.
std::string CheckOptions(const ConvertOptions& options);

// Converts the bytes of one list, named `name` (the name of its file: the window's title).
ConvertResult Convert(std::string_view bytes, const ConvertOptions& options,
                      std::string_view name = "list.edl") noexcept;
// The same with bytes the caller no longer needs: the conversion works in them, which saves
// holding the list twice.
ConvertResult Convert(std::string&& bytes, const ConvertOptions& options, std::string_view name = "list.edl") noexcept;

// The name that the save dialog suggests for a loaded file of this name:
// "reel1.edl" gives "reel1 VORNELT.edl".
std::string SuggestedSaveName(std::string_view loadedName);

}  // namespace vornelt
