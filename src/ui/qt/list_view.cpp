#include "ui/qt/list_view.hpp"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstring>
#include <limits>
#include <thread>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "text/bit_count.hpp"
#include "vornelt/processor.hpp"

namespace vornelt::qt {

namespace {

constexpr int kMargin = 4;

bool IsContinuationByte(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

bool IsWordByte(char c) { return c != ' ' && c != '\t' && c != '\r' && c != '\n'; }

// Whether every character a list holds (an EDL line is printable ASCII) advances by the same
// width, so that each line is a grid of equal cells.
bool HasEqualAdvances(const QFont& font) {
    const QFontMetricsF fm(font);
    const qreal cell = fm.horizontalAdvance(QStringLiteral("0"));
    for (char16_t c = 0x20; c <= 0x7E; ++c)
        if (fm.horizontalAdvance(QString(QChar(c))) != cell) return false;
    return true;
}

}  // namespace

QFont ListFont() {
    // The pitch a font declares is no guide: fontconfig gives Noto Sans Mono, which is what
    // "Monaco" and the fixed font resolve to on many Linux desktops, no fixed spacing, though
    // every character of a list has one width there. What counts is the advance of each
    // character, so the first family in which they are all equal is taken.
    const QString families[] = {
        QStringLiteral("Monaco"),           QFontDatabase::systemFont(QFontDatabase::FixedFont).family(),
        QStringLiteral("DejaVu Sans Mono"), QStringLiteral("Liberation Mono"),
        QStringLiteral("Noto Sans Mono"),   QStringLiteral("Courier New"),
    };
    const auto candidate = [](const QString& family) {
        QFont font(family);
        font.setPixelSize(12);
        font.setStyleHint(QFont::Monospace);
        // Unhinted outlines advance by a fraction of a pixel (7.19 for Noto Sans Mono 12), while
        // the caret, the selection and the wrapping count whole-pixel cells: the letter spacing
        // rounds each character's advance, or the text drifts off its cells along the line.
        const qreal advance = QFontMetricsF(font).horizontalAdvance(QLatin1Char('0'));
        if (advance != std::round(advance))
            font.setLetterSpacing(QFont::AbsoluteSpacing, std::round(advance) - advance);
        return font;
    };
    for (const QString& family : families)
        if (QFont font = candidate(family); HasEqualAdvances(font)) return font;
    // No such font at all: the lines still show, only their columns are uneven.
    return candidate(families[0]);
}

ListView::ListView(QWidget* parent) : QAbstractScrollArea(parent), text_(std::make_shared<const std::string>()) {
    setFont(ListFont());
    setFocusPolicy(Qt::StrongFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    changeEvent(nullptr);
    indexLines();
}

void ListView::setText(std::shared_ptr<const std::string> text) {
    if (!text) text = std::make_shared<const std::string>();
    if (text == text_) return;
    // The top line stays in sight when the list is rendered anew under other options.
    const int topLine = lineOfRow(firstVisibleRow());
    text_ = std::move(text);
    anchor_ = caret_ = 0;
    indexLines();
    const int line = std::min(topLine, std::max(0, lineCount() - 1));
    verticalScrollBar()->setValue(lineStarts_.empty() ? 0 : int(rowStarts_[size_t(line)]));
    viewport()->update();
    emit selectionChanged();
}

void ListView::setReadOnly(bool readOnly) {
    if (readOnly == readOnly_) return;
    readOnly_ = readOnly;
    viewport()->update();
}

int ListView::rowOf(size_t offset) const {
    auto it = std::upper_bound(lineStarts_.begin(), lineStarts_.end(),
                               uint32_t(std::min<size_t>(offset, std::numeric_limits<uint32_t>::max())));
    const size_t line = size_t(std::max<ptrdiff_t>(0, (it - lineStarts_.begin()) - 1));
    const size_t chars = charsIn(lineStarts_[line], std::min<size_t>(offset, lineEnds_[line]));
    const size_t cols = size_t(std::max(1, columns_));
    // At the very end of a full row the caret stands on that row, not the next one.
    size_t within = chars / cols;
    if (within > 0 && chars % cols == 0 && chars == charsIn(lineStarts_[line], lineEnds_[line])) --within;
    return int(rowStarts_[line] + within);
}

QPoint ListView::caretCell() const {
    if (readOnly_) return {-1, -1};
    const int row = rowOf(caret_);
    const Segment seg = segmentOfRow(row);
    return {int(charsIn(seg.begin, std::clamp(caret_, seg.begin, seg.end))), row};
}

void ListView::replaceSelection(const std::string& bytes) {
    const size_t lo = std::min(anchor_, caret_);
    const size_t hi = std::max(anchor_, caret_);
    // A copy of its own: the list's buffer is shared and never written.
    std::string edited;
    edited.reserve(text_->size() + bytes.size());
    edited.append(*text_, 0, lo).append(bytes).append(*text_, hi, std::string::npos);
    const int top = firstVisibleRow();
    text_ = std::make_shared<const std::string>(std::move(edited));
    indexLines();
    verticalScrollBar()->setValue(top);
    anchor_ = caret_ = lo + bytes.size();
    viewport()->update();
    emit textEdited();
    emit selectionChanged();
}

void ListView::revealSelection(size_t anchor, size_t caret) {
    setSelection(anchor, caret);
    const int row = rowOf(std::min(anchor_, caret_));
    const int first = firstVisibleRow();
    const int visible = std::max(1, viewport()->height() / rowHeight_);
    if (row < first || row >= first + visible) verticalScrollBar()->setValue(std::max(0, row - visible / 4));
}

void ListView::revealLine(int line) {
    if (line < 1 || line > lineCount()) return;
    revealSelection(lineStarts_[size_t(line - 1)], lineEnds_[size_t(line - 1)]);
}

void ListView::moveCaret(size_t to, bool extend) {
    setSelection(extend ? anchor_ : to, to);
    const int row = rowOf(caret_);
    const int first = firstVisibleRow();
    const int visible = std::max(1, viewport()->height() / rowHeight_);
    if (row < first)
        verticalScrollBar()->setValue(row);
    else if (row >= first + visible)
        verticalScrollBar()->setValue(row - visible + 1);
}

namespace {

constexpr size_t kBlock = 64;

// The high bit of each byte of x that is zero, and no other bit.
inline uint64_t ZeroBytes(uint64_t x) {
    constexpr uint64_t low7 = 0x7F7F7F7F7F7F7F7FULL;
    return ~(((x & low7) + low7) | x | low7);
}

// The high bits of the eight bytes of x (and no other bit set) as the low eight bits.
inline uint64_t GatherHighBits(uint64_t x) { return ((x >> 7) * 0x0102040810204080ULL) >> 56; }

// Eight bytes at a time in a machine word, for every processor. Block: the bits of the CR
// and LF bytes of 64 bytes.
struct WordScanner {
    uint64_t high = 0;
    uint64_t lf = 0;
    uint64_t Block(const char* p) {
        constexpr uint64_t crs = 0x0D0D0D0D0D0D0D0DULL, lfs = 0x0A0A0A0A0A0A0A0AULL;
        uint64_t bits = 0;
        for (size_t w = 0; w < kBlock / 8; ++w) {
            uint64_t word;
            std::memcpy(&word, p + 8 * w, 8);
            high |= word;
            const uint64_t isLF = ZeroBytes(word ^ lfs);
            lf |= isLF;
            bits |= GatherHighBits(ZeroBytes(word ^ crs) | isLF) << (8 * w);
        }
        return bits;
    }
    bool Ascii() const { return (high & 0x8080808080808080ULL) == 0; }
    bool AnyLF() const { return lf != 0; }
};

#if defined(__SSE2__)
// Sixteen bytes at a time in the vector registers of x86.
struct VectorScanner {
    __m128i high = _mm_setzero_si128();
    __m128i lf = _mm_setzero_si128();
    uint64_t Block(const char* p) {
        const __m128i crs = _mm_set1_epi8('\r');
        const __m128i lfs = _mm_set1_epi8('\n');
        uint64_t bits = 0;
        for (size_t v = 0; v < kBlock / 16; ++v) {
            const __m128i x = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p + 16 * v));
            high = _mm_or_si128(high, x);
            const __m128i isLF = _mm_cmpeq_epi8(x, lfs);
            lf = _mm_or_si128(lf, isLF);
            bits |= uint64_t(uint32_t(_mm_movemask_epi8(_mm_or_si128(_mm_cmpeq_epi8(x, crs), isLF)))) << (16 * v);
        }
        return bits;
    }
    bool Ascii() const { return _mm_movemask_epi8(high) == 0; }
    bool AnyLF() const { return _mm_movemask_epi8(lf) != 0; }
};
#endif

// Every CR and LF of the text into `ends` in order, the block's bits written out four at a
// time whatever their number (a block has one or two line ends as a rule), into room kept
// ahead. Whether the text is ASCII, and whether it has an LF.
template <typename Scanner>
size_t LineEndBytes(const char* data, size_t size, Offsets& ends, bool& ascii, bool& anyLF) {
    Scanner scanner;
    bool lf = false;
    size_t n = 0;
    size_t i = 0;
    for (; i + kBlock <= size; i += kBlock) {
        if (ends.size() < n + kBlock) ends.resize(std::max(ends.size() * 2, n + kBlock + size / 32));
        uint64_t m = scanner.Block(data + i);
        uint32_t* out = ends.data() + n;
        const int count = BitCount(m);
        const auto at = [i](uint64_t mask) { return uint32_t(i + size_t(std::countr_zero(mask))); };
        out[0] = at(m), m &= m - 1;
        out[1] = at(m), m &= m - 1;
        out[2] = at(m), m &= m - 1;
        out[3] = at(m), m &= m - 1;
        for (out += 4; m; m &= m - 1) *out++ = at(m);
        n += size_t(count);
    }
    unsigned char high = 0;
    for (; i < size; ++i) {
        const char c = data[i];
        high |= static_cast<unsigned char>(c);
        if (c == '\r' || c == '\n') {
            if (ends.size() <= n) ends.resize(n + 1);
            ends[n++] = uint32_t(i);
            lf = lf || c == '\n';
        }
    }
    ascii = scanner.Ascii() && high < 0x80;
    anyLF = lf || scanner.AnyLF();
    return n;
}

}  // namespace

namespace {

size_t LineEndBytesOneThread(const char* data, size_t size, Offsets& ends, bool& ascii, bool& anyLF, LineScan scan) {
#if defined(__SSE2__)
    if (scan != LineScan::Words) return LineEndBytes<VectorScanner>(data, size, ends, ascii, anyLF);
#endif
    (void)scan;
    return LineEndBytes<WordScanner>(data, size, ends, ascii, anyLF);
}

// A text this long is read in two halves at once, where there are two cores: a click on a
// long list shows it a millisecond sooner.
constexpr size_t kBytesForTwoThreads = size_t(2) << 20;

bool TwoCores() {
    static const bool two = std::thread::hardware_concurrency() >= 2;
    return two;
}

}  // namespace

bool IndexLines(const char* data, size_t size, Offsets& starts, Offsets& ends, LineScan scan) {
    bool ascii = true, anyLF = false;
    size_t n = 0;
    if (scan == LineScan::Halves || (scan == LineScan::Fastest && size >= kBytesForTwoThreads && TwoCores())) {
        // The second half's line ends go into `starts` for the while, behind the first half's
        // in `ends`; a line end is a byte of its own, so the halves may part anywhere.
        const size_t half = size / 2;
        bool ascii2 = true, anyLF2 = false;
        size_t n2 = 0;
        std::thread second([&] { n2 = LineEndBytesOneThread(data + half, size - half, starts, ascii2, anyLF2, scan); });
        n = LineEndBytesOneThread(data, half, ends, ascii, anyLF, scan);
        second.join();
        ends.resize(n + n2);
        for (size_t k = 0; k < n2; ++k) ends[n + k] = starts[k] + uint32_t(half);
        n += n2;
        ascii = ascii && ascii2;
        anyLF = anyLF || anyLF2;
    } else {
        n = LineEndBytesOneThread(data, size, ends, ascii, anyLF, scan);
    }
    // The last line, or the empty line behind a final line end.
    ends.resize(n + 1);
    ends[n] = uint32_t(size);
    if (anyLF) {
        // The LF of a CR LF is no line end of its own.
        size_t kept = 0;
        for (size_t k = 0; k < n; ++k) {
            const uint32_t p = ends[k];
            if (data[p] == '\n' && p > 0 && data[p - 1] == '\r') continue;
            ends[kept++] = p;
        }
        ends[kept] = uint32_t(size);
        n = kept;
        ends.resize(n + 1);
    }
    starts.resize(n + 1);
    starts[0] = 0;
    if (anyLF) {
        for (size_t k = 0; k < n; ++k) {
            const uint32_t p = ends[k];
            starts[k + 1] = p + (data[p] == '\r' && p + 1 < size && data[p + 1] == '\n' ? 2 : 1);
        }
    } else {
        for (size_t k = 0; k < n; ++k) starts[k + 1] = ends[k] + 1;
    }
    return ascii;
}

void ListView::indexLines() {
    const std::string& s = *text_;
    // Offsets are kept in 32 bits; a list is far below that (the reader takes at most 1 GB).
    const size_t size = std::min<size_t>(s.size(), std::numeric_limits<uint32_t>::max() - 1);
    ClearUpperVectorHalves();
    ascii_ = IndexLines(s.data(), size, lineStarts_, lineEnds_);
    layoutRows();
}

size_t ListView::charsIn(size_t begin, size_t end) const {
    if (ascii_) return end - begin;
    const char* data = text_->data();
    size_t n = 0;
    for (size_t i = begin; i < end; ++i) n += !IsContinuationByte(data[i]);
    return n;
}

size_t ListView::advanceChars(size_t from, size_t limit, size_t count) const {
    if (ascii_) return std::min(limit, from + count);
    const char* data = text_->data();
    size_t i = from;
    while (i < limit && count > 0) {
        ++i;
        while (i < limit && IsContinuationByte(data[i])) ++i;
        --count;
    }
    return i;
}

void ListView::layoutRows() {
    const size_t lines = lineStarts_.size();
    rowStarts_.resize(lines);
    const size_t cols = size_t(std::max(1, columns_));
    uint64_t row = 0;
    const auto rows = [cols](size_t chars) -> uint64_t { return chars <= cols ? 1 : (chars + cols - 1) / cols; };
    if (ascii_) {
        // A character a byte: no look at the text.
        for (size_t k = 0; k < lines; ++k) {
            rowStarts_[k] = uint32_t(std::min<uint64_t>(row, std::numeric_limits<uint32_t>::max()));
            row += rows(lineEnds_[k] - lineStarts_[k]);
        }
    } else {
        // A line of no more bytes than columns takes one row, whatever its characters.
        for (size_t k = 0; k < lines; ++k) {
            rowStarts_[k] = uint32_t(std::min<uint64_t>(row, std::numeric_limits<uint32_t>::max()));
            const size_t bytes = lineEnds_[k] - lineStarts_[k];
            row += bytes <= cols ? 1 : rows(charsIn(lineStarts_[k], lineEnds_[k]));
        }
    }
    totalRows_ = int(std::min<uint64_t>(row, uint64_t(std::numeric_limits<int>::max())));
    updateScrollBar();
}

void ListView::updateScrollBar() {
    const int visible = std::max(1, viewport()->height() / std::max(1, rowHeight_));
    verticalScrollBar()->setPageStep(visible);
    verticalScrollBar()->setSingleStep(1);
    verticalScrollBar()->setRange(0, std::max(0, totalRows_ - visible));
}

int ListView::firstVisibleRow() const { return verticalScrollBar()->value(); }

int ListView::lineOfRow(int row) const {
    if (rowStarts_.empty()) return 0;
    auto it = std::upper_bound(rowStarts_.begin(), rowStarts_.end(), uint32_t(std::max(0, row)));
    return int(std::max<ptrdiff_t>(0, (it - rowStarts_.begin()) - 1));
}

ListView::Segment ListView::segmentOfRow(int row) const {
    Segment seg;
    if (lineStarts_.empty() || row < 0 || row >= totalRows_) {
        seg.begin = seg.end = text_->size();
        return seg;
    }
    const size_t line = size_t(lineOfRow(row));
    const size_t within = size_t(row) - rowStarts_[line];
    const size_t cols = size_t(std::max(1, columns_));
    seg.begin = advanceChars(lineStarts_[line], lineEnds_[line], within * cols);
    seg.end = advanceChars(seg.begin, lineEnds_[line], cols);
    return seg;
}

QString ListView::displayRowText(int row) const {
    const Segment seg = segmentOfRow(row);
    return QString::fromUtf8(text_->data() + seg.begin, qsizetype(seg.end - seg.begin));
}

void ListView::paintEvent(QPaintEvent*) {
    QPainter p(viewport());
    const QPalette& pal = palette();
    const int first = firstVisibleRow();
    const int visible = viewport()->height() / std::max(1, rowHeight_) + 1;
    const size_t lo = std::min(anchor_, caret_);
    const size_t hi = std::max(anchor_, caret_);
    const bool active = hasFocus();
    const QColor highlight = pal.color(active ? QPalette::Active : QPalette::Inactive, QPalette::Highlight);
    const QColor highlightText = pal.color(active ? QPalette::Active : QPalette::Inactive, QPalette::HighlightedText);
    p.setPen(pal.color(QPalette::Text));
    QString rowText;
    for (int k = 0; k < visible; ++k) {
        const int row = first + k;
        if (row >= totalRows_) break;
        const Segment seg = segmentOfRow(row);
        const int y = k * rowHeight_;
        rowText = QString::fromUtf8(text_->data() + seg.begin, qsizetype(seg.end - seg.begin));
        rowText.replace(QLatin1Char('\t'), QLatin1Char(' '));
        if (lo < hi) {
            const size_t s = std::max(lo, seg.begin);
            size_t e = std::min(hi, seg.end);
            // A selection that runs past the line end shows one cell for the line end.
            const size_t line = size_t(lineOfRow(row));
            const bool lastRowOfLine = seg.end == lineEnds_[line];
            int extra = (lastRowOfLine && lo <= seg.end && hi > seg.end) ? 1 : 0;
            if (s < e || extra) {
                if (s > e) e = s;
                const int x0 = kMargin + int(charsIn(seg.begin, s)) * charWidth_;
                const int w = int(charsIn(s, e) + size_t(extra)) * charWidth_;
                p.fillRect(QRect(x0, y, w, rowHeight_), highlight);
            }
        }
        p.drawText(kMargin, y + ascent_, rowText);
        if (lo < hi && lo < seg.end && hi > seg.begin) {
            // The selected part again, in the highlight's text colour.
            const size_t s = std::max(lo, seg.begin);
            const size_t e = std::min(hi, seg.end);
            p.save();
            p.setClipRect(QRect(kMargin + int(charsIn(seg.begin, s)) * charWidth_, y, int(charsIn(s, e)) * charWidth_,
                                rowHeight_));
            p.setPen(highlightText);
            p.drawText(kMargin, y + ascent_, rowText);
            p.restore();
        }
    }
    if (!readOnly_ && active && lo == hi) {
        const QPoint cell = caretCell();
        const int y = (cell.y() - first) * rowHeight_;
        p.fillRect(QRect(kMargin + cell.x() * charWidth_, y, 1, rowHeight_), pal.color(QPalette::Text));
    }
}

void ListView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const int cols = std::max(1, (viewport()->width() - 2 * kMargin) / std::max(1, charWidth_));
    if (cols != columns_) {
        const int topLine = lineOfRow(firstVisibleRow());
        columns_ = cols;
        layoutRows();
        if (!rowStarts_.empty()) verticalScrollBar()->setValue(int(rowStarts_[size_t(topLine)]));
    } else {
        updateScrollBar();
    }
}

