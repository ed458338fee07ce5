// Motion lines, the working copy and the key repair.
#include <gtest/gtest.h>

#include <climits>

#include "document/text.hpp"
#include "load_fixture.hpp"
#include "reader/reader.hpp"
#include "table_builder.hpp"
#include "writer/writer.hpp"

namespace vornelt {
namespace {

using testing::Comment;
using testing::Event;
using testing::PassFixture;
using testing::ReadRow;

class MotionLines : public PassFixture {};

TEST_F(MotionLines, CutsTheSpeedOutOfEachLine) {
    struct Case {
        const char* line;
        const char* speed;
        double value;
    } const cases[] = {
        {"M2   TAPE1       025.0                01:00:00:00", "025.0", 25.0},
        {"M2   TAPE1       -12.5                01:00:00:00", "-12.5", -12.5},
        {"M2   TAPE1       000.0                01:00:00:00", "000.0", 0.0},
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
    for (const Case& c : cases) PushRow(Comment(c.line));
    CheckForM2();
    const Document& m = Module1;
    ASSERT_EQ(m.readOrigM2Str.size(), std::size(cases));
    ASSERT_EQ(m.readOrigM2.size(), std::size(cases));
    for (size_t i = 0; i < std::size(cases); ++i) {
        SCOPED_TRACE(cases[i].line);
        EXPECT_EQ(m.readOrigM2Str(i), cases[i].speed);
        EXPECT_DOUBLE_EQ(m.readOrigM2[i], cases[i].value);
    }
}

TEST_F(MotionLines, ValuesOfAnEarlierListStayInFront) {
    PushRow(Comment("M2 A 050.0"));
    PushRow(Comment("TITLE: X"));
    CheckForM2();
    ResetGlobalVariables_NEU();
    Module1.readOrigCompleteLine.clear();
    PushRow(Comment("M2 A 010.0"));
    CheckForM2();
    const Document& m = Module1;
    EXPECT_EQ(m.readOrigM2, (DoubleTable{50.0, -1111.0, 10.0}));
    ASSERT_EQ(m.readOrigM2Str.size(), 1u);
    EXPECT_EQ(m.readOrigM2Str(0), "010.0");
}

class WorkingCopy : public PassFixture {};

TEST_F(WorkingCopy, CopiesEveryRowAndSharesTheListText) {
    // Through the reader, so that the copy meets the text as a load gives it.
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
    const size_t rows = size_t(m.maxZeilen) + 1;
    ASSERT_EQ(rows, 5u);
    const std::string& text = *m.readOrigCompleteLine.Document();
    for (size_t i = 0; i < rows; ++i) {
        EXPECT_EQ(m.copyCompletLine(i), m.readOrigCompleteLine(i));
        EXPECT_EQ(m.copyTrans(i), m.readOrigTrans(i));
        EXPECT_EQ(m.copyEventNumberInt[i], m.readOrigEventNumberInt[i]);
        EXPECT_EQ(m.copySourceInFrame[i], m.readOrigSourceInFrame[i]);
        EXPECT_TRUE(m.displayThisAudioEventLine[i] && m.displayThisKeyEventLine[i]);
        const std::string_view line = m.copyCompletLine(i);
        if (!line.empty()) {
            EXPECT_TRUE(line.data() >= text.data() && line.data() < text.data() + text.size());
        }
    }
    EXPECT_EQ(m.copyEventNumberInt[1], 1);
    EXPECT_EQ(m.copyEventNumberInt[2], 1);
    EXPECT_TRUE(m.copyM2.empty());
}

TEST_F(WorkingCopy, WithoutTheResetTheEventNumbersRunOnBehind) {
    Load({Comment("TITLE: A"), Event(1, "C", 0, 25)});
    CopyArrays();
    const Document& m = Module1;
    EXPECT_EQ(m.copyTrans.size(), 2u);
    EXPECT_EQ(m.copyEventNumberInt, (Int32Table{-1, 1, -1, 1}));
    EXPECT_EQ(m.copyEventNumberStr.size(), 4u);
    // The misaligned tables pass the later passes all the same.
    CheckBSpurClipLenghts();
    CleanEDL_4();
    PrepareToDisplay();
}

class KeyLengths : public PassFixture {};

ReadRow Key(const char* bTrack, const char* trans, int32_t duration) {
    ReadRow r = Event(1, trans, 500, 500, 90000, 90000 + duration);
    r.bTrack = bTrack;
    return r;
}

TEST_F(KeyLengths, AZeroLengthKeyTakesTheLengthOfTheLineBefore) {
    struct Case {
        const char* bTrack;
        const char* trans;
        int32_t duration, before;
        int32_t sourceOut;  // 500 when unchanged
    } const cases[] = {
        {"", "K", 0, 75, 575}, {"B", "K", 0, 75, 500}, {"", "K", 50, 75, 500},
        {"", "D", 0, 75, 500}, {"", "K", 0, 0, 500},   {"", "K", 0, -1, 500},
        {"", "k", 0, 75, 575}, {"", "KB", 0, 75, 500}, {"", "K", -5, 75, 500},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.bTrack) + "|" + c.trans + "|" + std::to_string(c.duration) + "|" +
                     std::to_string(c.before));
        ResetProgramState();
        ReadRow before = Event(1, "C", 0, c.before, 0, c.before);
        before.duration = c.before;
        Load({Comment("TITLE: A"), before, Key(c.bTrack, c.trans, c.duration)});
        CheckBSpurClipLenghts();
        EXPECT_EQ(Module1.copySourceOutFrame[2], c.sourceOut);
        EXPECT_EQ(Module1.copyRecOutFrame[2], c.sourceOut == 500 ? 90000 + c.duration : 90075);
    }
}

TEST_F(KeyLengths, WorkedExampleAtEachRate) {
    struct Case {
        double rate;
        const char *sourceOut, *recOut;
    } const cases[] = {
        {25.0, "00:00:23:00", "01:00:03:00"},
        {24.0, "00:00:23:23", "01:02:33:03"},
        {30.0, "00:00:19:05", "00:50:02:15"},
        {29.97, "00:00:20:00", "01:00:00:00"},  // no conversion: the texts stay as read
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.rate);
        ResetProgramState();
        ReadRow back = Event(4, "K", 250, 325, 90000, 90075);
        back.bTrack = "B";
        ReadRow key = Event(4, "K", 500, 500, 90000, 90000);
        key.sourceOutTC = "00:00:20:00";
        key.recOutTC = "01:00:00:00";
        Load({Comment("TITLE: A"), back, key, Event(5, "K", 700, 700, 1000, 1000)});
        Module1.frameRate = c.rate;
        CheckBSpurClipLenghts();
        const Document& m = Module1;
        EXPECT_EQ(m.copyEditDurationFrames[2], 75);
        EXPECT_EQ(m.copySourceOutFrame[2], 575);
        EXPECT_EQ(m.copyRecOutFrame[2], 90075);
        EXPECT_EQ(m.copySourceOutTC(2), c.sourceOut);
        EXPECT_EQ(m.copyRecOutTC(2), c.recOut);
        EXPECT_EQ(m.editDurationFrames[2], 0);
        // The repaired line lends nothing: the next key stays at zero length.
        EXPECT_EQ(m.copySourceOutFrame[3], 700);
    }
}

