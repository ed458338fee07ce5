// The plan of the new list. A run visits every row from 2 to maxZeilen. An event row becomes
// one event line; every other row either is kept as it stands (motion and audio lines, by the
// note row chain) or leaves no trace. With new comments on, the comment lines of each event are
// gathered in a block and go ahead of the next event's first line.
#include "writer/plan.hpp"

#include <algorithm>
#include <array>
#include <bit>
#include <functional>
#include <utility>

#include "text/prefetch.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

namespace {

constexpr std::string_view kEffectCrossDissolve = "* EFFECT NAME: CROSS DISSOLVE";
constexpr std::string_view kEffectName = "* EFFECT NAME: ";
constexpr std::string_view kToClipName = "* TO CLIP NAME:  ";
constexpr std::string_view kFromClipName = "* FROM CLIP NAME:  ";
constexpr std::string_view kKeyClipName = "* KEY CLIP NAME:  ";
constexpr std::string_view kLineEnd = "\r";

// The tables are aligned by the load; these readers keep a run safe all the same when one
// of them is short, by giving the value of a row that holds nothing.
int32_t At(const Int32Table& t, int64_t i) noexcept {
    return (i >= 0 && size_t(i) < t.size()) ? t[size_t(i)] : t.fill();
}
bool At(const BoolTable& t, int64_t i) noexcept { return i >= 0 && size_t(i) < t.size() && t[size_t(i)]; }
double At(const DoubleTable& t, int64_t i) noexcept {
    return (i >= 0 && size_t(i) < t.size()) ? t[size_t(i)] : t.fill();
}

inline bool IsMotionLine(std::string_view line) {
    return BeginsCI(line, "M2") || BeginsCI(line, "PEG A") || BeginsCI(line, "PEG B");
}

// A row that is no event line: motion lines under the two removal options, audio lines
// while audio is kept. Everything else, the source's own comments among it, is dropped.
inline bool KeepsNoteRow(bool isMotion, bool isAudio, double motion, const PlanOptions& o) {
    if (isMotion) {
        // Exact comparisons of the stored values: 0.0 is a freeze frame, anything but the
        // no-motion mark is a speed change.
        if (!o.removeSpeedChanges && motion != kNoMotionLine && motion != 0.0) return true;
        if (!o.removeFreezeFrames && motion == 0.0) return true;
    }
    return o.audio && isAudio;
}

// The comment lines of one event, gathered while its rows go by. Two buffers take turns so
// that putting text ahead of the block costs no allocation once they have grown. The text is
// empty or ends in a line end.
class CommentBlock {
public:
    explicit CommentBlock(const std::string& movie)
        : movieLineEnds_(uint32_t(std::count(movie.begin(), movie.end(), kCR))),
          from_(Line(kFromClipName, movie)),
          to_(Line(kToClipName, movie)),
          key_(Line(kKeyClipName, movie)) {}

    const std::string& Text() const noexcept { return block_; }
    // The line ends in the text: counted as the text grows, not read again.
    uint32_t LineEnds() const noexcept { return lineEnds_; }
    uint32_t MovieLineEnds() const noexcept { return movieLineEnds_; }
    void Clear() noexcept {
        block_.clear();
        lineEnds_ = 0;
    }

    // The old block runs on behind the effect's name, on the same line: with a block of an
    // event of three rows the two lines run together, and so they stay.
    void DissolveForm() { EffectForm(kEffectCrossDissolve, {}); }
    void WipeForm(std::string_view name) { EffectForm(kEffectName, name); }
    void KeyForm() {
        block_.append(key_);
        lineEnds_ += 1 + movieLineEnds_;
    }
    void PrependFrom() {
        // Most events bring no block of their own: theirs is the FROM line alone.
        if (block_.empty()) {
            block_.assign(from_);
        } else {
            spare_.assign(from_).append(block_);
            block_.swap(spare_);
        }
        lineEnds_ += 1 + movieLineEnds_;
    }

private:
    // A line naming the movie, the same for every event of a run.
    static std::string Line(std::string_view literal, const std::string& movie) {
        std::string line;
        line.append(literal).append(movie).push_back(kCR);
        return line;
    }