void ListView::changeEvent(QEvent* event) {
    if (!event || event->type() == QEvent::FontChange) {
        const QFontMetrics fm(font());
        charWidth_ = std::max(1, fm.horizontalAdvance(QStringLiteral("0")));  // with the letter spacing
        rowHeight_ = std::max(1, fm.lineSpacing());
        ascent_ = fm.ascent();
        if (event) {
            columns_ = std::max(1, (viewport()->width() - 2 * kMargin) / charWidth_);
            layoutRows();
        }
    }
    if (event) QAbstractScrollArea::changeEvent(event);
}

size_t ListView::offsetAt(const QPoint& pos) const {
    if (totalRows_ == 0) return 0;
    int row = firstVisibleRow() + (pos.y() < 0 ? -1 - (-pos.y()) / rowHeight_ : pos.y() / rowHeight_);
    if (row < 0) return 0;
    if (row >= totalRows_) return text_->size();
    const Segment seg = segmentOfRow(row);
    const int col = std::max(0, (pos.x() - kMargin + charWidth_ / 2) / charWidth_);
    return advanceChars(seg.begin, seg.end, size_t(col));
}

void ListView::setSelection(size_t anchor, size_t caret) {
    const size_t size = text_->size();
    anchor_ = std::min(anchor, size);
    caret_ = std::min(caret, size);
    viewport()->update();
    emit selectionChanged();
}

