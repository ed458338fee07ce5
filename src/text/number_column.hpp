#pragma once
// A table of numbers, one entry per row, held compactly: only the rows whose value differs
// from the table's fill (-1 for frames and event numbers, the no-motion mark for speeds)
// hold an entry, found through a RowSet. Nearly two thirds of a list's rows are comments,
// notes and blank lines, and hold the fill in every number table.
//
// A table made as a copy of another shares its entries until either is changed. Every change
// is noted in the table's ChangeLog.

#include <cstdint>
#include <cstring>
#include <memory>
#include <type_traits>
#include <vector>

#include "text/change_log.hpp"
#include "text/row_set.hpp"

namespace vornelt {

template <typename T>
class NumberColumn {
    static_assert(std::is_arithmetic_v<T>);

public:
    explicit NumberColumn(T fill) : fill_(fill), s_(std::make_shared<Storage>()) {}

    size_t size() const noexcept { return s_->rows.size(); }
    bool empty() const noexcept { return s_->rows.size() == 0; }
    T fill() const noexcept { return fill_; }

    // The value of row i; the fill for a row out of range.
    T operator[](size_t i) const noexcept {
        const Storage& s = *s_;
        const int64_t k = s.rows.Find(i);
        return k < 0 ? fill_ : s.values[size_t(k)];
    }
    T back() const noexcept { return (*this)[size() - 1]; }

    void push_back(T value) {
        Storage& s = Own();
        changes_.Row(s.rows.size());
        if (IsFill(value)) {
            s.rows.PushBack(false);
        } else {
            s.rows.PushBack(true);
            s.values.push_back(value);
        }
    }
    // n new last rows holding the fill.
    void push_back_fill(size_t n) {
        Storage& s = Own();
        changes_.Rows(s.rows.size(), n);
        s.rows.PushBackEmpty(n);
    }
    void set(size_t i, T value) {
        if (i >= size()) return;
        changes_.Row(i);
        Storage& s = Own();
        if (const int64_t k = s.rows.Find(i); k >= 0) {
            s.values[size_t(k)] = value;
        } else if (!IsFill(value)) {
            const size_t place = s.rows.Insert(i);
            s.values.insert(s.values.begin() + ptrdiff_t(place), value);
        }
    }
    void clear() {
        changes_.Everything();
        if (s_.use_count() > 1) {
            s_ = std::make_shared<Storage>();
        } else {
            s_->rows.Clear();
            s_->values.clear();
        }
    }
    void reserve(size_t rows) { Own().rows.Reserve(rows); }
    // Makes this table an exact copy of `other`, sharing its storage until either changes.
    void CopyFrom(const NumberColumn& other) {
        changes_.Everything();
        fill_ = other.fill_;
        s_ = other.s_;
    }

    // Calls f(row, value) for every row that holds an entry, in row order.
    template <typename F>
    void ForEachEntry(F&& f) const {
        const Storage& s = *s_;
        s.rows.ForEach([&](size_t row, size_t place) { f(row, s.values[place]); });
    }

    const ChangeLog& Changes() const noexcept { return changes_; }
    ChangeLog& Changes() noexcept { return changes_; }

    // Bytes held, for the memory figures.
    size_t OwnBytes() const noexcept { return s_->values.capacity() * sizeof(T) + s_->rows.Bytes(); }

private:
    struct Storage {
        RowSet rows;
        std::vector<T> values;
    };

    // Bit for bit, so that no value is ever read back other than it was stored. The bits are
    // copied out, as std::bit_cast would (which not every standard library has yet).
    bool IsFill(T value) const noexcept {
        if constexpr (std::is_floating_point_v<T>) {
            using Bits = std::conditional_t<sizeof(T) == 8, uint64_t, uint32_t>;
            static_assert(sizeof(Bits) == sizeof(T));
            Bits a, b;
            std::memcpy(&a, &value, sizeof a);
            std::memcpy(&b, &fill_, sizeof b);
            return a == b;
        } else {
            return value == fill_;
        }
    }
    Storage& Own() {
        if (s_.use_count() > 1) s_ = std::make_shared<Storage>(*s_);
        return *s_;
    }

    T fill_;
    std::shared_ptr<Storage> s_;
    ChangeLog changes_;
};

}  // namespace vornelt
