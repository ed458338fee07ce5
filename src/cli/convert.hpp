#pragma once
// vornelt-convert: the lists of the window, without a window. Each input is converted through
// the library (vornelt::Convert), in a session of its own: the options are set before the
// load, the fields are filled in after it (title, movie, reel), and the saved bytes go to the
// input's output file, written whole before it takes the place of an earlier one.
#include <ostream>

namespace vornelt {

// Exit status: 0 all converted, 1 an input could not be read or saved, 2 bad options.
// A list written to standard output ("-o -") goes to `out`; messages go to `err`.
int ConvertMain(int argc, const char* const* argv, std::ostream& out, std::ostream& err);

}  // namespace vornelt