    void EffectForm(std::string_view literal, std::string_view name) {
        spare_.clear();
        spare_.append(literal).append(name).append(block_).push_back(kCR);
        spare_.append(to_);
        block_.swap(spare_);
        lineEnds_ += 2 + movieLineEnds_ + uint32_t(std::count(name.begin(), name.end(), kCR));
    }

    const uint32_t movieLineEnds_;
    const std::string from_, to_, key_;
    uint32_t lineEnds_ = 0;
    std::string block_;
    std::string spare_;
};

// What a further row of the event in hand adds to the block, by its transition.
RowCodes::Form FurtherRowForm(std::string_view trans, std::string_view duration) {
    const double value = Val(duration);
    const bool isC = IsCI(trans, "C");
    const bool isD = IsCI(trans, "D");
    const bool isK = IsCI(trans, "K");
    if (isC && duration.empty()) return RowCodes::Nothing;
    if (isD && value > 0) return RowCodes::Dissolve;
    if (!isD && !isK && !isC && value > 0) return RowCodes::Wipe;
    if (isK) return RowCodes::Key;  // a key always comments, whatever its duration
    // Only a "C" with a duration comes here: it counts as a cross dissolve.
    if (!trans.empty() && value > 0) return RowCodes::Dissolve;
    return RowCodes::Nothing;
}

// A further row of the event in hand: what its transition adds to the block. A wipe takes the
// name of its code in the table of the popup, and nothing when the popup names no table.
void CommentFurtherRow(CommentBlock& block, RowCodes::Form form, std::string_view trans, int wipeTable) {
    switch (form) {
        case RowCodes::Nothing: break;
        case RowCodes::Dissolve: block.DissolveForm(); break;
        case RowCodes::Wipe:
            if (wipeTable == 0)
                block.WipeForm(WipeCodesFCP(trans));
            else if (wipeTable == 1)
                block.WipeForm(WipeCodesSMPTE(trans));
            break;
        case RowCodes::Key: block.KeyForm(); break;
    }
}

// Row i's code, worked out from its texts.
uint8_t RowCode(const Document& m, int64_t i) {
    uint8_t code = RowCodes::Known;
    if (!m.copyEventNumberStr.Get(i).empty()) code |= RowCodes::Number;
    const std::string_view duration = m.copyTransDur.Get(i);
    if (duration.empty()) code |= RowCodes::NoDuration;
    code |= uint8_t(FurtherRowForm(m.copyTrans.Get(i), duration) << RowCodes::FormShift);
    // A row with an event number keeps the line it was read with or takes the event lines
    // written for it, which begin with their number: only a line read as a motion or audio
    // line can be one now.
    const bool numbered = m.copyEventNumberStr.HasEntry(size_t(i));
    const std::string_view line = numbered ? m.readOrigCompleteLine.Get(i) : m.copyCompletLine.Get(i);
    if (numbered) code |= RowCodes::Numbered;
    if (IsMotionLine(line)) code |= RowCodes::Motion;
    if (BeginsCI(line, "AUD")) code |= RowCodes::Audio;
    return code;
}

// The codes are forgotten when a table they were read from changed, and worked out again row
// by row as runs need them.
void UpdateRowCodes(Document& m) {
    RowCodes& c = m.plan.rowCodes;
    const size_t rows = size_t(std::max<int32_t>(m.maxZeilen, 0)) + 1;
    const void* text = m.copyCompletLine.Document().get();
    if (c.rows.size() == rows && c.numbers == m.copyEventNumberStr.Changes().Now() &&
        c.trans == m.copyTrans.Changes().Now() && c.durations == m.copyTransDur.Changes().Now() && c.text == text)
        return;
    c.rows.assign(rows, 0);
    c.numbers = m.copyEventNumberStr.Changes().Now();
    c.trans = m.copyTrans.Changes().Now();
    c.durations = m.copyTransDur.Changes().Now();
    c.text = text;
}

// The speed of a motion line as the line itself has it. The window keeps the speeds of the
// first list it loaded, and judges the motion lines of a later list by those.
double OwnSpeed(const Document& m, int64_t i) { return Val(m.readOrigM2Str.Get(i)); }

std::string SpeedJudged(const Document& m, int64_t i) {
    const double stored = At(m.readOrigM2, i);
    if (stored == kNoMotionLine) return "no motion line there";
    return stored == 0.0 ? "a freeze frame there" : "speed " + Str(stored) + " there";
}

// A motion line kept or left out. Its own speed decides which option took it out; where the
// speed of the list loaded before decided otherwise than its own would, the report says so.
void RecordMotion(const Document& m, const PlanOptions& o, int64_t i, int32_t event, bool kept,
                  std::vector<ChangeItem>& report) {
    const double own = OwnSpeed(m, i);
    if (KeepsNoteRow(true, BeginsCI(m.copyCompletLine.Get(i), "AUD"), own, o) != kept)
        report.push_back({ChangeKind::MotionJudgedByListBefore, int32_t(i), event, kept ? 1 : 0,
                          std::string(m.readOrigM2Str.Get(i)), SpeedJudged(m, i)});
    else if (!kept)
        report.push_back({own == 0.0 ? ChangeKind::FreezeFrameRemoved : ChangeKind::SpeedChangeRemoved,
                          int32_t(i),
                          event,
                          0,
                          std::string(m.readOrigM2Str.Get(i)),
                          {}});
}

// The mirror list's reel of every row, worked out again when the reel tables changed.
void UpdateMirrorReels(Document& m) {
    MirrorReels& r = m.plan.mirrorReels;
    const size_t rows = size_t(std::max<int32_t>(m.maxZeilen, 0)) + 1;
    if (r.rows.size() == rows && r.reels == m.copyReelNames.Changes().Now() &&
        r.chains == m.cleanClipReelName.Changes().Now())
        return;
    r.rows.assign(rows, MirrorReels::Keeps);
    for (size_t i = 0; i < rows; ++i) {
        const std::string_view reel = m.copyReelNames.Get(int64_t(i));
        if (IsReservedReel(reel)) continue;
        r.rows[i] =
            Trim(reel) != Trim(m.cleanClipReelName.Get(int64_t(i))) ? MirrorReels::Renamed : MirrorReels::SameName;
    }
    r.reels = m.copyReelNames.Changes().Now();
    r.chains = m.cleanClipReelName.Changes().Now();
}

// The rows to visit, worked out again after a load.
void UpdateRowsToVisit(Document& m) {
    RowsToVisit& v = m.plan.rowsToVisit;
    const size_t rows = size_t(std::max<int32_t>(m.maxZeilen, 0)) + 1;
    const void* text = m.copyCompletLine.Document().get();
    if (v.bits.size() == rows / 64 + 1 && v.numbers == m.copyEventNumberStr.Changes().Now() && v.text == text) return;
    v.bits.assign(rows / 64 + 1, 0);
    v.split.assign(rows / 64 + 1, 0);
    for (size_t i = 0; i < rows; ++i) {
        const std::string_view line = m.copyCompletLine.Get(int64_t(i));
        const char first = line.empty() ? ' ' : char(line[0] | 0x20);
        if (m.copyEventNumberStr.HasEntry(i) || first == 'm' || first == 'p' || first == 'a' || first == 's')
            v.bits[i / 64] |= uint64_t(1) << (i % 64);
        if (first == 's' && BeginsCI(line, "SPLIT")) v.split[i / 64] |= uint64_t(1) << (i % 64);
    }
    v.numbers = m.copyEventNumberStr.Changes().Now();
    v.text = text;
}

// The first row from `i` on, below `end`, that a run must look at; `end` when there is none.
int64_t NextRowToVisit(const std::vector<uint64_t>& bits, int64_t i, int64_t end) {
    size_t word = size_t(i) / 64;
    uint64_t w = bits[word] & (~uint64_t(0) << (size_t(i) % 64));
    while (w == 0) {
        if (int64_t(++word * 64) >= end) return end;
        w = bits[word];
    }
    return std::min<int64_t>(end, int64_t(word * 64) + std::countr_zero(w));
}

// The sorted form of the comment blocks last met. A list repeats a few blocks over and over
// (the same effects, the same movie), so the sorting of a block is looked up before it is done.
class SortedBlocks {
public:
    // The block sorted; the text stays until the next call.
    std::string_view Sorted(std::string_view block) {
        for (Entry& e : entries_)
            if (e.block == block) return e.sorted;
        Entry& e = entries_[next_];
        next_ = (next_ + 1) % entries_.size();
        e.block.assign(block);
        e.sorted.clear();
        AppendSortedCommentLine(e.sorted, block);
        return e.sorted;
    }

private:
    struct Entry {
        std::string block, sorted;
    };
    std::array<Entry, 8> entries_;
    size_t next_ = 0;
};

// Lines are added one after the other, each numbered as it comes. The plan's lines and comment
// text move only after `beforeMove` has run, so that a writer reading the lines already
// planned on another thread can be asked to hold still first.
class Lines {
public:
    explicit Lines(ListPlan& plan) : plan_(plan) {}
    void Add(LineKind kind, uint32_t row) {
        RoomForLine();
        plan_.lines.push_back({kind, row, ++plan_.lineCount, 0, 0});
        row_ = row;
    }
    // Comment text for the next comment line, in pieces.
    void AppendComments(std::string_view text) {
        std::string& c = plan_.comments;
        if (c.capacity() - c.size() < text.size()) {
            if (beforeMove) beforeMove();
            c.reserve(std::max(c.size() + text.size(), 2 * c.capacity()));
        }
        c.append(text);
    }
    // The comment text appended to the plan since `begin`, with its line ends: one planned
    // line for all of it.
    void AddComments(size_t begin, uint32_t lineEnds) { AddCommentsAt(begin, plan_.comments.size(), lineEnds); }
    // An event's block of comment lines and the line end behind it, as one planned line. Most
    // events of a list bring the same block as the event before: such a block is the text
    // already in the plan, not a copy of it.
    void AddBlock(std::string_view block, uint32_t lineEnds) {
        const std::string& c = plan_.comments;
        const size_t size = block.size() + kLineEnd.size();
        const bool same = last_.second - last_.first == size && last_.second <= c.size() &&
                          std::string_view(c).substr(last_.first, block.size()) == block &&
                          std::string_view(c).substr(last_.first + block.size(), kLineEnd.size()) == kLineEnd;
        if (!same) {
            last_.first = c.size();
            AppendComments(block);
            AppendComments(kLineEnd);
            last_.second = c.size();
        }
        AddCommentsAt(last_.first, last_.second, lineEnds);
    }

