// The writer: the plan of the new list (writer/plan.hpp) written out in the list's columns.
//
// Speed: a click on any option reruns this over the whole list, so the list is built in one
// string and every field is appended to it directly; no line makes a string of its own. An
// event line whose tables have not changed since the rendering before, under the same options
// that shape a line, is copied from the list before instead of being put together anew.
#include <algorithm>
#include <condition_variable>
#include <cstring>
#include <exception>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "text/encodings.hpp"
#include "text/prefetch.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"
#include "writer/plan.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

// The first and the last `width` bytes of a text of `width` to 2 * `width` bytes, both read
// before either is written: together they cover the text, overlapping in the middle.
template <size_t width>
inline void CopyEnds(char* to, const char* from, size_t n) noexcept {
    char head[width], tail[width];
    std::memcpy(head, from, width);
    std::memcpy(tail, from + n - width, width);
    std::memcpy(to, head, width);
    std::memcpy(to + n - width, tail, width);
}

// A text of a few bytes copied without a call: two loads, which may overlap, cover any
// length up to 32 and read nothing outside the text. The fields of an event line are such
// texts, and a call for each cost more than the copying.
inline void CopyShort(char* to, const char* from, size_t n) noexcept {
    if (n >= 16) {
        CopyEnds<16>(to, from, n);
    } else if (n >= 8) {
        CopyEnds<8>(to, from, n);
    } else if (n >= 4) {
        CopyEnds<4>(to, from, n);
    } else if (n > 0) {
        const char a = from[0], b = from[n / 2], c = from[n - 1];
        to[0] = a;
        to[n / 2] = b;
        to[n - 1] = c;
    }
}

