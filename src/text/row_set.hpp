#pragma once
// Which rows of a table hold an entry of their own, and where that entry stands among the
// table's entries.
//
// A conform list of a hundred thousand events has nearly four hundred thousand rows, but
// only its event lines hold timecodes, reels, modes and numbers; comments, notes and blank
// lines hold nothing. So a table keeps entries for the rows that have one, in row order, and
// this set finds a row's entry in constant time: a bit a row, and for each block of 64 rows
// the count of entries before it. The blocks run only up to the last row with an entry, so
// entries added in row order cost no more than a push.

#include <bit>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/bit_count.hpp"

namespace vornelt {

class RowSet {
public:
    static constexpr int64_t kNone = -1;

    size_t size() const noexcept { return rows_; }    // rows, with an entry or without
    size_t count() const noexcept { return count_; }  // rows with an entry

    // The place of row i's entry among the entries, or kNone.
    int64_t Find(size_t i) const noexcept {
        const size_t b = i >> 6;
        if (b >= blocks_.size()) return kNone;
        const Block& block = blocks_[b];
        const uint64_t bit = uint64_t(1) << (i & 63);
        if ((block.bits & bit) == 0) return kNone;
        return int64_t(block.before) + BitCount(block.bits & (bit - 1));
    }

    // A new last row; with an entry, that entry is the last one.
    void PushBack(bool withEntry) {
        const size_t i = rows_++;
        if (withEntry) Mark(i);
    }
    // n new last rows without an entry.
    void PushBackEmpty(size_t n) noexcept { rows_ += n; }
    // Row i, which has no entry, gets one; the place it gets is returned, and the entries
    // of later rows move one place on. In row order this costs no more than a push.
    size_t Insert(size_t i);
    // Sizes the set to n rows without an entry.
    void AssignEmpty(size_t n) {
        Clear();
        rows_ = n;
    }
    void Clear() noexcept {
        blocks_.clear();
        rows_ = 0;
        count_ = 0;
    }
    void Reserve(size_t rows) { blocks_.reserve(rows / 64 + 1); }

    // Calls f(row, place) for every row with an entry, in row order.
    template <typename F>
    void ForEach(F&& f) const {
        for (size_t b = 0; b < blocks_.size(); ++b) {
            uint64_t bits = blocks_[b].bits;
            size_t place = blocks_[b].before;
            while (bits != 0) {
                f(b * 64 + size_t(std::countr_zero(bits)), place++);
                bits &= bits - 1;
            }
        }
    }

    // Calls f(row) for every row with an entry here and none in `other`, in row order: a
    // word of 64 rows at a time.
    template <typename F>
    void ForEachNotIn(const RowSet& other, F&& f) const {
        for (size_t b = 0; b < blocks_.size(); ++b) {
            uint64_t bits = blocks_[b].bits & ~(b < other.blocks_.size() ? other.blocks_[b].bits : 0);
            for (; bits != 0; bits &= bits - 1) f(b * 64 + size_t(std::countr_zero(bits)));
        }
    }

    size_t Bytes() const noexcept { return blocks_.capacity() * sizeof(Block); }

private:
    struct Block {
        uint64_t bits = 0;
        uint32_t before = 0;  // entries in the blocks before this one
    };

    void Mark(size_t i) {
        const size_t b = i >> 6;
        while (blocks_.size() <= b) blocks_.push_back(Block{0, uint32_t(count_)});
        blocks_[b].bits |= uint64_t(1) << (i & 63);
        ++count_;
    }

    std::vector<Block> blocks_;
    size_t rows_ = 0;
    size_t count_ = 0;
};

inline size_t RowSet::Insert(size_t i) {
    const size_t b = i >> 6;
    if (b >= blocks_.size()) {
        Mark(i);
        return count_ - 1;
    }
    Block& block = blocks_[b];
    const uint64_t bit = uint64_t(1) << (i & 63);
    const size_t place = block.before + size_t(BitCount(block.bits & (bit - 1)));
    block.bits |= bit;
    for (size_t k = b + 1; k < blocks_.size(); ++k) ++blocks_[k].before;
    ++count_;
    return place;
}

}  // namespace vornelt
