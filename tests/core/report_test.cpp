// What changed: whole reports of the demo lists, and one list for each thing the check of a
// list looks for.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>

#include "cli/convert.hpp"
#include "fixtures.hpp"
#include "generate.hpp"
#include "vornelt/convert.hpp"

namespace vornelt {
namespace {

std::string RunConverter(std::vector<std::string> args) {
    args.insert(args.begin(), "vornelt-convert");
    std::vector<const char*> argv;
    for (auto& a : args) argv.push_back(a.c_str());
    std::ostringstream out, err;
    EXPECT_EQ(ConvertMain(int(argv.size()), argv.data(), out, err), 0) << err.str();
    return out.str();
}

// Recording is what a report costs, and nothing else: off, every list comes out the same.
// With a report the list is planned whole before it is written; without one it is planned and
// written a stretch of rows at a time. Both give the same bytes, also across the stretches of a
// long list.
TEST(Report, RecordingNeverChangesTheList) {
    const std::string longList = bench::GenerateList({12000, false, bench::Shape::Mixed, 3});
    const std::string longGvg = bench::GenerateList({12000, true, bench::Shape::Mixed, 4});
    ConvertOptions plain, dissolves, mirrorOff;
    dissolves.keysToDissolves = true;
    dissolves.wipeNames = WipeNames::FinalCutPro;
    mirrorOff.mirror = mirrorOff.audio = mirrorOff.keys = false;
    mirrorOff.removeFreezeFrames = mirrorOff.removeSpeedChanges = false;
    mirrorOff.reel = "MAST01";
    mirrorOff.movie = "cut.mov";
    for (const std::string& list :
         {testing::TestData("writer_demo_cmx.edl"), testing::TestData("writer_demo_gvg.edl"), longList, longGvg}) {
        for (ConvertOptions options : {plain, dissolves, mirrorOff}) {
            options.report = true;
            ErrorStatus error;
            const ConvertResult recorded = Convert(list, options, "list.edl", &error);
            options.report = false;
            const ConvertResult quiet = Convert(list, options, "list.edl", &error);
            ASSERT_TRUE(error.ok()) << list;
            EXPECT_FALSE(recorded.report.items.empty());
            EXPECT_TRUE(quiet.report.items.empty());
            EXPECT_EQ(recorded.bytes, quiet.bytes) << list.substr(0, 40);
            EXPECT_EQ(recorded.messages, quiet.messages) << list.substr(0, 40);
        }
    }
}

// The report of each demo list, in each form, against its expected file. With
// VORNELT_UPDATE_EXPECTED set the files are written anew instead (then read them through).
TEST(Report, DemoListsGiveTheExpectedReports) {
    const struct {
        const char* list;
        std::vector<std::string> options;
        const char* expected;
        const char* fps = "25";
    } cases[] = {
        {"writer_demo_cmx.edl", {"--report-format", "text"}, "writer_demo_cmx.report.txt"},
        {"writer_demo_cmx.edl", {"--report-format", "json"}, "writer_demo_cmx.report.json"},
        {"writer_demo_gvg.edl", {"--report-format", "text"}, "writer_demo_gvg.report.txt"},
        {"writer_demo_gvg.edl", {"--report-format", "json"}, "writer_demo_gvg.report.json"},
        {"writer_demo_cmx.edl",
         {"--no-audio", "--no-keys", "--keep-wipes", "--keep-freeze-frames", "--reel", "MAST01", "--movie", "cut.mov"},
         "writer_demo_cmx.options.report.txt"},
        {"writer_demo_cmx.edl",
         {"--keys-to-dissolves", "--no-mirror", "--keep-speed-changes"},
         "writer_demo_cmx.dissolves.report.txt"},
        // Drop frame: the rate by its name, the timecodes in drop frame and in the list's style.
        {"rates_2997df.edl", {"--report-format", "json", "--no-mirror"}, "rates_2997df.report.json", "29.97df"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expected);
        std::vector<std::string> args = {
            VORNELT_TEST_DATA_DIR "/" + std::string(c.list), "--fps", c.fps, "--dry-run", "--report", "-"};
        args.insert(args.end(), c.options.begin(), c.options.end());
        const std::string report = RunConverter(args);
        if (std::getenv("VORNELT_UPDATE_EXPECTED")) {
            std::ofstream(VORNELT_TEST_DATA_DIR "/" + std::string(c.expected), std::ios::binary) << report;
            continue;
        }
        EXPECT_EQ(report, testing::TestData(c.expected));
    }
}

// Each list holds one thing the check looks for; no other warning may come with it.
TEST(Report, TheCheckFindsWhatIsWrongWithTheListAsRead) {
    const std::string head = "TITLE: Check\r\nFCM: NON-DROP FRAME\r\n\r\n";
    const std::string one = "001  TAPE1    V     C        01:00:00:00 01:00:05:00 00:00:00:00 00:00:05:00\r\n";
    const std::string two = "002  TAPE2    V     C        02:00:00:00 02:00:05:00 00:00:05:00 00:00:10:00\r\n";
    std::string utf16 = "\xFF\xFE";
    for (const char c : head + one) utf16 += std::string(1, c) + '\0';
    const std::string dropFrame = "001  TAPE1    V     C        01:00:00;00 01:00:05;00 00:00:00;00 00:00:05;00\r\n";
    const std::string dropHead = "TITLE: Check\r\nFCM: DROP FRAME\r\n\r\n";
    const std::string fifty = "002  TAPE2    V     C        02:00:00:00 02:00:05:49 00:00:05:00 00:00:10:49\r\n";
    const struct {
        std::string list;
        std::map<std::string, int> warnings;
        const char* fps = "25";
        const char* says = "";  // in the texts of the warnings
    } cases[] = {
        {head + one + two, {}},
        {head + one + "002  TAPE2    V     C        02:00:00:00 02:00:05:27 00:00:05:00 00:00:10:00\r\n",
         {{"impossible-timecode", 1}}},
        {"TITLE: Check\r\nFCM: DROP FRAME\r\n\r\n" + one, {{"drop-frame-at-rate", 1}}},
        {"TITLE: Check\r\nFCM: DROP FRAME\r\n\r\n" + one, {{"drop-frame-at-rate", 1}}, "30"},
        {head + dropFrame,
         {{"drop-frame-at-rate", 1}, {"unknown-line", 1}},
         "30",
         "Read it at 29.97 fps drop frame (29.97df) to"},
        {dropHead + one, {{"drop-frame-at-rate", 1}}, "60", "Read it at 59.94 fps drop frame (59.94df) to"},
        {dropHead + one, {{"drop-frame-at-rate", 1}}, "25", "(29.97df) or 59.94 fps drop frame (59.94df) to"},
        {dropHead + dropFrame + "002  TAPE2    V     C        02:00:00;00 02:00:05;00 00:01:00;00 00:01:05;00\r\n",
         {{"impossible-timecode", 1}},
         "29.97df",
         "(frame 00, which drop frame skips at the start of minute 01)"},
        {dropHead + "001  TAPE1    V     C        01:00:00:00 01:00:05:00 00:10:00:00 00:10:05:02\r\n", {}, "59.94df"},
        {head + one + two,
         {{"non-drop-frame-at-rate", 1}},
         "29.97df",
         "Read it at 30 fps (30) or 29.97 fps (29.97) to"},
        {head + one + fifty, {}, "50"},
        {head + one + fifty, {{"impossible-timecode", 1}}, "25"},
        {"TITLE: Check\r\n" + one + two, {{"event-on-header-line", 1}, {"comment-before-first-event", 1}}},
        {head + one + "002  TAPE2    V     C        02:00:00:00 02:00:05:00 00:00:10:00 00:00:05:00\r\n",
         {{"record-backwards", 1}}},
        {head + one + "002  TAPE2    V     C        02:00:00:00 02:00:05:00 00:00:04:00 00:00:09:00\r\n",
         {{"record-overlap", 1}}},
        {head + one + "002  TAPE2    V     C        02:00:05:00 02:00:00:00 00:00:05:00 00:00:10:00\r\n",
         {{"source-out-before-in", 1}}},
        {head + one + "HELLO THERE\r\n" + two, {{"unknown-line", 1}}},
        {head + one + "* FROM CLIP NAME: \x8Aum\r\n" + two, {{"not-mac-roman", 1}}},
        {head + one + "002  TAPE2LONG V    C        02:00:00:00 02:00:05:00 00:00:05:00 00:00:10:00\r\n",
         {{"reel-too-long", 1}}},
        {head + one + "* FROM CLIP NAME: Caf\xC3\xA9\r\n" + two, {{"looks-like-utf8", 1}}},
        {"\xEF\xBB\xBF" + head + one, {{"looks-like-utf8", 1}, {"unknown-line", 1}}},   // the mark stands before TITLE
        {utf16, {{"looks-like-utf16", 1}, {"not-mac-roman", 1}, {"unknown-line", 1}}},  // the mark stands before TITLE
        {"TITLE: Check\r\nFCM: NON-DROP FRAME\r\n" + one, {{"comment-before-first-event", 1}}},
        {head + two, {{"comment-before-first-event", 1}}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.list);
        ErrorStatus error;
        ConvertOptions options;
        options.fps = *FrameRate::Named(c.fps);
        const ConvertResult r = Convert(c.list, options, "list.edl", &error);
        ASSERT_TRUE(error.ok());
        std::map<std::string, int> warnings;
        for (const ReportCount& count : r.report.counts)
            if (KindSeverity(count.kind) == Severity::Warning)
                warnings[std::string(KindName(count.kind))] = count.count;
        EXPECT_EQ(warnings, c.warnings);
        std::string texts;
        for (const ReportItem& item : r.report.items) {
            if (item.severity == Severity::Warning) {
                EXPECT_FALSE(item.text.empty());
                texts += item.text;
            }
        }
        EXPECT_THAT(texts, ::testing::HasSubstr(c.says));
    }
}

}  // namespace
}  // namespace vornelt

