// The writer: whole lists byte for byte, the event line's field rules, the note rows and the
// generated comment lines.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <initializer_list>
#include <string>

#include "core/writer_fixture.hpp"

namespace vornelt::testing {
namespace {

// Lines as the system ends them: each with one carriage return.
std::string L(std::initializer_list<const char*> lines) {
    std::string out;
    for (const char* line : lines) out.append(line).push_back('\r');
    return out;
}

class WriterTest : public WriterFixture {
protected:
    // A cut, a dissolve, a wipe and a key, each with the rows that a load gives them, behind
    // the usual empty row 2. The switches' results go into the transitions.
    void PushDemoList(bool wipesToDissolves = false, bool keysToDissolves = false) {
        Note("");
        Event(1, "TAPE1", "V", "C", "", "01:00:00:00", "01:00:05:00", "00:00:00:00", "00:00:05:00", "RL0001");
        Event(2, "TAPE1", "V", "C", "", "01:00:05:00", "01:00:05:00", "00:00:05:00", "00:00:05:00", "RL0001");
        Event(2, "TAPE2", "V", "D", "025", "02:00:00:00", "02:00:04:00", "00:00:05:00", "00:00:09:00", "RL0002");
        Event(3, "TAPE2", "V", "C", "", "02:00:04:00", "02:00:04:00", "00:00:09:00", "00:00:09:00", "RL0002");
        Event(3, "TAPE3", "V", wipesToDissolves ? "D" : "W001", "030", "03:00:00:00", "03:00:06:00", "00:00:09:00",
              "00:00:15:00", "RL0003");
        Event(4, "TAPE3", "V", keysToDissolves ? "D" : "K", "B", "03:00:06:00", "03:00:10:00", "00:00:15:00",
              "00:00:19:00", "RL0003");
        Event(4, "TAPE4", "V", keysToDissolves ? "D" : "K", "000", "04:00:00:00", "04:00:04:00", "00:00:15:00",
              "00:00:19:00", "RL0004");
    }
};

struct GoldenCase {
    const char* name;
    bool gvg;
    bool mirror;
    bool comments;
    bool toDissolves;  // wipes and keys turned into dissolves
    int listIndex;
    const char* reelName;
    std::string expected;
};

TEST_F(WriterTest, WholeListsByteForByte) {
    const GoldenCase cases[] = {
        {"cmx plain", false, false, false, false, 1, "",
         L({"TITLE: DEMO",
            "FCM: NON-DROP FRAME",
            "",
            "001 TAPE1    V        C        01:00:00:00 01:00:05:00 00:00:00:00 00:00:05:00",
            "002 TAPE1    V        C        01:00:05:00 01:00:05:00 00:00:05:00 00:00:05:00",
            "002 TAPE2    V        D    025 02:00:00:00 02:00:04:00 00:00:05:00 00:00:09:00",
            "003 TAPE2    V        C        02:00:04:00 02:00:04:00 00:00:09:00 00:00:09:00",
            "003 TAPE3    V     W001    030 03:00:00:00 03:00:06:00 00:00:09:00 00:00:15:00",
            "004 TAPE3    V        K B      03:00:06:00 03:00:10:00 00:00:15:00 00:00:19:00",
            "004 TAPE4    V        K    000 04:00:00:00 04:00:04:00 00:00:15:00 00:00:19:00"})},
        {"gvg plain", true, false, false, false, 1, "",
         L({"DEMO",
            "SMPTE FRAME CODE",
            "",
            "0001 TAPE1  V        C        01:00:00:00 01:00:05:00  00:00:00:00 00:00:05:00",
            "0002 TAPE1  V        C        01:00:05:00 01:00:05:00  00:00:05:00 00:00:05:00",
            "0002 TAPE2  V        D    025 02:00:00:00 02:00:04:00  00:00:05:00 00:00:09:00",
            "0003 TAPE2  V        C        02:00:04:00 02:00:04:00  00:00:09:00 00:00:09:00",
            "0003 TAPE3  V     W001    030 03:00:00:00 03:00:06:00  00:00:09:00 00:00:15:00",
            "0004 TAPE3  V        K B      03:00:06:00 03:00:10:00  00:00:15:00 00:00:19:00",
            "0004 TAPE4  V        K    000 04:00:00:00 04:00:04:00  00:00:15:00 00:00:19:00"})},
        {"cmx mirror comments fcp", false, true, true, false, 0, "",
         L({"TITLE: DEMO",
            "FCM: NON-DROP FRAME",
            "",
            "001 RL0001   V        C        00:00:00:00 00:00:05:00 00:00:00:00 00:00:05:00",
            "* FROM CLIP NAME:  MASTER.MOV",
            "",
            "002 RL0001   V        C        00:00:05:00 00:00:05:00 00:00:05:00 00:00:05:00",
            "002 RL0002   V        D    025 00:00:05:00 00:00:09:00 00:00:05:00 00:00:09:00",
            "* EFFECT NAME: CROSS DISSOLVE",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* TO CLIP NAME:  MASTER.MOV",
            "",
            "003 RL0002   V        C        00:00:09:00 00:00:09:00 00:00:09:00 00:00:09:00",
            "003 RL0003   V     W001    030 00:00:09:00 00:00:15:00 00:00:09:00 00:00:15:00",
            "* EFFECT NAME: EDGE WIPE",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* TO CLIP NAME:  MASTER.MOV",
            "",
            "004 RL0003   V        K B      00:00:15:00 00:00:19:00 00:00:15:00 00:00:19:00",
            "004 RL0004   V        K    000 00:00:15:00 00:00:19:00 00:00:15:00 00:00:19:00",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* KEY CLIP NAME:  MASTER.MOV",
            ""})},
        {"gvg mirror on a named master, comments smpte", true, true, true, false, 1, "master",
         L({"DEMO",
            "SMPTE FRAME CODE",
            "",
            "0001 MASTER V        C        00:00:00:00 00:00:05:00  00:00:00:00 00:00:05:00",
            "* FROM CLIP NAME:  MASTER.MOV",
            "",
            "0002 MASTER V        C        00:00:05:00 00:00:05:00  00:00:05:00 00:00:05:00",
            "0002 MASTER V        D    025 00:00:05:00 00:00:09:00  00:00:05:00 00:00:09:00",
            "* EFFECT NAME: CROSS DISSOLVE",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* TO CLIP NAME:  MASTER.MOV",
            "",
            "0003 MASTER V        C        00:00:09:00 00:00:09:00  00:00:09:00 00:00:09:00",
            "0003 MASTER V     W001    030 00:00:09:00 00:00:15:00  00:00:09:00 00:00:15:00",
            "* EFFECT NAME: EDGE WIPE HORIZONTAL",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* TO CLIP NAME:  MASTER.MOV",
            "",
            "0004 MASTER V        K B      00:00:15:00 00:00:19:00  00:00:15:00 00:00:19:00",
            "0004 MASTER V        K    000 00:00:15:00 00:00:19:00  00:00:15:00 00:00:19:00",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* KEY CLIP NAME:  MASTER.MOV",
            ""})},
        // Wipes and keys as dissolves: the wipe comments as a dissolve; the key's background
        // row prints stars and a foreground duration of 000 comments nothing.
        {"cmx comments, everything a dissolve", false, false, true, true, 1, "",
         L({"TITLE: DEMO",
            "FCM: NON-DROP FRAME",
            "",
            "001 TAPE1    V        C        01:00:00:00 01:00:05:00 00:00:00:00 00:00:05:00",
            "* FROM CLIP NAME:  MASTER.MOV",
            "",
            "002 TAPE1    V        C        01:00:05:00 01:00:05:00 00:00:05:00 00:00:05:00",
            "002 TAPE2    V        D    025 02:00:00:00 02:00:04:00 00:00:05:00 00:00:09:00",
            "* EFFECT NAME: CROSS DISSOLVE",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* TO CLIP NAME:  MASTER.MOV",
            "",
            "003 TAPE2    V        C        02:00:04:00 02:00:04:00 00:00:09:00 00:00:09:00",
            "003 TAPE3    V        D    030 03:00:00:00 03:00:06:00 00:00:09:00 00:00:15:00",
            "* EFFECT NAME: CROSS DISSOLVE",
            "* FROM CLIP NAME:  MASTER.MOV",
            "* TO CLIP NAME:  MASTER.MOV",
            "",
            "*** TAPE3    V        D B      03:00:06:00 03:00:10:00 00:00:15:00 00:00:19:00",
            "004 TAPE4    V        D    000 04:00:00:00 04:00:04:00 00:00:15:00 00:00:19:00",
            "* FROM CLIP NAME:  MASTER.MOV",
            ""})},
    };
    const bool vocabulary = VocabularyReady();
    for (const GoldenCase& c : cases) {
        SCOPED_TRACE(c.name);
        if (c.comments && !vocabulary) continue;  // the block order comes from the vocabulary
        Restart();
        PushDemoList(c.toDissolves, c.toDissolves);
        Module1.IsGrassValley = c.gvg;
        Module1.boolMirror = c.mirror;
        Module1.boolGenerateNewComments = c.comments;
        Module1.boolKeyToDissolve = c.toDissolves;
        Module1.myAbsMovieName = "MASTER.MOV";
        MainWindow().PopupTransition.ListIndex = c.listIndex;
        MainWindow().EF_SeqTitle.SetText("Demo");
        MainWindow().EF_ReelName.SetText(c.reelName);
        const std::string list = Render();
        EXPECT_EQ(list, c.expected);
        EXPECT_EQ(MainWindow().EditField1.Text, Module1.finalCMXString) << "the text area shares the list";
        // Every event line is 78 characters, and copyCompletLine keeps what was written.
        for (int64_t i = 3; i <= Module1.maxZeilen; ++i) {
            const std::string_view line = Module1.copyCompletLine(size_t(i));
            EXPECT_EQ(line.size(), 78u) << line;
            EXPECT_NE(list.find(std::string(line) + "\r"), std::string::npos) << line;
        }
    }
    if (!vocabulary) GTEST_SKIP() << "lists with comment blocks wait for the wipe names and the block order";
}

TEST_F(WriterTest, RenderingMarksTheListModifiedEveryTimeAndIsStable) {
    PushDemoList();
    Module1.boolGenerateNewComments = true;
    const std::string first = Render();
    ASSERT_TRUE(Module1.isModified);
    Module1.isModified = false;
    const std::string second = Render();
    EXPECT_EQ(first, second);
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, (std::vector<bool>{true, true}));
    // One yield per row from row 2.
    EXPECT_EQ(platform.yields, 2 * (Module1.maxZeilen - 1));
}

TEST_F(WriterTest, SwitchingMirrorOffAndOnGivesTheSameText) {
    PushDemoList();
    Module1.boolMirror = true;
    const std::string mirrored = Render();
    Module1.boolMirror = false;
    const std::string plain = Render();
    Module1.boolMirror = true;
    EXPECT_NE(plain, mirrored);
    EXPECT_EQ(Render(), mirrored);
}

TEST_F(WriterTest, HeaderOfAnEmptyDocument) {
    // Nothing loaded: maxZeilen 0, no rows at all.
    Restart();
    Module1.copyCompletLine.clear();
    Module1.maxZeilen = 0;
    NewEDL_02();
    EXPECT_EQ(*Module1.finalCMXString, L({"TITLE: ", "FCM: NON-DROP FRAME", ""}));
    Module1.IsGrassValley = true;
    Module1.boolGenerateNewComments = true;
    Module1.myAbsMovieName = "M.MOV";
    NewEDL_02();
    EXPECT_EQ(*Module1.finalCMXString, L({"", "SMPTE FRAME CODE", "", "* FROM CLIP NAME:  M.MOV", ""}));
}

TEST_F(WriterTest, TitleIsTrimmedAndDropFrameIsNotLookedAt) {
    Module1.dropFrame = true;
    MainWindow().EF_SeqTitle.SetText("  my cut  ");
    Render();
    EXPECT_EQ(Module1.newSeqTitle, "MY CUT");
    EXPECT_EQ(Lines(*Module1.finalCMXString)[0], "TITLE: MY CUT");
    EXPECT_EQ(Lines(*Module1.finalCMXString)[1], "FCM: NON-DROP FRAME");
}

TEST_F(WriterTest, RowsZeroAndOneAreNeverRendered) {
    // A file without title and FCM lines: its first two events stand on rows 0 and 1.
    for (size_t row : {size_t(0), size_t(1)}) {
        Module1.copyEventNumberStr.set(row, "001");
        Module1.copyEventNumberInt[row] = 1;
        Module1.readOrigEventNumberInt[row] = 1;
        Module1.copyMode.set(row, "V");
    }
    Event(3, "C", "V", "C", "", "01:00:00:00", "01:00:01:00", "00:00:02:00", "00:00:03:00");
    const std::vector<std::string> lines = Lines(Render());
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[3].substr(0, 4), "003 ");
}