QString ListView::selectedText() const {
    const size_t lo = std::min(anchor_, caret_);
    const size_t hi = std::max(anchor_, caret_);
    QString s = QString::fromUtf8(text_->data() + lo, qsizetype(hi - lo));
    // Lines end in carriage returns inside the program; other programs want their own.
    s.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    s.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return s;
}

void ListView::copy() {
    if (hasSelection()) QGuiApplication::clipboard()->setText(selectedText());
}

void ListView::selectAll() { setSelection(0, text_->size()); }

void ListView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
    const size_t at = offsetAt(event->position().toPoint());
    if (event->modifiers() & Qt::ShiftModifier)
        setSelection(anchor_, at);
    else
        setSelection(at, at);
    selecting_ = true;
}

void ListView::mouseMoveEvent(QMouseEvent* event) {
    if (!selecting_) return;
    const QPoint pos = event->position().toPoint();
    if (pos.y() < 0) verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepSub);
    if (pos.y() > viewport()->height()) verticalScrollBar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
    setSelection(anchor_, offsetAt(pos));
}

void ListView::mouseReleaseEvent(QMouseEvent* event) {
    selecting_ = false;
    QAbstractScrollArea::mouseReleaseEvent(event);
}

void ListView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) return;
    const std::string& s = *text_;
    size_t at = offsetAt(event->position().toPoint());
    if (at >= s.size() || !IsWordByte(s[at])) return;
    size_t b = at, e = at;
    while (b > 0 && IsWordByte(s[b - 1])) --b;
    while (e < s.size() && IsWordByte(s[e])) ++e;
    setSelection(b, e);
}

