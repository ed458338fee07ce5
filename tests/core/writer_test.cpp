// The writer: whole lists byte for byte, the event line's fields, the reel field, the note
// rows and the generated comment lines; the wipe names and the order of a comment block.
#include <gtest/gtest.h>

#include <algorithm>

#include "fixtures.hpp"
#include "generate.hpp"
#include "vocabulary/vocabulary.hpp"
#include "writer/plan.hpp"
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
    WriterTest() { Restart(); }

    // A fresh program holding the title and FCM rows; a plain list: audio kept, motion lines
    // removed, no mirror, no comments.
    void Restart() {
        Reset();
        clean_.clear();
        m().boolA1234 = m().boolFreezeFrame = m().boolSpeedChange = true;
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
        Push({.line = n + " " + reel + " " + mode + " " + trans,
              .number = n,
              .numberValue = number,
              .reel = reel,
              .mode = mode,
              .trans = trans,
              .dur = dur ? rest : "",
              .bTrack = dur ? "" : rest,
              .tc = tc},
             clean, -1111.0);
    }

    // Renders and gives the list; the clip reels are formatted for the form then in force.
    std::string Render() {
        m().maxZeilen = int32_t(m().copyCompletLine.size()) - 1;
        m().cleanClipReelName.assign_empty(clean_.size());
        for (size_t i = 0; i < clean_.size(); ++i)
            m().cleanClipReelName.set(i, FormatReelNames(clean_[i], m().IsGrassValley));
        NewEDL_02(m(), w(), platform);
        return *m().finalCMXString;
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
        Document& m = this->m();
        for (auto [t, v] : {std::pair{&m.copyCompletLine, &r.line},
                            {&m.copyEventNumberStr, &r.number},
                            {&m.copyReelNames, &r.reel},
                            {&m.copyMode, &r.mode},
                            {&m.copyTrans, &r.trans},
                            {&m.copyTransDur, &r.dur},
                            {&m.copyIsBTrack, &r.bTrack},
                            {&m.copySourceInTC, &r.tc[0]},
                            {&m.copySourceOutTC, &r.tc[1]},
                            {&m.copyRecInTC, &r.tc[2]},
                            {&m.copyRecOutTC, &r.tc[3]}})
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
    // The expected list, the reel name field, GVG, mirror, comments, keys to dissolves, the wipe names.
    const std::tuple<const char*, const char*, bool, bool, bool, bool, int> cases[] = {
        {"writer_table_cmx_plain.txt", "", false, false, false, false, 1},
        {"writer_table_gvg_plain.txt", "", true, false, false, false, 1},
        {"writer_table_cmx_mirror_comments.txt", "", false, true, true, false, 0},
        {"writer_table_gvg_master_comments.txt", "master", true, true, true, false, 1},
        {"writer_table_cmx_dissolves_comments.txt", "", false, false, true, true, 1},
    };
    for (const auto& [expected, reelName, gvg, mirror, comments, toDissolves, listIndex] : cases) {
        SCOPED_TRACE(expected);
        Restart();
        PushDemoList(toDissolves);
        m().IsGrassValley = gvg;
        m().boolMirror = mirror;
        m().boolGenerateNewComments = comments;
        m().boolKeyToDissolve = toDissolves;
        m().myAbsMovieName = "MASTER.MOV";
        w().PopupTransition.ListIndex = listIndex;
        w().EF_SeqTitle.SetText("  Demo ");
        w().EF_ReelName.SetText(reelName);
        EXPECT_EQ(Render(), Expected(expected));
        EXPECT_EQ(w().EditField1.Text, m().finalCMXString);
        // The table keeps each event line as written.
        EXPECT_EQ(Lines(*m().finalCMXString).at(3), m().copyCompletLine(3));
        // The plan is the list: written out whole it gives the list, and each planned line
        // stands on its line.
        const ListPlan& plan = m().plan;
        const std::string& list = *m().finalCMXString;
        EXPECT_EQ(PlannedText(m(), plan.lines.data(), plan.lines.data() + plan.lines.size()), list);
        EXPECT_EQ(plan.lineCount, std::count(list.begin(), list.end(), kCR));
        const std::vector<std::string> lines = Lines(list);
        for (const PlannedLine& l : plan.lines) {
            const std::string text = PlannedText(m(), &l, &l + 1);
            EXPECT_EQ(lines.at(l.line - 1), text.substr(0, text.find(kCR))) << l.line;
            if (l.kind == LineKind::Event) {
                EXPECT_EQ(plan.EventLineOf(l.row), &l);
            }
        }
    }
}

