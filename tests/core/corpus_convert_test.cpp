// Every real list of the corpus converts under the default options and under each single
// option turned the other way, without a crash or a hang.
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "cli/convert.hpp"

namespace vornelt {
namespace {

namespace fs = std::filesystem;

TEST(CorpusConversion, EveryListUnderEveryOption) {
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
            std::vector<std::string> args = {"vornelt-convert", entry.path().string(), "--fps", "25", "-o", "-"};
            args.insert(args.end(), variant.begin(), variant.end());
            std::vector<const char*> argv;
            for (auto& a : args) argv.push_back(a.c_str());
            std::ostringstream out, err;
            EXPECT_EQ(ConvertMain(int(argv.size()), argv.data(), out, err), 0) << entry.path() << " " << err.str();
            EXPECT_NE(out.str().find("\r\n"), std::string::npos);
        }
    }
    EXPECT_GT(lists, 10);
}

}  // namespace
}  // namespace vornelt
