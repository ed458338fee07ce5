// The wipe names of the SMPTE and the Final Cut Pro tables.
#include <array>
#include <string_view>

#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

namespace {

struct NamedCode {
    int number;  // the digits of "W001" to "W354"
    std::string_view name;
};

// Codes of the SMPTE table that have a name; every other code of W001 to W354 has none.
// The names are stored as written here and returned in capitals.
constexpr NamedCode kSmpteNames[] = {
    {1, "EDGE WIPE Horizontal"},
    {2, "EDGE WIPE Vertical"},
    {3, "EDGE WIPE top Left"},
    {4, "EDGE WIPE top Right"},
    {5, "EDGE WIPE bottom Right"},
    {6, "EDGE WIPE bottom Left"},
    {7, "EDGE WIPE four Corner"},
    {8, "EDGE WIPE four Box"},
    {21, "EDGE WIPE barn Vertical"},
    {22, "EDGE WIPE barn Horizontal"},
    {23, "EDGE WIPE top Center"},
    {24, "EDGE WIPE right Center"},
    {25, "EDGE WIPE bottom Center"},
    {26, "EDGE WIPE left Center"},
    {41, "EDGE WIPE diagonal Left Down"},
    {42, "EDGE WIPE diagonal Right Down"},
    {43, "EDGE WIPE vertical Bow Tie"},
    {44, "EDGE WIPE horizontal Bow Tie"},
    {45, "EDGE WIPE diagonal Left Out"},
    {46, "EDGE WIPE diagonal Right Out"},
    {47, "EDGE WIPE diagonal Cross"},
    {48, "EDGE WIPE diagonal Box"},
    {61, "EDGE WIPE filled V Up"},
    {62, "EDGE WIPE filled V Right"},
    {63, "EDGE WIPE filled V Bottom"},
    {64, "EDGE WIPE filled V Left"},
    {65, "EDGE WIPE hollow V Up"},
    {66, "EDGE WIPE hollow V Right"},
    {67, "EDGE WIPE hollow V Bottom"},
    {68, "EDGE WIPE hollow V Left"},
    {71, "EDGE WIPE vertical Zig Zag"},
    {72, "EDGE WIPE horizontal Zig Zag"},
    {73, "EDGE WIPE vertical Barn Zig Zag"},
    {74, "EDGE WIPE horizontal Barn Zig Zag"},
    {101, "IRIS WIPE rectangle"},
    {102, "IRIS WIPE diamond"},
    {103, "IRIS WIPE triangle Up"},
    {104, "IRIS WIPE triangle Right"},
    {105, "IRIS WIPE triangle Down"},
    {106, "IRIS WIPE triangle Left"},
    {107, "IRIS WIPE arrowhead Up"},
    {108, "IRIS WIPE arrowhead Right"},
    {109, "IRIS WIPE arrowhead Down"},
    {110, "IRIS WIPE arrowhead Left"},
    {111, "IRIS WIPE pentagon Up"},
    {112, "IRIS WIPE pentagon Down"},
    {113, "IRIS WIPE hexagon"},
    {114, "IRIS WIPE hexagon Side"},
    {119, "IRIS WIPE cicle"},
    {120, "IRIS WIPE oval"},
    {121, "IRIS WIPE oval Side"},
    {122, "IRIS WIPE cat Eye"},
    {123, "IRIS WIPE cat Eye Side"},
    {124, "IRIS WIPE round Rect"},
    {125, "IRIS WIPE round Rect Side"},
    {127, "IRIS WIPE star 4pt"},
    {128, "IRIS WIPE star 5pt"},
    {129, "IRIS WIPE star 6pt"},
    {130, "IRIS WIPE heart"},
    {131, "IRIS WIPE keyhole"},
    {201, "RADIAL WIPE top"},
    {202, "RADIAL WIPE right"},
    {203, "RADIAL WIPE bottom"},
    {204, "RADIAL WIPE left"},
    {205, "RADIAL WIPE top Bottom"},
    {206, "RADIAL WIPE left Right"},
    {207, "RADIAL WIPE quadrant"},
    {211, "RADIAL WIPE top Bottom 180"},
    {212, "RADIAL WIPE right Left 180"},
    {213, "RADIAL WIPE top Bottom 90"},
    {214, "RADIAL WIPE right Left 90"},
    {221, "RADIAL WIPE top 180"},
    {222, "RADIAL WIPE right 180"},
    {223, "RADIAL WIPE bottom 180"},
    {224, "RADIAL WIPE left 180"},
    {225, "RADIAL WIPE counter Top Bottom"},
    {226, "RADIAL WIPE counter Left Right"},
    {227, "RADIAL WIPE double Top Bottom"},
    {228, "RADIAL WIPE double Left Right"},
    {231, "RADIAL WIPE v Open Top"},
    {232, "RADIAL WIPE v Open Right"},
    {233, "RADIAL WIPE v Open Bottom"},
    {234, "RADIAL WIPE v Open Left"},
    {235, "RADIAL WIPE v Open Top Bottom"},
    {236, "RADIAL WIPE v Open Left Right"},
    {241, "RADIAL WIPE top Left"},
    {242, "RADIAL WIPE bottom Left"},
    {243, "RADIAL WIPE bottom Right"},
    {244, "RADIAL WIPE top Right"},
    {245, "RADIAL WIPE top Left Bottom Right"},
    {246, "RADIAL WIPE bottom Left Top Right"},
    {251, "RADIAL WIPE top Left Right"},
    {252, "RADIAL WIPE left Top Bottom"},
    {253, "RADIAL WIPE bottom Left Right"},
    {254, "RADIAL WIPE right Top Bottom"},
    {261, "RADIAL WIPE double Center Right"},
    {262, "RADIAL WIPE double Center Top"},
    {263, "RADIAL WIPE double Center Top Bottom"},
    {264, "RADIAL WIPE double Center Left Right"},
    {301, "MATRIX WIPE horizontal"},
    {302, "MATRIX WIPE vertical"},
    {303, "MATRIX WIPE top Left Diagonal"},
    {304, "MATRIX WIPE top Right Diagonal"},
    {305, "MATRIX WIPE bottom Right Diagonal"},
    {306, "MATRIX WIPE bottom Left Diagonal"},
    {310, "MATRIX WIPE cw Top Left"},
    {311, "MATRIX WIPE cw Top Right"},
    {312, "MATRIX WIPE cw Bottom Right"},
    {313, "MATRIX WIPE cw Bottom Left"},
    {314, "MATRIX WIPE ccw Top Left"},
    {315, "MATRIX WIPE ccw Top Right"},
    {316, "MATRIX WIPE ccw Bottom Right"},
    {317, "MATRIX WIPE ccw Bottom Left"},
    {320, "MATRIX WIPE vertical Start Top"},
    {321, "MATRIX WIPE vertical Start Bottom"},
    {322, "MATRIX WIPE vertical Start Top Opposite"},
    {323, "MATRIX WIPE vertical Start Bottom Opposite"},
    {324, "MATRIX WIPE vertical Start Left"},
    {325, "MATRIX WIPE vertical Start Right"},
    {326, "MATRIX WIPE vertical Start Left Opposite"},
    {327, "MATRIX WIPE vertical Start Right Opposite"},
    {328, "MATRIX WIPE double Diagonal Top Right"},
    {329, "MATRIX WIPE double Diagonal Bottom Right"},
    {340, "MATRIX WIPE double Spiral Top"},
    {341, "MATRIX WIPE double Spiral Bottom"},
    {342, "MATRIX WIPE double Spiral Left"},
    {343, "MATRIX WIPE double Spiral Right"},
    {344, "MATRIX WIPE quad Spiral Vertical"},
    {345, "MATRIX WIPE quad Spiral Horizontal"},
    {350, "MATRIX WIPE vertical Waterfall Left"},
    {351, "MATRIX WIPE vertical Waterfall Right"},
    {352, "MATRIX WIPE horizontal Waterfall Left"},
    {353, "MATRIX WIPE horizontal Waterfall Right"},
};

// Codes of the Final Cut Pro table that have a name; every other code of W001 to W256 has
// none. "Split Slide " ends in a blank, and so does its capital form.
constexpr NamedCode kFcpNames[] = {
    {1, "EDGE WIPE"},
    {2, "EDGE WIPE"},
    {3, "Split Slide "},
    {4, "Inset Wipe"},
    {5, "Inset Wipe"},
    {6, "Inset Wipe"},
    {7, "Inset Wipe"},
    {8, "Inset Wipe"},
    {9, "Inset Wipe"},
    {10, "Inset Wipe"},
    {11, "Inset Wipe"},
    {12, "Cross Iris"},
    {13, "Clock Wipe"},
    {17, "Rectangle Iris"},
    {18, "Star Iris"},
    {19, "Oval Iris"},
    {20, "Spinback3D"},
    {21, "Swing"},
    {22, "Zoom"},
    {23, "Band Wipe"},
    {115, "V Wipe"},
    {120, "Jaws Wipe"},
    {123, "Venetian Blind Wipe"},
};

constexpr int kHighestCode = 999;

// The names indexed by the digits of the code, "" where the code has none.
template <size_t N>
constexpr std::array<std::string_view, kHighestCode + 1> ByNumber(const NamedCode (&names)[N]) {
    std::array<std::string_view, kHighestCode + 1> table{};
    for (const NamedCode& c : names) table[size_t(c.number)] = c.name;
    return table;
}

constexpr auto kSmpte = ByNumber(kSmpteNames);
constexpr auto kFcp = ByNumber(kFcpNames);

// The stored name of a code, compared as the whole text ignoring case: "w101" is "W101",
// while "W1", "W0010" and "WIPE" are no code. "" when the table has no name for it. No
// character outside ASCII folds to "w" or to a digit, so the bytes tell it.
std::string_view StoredName(const std::array<std::string_view, kHighestCode + 1>& table, std::string_view code) {
    if (code.size() != 4 || (code[0] != 'W' && code[0] != 'w')) return {};
    int number = 0;
    for (size_t i = 1; i < 4; ++i) {
        if (code[i] < '0' || code[i] > '9') return {};
        number = number * 10 + (code[i] - '0');
    }
    return table[size_t(number)];
}

}  // namespace

std::string WipeCodesSMPTE(std::string_view code) {
    const std::string_view name = StoredName(kSmpte, code);
    return Uppercase(name.empty() ? "UNKNOWN" : name);
}

std::string WipeCodesFCP(std::string_view code) {
    // Final Cut Pro prints every wipe it does not know as an edge wipe.
    const std::string_view name = StoredName(kFcp, code);
    return Uppercase(name.empty() ? "EDGE WIPE" : name);
}

}  // namespace vornelt