TEST_F(WriterTest, EveryRunMarksTheListModified) {
    m().isModified = false;
    Render();
    EXPECT_TRUE(m().isModified);
    EXPECT_EQ(platform.windowModifiedMarks, std::vector<bool>{true});
}

TEST_F(WriterTest, NothingLoaded) {
    m().copyCompletLine.clear();
    m().maxZeilen = 0;
    m().dropFrame = true;  // not looked at
    NewEDL_02(m(), w(), platform);
    EXPECT_EQ(*m().finalCMXString, "TITLE: \rFCM: NON-DROP FRAME\r\r");
    m().IsGrassValley = m().boolGenerateNewComments = true;
    m().myAbsMovieName = "M.MOV";
    NewEDL_02(m(), w(), platform);
    EXPECT_EQ(*m().finalCMXString, "\rSMPTE FRAME CODE\r\r* FROM CLIP NAME:  M.MOV\r\r");
}

TEST_F(WriterTest, RowsZeroAndOneAreNeverWritten) {
    for (size_t row : {size_t(0), size_t(1)}) {  // a file whose first two lines are events
        m().copyEventNumberStr.set(row, "001");
        m().copyMode.set(row, "V");
    }
    Event(3, "C", "V", "C", "", kTc);
    EXPECT_EQ(Lines(Render()).size(), 5u);
}

TEST_F(WriterTest, EventLineFields) {
    // Number, reel, mode, transition, what follows it; the line up to the record timecodes. Keys
    // as dissolves star the background row.
    const std::string b17 = "B123456789ABCDEFG", b40 = "B" + std::string(39, 'x'), b200 = "B" + std::string(199, 'y');
    const auto keyWithB = [](const std::string& b) {
        return "007 R        V        K " + b + "      10:00:00:00 10:00:01:00";
    };
    const std::tuple<int, const char*, const char*, const char*, std::string, std::string> cases[] = {
        {7, "R", "AAAA/V", "C", "", "007 R            C        10:00:00:00 10:00:01:00"},
        {7, "R", "V", "KB", "", "007 R        V       KB        10:00:00:00 10:00:01:00"},
        {7, "R", "V", "W0011", "010", "007 R        V         010 10:00:00:00 10:00:01:00"},
        {7, "R", "V", "D", "5", "007 R        V        D    5 10:00:00:00 10:00:01:00"},
        {7, "R", "V", "K", "B 025", "007 R        V        K B 025      10:00:00:00 10:00:01:00"},
        {1234, "R", "V", "C", "", "1234 R        V        C        10:00:00:00 10:00:01:00"},
        {7, "", "V", "C", "", "007  V        C        10:00:00:00 10:00:01:00"},
        {7, "R", "V", "D", "b", "*** R        V        D b      10:00:00:00 10:00:01:00"},
        {7, "TAPE1  ", "V", "C", "", "007 TAPE1    V        C        10:00:00:00 10:00:01:00"},
        // B fields of every length a line copies its pieces by, and one too long for its room.
        {7, "R", "V", "K", b17, keyWithB(b17)},
        {7, "R", "V", "K", b40, keyWithB(b40)},
        {7, "R", "V", "K", b200, keyWithB(b200)},
    };
    for (const auto& [number, reel, mode, trans, rest, expected] : cases) {
        Restart();
        Event(number, reel, mode, trans, rest, kTc);
        m().boolKeyToDissolve = true;
        EXPECT_EQ(Lines(Render())[3], std::string(expected) + " 00:00:00:00 00:00:01:00");
    }
}

