#pragma once
// The text area that shows the generated list. A conform list runs to a hundred thousand
// events and fifteen megabytes, and every click on an option renders it anew, so this view
// keeps no text of its own: it shares the list's buffer, indexes the line starts, and paints
// only the lines in sight. The font is of fixed width, which makes every line the same grid
// of columns; long lines wrap at the right edge.

#include <QAbstractScrollArea>
#include <QFont>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vornelt::qt {

// Offsets into a text. Growing them leaves the new elements unset: every one is written.
template <typename T>
struct UnsetAllocator : std::allocator<T> {
    template <typename U>
    struct rebind {
        using other = UnsetAllocator<U>;
    };
    UnsetAllocator() = default;
    template <typename U>
    UnsetAllocator(const UnsetAllocator<U>&) noexcept {}
    template <typename U, typename... Args>
    void construct(U* p, Args&&... args) {
        if constexpr (sizeof...(Args) == 0)
            ::new (static_cast<void*>(p)) U;
        else
            ::new (static_cast<void*>(p)) U(std::forward<Args>(args)...);
    }
};
using Offsets = std::vector<uint32_t, UnsetAllocator<uint32_t>>;

class ListView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit ListView(QWidget* parent = nullptr);

    // The list; lines end in carriage returns (a line feed is taken as well).
    void setText(std::shared_ptr<const std::string> text);
    const std::shared_ptr<const std::string>& text() const { return text_; }

    // Selection, as byte offsets into the text.
    bool hasSelection() const { return anchor_ != caret_; }
    QString selectedText() const;
    void setSelection(size_t anchor, size_t caret);
    // Selects and scrolls the selection into sight, a few rows below the top.
    void revealSelection(size_t anchor, size_t caret);
    // The same for a line of the list, from 1.
    void revealLine(int line);

    // Read-only at first. A writable area takes typing into its own copy of the text; the
    // list itself is not changed by it.
    void setReadOnly(bool readOnly);
    bool isReadOnly() const { return readOnly_; }

    int lineCount() const { return int(lineStarts_.size()); }
    int columns() const { return columns_; }
    int displayRows() const { return totalRows_; }
    int firstVisibleRow() const;
    // Where the caret's row and column are painted (for tests): -1 when it is not shown.
    QPoint caretCell() const;
    // The text of a display row as painted (for tests).
    QString displayRowText(int row) const;

public slots:
    void copy();
    void selectAll();

signals:
    void selectionChanged();
    // The user typed into a writable area.
    void textEdited();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    struct Segment {
        size_t begin = 0;  // byte offsets of the row's characters
        size_t end = 0;
    };

    void indexLines();
    void layoutRows();
    void updateScrollBar();
    int lineOfRow(int row) const;
    Segment segmentOfRow(int row) const;
    size_t offsetAt(const QPoint& viewportPos) const;
    int rowOf(size_t offset) const;
    void replaceSelection(const std::string& bytes);
    void moveCaret(size_t to, bool extend);
    size_t charsIn(size_t begin, size_t end) const;
    size_t advanceChars(size_t from, size_t limit, size_t count) const;

    std::shared_ptr<const std::string> text_;
    bool ascii_ = true;
    Offsets lineStarts_;  // byte offset of each line
    Offsets lineEnds_;    // byte offset of its line end
    Offsets rowStarts_;   // first display row of each line
    int totalRows_ = 0;
    int columns_ = 80;
    int charWidth_ = 7;
    int rowHeight_ = 14;
    int ascent_ = 11;
    size_t anchor_ = 0;
    size_t caret_ = 0;
    bool selecting_ = false;
    bool readOnly_ = true;
};

// Where the lines of a text begin and end: a line ends at a carriage return, a line feed, or
// the two in that order; the last line (empty behind a final line end) runs to the end. The
// vectors keep their memory from one text to the next. Returns whether the text is all ASCII.
// The text is read 64 bytes at a time, with the processor's vector instructions where there
// are any, and a long text in two halves at once; `LineScan::Words` reads it eight bytes to a
// machine word, as on other processors, and `LineScan::Halves` in halves whatever its length
// (the tests take every way everywhere).
enum class LineScan { Fastest, Words, Halves };
bool IndexLines(const char* data, size_t size, Offsets& starts, Offsets& ends, LineScan scan = LineScan::Fastest);

// "Monaco" 12 where it is installed, else another font in which every character of a list
// takes the same width.
QFont ListFont();

}  // namespace vornelt::qt
