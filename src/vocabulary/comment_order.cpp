// SortCommentLine: the generated comment lines of one event in the order effect, from, to.
#include <array>
#include <string>
#include <vector>

#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

std::string SortCommentLine(std::string_view block) {
    const std::vector<std::string_view> pieces = Split(block, "\r");
    // Exactly three lines, each ended: four pieces, the last one after the final return.
    if (pieces.size() != 4) return std::string(block);

    std::array<std::string_view, 3> slots{};
    for (size_t p = 0; p < 3; ++p) {
        if (StartsWithCI(pieces[p], "* EFFECT NAME")) {
            slots[0] = pieces[p];
            break;
        }
    }
    for (size_t p = 0; p < 3; ++p) {
        if (StartsWithCI(pieces[p], "* FROM CLIP NAME")) {
            slots[1] = pieces[p];
            break;
        }
    }
    // A key line counts only in first place; in second or third place it is lost.
    if (StartsWithCI(pieces[0], "* TO CLIP NAME") || StartsWithCI(pieces[0], "* KEY CLIP NAME"))
        slots[2] = pieces[0];
    else if (StartsWithCI(pieces[1], "* TO CLIP NAME"))
        slots[2] = pieces[1];
    else if (StartsWithCI(pieces[2], "* TO CLIP NAME"))
        slots[2] = pieces[2];

    std::string sorted;
    sorted.reserve(block.size() + 3);
    for (const std::string_view slot : slots) {
        sorted.append(slot);
        sorted.push_back(kCR);
    }
    return sorted;
}

}  // namespace vornelt