TEST(FormatReelNames, BothFormsAndIdempotent) {
    // Name, CMX, GVG. Characters count, not bytes: "Ä" is one character.
    const char* cases[][3] = {
        {"Ax", "      AX", "    AX"},
        {"bl", "      BL", "    BL"},
        {"B L", "      BL", "    BL"},
        {"aux", "AUX     ", "AUX   "},
        {"black", "BLACK   ", "BLACK "},
        {"BLACK1", "BLACK1  ", "BLACK1"},
        {"tape5", "tape5   ", "tape5 "},
        {"ABCDEF", "ABCDEF  ", "ABCDEF"},
        {"ABCDEFG", "ABCDEFG ", "ABCDEFG"},
        {"ABCDEFGH", "ABCDEFGH", "ABCDEFGH"},
        {"ABCDEFGHIJ", "ABCDEFGH", "ABCDEFGH"},
        {"  TA PE 1 ", "TAPE1   ", "TAPE1 "},
        {"   ", "", ""},
        {"", "", ""},
        {"BÄNDER", "BÄNDER  ", "BÄNDER"},
        {"ÄÄÄÄÄÄÄÄÄ", "ÄÄÄÄÄÄÄÄ", "ÄÄÄÄÄÄÄÄ"},
    };
    for (bool gvg : {false, true}) {
        for (const auto& [name, cmx, gvgForm] : cases) {
            const std::string once = FormatReelNames(name, gvg);
            EXPECT_EQ(once, gvg ? gvgForm : cmx) << name << (gvg ? " GVG" : " CMX");
            EXPECT_EQ(FormatReelNames(once, gvg), once) << name << (gvg ? " GVG" : " CMX");
        }
    }
}

TEST_F(WriterTest, TheReelFieldTakesTheOwnReelTheClipsOrTheMasters) {
    // GVG, mirror, the reel name field, the event's reel, the field written; the chains named the event RL0007.
    const std::tuple<bool, bool, const char*, const char*, const char*> cases[] = {
        {false, false, "", "tape1", "tape1   "},     {false, false, "MASTER", "TAPE1", "TAPE1   "},
        {false, true, "", "TAPE1", "RL0007  "},      {false, true, "", "bl", "      BL"},
        {true, true, "", "aux", "AUX   "},           {false, true, "", "BLACK1", "RL0007  "},
        {false, true, "MASTER", "BL", "MASTER  "},   {true, true, "MASTER", "AX", "MASTER"},
        {false, true, "MA ST", "TAPE1", "MAST    "},
    };
    for (const auto& [gvg, mirror, reelName, reel, expected] : cases) {
        SCOPED_TRACE(std::string(reel) + " " + reelName);
        Restart();
        Event(1, reel, "V", "C", "", kTc, "RL0007");
        m().IsGrassValley = gvg;
        m().boolMirror = mirror;
        w().EF_ReelName.SetText(reelName);
        EXPECT_EQ(Lines(Render())[3].substr(gvg ? 5 : 4, std::string_view(expected).size()), expected);
    }
}

