// The reel field of both forms.
#include <gtest/gtest.h>

#include "document/module1.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

struct ReelNameCase {
    const char* name;
    const char* cmx;
    const char* gvg;
};

TEST(FormatReelNames, BothFormsAndIdempotent) {
    // Characters count, not bytes: "Ä" is one character.
    const ReelNameCase cases[] = {
        {"ax", "      AX", "    AX"},
        {"Ax", "      AX", "    AX"},
        {"bl", "      BL", "    BL"},
        {"aux", "AUX     ", "AUX   "},
        {"black", "BLACK   ", "BLACK "},
        {"BLACK1", "BLACK1  ", "BLACK1"},
        {"A", "A       ", "A     "},
        {"tape5", "tape5   ", "tape5 "},
        {"ABCDEF", "ABCDEF  ", "ABCDEF"},
        {"ABCDEFG", "ABCDEFG ", "ABCDEFG"},
        {"ABCDEFGH", "ABCDEFGH", "ABCDEFGH"},
        {"ABCDEFGHIJ", "ABCDEFGH", "ABCDEFGH"},
        {"  TA PE 1 ", "TAPE1   ", "TAPE1 "},
        {"B L", "      BL", "    BL"},
        {"   ", "", ""},
        {"", "", ""},
        {"BÄNDER", "BÄNDER  ", "BÄNDER"},
        {"ÄÄÄÄÄÄÄÄÄ", "ÄÄÄÄÄÄÄÄ", "ÄÄÄÄÄÄÄÄ"},
    };
    for (bool gvg : {false, true}) {
        Module1.IsGrassValley = gvg;
        for (const ReelNameCase& c : cases) {
            const std::string once = FormatReelNames(c.name);
            EXPECT_EQ(once, gvg ? c.gvg : c.cmx) << c.name << (gvg ? " GVG" : " CMX");
            EXPECT_EQ(FormatReelNames(once), once) << c.name << (gvg ? " GVG" : " CMX");
        }
    }
    Module1.IsGrassValley = false;
}

}  // namespace
}  // namespace vornelt::testing
