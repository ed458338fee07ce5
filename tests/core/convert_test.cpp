// The converter's contract: options, exit statuses, where the list goes; and every list of
// the corpus under every option.
#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <sstream>

#include "cli/convert.hpp"
#include "fixtures.hpp"
#include "generate.hpp"
#include "vornelt/convert.hpp"

extern char** environ;

namespace vornelt {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

class Convert : public testing::Fixture {
protected:
    std::string Write(const std::string& name, const std::string& text) { return WriteFile(name, text).AbsolutePath(); }
    int Run(std::vector<std::string> args) {
        args.insert(args.begin(), "vornelt-convert");
        std::vector<const char*> argv;
        for (auto& a : args) argv.push_back(a.c_str());
        out.str("");
        err.str("");
        return ConvertMain(int(argv.size()), argv.data(), out, err);
    }

    std::ostringstream out, err;
};

const char* kList = "TITLE: Test\r\n001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n";

TEST_F(Convert, OutputToAFileOrStandardOutput) {
    const std::string in = Write("a.edl", kList);
    ASSERT_EQ(Run({in, "--fps", "25", "-o", (dir_ / "x.edl").string()}), 0);
    ASSERT_EQ(Run({in, "--fps", "25", "-o", "-"}), 0);
    EXPECT_EQ(out.str(), testing::ReadBytes(dir_ / "x.edl"));  // the same bytes as the file
}

TEST_F(Convert, FailuresSayWhy) {
    const std::string in = Write("a.edl", kList);
    EXPECT_EQ(Run({in, "--fps", "25", "-o", (dir_ / "no" / "such" / "x.edl").string()}), 1);
    EXPECT_THAT(err.str(), HasSubstr("x.edl: Unknown Error while saving the File. Please try again. "
                                     "(No such file or directory)"));
    // An unreadable input fails alone: the others are converted.
    EXPECT_EQ(Run({(dir_ / "none.edl").string(), in, "--fps", "25"}), 1);
    EXPECT_THAT(err.str(), HasSubstr("none.edl: Sorry, Can't read the file. (No such file or directory)"));
    EXPECT_TRUE(fs::exists(dir_ / "a VORNELT.edl"));
}

// Before anything is written, an input whose output is another input of the run, or the
// output of an earlier input, is refused; the others are converted.
TEST_F(Convert, OutputsNeverOverwriteTheRunsInputsOrEachOther) {
    // The arguments (names in the test's folder; "--fps 25" is added), the exit status, the
    // outputs written, the inputs that keep their bytes.
    using Names = std::vector<std::string>;
    const std::tuple<Names, int, Names, Names> cases[] = {
        {{"a.edl", "a VORNELT.edl"}, 1, {"a VORNELT VORNELT.edl"}, {"a VORNELT.edl"}},
        {{"a.edl", "a.gvg.edl"}, 1, {"a VORNELT.edl"}, {}},
        {{"d1/x.edl", "d2/x.edl", "-o", "out"}, 1, {"out/x VORNELT.edl"}, {}},
        {{"a.edl", "b.edl", "-o", "out/"}, 0, {"out/a VORNELT.edl", "out/b VORNELT.edl"}, {}},
        {{"a.edl", "-o", "out/"}, 0, {"out/a VORNELT.edl"}, {}},
        {{"a.edl", "-o", "new/"}, 1, {}, {}},  // a folder that is not there
    };
    for (const auto& [names, status, written, untouched] : cases) {
        SCOPED_TRACE(names[1]);
        TearDown();
        SetUp();
        for (const char* name : {"a.edl", "a.gvg.edl", "b.edl", "d1/x.edl", "d2/x.edl"}) {
            fs::create_directories((dir_ / name).parent_path());
            Write(name, kList);
        }
        Write("a VORNELT.edl", "an input");
        fs::create_directories(dir_ / "out");
        std::vector<std::string> args = {"--fps", "25"};
        for (const std::string& a : names)
            args.push_back(a[0] == '-' ? a : (dir_ / a).string() + (a.back() == '/' ? "/" : ""));
        EXPECT_EQ(Run(args), status) << err.str();
        for (const std::string& name : written) EXPECT_TRUE(fs::exists(dir_ / name)) << name;
        for (const std::string& name : untouched) EXPECT_EQ(testing::ReadBytes(dir_ / name), "an input") << name;
        EXPECT_EQ(err.str().find("vornelt-convert: ") != std::string::npos, status != 0) << err.str();
    }
}

// Many lists at once give what one job gives: the files, standard output, the messages in
// the order of the inputs and the exit status; with a list that cannot be read, one that
// cannot be saved and one refused before anything is written among them.
TEST_F(Convert, JobsGiveWhatOneJobGives) {
    std::vector<std::string> inputs;
    for (int k = 0; k < 24; ++k) {
        const std::string n = std::to_string(k);
        std::string list = "TITLE: L";
        list.append(n).append("\r\n001 AX V C 01:00:00:00 01:00:0").append(1, char('0' + k % 10));
        list.append(":01 00:00:10:00 00:00:15:00\r\n");
        inputs.push_back(Write(std::string("l").append(n).append(".edl"), list));
    }
    inputs[5] = (dir_ / "missing.edl").string();
    inputs[11] = (dir_ / "out" / "l3 VORNELT.edl").string();  // the output of l3.edl
    // The arguments after the inputs (each run writes into a folder of its own).
    const std::vector<std::vector<std::string>> variants = {
        {"--fps", "25", "--reel", "BL"}, {"--fps", "24", "-o", "-"}, {"--fps", "30", "--dry-run", "--report", "-"}};
    for (const auto& variant : variants) {
        std::string firstOut, firstErr;
        std::map<std::string, std::string> firstFiles;
        int firstStatus = -1;
        for (const char* jobs : {"1", "2", "5"}) {
            SCOPED_TRACE(variant.back() + " -j " + jobs);
            fs::remove_all(dir_ / "out");
            fs::create_directories(dir_ / "out" / "l17 VORNELT.edl");  // a folder: the save fails
            Write("out/l3 VORNELT.edl", "an input");
            std::vector<std::string> args = inputs;
            args.insert(args.end(), variant.begin(), variant.end());
            if (std::find(variant.begin(), variant.end(), "-o") == variant.end())
                args.insert(args.end(), {"-o", (dir_ / "out").string() + "/"});
            args.insert(args.end(), {"-j", jobs});
            const int status = Run(args);
            std::map<std::string, std::string> files;
            for (const auto& e : fs::directory_iterator(dir_ / "out"))
                if (e.is_regular_file()) files[e.path().filename().string()] = testing::ReadBytes(e.path());
            if (firstStatus < 0) {
                firstStatus = status, firstOut = out.str(), firstErr = err.str(), firstFiles = files;
                EXPECT_EQ(status, 1);
                EXPECT_THAT(err.str(), HasSubstr("missing.edl: Sorry, Can't read the file."));
                continue;
            }
            EXPECT_EQ(status, firstStatus);
            EXPECT_EQ(out.str(), firstOut);
            EXPECT_EQ(err.str(), firstErr);
            EXPECT_EQ(files, firstFiles);
        }
        if (variant[2] == "--reel") {
            EXPECT_EQ(firstFiles.size(), 22u);  // 24 less the missing, the refused and the unsaved, and
            EXPECT_EQ(firstFiles["l3 VORNELT.edl"], "an input");  // the input in the folder, untouched
            EXPECT_THAT(firstErr, HasSubstr("l17 VORNELT.edl: Unknown Error while saving the File."));
            EXPECT_LT(firstErr.find("missing.edl"), firstErr.find("l17 VORNELT.edl"));
        }
    }
}

// A batch stopped while its workers save leaves every list whole or not there, and no
// temporary file.
TEST_F(Convert, StopSignalsInABatchLeaveNoTemporaryFile) {
    std::vector<std::string> saved;
    for (uint32_t seed = 1; seed <= 4; ++seed) {
        const std::string list = bench::GenerateList({40000, false, bench::Shape::Mixed, seed});
        Write(std::string("l").append(std::to_string(seed)).append(".edl"), list);
        saved.push_back(vornelt::Convert(list, ConvertOptions{}).bytes);
    }
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        fs::remove_all(dir_ / "out");
        fs::create_directories(dir_ / "out");
        std::vector<std::string> args = {VORNELT_CONVERTER, "--fps", "25", "-j", "2", "-o", (dir_ / "out").string()};
        for (int k = 1; k <= 4; ++k)
            args.push_back((dir_ / std::string("l").append(std::to_string(k)).append(".edl")).string());
        std::vector<char*> argv;
        for (std::string& a : args) argv.push_back(a.data());
        argv.push_back(nullptr);
        pid_t pid = 0;
        ASSERT_EQ(::posix_spawn(&pid, VORNELT_CONVERTER, nullptr, nullptr, argv.data(), environ), 0);
        // The signal goes as soon as the converter writes a file in the folder.
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!testing::WritesInto(pid, dir_ / "out") && std::chrono::steady_clock::now() < until &&
               ::waitpid(pid, nullptr, WNOHANG) == 0) {
        }
        ::kill(pid, signal);
        ::waitpid(pid, nullptr, 0);
        for (const auto& e : fs::directory_iterator(dir_ / "out")) {
            const std::string name = e.path().filename().string();
            ASSERT_NE(name[0], '.') << name;
            const size_t k = size_t(name[1] - '1');
            EXPECT_TRUE(k < saved.size() && testing::ReadBytes(e.path()) == saved[k]) << name;
        }
    }
}

