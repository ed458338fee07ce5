// The switches: each carries one option into the working copy, deciding from the read
// tables only, so that turning an option off gives back what was read.
#include <algorithm>
#include <vector>

#include "passes/passes.hpp"
#include "passes/rows.hpp"
#include "platform/platform.hpp"
#include "text/text.hpp"

namespace vornelt {

namespace {

bool Contains(std::string_view field, std::string_view letter) { return InStr(field, letter) > 0; }

// What the track field holds: a "V", and an "A" or a digit 1 to 4, anywhere, in any case.
struct Tracks {
    bool video = false;
    bool audio = false;
};

Tracks TracksOf(std::string_view mode) {
    Tracks t;
    if (IsAscii(mode)) {
        for (const char c : mode) {
            t.video |= c == 'V' || c == 'v';
            t.audio |= c == 'A' || c == 'a' || (c >= '1' && c <= '4');
        }
        return t;
    }
    t.video = Contains(mode, "V");
    t.audio =
        Contains(mode, "A") || Contains(mode, "1") || Contains(mode, "2") || Contains(mode, "3") || Contains(mode, "4");
    return t;
}

// The tracks of every row with a read track field, worked out again after a load.
const Document::ReadTracks& ReadTracksOf(Document& m) {
    Document::ReadTracks& t = m.readTracks;
    if (t.version == m.readOrigMode.Changes().Now() && !t.rows.empty()) return t;
    t.rows.clear();
    t.tracks.clear();
    t.modes.clear();
    t.shortModes.clear();
    t.rows.reserve(m.readOrigMode.Count());
    t.tracks.reserve(m.readOrigMode.Count());
    t.modes.reserve(m.readOrigMode.Count());
    t.shortModes.reserve(m.readOrigMode.Count());
    m.readOrigMode.ForEachEntry([&t](size_t i, std::string_view mode) {
        const auto [video, audio] = TracksOf(mode);
        t.rows.push_back(uint32_t(i));
        t.modes.push_back(mode);
        Document::ReadTracks::ShortMode& s = t.shortModes.emplace_back();
        if (mode.size() <= s.bytes.size()) {
            std::copy(mode.begin(), mode.end(), s.bytes.begin());
            s.size = uint8_t(mode.size());
        }
        t.tracks.push_back(
            uint8_t((video ? Document::ReadTracks::kVideo : 0) | (audio ? Document::ReadTracks::kAudio : 0)));
    });
    t.version = m.readOrigMode.Changes().Now();
    return t;
}

int32_t EventOf(const Document& m, size_t row) {
    return row < m.readOrigEventNumberInt.size() ? m.readOrigEventNumberInt[row] : -1;
}

}  // namespace

void AllAudioOnOff(Document& m, Platform& platform) {
    const size_t rows = passes_detail::RowsWithin(
        m.maxZeilen, {m.readOrigMode.size(), m.copyMode.size(), m.displayThisAudioEventLine.size()});

    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Audio);
    report.clear();
    // The copy's mode is set only where it is not what it is to become. Both tables refer to
    // the same text of the list until a mode is changed, so the same place means the same mode.
    const auto setMode = [&m](size_t i, std::string_view mode) {
        const std::string_view now = m.copyMode(i);
        if ((now.data() != mode.data() || now.size() != mode.size()) && now != mode) m.copyMode.set(i, mode);
    };
    // A row without any track (every line that is no event) counts as audio, shown while audio
    // is kept, and its copy has no mode.
    std::vector<uint32_t> strayModes;
    m.copyMode.ForEachRowNotIn(m.readOrigMode, [&](size_t i) {
        if (i < rows) strayModes.push_back(uint32_t(i));
    });
    for (const uint32_t i : strayModes) m.copyMode.set(i, {});
    const Document::ReadTracks& tracks = ReadTracksOf(m);
    // Every row first as a row without a track, in one go; then the rows with one.
    const auto display = m.displayThisAudioEventLine.begin();
    std::fill(display, display + ptrdiff_t(rows), m.boolA1234);
    for (size_t k = 0; k < tracks.rows.size() && tracks.rows[k] < rows; ++k) {
        const size_t i = tracks.rows[k];
        platform.Yield();
        const std::string_view mode = tracks.modes[k];
        const bool video = (tracks.tracks[k] & Document::ReadTracks::kVideo) != 0;
        const bool audio = (tracks.tracks[k] & Document::ReadTracks::kAudio) != 0;
        // A row with a "V" is shown whatever the switch says: it keeps its video. A row
        // without any audio mark but with a "V" is pure video and keeps its mode as well (it
        // was shown since the load, which shows every row).
        m.displayThisAudioEventLine[i] = m.boolA1234 || video;
        if (m.boolA1234) {
            if (audio || !video) setMode(i, mode);
        } else if (video && audio) {
            setMode(i, "V");
            if (m.report.recording)
                report.push_back(
                    {ChangeKind::AudioLeftOut, int32_t(i), EventOf(m, i), 0, std::string(tracks.Mode(k)), "V"});
        } else if (!video) {
            // Whatever holds no "V" counts as audio, "B" and "NONE" as well.
            setMode(i, mode);
            if (m.report.recording)
                report.push_back(
                    {ChangeKind::AudioLeftOut, int32_t(i), EventOf(m, i), 0, std::string(tracks.Mode(k)), {}});
        }
    }
}

