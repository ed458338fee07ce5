// The reader: normalisation, the event grammar, the row tables, the extent, the header
// scans, and the load road around them.
#include <gtest/gtest.h>

#include <filesystem>

#include "fixtures.hpp"
#include "reader/reader.hpp"

namespace vornelt::testing {
namespace {

// Runs the reader alone on a text, at a rate, after the reset a load does.
void Read(const std::string& text, double rate = 25.0) {
    ResetProgramState();
    Module1.cmxString = std::make_shared<std::string>(text);
    ResetGlobalVariables_NEU();
    Module1.frameRate = rate;
    ParseCMX3600();
}

size_t Rows() { return size_t(Module1.maxZeilen) + 1; }

// Every read table has one entry per row.
void ExpectAligned() {
    const Document& m = Module1;
    const size_t n = Rows();
    for (const TextColumn* t :
         {&m.readOrigCompleteLine, &m.dummyReadZeile, &m.readOrigRecOutTC, &m.readOrigRecInTC, &m.readOrigSourceOutTC,
          &m.readOrigSourceInTC, &m.readOrigEventNumberStr, &m.readOrigReelNames, &m.readOrigMode, &m.readOrigTrans,
          &m.readOrigTransDur, &m.readOrigIsBTrack})
        EXPECT_EQ(t->size(), n);
    for (const Int32Table* t : {&m.readOrigRecOutFrame, &m.readOrigRecInFrame, &m.readOrigSourceOutFrame,
                                &m.readOrigSourceInFrame, &m.readOrigEventNumberInt, &m.editDurationFrames})
        EXPECT_EQ(t->size(), n);
}

struct GrammarCase {
    const char* line;
    bool event;
    const char* number;
    const char* reel;
    const char* mode;
    const char* trans;
    const char* dur;
    const char* bTrack;
    int32_t numberValue;
};

TEST(EventGrammar, TakesALineApartFromTheRight) {
    const char* tcs = "  01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00";
    const GrammarCase cases[] = {
        {"001  AX  V  C", true, "001", "AX", "V", "C", "", "", 1},
        {"002  BX  V  D  025", true, "002", "BX", "V", "D", "025", "", 2},
        {"003  BX  V  K B", true, "003", "BX", "V", "K", "", "B", 3},
        {"004 BX V K B 025", true, "004", "BX", "V", "K", "", "B 025", 4},
        {"005 AX AA/V W001 030", true, "005", "AX", "AA/V", "W001", "030", "", 5},
        {"006 AX V c", true, "006", "AX", "V", "c", "", "", 6},         // stored as written
        {"001", true, "", "", "", "001", "", "", -1},                   // too few tokens shift right
        {"001 AX", true, "001", "", "", "AX", "", "", 1},               // reel and mode need a blank
        {"007 TAPE 1 V C", true, "007", "TAPE", "1", "V", "", "C", 7},  // a blank in the reel
        {"-3 AX V C", true, "-3", "AX", "V", "C", "", "", -3},
        {"ABC AX V C", true, "ABC", "AX", "V", "C", "", "", 0},
        {"0012 AX V C", true, "0012", "AX", "V", "C", "", "", 12},
        {"000 AX V C", true, "000", "AX", "V", "C", "", "", 0},
        {"* FROM CLIP NAME: X", true, "*", "FROM", "CLIP", "NAME:", "", "X", 0},
        {"001 AX V D 12.5", true, "001", "AX", "V", "D", "12.5", "", 1},
        {"001 AX V D 1e5", true, "001", "AX", "V", "D", "", "1e5", 1},
    };
    for (const GrammarCase& c : cases) {
        Read(std::string(c.line) + tcs);
        SCOPED_TRACE(c.line);
        const Document& m = Module1;
        ASSERT_EQ(m.maxZeilen, 0);
        EXPECT_EQ(m.readOrigEventNumberStr(0), c.number);
        EXPECT_EQ(m.readOrigReelNames(0), c.reel);
        EXPECT_EQ(m.readOrigMode(0), c.mode);
        EXPECT_EQ(m.readOrigTrans(0), c.trans);
        EXPECT_EQ(m.readOrigTransDur(0), c.dur);
        EXPECT_EQ(m.readOrigIsBTrack(0), c.bTrack);
        EXPECT_EQ(m.readOrigEventNumberInt[0], c.numberValue);
        EXPECT_EQ(m.readOrigSourceInTC(0), "01:00:00:00");
        EXPECT_EQ(m.readOrigRecOutTC(0), "00:00:15:00");
        EXPECT_EQ(m.readOrigSourceInFrame[0], 90000);
        EXPECT_EQ(m.editDurationFrames[0], 125);
    }
}

TEST(EventGrammar, EachLineIsJudgedAlone) {
    // A field of one line never carries over into the next.
    Read("003 TAPE3 V W001 030 03:00:00:00 03:00:06:00 00:00:09:00 00:00:15:00\r"
         "004 TAPE3 V K B 03:00:06:00 03:00:10:00 00:00:15:00 00:00:19:00\r"
         "005 TAPE5 V C 05:00:00:00 05:00:01:00 00:00:19:00 00:00:20:00");
    const Document& m = Module1;
    EXPECT_EQ(m.readOrigTransDur(1), "");
    EXPECT_EQ(m.readOrigIsBTrack(1), "B");
    EXPECT_EQ(m.readOrigTransDur(2), "");
    EXPECT_EQ(m.readOrigIsBTrack(2), "");
}

TEST(EventGrammar, LinesWithoutFourTimecodesAreNoEvents) {
    const char* lines[] = {
        "01:00:00:00",                                                 // one timecode: nothing left
        "001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00",              // three timecodes
        "M2 AX 050.0 00:00:05:12",                                     // a motion line
        "* FROM CLIP NAME: X",                                         // a comment
        "001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15;00",  // drop-frame spelling
        "TITLE: A",
        "",
    };
    for (const char* line : lines) {
        Read(line);
        SCOPED_TRACE(line);
        const Document& m = Module1;
        EXPECT_EQ(m.readOrigCompleteLine(0), line);
        for (const TextColumn* t :
             {&m.readOrigRecOutTC, &m.readOrigSourceInTC, &m.readOrigEventNumberStr, &m.readOrigTrans})
            EXPECT_EQ((*t)(0), "");
        for (const Int32Table* t :
             {&m.readOrigEventNumberInt, &m.readOrigRecOutFrame, &m.readOrigSourceInFrame, &m.editDurationFrames})
            EXPECT_EQ((*t)[0], -1);
    }
}

TEST(EventGrammar, TimecodesAreColonsAtTheirPlacesCountedInCharacters) {
    // Digits are not demanded: letters count by their leading number, which is 0; "é" is one
    // character, so the cut of the timecodes counts characters, not bytes.
    Read("001 R\xC3\xA9" "el V C ab:cd:ef:gh 01:0x:00:00 0\xC3\xA9:00:10:00 00:00:15:00");
    const Document& m = Module1;
    EXPECT_EQ(m.readOrigReelNames(0), "R\xC3\xA9" "el");
    EXPECT_EQ(m.readOrigSourceInTC(0), "ab:cd:ef:gh");
    EXPECT_EQ(m.readOrigRecInTC(0), "0\xC3\xA9:00:10:00");
    EXPECT_EQ(m.readOrigSourceInFrame[0], 0);
    EXPECT_EQ(m.readOrigSourceOutFrame[0], 90000);
    EXPECT_EQ(m.readOrigRecInFrame[0], 250);
}

TEST(EventGrammar, TheLastNumberOfThreeOrFourDigitsNamesTheForm) {
    const char* tc = " 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00";
    struct Case {
        std::string text;
        bool gvg;
    } cases[] = {
        {std::string("001 AX V C") + tc, false},
        {std::string("0001 AX V C") + tc, true},
        {std::string("0001 AX V C") + tc + "\r00001 AX V C" + tc, true},  // five digits leave it
        {std::string("0999 AX V C") + tc + "\r999 AX V C" + tc, false},
        {std::string("999 AX V C") + tc + "\r1000 AX V C" + tc, true},
        {std::string("TITLE: no events"), false},
        {std::string("001") + tc, false},  // the number slid into the transition
    };
    for (const Case& c : cases) {
        Read(c.text);
        EXPECT_EQ(Module1.IsGrassValley, c.gvg) << c.text;
        EXPECT_EQ(Module1.edlFormat, c.gvg ? "GVG (Grass Valley)" : "CMX");
        EXPECT_EQ(MainWindow().ST_EdlFormat.Text, Module1.edlFormat);
    }
}

TEST(Normalisation, EveryLineEndGivesTheSameRows) {
    for (const char* text : {"A\r\nB\r\nC", "A\nB\nC", "A\rB\rC", "A\r\nB\nC"}) {
        Read(text);
        ASSERT_EQ(Module1.maxZeilen, 2) << text;
        EXPECT_EQ(Module1.readOrigCompleteLine(1), "B");
    }
    Read("A\r\n");
    EXPECT_EQ(Module1.maxZeilen, 1);  // a final line end leaves an empty last row
    EXPECT_EQ(Module1.readOrigCompleteLine(1), "");
    Read("A\r\r\nB");  // a CR alone, then CR LF: two line ends
    EXPECT_EQ(Module1.maxZeilen, 2);
    Read(std::string("A\r\0\nB", 5));  // the NUL goes after the line ends were read
    EXPECT_EQ(Module1.maxZeilen, 2) << "NUL inside a CR LF must not join it";
}

TEST(Normalisation, ControlCharactersAreDeletedNotReplaced) {
    static const char text[] = "001\tAX V C\x01 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r* x\x7f";
    Read(std::string(text, sizeof text - 1));
    EXPECT_EQ(Module1.readOrigEventNumberStr(0), "001AX");  // the tab is gone, nothing stands in
    EXPECT_EQ(Module1.readOrigReelNames(0), "V");
    EXPECT_EQ(Module1.readOrigCompleteLine(1), "* x\x7f");  // code 127 stays
    Read("   TITLE: x   \r\r  ");
    EXPECT_EQ(Module1.readOrigCompleteLine(0), "TITLE: x");
    EXPECT_EQ(Module1.readOrigCompleteLine(1), "");
}

TEST(RowTables, FramesFollowTheRate) {
    const char* line = "001 AX V C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00";
    for (double rate : {24.0, 25.0, 30.0}) {
        Read(line, rate);
        const int32_t r = int32_t(rate);
        EXPECT_EQ(Module1.readOrigSourceInFrame[0], 3600 * r);
        EXPECT_EQ(Module1.readOrigRecOutFrame[0], r);
        EXPECT_EQ(Module1.editDurationFrames[0], r);
    }
    Read("001 AX V C 01:00:00:00 01:00:01:00 00:00:05:00 00:00:01:00");  // swapped record times
    EXPECT_EQ(Module1.editDurationFrames[0], -100);
}

TEST(RowTables, ExtentIsLowestRecordInAndHighestRecordOut) {
    Read("TITLE: T\r"
         "002 A V C 00:00:00:00 00:00:01:00 00:00:10:00 00:00:11:00\r"
         "* comment\r"
         "001 A V C 00:00:00:00 00:00:01:00 00:00:05:00 00:00:06:00\r"
         "003 A V C 00:00:00:00 00:00:01:00 00:00:05:00 00:00:20:00\r");
    EXPECT_EQ(Module1.TimeLineStartTC, "00:00:05:00");
    EXPECT_EQ(Module1.TimeLineStartFrame, 125);
    EXPECT_EQ(Module1.TimeLineEndTC, "00:00:20:00");
    EXPECT_EQ(Module1.TimeLineEndFrame, 500);
    ExpectAligned();
    Read("TITLE: nothing");
    EXPECT_EQ(Module1.TimeLineStartTC, "");
    EXPECT_EQ(Module1.TimeLineEndFrame, 0);
}

TEST(Header, CmxTitleAndFrameMode) {
    struct Case {
        const char* text;
        const char* title;
        const char* zeileEins;
    } cases[] = {
        {"TITLE: My Cut\rFCM: DROP FRAME", "My Cut", "TITLE: My Cut"},
        {"title:   lower case  \r", "lower case", "title:   lower case"},
        {"TITLE:\r", "", "TITLE:"},
        {"* x\rTITLE: Second\rTITLE: Third", "Second", "TITLE: Second"},
        {"no title at all", "UNKOWN", "TITLE: UNKNOWN"},
    };
    for (const Case& c : cases) {
        Read(c.text);
        EXPECT_EQ(Module1.newSeqTitle, c.title) << c.text;
        EXPECT_EQ(Module1.ZeileEins, c.zeileEins);
        // Whatever the FCM line says, the settling scan leaves a CMX list non-drop.
        EXPECT_FALSE(Module1.dropFrame);
        EXPECT_EQ(Module1.ZeileZwei, "FCM: NON-DROP FRAME");
        EXPECT_EQ(MainWindow().ST_FCM.Text, "Non-Drop Frame");
        EXPECT_EQ(Module1.indexStart, Module1.maxZeilen + 1);
    }
}

TEST(Header, GvgTitleIsTheFirstLineWithText) {
    const char* tc = " 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00";
    Read(std::string("\r\r  My Gvg List \r0001 AX V C") + tc);
    EXPECT_EQ(Module1.newSeqTitle, "My Gvg List");
    EXPECT_EQ(Module1.indexStart, 3);
    EXPECT_EQ(Module1.ZeileZwei, "");
    Read(std::string("0001 AX V C") + tc);
    EXPECT_EQ(Module1.newSeqTitle, std::string("0001 AX V C") + tc);
}

TEST(Header, TheTitleFieldOffersTheTitleInCapitals) {
    Read("TITLE: Reel 1 - stra\xC3\x9F" "e");
    const MainWindowState& w = MainWindow();
    EXPECT_EQ(w.EF_SeqTitle.Text(), "REEL 1 - STRASSE VORNELT");
    EXPECT_EQ(Module1.newSeqTitle,
              "Reel 1 - stra\xC3\x9F" "e");  // the plain title until the writer reads the field
    EXPECT_TRUE(w.EF_ReelName.Enabled);
    EXPECT_TRUE(w.Chb_KeyToDissolve.Enabled);
    EXPECT_TRUE(w.PopupTransition.Enabled);
    EXPECT_FALSE(w.Chb_FixKeyDuration.Enabled);
    EXPECT_FALSE(w.Chb_V1.Enabled);
    EXPECT_FALSE(w.Chb_A1.Enabled);
}

TEST(Progress, UpdatesEveryHundredthLineAndTheLastTen) {
    HeadlessPlatform platform;
    ScopedPlatform scope(platform);
    std::vector<std::string> shown;
    platform.onRedraw = [&](std::string_view control) {
        if (control == "ST_Detail") shown.push_back(ProgressBarWindow().ST_Detail.Text);
    };
    std::string text;
    for (int i = 0; i < 249; ++i) text += "* line\r";
    text += "* last";
    Read(text);
    std::vector<std::string> expected = {"Read Line: 1", "Read Line: 101", "Read Line: 201"};
    for (int i = 241; i <= 250; ++i) expected.push_back("Read Line: " + std::to_string(i));
    EXPECT_EQ(shown, expected);
    EXPECT_EQ(platform.progressShows, 1);
    EXPECT_EQ(platform.progressCloses, 1);
    EXPECT_FALSE(ProgressBarWindowExists());
}

TEST(BadInput, AnyBytesLoadAsRows) {
    std::string binary;
    for (int i = 0; i < 4096; ++i) binary.push_back(char((i * 7919) & 0xFF));
    const std::string cases[] = {
        "",
        std::string(1000, '\n'),
        std::string("\0\0\0", 3),
        binary,
        std::string(1 << 20, 'x'),
        std::string(1 << 20, ' ') + "01:00:00:00 01:00:00:00 01:00:00:00 01:00:00:00",
        "99999999999999999999999 A V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00",
        "\xE9\xE9\xE9 \xE9 V C 0\xE9:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00",
        "1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 :: :: :: ::",
    };
    for (const std::string& c : cases) {
        Read(c);
        ExpectAligned();
    }
    Read("");
    EXPECT_EQ(Module1.maxZeilen, 0);  // an empty file is one empty row
    Read(std::string(1000, '\n'));
    EXPECT_EQ(Module1.maxZeilen, 1000);
}

using LoadRoad = Fixture;

TEST_F(LoadRoad, OpenReadsTheFileAsWindowsLatin1) {
    Load("TITLE: Caf\xE9\r\n001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n", 24.0, "Caf\xC3\xA9.edl");
    const Document& m = Module1;
    EXPECT_EQ(m.readOrigCompleteLine(0), "TITLE: Caf\xC3\xA9");
    EXPECT_EQ(m.frameRate, 24.0);
    EXPECT_EQ(m.myAbsDateiName, "Caf\xC3\xA9.edl");
    EXPECT_EQ(m.myAbsDateiFolderItem->AbsolutePath(), FolderItem(dir_.string()).AbsolutePath());
    EXPECT_TRUE(m.dbCreated);
    const MainWindowState& w = MainWindow();
    EXPECT_EQ(w.Title, "Caf\xC3\xA9.edl");
    EXPECT_EQ(w.ST_FrameRate.Text, "24");
    EXPECT_EQ(w.ST_FCM.Text, "Non-Drop Frame");
    EXPECT_FALSE(w.Canvas2.Visible);
    EXPECT_FALSE(w.Canvas1.Enabled);
    EXPECT_EQ(w.Cursor, MouseCursor::StandardPointer);
    ASSERT_EQ(platform.openDialogsShown.size(), 1u);
    EXPECT_EQ(platform.openDialogsShown[0].Title, "Open EDL");
    EXPECT_EQ(platform.openDialogsShown[0].PromptText, "Select CMX-3600 or GVG EDL");
    EXPECT_EQ(platform.openDialogsShown[0].Filter, "text/plain");
    EXPECT_TRUE(m.isModified);  // a fresh list counts as changed
}

TEST_F(LoadRoad, CancelKeepsTheDocumentAndLeavesTheMovieFallback) {
    Load("TITLE: First\r");
    Module1.myAbsMovieName.clear();
    Open_CMX();  // no answer queued: the dialog is cancelled
    EXPECT_EQ(Module1.myAbsMovieName, "MASTER.MOV");
    EXPECT_EQ(Module1.readOrigCompleteLine(0), "TITLE: First");
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(LoadRoad, AnUnreadableFileLeavesTheOldDocumentAndTheWaitCursor) {
    Load("TITLE: First\r001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00");
    const std::string title = MainWindow().Title;
    for (const std::string& path : {(dir_ / "missing.edl").string(), dir_.string()}) {
        platform.openDialogAnswers.push_back(FolderItem(path));
        Open_CMX();
        EXPECT_EQ(platform.messages.back(), "Sorry, Can't read the file.");
        EXPECT_EQ(Module1.readOrigCompleteLine(0), "TITLE: First");
        EXPECT_EQ(Module1.readOrigTrans(1), "C");
        EXPECT_EQ(MainWindow().Title, title);
        EXPECT_EQ(MainWindow().Cursor, MouseCursor::Wait);
    }
    Load("TITLE: Second\r");
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::StandardPointer);
}

TEST_F(LoadRoad, ASecondLoadForgetsTheSaveAndTheMovieButKeepsTheOptions) {
    Load("TITLE: First\r");
    Module1.mySavedAbsDateiName = "saved.edl";
    Module1.myAbsMovieName = "CUT.MOV";
    MainWindowState& w = MainWindow();
    w.Chb_Mirror.Value = false;
    w.EF_RenderedMovie.SetText("cut.mov");
    Load("TITLE: Second\r", 30.0);
    EXPECT_EQ(Module1.mySavedAbsDateiName, "");
    EXPECT_EQ(Module1.myAbsMovieName, "");
    EXPECT_FALSE(Module1.boolMirror);
    EXPECT_FALSE(MainWindow().Chb_Mirror.Value);
    EXPECT_EQ(MainWindow().EF_RenderedMovie.Text(), "CUT.MOV");
    EXPECT_EQ(MainWindow().ST_FrameRate.Text, "30");
}

TEST_F(LoadRoad, DropReadsTheDroppedFileOrSaysItCannot) {
    FileDropedInEditField();
    EXPECT_EQ(platform.messages, std::vector<std::string>{"Sorry, Can't read the file."});
    Module1.DropedFolderItem = WriteFile("drop.edl", "TITLE: Dropped\r");
    Module1.frameRateTmp = 30.0;
    FileDropedInEditField();
    // The writer has run since: newSeqTitle follows the title field now.
    EXPECT_EQ(Module1.readOrigCompleteLine(0), "TITLE: Dropped");
    EXPECT_EQ(Module1.frameRate, 30.0);
    EXPECT_EQ(MainWindow().Title, "drop.edl");
    EXPECT_EQ(platform.messages.size(), 1u);
    EXPECT_TRUE(platform.openDialogsShown.empty());
    EXPECT_EQ(Module1.myAbsMovieName, "");  // the drop road has no movie fallback
}

TEST_F(LoadRoad, EveryListOfTheCorpusLoads) {
    const std::filesystem::path corpus = std::filesystem::path(VORNELT_SHARED_DIR) / "corpus";
    if (!std::filesystem::exists(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(corpus)) {
        if (entry.path().extension() != ".edl") continue;
        ++files;
        for (double rate : {24.0, 25.0, 30.0}) {
            platform.openDialogAnswers.push_back(FolderItem(entry.path().string()));
            Module1.frameRateTmp = rate;
            Open_CMX();
            SCOPED_TRACE(entry.path().string());
            ExpectAligned();
            EXPECT_EQ(MainWindow().Title, entry.path().filename().string());
        }
    }
    EXPECT_GT(files, 10);
}

}  // namespace
}  // namespace vornelt::testing
