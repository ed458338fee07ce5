#include "reader/reader.hpp"

#include <cstring>
#include <optional>

#include "document/document.hpp"
#include "document/timecode.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"
#include "reader/row_check.hpp"
#include "text/text.hpp"

namespace vornelt {

namespace {

// Every line end (CR, LF, CR LF) becomes CR; then every control character but CR is
// deleted, not replaced: a tab between two fields runs them together. One pass, in place,
// with the same result as the line ends first and the deletions after.
//
// The text between control characters is moved as a whole, and found eight bytes at a time.
void NormaliseText(std::string& s) {
    char* p = s.data();
    const size_t n = s.size();
    // The first control character at or after r, or n.
    const auto nextControl = [p, n](size_t r) {
        for (; r + 8 <= n; r += 8) {
            uint64_t x;
            std::memcpy(&x, p + r, 8);
            // A byte below 32 sets its high bit here (and maybe those above it, so the bytes
            // of the word are looked at one by one).
            if (((x - 0x2020202020202020ull) & ~x & 0x8080808080808080ull) != 0) break;
        }
        while (r < n && static_cast<unsigned char>(p[r]) >= 32) ++r;
        return r;
    };
    size_t w = 0;
    for (size_t r = 0; r < n;) {
        const size_t k = nextControl(r);
        if (w != r) std::memmove(p + w, p + r, k - r);
        w += k - r;
        r = k;
        if (r == n) break;
        const char c = p[r++];
        if (c == '\r') {
            p[w++] = '\r';
            if (r < n && p[r] == '\n') ++r;
        } else if (c == '\n') {
            p[w++] = '\r';
        }
    }
    s.resize(w);
}

// What one line gives: four timecodes and the tokens of an event, or nothing.
struct EventFields {
    std::string_view recOut, recIn, sourceOut, sourceIn;
    std::string_view number, reel, mode, trans, transDur, bTrack;
};

// Cuts counted in characters; on an ASCII line a character is a byte.
struct Cutter {
    bool ascii;
    bool dropFrame;  // a drop-frame rate: ";" before the frames is a timecode's too
    int64_t Length(std::string_view s) const { return ascii ? int64_t(s.size()) : Len(s); }
    std::string_view RightPart(std::string_view s, int64_t n) const {
        if (!ascii) return Right(s, n);
        return n >= int64_t(s.size()) ? s : s.substr(s.size() - size_t(n));
    }
    std::string_view LeftPart(std::string_view s, int64_t n) const {
        if (!ascii) return Left(s, n);
        if (n <= 0) return {};
        return s.substr(0, size_t(n));
    }
    std::string_view MidPart(std::string_view s, int64_t start) const {
        if (!ascii) return Mid(s, start);
        return size_t(start - 1) >= s.size() ? std::string_view() : s.substr(size_t(start - 1));
    }
    int64_t FirstBlank(std::string_view s) const {
        if (ascii) {
            size_t p = s.find(' ');
            return p == std::string_view::npos ? 0 : int64_t(p) + 1;
        }
        return InStr(s, " ");
    }
    // A candidate of exactly 11 characters with colons at positions 3, 6 and 9; at a drop-frame
    // rate a semicolon at position 9 will do.
    bool IsTimecode(std::string_view c) const {
        if (ascii) return c.size() == 11 && (c[8] == ':' || (dropFrame && c[8] == ';')) && c[5] == ':' && c[2] == ':';
        return Len(c) == 11 && (InStr(9, c, ":") == 9 || (dropFrame && InStr(9, c, ";") == 9)) &&
               InStr(6, c, ":") == 6 && InStr(3, c, ":") == 3;
    }
    // Takes a token off the front of s: up to the first blank, trimmed; s loses as many
    // characters as the token has and is trimmed. Without a blank the token is empty.
    std::string_view TakeToken(std::string_view& s) const {
        const int64_t p = FirstBlank(s);
        std::string_view token = Trim(LeftPart(s, p));
        s = Trim(MidPart(s, Length(token) + 1));
        return token;
    }
};

// The event line grammar, read from the right: four timecodes, then the tokens from the
// left. `d` is the trimmed line and ends as the scratch text of the row.
bool ReadEventLine(std::string_view& d, const Cutter& cut, EventFields& f, bool& isGrassValley) {
    f = EventFields{};
    std::string_view* codes[4] = {&f.recOut, &f.recIn, &f.sourceOut, &f.sourceIn};
    for (std::string_view* code : codes) {
        std::string_view candidate = cut.RightPart(d, 11);
        if (!cut.IsTimecode(candidate)) {
            f = EventFields{};  // whatever was found before: no field of the line is kept
            return false;
        }
        *code = candidate;
        d = RTrim(cut.LeftPart(d, cut.Length(d) - 11));
    }
    std::string_view s = Trim(d);
    f.number = cut.TakeToken(s);
    const int64_t width = cut.Length(f.number);
    if (width == 3)
        isGrassValley = false;
    else if (width == 4)
        isGrassValley = true;
    f.reel = cut.TakeToken(s);
    f.mode = cut.TakeToken(s);
    if (cut.FirstBlank(s) == 0) {
        f.trans = s;
    } else {
        f.trans = cut.TakeToken(s);
        // The rest is kept whole: "B 025" after a key is no number and is the B mark.
        if (IsNumeric(s))
            f.transDur = s;
        else
            f.bTrack = s;
    }
    return true;
}

int32_t FrameAt(FrameRate rate, std::string_view tc) { return tc.empty() ? -1 : rate.Frames(tc); }

// What a read touches besides the document.
struct ReadContext {
    MainWindowState& window;
    ProgressWindow& progress;
    Platform& platform;
};

void ShowProgress(ReadContext& c, int32_t i, int32_t maxZeilen) {
    if (i % 100 != 0 && maxZeilen - i >= 10) return;
    ProgressBarWindowState& p = c.progress.Get();
    p.ProgressBar1.Value = i;
    p.ST_Detail.Text = "Read Line: " + std::to_string(int64_t(i) + 1);
    c.platform.Redraw("ST_Detail");
    c.platform.Redraw("ProgressBar1");
}

void ReadRows(Document& m, ReadContext& c, RowCheck* check) {
    Platform& platform = c.platform;
    const size_t rows = size_t(m.maxZeilen) + 1;
    TextColumn* const texts[] = {&m.readOrigRecOutTC,   &m.readOrigRecInTC,        &m.readOrigSourceOutTC,
                                 &m.readOrigSourceInTC, &m.readOrigEventNumberStr, &m.readOrigReelNames,
                                 &m.readOrigMode,       &m.readOrigTrans,          &m.readOrigIsBTrack,
                                 &m.readOrigTransDur};
    Int32Table* const numbers[] = {&m.readOrigEventNumberInt, &m.readOrigRecOutFrame,   &m.readOrigRecInFrame,
                                   &m.readOrigSourceOutFrame, &m.readOrigSourceInFrame, &m.editDurationFrames};
    for (TextColumn* t : texts) t->reserve(rows);
    for (Int32Table* t : numbers) t->reserve(rows);
    // Lines that are no event hold the fill in every table: they are added a run at a time,
    // when the next event comes, and at the end.
    size_t fills = 0;
    const auto addFills = [&] {
        if (fills == 0) return;
        for (TextColumn* t : texts) t->push_back_fill(fills);
        for (Int32Table* t : numbers) t->push_back_fill(fills);
        fills = 0;
    };

    const FrameRate rate = m.frameRate;
    const bool dropFrame = rate.DropFrame();
    bool styleFound = false;  // the list's separator before the frames, from its first event
    EventFields f;
    for (int32_t i = 0; i <= m.maxZeilen; ++i) {
        // A conversion asked to stop ends here, between two rows.
        if (i % 4096 == 0 && platform.StopAsked()) return;
        const std::string_view line = m.readOrigCompleteLine(size_t(i));
        const bool ascii = m.textIsAscii || IsAscii(line);
        // The reader's scratch of the line, `dummyReadZeile`: what remains of it once the
        // timecodes are cut off. Nothing reads it after the line is read.
        std::string_view dummyReadZeile = line;
        if (!ReadEventLine(dummyReadZeile, Cutter{ascii, dropFrame}, f, m.IsGrassValley)) {
            ++fills;
            if (check) check->Check({i, line, ascii, {}, {}, {}, -1, {}, {}, {}, {}, -1, -1, -1, -1});
            ShowProgress(c, i, m.maxZeilen);
            platform.Yield();
            continue;
        }
        addFills();
        if (!styleFound) {
            // The ninth character of the record out: a colon, or at a drop-frame rate maybe not.
            m.frameSeparator = (ascii ? f.recOut.substr(8, 1) : Mid(f.recOut, 9, 1)) == ";" ? ';' : ':';
            styleFound = true;
        }

        m.readOrigRecOutTC.push_back(f.recOut);
        m.readOrigRecInTC.push_back(f.recIn);
        m.readOrigSourceOutTC.push_back(f.sourceOut);
        m.readOrigSourceInTC.push_back(f.sourceIn);
        m.readOrigEventNumberStr.push_back(f.number);
        const int32_t event = f.number.empty() ? -1 : ToInt32(Val(f.number));
        m.readOrigEventNumberInt.push_back(event);
        m.readOrigReelNames.push_back(f.reel);
        m.readOrigMode.push_back(f.mode);
        m.readOrigTrans.push_back(f.trans);
        m.readOrigIsBTrack.push_back(f.bTrack);
        m.readOrigTransDur.push_back(f.transDur);

        const int32_t recOut = FrameAt(rate, f.recOut);
        const int32_t recIn = FrameAt(rate, f.recIn);
        const int32_t sourceOut = FrameAt(rate, f.sourceOut);
        const int32_t sourceIn = FrameAt(rate, f.sourceIn);
        m.readOrigRecOutFrame.push_back(recOut);
        m.readOrigRecInFrame.push_back(recIn);
        m.readOrigSourceOutFrame.push_back(sourceOut);
        m.readOrigSourceInFrame.push_back(sourceIn);
        // The record side; swapped times give a negative duration, kept as it is.
        m.editDurationFrames.push_back(
            !f.recOut.empty() && !f.recIn.empty() ? int32_t(uint32_t(recOut) - uint32_t(recIn)) : -1);

        if (check)
            check->Check({i, line, ascii, f.number, f.reel, f.mode, event, f.sourceIn, f.sourceOut, f.recIn, f.recOut,
                          sourceIn, sourceOut, recIn, recOut});

        ShowProgress(c, i, m.maxZeilen);
        platform.Yield();
    }
    addFills();
}

// The lowest record in and the highest record out; at equal values the earlier row stays.
void FindExtent(Document& m, Platform& platform) {
    for (int32_t i = 0; i <= m.maxZeilen; ++i) {
        const size_t r = size_t(i);
        if (m.readOrigRecInFrame[r] != -1) {
            if (m.TimeLineStartTC.empty() || m.readOrigRecInFrame[r] < m.TimeLineStartFrame) {
                m.TimeLineStartFrame = m.readOrigRecInFrame[r];
                m.TimeLineStartTC.assign(m.readOrigRecInTC(r));
            }
            if (m.TimeLineEndTC.empty() || m.TimeLineEndFrame < m.readOrigRecOutFrame[r]) {
                m.TimeLineEndFrame = m.readOrigRecOutFrame[r];
                m.TimeLineEndTC.assign(m.readOrigRecOutTC(r));
            }
        }
        platform.Yield();
    }
}

void ReadHeader(Document& m, ReadContext& c) {
    Platform& platform = c.platform;
    if (!m.IsGrassValley) {
        // The first line with the keyword wins, wherever it stands.
        bool found = false;
        bool unknown = false;  // the texts of a line without the keyword, set once
        for (int32_t i = 0; i <= m.maxZeilen && !found; ++i) {
            std::string_view line = m.readOrigCompleteLine(size_t(i));
            if (BeginsCI(line, "TITLE:")) {
                m.newSeqTitle.assign(Trim(Mid(line, 7)));
                m.ZeileEins.assign(line);
                m.indexStart = i + 1;
                found = true;
            } else if (!unknown) {
                m.newSeqTitle = "UNKOWN";
                m.ZeileEins = "TITLE: UNKNOWN";
                unknown = true;
            }
            platform.Yield();
        }

        for (int32_t i = 0; i <= m.maxZeilen; ++i) {
            std::string_view line = m.readOrigCompleteLine(size_t(i));
            platform.Yield();
            if (!BeginsCI(line, "FCM:")) continue;
            std::string mode = ReplaceAll(Trim(Mid(line, 5)), " ", "");
            mode = ReplaceAll(mode, "-", "");
            mode = ReplaceAll(mode, "_", "");
            if (EqualsCI(mode, "NONDROPFRAME") || EqualsCI(mode, "DIGITALTV24P")) {
                m.dropFrame = false;
            } else if (EqualsCI(mode, "DROPFRAME")) {
                m.dropFrame = true;
            } else {
                m.dropFrame = false;
                m.ZeileZwei = "FCM: NON-DROP FRAME";
                continue;
            }
            m.ZeileZwei.assign(line);
            m.indexStart = i + 1;
            break;
        }
    }

    if (m.IsGrassValley) {
        // A GVG list has no keyword: its first line with text is the title.
        for (int32_t i = 0; i <= m.maxZeilen; ++i) {
            std::string_view line = m.readOrigCompleteLine(size_t(i));
            platform.Yield();
            if (!line.empty()) {
                m.newSeqTitle.assign(Trim(line));
                m.ZeileEins.assign(line);
                m.indexStart = i + 1;
                break;
            }
            m.newSeqTitle = "UNKOWN";
        }
    }

    if (!m.IsGrassValley) {
        // This scan settles the frame mode for good, whatever the FCM line said: a CMX list
        // is read and shown as the rate answered counts it, non-drop at every rate but the
        // drop-frame ones. It stands after the FCM scan on purpose.
        // Every row sets the same values, so they are set once; the rows still give way to the
        // event loop one by one.
        MainWindowState& w = c.window;
        if (m.maxZeilen >= 0) {
            m.dropFrame = m.frameRate.DropFrame();
            m.ZeileZwei = m.dropFrame ? "FCM: DROP FRAME" : "FCM: NON-DROP FRAME";
            w.ST_FCM.Text = m.dropFrame ? "Drop Frame" : "Non-Drop Frame";
            m.indexStart = m.maxZeilen + 1;
        }
        for (int32_t i = 0; i <= m.maxZeilen; ++i) platform.Yield();
    }
}

void OpenMainWindowControls(Document& m, ReadContext& c) {
    MainWindowState& w = c.window;
    Platform& platform = c.platform;
    w.EF_ReelName.Enabled = true;
    w.EF_SeqTitle.Enabled = true;
    // The field's change handling puts the offered title into capitals; newSeqTitle keeps
    // the plain title until the writer reads the field.
    w.EF_SeqTitle.SetText(m.newSeqTitle + " VORNELT");
    platform.Redraw("EF_SeqTitle");
    w.EF_RenderedMovie.Enabled = true;
    w.BtnSelectMovie.Enabled = true;
    w.Chb_Mirror.Enabled = true;
    w.Chb_FixKeyDuration.Enabled = false;
    w.Chb_V1.Enabled = false;
    w.Chb_V2.Enabled = true;
    w.Chb_A1234.Enabled = true;
    w.Chb_RemoveFreezeFrame.Enabled = true;
    w.Chb_RemoveSpeedChanges.Enabled = true;
    w.Chb_TransToDissolve.Enabled = true;
    w.Chb_KeyToDissolve.Enabled = true;
    w.Chb_ComntGenerateNew.Enabled = true;
    w.PopupTransition.Enabled = true;
}

}  // namespace

void ParseCMX3600(Document& m, MainWindowState& window, ProgressWindow& progressWindow, Platform& platform) {
    ReadContext c{window, progressWindow, platform};

    m.TimeLineStartTC.clear();
    m.TimeLineEndTC.clear();
    m.TimeLineStartFrame = 0;
    m.TimeLineEndFrame = 0;
    m.newSeqTitle.clear();
    m.finalCMXString = std::make_shared<const std::string>();

    // The bar's maximum is taken before the lines are counted, so it is what the reset left
    // (0) for the whole read.
    ProgressBarWindowState& progress = progressWindow.Get();
    progress.Title = "Parse EDL";
    progress.ST_Headline.Text = "Parse EDL";
    progress.ST_Detail.Text = "One Moment Please...";
    progress.ProgressBar1.Maximum = m.maxZeilen;
    progress.ProgressBar1.Value = 0;
    platform.Redraw("ProgressBar1");
    platform.ShowProgressWindow();

    if (!m.cmxString) m.cmxString = std::make_shared<std::string>();
    NormaliseText(*m.cmxString);
    // A conversion asked to stop ends between the steps of the reading; the tables are whole
    // at each.
    if (platform.StopAsked()) return progressWindow.Close(platform);

    // From here on the text is the document: every text table refers into it.
    SharedText document = m.cmxString;
    for (TextColumn* t : m.AllTextTables()) t->AttachDocument(document);

    // One row per line, empty lines kept; an empty text is one empty row. Each line is
    // trimmed at both ends as it is stored.
    const std::string_view text = *document;
    size_t lines = 1;
    for (const char* p = text.data();
         (p = static_cast<const char*>(std::memchr(p, '\r', size_t(text.data() + text.size() - p)))) != nullptr; ++p)
        ++lines;
    m.readOrigCompleteLine.clear();
    m.readOrigCompleteLine.reserve(lines);
    size_t from = 0;
    for (;;) {
        const size_t end = text.find('\r', from);
        const std::string_view line =
            text.substr(from, end == std::string_view::npos ? std::string_view::npos : end - from);
        m.readOrigCompleteLine.push_back(Trim(line));
        platform.Yield();
        if (end == std::string_view::npos) break;
        from = end + 1;
    }
    m.maxZeilen = int32_t(m.readOrigCompleteLine.size() - 1);
    if (platform.StopAsked()) return progressWindow.Close(platform);

    // The check of the list as read goes along with the reading, while a report is recorded.
    std::optional<RowCheck> check;
    if (m.report.recording) check.emplace(m, m.frameRate);
    ReadRows(m, c, check ? &*check : nullptr);
    if (platform.StopAsked()) return progressWindow.Close(platform);
    FindExtent(m, platform);
    ReadHeader(m, c);
    if (check) check->Finish();

    m.edlFormat = m.IsGrassValley ? "GVG (Grass Valley)" : "CMX";
    window.ST_EdlFormat.Text = m.edlFormat;
    OpenMainWindowControls(m, c);
    progressWindow.Close(platform);
}

}  // namespace vornelt
