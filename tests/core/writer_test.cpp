// The writer: whole lists byte for byte, the event line's fields, the reel field, the note
// rows and the generated comment lines.
#include <gtest/gtest.h>

#include <algorithm>

#include "fixtures.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

using Tc = std::array<std::string, 4>;
const Tc kTc = {"10:00:00:00", "10:00:01:00", "00:00:00:00", "00:00:01:00"};

// An expected list, kept with new lines in the file for reading; the system ends lines in CR.
std::string Expected(const std::string& name) {
    std::string text = TestData(name);
    std::replace(text.begin(), text.end(), '\n', '\r');
    return text;
}

// Fills the tables that the writer reads, row by row, as a load leaves them.
class WriterTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        Restart();
    }

    // A fresh program holding the title and FCM rows; a plain list: audio kept, motion lines
    // removed, no mirror, no comments.
    void Restart() {
        ResetProgramState();
        clean_.clear();
        Module1.boolA1234 = Module1.boolFreezeFrame = Module1.boolSpeedChange = true;
        Note("TITLE: SOURCE");
        Note("FCM: NON-DROP FRAME");
    }

    void Note(const std::string& line, double motion = -1111.0) { Push(testing::Note(line), "", motion); }

    // An event row; `rest` is the text behind the transition: a duration when numeric, else
    // the B mark. `clean` is the reel that the clip chains gave the row.
    void Event(int number, const std::string& reel, const std::string& mode, const std::string& trans,
               const std::string& rest, const Tc& tc, const std::string& clean = "") {
        const bool dur = IsNumeric(rest);
        const std::string n = Format(number, "000");
        Push({.line = n + " " + reel + " " + mode + " " + trans, .number = n, .numberValue = number, .reel = reel,
              .mode = mode, .trans = trans, .dur = dur ? rest : "", .bTrack = dur ? "" : rest, .tc = tc},
             clean, -1111.0);
    }

    // Renders and gives the list; the clip reels are formatted for the form then in force.
    std::string Render() {
        Module1.maxZeilen = int32_t(Module1.copyCompletLine.size()) - 1;
        Module1.cleanClipReelName.assign_empty(clean_.size());
        for (size_t i = 0; i < clean_.size(); ++i) Module1.cleanClipReelName.set(i, FormatReelNames(clean_[i]));
        NewEDL_02();
        return *Module1.finalCMXString;
    }

    static std::vector<std::string> Lines(const std::string& list) {
        std::vector<std::string> lines;
        for (std::string_view piece : Split(list, "\r")) lines.emplace_back(piece);
        return lines;
    }

    // A cut, a dissolve, a wipe and a key behind the usual empty row 2, with the transitions
    // that the switches leave.
    void PushDemoList(bool toDissolves) {
        Note("");
        Event(1, "TAPE1", "V", "C", "", {"01:00:00:00", "01:00:05:00", "00:00:00:00", "00:00:05:00"}, "RL0001");
        Event(2, "TAPE1", "V", "C", "", {"01:00:05:00", "01:00:05:00", "00:00:05:00", "00:00:05:00"}, "RL0001");
        Event(2, "TAPE2", "V", "D", "025", {"02:00:00:00", "02:00:04:00", "00:00:05:00", "00:00:09:00"}, "RL0002");
        Event(3, "TAPE2", "V", "C", "", {"02:00:04:00", "02:00:04:00", "00:00:09:00", "00:00:09:00"}, "RL0002");
        Event(3, "TAPE3", "V", toDissolves ? "D" : "W001", "030",
              {"03:00:00:00", "03:00:06:00", "00:00:09:00", "00:00:15:00"}, "RL0003");
        Event(4, "TAPE3", "V", toDissolves ? "D" : "K", "B",
              {"03:00:06:00", "03:00:10:00", "00:00:15:00", "00:00:19:00"}, "RL0003");
        Event(4, "TAPE4", "V", toDissolves ? "D" : "K", "000",
              {"04:00:00:00", "04:00:04:00", "00:00:15:00", "00:00:19:00"}, "RL0004");
    }

