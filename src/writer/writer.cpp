// The writer: the whole output list, rebuilt from the copy tables on every run.
//
// A run visits every row from 2 to maxZeilen. An event row is rendered anew as one event
// line of 78 characters; every other row either is copied as it stands (motion and audio
// lines, by the note row chain) or leaves no trace. With new comments on, the comment lines
// of each event are gathered in a block and written ahead of the next event's first line.
//
// Speed: a click on any option reruns this over the whole list, so the list is built in one
// string and every field is appended to it directly; no row makes a string of its own.
#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

constexpr std::string_view kEffectCrossDissolve = "* EFFECT NAME: CROSS DISSOLVE";
constexpr std::string_view kEffectName = "* EFFECT NAME: ";
constexpr std::string_view kToClipName = "* TO CLIP NAME:  ";
constexpr std::string_view kFromClipName = "* FROM CLIP NAME:  ";
constexpr std::string_view kKeyClipName = "* KEY CLIP NAME:  ";

// The tables are aligned by the load; these readers keep a run safe all the same when one
// of them is short, by giving the value of a row that holds nothing.
int32_t At(const Int32Table& t, int64_t i) noexcept {
    return (i >= 0 && size_t(i) < t.size()) ? t[size_t(i)] : t.fill();
}
bool At(const BoolTable& t, int64_t i) noexcept { return i >= 0 && size_t(i) < t.size() && t[size_t(i)]; }
double At(const DoubleTable& t, int64_t i) noexcept {
    return (i >= 0 && size_t(i) < t.size()) ? t[size_t(i)] : t.fill();
}

// One event line, put together in place and added to the list in one go: a line is some twenty
// pieces, and each piece added to the list on its own costs a check of the list's room. A line
// that does not fit (a long text in the duration or B field) is written the plain way.
class LineBuffer {
public:
    LineBuffer& append(std::string_view s) noexcept {
        if (s.size() > kRoom - n_) {
            overflowed_ = true;
        } else if (!s.empty()) {  // an empty text may have no address at all
            std::memcpy(data_ + n_, s.data(), s.size());
            n_ += s.size();
        }
        return *this;
    }
    LineBuffer& append(size_t count, char c) noexcept {
        if (count > kRoom - n_) {
            overflowed_ = true;
        } else {
            std::memset(data_ + n_, c, count);
            n_ += count;
        }
        return *this;
    }
    void push_back(char c) noexcept {
        if (n_ == kRoom)
            overflowed_ = true;
        else
            data_[n_++] = c;
    }
    bool Overflowed() const noexcept { return overflowed_; }
    std::string_view Text() const noexcept { return {data_, n_}; }

private:
    static constexpr size_t kRoom = 192;
    char data_[kRoom];
    size_t n_ = 0;
    bool overflowed_ = false;
};

// Format(value, "000") or "0000", appended without a string of its own.
template <typename Out>
void AppendZeroFilled(Out& out, int32_t value, int width) {
    char digits[16];
    int n = 0;
    uint32_t magnitude = value < 0 ? uint32_t(0) - uint32_t(value) : uint32_t(value);
    do {
        digits[n++] = char('0' + magnitude % 10);
        magnitude /= 10;
    } while (magnitude != 0);
    if (value < 0) out.push_back('-');
    for (int k = n; k < width; ++k) out.push_back('0');
    while (n > 0) out.push_back(digits[--n]);
}

// Mode and transition: padded by the length of the text; a text outside the lengths that
// the field knows puts nothing into the line, neither text nor padding.
template <typename Out>
void AppendMode(Out& out, std::string_view mode) {
    const int64_t length = Len(mode);
    if (length < 1 || length > 5) return;
    out.append(mode).append(size_t(5 - length), ' ');
}

template <typename Out>
void AppendTransition(Out& out, std::string_view trans) {
    const int64_t length = Len(trans);
    if (length < 1 || length > 4) return;
    out.append(size_t(4 - length), ' ').append(trans);
}

struct RunOptions {
    bool grassValley;
    bool mirror;
    bool keyToDissolve;
    bool audio;
    bool removeFreezeFrames;
    bool removeSpeedChanges;
    bool comments;
    int wipeTable;  // the row of the wipe-names popup: 0 Final Cut Pro, 1 SMPTE
};

