#pragma once
// A table of texts, one entry per row, held compactly.
//
// A conform list has hundreds of thousands of rows and every row has an entry in some
// thirty tables, so a heap string per entry would cost many times the file. Here an entry
// is 8 bytes: a piece of one shared buffer, the document (the normalised text of the list,
// which every table of a load shares), or of the table's own arena, for texts that are not
// in the document ("**", a generated line, a repaired timecode). A text that lies inside the
// attached document is referenced, never copied, so the reader's cuts cost nothing.
//
// Entries are read as std::string_view; a view stays valid until the entry or the table is
// changed.

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vornelt {

using SharedText = std::shared_ptr<const std::string>;

class TextColumn {
public:
    TextColumn() = default;

    size_t size() const noexcept { return refs_.size(); }
    bool empty() const noexcept { return refs_.empty(); }

    // The entry of row i. Rows are in range by construction of the pipeline.
    std::string_view operator()(size_t i) const noexcept { return View(refs_[i]); }
    // The entry of row i, or "" for a row out of range.
    std::string_view Get(int64_t i) const noexcept {
        return (i >= 0 && size_t(i) < refs_.size()) ? View(refs_[size_t(i)]) : std::string_view();
    }

    // Texts that lie inside this buffer are referenced from now on. Emptying the table keeps
    // the attachment, so a table refilled from the same document still shares it.
    void AttachDocument(SharedText document) { document_ = std::move(document); }
    const SharedText& Document() const noexcept { return document_; }

    void clear() noexcept;  // empties the table; keeps its capacity and attachment
    void reserve(size_t n) { refs_.reserve(n); }
    void push_back(std::string_view text) { refs_.push_back(Store(text)); }
    void set(size_t i, std::string_view text);
    // Sizes the table to n rows, all empty.
    void assign_empty(size_t n);

    // Bytes held beyond the shared document, for the memory figures.
    size_t OwnBytes() const noexcept { return arena_.capacity() + refs_.capacity() * sizeof(Ref); }

private:
    struct Ref {
        uint32_t offset = 0;
        uint32_t length = 0;  // top bit set: the text is in the arena, else in the document
    };
    static constexpr uint32_t kArenaBit = 0x80000000u;

    std::string_view View(Ref r) const noexcept {
        if (r.length & kArenaBit) return std::string_view(arena_.data() + r.offset, r.length & ~kArenaBit);
        if (r.length == 0) return {};
        return std::string_view(document_->data() + r.offset, r.length);
    }
    Ref Store(std::string_view text);
    void Compact();

    SharedText document_;
    std::vector<Ref> refs_;
    std::string arena_;
    size_t garbage_ = 0;  // arena bytes no entry refers to any more
    // The last few short texts put into the arena, so that a table set again and again to
    // "K", "D" or "**" does not grow.
    std::array<Ref, 4> recent_{};
    size_t recentNext_ = 0;
};

}  // namespace vornelt