struct LineCase {
    const char* name;
    bool gvg;
    bool keyToDissolve;
    int number;
    const char* mode;
    const char* trans;
    const char* durOrB;
    const char* expected;
};

TEST_F(WriterTest, EventLineFields) {
    const LineCase cases[] = {
        {"mode of four", false, false, 7, "AA/V", "C", "",
         "007 R        AA/V     C        10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"mode of six vanishes", false, false, 7, "AAAA/V", "C", "",
         "007 R            C        10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"transition of two", false, false, 7, "V", "KB", "",
         "007 R        V       KB        10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"transition of five vanishes", false, false, 7, "V", "W0011", "010",
         "007 R        V         010 10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"duration as stored", false, false, 7, "V", "D", "5",
         "007 R        V        D    5 10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"long B mark moves the line", false, false, 7, "V", "K", "BG",
         "007 R        V        K BG      10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"number of four digits in CMX", false, false, 1234, "V", "C", "",
         "1234 R        V        C        10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"number zero", true, false, 0, "V", "C", "",
         "0000 R      V        C        10:00:00:00 10:00:01:00  00:00:00:00 00:00:01:00"},
        {"stars for a lower-case b", false, true, 7, "V", "D", "b",
         "*** R        V        D b      10:00:00:00 10:00:01:00 00:00:00:00 00:00:01:00"},
        {"four stars in GVG", true, true, 7, "V", "D", "B",
         "**** R      V        D B      10:00:00:00 10:00:01:00  00:00:00:00 00:00:01:00"},
        {"no stars without the switch", true, false, 7, "V", "K", "B",
         "0007 R      V        K B      10:00:00:00 10:00:01:00  00:00:00:00 00:00:01:00"},
    };
    for (const LineCase& c : cases) {
        SCOPED_TRACE(c.name);
        Restart();
        Note("");
        Event(c.number, "R", c.mode, c.trans, c.durOrB, "10:00:00:00", "10:00:01:00", "00:00:00:00", "00:00:01:00");
        Module1.IsGrassValley = c.gvg;
        Module1.boolKeyToDissolve = c.keyToDissolve;
        EXPECT_EQ(Lines(Render())[3], c.expected);
    }
}

