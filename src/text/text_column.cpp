#include "text/text_column.hpp"

#include <algorithm>
#include <stdexcept>

namespace vornelt {

TextColumn::TextColumn(std::string_view fill) : fill_(fill), s_(std::make_shared<Storage>()) {}

TextColumn::Storage& TextColumn::Own() {
    if (s_.use_count() > 1) s_ = std::make_shared<Storage>(*s_);
    return *s_;
}

void TextColumn::clear() {
    changes_.Everything();
    if (s_.use_count() > 1) {
        auto fresh = std::make_shared<Storage>();
        fresh->document = s_->document;
        s_ = std::move(fresh);
        return;
    }
    // The memory stays: a table is filled again to about the same size by the next load.
    Storage& s = *s_;
    s.rows.Clear();
    s.refs.clear();
    s.arena.clear();
    s.outside.reset();
    s.outsideRows.clear();
    s.garbage = 0;
    s.recent = {};
    s.recentNext = 0;
}

void TextColumn::assign_empty(size_t n) {
    clear();  // a change of everything
    s_->rows.AssignEmpty(n);
}

void TextColumn::CopyFrom(const TextColumn& other) {
    if (this == &other) return;
    changes_.Everything();
    fill_ = other.fill_;
    s_ = other.s_;
}

void TextColumn::PushBackStored(std::string_view text) {
    Storage& s = Own();
    changes_.Row(s.rows.size());
    if (text == fill_) {
        s.rows.PushBack(false);
        return;
    }
    const Ref r = Store(s, text);
    s.rows.PushBack(true);
    s.refs.push_back(r);
}

TextColumn::Ref TextColumn::Store(Storage& s, std::string_view text) {
    if (text.empty()) return Ref{};
    if (text.size() > kMaxLength) throw std::length_error("text too long for a table entry");
    if (s.document) {
        const char* begin = s.document->data();
        const char* end = begin + s.document->size();
        if (text.data() >= begin && text.data() + text.size() <= end)
            return Ref{uint32_t(text.data() - begin), uint32_t(text.size())};
    }
    if (text.size() <= 16) {
        for (const Ref& r : s.recent) {
            if (r.length == 0) continue;
            if (View(s, r) == text) return r;
        }
    }
    if (s.arena.size() + text.size() > 0xFFFFFFFFull) Compact(s);
    if (s.arena.size() + text.size() > 0xFFFFFFFFull) throw std::length_error("table arena full");
    Ref r{uint32_t(s.arena.size()), uint32_t(text.size()) | kArena};
    // `text` may lie in this very arena (an entry set from another entry): append copes.
    s.arena.append(text);
    if (text.size() <= 16) {
        s.recent[s.recentNext] = r;
        s.recentNext = (s.recentNext + 1) % s.recent.size();
    }
    return r;
}

void TextColumn::Forget(Storage& s, Ref old) {
    if ((old.length & kKindMask) != kArena) return;
    s.garbage += old.length & kMaxLength;
    if (s.garbage > (1u << 20) && s.garbage * 2 > s.arena.size()) Compact(s);
}

void TextColumn::set(size_t i, std::string_view text) {
    if (i >= size()) return;
    changes_.Row(i);
    Storage& s = Own();
    const int64_t k = s.rows.Find(i);
    if (k >= 0) {
        const Ref old = s.refs[size_t(k)];
        if ((old.length & kKindMask) == kArena && View(s, old) == text) return;
        s.refs[size_t(k)] = Store(s, text);
        Forget(s, old);
        return;
    }
    // A row that holds the fill gets an entry of its own.
    if (text == fill_) return;
    const Ref r = Store(s, text);
    const size_t place = s.rows.Insert(i);
    s.refs.insert(s.refs.begin() + ptrdiff_t(place), r);
}

void TextColumn::SetOutsidePieces(SharedText outside, std::span<const Piece> pieces) {
    Storage& s = Own();
    // Rows that still point into the old outside buffer and get no new piece keep their
    // texts in the arena before that buffer goes. Only the rows given pieces last time can.
    if (s.outside) {
        size_t k = 0;
        for (const uint32_t row : s.outsideRows) {
            while (k < pieces.size() && pieces[k].row < row) ++k;
            if (k < pieces.size() && pieces[k].row == row) continue;
            const int64_t place = row < s.rows.size() ? s.rows.Find(row) : -1;
            if (place < 0) continue;
            Ref& r = s.refs[size_t(place)];
            if ((r.length & kKindMask) != kOutside) continue;
            const std::string_view text = View(s, r);
            r = Ref{uint32_t(s.arena.size()), uint32_t(text.size()) | kArena};
            s.arena.append(text);
        }
    }
    for (const Piece& p : pieces) {
        if (p.row >= s.rows.size() || p.length > kMaxLength) continue;
        changes_.Row(p.row);
        const Ref r = p.length == 0 ? Ref{} : Ref{p.offset, p.length | kOutside};
        const int64_t k = s.rows.Find(p.row);
        if (k >= 0) {
            const Ref old = s.refs[size_t(k)];
            s.refs[size_t(k)] = r;
            if ((old.length & kKindMask) == kArena) s.garbage += old.length & kMaxLength;
        } else if (p.length != 0 || !fill_.empty()) {
            const size_t place = s.rows.Insert(p.row);
            s.refs.insert(s.refs.begin() + ptrdiff_t(place), r);
        }
    }
    s.outside = std::move(outside);
    s.outsideRows.resize(pieces.size());
    for (size_t k = 0; k < pieces.size(); ++k) s.outsideRows[k] = pieces[k].row;
    if (s.garbage > (1u << 20) && s.garbage * 2 > s.arena.size()) Compact(s);
}

void TextColumn::Compact(Storage& s) {
    std::string fresh;
    fresh.reserve(s.arena.size() - std::min(s.garbage, s.arena.size()));
    for (Ref& r : s.refs) {
        if ((r.length & kKindMask) != kArena) continue;
        const uint32_t n = r.length & kMaxLength;
        const uint32_t offset = uint32_t(fresh.size());
        fresh.append(s.arena, r.offset, n);
        r.offset = offset;
    }
    s.arena.swap(fresh);
    s.garbage = 0;
    s.recent = {};
    s.recentNext = 0;
}

}  // namespace vornelt