TEST_F(WriterTest, NoteRows) {
    // The row, its speed as read (-1111: none), speed changes removed, freeze frames removed,
    // audio kept; whether the row is written. The whole lists hold the usual motion lines.
    const std::tuple<const char*, double, bool, bool, bool, bool> cases[] = {
        {"M2 R 000.0 01:00:00:00", 0.0, 1, 0, 1, 1},
        {"M2 R -12.5 01:00:00:00", -12.5, 1, 0, 1, 0},
        {"PEG A R 12.0", 12.0, 0, 1, 1, 1},
        {"peg b R 0", 0.0, 1, 0, 1, 1},
        {"M2X R 025.0", 25.0, 0, 0, 1, 1},
        {"M2 R 025.0", -1111.0, 0, 0, 1, 0},
        {"AUD  3", -1111.0, 1, 1, 1, 1},
        {"AUD  3", -1111.0, 1, 1, 0, 0},
        {"* FROM CLIP NAME: SHOT 1", -1111.0, 0, 0, 1, 0},
        {"SPLIT:    AUDIO DELAY=  00:00:00:05", -1111.0, 0, 0, 0, 0},
    };
    for (const auto& [line, motion, removeSpeed, removeFreeze, audio, written] : cases) {
        Restart();
        Event(1, "TAPE1", "V", "C", "", kTc);
        Note(line, motion);
        m().boolSpeedChange = removeSpeed;
        m().boolFreezeFrame = removeFreeze;
        m().boolA1234 = audio;
        const std::vector<std::string> lines = Lines(Render());
        EXPECT_EQ(lines.size() == 6 && lines[4] == line, written) << line;
    }
    // A hidden event's AUD row is still written while audio is on.
    Restart();
    Event(1, "TAPE1", "A", "C", "", kTc);
    Note("AUD  3");
    m().displayThisAudioEventLine[2] = false;
    EXPECT_EQ(Lines(Render())[3], "AUD  3");
}

TEST_F(WriterTest, CommentBlocks) {
    struct Row {
        int number;
        const char *trans, *rest;
        bool hidden = false;
    };
    // An empty row 2 or none, the rows, the wipe names; what is written but the header, event
    // lines as "#", lines ended by "|".
    const std::tuple<bool, std::vector<Row>, int, const char*> cases[] = {
        {true, {{1, "C", ""}, {2, "C", ""}}, 1, "#|F||#|F|||"},
        {true, {{5, "C", ""}}, 1, "F||#|F|||"},
        {false, {{1, "C", ""}, {2, "C", ""}}, 1, "F||#|F||#|F|||"},
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
        // Two blocks of the same length, one after the other, each with its own text.
        {true,
         {{1, "C", ""}, {1, "W003", "030"}, {2, "C", ""}, {2, "W008", "030"}, {3, "C", ""}},
         1,
         "#|#|* EFFECT NAME: EDGE WIPE TOP LEFT|F|* TO CLIP NAME:  M||#|#|* EFFECT NAME: EDGE WIPE FOUR BOX|F|"
         "* TO CLIP NAME:  M||#|F|||"},
    };
    for (const auto& [emptyRowTwo, rows, listIndex, expected] : cases) {
        SCOPED_TRACE(expected);
        Restart();
        if (emptyRowTwo) Note("");
        for (const Row& r : rows) {
            Event(r.number, "TAPE1", "V", r.trans, r.rest, kTc);
            m().displayThisKeyEventLine.back() = !r.hidden;
        }
        m().boolGenerateNewComments = true;
        m().myAbsMovieName = "M";
        w().PopupTransition.ListIndex = listIndex;
        std::string seen;
        const std::vector<std::string> lines = Lines(Render());
        for (size_t k = 3; k < lines.size(); ++k)
            seen += (lines[k].size() == 78 ? "#" : lines[k] == "* FROM CLIP NAME:  M" ? "F" : lines[k]) + "|";
        EXPECT_EQ(seen, expected);
    }
}

TEST(WipeNames, ByCodeAndEachTableByFamily) {
    // The code, its SMPTE name and its Final Cut Pro name.
    const char* cases[][3] = {
        {"W001", "EDGE WIPE HORIZONTAL", "EDGE WIPE"},
        {"W003", "EDGE WIPE TOP LEFT", "SPLIT SLIDE "},
        {"w012", "UNKNOWN", "CROSS IRIS"},
        {"w101", "IRIS WIPE RECTANGLE", "EDGE WIPE"},
        {"W353", "MATRIX WIPE HORIZONTAL WATERFALL RIGHT", "EDGE WIPE"},
        {"W354", "UNKNOWN", "EDGE WIPE"},
        {"W000", "UNKNOWN", "EDGE WIPE"},
        {"W12", "UNKNOWN", "EDGE WIPE"},
        {"W0010", "UNKNOWN", "EDGE WIPE"},
        {" W001", "UNKNOWN", "EDGE WIPE"},
        {"WIPE", "UNKNOWN", "EDGE WIPE"},
        {"", "UNKNOWN", "EDGE WIPE"},
    };
    for (const auto& [code, smpte, fcp] : cases) {
        EXPECT_EQ(WipeCodesSMPTE(code), smpte) << code;
        EXPECT_EQ(WipeCodesFCP(code), fcp) << code;
    }
    // Every name is in capitals, and a SMPTE name starts with its family.
    const char* families[] = {"EDGE WIPE ", "IRIS WIPE ", "RADIAL WIPE ", "MATRIX WIPE "};
    for (int n = 0; n <= 1000; ++n) {
        const std::string code = std::string("W").append(Format(n, "000"));
        const std::string smpte = WipeCodesSMPTE(code), fcp = WipeCodesFCP(code);
        EXPECT_EQ(Uppercase(smpte + fcp), smpte + fcp);
        EXPECT_TRUE(smpte == "UNKNOWN" || smpte.rfind(families[std::min(n / 100, 3)], 0) == 0) << code;
    }
}

