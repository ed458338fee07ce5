#include "text/text_column.hpp"

#include <algorithm>
#include <stdexcept>

namespace vornelt {

TextColumn::TextColumn() : s_(std::make_shared<Storage>()) {}

TextColumn::Storage& TextColumn::Own() {
    if (s_.use_count() > 1) s_ = std::make_shared<Storage>(*s_);
    return *s_;
}

void TextColumn::clear() {
    if (s_.use_count() > 1) {
        s_ = std::make_shared<Storage>();
    } else {
        Storage& s = *s_;
        s.refs.clear();
        s.arena.clear();
        s.garbage = 0;
        s.recent = {};
        s.recentNext = 0;
    }
    outside_.reset();
}

void TextColumn::assign_empty(size_t n) {
    clear();
    s_->refs.assign(n, Ref{});
}

void TextColumn::CopyFrom(const TextColumn& other) {
    if (this == &other) return;
    document_ = other.document_;
    outside_ = other.outside_;
    s_ = other.s_;
}

void TextColumn::PushBackStored(std::string_view text) {
    Storage& s = Own();
    s.refs.push_back(Store(s, text));
}

TextColumn::Ref TextColumn::Store(Storage& s, std::string_view text) {
    if (text.empty()) return Ref{};
    if (text.size() > kMaxLength) throw std::length_error("text too long for a table entry");
    if (document_) {
        const char* begin = document_->data();
        const char* end = begin + document_->size();
        if (text.data() >= begin && text.data() + text.size() <= end)
            return Ref{uint32_t(text.data() - begin), uint32_t(text.size())};
    }
    if (text.size() <= 16) {
        for (const Ref& r : s.recent) {
            if (r.length == 0) continue;
            if (View(r) == text) return r;
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

void TextColumn::set(size_t i, std::string_view text) {
    Storage& s = Own();
    const Ref old = s.refs[i];
    if ((old.length & kKindMask) == kArena && View(old) == text) return;
    s.refs[i] = Store(s, text);
    if ((old.length & kKindMask) == kArena) {
        s.garbage += old.length & kMaxLength;
        if (s.garbage > (1u << 20) && s.garbage * 2 > s.arena.size()) Compact(s);
    }
}

void TextColumn::SetOutsidePieces(SharedText outside, std::span<const Piece> pieces) {
    Storage& s = Own();
    // Rows that still point into the old outside buffer and get no new piece keep their
    // texts in the arena before that buffer goes. The pieces come in row order.
    if (outside_) {
        size_t k = 0;
        for (size_t row = 0; row < s.refs.size(); ++row) {
            while (k < pieces.size() && pieces[k].row < row) ++k;
            Ref& r = s.refs[row];
            if ((r.length & kKindMask) != kOutside) continue;
            if (k < pieces.size() && pieces[k].row == row) continue;
            const std::string_view text = View(r);
            r = Ref{uint32_t(s.arena.size()), uint32_t(text.size()) | kArena};
            s.arena.append(text);
        }
    }
    for (const Piece& p : pieces) {
        if (p.row >= s.refs.size() || p.length > kMaxLength) continue;
        Ref& r = s.refs[p.row];
        if ((r.length & kKindMask) == kArena) s.garbage += r.length & kMaxLength;
        r = p.length == 0 ? Ref{} : Ref{p.offset, p.length | kOutside};
    }
    outside_ = std::move(outside);
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
