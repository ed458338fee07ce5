#pragma once
// The writer: the whole output list, rendered from the copy tables under the current options.

#include "document/document.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

// Renders finalCMXString and the text area anew from the copy tables, the option flags and
// the entry fields, and marks the document modified.
void NewEDL_02(Document& m, MainWindowState& window, Platform& platform);
// The text of planned lines of the document's plan, [from, to), as the list has them: each line
// ended by a carriage return.
std::string PlannedText(const Document& m, const PlannedLine* from, const PlannedLine* to);
// Shows isModified on the main window's close button.
void PunktImPunkt(const Document& m, Platform& platform);

}  // namespace vornelt