    std::function<void()> beforeMove;

private:
    void AddCommentsAt(size_t begin, size_t end, uint32_t lineEnds) {
        RoomForLine();
        plan_.lines.push_back({LineKind::Comments, row_, plan_.lineCount + 1, uint32_t(begin), uint32_t(end)});
        plan_.lineCount += lineEnds;
    }
    void RoomForLine() {
        if (plan_.lines.size() == plan_.lines.capacity() && beforeMove) beforeMove();
    }

    ListPlan& plan_;
    uint32_t row_ = 0;                      // the row of the line before
    std::pair<size_t, size_t> last_{0, 0};  // where the block added last stands in the comments
};

}  // namespace

// The planner's state between two stretches of rows.
struct ListPlanner::State {
    State(Document& m, const MainWindowState& window, Platform& platform)
        : m(m),
          plan(m.plan),
          platform(platform),
          lines(m.plan),
          block(m.myAbsMovieName),
          report(m.report.Section(ReportSection::Writer)) {
        // 1. The reel name: blanks out; formatted when anything is left.
        std::string reel;
        for (char c : window.EF_ReelName.Text())
            if (c != ' ') reel.push_back(c);
        m.newReelName = reel.empty() ? std::string() : FormatReelNames(reel, m.IsGrassValley);
        m.newSeqTitle = std::string(Trim(window.EF_SeqTitle.Text()));
        o = PlanOptions{
            m.IsGrassValley,   m.boolMirror,      m.boolKeyToDissolve,       m.boolA1234,
            m.boolFreezeFrame, m.boolSpeedChange, m.boolGenerateNewComments, window.PopupTransition.ListIndex};
        plan.options = o;
        plan.title = m.newSeqTitle;
        plan.masterReel = m.newReelName;
        plan.dropFrame = m.frameRate.DropFrame();
        plan.lines.clear();
        plan.comments.clear();
        plan.lineCount = 0;

        // 2. The header of the form. A CMX list's second line says the rate's frame count mode,
        // whatever the list's own FCM line said; a GVG list's is a constant of the form.
        lines.Add(LineKind::Title, 0);
        lines.Add(LineKind::FrameCodeMode, 1);
        lines.Add(LineKind::Blank, 1);

        // 3. The rows. Rows 0 and 1 hold the title and FCM lines and are never visited: an
        // event that stands there is not in the new list, and the report says so.
        report.clear();
        m.report.renamedReels.clear();
        record = m.report.recording;
        if (o.mirror) UpdateMirrorReels(m);
        UpdateRowsToVisit(m);
        UpdateRowCodes(m);
        for (int64_t i = 0; record && i < 2 && i <= int64_t(m.maxZeilen); ++i)
            if (!m.copyEventNumberStr.Get(i).empty() && !m.copyMode.Get(i).empty())
                report.push_back(
                    {ChangeKind::EventOnHeaderLine, int32_t(i), At(m.readOrigEventNumberInt, i), 0, {}, {}});
    }

