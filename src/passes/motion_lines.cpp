// CheckForM2: the speed of every motion line, one entry per line of the file.
#include "passes/passes.hpp"
#include "platform/platform.hpp"
#include "text/text.hpp"

namespace vornelt {

namespace {

// "M2 reel 025.0 tc": the four characters before the first point, the point and one
// character after it. Without a point, or with the point among the first four characters,
// the cut starts at the first character.
std::string_view M2Speed(std::string_view line) {
    const std::string_view t = Trim(line);
    const int64_t start = InStr(t, ".") - 4;
    return Trim(Mid(t, start < 1 ? 1 : start, 6));
}

// "PEG A 025.0 ...": four characters from the start of the value.
std::string_view PegSpeed(std::string_view line) {
    const std::string_view t = Trim(line);
    return Trim(Left(Trim(Mid(t, 6)), 4));
}

}  // namespace

void CheckForM2(Document& m, Platform& platform) {
    // readOrigM2 is never emptied: the values of a second list stand behind the first's.
    m.readOrigM2Str.clear();
    const size_t lines = m.maxZeilen < 0 ? 0 : size_t(m.maxZeilen) + 1;
    m.readOrigM2Str.reserve(lines);
    m.readOrigM2.reserve(m.readOrigM2.size() + lines);

    // Lines that are no motion line hold the fill of both tables: added a run at a time.
    size_t fills = 0;
    const auto addFills = [&] {
        m.readOrigM2Str.push_back_fill(fills);
        m.readOrigM2.push_back_fill(fills);
        fills = 0;
    };
    for (size_t i = 0; i < lines; ++i) {
        const std::string_view line = m.readOrigCompleteLine.Get(int64_t(i));
        const char first = line.empty() ? ' ' : char(line[0] | 0x20);  // a motion line begins "m" or "p"
        if (first != 'm' && first != 'p') {
            ++fills;
            platform.Yield();
            continue;
        }
        addFills();
        if (BeginsCI(line, "M2")) {
            const std::string_view speed = M2Speed(line);
            m.readOrigM2Str.push_back(speed);
            m.readOrigM2.push_back(Val(speed));
        } else if (BeginsCI(line, "PEG A") || BeginsCI(line, "PEG B")) {
            const std::string_view speed = PegSpeed(line);
            m.readOrigM2Str.push_back(speed);
            m.readOrigM2.push_back(Val(speed));
        } else {
            m.readOrigM2Str.push_back("**");
            m.readOrigM2.push_back(kNoMotionLine);
        }
        platform.Yield();
    }
    addFills();
}

}  // namespace vornelt
