#pragma once
// The writer: the whole output list, rendered from the copy tables under the current options.

#include "document/document.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

// Renders finalCMXString and the text area anew from the copy tables, the option flags and
// the entry fields, and marks the document modified.
void NewEDL_02(Document& m, MainWindowState& window, Platform& platform);
// Shows isModified on the main window's close button.
void PunktImPunkt(const Document& m, Platform& platform);

}  // namespace vornelt
