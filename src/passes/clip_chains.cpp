// CleanEDL_4: rows whose source timecodes run on from each other form one clip chain and
// get one generated reel name, RL0001, RL0002, ...
#include "passes/clip_chains.hpp"

#include <algorithm>
#include <string>

#include "passes/passes.hpp"
#include "passes/rows.hpp"
#include "platform/platform.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

namespace passes_detail {

namespace {

// Sorts (source in, row) keys that stand in row order by their source in: a stable radix
// sort over the upper half in three digits of 11 bits, so that equal source ins keep their
// rows in ascending order.
void SortBySourceIn(std::vector<uint64_t>& keys) {
    std::vector<uint64_t> other(keys.size());
    std::vector<uint32_t> start(2049);
    for (const int shift : {32, 43, 54}) {
        std::fill(start.begin(), start.end(), 0u);
        for (const uint64_t k : keys) ++start[((k >> shift) & 2047) + 1];
        for (size_t d = 1; d < start.size(); ++d) start[d] += start[d - 1];
        for (const uint64_t k : keys) other[start[(k >> shift) & 2047]++] = k;
        keys.swap(other);
    }
}

// The open rows ordered by (source in, row): one run of rows per source in, found through a
// hash of the source ins. Rows leave the order as they join a chain; a union-find over the
// positions skips the rows that have left.
class OpenRows {
public:
    OpenRows(size_t rows, std::span<const int32_t> eventNumber, std::span<const int32_t> sourceIn) {
        // (source in, row) as one number that sorts in that order.
        std::vector<uint64_t> keys;
        keys.reserve(rows);
        for (size_t r = 0; r < rows; ++r)
            if (eventNumber[r] >= 1) keys.push_back((uint64_t(uint32_t(sourceIn[r]) ^ 0x80000000u) << 32) | r);
        SortBySourceIn(keys);

        rows_.resize(keys.size());
        for (size_t k = 0; k < keys.size(); ++k) rows_[k] = uint32_t(keys[k]);
        next_.resize(keys.size() + 1);
        for (size_t k = 0; k < next_.size(); ++k) next_[k] = uint32_t(k);

        size_t runs = 0;
        for (size_t k = 0; k < keys.size(); ++k) runs += k == 0 || (keys[k] >> 32) != (keys[k - 1] >> 32);
        size_t capacity = 16;
        while (capacity < runs * 2) capacity *= 2;
        runs_.assign(capacity, Run{});
        for (size_t k = 0; k < keys.size();) {
            size_t end = k + 1;
            while (end < keys.size() && (keys[end] >> 32) == (keys[k] >> 32)) ++end;
            Run& run = Slot(int32_t(uint32_t(keys[k] >> 32) ^ 0x80000000u));
            run = Run{int32_t(uint32_t(keys[k] >> 32) ^ 0x80000000u), uint32_t(k), uint32_t(end)};
            k = end;
        }
    }

    static constexpr size_t kNone = size_t(-1);

    // The position of the open row of the lowest source in, the first of them at a tie.
    size_t Lowest() {
        const size_t k = Alive(0);
        return k == rows_.size() ? kNone : k;
    }
    uint32_t RowAt(size_t position) const { return rows_[position]; }

    // The position of the first open row at or after `fromRow` whose source in is `frame`.
    size_t Find(int32_t frame, uint64_t fromRow) {
        const Run& run = Slot(frame);
        if (run.begin == run.end) return kNone;
        size_t k = run.begin;
        if (fromRow > 0)
            k = size_t(std::lower_bound(rows_.begin() + run.begin, rows_.begin() + run.end, fromRow) - rows_.begin());
        k = Alive(k);
        return k < run.end ? k : kNone;
    }

    void Remove(size_t position) { next_[position] = uint32_t(position + 1); }

private:
    struct Run {
        int32_t sourceIn = 0;
        uint32_t begin = 0, end = 0;  // positions; empty: the slot is free
    };

    // The slot of a source in: its run, or the free slot where it would stand.
    Run& Slot(int32_t sourceIn) {
        const size_t mask = runs_.size() - 1;
        size_t h = size_t((uint64_t(uint32_t(sourceIn)) * 0x9E3779B97F4A7C15ull) >> 20) & mask;
        while (runs_[h].begin != runs_[h].end && runs_[h].sourceIn != sourceIn) h = (h + 1) & mask;
        return runs_[h];
    }

    // The first position at or after k that is still open (the end when none is).
    size_t Alive(size_t k) {
        while (next_[k] != k) {
            next_[k] = next_[next_[k]];
            k = next_[k];
        }
        return k;
    }

