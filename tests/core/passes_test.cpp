// Motion lines, the working copy and the key repair.
#include <gtest/gtest.h>

#include <climits>

#include "fixtures.hpp"
#include "reader/reader.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

using Passes = Fixture;

TEST_F(Passes, MotionLinesGiveTheirSpeed) {
    const struct {
        const char *line, *speed;
        double value;
    } cases[] = {
        {"M2   TAPE1       025.0                01:00:00:00", "025.0", 25.0},
        {"M2   TAPE1       -12.5                01:00:00:00", "-12.5", -12.5},
        {"m2   TAPE1       025.25", "025.2", 25.2},  // the second decimal is cut off
        {"M2 A.1 025.0", "M2 A.1", 0.0},             // the first point wins
        {"M2 AX 25", "M2 AX", 0.0},                  // no point: six from the start
        {"M20 X 1.5", "X 1.5", 0.0},                 // only the start of the line counts
        {"PEG A 025.0 01:00:00:00", "025.", 25.0},
        {"peg b   -12.5", "-12.", -12.0},
        {"PEG A", "", 0.0},
        {"PEG C 025.0", "**", -1111.0},
        {"001 AX V C M2 025.0", "**", -1111.0},
        {"", "**", -1111.0},
    };
    for (const auto& c : cases) PushRead(Note(c.line));
    CheckForM2();
    ASSERT_EQ(Module1.readOrigM2Str.size(), std::size(cases));
    ASSERT_EQ(Module1.readOrigM2.size(), std::size(cases));
    for (size_t i = 0; i < std::size(cases); ++i) {
        EXPECT_EQ(Module1.readOrigM2Str(i), cases[i].speed) << cases[i].line;
        EXPECT_DOUBLE_EQ(Module1.readOrigM2[i], cases[i].value) << cases[i].line;
    }
    // The values of an earlier list stay in front; the texts do not.
    ResetGlobalVariables_NEU();
    Module1.readOrigCompleteLine.clear();
    PushRead(Note("M2 A 010.0"));
    CheckForM2();
    EXPECT_EQ(Module1.readOrigM2.size(), std::size(cases) + 1);
    EXPECT_EQ(Module1.readOrigM2.front(), 25.0);
    EXPECT_EQ(Module1.readOrigM2.back(), 10.0);
    ASSERT_EQ(Module1.readOrigM2Str.size(), 1u);
    EXPECT_EQ(Module1.readOrigM2Str(0), "010.0");
}

TEST_F(Passes, WorkingCopyHoldsEveryRowAndSharesTheListText) {
    Module1.cmxString = std::make_shared<std::string>(
        "TITLE: A\r\n001  AX       V     C        00:00:01:00 00:00:02:00 01:00:00:00 01:00:01:00\r\n"
        "001  AX       V     C        00:00:01:00 00:00:02:00 01:00:00:00 01:00:01:00\r\n* NOTE\r\n");
    ResetGlobalVariables_NEU();
    Module1.frameRate = 25.0;
    ParseCMX3600();
    CheckForM2();
    Module1.copyM2.push_back(1.0);
    CopyArrays();
    const Document& m = Module1;
    ASSERT_EQ(m.maxZeilen, 4);
    const std::string& text = *m.readOrigCompleteLine.Document();
    for (size_t i = 0; i < 5; ++i) {
        EXPECT_EQ(m.copyCompletLine(i), m.readOrigCompleteLine(i));
        EXPECT_EQ(m.copyTrans(i), m.readOrigTrans(i));
        EXPECT_EQ(m.copyEventNumberInt[i], m.readOrigEventNumberInt[i]);
        EXPECT_EQ(m.copySourceInFrame[i], m.readOrigSourceInFrame[i]);
        EXPECT_TRUE(m.displayThisAudioEventLine[i] && m.displayThisKeyEventLine[i]);
        const char* p = m.copyCompletLine(i).data();
        if (!m.copyCompletLine(i).empty()) {
            EXPECT_TRUE(p >= text.data() && p < text.data() + text.size());
        }
    }
    EXPECT_TRUE(m.copyM2.empty());

    // Without the reset of a load the event numbers run on behind, and the later passes
    // take the misaligned tables all the same.
    CopyArrays();
    EXPECT_EQ(m.copyTrans.size(), 5u);
    EXPECT_EQ(m.copyEventNumberInt.size(), 10u);
    EXPECT_EQ(m.copyEventNumberStr.size(), 10u);
    CheckBSpurClipLenghts();
    CleanEDL_4();
    PrepareToDisplay();
}