private:
    void Push(const Row& r, const std::string& clean, double motion) {
        Document& m = Module1;
        for (auto [t, v] : {std::pair{&m.copyCompletLine, &r.line}, {&m.copyEventNumberStr, &r.number},
                            {&m.copyReelNames, &r.reel}, {&m.copyMode, &r.mode}, {&m.copyTrans, &r.trans},
                            {&m.copyTransDur, &r.dur}, {&m.copyIsBTrack, &r.bTrack}, {&m.copySourceInTC, &r.tc[0]},
                            {&m.copySourceOutTC, &r.tc[1]}, {&m.copyRecInTC, &r.tc[2]}, {&m.copyRecOutTC, &r.tc[3]}})
            t->push_back(*v);
        m.copyEventNumberInt.push_back(r.numberValue);
        m.readOrigEventNumberInt.push_back(r.numberValue);
        m.displayThisAudioEventLine.push_back(true);
        m.displayThisKeyEventLine.push_back(true);
        m.readOrigM2.push_back(motion);
        clean_.push_back(clean);
    }

    std::vector<std::string> clean_;
};

TEST_F(WriterTest, WholeListsByteForByte) {
    const struct {
        const char* expected;
        bool gvg, mirror, comments, toDissolves;
        int listIndex;
        const char* reelName;
    } cases[] = {
        {"writer_table_cmx_plain.txt", false, false, false, false, 1, ""},
        {"writer_table_gvg_plain.txt", true, false, false, false, 1, ""},
        {"writer_table_cmx_mirror_comments.txt", false, true, true, false, 0, ""},
        {"writer_table_gvg_master_comments.txt", true, true, true, false, 1, "master"},
        {"writer_table_cmx_dissolves_comments.txt", false, false, true, true, 1, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expected);
        Restart();
        PushDemoList(c.toDissolves);
        Module1.IsGrassValley = c.gvg;
        Module1.boolMirror = c.mirror;
        Module1.boolGenerateNewComments = c.comments;
        Module1.boolKeyToDissolve = c.toDissolves;
        Module1.myAbsMovieName = "MASTER.MOV";
        MainWindow().PopupTransition.ListIndex = c.listIndex;
        MainWindow().EF_SeqTitle.SetText("  Demo ");
        MainWindow().EF_ReelName.SetText(c.reelName);
        EXPECT_EQ(Render(), Expected(c.expected));
        EXPECT_EQ(MainWindow().EditField1.Text, Module1.finalCMXString);
        // The table keeps each event line as written.
        EXPECT_EQ(Lines(*Module1.finalCMXString).at(3), Module1.copyCompletLine(3));
    }
}

TEST_F(WriterTest, EveryRunRendersTheSameAndMarksTheListModified) {
    PushDemoList(false);
    Module1.boolGenerateNewComments = true;
    const std::string first = Render();
    Module1.isModified = false;
    EXPECT_EQ(Render(), first);
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, (std::vector<bool>{true, true}));
    EXPECT_EQ(platform.yields, 2 * (Module1.maxZeilen - 1));  // once per row from row 2
    platform.setWindowModifiedResult = -5;
    Render();
    EXPECT_EQ(platform.messages, std::vector<std::string>{"Err: -5"});
}

TEST_F(WriterTest, NothingLoaded) {
    Module1.copyCompletLine.clear();
    Module1.maxZeilen = 0;
    Module1.dropFrame = true;  // not looked at
    NewEDL_02();
    EXPECT_EQ(*Module1.finalCMXString, "TITLE: \rFCM: NON-DROP FRAME\r\r");
    Module1.IsGrassValley = Module1.boolGenerateNewComments = true;
    Module1.myAbsMovieName = "M.MOV";
    NewEDL_02();
    EXPECT_EQ(*Module1.finalCMXString, "\rSMPTE FRAME CODE\r\r* FROM CLIP NAME:  M.MOV\r\r");
}

TEST_F(WriterTest, RowsZeroAndOneAndShortTables) {
    for (size_t row : {size_t(0), size_t(1)}) {  // a file whose first two lines are events
        Module1.copyEventNumberStr.set(row, "001");
        Module1.copyMode.set(row, "V");
    }
    Event(3, "C", "V", "C", "", kTc);
    Event(4, "C", "V", "C", "", kTc);
    Module1.displayThisKeyEventLine.resize(3);  // row 3 has no flag
    Module1.readOrigM2.clear();
    EXPECT_EQ(Lines(Render()).size(), 5u);
    Module1.maxZeilen = 10;  // beyond every table
    NewEDL_02();
    EXPECT_EQ(Lines(*Module1.finalCMXString).size(), 5u);
}