    std::vector<uint32_t> rows_;  // the rows, ordered by (source in, row)
    std::vector<uint32_t> next_;  // next_[k] == k: position k is open, or the end
    std::vector<Run> runs_;
};

}  // namespace

std::vector<int32_t> NumberClipChains(size_t rows, std::span<const int32_t> eventNumber,
                                      std::span<const int32_t> sourceIn, std::span<const int32_t> sourceOut,
                                      const std::function<bool()>& stopAsked) {
    rows = std::min({rows, eventNumber.size(), sourceIn.size(), sourceOut.size(), size_t(0x7FFFFFFF)});
    std::vector<int32_t> chain(rows, 0);
    OpenRows open(rows, eventNumber, sourceIn);

    // Rows in the order they joined; each is the start of one further scan. One list serves
    // every chain, since a chain ends only when all of its rows have been taken off.
    std::vector<uint32_t> work;
    work.reserve(rows);
    size_t taken = 0;

    int64_t lastOpen = int64_t(rows) - 1;
    int32_t count = 0;
    for (;;) {
        // The chain opens on the lowest source in; the last open row is the starting value
        // and only a strictly smaller source in replaces it.
        while (lastOpen >= 0 && (eventNumber[size_t(lastOpen)] < 1 || chain[size_t(lastOpen)] != 0)) --lastOpen;
        if (lastOpen < 0) break;
        if (count % 4096 == 0 && stopAsked && stopAsked()) break;
        size_t position = open.Lowest();
        uint32_t best = open.RowAt(position);
        if (sourceIn[size_t(lastOpen)] == sourceIn[best]) {
            best = uint32_t(lastOpen);
            position = open.Find(sourceIn[best], best);
        }

        ++count;
        chain[best] = count;
        open.Remove(position);
        work.push_back(best);
        int32_t next = sourceOut[best];
        for (;;) {
            // One scan over all rows: a row that joins moves the frame looked for on to its
            // source out, for the rows that follow it.
            uint64_t from = 0;
            for (size_t k; (k = open.Find(next, from)) != OpenRows::kNone;) {
                const uint32_t row = open.RowAt(k);
                chain[row] = count;
                open.Remove(k);
                work.push_back(row);
                next = sourceOut[row];
                from = uint64_t(row) + 1;
            }
            if (taken == work.size()) break;
            next = sourceOut[work[taken++]];
        }
    }
    return chain;
}

}  // namespace passes_detail

namespace {

// The rows that take part in the numbering (event number 1 or more), in row order, with the
// values the numbering reads: the other rows play no part in it, so it runs on these alone.
struct ChainRows {
    std::vector<uint32_t> row;
    std::vector<int32_t> eventNumber, sourceIn, sourceOut;
};

ChainRows GatherChainRows(const Document& m, size_t rows) {
    ChainRows c;
    m.copyEventNumberInt.ForEachEntry([&](size_t row, int32_t number) {
        if (row >= rows || number < 1) return;
        c.row.push_back(uint32_t(row));
        c.eventNumber.push_back(number);
        c.sourceIn.push_back(m.copySourceInFrame[row]);
        c.sourceOut.push_back(m.copySourceOutFrame[row]);
    });
    return c;
}

// The chains of two lines or more, each with its rows (its name, events and source stand in
// the tables); the chains of one line are counted. chain[k] is the chain of row rowOf[k].
void RecordClipChains(Document& m, const std::vector<uint32_t>& rowOf, const std::vector<int32_t>& chain,
                      const std::vector<std::string>& names) {
    std::vector<int32_t> lines(names.size(), 0);
    for (const int32_t c : chain) ++lines[size_t(c)];
    // Each listed chain gets its place in chainRows: its rows, then -1.
    std::vector<int32_t> itemOf(names.size(), -1), next(names.size(), 0);
    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Load);
    std::vector<int32_t>& rows = m.report.chainRows;
    for (size_t c = 1; c < names.size(); ++c) {
        if (lines[c] == 1) ++m.report.singleLineChains;
        if (lines[c] < 2) continue;
        itemOf[c] = int32_t(report.size());
        next[c] = int32_t(rows.size());
        ChangeItem& item = report.emplace_back();
        item.kind = ChangeKind::ClipChain;
        item.number = int32_t(rows.size());
        rows.resize(rows.size() + size_t(lines[c]), -1);
        rows.push_back(-1);
    }
    for (size_t k = 0; k < chain.size(); ++k) {
        const size_t c = size_t(chain[k]);
        const size_t i = rowOf[k];
        if (c == 0 || itemOf[c] < 0) continue;
        ChangeItem& item = report[size_t(itemOf[c])];
        if (item.row < 0) {
            item.row = int32_t(i);
            item.event = m.copyEventNumberInt[i];
        }
        rows[size_t(next[c]++)] = int32_t(i);
    }
}

}  // namespace

void CleanEDL_4(Document& m, Platform& platform) {
    m.cleanClipReelName.assign_empty(m.copyReelNames.size());
    const size_t rows =
        passes_detail::RowsWithin(m.maxZeilen, {m.cleanClipReelName.size(), m.copyEventNumberInt.size(),
                                                m.copySourceInFrame.size(), m.copySourceOutFrame.size()});
    const ChainRows c = GatherChainRows(m, rows);
    // A conversion asked to stop ends between the steps; no chain is named then.
    if (platform.StopAsked()) return;
    const std::vector<int32_t> chain = passes_detail::NumberClipChains(
        c.row.size(), c.eventNumber, c.sourceIn, c.sourceOut, [&platform] { return platform.StopAsked(); });
    if (platform.StopAsked()) return;

    // Every row of a chain carries the same name, so each chain's name is formatted once.
    std::vector<std::string> names(chain.empty() ? 0 : size_t(*std::max_element(chain.begin(), chain.end())) + 1);
    std::vector<bool> formatted(names.size(), false);
    size_t k = 0;
    for (size_t i = 0; i < rows; ++i) {
        if (k < c.row.size() && c.row[k] == i) {
            if (const int32_t n = chain[k++]; n != 0) {
                if (!formatted[size_t(n)]) {
                    names[size_t(n)] = FormatReelNames("RL" + Format(n, "0000"), m.IsGrassValley);
                    formatted[size_t(n)] = true;
                }
                m.cleanClipReelName.set(i, names[size_t(n)]);
            }
        }
        platform.Yield();
    }
    if (m.report.recording) RecordClipChains(m, c.row, chain, names);
}

}  // namespace vornelt