template <typename Out>
void AppendEventLine(Out& out, const Document& m, const RunOptions& o, int64_t i, std::string& reelField) {
    const std::string_view bTrack = m.copyIsBTrack.Get(i);

    // Event number: stars for the background row of a key turned into a dissolve.
    if (o.keyToDissolve && IsCI(bTrack, "B"))
        out.append(o.grassValley ? "****" : "***");
    else
        AppendZeroFilled(out, At(m.copyEventNumberInt, i), o.grassValley ? 4 : 3);
    out.push_back(' ');

    // Reel: a named master replaces every reel of a mirror list; without a name the
    // generated clip reels replace the real sources and black and auxiliary stay.
    const std::string_view reel = m.copyReelNames.Get(i);
    std::string_view field = reel;
    if (o.mirror) {
        if (!m.newReelName.empty())
            field = m.newReelName;
        else if (!IsReservedReel(reel))
            field = m.cleanClipReelName.Get(i);
    }
    reelField.clear();
    AppendReelField(reelField, field, o.grassValley);
    out.append(reelField);
    out.push_back(' ');

    AppendMode(out, m.copyMode.Get(i));
    out.push_back(' ');
    AppendTransition(out, m.copyTrans.Get(i));
    out.push_back(' ');

    if (bTrack.empty())
        out.append("  ");
    else
        out.append(bTrack).push_back(' ');
    out.push_back(' ');

    const std::string_view duration = m.copyTransDur.Get(i);
    if (duration.empty())
        out.append("   ");
    else
        out.append(duration);
    out.push_back(' ');

    // A mirror list points the source side at the record timecodes of the master.
    out.append(o.mirror ? m.copyRecInTC.Get(i) : m.copySourceInTC.Get(i));
    out.push_back(' ');
    out.append(o.mirror ? m.copyRecOutTC.Get(i) : m.copySourceOutTC.Get(i));
    // The one separator that differs between the forms.
    out.append(o.grassValley ? "  " : " ");
    out.append(m.copyRecInTC.Get(i));
    out.push_back(' ');
    out.append(m.copyRecOutTC.Get(i));
}

// The tables an event line is written from (AppendEventLine reads these and no others), in
// the order of LastRendering::tables.
std::array<ChangeLog*, LastRendering::kTables> LineTables(Document& m) {
    return {&m.copyIsBTrack.Changes(),      &m.copyEventNumberInt.Changes(), &m.copyReelNames.Changes(),
            &m.cleanClipReelName.Changes(), &m.copyMode.Changes(),           &m.copyTrans.Changes(),
            &m.copyTransDur.Changes(),      &m.copyRecInTC.Changes(),        &m.copyRecOutTC.Changes(),
            &m.copySourceInTC.Changes(),    &m.copySourceOutTC.Changes()};
}

// The event lines of the list before that this rendering may copy: those of rows whose
// tables have not changed since, when the options that shape a line are the same. Empty when
// every line is to be written anew.
class LinesBefore {
public:
    LinesBefore(Document& m, const RunOptions& o) : last_(m.lastRendering) {
        if (!m.renderedList || last_.list != m.renderedList.get() || last_.grassValley != o.grassValley ||
            last_.mirror != o.mirror || last_.keyToDissolve != o.keyToDissolve || last_.reelName != m.newReelName)
            return;
        const auto tables = LineTables(m);
        changed_.assign(size_t(std::max<int32_t>(m.maxZeilen, 0)) / 64 + 1, 0);
        for (size_t k = 0; k < tables.size(); ++k) {
            const std::vector<uint32_t>* rows = tables[k]->RowsSince(last_.tables[k]);
            if (!rows) {
                changed_.clear();
                return;
            }
            for (const uint32_t row : *rows)
                if (row / 64 < changed_.size()) changed_[row / 64] |= uint64_t(1) << (row % 64);
        }
        list_ = *m.renderedList;
        usable_ = true;
    }