TEST_F(WriterTest, EventLineFields) {
    const struct {
        bool gvg, keyToDissolve;
        int number;
        const char *reel, *mode, *trans, *rest, *expected;  // the line up to the record timecodes
    } cases[] = {
        {false, false, 7, "R", "AAAA/V", "C", "", "007 R            C        10:00:00:00 10:00:01:00"},
        {false, false, 7, "R", "V", "KB", "", "007 R        V       KB        10:00:00:00 10:00:01:00"},
        {false, false, 7, "R", "V", "W0011", "010", "007 R        V         010 10:00:00:00 10:00:01:00"},
        {false, false, 7, "R", "V", "D", "5", "007 R        V        D    5 10:00:00:00 10:00:01:00"},
        {false, false, 7, "R", "V", "K", "B 025", "007 R        V        K B 025      10:00:00:00 10:00:01:00"},
        {false, false, 1234, "R", "V", "C", "", "1234 R        V        C        10:00:00:00 10:00:01:00"},
        {false, false, 7, "", "V", "C", "", "007  V        C        10:00:00:00 10:00:01:00"},
        {false, true, 7, "R", "V", "D", "b", "*** R        V        D b      10:00:00:00 10:00:01:00"},
        {true, true, 7, "R", "V", "D", "B", "**** R      V        D B      10:00:00:00 10:00:01:00 "},
    };
    for (const auto& c : cases) {
        Restart();
        Event(c.number, c.reel, c.mode, c.trans, c.rest, kTc);
        Module1.IsGrassValley = c.gvg;
        Module1.boolKeyToDissolve = c.keyToDissolve;
        EXPECT_EQ(Lines(Render())[3], std::string(c.expected) + " 00:00:00:00 00:00:01:00");
    }
}

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

TEST_F(WriterTest, ReelFieldAndSourceTimecodes) {
    const struct {
        bool gvg, mirror;
        const char *reelName, *reel, *expected;
    } cases[] = {
        {false, false, "", "tape1", "tape1   "}, {false, false, "MASTER", "TAPE1", "TAPE1   "},
        {false, true, "", "TAPE1", "RL0007  "},  {false, true, "", "bl", "      BL"},
        {true, true, "", "BL", "    BL"},        {true, true, "", "aux", "AUX   "},
        {false, true, "", "BLACK1", "RL0007  "}, {false, true, "MASTER", "BL", "MASTER  "},
        {true, true, "MASTER", "AX", "MASTER"},  {false, true, "MA ST", "TAPE1", "MAST    "},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.reel) + " " + c.reelName);
        Restart();
        Event(1, c.reel, "V", "C", "", kTc, "RL0007");
        Module1.IsGrassValley = c.gvg;
        Module1.boolMirror = c.mirror;
        MainWindow().EF_ReelName.SetText(c.reelName);
        const std::string line = Lines(Render())[3];
        EXPECT_EQ(line.substr(c.gvg ? 5 : 4, std::string(c.expected).size()), c.expected);
        // A mirror list's source side points at the record timecodes.
        EXPECT_EQ(line.substr(line.size() - (c.gvg ? 48 : 47), 23),
                  c.mirror ? "00:00:00:00 00:00:01:00" : "10:00:00:00 10:00:01:00");
    }
}

