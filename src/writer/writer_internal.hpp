#pragma once
// Pieces of the writer that its routines share: the reel field, appended in place.

#include <string>
#include <string_view>

#include "document/text.hpp"

namespace vornelt::writer_detail {

// Appends FormatReelNames(name) for the given form, without a string of its own.
void AppendReelField(std::string& out, std::string_view name, bool grassValley);

// EqualsCI against an ASCII literal, with the short ASCII texts of the tables compared in
// place. Any other text goes the general way, where a character outside ASCII may still
// fold to the literal's letters.
inline bool IsCI(std::string_view text, std::string_view literal) noexcept {
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

// StartsWithCI for an ASCII literal, with a text that begins in ASCII compared in place.
inline bool BeginsCI(std::string_view text, std::string_view literal) noexcept {
    if (text.size() < literal.size()) return StartsWithCI(text, literal);
    for (size_t k = 0; k < literal.size(); ++k) {
        char a = text[k], b = literal[k];
        if (static_cast<unsigned char>(a) >= 0x80) return StartsWithCI(text, literal);
        if (a >= 'a' && a <= 'z') a = char(a - 32);
        if (b >= 'a' && b <= 'z') b = char(b - 32);
        if (a != b) return false;
    }
    return true;
}

// The four reserved reels, compared ignoring case and as whole texts.
bool IsReservedReel(std::string_view reel) noexcept;

}  // namespace vornelt::writer_detail