    Document& m;
    ListPlan& plan;
    Platform& platform;
    PlanOptions o;
    Lines lines;
    CommentBlock block;
    SortedBlocks sorted;
    std::vector<ChangeItem>& report;
    bool record = false;
    int64_t next = 2;     // the next row to plan
    int64_t fetched = 2;  // the rows before this one had their texts asked for ahead where needed
    int32_t events = 0;
    bool firstEvent = true;
    int32_t masterReelEvents = 0;
    int32_t current = 1;   // event number of the last event row planned
    int32_t previous = 0;  // the same, as it stood at the end of the row before
};

ListPlanner::ListPlanner(Document& m, const MainWindowState& window, Platform& platform)
    : s_(std::make_unique<State>(m, window, platform)) {}

ListPlanner::~ListPlanner() = default;

bool ListPlanner::Done() const noexcept { return s_->next > int64_t(s_->m.maxZeilen); }

void ListPlanner::BeforeMove(std::function<void()> f) { s_->lines.beforeMove = std::move(f); }

bool ListPlanner::PlanRows(int64_t rows) {
    State& st = *s_;
    Document& m = st.m;
    ListPlan& plan = st.plan;
    const PlanOptions& o = st.o;
    Platform& platform = st.platform;
    CommentBlock& block = st.block;
    Lines& lines = st.lines;
    std::vector<ChangeItem>& report = st.report;
    const bool record = st.record;
    int32_t current = st.current, previous = st.previous;
    const int64_t until = std::min<int64_t>(int64_t(m.maxZeilen) + 1, st.next + rows);
    std::vector<uint8_t>& codes = plan.rowCodes.rows;
    for (int64_t i = st.next; i < until; ++i) {
        // A conversion asked to stop ends here, between two rows.
        if (i % 4096 == 0 && platform.StopAsked()) return false;
        // Most rows are comments, clip names and blank lines, which leave no trace: they are
        // passed over up to the next row to look at (or the next look at the stop).
        const int64_t visit = NextRowToVisit(st.plan.rowsToVisit.bits, i, std::min(until, (i / 4096 + 1) * 4096));
        if (visit != i) {
            previous = current;
            platform.Yield();
            i = visit - 1;
            continue;
        }
        // A motion or audio line is read as it stands, at its place in the list: its text is
        // asked for some rows ahead, before the planner comes to it.
        constexpr int64_t kRowsAhead = 48;
        for (const int64_t ahead = std::min(until, i + kRowsAhead); st.fetched < ahead; ++st.fetched)
            if ((codes[size_t(st.fetched)] & (RowCodes::Motion | RowCodes::Audio)) != 0)
                Prefetch(m.copyCompletLine.Get(st.fetched));
        const bool skipSplit = o.audio && (st.plan.rowsToVisit.split[size_t(i) / 64] >> (i % 64) & 1) != 0;
        if (!skipSplit) {
            uint8_t& known = codes[size_t(i)];
            const uint8_t code = known != 0 ? known : (known = RowCode(m, i));
            // The modes change with the audio switch: they are looked up as they stand.
            const bool eventRow = (code & RowCodes::Number) != 0 && !m.copyMode.Get(i).empty() &&
                                  At(m.displayThisAudioEventLine, i) && At(m.displayThisKeyEventLine, i);
            if (eventRow) {
                current = At(m.readOrigEventNumberInt, i);
                if (o.comments) {
                    if (current == previous) {
                        const auto form = RowCodes::Form(code >> RowCodes::FormShift & 3);
                        if (form != RowCodes::Nothing) CommentFurtherRow(block, form, m.copyTrans.Get(i), o.wipeTable);
                    } else {
                        // A new event: the block of the one before goes out, ahead of this
                        // line, with a FROM line unless this row brings its own transition.
                        if (st.firstEvent && record)
                            report.push_back({ChangeKind::CommentBeforeFirstEvent,
                                              int32_t(i),
                                              current,
                                              0,
                                              i == 2 ? "stands right behind the header"
                                                     : "is numbered " + std::to_string(current) + ", not 1",
                                              {}});
                        if (code & RowCodes::NoDuration) block.PrependFrom();
                        // Only a block of three lines is sorted; sorting keeps the number of lines.
                        lines.AddBlock(block.LineEnds() == 3 ? st.sorted.Sorted(block.Text()) : block.Text(),
                                       block.LineEnds() + 1);
                        block.Clear();
                    }
                }
                st.firstEvent = false;
                if (o.mirror && record) {
                    if (!m.newReelName.empty()) {
                        ++st.masterReelEvents;
                    } else if (plan.mirrorReels.rows[size_t(i)] == MirrorReels::Renamed) {
                        m.report.renamedReels.emplace_back(int32_t(i), current);
                    }
                }
                lines.Add(LineKind::Event, uint32_t(i));
                ++st.events;
            } else {
                // A row with an event number that is no event line here has the text of its
                // last event line, which changes with the renderings: it is read as it stands.
                bool isMotion = (code & RowCodes::Motion) != 0, isAudio = (code & RowCodes::Audio) != 0;
                if ((code & RowCodes::Numbered) && (isMotion || isAudio)) {
                    const std::string_view line = m.copyCompletLine.Get(i);
                    isMotion = IsMotionLine(line);
                    isAudio = BeginsCI(line, "AUD");
                }
                const bool kept = KeepsNoteRow(isMotion, isAudio, At(m.readOrigM2, i), o);
                if (kept) lines.Add(LineKind::Note, uint32_t(i));
                if (record && isMotion) RecordMotion(m, o, i, current, kept, report);
            }
        }
        previous = current;
        platform.Yield();
    }
    st.next = until;
    st.current = current;
    st.previous = previous;
    return true;
}