namespace vornelt {
namespace {

// A clip chain says what the mirror list shows of it: lines on black keep their reel.
TEST(Report, ChainsOfBlackSayTheirLinesKeepTheirReel) {
    const std::string head = "TITLE: Chains\r\nFCM: NON-DROP FRAME\r\n\r\n";
    const std::string black =
        "001  BL       V     C        00:00:00:00 00:00:05:00 01:00:00:00 01:00:05:00\r\n"
        "002  BL       V     C        00:00:05:00 00:00:10:00 01:00:05:00 01:00:10:00\r\n";
    const std::string mixed =
        "001  TAPE1    V     C        00:00:00:00 00:00:05:00 01:00:00:00 01:00:05:00\r\n"
        "002  BL       V     C        00:00:05:00 00:00:10:00 01:00:05:00 01:00:10:00\r\n";
    const std::pair<std::string, std::string> cases[] = {
        {black, "its lines keep their reel BL in the mirror list, so this name stands nowhere in it"},
        {mixed, "of its lines, those on BL keep that reel in the mirror list"},
    };
    for (const auto& [list, says] : cases) {
        ErrorStatus error;
        const ConvertResult r = Convert(head + list, ConvertOptions{}, "list.edl", &error);
        ASSERT_TRUE(error.ok());
        const auto chain = std::find_if(r.report.items.begin(), r.report.items.end(),
                                        [](const ReportItem& i) { return i.kind == ChangeKind::ClipChain; });
        ASSERT_NE(chain, r.report.items.end());
        EXPECT_THAT(chain->text, ::testing::HasSubstr(says));
    }
}

}  // namespace
}  // namespace vornelt