TEST_F(WriterTest, NoteRows) {
    const struct {
        const char* line;
        double motion;
        bool removeSpeed, removeFreeze, audio, written;
    } cases[] = {
        {"M2 R 025.0 01:00:00:00", 25.0, false, false, true, true},
        {"M2 R 025.0 01:00:00:00", 25.0, true, false, true, false},
        {"M2 R 000.0 01:00:00:00", 0.0, true, false, true, true},
        {"M2 R 000.0 01:00:00:00", 0.0, false, true, true, false},
        {"M2 R -12.5 01:00:00:00", -12.5, true, false, true, false},
        {"PEG A R 12.0", 12.0, false, true, true, true},
        {"peg b R 0", 0.0, true, false, true, true},
        {"M2X R 025.0", 25.0, false, false, true, true},
        {"M2 R 025.0", -1111.0, false, false, true, false},
        {"AUD  3", -1111.0, true, true, true, true},
        {"AUD  3", -1111.0, true, true, false, false},
        {"* FROM CLIP NAME: SHOT 1", -1111.0, false, false, true, false},
        {"SPLIT:    AUDIO DELAY=  00:00:00:05", -1111.0, false, false, false, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.line);
        Restart();
        Event(1, "TAPE1", "V", "C", "", kTc);
        Note(c.line, c.motion);
        Module1.boolSpeedChange = c.removeSpeed;
        Module1.boolFreezeFrame = c.removeFreeze;
        Module1.boolA1234 = c.audio;
        const std::vector<std::string> lines = Lines(Render());
        EXPECT_EQ(lines.size() == 6 && lines[4] == c.line, c.written);
    }
    // A hidden event's AUD row is still written while audio is on.
    Restart();
    Event(1, "TAPE1", "A", "C", "", kTc);
    Note("AUD  3");
    Module1.displayThisAudioEventLine[2] = false;
    EXPECT_EQ(Lines(Render())[3], "AUD  3");
}

TEST_F(WriterTest, CommentBlocks) {
    struct Row {
        int number;
        const char *trans, *rest;
        bool hidden = false;
    };
    const struct {
        bool emptyRowTwo;
        std::vector<Row> rows;
        int listIndex;
        const char* expected;  // all but the header, event lines as "#", lines ended by "|"
    } cases[] = {
        {true, {{1, "C", ""}, {2, "C", ""}}, 1, "#|F||#|F|||"},
        {false, {{1, "C", ""}, {2, "C", ""}}, 1, "F||#|F||#|F|||"},
        {true, {{5, "C", ""}}, 1, "F||#|F|||"},
        {false, {{0, "C", ""}}, 1, "#|F|||"},
        {true, {{1, "C", ""}, {2, "D", "025"}}, 1, "#||#|F|||"},
        {true, {{1, "C", ""}, {1, "D", "000"}}, 1, "#|#|F|||"},
        {true, {{1, "C", ""}, {1, "C", "010"}}, 1, "#|#|F|* EFFECT NAME: CROSS DISSOLVE|* TO CLIP NAME:  M|||"},
        {true, {{1, "C", ""}, {1, "K", "000"}}, 1, "#|#|F|* KEY CLIP NAME:  M|||"},
        {true,
         {{1, "C", ""}, {1, "K", ""}, {1, "D", "025"}},
         1,
         "#|#|#|F|* EFFECT NAME: CROSS DISSOLVE* KEY CLIP NAME:  M||* TO CLIP NAME:  M|||"},
        {true, {{1, "C", ""}, {1, "W001", "000"}}, 1, "#|#|F|||"},
        {true, {{1, "C", ""}, {1, "W001", "030"}}, 2, "#|#|F|||"},
        {true, {{1, "C", ""}, {1, "K", "B"}, {2, "C", ""}}, 1, "#|#|F|* KEY CLIP NAME:  M||#|F|||"},
        {true, {{1, "C", ""}, {2, "K", "B", true}, {2, "D", "010"}}, 1, "#||#|F|||"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expected);
        Restart();
        if (c.emptyRowTwo) Note("");
        for (const Row& r : c.rows) {
            Event(r.number, "TAPE1", "V", r.trans, r.rest, kTc);
            Module1.displayThisKeyEventLine.back() = !r.hidden;
        }
        Module1.boolGenerateNewComments = true;
        Module1.myAbsMovieName = std::string("M");
        MainWindow().PopupTransition.ListIndex = c.listIndex;
        std::string seen;
        const std::vector<std::string> lines = Lines(Render());
        for (size_t k = 3; k < lines.size(); ++k)
            seen += (lines[k].size() == 78 ? "#" : lines[k] == "* FROM CLIP NAME:  M" ? "F" : lines[k]) + "|";
        EXPECT_EQ(seen, c.expected);
    }
}

}  // namespace
}  // namespace vornelt::testing
