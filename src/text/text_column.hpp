#pragma once
// A table of texts, one entry per row, held compactly.
//
// A conform list has hundreds of thousands of rows and every row has an entry in some
// thirty tables, so a heap string per entry would cost many times the file. Here only the
// rows whose text differs from the table's fill ("" for nearly every table) hold an entry,
// found through a RowSet, and an entry is 8 bytes: a piece of a shared buffer or of the
// table's own arena. The shared buffers are the document (the normalised text of the list,
// which every table of a load shares) and one outside buffer (the rendered list, whose event
// lines the working copy refers to). A text that lies inside the attached document is
// referenced, never copied, so the reader's cuts cost nothing; the arena holds the rest
// ("**", a repaired timecode).
//
// A table made as a copy of another shares its entries until either is changed, so a
// working copy that stays as read costs nothing.
//
// Entries are read as std::string_view; a view stays valid until the entry or the table is
// changed. Every change is noted in the table's ChangeLog.

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "text/change_log.hpp"
#include "text/row_set.hpp"

namespace vornelt {

using SharedText = std::shared_ptr<const std::string>;

class TextColumn {
public:
    // `fill` is the text of every row that holds no entry of its own; it must outlive the
    // table (a literal).
    explicit TextColumn(std::string_view fill = {});

    size_t size() const noexcept { return s_->rows.size(); }
    bool empty() const noexcept { return s_->rows.size() == 0; }
    size_t Count() const noexcept { return s_->rows.count(); }  // rows holding an entry

    // The entry of row i. Rows are in range by construction of the pipeline.
    std::string_view operator()(size_t i) const noexcept { return At(i); }
    // Whether row i holds an entry of its own (a text other than the fill).
    bool HasEntry(size_t i) const noexcept { return s_->rows.Find(i) >= 0; }
    // The entry of row i, or "" for a row out of range.
    std::string_view Get(int64_t i) const noexcept {
        return (i >= 0 && size_t(i) < s_->rows.size()) ? At(size_t(i)) : std::string_view();
    }

    // Texts that lie inside this buffer are referenced from now on. Emptying the table keeps
    // the attachment, so a table refilled from the same document still shares it.
    void AttachDocument(SharedText document) {
        if (!empty() && document != s_->document) changes_.Everything();
        Own().document = std::move(document);
    }
    const SharedText& Document() const noexcept { return s_->document; }

    void clear();  // empties the table; keeps its attachment
    void reserve(size_t n) { Own().rows.Reserve(n); }
    void push_back(std::string_view text) {
        // The reader's case, a cut of the attached document or the fill, without a call.
        if (s_.use_count() == 1 && text.size() <= kMaxLength) {
            Storage& s = *s_;
            changes_.Row(s.rows.size());
            if (text == fill_) {
                s.rows.PushBack(false);
                return;
            }
            const SharedText& document = s.document;
            if (document && text.data() >= document->data() &&
                text.data() + text.size() <= document->data() + document->size()) {
                s.rows.PushBack(true);
                s.refs.push_back(Ref{uint32_t(text.data() - document->data()), uint32_t(text.size())});
                return;
            }
        }
        PushBackStored(text);
    }
    // n new last rows holding the fill.
    void push_back_fill(size_t n) {
        Storage& s = Own();
        changes_.Rows(s.rows.size(), n);
        s.rows.PushBackEmpty(n);
    }
    void set(size_t i, std::string_view text);
    // Sizes the table to n rows, all holding the fill.
    void assign_empty(size_t n);
    // Makes this table an exact copy of `other`, sharing its storage until either changes.
    void CopyFrom(const TextColumn& other);

    // Points rows at pieces of an outside buffer, all in one go: pieces[k] says that row
    // `row` is the text at `offset`, `length` of `outside`. Rows that pointed into the
    // outside buffer of the time before and are not among the pieces keep their texts. The
    // pieces come in row order as a rule; a row given two takes the later one.
    struct Piece {
        uint32_t row;
        uint32_t offset;
        uint32_t length;
    };
    void SetOutsidePieces(SharedText outside, std::span<const Piece> pieces);

    // Calls f(row, text) for each row that holds an entry, in row order.
    template <typename F>
    void ForEachEntry(F&& f) const {
        const Storage& s = *s_;
        s.rows.ForEach([&](size_t row, size_t place) { f(row, View(s, s.refs[place])); });
    }
    // Calls f(row) for each row that holds an entry here and none in `other`, in row order.
    template <typename F>
    void ForEachRowNotIn(const TextColumn& other, F&& f) const {
        s_->rows.ForEachNotIn(other.s_->rows, f);
    }

    const ChangeLog& Changes() const noexcept { return changes_; }
    ChangeLog& Changes() noexcept { return changes_; }

    // Bytes held beyond the shared buffers, for the memory figures.
    size_t OwnBytes() const noexcept {
        return s_->arena.capacity() + s_->refs.capacity() * sizeof(Ref) + s_->rows.Bytes();
    }

private:
    struct Ref {
        uint32_t offset = 0;
        uint32_t length = 0;  // the two top bits say where the text is
    };
    static constexpr uint32_t kArena = 0x80000000u;
    static constexpr uint32_t kOutside = 0x40000000u;
    static constexpr uint32_t kKindMask = kArena | kOutside;
    static constexpr uint32_t kMaxLength = 0x3FFFFFFFu;

    struct Storage {
        RowSet rows;            // which rows hold an entry
        std::vector<Ref> refs;  // their entries, in row order
        std::string arena;
        SharedText document;
        SharedText outside;
        // The rows given pieces of the outside buffer, in order: every row that points into
        // it is among them (a row set since points elsewhere, which does no harm).
        std::vector<uint32_t> outsideRows;
        // Room for SetOutsidePieces, kept from one call to the next.
        std::vector<uint32_t> scratch, spareRows;
        size_t garbage = 0;  // arena bytes no entry refers to any more
        // The last few short texts put into the arena, so that a table set again and again
        // to "K", "D" or "**" does not grow.
        std::array<Ref, 4> recent{};
        size_t recentNext = 0;
    };

    std::string_view At(size_t i) const noexcept {
        const Storage& s = *s_;
        const int64_t k = s.rows.Find(i);
        return k < 0 ? fill_ : View(s, s.refs[size_t(k)]);
    }
    static std::string_view View(const Storage& s, Ref r) noexcept {
        const uint32_t n = r.length & kMaxLength;
        if (n == 0) return {};
        switch (r.length & kKindMask) {
            case kArena: return std::string_view(s.arena.data() + r.offset, n);
            case kOutside: return std::string_view(s.outside->data() + r.offset, n);
            default: return std::string_view(s.document->data() + r.offset, n);
        }
    }
    void PushBackStored(std::string_view text);
    Storage& Own();  // the storage, unshared first if it is shared
    Ref Store(Storage& s, std::string_view text);
    static void Forget(Storage& s, Ref old);  // an entry replaced: its arena bytes are garbage
    static void Compact(Storage& s);

    std::string_view fill_;
    std::shared_ptr<Storage> s_;
    ChangeLog changes_;
};

}  // namespace vornelt
