// The reel field: any reel text as the fixed-width field of the list's form.
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

namespace {

// Blanks go everywhere, also inside the name: two words count as one. Nothing is left to
// trim afterwards, since a blank is all that trimming takes off.
std::string_view WithoutBlanks(std::string_view name, std::string& scratch) {
    if (name.find(' ') == std::string_view::npos) return name;
    scratch.clear();
    for (char c : name)
        if (c != ' ') scratch.push_back(c);
    return scratch;
}

}  // namespace

bool IsReservedReel(std::string_view reel) noexcept {
    // An ASCII reel is told by its length first: most reels are none of the four.
    if (IsAscii(reel)) {
        switch (reel.size()) {
            case 2: return IsCI(reel, "AX") || IsCI(reel, "BL");
            case 3: return IsCI(reel, "AUX");
            case 5: return IsCI(reel, "BLACK");
            default: return false;
        }
    }
    for (std::string_view reserved : kReservedReels)
        if (EqualsCI(reel, reserved)) return true;
    return false;
}

void AppendReelField(std::string& out, std::string_view name, bool grassValley) {
    const int64_t width = grassValley ? 6 : 8;
    std::string_view plain;
    size_t blanks = 0;
    if (PlainReelField(name, grassValley, plain, blanks)) {
        out.append(plain).append(blanks, ' ');
        return;
    }

    std::string scratch;
    const std::string_view bare = WithoutBlanks(name, scratch);
    if (bare.empty()) return;  // an empty name: no field, not even padding
    const int64_t length = Len(bare);
    // A long name is cut to 8 in both forms: a GVG reel of 7 or more characters comes out
    // wider than its field and moves the rest of the line.
    if (length > width) {
        out.append(Left(bare, 8));
        return;
    }
    // The reserved reels are written in capitals; the short two stand at the right end.
    if (IsCI(bare, "AX") || IsCI(bare, "BL")) {
        out.append(size_t(width - 2), ' ');
        out.append(IsCI(bare, "AX") ? "AX" : "BL");
        return;
    }
    if (IsCI(bare, "AUX")) {
        out.append("AUX").append(size_t(width - 3), ' ');
        return;
    }
    if (IsCI(bare, "BLACK")) {
        out.append("BLACK").append(size_t(width - 5), ' ');
        return;
    }
    out.append(bare).append(size_t(width - length), ' ');
}

std::string FormatReelNames(std::string_view name, bool grassValley) {
    std::string field;
    AppendReelField(field, name, grassValley);
    return field;
}

}  // namespace vornelt
