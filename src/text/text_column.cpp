#include "text/text_column.hpp"

#include <algorithm>
#include <stdexcept>

#include "text/prefetch.hpp"

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
    // The walk below takes the pieces in strictly ascending rows, as the writer makes them.
    // Others are put in that order first, the last piece given to a row counting: a row
    // pieced twice must not be taken for one left out.
    std::vector<Piece> ordered;
    if (std::adjacent_find(pieces.begin(), pieces.end(),
                           [](const Piece& a, const Piece& b) { return a.row >= b.row; }) != pieces.end()) {
        ordered.assign(pieces.begin(), pieces.end());
        std::stable_sort(ordered.begin(), ordered.end(), [](const Piece& a, const Piece& b) { return a.row < b.row; });
        size_t kept = 0;
        for (size_t k = 0; k < ordered.size(); ++k)
            if (k + 1 == ordered.size() || ordered[k + 1].row != ordered[k].row) ordered[kept++] = ordered[k];
        ordered.resize(kept);
        pieces = ordered;
    }
    Storage& s = Own();
    // So many rows at once are as good as everything to a reader of the changes.
    const bool listRows = !changes_.TooManyToList(pieces.size());
    if (!listRows) changes_.Everything();
    // One walk over the pieces and, beside them, the rows given pieces last time (both in row
    // order): the old rows that get no new piece are noted on the way.
    std::vector<uint32_t>& notPieced = s.scratch;
    notPieced.clear();
    std::vector<uint32_t>& rows = s.spareRows;
    rows.resize(pieces.size());
    const uint32_t* old = s.outsideRows.data();
    const uint32_t* const oldEnd = s.outside ? old + s.outsideRows.size() : old;
    for (size_t k = 0; k < pieces.size(); ++k) {
        const Piece& p = pieces[k];
        rows[k] = p.row;
        for (; old != oldEnd && *old < p.row; ++old) notPieced.push_back(*old);
        if (old != oldEnd && *old == p.row) ++old;
        if (p.row >= s.rows.size() || p.length > kMaxLength) continue;
        if (listRows) changes_.Row(p.row);
        const Ref r = p.length == 0 ? Ref{} : Ref{p.offset, p.length | kOutside};
        const int64_t place = s.rows.Find(p.row);
        if (place >= 0) {
            const Ref before = s.refs[size_t(place)];
            s.refs[size_t(place)] = r;
            if ((before.length & kKindMask) == kArena) s.garbage += before.length & kMaxLength;
        } else if (p.length != 0 || !fill_.empty()) {
            const size_t at = s.rows.Insert(p.row);
            s.refs.insert(s.refs.begin() + ptrdiff_t(at), r);
        }
    }
    notPieced.insert(notPieced.end(), old, oldEnd);
    // Those rows keep their texts in the arena before the old buffer goes. The texts lie
    // scattered through it: each is fetched a few rows ahead, not one miss of the cache at a time.
    const auto stillOutside = [&s](uint32_t row) -> Ref* {
        const int64_t place = row < s.rows.size() ? s.rows.Find(row) : -1;
        if (place < 0) return nullptr;
        Ref& r = s.refs[size_t(place)];
        return (r.length & kKindMask) == kOutside ? &r : nullptr;
    };
    constexpr size_t kAhead = 8;
    for (size_t j = 0; j < notPieced.size(); ++j) {
        if (j + kAhead < notPieced.size())
            if (const Ref* ahead = stillOutside(notPieced[j + kAhead])) Prefetch(View(s, *ahead));
        if (Ref* r = stillOutside(notPieced[j])) *r = Store(s, View(s, *r));
    }
    s.outside = std::move(outside);
    s.outsideRows.swap(rows);
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