void ListPlanner::Finish() {
    State& st = *s_;
    Document& m = st.m;
    ListPlan& plan = st.plan;
    const PlanOptions& o = st.o;
    const bool record = st.record;
    std::vector<ChangeItem>& report = st.report;
    // 4. The closing lines: the last event's block, unsorted, behind a FROM line.
    if (o.comments) {
        const size_t begin = plan.comments.size();
        for (const std::string_view piece :
             {kFromClipName, std::string_view(m.myAbsMovieName), kLineEnd, std::string_view(st.block.Text()), kLineEnd})
            st.lines.AppendComments(piece);
        st.lines.AddComments(begin, 1 + st.block.MovieLineEnds() + st.block.LineEnds() + 1);
    }

    // What this run changed besides the rows.
    if (record) {
        const std::string_view read = m.IsGrassValley ? Trim(m.ZeileEins) : Trim(Mid(m.ZeileEins, 7));
        if (read != m.newSeqTitle)
            report.push_back({ChangeKind::TitleApplied, -1, -1, 0, std::string(read), m.newSeqTitle});
    }
    if (o.comments && !m.myAbsMovieName.empty() && record)
        report.push_back({ChangeKind::MovieApplied, -1, -1, 0, {}, m.myAbsMovieName});
    if (o.mirror && record && st.events > 0) report.push_back({ChangeKind::MirrorList, -1, -1, st.events, {}, {}});
    if (st.masterReelEvents > 0)
        report.push_back(
            {ChangeKind::MasterReelApplied, -1, -1, st.masterReelEvents, {}, std::string(Trim(m.newReelName))});
}