TEST_F(Convert, EdgesOfTheCommandLine) {
    const std::string in = Write("a.edl", kList);
    const std::string gvg = Write("g.edl", "LIST\r\n0001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n");
    // The arguments, the exit status, what the error stream says.
    const std::tuple<std::vector<std::string>, int, const char*> cases[] = {
        {{in}, 2, "--fps is required"},
        {{in, "--fps", "26"},
         2,
         "frame rate 26: Vornelt reads 23.976, 24, 25, 29.97, 29.97df, 30, 48, 50, 59.94, 59.94df or 60 frames per "
         "second"},
        {{in, "--fps", "29.97 df"}, 2, "frame rate 29.97 df: Vornelt reads"},
        {{"--fps", "25"}, 2, "INPUT is required"},
        {{in, "--fp", "25"}, 2, "unknown option --fp"},
        {{in, "--fps", "25", "--mirr"}, 2, "unknown option --mirr"},  // no abbreviations
        {{in, "--fps", "25", "--wipe-names", "x"}, 2, "--wipe-names: x not in {fcp,smpte}"},
        {{"-x.edl", "--fps", "25"}, 2, "goes after \"--\""},
        {{in, "--fps", "25", "--title", "T\r\n099  EVIL"}, 2, "title: one line of text, without control characters"},
        {{in, "--fps", "25", "--movie", "m\x7Fov"}, 2, "movie: one line of text, without control characters"},
        {{"/dev/null", "--fps", "25"}, 2, "not a regular file: name the file its list is saved in"},
        {{in, in, "--fps", "25", "-o", (dir_ / "a.edl").string()}, 2, "-o names an existing folder"},
        {{in, "--fps", "25", "--reel", "A-1"}, 2, "reel \"A-1\": letters and digits only, at most 8 characters"},
        {{in, "--fps", "25", "--reel", "ABCDEFGHI"}, 2, "reel \"ABCDEFGHI\": letters"},
        {{in, "--fps", "25", "--reel", ""}, 2, "reel \"\": letters"},
        {{gvg, "--fps", "25", "--reel", "MASTER1"}, 2, "reel \"MASTER1\": a GVG list takes at most 6 characters"},
        {{gvg, "--fps", "25", "--reel", "MAST01", "-o", "-"}, 0, ""},
        {{in, "--fps", "25", "--reel", "MASTER01", "-o", "-"}, 0, ""},
        {{in, "--fps", "25", "--reel", "bl", "-o", "-"}, 0, "note: BL is a reserved Reel-Name! (used as given)"},
        {{"/dev/null", "--fps", "25", "-o", "-"}, 0, ""},  // an empty list, from a device
    };
    for (const auto& [args, status, says] : cases) {
        EXPECT_EQ(Run(args), status) << args.back();
        EXPECT_THAT(err.str(), HasSubstr(says));
    }
    EXPECT_FALSE(fs::exists(dir_ / "a VORNELT.edl") || fs::exists(dir_ / "g VORNELT.edl"));
    Run({in});
    EXPECT_THAT(err.str(), HasSubstr("Usage"));

    // Help that cannot be written is a failure.
    std::ostringstream full;
    full.setstate(std::ios::badbit);
    const char* help[] = {"vornelt-convert", "--help"};
    EXPECT_EQ(ConvertMain(2, help, full, err), 1);
}

