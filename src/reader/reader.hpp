#pragma once
// The reader: the text of a list into the read tables.

#include "document/document.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

// Takes cmxString apart line by line into the read tables, reads the header, names the
// format and makes the main window ready for a loaded list, with the progress window up.
void ParseCMX3600(Document& m, MainWindowState& window, ProgressWindow& progress, Platform& platform);

}  // namespace vornelt