// One event line, put together in place and added to the list in one go: a line is some twenty
// pieces, and each piece added to the list on its own costs a check of the list's room. A line
// that does not fit (a long text in the duration or B field) is written the plain way.
class LineBuffer {
public:
    LineBuffer& append(std::string_view s) noexcept {
        if (s.size() > kRoom - n_) {
            overflowed_ = true;
        } else if (s.size() <= 32) {
            CopyShort(data_ + n_, s.data(), s.size());
            n_ += s.size();
        } else {
            std::memcpy(data_ + n_, s.data(), s.size());
            n_ += s.size();
        }
        return *this;
    }
    LineBuffer& append(size_t count, char c) noexcept {
        if (count > kRoom || count > kRoom - n_) {
            overflowed_ = true;
        } else {
            // Padding is a few blanks: sixteen are set at once, into the room behind the line.
            std::memset(data_ + n_, c, kSlack);
            if (count > kSlack) std::memset(data_ + n_, c, count);
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
    static constexpr size_t kSlack = 16;
    char data_[kRoom + kSlack];
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

template <typename Out>
void AppendEventLine(Out& out, const EventFields& f, bool grassValley, std::string& reelField) {
    // Event number: stars for the background row of a key turned into a dissolve.
    if (f.stars)
        out.append(grassValley ? "****" : "***");
    else
        AppendZeroFilled(out, f.number, grassValley ? 4 : 3);
    out.push_back(' ');

    std::string_view plainReel;
    size_t blanks = 0;
    if (PlainReelField(f.reel, grassValley, plainReel, blanks)) {
        out.append(plainReel).append(blanks, ' ');
    } else {
        reelField.clear();
        AppendReelField(reelField, f.reel, grassValley);
        out.append(reelField);
    }
    out.push_back(' ');

    AppendMode(out, f.mode);
    out.push_back(' ');
    AppendTransition(out, f.trans);
    out.push_back(' ');

    if (f.bTrack.empty())
        out.append("  ");
    else
        out.append(f.bTrack).push_back(' ');
    out.push_back(' ');

    if (f.duration.empty())
        out.append("   ");
    else
        out.append(f.duration);
    out.push_back(' ');

    out.append(f.sourceIn);
    out.push_back(' ');
    out.append(f.sourceOut);
    // The one separator that differs between the forms.
    out.append(grassValley ? "  " : " ");
    out.append(f.recordIn);
    out.push_back(' ');
    out.append(f.recordOut);
}

// The tables an event line is written from (EventFieldsOf reads these and no others), in the
// order of LastRendering::tables.
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
    LinesBefore(Document& m, const ListPlan& plan) : last_(m.lastRendering) {
        const PlanOptions& o = plan.options;
        if (!m.renderedList || last_.list != m.renderedList.get() || last_.grassValley != o.grassValley ||
            last_.mirror != o.mirror || last_.keyToDissolve != o.keyToDissolve || last_.reelName != plan.masterReel)
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
    std::optional<std::string_view> Line(size_t i) { return LineAt(i, next_); }
    // Whether row i's line is written anew, asked a few rows ahead of Line (ascending too).
    bool WrittenAnew(size_t i) { return !LineAt(i, ahead_); }

private:
    std::optional<std::string_view> LineAt(size_t i, size_t& next) const {
        if (!usable_ || (changed_[i / 64] >> (i % 64) & 1) != 0) return std::nullopt;
        const std::vector<TextColumn::Piece>& lines = last_.lines;
        while (next < lines.size() && lines[next].row < i) ++next;
        if (next == lines.size() || lines[next].row != i) return std::nullopt;
        const TextColumn::Piece& p = lines[next];
        return list_.substr(p.offset, p.length);
    }

    const LastRendering& last_;
    std::vector<uint64_t> changed_;  // a bit for each row whose tables changed
    std::string_view list_;
    size_t next_ = 0, ahead_ = 0;
    bool usable_ = false;
};

// What the next rendering needs to copy this one's event lines.
void RememberLines(Document& m, std::vector<TextColumn::Piece>&& lines) {
    const PlanOptions& o = m.plan.options;
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
    last.reelName = m.plan.masterReel;
}

// Room for the list as the text of the rows and the header; the comment lines are about as
// long as the clip name lines they stand for.
size_t EstimatedSize(const Document& m) {
    const size_t rows = m.maxZeilen > 0 ? size_t(m.maxZeilen) + 1 : 1;
    return rows * 82 + m.newSeqTitle.size() + 256;
}

// One planned line in the list's columns, ended by a carriage return. An event line is put
// together from its fields, unless the list before has it already.
void WriteLine(const Document& m, const ListPlan& plan, const PlannedLine& l, std::string_view comments,
               std::string& out, std::string& reelField, LinesBefore* linesBefore) {
    const bool gvg = plan.options.grassValley;
    switch (l.kind) {
        case LineKind::Title:
            if (!gvg) out.append("TITLE: ");
            out.append(plan.title).push_back(kCR);
            break;
        case LineKind::FrameCodeMode:
            out.append(gvg              ? "SMPTE FRAME CODE"
                       : plan.dropFrame ? "FCM: DROP FRAME"
                                        : "FCM: NON-DROP FRAME")
                .push_back(kCR);
            break;
        case LineKind::Blank: out.push_back(kCR); break;
        case LineKind::Comments: out.append(comments.substr(l.begin, l.end - l.begin)); break;
        case LineKind::Note: out.append(m.copyCompletLine.Get(l.row)).push_back(kCR); break;
        case LineKind::Event: {
            if (const std::optional<std::string_view> before = linesBefore ? linesBefore->Line(l.row) : std::nullopt) {
                out.append(*before);
            } else {
                const EventFields fields = EventFieldsOf(m, plan, l.row);
                LineBuffer eventLine;
                AppendEventLine(eventLine, fields, gvg, reelField);
                if (eventLine.Overflowed())
                    AppendEventLine(out, fields, gvg, reelField);
                else
                    out.append(eventLine.Text());
            }
            out.push_back(kCR);
            break;
        }
    }
}

// What the lines are written under, copied from the plan: beside a planner that goes on
// adding to the plan on another thread, the writer reads nothing that shares memory with
// what the planner writes.
ListPlan ShapeOf(const ListPlan& plan) {
    ListPlan shape;
    shape.options = plan.options;
    shape.title = plan.title;
    shape.masterReel = plan.masterReel;
    shape.dropFrame = plan.dropFrame;
    if (plan.options.mirror) shape.mirrorReels.rows = plan.mirrorReels.rows;
    return shape;
}

// Planned lines written out, a stretch at a time, for the working copy and the next rendering:
// the pieces of the event lines (row, where, how long) are gathered as they are written.
class PlanWriter {
public:
    PlanWriter(Document& m, std::string& out, std::vector<TextColumn::Piece>& pieces)
        : m_(m), shape_(ShapeOf(m.plan)), out_(out), pieces_(pieces), linesBefore_(m, shape_) {}

    void Write(const PlannedLine* from, const PlannedLine* to, std::string_view comments) {
        // An event line written anew is put together from its row's fields in the list as
        // read, a place far from the last: its text is asked for some lines ahead.
        constexpr ptrdiff_t kAhead = 24;
        const PlannedLine* ahead = from;
        for (const PlannedLine* l = from; l != to; ++l) {
            for (; ahead != to && ahead - l < kAhead; ++ahead)
                if (ahead->kind == LineKind::Event && linesBefore_.WrittenAnew(ahead->row))
                    Prefetch(m_.readOrigCompleteLine.Get(ahead->row));
            const size_t start = out_.size();
            WriteLine(m_, shape_, *l, comments, out_, reelField_, &linesBefore_);
            // The row's text becomes the line just written. It is a piece of the list itself,
            // handed over when the list is done; nothing of this run reads the row's text again.
            if (l->kind == LineKind::Event && l->row < m_.copyCompletLine.size())
                pieces_.push_back({l->row, uint32_t(start), uint32_t(out_.size() - 1 - start)});
        }
    }

private:
    const Document& m_;
    const ListPlan shape_;
    std::string& out_;
    std::vector<TextColumn::Piece>& pieces_;
    LinesBefore linesBefore_;
    std::string reelField_;
};

// The writer on a second thread, writing the lines the planner hands over while it plans the
// next stretch: planning reads the tables and writing mostly copies, and a click on a long
// list takes the time of the slower of the two instead of both. The planner hands over how
// many lines stand planned and where the plan's lines and comment text are; before either
// moves to larger memory it waits until the writer has written all it was handed.
class WriterThread {
public:
    // The writer works on the list and the pieces of its own while it runs (Join gives them
    // back), so that nothing it writes shares memory with the planner.
    // A thread that cannot be started leaves Started() false.
    WriterThread(Document& m, std::string&& out, std::vector<TextColumn::Piece>&& pieces)
        : m_(m), out_(std::move(out)), pieces_(std::move(pieces)) {
        try {
            thread_ = std::thread([this] { Run(); });
        } catch (const std::system_error&) {
        }
    }
    ~WriterThread() {
        {
            std::lock_guard lock(mutex_);
            abandoned_ = true;
        }
        changed_.notify_all();
        if (thread_.joinable()) thread_.join();
    }
    WriterThread(const WriterThread&) = delete;
    WriterThread& operator=(const WriterThread&) = delete;

    // The lines planned so far; `last`: the plan is done.
    void HandOver(const ListPlan& plan, bool last) {
        {
            std::lock_guard lock(mutex_);
            lines_ = plan.lines.data();
            planned_ = plan.lines.size();
            comments_ = plan.comments;
            last_ = last;
        }
        changed_.notify_all();
    }
    bool Started() const noexcept { return thread_.joinable(); }
    // The list and the pieces back, from a writer that never started.
    void GiveBack(std::string& out, std::vector<TextColumn::Piece>& pieces) {
        out = std::move(out_);
        pieces = std::move(pieces_);
    }
    // The writer stopped on an error, which Join raises.
    bool Failed() {
        std::lock_guard lock(mutex_);
        return error_ != nullptr;
    }
    // Waits until everything handed over is written.
    void Drain() {
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return written_ == planned_ || error_; });
    }
    // Waits for the whole list; an error of the writer is raised here.
    void Join(std::string& out, std::vector<TextColumn::Piece>& pieces) {
        thread_.join();
        if (error_) std::rethrow_exception(error_);
        out = std::move(out_);
        pieces = std::move(pieces_);
    }

private:
    void Run() {
        try {
            PlanWriter writer(m_, out_, pieces_);
            size_t done = 0;
            for (;;) {
                const PlannedLine* lines = nullptr;
                size_t planned = 0;
                std::string_view comments;
                bool last = false;
                {
                    std::unique_lock lock(mutex_);
                    changed_.wait(lock, [&] { return abandoned_ || last_ || planned_ > done; });
                    if (abandoned_) return;
                    lines = lines_;
                    planned = planned_;
                    comments = comments_;
                    last = last_;
                }
                writer.Write(lines + done, lines + planned, comments);
                done = planned;
                {
                    std::lock_guard lock(mutex_);
                    written_ = done;
                }
                changed_.notify_all();
                if (last) return;
            }
        } catch (...) {
            {
                std::lock_guard lock(mutex_);
                error_ = std::current_exception();
            }
            changed_.notify_all();
        }
    }

    Document& m_;
    std::string out_;
    std::vector<TextColumn::Piece> pieces_;
    std::mutex mutex_;
    std::condition_variable changed_;
    const PlannedLine* lines_ = nullptr;
    size_t planned_ = 0, written_ = 0;
    std::string_view comments_;
    bool last_ = false, abandoned_ = false;
    std::exception_ptr error_;
    std::thread thread_;  // last: it starts once everything above stands
};

// A list this long is planned and written on two threads, where there are two; in the page
// the one thread there is must not wait.
bool UsesTwoThreads(const Document& m) {
#if defined(__EMSCRIPTEN__)
    (void)m;
    return false;
#else
    constexpr int32_t kRowsForTwoThreads = 16384;
    static const bool twoCores = std::thread::hardware_concurrency() >= 2;
    return twoCores && m.maxZeilen >= kRowsForTwoThreads;
#endif
}

// Plans the list and writes it into `out`; false when the platform asked to stop.
bool PlanAndWrite(Document& m, MainWindowState& window, Platform& platform, std::string& out,
                  std::vector<TextColumn::Piece>& pieces) {
    if (!UsesTwoThreads(m)) {
        if (!PlanList(m, window, platform)) return false;
        PlanWriter(m, out, pieces)
            .Write(m.plan.lines.data(), m.plan.lines.data() + m.plan.lines.size(), m.plan.comments);
        return true;
    }
    // Stretches of this many rows are handed over as they are planned.
    constexpr int64_t kStretch = 8192;
    m.plan.lines.reserve(size_t(std::max<int32_t>(m.maxZeilen, 0)) + 8);
    ListPlanner planner(m, window, platform);
    WriterThread writer(m, std::move(out), std::move(pieces));
    if (!writer.Started()) {
        // No second thread to be had: the one plans and writes.
        writer.GiveBack(out, pieces);
        if (!planner.PlanRows(int64_t(m.maxZeilen) + 1)) return false;
        planner.Finish();
        PlanWriter(m, out, pieces)
            .Write(m.plan.lines.data(), m.plan.lines.data() + m.plan.lines.size(), m.plan.comments);
        return true;
    }
    planner.BeforeMove([&writer] { writer.Drain(); });
    // A writer that failed is not kept waiting for the rest of the plan.
    while (!planner.Done() && !writer.Failed()) {
        if (!planner.PlanRows(kStretch)) return false;
        writer.HandOver(m.plan, false);
    }
    if (writer.Failed()) writer.Join(out, pieces);  // raises the writer's error
    planner.Finish();
    writer.HandOver(m.plan, true);
    writer.Join(out, pieces);
    return true;
}

}  // namespace

