// Nothing unsaid: over every list of the corpus, under the options one by one, each event line
// of the list as read either stands in the new list with the same fields, or the report names
// its row (or the whole list) with a kind that explains what became of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "fixtures.hpp"
#include "session/convert.hpp"
#include "session/report.hpp"
#include "writer/writer.hpp"

namespace vornelt {
namespace {

namespace fs = std::filesystem;
using K = ChangeKind;

// The words of a line.
std::vector<std::string> Words(std::string_view line) {
    std::vector<std::string> words;
    std::istringstream in{std::string(line)};
    for (std::string w; in >> w;) words.push_back(w);
    return words;
}

// An event line in its parts: number, reel, mode, transition, what stands between the
// transition and the timecodes (B mark, duration), and the four timecodes.
struct Parts {
    std::string number, reel, mode, trans, middle;
    std::vector<std::string> tc;
};

Parts Written(std::string_view line) {
    const std::vector<std::string> w = Words(line);
    Parts p;
    if (w.size() < 8) return p;
    p.number = w[0];
    p.reel = w[1];
    p.mode = w[2];
    p.trans = w[3];
    for (size_t k = 4; k + 4 < w.size(); ++k) p.middle += (p.middle.empty() ? "" : " ") + w[k];
    p.tc.assign(w.end() - 4, w.end());
    return p;
}

// The kinds that explain a difference, on the row or for the whole list.
struct Explained {
    std::map<int32_t, std::set<K>> rows;
    std::set<K> list;
    std::set<std::string> longReels;  // a reel too long is named once, at its first line
    bool Has(int32_t row, std::initializer_list<K> kinds) const {
        for (const K k : kinds)
            if (list.count(k) || (rows.count(row) && rows.at(row).count(k))) return true;
        return false;
    }
};

// Why an event row and its line differ; empty when the report explains it.
std::string Unexplained(const Document& m, int32_t row, const Explained& e) {
    const PlannedLine* line = m.plan.EventLineOf(uint32_t(row));
    if (!line) return e.Has(row, {K::AudioLeftOut, K::KeyTrackLeftOut, K::EventOnHeaderLine}) ? "" : "left out";
    const Parts out = Written(PlannedText(m, line, line + 1));
    if (out.tc.size() != 4) return "written without its timecodes";
    const auto same = [](std::string_view a, std::string_view b) { return Trim(a) == Trim(b); };
    if (out.number.find('*') != std::string::npos ? !e.Has(row, {K::KeyToDissolve})
                                                  : Val(out.number) != Val(m.readOrigEventNumberStr.Get(row)))
        return "event number";
    if (!same(out.reel, m.readOrigReelNames.Get(row)) &&
        !e.longReels.count(std::string(Trim(m.readOrigReelNames.Get(row)))) &&
        !e.Has(row, {K::ReelRenamed, K::MasterReelApplied, K::MirrorList}))
        return "reel";
    if (!same(out.mode, m.readOrigMode.Get(row)) && !e.Has(row, {K::AudioLeftOut})) return "mode";
    if (!same(out.trans, m.readOrigTrans.Get(row)) && !e.Has(row, {K::WipeToDissolve, K::KeyToDissolve}))
        return "transition " + std::string(m.readOrigTrans.Get(row)) + " written " + out.trans;
    const std::vector<std::string> middle =
        Words(std::string(m.readOrigIsBTrack.Get(row)) + " " + std::string(m.readOrigTransDur.Get(row)));
    std::string read;
    for (const std::string& w : middle) read += (read.empty() ? "" : " ") + w;
    if (read != out.middle) return "B mark or duration";
    const std::string_view tc[] = {m.readOrigSourceInTC.Get(row), m.readOrigSourceOutTC.Get(row),
                                   m.readOrigRecInTC.Get(row), m.readOrigRecOutTC.Get(row)};
    if (out.tc[0] != tc[0] && !e.Has(row, {K::MirrorList})) return "source in";
    if (out.tc[1] != tc[1] && !e.Has(row, {K::MirrorList, K::KeyOutPoint})) return "source out";
    if (out.tc[2] != tc[2]) return "record in";
    if (out.tc[3] != tc[3] && !e.Has(row, {K::KeyOutPoint})) return "record out";
    return {};
}

TEST(Losses, EveryLostOrChangedEventLineIsNamedInTheReport) {
    const fs::path corpus = fs::path(VORNELT_SHARED_DIR) / "corpus";
    if (!fs::exists(corpus)) GTEST_SKIP() << "no corpus at " << corpus;
    // The options one by one, as the acceptance cases and an editor turn them.
    const std::pair<const char*, void (*)(ConvertOptions&)> sets[] = {
        {"defaults", [](ConvertOptions&) {}},
        {"no mirror", [](ConvertOptions& o) { o.mirror = false; }},
        {"no keys", [](ConvertOptions& o) { o.keys = false; }},
        {"no audio", [](ConvertOptions& o) { o.audio = false; }},
        {"motion kept", [](ConvertOptions& o) { o.removeFreezeFrames = o.removeSpeedChanges = false; }},
        {"effects kept", [](ConvertOptions& o) { o.wipesToDissolves = false; }},
        {"keys to dissolves", [](ConvertOptions& o) { o.keysToDissolves = true; }},
        {"master reel", [](ConvertOptions& o) { o.reel = "MAST01"; }},
        {"black as master", [](ConvertOptions& o) { o.reel = "BL"; }},
        {"30 fps, no mirror",
         [](ConvertOptions& o) {
             o.fps = *FrameRate::Named("30");
             o.mirror = false;
         }},
        {"29.97 drop frame, no mirror",
         [](ConvertOptions& o) {
             o.fps = *FrameRate::Named("29.97df");
             o.mirror = false;
         }},
    };
    int lists = 0, events = 0;
    for (const auto& entry : fs::directory_iterator(corpus)) {
        if (entry.path().extension() != ".edl") continue;
        ++lists;
        const std::string bytes = testing::ReadBytes(entry.path());
        for (const auto& [name, set] : sets) {
            SCOPED_TRACE(entry.path().filename().string() + ", " + name);
            ConvertOptions options;
            set(options);
            QuietPlatform platform;
            Session s(platform);
            ErrorStatus error;
            if (!ConvertInSession(s, std::string(bytes), options, entry.path().filename().string(), &error)) {
                EXPECT_EQ(error.outcome, ErrorStatus::Outcome::BadOption) << error.details;
                continue;
            }
            const Document& m = s.document;
            Explained explained;
            for (const ReportEntry& entry : ViewReport(m).entries) {
                if (entry.kind == K::ReelTooLong)
                    explained.longReels.insert(std::string(Trim(m.readOrigReelNames.Get(entry.row))));
                if (entry.row < 0)
                    explained.list.insert(entry.kind);
                else
                    explained.rows[entry.row].insert(entry.kind);
            }
            for (int32_t row = 0; row <= m.maxZeilen; ++row) {
                if (m.readOrigEventNumberStr.Get(row).empty() || m.readOrigMode.Get(row).empty()) continue;
                ++events;
                const std::string why = Unexplained(m, row, explained);
                EXPECT_TRUE(why.empty()) << "line " << row + 1 << " \"" << m.readOrigCompleteLine.Get(row)
                                         << "\": " << why << " not named in the report";
            }
        }
    }
    EXPECT_GT(lists * events, 0);
}

}  // namespace
}  // namespace vornelt
