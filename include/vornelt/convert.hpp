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
    int fps = 25;                     // frames per second of the list: 24, 25 or 30
    bool mirror = true;               // the mirror list on one rendered master movie
    bool keys = true;                 // the key track V2
    bool audio = true;                // the audio events
    bool removeFreezeFrames = true;   // motion lines of speed 0 left out
    bool removeSpeedChanges = true;   // motion lines of any other speed left out
    bool wipesToDissolves = true;     // wipes become dissolves of the same length
    bool keysToDissolves = false;     // keys become dissolves of the same length
    bool comments = true;             // generated comment lines for every event
    WipeNames wipeNames = WipeNames::Smpte;
    std::optional<std::string> title;  // the sequence title (in capitals); none: the list's own
    std::optional<std::string> movie;  // the rendered movie named in the comment lines
    std::optional<std::string> reel;   // the master reel of the mirror list
};

enum class ListForm { CMX, GVG };

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
    std::string error;  // with BadOptions or Failed: what went wrong, for a person to read

    bool ok() const noexcept { return status == ConvertStatus::Converted; }
};

// What is wrong with the options before any list is read ("--reel: letters and digits
// only, at most 8 characters"); empty when nothing is.
std::string CheckOptions(const ConvertOptions& options);

// Converts the bytes of one list, named `name` (the name of its file: the window's title).
ConvertResult Convert(std::string_view bytes, const ConvertOptions& options,
                      std::string_view name = "list.edl") noexcept;
// The same, taking the bytes over: a long list is not held twice while it converts.
ConvertResult ConvertTaking(std::string bytes, const ConvertOptions& options,
                            std::string_view name = "list.edl") noexcept;

// The name that the save dialog suggests for a loaded file of this name:
// "reel1.edl" gives "reel1 VORNELT.edl".
std::string SuggestedSaveName(std::string_view loadedName);

}  // namespace vornelt
