#pragma once
// The writer: the whole output list, rendered from the copy tables under the current options.

#include <functional>
#include <string>
#include <string_view>

#include "document/document.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

// Renders finalCMXString and the text area anew from the copy tables, the option flags and
// the entry fields, and marks the document modified.
void NewEDL_02(Document& m, MainWindowState& window, Platform& platform);
// Planned lines written as the saved file has them (CR LF line ends, Mac OS Roman), handed to
// `write` some 64 KiB at a time, whole lines at a time.
class SavedListWriter {
public:
    explicit SavedListWriter(std::function<bool(std::string_view)> write);
    // False as soon as `write` answers false.
    bool Add(const Document& m, const PlannedLine* from, const PlannedLine* to);
    bool Flush();  // what is left

private:
    static constexpr size_t kPiece = size_t(64) << 10;
    std::function<bool(std::string_view)> write_;
    std::string text_, saved_, reelField_;
};

// The document's plan written as the saved file has it (CR LF line ends, Mac OS Roman), handed
// to `write` some 64 KiB at a time: the new list without ever holding it whole. False as soon
// as `write` answers false.
bool WritePlanForSaving(const Document& m, const std::function<bool(std::string_view)>& write);
// The text of planned lines of the document's plan, [from, to), as the list has them: each line
// ended by a carriage return.
std::string PlannedText(const Document& m, const PlannedLine* from, const PlannedLine* to);
// Shows isModified on the main window's close button.
void PunktImPunkt(const Document& m, Platform& platform);

}  // namespace vornelt
