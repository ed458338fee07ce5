// The reader: normalisation, the event grammar, the row tables, the header scans, and the
// load road around them.
#include <gtest/gtest.h>

#include <filesystem>

#include "fixtures.hpp"
#include "reader/reader.hpp"

namespace vornelt::testing {
namespace {

const std::string kTc = " 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00";

class ReaderTest : public Fixture {
protected:
    // Runs the reader alone on a text, at a rate, after the reset a load does.
    void Read(const std::string& text, FrameRate rate) {
        Reset();
        m().cmxString = std::make_shared<std::string>(text);
        ResetGlobalVariables_NEU(m(), w());
        m().frameRate = rate;
        ParseCMX3600(m(), w(), session().progress, platform);
    }
    void Read(const std::string& text, double rate = 25.0) { Read(text, Rate(rate)); }

    // Every read table has one entry per row.
    void ExpectAligned() {
        const Document& m = this->m();
        const size_t n = size_t(m.maxZeilen) + 1;
        for (const TextColumn* t :
             {&m.readOrigCompleteLine, &m.readOrigRecOutTC, &m.readOrigRecInTC, &m.readOrigSourceOutTC,
              &m.readOrigSourceInTC, &m.readOrigEventNumberStr, &m.readOrigReelNames, &m.readOrigMode, &m.readOrigTrans,
              &m.readOrigTransDur, &m.readOrigIsBTrack})
            EXPECT_EQ(t->size(), n);
        for (const Int32Table* t : {&m.readOrigRecOutFrame, &m.readOrigRecInFrame, &m.readOrigSourceOutFrame,
                                    &m.readOrigSourceInFrame, &m.readOrigEventNumberInt, &m.editDurationFrames})
            EXPECT_EQ(t->size(), n);
    }
};

using BadInput = ReaderTest;
using EventGrammar = ReaderTest;
using LoadRoad = ReaderTest;

// A row's fields as "number|reel|mode|transition|duration|B mark|number's value".
std::string Fields(const Document& m, size_t row) {
    std::string s;
    for (const TextColumn* t : {&m.readOrigEventNumberStr, &m.readOrigReelNames, &m.readOrigMode, &m.readOrigTrans,
                                &m.readOrigTransDur, &m.readOrigIsBTrack})
        s.append((*t)(row)).append("|");
    return s + std::to_string(m.readOrigEventNumberInt[row]);
}

TEST_F(EventGrammar, TakesALineApartFromTheRight) {
    // A line without four timecodes at its end is no event: no field, every number -1.
    const std::pair<std::string, const char*> cases[] = {
        {"001  AX  V  C" + kTc, "001|AX|V|C|||1"},
        {"002  BX  V  D  025" + kTc, "002|BX|V|D|025||2"},
        {"003  BX  V  K B" + kTc, "003|BX|V|K||B|3"},
        {"004 BX V K B 025" + kTc, "004|BX|V|K||B 025|4"},
        {"005 AX AA/V W001 030" + kTc, "005|AX|AA/V|W001|030||5"},
        {"006 AX V c" + kTc, "006|AX|V|c|||6"},
        {"001" + kTc, "|||001|||-1"},                   // too few tokens shift right
        {"001 AX" + kTc, "001|||AX|||1"},               // reel and mode need a blank
        {"007 TAPE 1 V C" + kTc, "007|TAPE|1|V||C|7"},  // a blank in the reel
        {"-3 AX V C" + kTc, "-3|AX|V|C|||-3"},
        {"ABC AX V C" + kTc, "ABC|AX|V|C|||0"},
        {"0012 AX V C" + kTc, "0012|AX|V|C|||12"},
        {"000 AX V C" + kTc, "000|AX|V|C|||0"},
        {"* FROM CLIP NAME: X" + kTc, "*|FROM|CLIP|NAME:||X|0"},
        {"* FROM CLIP NAME: X", ""},
        {"001 AX V D 12.5" + kTc, "001|AX|V|D|12.5||1"},
        {"001 AX V D 1e5" + kTc, "001|AX|V|D||1e5|1"},
        {"01:00:00:00", ""},
        {"001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00", ""},
        {"M2 AX 050.0 00:00:05:12", ""},
        {"001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15;00", ""},  // drop-frame spelling
        {"TITLE: A", ""},
        {"", ""},
    };
    for (const auto& [line, fields] : cases) {
        SCOPED_TRACE(line);
        Read(line);
        const Document& m = this->m();
        const bool event = *fields;
        ASSERT_EQ(m.maxZeilen, 0);
        EXPECT_EQ(m.readOrigCompleteLine(0), line);
        EXPECT_EQ(Fields(m, 0), event ? fields : "||||||-1");
        EXPECT_EQ(std::tuple(m.readOrigSourceInTC(0), m.readOrigRecOutTC(0)),
                  event ? std::tuple("01:00:00:00", "00:00:15:00") : std::tuple("", ""));
        EXPECT_EQ(std::tuple(m.readOrigSourceInFrame[0], m.readOrigRecOutFrame[0], m.editDurationFrames[0]),
                  event ? std::tuple(90000, 375, 125) : std::tuple(-1, -1, -1));
    }
    // A field of one line never carries over into the next.
    Read("003 TAPE3 V W001 030" + kTc + "\r004 TAPE3 V K B" + kTc + "\r005 TAPE5 V C" + kTc);
    EXPECT_EQ(Fields(m(), 1), "004|TAPE3|V|K||B|4");
    EXPECT_EQ(Fields(m(), 2), "005|TAPE5|V|C|||5");
}

TEST_F(EventGrammar, TimecodesAreColonsAtTheirPlacesCountedInCharactersAndFramesFollowTheRate) {
    // Digits are not demanded: letters count by their leading number, which is 0; "é" is one
    // character, so the cut of the timecodes counts characters, not bytes.
    Read(
        "001 R\xC3\xA9"
        "el V C ab:cd:ef:gh 01:0x:00:00 0\xC3\xA9:00:10:00 00:00:15:00");
    EXPECT_EQ(m().readOrigReelNames(0),
              "R\xC3\xA9"
              "el");
    EXPECT_EQ(std::tuple(m().readOrigSourceInTC(0), m().readOrigRecInTC(0)),
              std::tuple("ab:cd:ef:gh", "0\xC3\xA9:00:10:00"));
    EXPECT_EQ(std::tuple(m().readOrigSourceInFrame[0], m().readOrigSourceOutFrame[0], m().readOrigRecInFrame[0]),
              std::tuple(0, 90000, 250));
    for (double rate : {24.0, 25.0, 30.0}) {
        Read("001 AX V C 01:00:00:00 01:00:01:00 00:00:00:00 00:00:01:00", rate);
        const int32_t r = int32_t(rate);
        EXPECT_EQ(std::tuple(m().readOrigSourceInFrame[0], m().readOrigRecOutFrame[0], m().editDurationFrames[0]),
                  std::tuple(3600 * r, r, r));
    }
    Read("001 AX V C 01:00:00:00 01:00:01:00 00:00:05:00 00:00:01:00");  // swapped record times
    EXPECT_EQ(m().editDurationFrames[0], -100);
}

TEST_F(EventGrammar, ADropFrameRateTakesASemicolonBeforeTheFramesAndSaysDropFrame) {
    // The timecodes, the rate; the record out's frame (-1: no event) and the separator the
    // timecodes Vornelt writes take.
    const std::string tc = " 01:00:00;00 01:00:05;00 00:01:00;02 00:01:00;12";
    const std::tuple<std::string, const char*, int32_t, char> cases[] = {
        {"001 AX V C" + tc, "29.97df", 1810, ';'},
        {"001 R\xC3\xA9"
         "el V C" +
             tc,
         "29.97df", 1810, ';'},  // counted in characters
        {"001 AX V C 01:00:00:00 01:00:05:00 00:01:00:02 00:01:00:12", "29.97df", 1810, ':'},
        {"001 AX V C 01:00:00;00 01:00:05;00 00:01:00;04 00:01:00;14", "59.94df", 3610, ';'},
        {"001 AX V C" + tc, "29.97", -1, ':'},  // non-drop: no timecode, as at 30
        {"001 AX V C 01:00:00;00 01:00:05;00 00:01;00;02 00:01;00;12", "29.97df", -1, ':'},
        {"001 AX V C 01:00:00.00 01:00:05.00 00:01:00.02 00:01:00.12", "29.97df", -1, ':'},
    };
    for (const auto& [line, rate, frame, separator] : cases) {
        SCOPED_TRACE(line + " at " + rate);
        Read("TITLE: T\rFCM: NON-DROP FRAME\r" + line + "\r002 AX V C 01:00:00:00 01:00:00:01 00:00:00:00 00:00:00:01",
             Rate(rate));
        EXPECT_EQ(std::tuple(m().readOrigRecOutFrame[2], m().frameSeparator), std::tuple(frame, separator));
        // A CMX list is read as the rate counts, whatever its FCM line says.
        const bool drop = Rate(rate).DropFrame();
        EXPECT_EQ(
            std::tuple(m().dropFrame, m().ZeileZwei, w().ST_FCM.Text),
            std::tuple(drop, drop ? "FCM: DROP FRAME" : "FCM: NON-DROP FRAME", drop ? "Drop Frame" : "Non-Drop Frame"));
    }
}

TEST_F(ReaderTest, EveryLineEndGivesTheSameRowsAndControlCharactersGo) {
    const std::pair<std::string, std::string> cases[] = {
        {"A\r\nB\r\nC", "A|B|C"},
        {"A\nB\nC", "A|B|C"},
        {"A\rB\rC", "A|B|C"},
        {"A\r\nB\nC", "A|B|C"},
        {"A\r\n", "A|"},            // a final line end leaves an empty last row
        {"A\r\r\nB", "A||B"},       // a CR alone, then CR LF: two line ends
        {{"A\r\0\nB", 5}, "A||B"},  // the NUL goes after the line ends were read
        {"", ""},                   // an empty file is one empty row
        {std::string(1000, '\n'), std::string(1000, '|')},
        {"   TITLE: x   \r\r  ", "TITLE: x||"},
        {"* \tx\x01\x7f", "* x\x7f"},  // deleted, not replaced; code 127 stays
    };
    for (const auto& [text, rows] : cases) {
        Read(text);
        EXPECT_EQ(Joined(m().readOrigCompleteLine), rows) << text;
    }
    Read("001\tAX V C\x01" + kTc);  // the fields come from the cleaned line
    EXPECT_EQ(Fields(m(), 0), "001AX|V||C|||1");
}

TEST_F(ReaderTest, TheFormTheTitleAndTheFrameMode) {
    // The text, whether it is a GVG list, its title. The last event number of three or four
    // digits names the form; a GVG list's title is its first line with text.
    const std::tuple<std::string, bool, std::string> cases[] = {
        {"001 AX V C" + kTc, false, "UNKOWN"},
        {"0001 AX V C" + kTc + "\r00001 AX V C" + kTc, true, "0001 AX V C" + kTc},  // five digits leave it
        {"0999 AX V C" + kTc + "\r999 AX V C" + kTc, false, "UNKOWN"},
        {"999 AX V C" + kTc + "\r1000 AX V C" + kTc, true, "999 AX V C" + kTc},
        {"001" + kTc, false, "UNKOWN"},  // the number slid into the transition
        {"\r\r  My Gvg List \r0001 AX V C" + kTc, true, "My Gvg List"},
        {"TITLE: My Cut\rFCM: DROP FRAME", false, "My Cut"},
        {"title:   lower case  \r", false, "lower case"},
        {"TITLE:\r", false, ""},
        {"* x\rTITLE: Second\rTITLE: Third", false, "Second"},
    };
    for (const auto& [text, gvg, title] : cases) {
        Read(text);
        EXPECT_EQ(w().ST_EdlFormat.Text, gvg ? "GVG (Grass Valley)" : "CMX") << text;
        EXPECT_EQ(m().newSeqTitle, title) << text;
        // Whatever the FCM line says, the settling scan leaves a CMX list non-drop.
        EXPECT_FALSE(m().dropFrame);
        EXPECT_EQ(w().ST_FCM.Text, gvg ? "" : "Non-Drop Frame");
    }
}

TEST_F(BadInput, AnyBytesLoadAsRows) {
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
}

TEST_F(LoadRoad, OpenReadsTheFileAsWindowsLatin1AndASecondKeepsOnlyTheOptions) {
    Load("TITLE: Caf\xE9\r\n001 AX V C" + kTc + "\r\n", 24.0, "Caf\xC3\xA9.edl");
    EXPECT_EQ(m().readOrigCompleteLine(0), "TITLE: Caf\xC3\xA9");
    EXPECT_EQ(m().myAbsDateiFolderItem->AbsolutePath(), FolderItem(dir_.string()).AbsolutePath());
    EXPECT_EQ(std::tuple(m().frameRate.Value(), w().ST_FrameRate.Text, w().Title, w().Cursor),
              std::tuple(24.0, "24", "Caf\xC3\xA9.edl", MouseCursor::StandardPointer));
    EXPECT_EQ(std::tuple(platform.progressShows, platform.progressCloses), std::tuple(1, 1));
    ASSERT_EQ(platform.openDialogsShown.size(), 1u);
    EXPECT_EQ(platform.openDialogsShown[0].Filter, "text/plain");
    EXPECT_TRUE(m().isModified);  // a fresh list counts as changed

    // A second load forgets the save and the movie, but keeps the options.
    m().mySavedAbsDateiName = "saved.edl";
    m().myAbsMovieName = "CUT.MOV";
    w().Chb_Mirror.Value = false;
    w().EF_RenderedMovie.SetText("cut.mov");
    Load("TITLE: Second\r", 30.0);
    EXPECT_EQ(std::tuple(m().mySavedAbsDateiName, m().myAbsMovieName, m().boolMirror, w().Chb_Mirror.Value),
              std::tuple("", "", false, false));
    EXPECT_EQ(w().EF_RenderedMovie.Text(), "CUT.MOV");
}

TEST_F(LoadRoad, ACancelOrAnUnreadableFileKeepsTheDocument) {
    Load("TITLE: First\r001 AX V C" + kTc);
    m().myAbsMovieName.clear();
    Open_CMX(session());  // no answer queued: the dialog is cancelled; the movie falls back
    EXPECT_EQ(m().myAbsMovieName, "MASTER.MOV");
    EXPECT_TRUE(platform.messages.empty());
    for (const std::string& path : {(dir_ / "missing.edl").string(), dir_.string()}) {
        platform.openDialogAnswers.push_back(FolderItem(path));
        Open_CMX(session());
        EXPECT_EQ(platform.messages.back(), "Sorry, Can't read the file.");
        // The document stays; nothing resets the wait cursor on this road.
        EXPECT_EQ(std::tuple(m().readOrigTrans(1), w().Title, w().Cursor),
                  std::tuple("C", "list.edl", MouseCursor::Wait));
    }
    Load("TITLE: Second\r");
    EXPECT_EQ(w().Cursor, MouseCursor::StandardPointer);
}

TEST_F(LoadRoad, DropReadsTheDroppedFileOrSaysItCannot) {
    FileDropedInEditField(session());
    EXPECT_EQ(platform.messages, std::vector<std::string>{"Sorry, Can't read the file."});
    m().DropedFolderItem = WriteFile("drop.edl", "TITLE: Dropped\r");
    FileDropedInEditField(session());
    EXPECT_EQ(m().readOrigCompleteLine(0), "TITLE: Dropped");
    EXPECT_TRUE(platform.openDialogsShown.empty());
    EXPECT_EQ(std::tuple(platform.messages.size(), m().myAbsMovieName), std::tuple(1u, ""));  // no movie fallback
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
            m().frameRateTmp = Rate(rate);
            Open_CMX(session());
            SCOPED_TRACE(entry.path().string());
            ExpectAligned();
            EXPECT_EQ(w().Title, entry.path().filename().string());
        }
    }
    EXPECT_GT(files, 10);
}

}  // namespace
}  // namespace vornelt::testing
