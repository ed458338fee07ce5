#include "document/text_column.hpp"

#include <stdexcept>

namespace vornelt {

void TextColumn::clear() noexcept {
    refs_.clear();
    arena_.clear();
    garbage_ = 0;
    recent_ = {};
    recentNext_ = 0;
}

void TextColumn::assign_empty(size_t n) {
    clear();
    refs_.assign(n, Ref{});
}

TextColumn::Ref TextColumn::Store(std::string_view text) {
    if (text.empty()) return Ref{};
    if (text.size() >= kArenaBit) throw std::length_error("text too long for a table entry");
    if (document_) {
        const char* begin = document_->data();
        const char* end = begin + document_->size();
        if (text.data() >= begin && text.data() + text.size() <= end)
            return Ref{uint32_t(text.data() - begin), uint32_t(text.size())};
    }
    if (text.size() <= 16) {
        for (const Ref& r : recent_) {
            if (r.length == 0) continue;
            if (View(r) == text) return r;
        }
    }
    if (arena_.size() + text.size() > 0xFFFFFFFFull) Compact();
    if (arena_.size() + text.size() > 0xFFFFFFFFull) throw std::length_error("table arena full");
    Ref r{uint32_t(arena_.size()), uint32_t(text.size()) | kArenaBit};
    arena_.append(text);
    if (text.size() <= 16) {
        recent_[recentNext_] = r;
        recentNext_ = (recentNext_ + 1) % recent_.size();
    }
    return r;
}

void TextColumn::set(size_t i, std::string_view text) {
    Ref old = refs_[i];
    if ((old.length & kArenaBit) && View(old) == text) return;
    // `text` may lie in this table's own arena (an entry set from another entry): store it
    // before anything moves.
    Ref now = Store(text);
    refs_[i] = now;
    if (old.length & kArenaBit) {
        garbage_ += old.length & ~kArenaBit;
        if (garbage_ > (1u << 20) && garbage_ * 2 > arena_.size()) Compact();
    }
}

void TextColumn::Compact() {
    std::string fresh;
    fresh.reserve(arena_.size() - std::min(garbage_, arena_.size()));
    for (Ref& r : refs_) {
        if (!(r.length & kArenaBit)) continue;
        uint32_t n = r.length & ~kArenaBit;
        uint32_t offset = uint32_t(fresh.size());
        fresh.append(arena_, r.offset, n);
        r.offset = offset;
    }
    arena_.swap(fresh);
    garbage_ = 0;
    recent_ = {};
    recentNext_ = 0;
}

}  // namespace vornelt