void NewEDL_02(Document& m, MainWindowState& window, Platform& platform) {
    // The text goes into the memory of the list before last, once nothing else holds it.
    std::string out;
    if (m.renderSpare) {
        out = std::move(*m.renderSpare);
        m.renderSpare.reset();
        out.clear();
    }
    out.reserve(EstimatedSize(m));
    std::vector<TextColumn::Piece> pieces;
    pieces.reserve(size_t(std::max<int32_t>(m.maxZeilen, 0)));
    // A conversion asked to stop keeps no list.
    if (!PlanAndWrite(m, window, platform, out, pieces)) return;

    // The list and the text area share one buffer, and the generated lines of the working
    // copy are pieces of it.
    const bool piecesFit = out.size() <= 0xFFFFFFFFu;
    std::shared_ptr<std::string> before = std::move(m.renderedList);
    m.renderedList = std::make_shared<std::string>(std::move(out));
    m.finalCMXString = m.renderedList;
    if (piecesFit) {
        m.copyCompletLine.SetOutsidePieces(m.finalCMXString, pieces);
    } else {
        for (const TextColumn::Piece& p : pieces)
            m.copyCompletLine.set(p.row, std::string_view(*m.finalCMXString).substr(p.offset, p.length));
    }
    window.EditField1.Text = m.finalCMXString;
    if (piecesFit)
        RememberLines(m, std::move(pieces));
    else
        m.lastRendering = LastRendering{};
    if (before && before.use_count() == 1) m.renderSpare = std::move(before);

    // A fresh rendering always counts as unsaved.
    m.isModified = true;
    PunktImPunkt(m, platform);
}

