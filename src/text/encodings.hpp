#pragma once
// The two character sets at the edges of the system: a list is read as Windows Latin 1 and
// saved as Mac OS Roman. Inside, every text is UTF-8 (the text operations of text/text.hpp).

#include <functional>
#include <string>
#include <string_view>

namespace vornelt {

// Every byte becomes one character as Windows Latin 1 (code page 1252). The five bytes that
// code page leaves undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) become the code points of the
// same value, so nothing is ever dropped. An all-ASCII text is handed back as it is.
std::string DecodeWindowsLatin1(std::string bytes);

// Mac OS Roman, one byte per character; "€" is byte 0xDB. A character that Mac OS Roman
// cannot hold is written as "?", one per code point.
std::string EncodeMacRoman(std::string_view text);

// Mac OS Roman bytes as text: every byte one character ("€" for 0xDB).
std::string DecodeMacRoman(std::string_view bytes);

// The bytes of a saved list: every line end (CR, LF or CR LF) becomes CR LF, then the text
// is encoded as Mac OS Roman. One pass.
std::string EncodeListForSaving(std::string_view text);
// The same bytes, appended to `out`.
void AppendListForSaving(std::string& out, std::string_view text);

// The same bytes, handed to `write` a piece at a time (about `pieceSize` of the text each),
// so that saving a long list never holds a second copy of it. A piece never ends between a
// CR and its LF or inside a character.
void EncodeListForSaving(std::string_view text, const std::function<void(std::string_view)>& write,
                         size_t pieceSize = size_t(1) << 20);

// The characters of `text` that Mac OS Roman cannot hold (saved as "?"), each once, in
// the order they first stand; empty when every character fits.
std::string CharactersNotInMacRoman(std::string_view text);

// What the bytes of a file look like besides Windows Latin 1, the form every list is read
// in: UTF-8 (a byte order mark, or valid sequences of several bytes and no invalid one), or
// UTF-16 (a byte order mark, or a NUL in every other byte of the first lines); ASCII when
// every byte is below 128.
enum class LooksLike { Ascii, Latin1, Utf8, Utf16 };
LooksLike GuessEncoding(std::string_view bytes);

}  // namespace vornelt
