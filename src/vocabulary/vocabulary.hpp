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

// Most reels are plain ASCII names that fit, with blanks at most behind them (a generated chain
// name comes formatted already): their field is the name, then blanks to the width. The four
// reserved ones are told by length. For such a name this gives the name and the number of
// blanks; for any other, false (AppendReelField takes every name).
inline bool PlainReelField(std::string_view name, bool grassValley, std::string_view& plain, size_t& blanks) noexcept {
    const size_t width = grassValley ? 6 : 8;
    // A look at each byte, no call: a reel name is a few bytes.
    size_t n = 0;
    unsigned char any = 0;
    for (; n < name.size() && name[n] != ' '; ++n) any |= static_cast<unsigned char>(name[n]);
    if (n == 0 || n > width || n == 2 || n == 3 || n == 5 || any >= 0x80) return false;
    for (size_t k = n; k < name.size(); ++k)
        if (name[k] != ' ') return false;
    plain = name.substr(0, n);
    blanks = width - n;
    return true;
}

}  // namespace vornelt