TEST_F(KeyLengths, BadRowsPassWithoutHarm) {
    ReadRow first = Key("", "K", 0);  // no line before it: stays as read
    ReadRow huge = Event(2, "C", 0, 0, INT_MIN, INT_MAX);
    huge.duration = INT_MAX;
    ReadRow wrap = Event(2, "K", INT_MAX, INT_MAX, INT_MAX - 1, INT_MAX - 1);
    Load({first, huge, wrap, Event(0, "K", 1, 1, 5, 5), Comment("* X"), Key("", "K", 0)});
    Module1.frameRate = 25.0;
    CheckBSpurClipLenghts();
    const Document& m = Module1;
    EXPECT_EQ(m.copySourceOutFrame[0], 500);
    EXPECT_EQ(m.copySourceOutFrame[2], INT_MAX + int64_t(INT_MAX) - (int64_t(1) << 32));
    EXPECT_EQ(m.copySourceOutFrame[3], 1);    // event number 0 takes no part
    EXPECT_EQ(m.copySourceOutFrame[5], 500);  // after a comment: nothing to take
}

}  // namespace
}  // namespace vornelt

namespace vornelt {
namespace {

class PassesOnLoad : public testing::LoadFixture {};

TEST_F(PassesOnLoad, AKeyListFromFinalCutProIsRepairedAndNamed) {
    const std::string list =
        "TITLE: KEYS\r\nFCM: NON-DROP FRAME\r\n\r\n"
        "001  AX       V     C        00:00:10:00 00:00:13:00 01:00:00:00 01:00:03:00\r\n"
        "002  BX       V     K    B   00:00:10:00 00:00:13:00 01:00:03:00 01:00:06:00\r\n"
        "002  CX       V     K        00:00:20:00 00:00:20:00 01:00:03:00 01:00:03:00\r\n"
        "M2   CX       050.0                01:00:03:00\r\n";
    Load(list);
    const Document& m = Module1;
    ASSERT_EQ(m.maxZeilen, 7);
    if (!m.readOrigIsBTrack(5).empty())
        GTEST_SKIP() << "the reader gives the key line the B mark of the line before it";
    EXPECT_EQ(m.copySourceOutTC(5), "00:00:23:00");
    EXPECT_EQ(m.copyRecOutTC(5), "01:00:06:00");
    EXPECT_EQ(m.copyTrans(4), "K");
    EXPECT_EQ(m.copyIsBTrack(4), "B");
    EXPECT_EQ(m.cleanClipReelName(3), FormatReelNames("RL0001"));
    EXPECT_EQ(m.cleanClipReelName(4), FormatReelNames("RL0002"));
    EXPECT_EQ(m.cleanClipReelName(5), FormatReelNames("RL0003"));
    EXPECT_EQ(m.cleanClipReelName(6), "");
    EXPECT_DOUBLE_EQ(m.readOrigM2[6], 50.0);
}

}  // namespace
}  // namespace vornelt
