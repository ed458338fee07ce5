#pragma once
// Vornelt as a library: one edit decision list in, the list that the Vornelt window would
// save out, byte for byte.
//
// Convert is reentrant: every call works on a document of its own, so lists may be
// converted on several threads at once. Nothing here throws; a call that fails says why in
// its ErrorStatus (vornelt/error.hpp). Files are read and saved as vornelt/files.hpp tells.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vornelt/error.hpp"
#include "vornelt/files.hpp"
#include "vornelt/frame_rate.hpp"
#include "vornelt/options.hpp"
#include "vornelt/report_kinds.hpp"

namespace vornelt {

enum class ListForm { CMX, GVG };

// The name of a form: "CMX" or "GVG".
constexpr std::string_view FormName(ListForm form) { return form == ListForm::GVG ? "GVG" : "CMX"; }

// One thing the conversion changed or found.
struct ReportItem {
    ChangeKind kind = ChangeKind::KeyOutPoint;  // KindName(kind) is its stable name
    Severity severity = Severity::Change;
    int event = -1;       // the event number as read; -1: none
    int lineRead = 0;     // the line in the list as read, from 1; 0: the list as a whole
    int lineWritten = 0;  // the line in the new list, from 1; 0: not in it
    std::string text;     // what happened, for an editor to read
};

// How many items of one kind there are.
struct ReportCount {
    ChangeKind kind = ChangeKind::KeyOutPoint;  // KindHeading(kind) heads its items
    int count = 0;
};

// What changed: every repair and removal under the options in force, and what the check of
// the list found. Items stand grouped by kind, in the order of `counts`, each kind in the
// order of the lines.
struct ConvertReport {
    std::vector<ReportItem> items;
    std::vector<ReportCount> counts;  // the kinds that have items
    int oneLineChains = 0;            // clip chains of a single line: counted, not listed
    FrameRate fps;
    ListForm form = ListForm::CMX;
    int Changes() const noexcept;
    int Warnings() const noexcept;
};

// The report as text for an editor, headed by the list's name: the counts first, then the
// items of each kind.
std::string FormatReport(const ConvertReport& report, std::string_view name);

struct ConvertResult {
    std::string bytes;  // the saved list: CR LF line ends, Mac OS Roman
    ListForm form = ListForm::CMX;
    // What the window would have shown on the way, in order (the question on a reserved
    // reel name, for one).
    std::vector<std::string> messages;
    ConvertReport report;  // when options.report asked for it
};

// Whether the options can be taken before any list is read; a bad one (BadOption) is named
// in `error`: "reel MASTER-1: letters and digits only, at most 8 characters".
bool CheckOptions(const ConvertOptions& options, ErrorStatus* error);

// Converts the bytes of one list, named `name` (the name of its file: the window's title).
// When it fails (BadOption: the list cannot take an option; CannotRead: more bytes than
// kMaxListFileBytes; NoMemory; Interrupted: `options.stop` turned true), the result is empty
// and `error` says why.
ConvertResult Convert(std::string_view bytes, const ConvertOptions& options, std::string_view name = "list.edl",
                      ErrorStatus* error = nullptr) noexcept;
// The same with bytes the caller no longer needs: the conversion works in them, which saves
// holding the list twice.
ConvertResult Convert(std::string&& bytes, const ConvertOptions& options, std::string_view name = "list.edl",
                      ErrorStatus* error = nullptr) noexcept;

// The same, with the saved bytes written into `out` a piece at a time as they are made, so that
// the new list is never held whole (the result's bytes stay empty); `out` is not closed: the
// caller closes it when the conversion succeeded, and leaves it unclosed, which puts nothing in
// place, when it failed. A failed write is a failure too (CannotSave, with the writer's words).
ConvertResult ConvertInto(std::string&& bytes, const ConvertOptions& options, std::string_view name,
                          TextOutputStream& out, ErrorStatus* error = nullptr) noexcept;

// Reads the list at `input`, converts it and saves it where OutputPath (vornelt/files.hpp)
// puts it for `output`, as vornelt-convert does: never over the file it reads, by any name.
// `saved` takes the path of the output, once it is known. When it fails, nothing is saved,
// the result is empty and `error` says why: the outcomes of Convert, CannotRead and
// CannotSave with the system's error number, Refused (an output that is the input, a
// read-only file).
ConvertResult ConvertFile(std::string_view input, std::optional<std::string_view> output, const ConvertOptions& options,
                          std::string* saved, ErrorStatus* error) noexcept;

// The saved bytes of a list as text (UTF-8): Mac OS Roman, every byte one character.
std::string ListText(std::string_view saved);

}  // namespace vornelt
