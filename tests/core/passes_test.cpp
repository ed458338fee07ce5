// Motion lines, the working copy, the key repair, and the switches, which decide from the
// read tables: every option turned off gives back what was read.
#include <gtest/gtest.h>

#include <climits>

#include "fixtures.hpp"
#include "reader/reader.hpp"

namespace vornelt::testing {
namespace {

using Passes = Fixture;

TEST_F(Passes, MotionLinesGiveTheirSpeed) {
    const std::tuple<const char*, const char*, double> cases[] = {
        {"M2   TAPE1       025.0                01:00:00:00", "025.0", 25.0},
        {"M2   TAPE1       -12.5                01:00:00:00", "-12.5", -12.5},
        {"m2   TAPE1       025.25", "025.2", 25.2},  // the second decimal is cut off
        {"M2 A.1 025.0", "M2 A.1", 0.0},             // the first point wins
        {"M2 AX 25", "M2 AX", 0.0},                  // no point: six from the start
        {"M20 X 1.5", "X 1.5", 0.0},                 // only the start of the line counts
        {"PEG A 025.0 01:00:00:00", "025.", 25.0},   {"peg b   -12.5", "-12.", -12.0},
        {"PEG A", "", 0.0},                          {"PEG C 025.0", "**", -1111.0},
        {"001 AX V C M2 025.0", "**", -1111.0},      {"", "**", -1111.0},
    };
    for (const auto& [line, speed, value] : cases) PushRead(m(), Note(line));
    CheckForM2(m(), platform);
    ASSERT_EQ(m().readOrigM2.size(), std::size(cases));
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(m().readOrigM2Str(i), std::get<1>(cases[i])) << std::get<0>(cases[i]);
        EXPECT_DOUBLE_EQ(m().readOrigM2[i], std::get<2>(cases[i])) << std::get<0>(cases[i]);
    }
    // The values of an earlier list stay in front; the texts do not.
    ResetGlobalVariables_NEU(m(), w());
    m().readOrigCompleteLine.clear();
    PushRead(m(), Note("M2 A 010.0"));
    CheckForM2(m(), platform);
    EXPECT_EQ(m().readOrigM2.size(), std::size(cases) + 1);
    EXPECT_EQ(m().readOrigM2.back(), 10.0);
    ASSERT_EQ(m().readOrigM2Str.size(), 1u);
    EXPECT_EQ(m().readOrigM2Str(0), "010.0");
}

TEST_F(Passes, WorkingCopySharesTheListTextAndTakesMisalignedTables) {
    m().cmxString = std::make_shared<std::string>(
        "TITLE: A\r\n001  AX       V     C        00:00:01:00 00:00:02:00 01:00:00:00 01:00:01:00\r\n* NOTE\r\n");
    ResetGlobalVariables_NEU(m(), w());
    m().frameRate = 25.0;
    ParseCMX3600(m(), w(), session().progress, platform);
    CheckForM2(m(), platform);
    m().copyM2.push_back(1.0);
    CopyArrays(m(), platform);
    const std::string& text = *m().readOrigCompleteLine.Document();
    for (size_t i = 0; i < 2; ++i) {
        EXPECT_EQ(m().copyCompletLine(i), m().readOrigCompleteLine(i));
        EXPECT_TRUE(m().copyCompletLine(i).data() >= text.data() &&
                    m().copyCompletLine(i).data() < text.data() + text.size());  // no copy
    }
    EXPECT_TRUE(m().copyM2.empty());
    // Without the reset of a load the event numbers run on behind, and the later passes
    // take the misaligned tables all the same.
    CopyArrays(m(), platform);
    EXPECT_EQ(m().copyTrans.size(), 4u);
    EXPECT_EQ(m().copyEventNumberInt.size(), 8u);
    CheckBSpurClipLenghts(m(), platform);
    CleanEDL_4(m(), platform);
    PrepareToDisplay(session());
}

TEST_F(Passes, AZeroLengthKeyTakesTheLengthOfTheLineBefore) {
    // B mark, transition, the key's length, the length of the line before, the source out (500: unchanged).
    const std::tuple<const char*, const char*, int32_t, int32_t, int32_t> cases[] = {
        {"", "K", 0, 75, 575}, {"B", "K", 0, 75, 500}, {"", "K", 50, 75, 500},
        {"", "D", 0, 75, 500}, {"", "K", 0, 0, 500},   {"", "K", 0, -1, 500},
        {"", "k", 0, 75, 575}, {"", "KB", 0, 75, 500}, {"", "K", -5, 75, 500},
    };
    for (const auto& [bTrack, trans, duration, length, sourceOut] : cases) {
        SCOPED_TRACE(::testing::Message() << bTrack << "|" << trans << "|" << duration << "|" << length);
        Reset();
        Row before = Event(1, "C", 0, length, 0, length), key = Event(1, trans, 500, 500, 90000, 90000 + duration);
        before.duration = length;
        key.bTrack = bTrack;
        Load({Note("TITLE: A"), before, key});
        CheckBSpurClipLenghts(m(), platform);
        EXPECT_EQ(m().copySourceOutFrame[2], sourceOut);
        EXPECT_EQ(m().copyRecOutFrame[2], sourceOut == 500 ? 90000 + duration : 90075);
    }
}

TEST_F(Passes, KeyRepairWorkedExampleAtEachRate) {
    const std::tuple<double, const char*, const char*> cases[] = {
        {25.0, "00:00:23:00", "01:00:03:00"}, {24.0, "00:00:23:23", "01:02:33:03"},
        {30.0, "00:00:19:05", "00:50:02:15"},
        {29.97, "00:00:20:00", "01:00:00:00"},  // no conversion: the texts stay as read
    };
    for (const auto& [rate, sourceOut, recOut] : cases) {
        SCOPED_TRACE(rate);
        Reset();
        Row back = Event(4, "K", 250, 325, 90000, 90075), key = Event(4, "K", 500, 500, 90000, 90000);
        back.bTrack = "B";
        key.tc[1] = "00:00:20:00";
        key.tc[3] = "01:00:00:00";
        Load({Note("TITLE: A"), back, key, Event(5, "K", 700, 700, 1000, 1000)});
        m().frameRate = rate;
        CheckBSpurClipLenghts(m(), platform);
        const Document& m = this->m();
        EXPECT_EQ(std::make_tuple(m.copyEditDurationFrames[2], m.copySourceOutFrame[2], m.copyRecOutFrame[2]),
                  std::make_tuple(75, 575, 90075));
        EXPECT_EQ(m.copySourceOutTC(2), sourceOut);
        EXPECT_EQ(m.copyRecOutTC(2), recOut);
        EXPECT_EQ(m.editDurationFrames[2], 0);    // the read table keeps the read length
        EXPECT_EQ(m.copySourceOutFrame[3], 700);  // the repaired line lends nothing
    }
}

TEST_F(Passes, KeyRepairTakesBadRowsWithoutHarm) {
    Row huge = Event(2, "C", 0, 0, INT_MIN, INT_MAX);
    huge.duration = INT_MAX;
    Load({Event(1, "K", 500, 500, 90000, 90000),  // no line before it: stays as read
          huge, Event(2, "K", INT_MAX, INT_MAX, INT_MAX - 1, INT_MAX - 1), Event(0, "K", 1, 1, 5, 5), Note("* X"),
          Event(1, "K", 500, 500, 90000, 90000)});
    m().frameRate = 25.0;
    CheckBSpurClipLenghts(m(), platform);
    const Document& m = this->m();
    EXPECT_EQ(m.copySourceOutFrame[0], 500);
    EXPECT_EQ(m.copySourceOutFrame[2], INT_MAX + int64_t(INT_MAX) - (int64_t(1) << 32));
    EXPECT_EQ(m.copySourceOutFrame[3], 1);    // event number 0 takes no part
    EXPECT_EQ(m.copySourceOutFrame[5], 500);  // after a comment: nothing to take
}

class Switches : public Fixture {
protected:
    void LoadTransitions(std::initializer_list<const char*> transitions) {
        for (const char* t : transitions) PushRead(m(), Event(1, t, 0, 10));
        CopyArrays(m(), platform);
    }
};

TEST_F(Switches, AudioTracks) {
    // The mode read; with audio on and off: the mode written (none: the row is left as it
    // stands) and whether the row is shown.
    const std::tuple<const char*, const char*, bool, const char*, bool> cases[] = {
        {"V", nullptr, true, nullptr, true}, {"v", nullptr, true, nullptr, true},
        {"A", "A", true, "A", false},        {"A2", "A2", true, "A2", false},
        {"AA", "AA", true, "AA", false},     {"AA/V", "AA/V", true, "V", true},
        {"aa/v", "aa/v", true, "V", true},   {"V2", "V2", true, "V", true},
        {"B", "B", true, "B", false},        {"NONE", "NONE", true, "NONE", false},
        {"", "", true, "", false},           {"VX", nullptr, true, nullptr, true},
    };
    for (const auto& [read, keptMode, keptShown, droppedMode, droppedShown] : cases) {
        for (const bool audio : {true, false}) {
            SCOPED_TRACE(std::string(read) + (audio ? " on" : " off"));
            Reset();
            Row r = Event(1, "C", 0, 10);
            r.mode = read;
            Load({r});
            // What a row left alone keeps, to tell it from a row that is written.
            m().copyMode.set(0, "kept");
            m().displayThisAudioEventLine[0] = true;
            m().boolA1234 = audio;
            AllAudioOnOff(m(), platform);
            const char* mode = audio ? keptMode : droppedMode;
            EXPECT_EQ(m().copyMode(0), mode ? mode : "kept");
            EXPECT_EQ(m().displayThisAudioEventLine[0], audio ? keptShown : droppedShown);
        }
    }
}

TEST_F(Switches, WipesBecomeDissolvesAndComeBackAsRead) {
    LoadTransitions({"W001", "w001", "SW", "D", "C", "K", "BK"});
    for (bool on : {true, false}) {
        m().boolTransToDissolve = on;
        AllWipesToDissolve(m(), platform);
        EXPECT_EQ(Joined(m().copyTrans), on ? "D|D|D|D|C|K|BK" : "W001|w001|SW|D|C|K|BK");
    }
}

// The passes in the order of each caller.
enum class Caller { Load, V2Action, KeyToDissolveAction };
void RunPasses(Session& s, Caller caller) {
    if (caller == Caller::Load) return PrepareToDisplay(s);
    AllKeysToDissolve(s.document, s.platform);
    if (caller == Caller::V2Action) AllKeysOnOff(s.document, s.platform);
}

TEST_F(Switches, KeysByCallerAndFlags) {
    // The caller, V2, keys to dissolves; the transition then (none: as read) and whether the key is shown.
    const std::tuple<Caller, bool, bool, const char*, bool> cases[] = {
        // At load the dissolve pass runs last and gives back the read text.
        {Caller::Load, true, false, nullptr, true},        {Caller::Load, true, true, "D", true},
        {Caller::Load, false, false, nullptr, false},      {Caller::Load, false, true, "D", false},
        {Caller::V2Action, true, false, "K", true},        {Caller::V2Action, true, true, "K", true},
        {Caller::V2Action, false, false, nullptr, false},
        // The key-to-dissolve box leaves the shown flag as it was.
        {Caller::KeyToDissolveAction, true, true, "D", false},   {Caller::KeyToDissolveAction, false, true, "D", false},
        {Caller::KeyToDissolveAction, true, false, nullptr, false}, {Caller::KeyToDissolveAction, false, false, nullptr, false},
    };
    for (const char* read : {"K", "KB", "KO", "k"}) {
        for (const auto& [caller, v2, keyToDissolve, trans, shown] : cases) {
            SCOPED_TRACE(::testing::Message() << read << " caller " << int(caller) << " V2 " << v2 << " KeyToDissolve "
                                              << keyToDissolve);
            Reset();
            LoadTransitions({read, "D", "BK", "W001"});
            m().displayThisKeyEventLine[0] = false;
            m().boolTransToDissolve = true;
            m().boolV2 = v2;
            m().boolKeyToDissolve = keyToDissolve;
            RunPasses(session(), caller);
            EXPECT_EQ(m().copyTrans(0), trans ? trans : read);
            EXPECT_EQ(m().displayThisKeyEventLine[0], shown);
            // A dissolve and a key letter elsewhere in the field are never keys.
            EXPECT_EQ(m().copyTrans(1), "D");
            EXPECT_EQ(m().copyTrans(2), "BK");
            EXPECT_TRUE(m().displayThisKeyEventLine[2]);
        }
    }
}

TEST_F(Switches, AKeyWipeIsADissolveAtLoadAndShortTablesPassWithoutHarm) {
    LoadTransitions({"KW"});
    m().boolV2 = m().boolTransToDissolve = true;
    PrepareToDisplay(session());
    EXPECT_EQ(m().copyTrans(0), "D");

    Reset();
    PushRead(m(), Event(1, "K", 0, 10));
    m().maxZeilen = 5;  // no working copy at all
    PrepareToDisplay(session());
    CopyArrays(m(), platform);
    m().maxZeilen = -3;
    PrepareToDisplay(session());
    CheckForM2(m(), platform);
    CheckBSpurClipLenghts(m(), platform);
    CleanEDL_4(m(), platform);
    EXPECT_EQ(m().copyTrans.size(), 6u);
}

}  // namespace
}  // namespace vornelt::testing
