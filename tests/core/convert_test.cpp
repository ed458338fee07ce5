// The converter's contract: options, exit statuses, where the list goes; and every list of
// the corpus under every option.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "cli/convert.hpp"
#include "fixtures.hpp"

namespace vornelt {
namespace {

namespace fs = std::filesystem;

class Convert : public testing::Fixture {
protected:
    std::string Write(const std::string& name, const std::string& text) { return WriteFile(name, text).AbsolutePath(); }
    static std::string Read(const fs::path& p) { return testing::ReadBytes(p); }
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

const char* kList = "TITLE: Test\r\nFCM: NON-DROP FRAME\r\n\r\n001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n";

TEST_F(Convert, BadOptionsPrintTheUsageAndWriteNothing) {
    const std::string in = Write("a.edl", kList);
    const std::vector<std::vector<std::string>> bad = {
        {in},                                   // no rate
        {in, "--fps", "26"},                    // no such rate
        {in, "--fps", "25", "--mirr"},          // abbreviated
        {in, "--fps", "25", "--wipe-names", "x"},
        {"--fps", "25"},                        // no input
        {in, "--fps", "25", "--reel", "A-1"},   // not letters and digits
        {in, "--fps", "25", "--reel", "ABCDEFGHI"},  // nine
        {in, "--fps", "25", "--reel", ""},
    };
    for (const auto& args : bad) {
        EXPECT_EQ(Run(args), 2) << args.size();
        EXPECT_FALSE(err.str().empty());
        EXPECT_FALSE(fs::exists(dir_ / "a VORNELT.edl"));
    }
    Run({in});
    EXPECT_NE(err.str().find("Usage"), std::string::npos);
}

TEST_F(Convert, WritesTheSuggestedNameBesideTheInputByDefault) {
    const std::string in = Write("Reel1.v2.edl", kList);
    ASSERT_EQ(Run({in, "--fps", "25"}), 0) << err.str();
    const std::string saved = Read(dir_ / "Reel1 VORNELT.edl");
    EXPECT_FALSE(saved.empty());
    EXPECT_EQ(saved.find('\n'), saved.find("\r\n") + 1);  // lines end in CR LF
}

TEST_F(Convert, OutputToAFileAFolderOrStandardOutput) {
    const std::string in = Write("a.edl", kList);
    ASSERT_EQ(Run({in, "--fps", "25", "-o", (dir_ / "x.edl").string()}), 0);
    const std::string file = Read(dir_ / "x.edl");
    ASSERT_EQ(Run({in, "--fps", "25", "-o", "-"}), 0);
    EXPECT_EQ(out.str(), file);  // the same bytes as the file
    fs::create_directories(dir_ / "out");
    const std::string in2 = Write("b.edl", kList);
    ASSERT_EQ(Run({in, in2, "--fps", "25", "-o", (dir_ / "out").string()}), 0);
    EXPECT_EQ(Read(dir_ / "out" / "a VORNELT.edl"), file);
    EXPECT_EQ(Read(dir_ / "out" / "b VORNELT.edl"), file);
    EXPECT_EQ(Run({in, in2, "--fps", "25", "-o", (dir_ / "nofolder").string()}), 2);
}

TEST_F(Convert, AnUnreadableInputFailsAloneAndTheOthersAreConverted) {
    const std::string good = Write("good.edl", kList);
    const std::string missing = (dir_ / "missing.edl").string();
    EXPECT_EQ(Run({missing, good, "--fps", "24"}), 1);
    EXPECT_NE(err.str().find("missing.edl: Sorry, Can't read the file."), std::string::npos);
    EXPECT_TRUE(fs::exists(dir_ / "good VORNELT.edl"));
}

TEST_F(Convert, AFailedSaveSaysSoAndLeavesTheEarlierFileWhole) {
    const std::string in = Write("a.edl", kList);
    EXPECT_EQ(Run({in, "--fps", "25", "-o", (dir_ / "no" / "such" / "x.edl").string()}), 1);
    EXPECT_NE(err.str().find("Unknown Error while saving the File.\n\nPlease try again."), std::string::npos) << err.str();
}

TEST_F(Convert, ALongReelIsRefusedForAGvgListOnly) {
    const std::string gvg = Write("g.edl", "LIST\r\n0001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n");
    EXPECT_EQ(Run({gvg, "--fps", "25", "--reel", "MASTER1"}), 2);
    EXPECT_FALSE(fs::exists(dir_ / "g VORNELT.edl"));
    EXPECT_EQ(Run({gvg, "--fps", "25", "--reel", "MAST01"}), 0) << err.str();
    const std::string cmx = Write("c.edl", kList);
    EXPECT_EQ(Run({cmx, "--fps", "25", "--reel", "MASTER01"}), 0) << err.str();
}

TEST_F(Convert, AReservedReelIsUsedWithANote) {
    const std::string in = Write("a.edl", kList);
    EXPECT_EQ(Run({in, "--fps", "25", "--reel", "bl"}), 0);
    EXPECT_NE(err.str().find("BL"), std::string::npos);
}

// Every real list of the corpus converts under the default options and under each single
// option turned the other way, without a crash or a hang.
TEST_F(Convert, EveryCorpusListUnderEveryOption) {
    const fs::path corpus = fs::path(VORNELT_SHARED_DIR) / "corpus";
    if (!fs::exists(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
    const std::vector<std::vector<std::string>> variants = {
        {},           {"--no-mirror"},    {"--no-keys"},          {"--no-audio"},         {"--keep-freeze-frames"},
        {"--keep-speed-changes"},         {"--keep-wipes"},       {"--keys-to-dissolves"}, {"--no-comments"},
        {"--wipe-names", "fcp"},          {"--reel", "MAST01", "--title", "T", "--movie", "m.mov"},
    };
    int lists = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (entry.path().extension() != ".edl") continue;
        ++lists;
        for (const auto& variant : variants) {
            std::vector<std::string> args = {entry.path().string(), "--fps", "25", "-o", "-"};
            args.insert(args.end(), variant.begin(), variant.end());
            EXPECT_EQ(Run(args), 0) << entry.path() << " " << err.str();
            EXPECT_NE(out.str().find("\r\n"), std::string::npos);
        }
    }
    EXPECT_GT(lists, 10);
}

}  // namespace
}  // namespace vornelt