TEST_F(WriterTest, EmptyTimecodesAndReelMoveTheFieldsLeft) {
    Note("");
    Event(1, "", "V", "C", "", "", "", "00:00:00:00", "00:00:01:00");
    EXPECT_EQ(Lines(Render())[3], "001  V        C          00:00:00:00 00:00:01:00");
}

struct ReelCase {
    const char* name;
    bool gvg;
    bool mirror;
    const char* reelField;  // EF_ReelName
    const char* reel;       // copyReelNames
    const char* expected;   // the reel field
};

TEST_F(WriterTest, ReelFieldDecision) {
    const ReelCase cases[] = {
        {"no mirror keeps the reel", false, false, "", "tape1", "tape1   "},
        {"no mirror ignores a named master", false, false, "MASTER", "TAPE1", "TAPE1   "},
        {"mirror gives the clip reel", false, true, "", "TAPE1", "RL0007  "},
        {"mirror keeps black", false, true, "", "BL", "      BL"},
        {"mirror keeps black in GVG", true, true, "", "BL", "    BL"},
        {"reserved in lower case, in capitals", false, true, "", "bl", "      BL"},
        {"mirror keeps aux", true, true, "", "aux", "AUX   "},
        {"a reserved name with more is a real source", false, true, "", "BLACK1", "RL0007  "},
        {"a named master replaces black too", false, true, "MASTER", "BL", "MASTER  "},
        {"a named master in GVG", true, true, "MASTER", "AX", "MASTER"},
        {"blanks in the named master go", false, true, "MA ST", "TAPE1", "MAST    "},
        {"a reserved master", false, true, "ax", "TAPE1", "      AX"},
    };
    for (const ReelCase& c : cases) {
        SCOPED_TRACE(c.name);
        Restart();
        Note("");
        Event(1, c.reel, "V", "C", "", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00", "RL0007");
        Module1.IsGrassValley = c.gvg;
        Module1.boolMirror = c.mirror;
        MainWindow().EF_ReelName.SetText(c.reelField);
        const std::string line = Lines(Render())[3];
        const size_t start = c.gvg ? 5 : 4;
        EXPECT_EQ(line.substr(start, std::string(c.expected).size()), c.expected) << line;
        // The source fields follow the mirror, the record fields never.
        const std::string source = line.substr(line.size() - (c.gvg ? 48 : 47), 23);
        EXPECT_EQ(source, c.mirror ? "00:00:00:00 00:00:01:00" : "01:00:00:00 01:00:01:00") << line;
    }
}

struct NoteCase {
    const char* line;
    double motion;
    bool removeSpeed;
    bool removeFreeze;
    bool audio;
    bool written;
};

TEST_F(WriterTest, NoteRowChain) {
    const NoteCase cases[] = {
        {"M2   TAPE1       025.0                01:00:00:00", 25.0, false, false, true, true},
        {"M2   TAPE1       000.0                01:00:00:00", 0.0, true, false, true, true},
        {"M2   TAPE1       025.0                01:00:00:00", 25.0, true, false, true, false},
        {"M2   TAPE1       -12.5                01:00:00:00", -12.5, true, true, true, false},
        {"M2   TAPE1       -12.5                01:00:00:00", -12.5, false, true, true, true},
        {"M2   TAPE1       000.0                01:00:00:00", 0.0, false, true, true, false},
        {"PEG A TAPE1 12.0", 12.0, false, true, true, true},
        {"peg b TAPE1 0", 0.0, true, false, true, true},
        {"M2X  TAPE1       025.0", 25.0, false, false, true, true},
        {"M2   TAPE1       025.0", -1111.0, false, false, true, false},
        {"AUD  3", -1111.0, true, true, true, true},
        {"AUD  3", -1111.0, true, true, false, false},
        {"* FROM CLIP NAME: SHOT 1", -1111.0, false, false, true, false},
        {"SPLIT:    AUDIO DELAY=  00:00:00:05", -1111.0, false, false, true, false},
        {"SPLIT:    AUDIO DELAY=  00:00:00:05", -1111.0, false, false, false, false},
        {"TITLE: AGAIN", -1111.0, false, false, true, false},
    };
    for (const NoteCase& c : cases) {
        SCOPED_TRACE(c.line);
        Restart();
        Note("");
        Event(1, "TAPE1", "V", "C", "", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00");
        Note(c.line, c.motion);
        Module1.boolSpeedChange = c.removeSpeed;
        Module1.boolFreezeFrame = c.removeFreeze;
        Module1.boolA1234 = c.audio;
        const std::vector<std::string> lines = Lines(Render());
        // Header, the event, the note when written, and the empty piece after the last end.
        ASSERT_EQ(lines.size(), c.written ? 6u : 5u);
        if (c.written) {
            EXPECT_EQ(lines[4], c.line);
        }
    }
}

TEST_F(WriterTest, HiddenRowsAndTheirNotes) {
    Note("");
    Event(1, "TAPE1", "A", "C", "", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00");
    Note("AUD  3");
    Event(2, "TAPE2", "V", "C", "", "01:00:00:00", "01:00:01:00", "00:00:01:00", "00:00:02:00");
    // Audio off, as its switch leaves the tables: the audio event is hidden, its AUD row
    // dropped, and the next event keeps its own number.
    Module1.displayThisAudioEventLine[3] = false;
    Module1.boolA1234 = false;
    std::vector<std::string> lines = Lines(Render());
    ASSERT_EQ(lines.size(), 5u);
    EXPECT_EQ(lines[3].substr(0, 4), "002 ");
    // With audio on, an AUD row is written even when its event is hidden.
    Module1.boolA1234 = true;
    lines = Lines(Render());
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[3], "AUD  3");
}

// The comment blocks: a list of event rows and the comment lines that come out.
struct CommentRow {
    int number;
    const char* trans;
    const char* durOrB;
};

struct CommentCase {
    const char* name;
    bool emptyRowTwo;  // the usual empty line behind the FCM line
    std::vector<CommentRow> rows;
    int listIndex;
    std::string expected;  // every line that is no event line, in order, with the event lines as "#"
};

TEST_F(WriterTest, CommentBlocks) {
    const CommentCase cases[] = {
        {"three cuts from row 3", true, {{1, "C", ""}, {2, "C", ""}, {3, "C", ""}}, 1,
         L({"#", "* FROM CLIP NAME:  M", "", "#", "* FROM CLIP NAME:  M", "", "#", "* FROM CLIP NAME:  M", ""})},
        {"first event on row 2", false, {{1, "C", ""}, {2, "C", ""}}, 1,
         L({"* FROM CLIP NAME:  M", "", "#", "* FROM CLIP NAME:  M", "", "#", "* FROM CLIP NAME:  M", ""})},
        {"first event numbered 5", true, {{5, "C", ""}}, 1,
         L({"* FROM CLIP NAME:  M", "", "#", "* FROM CLIP NAME:  M", ""})},
        {"event zero on row 2 is no new event", false, {{0, "C", ""}}, 1, L({"#", "* FROM CLIP NAME:  M", ""})},
        {"a dissolve of one row brings no FROM line", true, {{1, "C", ""}, {2, "D", "025"}}, 1,
         L({"#", "", "#", "* FROM CLIP NAME:  M", ""})},
        {"a dissolve of no length comments nothing", true, {{1, "C", ""}, {1, "D", "000"}}, 1,
         L({"#", "#", "* FROM CLIP NAME:  M", ""})},
        {"a cut with a duration is a dissolve", true, {{1, "C", ""}, {1, "C", "010"}}, 1,
         L({"#", "#", "* FROM CLIP NAME:  M", "* EFFECT NAME: CROSS DISSOLVE", "* TO CLIP NAME:  M", ""})},
        {"a key comments whatever its duration", true, {{1, "C", ""}, {1, "K", "000"}}, 1,
         L({"#", "#", "* FROM CLIP NAME:  M", "* KEY CLIP NAME:  M", ""})},
        {"three rows run the key line on behind the effect", true, {{1, "C", ""}, {1, "K", ""}, {1, "D", "025"}}, 1,
         L({"#", "#", "#", "* FROM CLIP NAME:  M", "* EFFECT NAME: CROSS DISSOLVE* KEY CLIP NAME:  M", "",
            "* TO CLIP NAME:  M", ""})},
        {"a wipe of no length comments nothing", true, {{1, "C", ""}, {1, "W001", "000"}}, 1,
         L({"#", "#", "* FROM CLIP NAME:  M", ""})},
        {"a wipe under an unknown popup row", true, {{1, "C", ""}, {1, "W001", "030"}}, 2,
         L({"#", "#", "* FROM CLIP NAME:  M", ""})},
        {"the last block stays unsorted", true, {{1, "C", ""}, {1, "W001", "030"}}, 0,
         L({"#", "#", "* FROM CLIP NAME:  M", "* EFFECT NAME: EDGE WIPE", "* TO CLIP NAME:  M", ""})},
        {"a block of two goes out as gathered", true, {{1, "C", ""}, {1, "K", "B"}, {2, "C", ""}}, 1,
         L({"#", "#", "* FROM CLIP NAME:  M", "* KEY CLIP NAME:  M", "", "#", "* FROM CLIP NAME:  M", ""})},
    };
    for (const CommentCase& c : cases) {
        SCOPED_TRACE(c.name);
        Restart();
        if (c.emptyRowTwo) Note("");
        for (const CommentRow& r : c.rows)
            Event(r.number, "TAPE1", "V", r.trans, r.durOrB, "01:00:00:00", "01:00:01:00", "00:00:00:00",
                  "00:00:01:00");
        Module1.boolGenerateNewComments = true;
        Module1.myAbsMovieName = std::string("M");
        MainWindow().PopupTransition.ListIndex = c.listIndex;
        const std::string list = Render();
        std::string comments;
        const std::vector<std::string> lines = Lines(list);
        for (size_t k = 3; k + 1 < lines.size(); ++k)
            comments.append(lines[k].size() == 78 ? "#" : lines[k]).push_back('\r');
        EXPECT_EQ(comments, c.expected);
    }
}

TEST_F(WriterTest, HidingTheFirstRowOfAnEventMakesTheSecondANewOne) {
    Note("");
    Event(1, "TAPE1", "V", "C", "", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00");
    Event(2, "TAPE1", "V", "K", "B", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00");
    Event(2, "TAPE2", "V", "D", "010", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00");
    Module1.displayThisKeyEventLine[4] = false;
    Module1.boolGenerateNewComments = true;
    Module1.myAbsMovieName = "M";
    const std::vector<std::string> lines = Lines(Render());
    // The dissolve row opens event 2 with its own duration: a flush with no FROM line.
    ASSERT_EQ(lines.size(), 9u);
    EXPECT_EQ(lines[4], "");
    EXPECT_EQ(lines[5].substr(0, 4), "002 ");
    EXPECT_EQ(lines[6], "* FROM CLIP NAME:  M");
}

TEST_F(WriterTest, PunktImPunktReportsAFailingMark) {
    platform.setWindowModifiedResult = -5;
    Render();
    ASSERT_EQ(platform.messages.size(), 1u);
    EXPECT_EQ(platform.messages[0], "Err: -5");
    EXPECT_TRUE(Module1.isModified) << "the rendering itself stands";
}

TEST_F(WriterTest, ShortTablesDoNotCrash) {
    Note("");
    Event(1, "TAPE1", "V", "C", "", "01:00:00:00", "01:00:01:00", "00:00:00:00", "00:00:01:00");
    Module1.maxZeilen = 10;  // beyond every table
    Module1.displayThisKeyEventLine.resize(2);
    NewEDL_02();
    EXPECT_EQ(Lines(*Module1.finalCMXString).size(), 4u);
}

}  // namespace
}  // namespace vornelt::testing

namespace vornelt::testing {
namespace {

// What every click on an option costs: a list of 100,000 events rendered with comments on.
// Run by hand on a release build: --gtest_also_run_disabled_tests --gtest_filter='*Timing*'.
TEST_F(WriterTest, DISABLED_TimingOfHundredThousandEvents) {
    Note("");
    auto tc = [](int frames) {
        char buf[16];
        std::snprintf(buf, sizeof buf, "%02d:%02d:%02d:%02d", frames / 90000 % 24, frames / 1500 % 60,
                      frames / 25 % 60, frames % 25);
        return std::string(buf);
    };
    int rec = 0;
    for (int n = 1; n <= 100000; ++n) {
        char reelText[16];
        std::snprintf(reelText, sizeof reelText, "A%dC00%d", n % 700, n % 9);
        const std::string reel(reelText);
        const int len = 25 + n % 100;
        switch (n % 8) {
            case 3:
                Event(n, reel, "V", "C", "", tc(90000), tc(90000), tc(rec), tc(rec));
                Event(n, reel, "V", "D", "025", tc(90000), tc(90000 + len), tc(rec), tc(rec + len), "RL0002");
                break;
            case 5:
                Event(n, reel, "V", "C", "", tc(90000), tc(90000), tc(rec), tc(rec));
                Event(n, reel, "V", "W001", "030", tc(90000), tc(90000 + len), tc(rec), tc(rec + len), "RL0003");
                break;
            case 6:
                Event(n, reel, "V", "K", "B", tc(90000), tc(90000 + len), tc(rec), tc(rec + len), "RL0004");
                Event(n, reel, "V", "K", "000", tc(90000), tc(90000 + len), tc(rec), tc(rec + len), "RL0005");
                break;
            case 7:
                Event(n, reel, "AA/V", "C", "", tc(90000), tc(90000 + len), tc(rec), tc(rec + len), "RL0001");
                Note("M2   " + reel + "       050.0                " + tc(90000), 50.0);
                Note("* FROM CLIP NAME: SHOT " + std::to_string(n));
                break;
            default:
                Event(n, reel, "V", "C", "", tc(90000), tc(90000 + len), tc(rec), tc(rec + len), "RL0001");
        }
        rec += len;
    }
    Module1.boolGenerateNewComments = true;
    Module1.boolMirror = true;
    Module1.myAbsMovieName = "MASTER.MOV";
    auto time = [&] {
        const auto start = std::chrono::steady_clock::now();
        NewEDL_02();
        return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    };
    const auto start = std::chrono::steady_clock::now();
    Render();
    const double first = std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    double best = 1e9;
    for (int k = 0; k < 10; ++k) best = std::min(best, time());
    std::printf("rows %d, list %.1f MB: first run %.1f ms, best of 10 %.1f ms\n", Module1.maxZeilen + 1,
                double(Module1.finalCMXString->size()) / 1e6, first, best);
}

}  // namespace
}  // namespace vornelt::testing