// A drop-frame list at a drop-frame rate says so in its new list and counts its frames in drop
// frame: event 5's key runs over 00:01:00, where two frame numbers are skipped, and its out
// points are written as the list writes its timecodes. Read non-drop, the same key ends two
// frames sooner. Every rate of the table is a name --fps takes.
TEST_F(Convert, DropFrameListsSayDropFrameAndCountIt) {
    std::string list = testing::TestData("rates_2997df.edl");
    const std::string semicolons = Write("semicolons.edl", list);
    std::replace(list.begin(), list.end(), ';', ':');
    const std::string colons = Write("colons.edl", list);
    // The list, the rate, the second line of the new list, the key's line.
    const std::tuple<std::string, const char*, const char*, const char*> cases[] = {
        {semicolons, "29.97df", "FCM: DROP FRAME",
         "005 TAPE5    V        K        05:00:00;00 05:00:01;08 00:00:59;06 00:01:00;16"},
        {colons, "29.97DF", "FCM: DROP FRAME",
         "005 TAPE5    V        K        05:00:00:00 05:00:01:08 00:00:59:06 00:01:00:16"},
        {colons, "29.97", "FCM: NON-DROP FRAME",
         "005 TAPE5    V        K        05:00:00:00 05:00:01:08 00:00:59:06 00:01:00:14"},
        {colons, "30", "FCM: NON-DROP FRAME",
         "005 TAPE5    V        K        05:00:00:00 05:00:01:08 00:00:59:06 00:01:00:14"},
    };
    for (const auto& [input, fps, fcm, key] : cases) {
        SCOPED_TRACE(fps);
        ASSERT_EQ(Run({input, "--fps", fps, "--no-mirror", "-o", "-"}), 0) << err.str();
        EXPECT_THAT(out.str(), HasSubstr(std::string("\r\n") + fcm + "\r\n"));
        EXPECT_THAT(out.str(), HasSubstr(std::string("\r\n") + key + "\r\n"));
    }
    for (const FrameRate rate : FrameRate::All()) {
        ASSERT_EQ(Run({colons, "--fps", std::string(rate.Name()), "-o", "-"}), 0) << rate.Name();
        EXPECT_THAT(out.str(), HasSubstr(rate.DropFrame() ? "\r\nFCM: DROP FRAME\r\n" : "\r\nFCM: NON-DROP FRAME\r\n"));
    }
}

