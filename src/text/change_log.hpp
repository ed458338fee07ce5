#pragma once
// What changed in a table since a reader last looked: the rows that were set one by one,
// or "everything" (a table emptied, refilled, copied or set on too many rows to list).
//
// The writer renders the whole list after every click on an option, but a click changes a
// few tables on some rows; with this log it writes those rows anew and copies the others from
// the list before. A version names a state of the table: two equal versions of one table are
// the same entries.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace vornelt {

class ChangeLog {
public:
    struct Version {
        uint64_t epoch = 0;  // which table, and which life of it
        uint64_t count = 0;  // changes in that life
        bool operator==(const Version&) const = default;
    };

    ChangeLog() noexcept : epoch_(NewEpoch()) {}
    // A copy is another table: to anyone who looked at the first it is new throughout.
    ChangeLog(const ChangeLog&) noexcept : epoch_(NewEpoch()) {}
    ChangeLog& operator=(const ChangeLog&) noexcept {
        epoch_ = NewEpoch();
        count_ = 0;
        Everything();
        return *this;
    }

    Version Now() const noexcept { return {epoch_, count_}; }

    void Row(size_t row) {
        ++count_;
        if (!watching_) return;
        rows_.push_back(uint32_t(row));
        if (rows_.size() > kMostRows) Everything();
    }
    // The rows first to first + n - 1.
    void Rows(size_t first, size_t n) {
        if (!watching_) {
            ++count_;
            return;
        }
        for (size_t k = 0; k < n; ++k) Row(first + k);
    }
    // Whether n more rows set are more than the log lists: the caller then says Everything
    // once instead of n rows.
    bool TooManyToList(size_t n) const noexcept { return watching_ && rows_.size() + n > kMostRows; }
    void Everything() noexcept {
        ++count_;
        watching_ = false;
        rows_.clear();
    }

    // From now on the rows set are listed, until the next call.
    void Watch() {
        watching_ = true;
        rows_.clear();
        rows_.shrink_to_fit();
        since_ = Now();
    }
    // The rows set since the table stood at `seen` (none if it still does), or nullptr when
    // they are not known.
    const std::vector<uint32_t>* RowsSince(Version seen) const noexcept {
        if (seen == Now()) return &none_;
        return watching_ && since_ == seen ? &rows_ : nullptr;
    }

private:
    // Beyond this many rows a change is as good as everything: the writer renders it all.
    static constexpr size_t kMostRows = size_t(1) << 16;

    static uint64_t NewEpoch() noexcept {
        static std::atomic<uint64_t> next{1};
        return next.fetch_add(1, std::memory_order_relaxed);
    }

    uint64_t epoch_;
    uint64_t count_ = 0;
    bool watching_ = false;
    Version since_{};
    std::vector<uint32_t> rows_;
    inline static const std::vector<uint32_t> none_{};
};

}  // namespace vornelt
