#pragma once
// The text of the whole core, and the operations that every routine relies on.
//
// Representation: every text is UTF-8, owned as std::string and borrowed as
// std::string_view. An EDL is Windows Latin 1 and almost all ASCII, where UTF-8 spends
// one byte on one character, so the tables of a conform list of tens of thousands of
// events stay as small as the file itself, and most cuts are plain byte cuts (each
// operation below has an ASCII fast path). Yet the entry fields, file names and the saved
// list (Mac OS Roman) need characters far outside Latin 1 ("€", "Ω", "ﬁ"), which a byte
// per character could not hold. The operations count characters, never bytes: a position
// means the same whatever the text holds, and a cut never splits a character.
//
// Conventions of the operations:
// - Positions are 1-based and count characters (Unicode code points).
// - Comparisons and searches ignore case: each character is folded on its own to its
//   one-character lower case, so a position found in folded text is the same position in
//   the original.
// - A blank is U+0020 only; a no-break space is an ordinary character.
// - Malformed UTF-8 never crashes anything: a stray byte counts as one character.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vornelt {

using Text = std::string;
using TextView = std::string_view;

inline constexpr char kCR = '\r';  // the one line end inside the system

// ---- characters ---------------------------------------------------------------------
bool IsAsciiLong(TextView s) noexcept;  // a word at a time
// Whether every byte is below 0x80. Most texts asked about are fields of a few characters,
// looked at in place.
inline bool IsAscii(TextView s) noexcept {
    if (s.size() > 16) return IsAsciiLong(s);
    unsigned char any = 0;
    for (const char c : s) any |= static_cast<unsigned char>(c);
    return any < 0x80;
}
// Decodes one character at s[i] and advances i; a malformed byte gives U+FFFD.
char32_t NextChar(TextView s, size_t& i) noexcept;
void AppendChar(std::string& out, char32_t c);
// Replaces malformed sequences by U+FFFD, for text that comes from outside (arguments).
Text SanitizeUtf8(TextView s);
char32_t FoldChar(char32_t c) noexcept;  // one-character lower case

// ---- cutting (results borrow from the argument) --------------------------------------
int64_t LenOfUtf8(TextView s) noexcept;
inline int64_t Len(TextView s) noexcept {  // in characters
    return IsAscii(s) ? int64_t(s.size()) : LenOfUtf8(s);
}
// Mid from a 1-based start; a start below 1 counts as 1; a count past the end or below 0
// with the two-argument form gives the rest; a negative count gives "".
TextView Mid(TextView s, int64_t start) noexcept;
TextView Mid(TextView s, int64_t start, int64_t count) noexcept;
TextView Left(TextView s, int64_t count) noexcept;   // count <= 0 gives ""
TextView Right(TextView s, int64_t count) noexcept;  // count <= 0 gives ""
TextView Trim(TextView s) noexcept;                  // blanks off both ends
TextView RTrim(TextView s) noexcept;                 // blanks off the right end
TextView LTrim(TextView s) noexcept;                 // blanks off the left end

// ---- searching and comparing, ignoring case -----------------------------------------
// Position of the first match at or after `start` (1-based), 0 if none or if `find` is
// empty. A start below 1 counts as 1.
int64_t InStr(int64_t start, TextView source, TextView find) noexcept;
inline int64_t InStr(TextView source, TextView find) noexcept { return InStr(1, source, find); }
bool EqualsCI(TextView a, TextView b) noexcept;
// The text begins with the literal: the search for it gives position 1.
bool StartsWithCI(TextView s, TextView literal) noexcept;
// EqualsCI against an ASCII literal, with the short ASCII texts of the tables compared in
// place. Any other text goes the general way, where a character outside ASCII may still
// fold to the literal's letters.
inline bool IsCI(TextView text, TextView literal) noexcept {
    for (char c : text)
        if (static_cast<unsigned char>(c) >= 0x80) return EqualsCI(text, literal);
    if (text.size() != literal.size()) return false;
    for (size_t k = 0; k < text.size(); ++k) {
        char a = text[k], b = literal[k];
        if (a >= 'a' && a <= 'z') a = char(a - 32);
        if (b >= 'a' && b <= 'z') b = char(b - 32);
        if (a != b) return false;
    }
    return true;
}

// StartsWithCI for an ASCII literal, with a text that begins in ASCII compared in place: an
// ASCII character folds to one letter, so a difference there, or an ASCII text shorter than
// the literal, settles it. Only a character outside ASCII goes the general way.
inline bool BeginsCI(TextView text, TextView literal) noexcept {
    const size_t n = text.size() < literal.size() ? text.size() : literal.size();
    for (size_t k = 0; k < n; ++k) {
        char a = text[k], b = literal[k];
        if (static_cast<unsigned char>(a) >= 0x80) return StartsWithCI(text, literal);
        if (a >= 'a' && a <= 'z') a = char(a - 32);
        if (b >= 'a' && b <= 'z') b = char(b - 32);
        if (a != b) return false;
    }
    return n == literal.size() && !literal.empty();
}

// Every match, left to right, not overlapping; an empty `find` changes nothing.
Text ReplaceAll(TextView s, TextView find, TextView replacement);
Text Uppercase(TextView s);  // full mapping: "ß" becomes "SS"

// ---- numbers ------------------------------------------------------------------------
// The number at the very start of the text: an optional sign, ASCII digits with at most
// one decimal point and at least one digit; no blanks skipped, no exponent, no hex.
// 0 when there is none.
double Val(TextView s) noexcept;
// The text trimmed of blanks is exactly such a number.
bool IsNumeric(TextView s) noexcept;
// Truncation towards zero, then signed 32-bit wrap; NaN and infinities give 0.
int32_t ToInt32(double d) noexcept;
// Plain number text: "25", "-3", "0.5".
Text Str(double d);
// Format with a pattern of zeros ("000"): at least that many digits, zero-filled, a minus
// sign ahead of the zero-filled absolute value ("-005"). The pattern "-#" gives the plain
// digits with a minus sign when negative.
Text Format(int64_t value, TextView pattern);

// ---- splitting ----------------------------------------------------------------------
// Cuts at every delimiter and keeps empty pieces: "a\r\rb" gives "a", "", "b"; "" gives one
// empty piece. The pieces borrow from the argument.
std::vector<TextView> Split(TextView s, TextView delimiter);

}  // namespace vornelt