TEST_F(Passes, AZeroLengthKeyTakesTheLengthOfTheLineBefore) {
    const struct {
        const char *bTrack, *trans;
        int32_t duration, before, sourceOut;  // 500 when unchanged
    } cases[] = {
        {"", "K", 0, 75, 575}, {"B", "K", 0, 75, 500}, {"", "K", 50, 75, 500},
        {"", "D", 0, 75, 500}, {"", "K", 0, 0, 500},   {"", "K", 0, -1, 500},
        {"", "k", 0, 75, 575}, {"", "KB", 0, 75, 500}, {"", "K", -5, 75, 500},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << c.bTrack << "|" << c.trans << "|" << c.duration << "|" << c.before);
        ResetProgramState();
        Row before = Event(1, "C", 0, c.before, 0, c.before),
            key = Event(1, c.trans, 500, 500, 90000, 90000 + c.duration);
        before.duration = c.before;
        key.bTrack = c.bTrack;
        Load({Note("TITLE: A"), before, key});
        CheckBSpurClipLenghts();
        EXPECT_EQ(Module1.copySourceOutFrame[2], c.sourceOut);
        EXPECT_EQ(Module1.copyRecOutFrame[2], c.sourceOut == 500 ? 90000 + c.duration : 90075);
    }
}

TEST_F(Passes, KeyRepairWorkedExampleAtEachRate) {
    const struct {
        double rate;
        const char *sourceOut, *recOut;
    } cases[] = {
        {25.0, "00:00:23:00", "01:00:03:00"},
        {24.0, "00:00:23:23", "01:02:33:03"},
        {30.0, "00:00:19:05", "00:50:02:15"},
        {29.97, "00:00:20:00", "01:00:00:00"},  // no conversion: the texts stay as read
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.rate);
        ResetProgramState();
        Row back = Event(4, "K", 250, 325, 90000, 90075), key = Event(4, "K", 500, 500, 90000, 90000);
        back.bTrack = "B";
        key.tc[1] = "00:00:20:00";
        key.tc[3] = "01:00:00:00";
        Load({Note("TITLE: A"), back, key, Event(5, "K", 700, 700, 1000, 1000)});
        Module1.frameRate = c.rate;
        CheckBSpurClipLenghts();
        const Document& m = Module1;
        EXPECT_EQ(m.copyEditDurationFrames[2], 75);
        EXPECT_EQ(m.copySourceOutFrame[2], 575);
        EXPECT_EQ(m.copyRecOutFrame[2], 90075);
        EXPECT_EQ(m.copySourceOutTC(2), c.sourceOut);
        EXPECT_EQ(m.copyRecOutTC(2), c.recOut);
        EXPECT_EQ(m.editDurationFrames[2], 0);
        EXPECT_EQ(m.copySourceOutFrame[3], 700);  // the repaired line lends nothing
    }
}

TEST_F(Passes, KeyRepairTakesBadRowsWithoutHarm) {
    Row huge = Event(2, "C", 0, 0, INT_MIN, INT_MAX);
    huge.duration = INT_MAX;
    Load({Event(1, "K", 500, 500, 90000, 90000),  // no line before it: stays as read
          huge, Event(2, "K", INT_MAX, INT_MAX, INT_MAX - 1, INT_MAX - 1), Event(0, "K", 1, 1, 5, 5), Note("* X"),
          Event(1, "K", 500, 500, 90000, 90000)});
    Module1.frameRate = 25.0;
    CheckBSpurClipLenghts();
    const Document& m = Module1;
    EXPECT_EQ(m.copySourceOutFrame[0], 500);
    EXPECT_EQ(m.copySourceOutFrame[2], INT_MAX + int64_t(INT_MAX) - (int64_t(1) << 32));
    EXPECT_EQ(m.copySourceOutFrame[3], 1);    // event number 0 takes no part
    EXPECT_EQ(m.copySourceOutFrame[5], 500);  // after a comment: nothing to take
}

TEST_F(Passes, AKeyListFromFinalCutProIsRepairedAndNamedOnLoad) {
    Load("TITLE: KEYS\r\nFCM: NON-DROP FRAME\r\n\r\n"
         "001  AX       V     C        00:00:10:00 00:00:13:00 01:00:00:00 01:00:03:00\r\n"
         "002  BX       V     K    B   00:00:10:00 00:00:13:00 01:00:03:00 01:00:06:00\r\n"
         "002  CX       V     K        00:00:20:00 00:00:20:00 01:00:03:00 01:00:03:00\r\n"
         "M2   CX       050.0                01:00:03:00\r\n");
    const Document& m = Module1;
    ASSERT_EQ(m.maxZeilen, 7);
    EXPECT_EQ(m.copySourceOutTC(5), "00:00:23:00");
    EXPECT_EQ(m.copyRecOutTC(5), "01:00:06:00");
    EXPECT_EQ(m.copyTrans(4), "K");
    EXPECT_EQ(m.copyIsBTrack(4), "B");
    for (size_t row : {3, 4, 5})
        EXPECT_EQ(m.cleanClipReelName(row), FormatReelNames("RL000" + std::to_string(row - 2)));
    EXPECT_EQ(m.cleanClipReelName(6), "");
    EXPECT_DOUBLE_EQ(m.readOrigM2[6], 50.0);
}

}  // namespace
}  // namespace vornelt::testing
