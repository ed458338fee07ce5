// Wipe names of both tables and the order of a comment block.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "vocabulary/vocabulary.hpp"

namespace vornelt {
namespace {

std::string Code(int n) {
    char code[8];
    std::snprintf(code, sizeof code, "W%03d", n);
    return code;
}

TEST(WipeNames, ByCode) {
    struct Case {
        const char* code;
        const char* smpte;
        const char* fcp;
    } const cases[] = {
        {"W001", "EDGE WIPE HORIZONTAL", "EDGE WIPE"},  {"W003", "EDGE WIPE TOP LEFT", "SPLIT SLIDE "},
        {"w012", "UNKNOWN", "CROSS IRIS"},              {"W013", "UNKNOWN", "CLOCK WIPE"},
        {"W014", "UNKNOWN", "EDGE WIPE"},               {"W020", "UNKNOWN", "SPINBACK3D"},
        {"W074", "EDGE WIPE HORIZONTAL BARN ZIG ZAG", "EDGE WIPE"}, {"w101", "IRIS WIPE RECTANGLE", "EDGE WIPE"},
        {"W115", "UNKNOWN", "V WIPE"},                  {"W119", "IRIS WIPE CICLE", "EDGE WIPE"},
        {"W123", "IRIS WIPE CAT EYE SIDE", "VENETIAN BLIND WIPE"}, {"W127", "IRIS WIPE STAR 4PT", "EDGE WIPE"},
        {"W211", "RADIAL WIPE TOP BOTTOM 180", "EDGE WIPE"},
        {"W264", "RADIAL WIPE DOUBLE CENTER LEFT RIGHT", "EDGE WIPE"},
        {"W353", "MATRIX WIPE HORIZONTAL WATERFALL RIGHT", "EDGE WIPE"}, {"W354", "UNKNOWN", "EDGE WIPE"},
        {"W009", "UNKNOWN", "INSET WIPE"},              {"W000", "UNKNOWN", "EDGE WIPE"},
        {"W355", "UNKNOWN", "EDGE WIPE"},               {"W12", "UNKNOWN", "EDGE WIPE"},
        {"W0010", "UNKNOWN", "EDGE WIPE"},              {" W001", "UNKNOWN", "EDGE WIPE"},
        {"WIPE", "UNKNOWN", "EDGE WIPE"},               {"", "UNKNOWN", "EDGE WIPE"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(WipeCodesSMPTE(c.code), c.smpte) << c.code;
        EXPECT_EQ(WipeCodesFCP(c.code), c.fcp) << c.code;
    }
}

TEST(WipeNames, EachTableNamesItsCodesByFamily) {
    int smpteNamed = 0, fcpOwnNames = 0;
    for (int n = 0; n <= 1000; ++n) {
        const std::string smpte = WipeCodesSMPTE(Code(n));
        const std::string fcp = WipeCodesFCP(Code(n));
        for (const std::string& name : {smpte, fcp})
            for (char ch : name) EXPECT_FALSE(ch >= 'a' && ch <= 'z') << name;
        if (fcp != "EDGE WIPE") ++fcpOwnNames;
        if (smpte == "UNKNOWN") continue;
        ++smpteNamed;
        const char* family = n < 100   ? "EDGE WIPE "
                             : n < 200 ? "IRIS WIPE "
                             : n < 300 ? "RADIAL WIPE "
                                       : "MATRIX WIPE ";
        EXPECT_EQ(smpte.rfind(family, 0), 0u) << Code(n);
    }
    EXPECT_EQ(smpteNamed, 133);
    EXPECT_EQ(fcpOwnNames, 21);  // 23 names, two of which are the edge wipe itself
}

TEST(CommentOrder, ThreeLinesComeBackInTheirOrder) {
    const std::string E = "* EFFECT NAME: CROSS DISSOLVE", F = "* FROM CLIP NAME:  M.MOV", T = "* TO CLIP NAME:  M.MOV",
                      K = "* KEY CLIP NAME:  M.MOV";
    auto lines = [](std::initializer_list<std::string> l) {
        std::string s;
        for (const std::string& x : l) s += x + "\r";
        return s;
    };
    struct Case {
        std::string in, out;
    } const cases[] = {
        {lines({F, E, T}), lines({E, F, T})},
        {lines({E, T, F}), lines({E, F, T})},
        {lines({T, F, E}), lines({E, F, T})},
        {lines({K, E, F}), lines({E, F, K})},
        {lines({F, E, K}), lines({E, F, ""})},  // a key line after the first place is lost
        {lines({F, K, T}), lines({"", F, T})},
        {lines({E, F}), lines({E, F})},
        {lines({E, F, T, T}), lines({E, F, T, T})},
        {lines({E, E, F}), lines({E, F, ""})},
        {lines({"* effect name: wipe", " " + F, T}), lines({"* effect name: wipe", "", T})},
        {lines({T, F, E}) + "tail", lines({E, F, T})},
        {E + "\r" + F + "\r" + T, E + "\r" + F + "\r" + T},
        {"", ""},
    };
    for (const Case& c : cases) EXPECT_EQ(SortCommentLine(c.in), c.out) << c.in;
}

}  // namespace
}  // namespace vornelt