TEST(CommentOrder, ThreeLinesComeBackInTheirOrder) {
    // Each line with its CR; a key line after the first place is lost.
    const std::string E = "* EFFECT NAME: CROSS DISSOLVE\r", F = "* FROM CLIP NAME:  M.MOV\r",
                      T = "* TO CLIP NAME:  M.MOV\r", K = "* KEY CLIP NAME:  M.MOV\r", wipe = "* effect name: wipe\r";
    const std::pair<std::string, std::string> cases[] = {
        {F + E + T, E + F + T},
        {E + T + F, E + F + T},
        {T + F + E, E + F + T},
        {K + E + F, E + F + K},
        {F + E + K, E + F + "\r"},
        {F + K + T, "\r" + F + T},
        {E + E + F, E + F + "\r"},
        {E + F, E + F},
        {E + F + T + T, E + F + T + T},
        {wipe + " " + F + T, wipe + "\r" + T},
        {T + F + E + "tail", E + F + T},
        {E + F + T.substr(0, T.size() - 1), E + F + T.substr(0, T.size() - 1)},
        {"", ""},
    };
    for (const auto& [in, out] : cases) EXPECT_EQ(SortCommentLine(in), out) << in;
}

}  // namespace
}  // namespace vornelt::testing

namespace vornelt::testing {
namespace {

class PlannerTest : public Fixture {};

// Planned a few rows at a time, with the plan emptied between the stretches as the converter
// does, the lines are those of the plan made whole, numbered alike.
TEST_F(PlannerTest, AStretchAtATimeGivesTheWholePlansLines) {
    const std::string list = bench::GenerateList({300, false, bench::Shape::Mixed, 5});
    for (const bool mirror : {true, false}) {
        SCOPED_TRACE(mirror ? "mirror" : "no mirror");
        w().Chb_Mirror.Value = mirror;
        w().Chb_RemoveSpeedChanges.Value = !mirror;
        Load(list);
        ASSERT_TRUE(PlanList(m(), w(), platform));
        const std::vector<PlannedLine>& lines = m().plan.lines;
        const std::string whole = PlannedText(m(), lines.data(), lines.data() + lines.size());
        const uint32_t count = m().plan.lineCount;
        for (const int64_t stretch : {1, 2, 3, 7, 64, 5000}) {
            std::string text;
            std::vector<uint32_t> numbers;
            const auto take = [&] {
                text += PlannedText(m(), lines.data(), lines.data() + lines.size());
                for (const PlannedLine& l : lines) numbers.push_back(l.line);
                m().plan.lines.clear();
                m().plan.comments.clear();
            };
            ListPlanner planner(m(), w(), platform);
            while (!planner.Done()) {
                ASSERT_TRUE(planner.PlanRows(stretch));
                take();
            }
            planner.Finish();
            take();
            EXPECT_EQ(text, whole) << stretch;
            EXPECT_EQ(m().plan.lineCount, count) << stretch;
            EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end())) << stretch;
        }
    }
}

}  // namespace
}  // namespace vornelt::testing