bool ListView::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::SelectAll)) {
            event->accept();
            return true;
        }
    }
    return QAbstractScrollArea::event(event);
}

void ListView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return copy();
    if (event->matches(QKeySequence::SelectAll)) return selectAll();
    if (!readOnly_) {
        const std::string& s = *text_;
        const bool extend = event->modifiers() & Qt::ShiftModifier;
        auto previous = [&](size_t at) {
            if (at == 0) return at;
            --at;
            while (at > 0 && IsContinuationByte(s[at])) --at;
            return at;
        };
        auto next = [&](size_t at) { return advanceChars(at, s.size(), 1); };
        switch (event->key()) {
            case Qt::Key_Left: return moveCaret(previous(caret_), extend);
            case Qt::Key_Right: return moveCaret(next(caret_), extend);
            case Qt::Key_Backspace:
                if (!hasSelection()) anchor_ = previous(caret_);
                return replaceSelection({});
            case Qt::Key_Delete:
                if (!hasSelection()) anchor_ = next(caret_);
                return replaceSelection({});
            case Qt::Key_Return:
            case Qt::Key_Enter: return replaceSelection("\r");
            default: break;
        }
        const QString typed = event->text();
        if (!typed.isEmpty() && typed.at(0).isPrint() &&
            !(event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)))
            return replaceSelection(typed.toStdString());
    }
    QScrollBar* bar = verticalScrollBar();
    switch (event->key()) {
        case Qt::Key_Up: bar->triggerAction(QAbstractSlider::SliderSingleStepSub); break;
        case Qt::Key_Down: bar->triggerAction(QAbstractSlider::SliderSingleStepAdd); break;
        case Qt::Key_PageUp: bar->triggerAction(QAbstractSlider::SliderPageStepSub); break;
        case Qt::Key_PageDown: bar->triggerAction(QAbstractSlider::SliderPageStepAdd); break;
        case Qt::Key_Home: bar->triggerAction(QAbstractSlider::SliderToMinimum); break;
        case Qt::Key_End: bar->triggerAction(QAbstractSlider::SliderToMaximum); break;
        default: QAbstractScrollArea::keyPressEvent(event); return;
    }
}

void ListView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    QAction* copyAction = menu.addAction(QStringLiteral("Kopieren"), this, &ListView::copy);
    copyAction->setEnabled(hasSelection());
    menu.addAction(QStringLiteral("Alles auswählen"), this, &ListView::selectAll);
    menu.exec(event->globalPos());
}

}  // namespace vornelt::qt