    // Row i's line as the list before has it, or nothing when it must be written anew.
    // Rows are asked for in ascending order.
    std::optional<std::string_view> Line(size_t i) {
        if (!usable_ || (changed_[i / 64] >> (i % 64) & 1) != 0) return std::nullopt;
        const std::vector<TextColumn::Piece>& lines = last_.lines;
        while (next_ < lines.size() && lines[next_].row < i) ++next_;
        if (next_ == lines.size() || lines[next_].row != i) return std::nullopt;
        const TextColumn::Piece& p = lines[next_];
        return list_.substr(p.offset, p.length);
    }

private:
    const LastRendering& last_;
    std::vector<uint64_t> changed_;  // a bit for each row whose tables changed
    std::string_view list_;
    size_t next_ = 0;
    bool usable_ = false;
};

// What the next rendering needs to copy this one's event lines.
void RememberLines(Document& m, const RunOptions& o, std::vector<TextColumn::Piece>&& lines) {
    LastRendering& last = m.lastRendering;
    const auto tables = LineTables(m);
    for (size_t k = 0; k < tables.size(); ++k) {
        tables[k]->Watch();
        last.tables[k] = tables[k]->Now();
    }
    last.list = m.renderedList.get();
    last.lines = std::move(lines);
    last.grassValley = o.grassValley;
    last.mirror = o.mirror;
    last.keyToDissolve = o.keyToDissolve;
    last.reelName = m.newReelName;
}

// A row that is no event line: motion lines under the two removal options, audio lines
// while audio is kept. Everything else, the source's own comments among it, is dropped.
bool KeepsNoteRow(std::string_view line, double motion, const RunOptions& o) {
    const bool isMotion = BeginsCI(line, "M2") || BeginsCI(line, "PEG A") || BeginsCI(line, "PEG B");
    if (isMotion) {
        // Exact comparisons of the stored values: 0.0 is a freeze frame, anything but the
        // no-motion mark is a speed change.
        if (!o.removeSpeedChanges && motion != kNoMotionLine && motion != 0.0) return true;
        if (!o.removeFreezeFrames && motion == 0.0) return true;
    }
    return o.audio && BeginsCI(line, "AUD");
}

// The comment lines of one event, gathered while its rows go by. Two buffers take turns so
// that putting text ahead of the block costs no allocation once they have grown.
class CommentBlock {
public:
    explicit CommentBlock(const std::string& movie) : movie_(movie) {}

    const std::string& Text() const noexcept { return block_; }
    void Clear() noexcept { block_.clear(); }

    // head, then the old block, then tail.
    void Wrap(std::string_view headA, std::string_view headB, std::string_view tail) {
        spare_.clear();
        spare_.append(headA).append(headB).append(block_).append(tail);
        block_.swap(spare_);
    }

    // The old block runs on behind the effect's name, on the same line: with a block of an
    // event of three rows the two lines run together, and so they stay.
    void DissolveForm() { EffectForm(kEffectCrossDissolve, {}); }
    void WipeForm(std::string_view name) { EffectForm(kEffectName, name); }
    void KeyForm() { block_.append(kKeyClipName).append(movie_).push_back(kCR); }
    void PrependFrom() {
        spare_.clear();
        spare_.append(kFromClipName).append(movie_).push_back(kCR);
        spare_.append(block_);
        block_.swap(spare_);
    }

private:
    void EffectForm(std::string_view literal, std::string_view name) {
        spare_.clear();
        spare_.append(literal).append(name).append(block_).push_back(kCR);
        spare_.append(kToClipName).append(movie_).push_back(kCR);
        block_.swap(spare_);
    }

    const std::string& movie_;
    std::string block_;
    std::string spare_;
};

// A further row of the event in hand: what its transition adds to the block.
void CommentFurtherRow(CommentBlock& block, std::string_view trans, std::string_view duration, int wipeTable) {
    const double value = Val(duration);
    const bool isC = IsCI(trans, "C");
    const bool isD = IsCI(trans, "D");
    const bool isK = IsCI(trans, "K");
    if (isC && duration.empty()) return;
    if (isD && value > 0) {
        block.DissolveForm();
        return;
    }
    if (!isD && !isK && !isC && value > 0) {
        if (wipeTable == 0)
            block.WipeForm(WipeCodesFCP(trans));
        else if (wipeTable == 1)
            block.WipeForm(WipeCodesSMPTE(trans));
        return;
    }
    if (isK) {
        block.KeyForm();  // a key always comments, whatever its duration
        return;
    }
    // Only a "C" with a duration comes here: it counts as a cross dissolve.
    if (!trans.empty() && value > 0) block.DissolveForm();
}