SavedListWriter::SavedListWriter(std::function<bool(std::string_view)> write) : write_(std::move(write)) {
    text_.reserve(kPiece + 256);
    saved_.reserve(kPiece + kPiece / 8);
}

bool SavedListWriter::Add(const Document& m, const PlannedLine* from, const PlannedLine* to) {
    for (const PlannedLine* l = from; l != to; ++l) {
        WriteLine(m, m.plan, *l, m.plan.comments, text_, reelField_, nullptr);
        // Whole lines go out at a time: no piece ends inside a line or a character.
        if (text_.size() >= kPiece && !Flush()) return false;
    }
    return true;
}

bool SavedListWriter::Flush() {
    if (text_.empty()) return true;
    saved_.clear();
    AppendListForSaving(saved_, text_);
    text_.clear();
    return write_(saved_);
}

bool WritePlanForSaving(const Document& m, const std::function<bool(std::string_view)>& write) {
    SavedListWriter writer(write);
    const std::vector<PlannedLine>& lines = m.plan.lines;
    return writer.Add(m, lines.data(), lines.data() + lines.size()) && writer.Flush();
}

std::string PlannedText(const Document& m, const PlannedLine* from, const PlannedLine* to) {
    std::string out, reelField;
    for (const PlannedLine* l = from; l != to; ++l) WriteLine(m, m.plan, *l, m.plan.comments, out, reelField, nullptr);
    return out;
}

void PunktImPunkt(const Document& m, Platform& platform) {
    const int result = platform.SetWindowModified(m.isModified);
    if (result != 0) platform.MsgBox("Err: " + Format(result, "-#"));
}

}  // namespace vornelt
