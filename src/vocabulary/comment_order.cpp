// SortCommentLine: the generated comment lines of one event in the order effect, from, to.
#include <array>
#include <string>
#include <vector>

#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

namespace {

// BeginsCI for the upper-case ASCII literals of the comment lines: a line of ASCII is compared
// byte by byte, any other the long way.
bool Begins(std::string_view line, std::string_view literal) {
    if (line.size() < literal.size()) return BeginsCI(line, literal);
    for (size_t k = 0; k < literal.size(); ++k) {
        const unsigned char c = static_cast<unsigned char>(line[k]);
        if (c >= 0x80) return BeginsCI(line, literal);
        if ((c >= 'a' && c <= 'z' ? c - 32 : c) != static_cast<unsigned char>(literal[k])) return false;
    }
    return true;
}

}  // namespace

void AppendSortedCommentLine(std::string& out, std::string_view block) {
    // Exactly three lines, each ended: four pieces, the last one after the final return.
    std::array<std::string_view, 4> pieces{};
    size_t count = 0;
    for (size_t from = 0;; ++count) {
        const size_t end = block.find(kCR, from);
        if (count == pieces.size()) {
            out.append(block);
            return;
        }
        pieces[count] = block.substr(from, end == std::string_view::npos ? std::string_view::npos : end - from);
        if (end == std::string_view::npos) break;
        from = end + 1;
    }
    if (count != 3) {
        out.append(block);
        return;
    }

    std::array<std::string_view, 3> slots{};
    for (size_t p = 0; p < 3; ++p) {
        if (Begins(pieces[p], "* EFFECT NAME")) {
            slots[0] = pieces[p];
            break;
        }
    }
    for (size_t p = 0; p < 3; ++p) {
        if (Begins(pieces[p], "* FROM CLIP NAME")) {
            slots[1] = pieces[p];
            break;
        }
    }
    // A key line counts only in first place; in second or third place it is lost.
    if (Begins(pieces[0], "* TO CLIP NAME") || Begins(pieces[0], "* KEY CLIP NAME"))
        slots[2] = pieces[0];
    else if (Begins(pieces[1], "* TO CLIP NAME"))
        slots[2] = pieces[1];
    else if (Begins(pieces[2], "* TO CLIP NAME"))
        slots[2] = pieces[2];

    for (const std::string_view slot : slots) out.append(slot).push_back(kCR);
}

std::string SortCommentLine(std::string_view block) {
    std::string sorted;
    AppendSortedCommentLine(sorted, block);
    return sorted;
}

}  // namespace vornelt