size_t EstimatedSize(const Document& m, const RunOptions& o) {
    const size_t rows = m.maxZeilen > 0 ? size_t(m.maxZeilen) + 1 : 1;
    size_t perRow = 82;
    if (o.comments) perRow += 44 + m.myAbsMovieName.size();
    return rows * perRow + m.newSeqTitle.size() + 256;
}

}  // namespace

void NewEDL_02(Document& m, MainWindowState& window, Platform& platform) {
    // 1. The reel name: blanks out; formatted when anything is left.
    {
        std::string reel;
        for (char c : window.EF_ReelName.Text())
            if (c != ' ') reel.push_back(c);
        m.newReelName = reel.empty() ? std::string() : FormatReelNames(reel, m.IsGrassValley);
    }

    const RunOptions o{
        m.IsGrassValley,   m.boolMirror,      m.boolKeyToDissolve,       m.boolA1234,
        m.boolFreezeFrame, m.boolSpeedChange, m.boolGenerateNewComments, window.PopupTransition.ListIndex};

    // 2. The header of the form. The second line is a constant of the form: a list read as
    // drop frame still says NON-DROP FRAME.
    m.newSeqTitle = std::string(Trim(window.EF_SeqTitle.Text()));
    std::string out;
    if (m.renderSpare) {
        out = std::move(*m.renderSpare);
        m.renderSpare.reset();
        out.clear();
    }
    out.reserve(EstimatedSize(m, o));
    if (o.grassValley) {
        out.append(m.newSeqTitle).push_back(kCR);
        out.append("SMPTE FRAME CODE").push_back(kCR);
    } else {
        out.append("TITLE: ").append(m.newSeqTitle).push_back(kCR);
        out.append("FCM: NON-DROP FRAME").push_back(kCR);
    }
    out.push_back(kCR);

    // 3. The rows. Rows 0 and 1 hold the title and FCM lines and are never visited.
    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Writer);
    report.clear();
    m.report.renamedReels.clear();
    const bool record = m.report.recording;
    bool firstEvent = true;
    int32_t masterReelEvents = 0;
    CommentBlock block(m.myAbsMovieName);
    std::string reelField;
    LinesBefore linesBefore(m, o);
    std::vector<TextColumn::Piece> generated;
    generated.reserve(size_t(std::max<int32_t>(m.maxZeilen, 0)));
    int32_t current = 1;   // event number of the last event row written
    int32_t previous = 0;  // the same, as it stood at the end of the row before
    for (int64_t i = 2; i <= int64_t(m.maxZeilen); ++i) {
        // A conversion asked to stop ends here, between two rows, and keeps no list.
        if (i % 4096 == 0 && platform.StopAsked()) return;
        const std::string_view line = m.copyCompletLine.Get(i);
        const bool skipSplit = o.audio && BeginsCI(line, "SPLIT");
        if (!skipSplit) {
            const bool eventRow = !m.copyEventNumberStr.Get(i).empty() && !m.copyMode.Get(i).empty() &&
                                  At(m.displayThisAudioEventLine, i) && At(m.displayThisKeyEventLine, i);
            if (eventRow) {
                current = At(m.readOrigEventNumberInt, i);
                if (o.comments) {
                    const std::string_view trans = m.copyTrans.Get(i);
                    const std::string_view duration = m.copyTransDur.Get(i);
                    if (current == previous) {
                        CommentFurtherRow(block, trans, duration, o.wipeTable);
                    } else {
                        // A new event: the block of the one before goes out, ahead of this
                        // line, with a FROM line unless this row brings its own transition.
                        if (firstEvent && record)
                            report.push_back({ChangeKind::CommentBeforeFirstEvent,
                                              int32_t(i),
                                              current,
                                              0,
                                              i == 2 ? "stands right behind the header"
                                                     : "is numbered " + std::to_string(current) + ", not 1",
                                              {}});
                        if (duration.empty()) block.PrependFrom();
                        AppendSortedCommentLine(out, block.Text());
                        out.push_back(kCR);
                        block.Clear();
                    }
                }
                firstEvent = false;
                if (o.mirror && record) {
                    if (!m.newReelName.empty()) {
                        ++masterReelEvents;
                    } else if (const std::string_view reel = m.copyReelNames.Get(i);
                               !IsReservedReel(reel) && Trim(reel) != Trim(m.cleanClipReelName.Get(i))) {
                        m.report.renamedReels.emplace_back(int32_t(i), current);
                    }
                }
                const size_t start = out.size();
                if (const std::optional<std::string_view> before = linesBefore.Line(size_t(i))) {
                    out.append(*before);
                } else {
                    LineBuffer eventLine;
                    AppendEventLine(eventLine, m, o, i, reelField);
                    if (eventLine.Overflowed())
                        AppendEventLine(out, m, o, i, reelField);
                    else
                        out.append(eventLine.Text());
                }
                // The row's text becomes the line just generated. It is a piece of the list
                // itself, handed over when the list is done; nothing of this run reads the
                // row's text again.
                if (size_t(i) < m.copyCompletLine.size())
                    generated.push_back({uint32_t(i), uint32_t(start), uint32_t(out.size() - start)});
                out.push_back(kCR);
            } else if (KeepsNoteRow(line, At(m.readOrigM2, i), o)) {
                out.append(line).push_back(kCR);
            } else if (record && (BeginsCI(line, "M2") || BeginsCI(line, "PEG A") || BeginsCI(line, "PEG B"))) {
                report.push_back(
                    {At(m.readOrigM2, i) == 0.0 ? ChangeKind::FreezeFrameRemoved : ChangeKind::SpeedChangeRemoved,
                     int32_t(i),
                     current,
                     0,
                     std::string(m.readOrigM2Str.Get(i)),
                     {}});
            }
        }
        previous = current;
        platform.Yield();
    }

    // 4. The closing lines: the last event's block, unsorted, behind a FROM line.
    if (o.comments) {
        out.append(kFromClipName).append(m.myAbsMovieName).push_back(kCR);
        out.append(block.Text()).push_back(kCR);
    }

    // What this run changed besides the rows.
    if (record) {
        const std::string_view read = m.IsGrassValley ? Trim(m.ZeileEins) : Trim(Mid(m.ZeileEins, 7));
        if (read != m.newSeqTitle)
            report.push_back({ChangeKind::TitleApplied, -1, -1, 0, std::string(read), m.newSeqTitle});
    }
    if (o.comments && !m.myAbsMovieName.empty() && record)
        report.push_back({ChangeKind::MovieApplied, -1, -1, 0, {}, m.myAbsMovieName});
    if (masterReelEvents > 0)
        report.push_back(
            {ChangeKind::MasterReelApplied, -1, -1, masterReelEvents, {}, std::string(Trim(m.newReelName))});

    // 5. The list and the text area share one buffer, and the generated lines of the
    // working copy are pieces of it.
    const bool piecesFit = out.size() <= 0xFFFFFFFFu;
    std::shared_ptr<std::string> before = std::move(m.renderedList);
    m.renderedList = std::make_shared<std::string>(std::move(out));
    m.finalCMXString = m.renderedList;
    if (piecesFit) {
        m.copyCompletLine.SetOutsidePieces(m.finalCMXString, generated);
    } else {
        for (const TextColumn::Piece& p : generated)
            m.copyCompletLine.set(p.row, std::string_view(*m.finalCMXString).substr(p.offset, p.length));
    }
    window.EditField1.Text = m.finalCMXString;
    if (piecesFit)
        RememberLines(m, o, std::move(generated));
    else
        m.lastRendering = LastRendering{};
    if (before && before.use_count() == 1) m.renderSpare = std::move(before);

    // 6. A fresh rendering always counts as unsaved.
    m.isModified = true;
    PunktImPunkt(m, platform);
}

void PunktImPunkt(const Document& m, Platform& platform) {
    const int result = platform.SetWindowModified(m.isModified);
    if (result != 0) platform.MsgBox("Err: " + Format(result, "-#"));
}

}  // namespace vornelt
