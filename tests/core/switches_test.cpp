// The switches decide from the read tables: every option turned off gives back what was
// read.
#include <gtest/gtest.h>

#include "fixtures.hpp"

namespace vornelt::testing {
namespace {

class Switches : public Fixture {
protected:
    void LoadTransitions(std::initializer_list<const char*> transitions) {
        for (const char* t : transitions) PushRead(Event(1, t, 0, 10));
        CopyArrays();
    }
};

TEST_F(Switches, AudioTracks) {
    struct Case {
        const char* mode;
        const char* keptMode;  // nullptr: the row is left as it stands
        bool keptShown;
        const char* droppedMode;
        bool droppedShown;
    } const cases[] = {
        {"V", nullptr, true, nullptr, true}, {"v", nullptr, true, nullptr, true},
        {"A", "A", true, "A", false},        {"A2", "A2", true, "A2", false},
        {"AA", "AA", true, "AA", false},     {"AA/V", "AA/V", true, "V", true},
        {"aa/v", "aa/v", true, "V", true},   {"V2", "V2", true, "V", true},
        {"B", "B", true, "B", false},        {"NONE", "NONE", true, "NONE", false},
        {"", "", true, "", false},           {"VX", nullptr, true, nullptr, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.mode);
        for (const bool audio : {true, false}) {
            ResetProgramState();
            Row r = Event(1, "C", 0, 10);
            r.mode = c.mode;
            Load({r});
            // What a row left alone keeps, to tell it from a row that is written.
            Module1.copyMode.set(0, "kept");
            Module1.displayThisAudioEventLine[0] = true;
            Module1.boolA1234 = audio;
            AllAudioOnOff();
            const char* mode = audio ? c.keptMode : c.droppedMode;
            EXPECT_EQ(Module1.copyMode(0), mode ? mode : "kept") << audio;
            EXPECT_EQ(Module1.displayThisAudioEventLine[0], audio ? c.keptShown : c.droppedShown) << audio;
        }
    }
}

TEST_F(Switches, WipesBecomeDissolvesAndComeBackAsRead) {
    LoadTransitions({"W001", "w001", "SW", "D", "C", "K", "BK"});
    Module1.boolTransToDissolve = true;
    AllWipesToDissolve();
    const char* on[] = {"D", "D", "D", "D", "C", "K", "BK"};
    for (size_t i = 0; i < std::size(on); ++i) EXPECT_EQ(Module1.copyTrans(i), on[i]) << i;
    Module1.boolTransToDissolve = false;
    AllWipesToDissolve();
    for (size_t i = 0; i < std::size(on); ++i) EXPECT_EQ(Module1.copyTrans(i), Module1.readOrigTrans(i)) << i;
}

// The passes in the order of each caller.
enum class Caller { Load, V2Action, KeyToDissolveAction };
void RunPasses(Caller caller) {
    switch (caller) {
        case Caller::Load: PrepareToDisplay(); break;
        case Caller::V2Action:
            AllKeysToDissolve();
            AllKeysOnOff();
            break;
        case Caller::KeyToDissolveAction: AllKeysToDissolve(); break;
    }
}

TEST_F(Switches, KeysByCallerAndFlags) {
    struct Case {
        Caller caller;
        bool v2, keyToDissolve;
        const char* trans;  // nullptr: the transition as read
        bool shown;
    } const cases[] = {
        {Caller::Load, true, false, nullptr, true},  // the dissolve pass runs last and gives back the read text
        {Caller::Load, true, true, "D", true},
        {Caller::Load, false, false, nullptr, false},
        {Caller::Load, false, true, "D", false},
        {Caller::V2Action, true, false, "K", true},
        {Caller::V2Action, true, true, "K", true},
        {Caller::V2Action, false, false, nullptr, false},
        {Caller::KeyToDissolveAction, true, true, "D", false},  // the flag stays as it was
        {Caller::KeyToDissolveAction, false, true, "D", false},
        {Caller::KeyToDissolveAction, true, false, nullptr, false},
        {Caller::KeyToDissolveAction, false, false, nullptr, false},
    };
    for (const char* read : {"K", "KB", "KO", "k"}) {
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(read) + " caller " + std::to_string(int(c.caller)) + " V2 " +
                         std::to_string(c.v2) + " KeyToDissolve " + std::to_string(c.keyToDissolve));
            ResetProgramState();
            LoadTransitions({read, "D", "BK", "W001"});
            Module1.displayThisKeyEventLine[0] = false;
            Module1.boolTransToDissolve = true;
            Module1.boolV2 = c.v2;
            Module1.boolKeyToDissolve = c.keyToDissolve;
            RunPasses(c.caller);
            EXPECT_EQ(Module1.copyTrans(0), c.trans ? c.trans : read);
            EXPECT_EQ(Module1.displayThisKeyEventLine[0], c.shown);
            // A dissolve and a key letter elsewhere in the field are never keys.
            EXPECT_EQ(Module1.copyTrans(1), "D");
            EXPECT_EQ(Module1.copyTrans(2), "BK");
            EXPECT_TRUE(Module1.displayThisKeyEventLine[2]);
        }
    }
}

TEST_F(Switches, AKeyWipeIsADissolveAtLoadAndShortTablesPassWithoutHarm) {
    LoadTransitions({"KW"});
    Module1.boolV2 = Module1.boolTransToDissolve = true;
    PrepareToDisplay();
    EXPECT_EQ(Module1.copyTrans(0), "D");

    ResetProgramState();
    PushRead(Event(1, "K", 0, 10));
    Module1.maxZeilen = 5;  // no working copy at all
    PrepareToDisplay();
    CopyArrays();
    Module1.maxZeilen = -3;
    PrepareToDisplay();
    CheckForM2();
    CheckBSpurClipLenghts();
    CleanEDL_4();
    EXPECT_EQ(Module1.copyTrans.size(), 6u);
}

}  // namespace
}  // namespace vornelt::testing
