// Motion lines, the working copy, the key repair, and the switches, which decide from the
// read tables: every option turned off gives back what was read.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "fixtures.hpp"
#include "reader/reader.hpp"

namespace vornelt::testing {
namespace {

using Passes = Fixture;

TEST_F(Passes, MotionLinesGiveTheirSpeed) {
    const std::tuple<const char*, const char*, double> cases[] = {
        // A speed stands around the first point; the second decimal is cut off; with no point,
        // six characters from the start are taken; a line that is no motion line gives "**".
        {"M2   TAPE1       025.0                01:00:00:00", "025.0", 25.0},
        {"M2   TAPE1       -12.5                01:00:00:00", "-12.5", -12.5},
        {"m2   TAPE1       025.25", "025.2", 25.2},
        {"M2 A.1 025.0", "M2 A.1", 0.0},
        {"M2 AX 25", "M2 AX", 0.0},
        {"M20 X 1.5", "X 1.5", 0.0},
        {"PEG A 025.0 01:00:00:00", "025.", 25.0},
        {"peg b   -12.5", "-12.", -12.0},
        {"PEG A", "", 0.0},
        {"PEG C 025.0", "**", -1111.0},
        {"001 AX V C M2 025.0", "**", -1111.0},
        {"", "**", -1111.0},
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
    EXPECT_EQ(std::tuple(m().readOrigM2.size(), m().readOrigM2.back(), Joined(m().readOrigM2Str)),
              std::tuple(std::size(cases) + 1, 10.0, "010.0"));
}

TEST_F(Passes, WorkingCopySharesTheListText) {
    m().cmxString = std::make_shared<std::string>(
        "TITLE: A\r\n001  AX       V     C        00:00:01:00 00:00:02:00 01:00:00:00 01:00:01:00\r\n* NOTE\r\n");
    ResetGlobalVariables_NEU(m(), w());
    m().frameRate = Rate(25.0);
    ParseCMX3600(m(), w(), session().progress, platform);
    CopyArrays(m(), platform);
    const std::string& text = *m().readOrigCompleteLine.Document();
    const std::string_view line = m().copyCompletLine(1);
    EXPECT_EQ(line, m().readOrigCompleteLine(1));
    EXPECT_TRUE(line.data() >= text.data() && line.data() < text.data() + text.size());  // no copy
}

TEST_F(Passes, AZeroLengthKeyTakesTheLengthOfTheLineBefore) {
    // B mark, transition, the key's length, the length of the line before, the rate; whether the
    // key is repaired, and its timecodes then.
    const std::tuple<const char*, const char*, int32_t, int32_t, double, bool, const char*, const char*> cases[] = {
        {"", "K", 0, 75, 25.0, true, "00:00:23:00", "01:00:03:00"},
        {"", "k", 0, 75, 25.0, true, "00:00:23:00", "01:00:03:00"},
        {"", "K", 0, 75, 24.0, true, "00:00:23:23", "01:02:33:03"},
        {"", "K", 0, 75, 30.0, true, "00:00:19:05", "00:50:02:15"},
        {"B", "K", 0, 75, 25.0, false, "", ""},
        {"", "K", 50, 75, 25.0, false, "", ""},
        {"", "D", 0, 75, 25.0, false, "", ""},
        {"", "K", 0, 0, 25.0, false, "", ""},
        {"", "K", 0, -1, 25.0, false, "", ""},
        {"", "KB", 0, 75, 25.0, false, "", ""},
        {"", "K", -5, 75, 25.0, false, "", ""},
    };
    for (const auto& [bTrack, trans, duration, length, rate, repaired, sourceOutTc, recOutTc] : cases) {
        SCOPED_TRACE(::testing::Message() << bTrack << "|" << trans << "|" << duration << "|" << length << "|" << rate);
        Reset();
        Row before = Event(1, "C", 0, length, 0, length), key = Event(1, trans, 500, 500, 90000, 90000 + duration);
        before.duration = length;
        key.bTrack = bTrack;
        Load({Note("TITLE: A"), before, key, Event(2, "K", 700, 700, 1000, 1000)});
        m().frameRate = Rate(rate);
        CheckBSpurClipLenghts(m(), platform);
        const Document& m = this->m();
        EXPECT_EQ(std::tuple(m.copySourceOutFrame[2], m.copyRecOutFrame[2], m.copyEditDurationFrames[2]),
                  repaired ? std::tuple(575, 90075, 75) : std::tuple(500, 90000 + duration, duration));
        EXPECT_EQ(std::tuple(m.copySourceOutTC(2), m.copyRecOutTC(2)), std::tuple(sourceOutTc, recOutTc));
        EXPECT_EQ(m.editDurationFrames[2], duration);  // the read table keeps the read length
        // The next key takes the length of its line before as read, not as repaired.
        EXPECT_EQ(m.copySourceOutFrame[3], 700 + std::max(duration, 0));
    }
}

TEST_F(Passes, KeyRepairTakesBadRowsWithoutHarm) {
    Row huge = Event(2, "C", 0, 0, INT_MIN, INT_MAX);
    huge.duration = INT_MAX;
    Load({Event(1, "K", 500, 500, 90000, 90000),  // no line before it: stays as read
          huge, Event(2, "K", INT_MAX, INT_MAX, INT_MAX - 1, INT_MAX - 1), Event(0, "K", 1, 1, 5, 5), Note("* X"),
          Event(1, "K", 500, 500, 90000, 90000)});
    m().frameRate = Rate(25.0);
    CheckBSpurClipLenghts(m(), platform);
    // After the wrap a wrapped length; event number 0 takes no part; after a comment, nothing to take.
    const Int32Table& out = m().copySourceOutFrame;
    EXPECT_EQ(std::tuple(out[0], out[2], out[3], out[5]),
              std::tuple(500, INT_MAX + int64_t(INT_MAX) - (int64_t(1) << 32), 1, 500));
}

class Switches : public Fixture {
protected:
    void LoadTransitions(std::initializer_list<const char*> transitions) {
        for (const char* t : transitions) PushRead(m(), Event(1, t, 0, 10));
        CopyArrays(m(), platform);
    }
};

TEST_F(Switches, AudioTracks) {
    // The mode read; with audio on and off, the mode written (none: the row is left as it
    // stands); whether the row is shown with audio off (with audio on every row is).
    const std::tuple<const char*, const char*, const char*, bool> cases[] = {
        {"V", nullptr, nullptr, true},
        {"v", nullptr, nullptr, true},
        {"VX", nullptr, nullptr, true},
        {"A", "A", "A", false},
        {"A2", "A2", "A2", false},
        {"AA", "AA", "AA", false},
        {"AA/V", "AA/V", "V", true},
        {"aa/v", "aa/v", "V", true},
        {"V2", "V2", "V", true},
        {"B", "B", "B", false},
        {"NONE", "NONE", "NONE", false},
        {"", "", "", false},
        // Longer than the switch keeps beside its rows.
        {"AA/V1/V2", "AA/V1/V2", "V", true},
        {"A1/A2/A3/A4", "A1/A2/A3/A4", "A1/A2/A3/A4", false},
    };
    for (const auto& [read, keptMode, droppedMode, droppedShown] : cases) {
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
            EXPECT_EQ(std::tuple(m().copyMode(0), m().displayThisAudioEventLine[0]),
                      std::tuple(mode ? mode : "kept", audio || droppedShown));
            // The report names the mode as read.
            for (const ChangeItem& item : m().report.Section(ReportSection::Audio)) EXPECT_EQ(item.before, read);
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
        {Caller::Load, true, false, nullptr, true},
        {Caller::Load, true, true, "D", true},
        {Caller::Load, false, false, nullptr, false},
        {Caller::Load, false, true, "D", false},
        {Caller::V2Action, true, false, "K", true},
        {Caller::V2Action, true, true, "K", true},
        {Caller::V2Action, false, false, nullptr, false},
        // The key-to-dissolve box leaves the shown flag as it was.
        {Caller::KeyToDissolveAction, true, true, "D", false},
        {Caller::KeyToDissolveAction, false, true, "D", false},
        {Caller::KeyToDissolveAction, true, false, nullptr, false},
        {Caller::KeyToDissolveAction, false, false, nullptr, false},
    };
    for (const char* read : {"K", "KB", "KO", "k"}) {
        for (const auto& [caller, v2, keyToDissolve, trans, shown] : cases) {
            SCOPED_TRACE(::testing::Message() << read << " caller " << int(caller) << " " << v2 << keyToDissolve);
            Reset();
            LoadTransitions({read, "D", "BK", "W001"});
            m().displayThisKeyEventLine[0] = false;
            m().boolTransToDissolve = true;
            m().boolV2 = v2;
            m().boolKeyToDissolve = keyToDissolve;
            RunPasses(session(), caller);
            // A dissolve and a key letter elsewhere in the field are never keys.
            EXPECT_EQ(std::tuple(m().copyTrans(0), m().copyTrans(1), m().copyTrans(2)),
                      std::tuple(trans ? trans : read, "D", "BK"));
            const BoolTable& shownRows = m().displayThisKeyEventLine;
            EXPECT_EQ(std::tuple(shownRows[0], shownRows[2]), std::tuple(shown, true));
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
    m().maxZeilen = 5;  // beyond the read tables, and no working copy at all
    PrepareToDisplay(session());
    CopyArrays(m(), platform);
    CheckForM2(m(), platform);
    CheckBSpurClipLenghts(m(), platform);
    CleanEDL_4(m(), platform);
    EXPECT_EQ(m().copyTrans.size(), 6u);
}

}  // namespace
}  // namespace vornelt::testing