// Every real list of the corpus converts and is reported on under the default options and
// under each single option turned the other way, without a crash or a hang.
TEST_F(Convert, EveryCorpusListUnderEveryOption) {
    const fs::path corpus = fs::path(VORNELT_SHARED_DIR) / "corpus";
    if (!fs::exists(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
    const std::vector<std::vector<std::string>> variants = {
        {},
        {"--no-mirror"},
        {"--no-keys"},
        {"--no-audio"},
        {"--keep-freeze-frames"},
        {"--keep-speed-changes"},
        {"--keep-wipes"},
        {"--keys-to-dissolves"},
        {"--no-comments"},
        {"--wipe-names", "fcp"},
        {"--reel", "MAST01", "--title", "T", "--movie", "m.mov"},
    };
    int lists = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (entry.path().extension() != ".edl") continue;
        ++lists;
        for (const auto& variant : variants) {
            const std::string report = (dir_ / "report.json").string();
            std::vector<std::string> args = {entry.path().string(), "--fps", "25", "-o", "-", "--report", report,
                                             "--report-format",     "json"};
            args.insert(args.end(), variant.begin(), variant.end());
            EXPECT_EQ(Run(args), 0) << entry.path() << " " << err.str();
            EXPECT_NE(out.str().find("\r\n"), std::string::npos);
            EXPECT_NE(testing::ReadBytes(report).find("\"items\""), std::string::npos) << entry.path();
        }
    }
    EXPECT_GT(lists, 10);
}

}  // namespace
}  // namespace vornelt
