// The documents that repeat the options say what the options table says, and no option's
// name spreads beyond its homes.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sstream>

#include "cli/convert.hpp"
#include "core/fixtures.hpp"
#include "vornelt/frame_rate.hpp"
#include "vornelt/options.hpp"

namespace vornelt {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;

std::string Source(const std::string& path) { return testing::ReadBytes(fs::path(VORNELT_SOURCE_DIR) / path); }

// The manual's table of the options, as the options table gives it.
std::string ManualTable() {
    std::string out =
        "| Converter | Python | Default | What it does |\n"
        "|---|---|---|---|\n";
    for (const Option& o : kOptions) {
        std::string flags = "`--" + std::string(o.name) + "`";
        std::string fallback = "none";
        switch (o.kind) {
            case Option::Kind::Switch:
                flags += ", `--" + std::string(o.offName) + "`";
                fallback = o.on ? "on" : "off";
                break;
            case Option::Kind::Choice:
                flags = "`--" + std::string(o.name) + " {";
                for (size_t k = 0; k < o.choices.size(); ++k) flags.append(k ? "," : "").append(o.choices[k]);
                flags += "}`";
                fallback = "`" + std::string(o.choices[size_t(o.defaultChoice)]) + "`";
                break;
            case Option::Kind::Text: flags = "`--" + std::string(o.name) + " " + std::string(o.metavar) + "`"; break;
        }
        out += "| " + flags + " | `" + KeywordOf(o) + "` | " + fallback + " | " + std::string(o.help) + " |\n";
    }
    return out;
}

TEST(Docs, ReadmeAndManualSayWhatTheOptionsTableSays) {
    std::ostringstream help, err;
    const char* argv[] = {"vornelt-convert", "--help"};
    ASSERT_EQ(ConvertMain(2, argv, help, err), 0);
    EXPECT_THAT(Source("README.md"), HasSubstr("```\n" + help.str() + "```\n"))
        << "README's usage block is the converter's --help:\n"
        << help.str();
    EXPECT_THAT(Source("docs/manual.md"), HasSubstr(ManualTable())) << "the manual's table of options:\n"
                                                                    << ManualTable();
}

// The manual's table of the rates, as the rate table gives it.
std::string ManualRates() {
    std::string out =
        "| In the frame-rate question | `--fps`, Python's `fps` | Timecode |\n"
        "|---|---|---|\n";
    for (const FrameRate rate : FrameRate::All()) {
        out.append("| ").append(rate.Label()).append(" | `").append(rate.Name()).append("` | ");
        out.append(std::to_string(rate.TimecodeFps())).append(" frame numbers a second");
        if (rate.DropFrame()) {
            out.append(", drop frame: `00` ").append(rate.Dropped() == 2 ? "and" : "to").append(" `0");
            out.append(std::to_string(rate.Dropped() - 1)).append("` skipped at each minute but every tenth");
        }
        out.append(" |\n");
    }
    return out;
}

TEST(Docs, TheManualSaysWhatTheRateTableSays) {
    EXPECT_THAT(Source("docs/manual.md"), HasSubstr(ManualRates())) << "the manual's table of rates:\n"
                                                                    << ManualRates();
}

// "keys-to-dissolves" as the code may spell it: keys-to-dissolves, keys_to_dissolves, keysToDissolves.
std::vector<std::string> Spellings(std::string_view name) {
    std::string snake(name), camel;
    for (char& c : snake)
        if (c == '-') c = '_';
    bool upper = false;
    for (const char c : name) {
        if (c == '-') {
            upper = true;
            continue;
        }
        camel.push_back(upper ? char(c - 'a' + 'A') : c);
        upper = false;
    }
    return {std::string(name), snake, camel};
}

TEST(Docs, AnOptionsNameStandsInAtMostThreeFiles) {
    // The table, its switch or writer rule, the window control: the names of one word are
    // words of the prose too, and are left out.
    for (const Option& o : kOptions) {
        if (o.name.find('-') == std::string_view::npos) continue;
        std::set<std::string> files;
        for (const char* folder : {"src", "include"})
            for (const auto& e : fs::recursive_directory_iterator(fs::path(VORNELT_SOURCE_DIR) / folder)) {
                if (!e.is_regular_file()) continue;
                const std::string text = testing::ReadBytes(e.path());
                for (const std::string& spelling : Spellings(o.name))
                    if (text.find(spelling) != std::string::npos) files.insert(e.path().string());
            }
        EXPECT_LE(files.size(), 3u) << o.name << " stands in " << ::testing::PrintToString(files);
    }
}

}  // namespace
}  // namespace vornelt
