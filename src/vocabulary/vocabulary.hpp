#pragma once
// The wipe names of both tables, the order of a comment block, and the reel names.

#include <string>
#include <string_view>

namespace vornelt {

// The effect name of a wipe code ("W001" to "W354"), in capitals; "UNKNOWN" when none.
std::string WipeCodesSMPTE(std::string_view code);
// The effect name as Final Cut Pro knows it ("W001" to "W256"); "EDGE WIPE" when none.
std::string WipeCodesFCP(std::string_view code);
// Puts a comment block of exactly three lines into the order effect, from, to.
std::string SortCommentLine(std::string_view block);
// The same, appended to `out`.
void AppendSortedCommentLine(std::string& out, std::string_view block);

// The reels that a list keeps for black and the auxiliary source: "AX", "BL", "AUX" and
// "BLACK". The writer, the entry fields and the converter all go by this one list.
inline constexpr std::string_view kReservedReels[] = {"AX", "BL", "AUX", "BLACK"};
// One of the reserved reels, compared ignoring case and as a whole text.
bool IsReservedReel(std::string_view reel) noexcept;

// Any reel text as the fixed-width reel field of the list's form: 8 characters in a CMX list,
// 6 in a GVG list.
std::string FormatReelNames(std::string_view name, bool grassValley);
// The same, appended in place.
void AppendReelField(std::string& out, std::string_view name, bool grassValley);

}  // namespace vornelt
