#pragma once
// The wipe names of both tables and the order of a comment block.

#include <string>
#include <string_view>

namespace vornelt {

// The effect name of a wipe code ("W001" to "W354"), in capitals; "UNKNOWN" when none.
std::string WipeCodesSMPTE(std::string_view code);
// The effect name as Final Cut Pro knows it ("W001" to "W256"); "EDGE WIPE" when none.
std::string WipeCodesFCP(std::string_view code);
// Puts a comment block of exactly three lines into the order effect, from, to.
std::string SortCommentLine(std::string_view block);

}  // namespace vornelt