void AllKeysOnOff(Document& m, Platform& platform) {
    const size_t rows = passes_detail::RowsWithin(
        m.maxZeilen, {m.readOrigTrans.size(), m.copyTrans.size(), m.displayThisKeyEventLine.size()});

    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Keys);
    report.clear();
    // Keys shown as keys: whatever the dissolve pass made of them is undone here.
    if (m.boolV2) m.report.Section(ReportSection::KeysToDissolve).clear();
    for (size_t i = 0; i < rows; ++i) {
        platform.Yield();
        const std::string_view trans = m.readOrigTrans(i);
        if (!BeginsCI(trans, "K")) continue;
        if (m.boolV2) {
            m.copyTrans.set(i, "K");
            m.displayThisKeyEventLine[i] = true;
        } else {
            m.copyTrans.set(i, trans);
            m.displayThisKeyEventLine[i] = false;
            if (m.report.recording)
                report.push_back({ChangeKind::KeyTrackLeftOut,
                                  int32_t(i),
                                  EventOf(m, i),
                                  0,
                                  std::string(trans) + (m.readOrigIsBTrack.Get(int64_t(i)).empty() ? "" : " B"),
                                  {}});
        }
    }
}

namespace {

// Rows whose read transition `isEffect` names become dissolves while `toDissolve` holds, and
// get their read text back otherwise.
template <typename IsEffect>
void EffectsToDissolve(Document& m, Platform& platform, bool toDissolve, ChangeKind kind, IsEffect isEffect) {
    const size_t rows = passes_detail::RowsWithin(m.maxZeilen, {m.readOrigTrans.size(), m.copyTrans.size()});

    std::vector<ChangeItem>& report =
        m.report.Section(kind == ChangeKind::WipeToDissolve ? ReportSection::Wipes : ReportSection::KeysToDissolve);
    report.clear();
    for (size_t i = 0; i < rows; ++i) {
        platform.Yield();
        const std::string_view trans = m.readOrigTrans(i);
        if (!isEffect(trans)) continue;
        m.copyTrans.set(i, toDissolve ? std::string_view("D") : trans);
        if (toDissolve && m.report.recording)
            report.push_back({kind, int32_t(i), EventOf(m, i), 0, std::string(trans),
                              std::string(m.readOrigTransDur.Get(int64_t(i)))});
    }
}

}  // namespace

void AllKeysToDissolve(Document& m, Platform& platform) {
    EffectsToDissolve(m, platform, m.boolKeyToDissolve, ChangeKind::KeyToDissolve,
                      [](std::string_view trans) { return BeginsCI(trans, "K"); });
}

void AllWipesToDissolve(Document& m, Platform& platform) {
    // A "W" anywhere in the field marks a wipe: "SW" too.
    EffectsToDissolve(m, platform, m.boolTransToDissolve, ChangeKind::WipeToDissolve,
                      [](std::string_view trans) { return Contains(trans, "W"); });
}

}  // namespace vornelt