bool PlanList(Document& m, const MainWindowState& window, Platform& platform) {
    m.plan.lines.reserve(size_t(std::max<int32_t>(m.maxZeilen, 0)) + 8);
    ListPlanner planner(m, window, platform);
    if (!planner.PlanRows(int64_t(m.maxZeilen) + 1)) return false;
    planner.Finish();
    return true;
}

EventFields EventFieldsOf(const Document& m, const ListPlan& plan, uint32_t row) {
    const PlanOptions& o = plan.options;
    const int64_t i = row;
    EventFields f;
    f.bTrack = m.copyIsBTrack.Get(i);
    f.stars = o.keyToDissolve && IsCI(f.bTrack, "B");
    f.number = At(m.copyEventNumberInt, i);
    // Reel: a named master replaces every reel of a mirror list; without a name the generated
    // clip reels replace the real sources and black and auxiliary stay.
    f.reel = m.copyReelNames.Get(i);
    if (o.mirror) {
        if (!plan.masterReel.empty())
            f.reel = plan.masterReel;
        else if (size_t(i) < plan.mirrorReels.rows.size() ? plan.mirrorReels.rows[size_t(i)] != MirrorReels::Keeps
                                                          : !IsReservedReel(f.reel))
            f.reel = m.cleanClipReelName.Get(i);
    }
    f.mode = m.copyMode.Get(i);
    f.trans = m.copyTrans.Get(i);
    f.duration = m.copyTransDur.Get(i);
    // A mirror list points the source side at the record timecodes of the master.
    f.recordIn = m.copyRecInTC.Get(i);
    f.recordOut = m.copyRecOutTC.Get(i);
    f.sourceIn = o.mirror ? f.recordIn : m.copySourceInTC.Get(i);
    f.sourceOut = o.mirror ? f.recordOut : m.copySourceOutTC.Get(i);
    return f;
}

}  // namespace vornelt
