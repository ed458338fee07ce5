#pragma once
// vornelt-convert: the lists of the window, without a window. Each input is converted in a
// fresh run of the program: the options are set before the load, the fields are edited
// after it (title, movie, reel), and the list is saved through the save dialog.
#include <ostream>

namespace vornelt {

// Exit status: 0 all converted, 1 an input could not be read or saved, 2 bad options.
// A list written to standard output ("-o -") goes to `out`; messages go to `err`.
int ConvertMain(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace vornelt
