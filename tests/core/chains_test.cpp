// Clip chains: the fast numbering against the plain scans, and the names in the table.
#include <gtest/gtest.h>

#include <climits>
#include <deque>
#include <random>

#include "fixtures.hpp"
#include "passes/clip_chains.hpp"

namespace vornelt::testing {
namespace {

// Rows of event number, source in and source out.
using Rows = std::vector<std::array<int32_t, 3>>;

// The chains by the plain scans over all rows, a scan per chain and per row of a chain.
std::vector<int32_t> ScanChains(const Rows& r) {
    const size_t n = r.size();
    std::vector<int32_t> chain(n, 0);
    auto open = [&](size_t i) { return r[i][0] >= 1 && chain[i] == 0; };
    for (int32_t count = 1;; ++count) {
        size_t best = n;
        for (size_t i = 0; i < n; ++i)
            if (open(i)) best = i;
        if (best == n) return chain;
        for (size_t i = 0; i < n; ++i)
            if (open(i) && r[i][1] < r[best][1]) best = i;
        int32_t next = r[best][2];
        std::deque<size_t> work{best};
        chain[best] = count;
        for (;;) {
            for (size_t i = 0; i < n; ++i) {
                if (open(i) && r[i][1] == next) {
                    next = r[i][2];
                    chain[i] = count;
                    work.push_back(i);
                }
            }
            if (work.empty()) break;
            next = r[work.front()][2];
            work.pop_front();
        }
    }
}

std::vector<int32_t> FastChains(const Rows& r) {
    std::vector<int32_t> column[3];
    for (const auto& row : r)
        for (size_t k = 0; k < 3; ++k) column[k].push_back(row[k]);
    return passes_detail::NumberClipChains(r.size(), column[0], column[1], column[2]);
}

TEST(ClipChains, TieBreaksAndScans) {
    // What the case shows, the rows, the chains they fall into; the reel names test holds a worked example.
    const std::tuple<const char*, Rows, std::vector<int32_t>> cases[] = {
        {"the last open row wins a tie", {{1, 5, 9}, {2, 5, 8}}, {2, 1}},
        {"else the first of the lowest", {{1, 5, 9}, {2, 5, 8}, {3, 7, 1}}, {1, 2, 3}},
        {"the running scan follows row order", {{1, 0, 10}, {2, 10, 20}, {3, 20, 30}}, {1, 1, 1}},
        {"a chain against row order", {{1, 20, 30}, {2, 10, 20}, {3, 0, 10}}, {1, 1, 1}},
        {"two rows on one source in join, the third opens its own chain",
         {{1, 0, 10}, {2, 10, 20}, {3, 10, 30}, {4, 10, 40}},
         {1, 1, 1, 2}},
        {"a zero-length row leaves the frame where it was", {{1, 0, 10}, {2, 10, 10}, {3, 10, 20}}, {1, 1, 1}},
        {"a branch", {{1, 0, 10}, {2, 10, 20}, {3, 20, 5}, {4, 5, 10}, {5, 10, 7}}, {1, 1, 1, 1, 1}},
        {"event numbers 0 and -1 take no part", {{0, 0, 10}, {-1, 10, 20}, {1, 10, 20}}, {0, 0, 1}},
        {"no event rows", {{0, 1, 2}, {-1, -1, -1}}, {0, 0}},
        {"extreme frames", {{1, INT_MAX, INT_MIN}, {2, INT_MIN, INT_MAX}}, {1, 1}},
    };
    for (const auto& [what, rows, chains] : cases) {
        EXPECT_EQ(ScanChains(rows), chains) << what;
        EXPECT_EQ(FastChains(rows), chains) << what;
    }
}

TEST(ClipChains, FastNumberingAgreesWithTheScansOnRandomLists) {
    std::mt19937 rng(4711);
    auto pick = [&](int below) { return int32_t(rng() % uint32_t(below)); };
    for (int list = 0; list < 6000; ++list) {
        Rows r;
        const int n = list < 5000 ? pick(16) : 40 + pick(200);
        const int frames = 2 + pick(list < 5000 ? 8 : 60);  // few values: many shared source ins
        for (int i = 0; i < n; ++i) {
            const int32_t event = pick(8) == 0 ? pick(2) - 1 : 1 + pick(4);
            const int32_t in = pick(frames);
            const int32_t out = pick(5) == 0 ? in : pick(4) == 0 ? pick(frames) : in + 1 + pick(2);
            r.push_back({event, in, out});
        }
        ASSERT_EQ(FastChains(r), ScanChains(r)) << "list " << list;
    }
    // Long lists of every shape.
    const int n = 3000;
    Rows same, chain, reversed, apart;
    for (int i = 0; i < n; ++i) {
        same.push_back({1 + i % 3, i % 10 == 0 ? i : 90000, 90000 + (i % 7) * 25});
        chain.push_back({i + 1, i * 10, i * 10 + 10});
        reversed.push_back({i + 1, (n - i) * 10, (n - i) * 10 + 10});
        apart.push_back({i + 1, i * 10, i * 10 + 5});
    }
    for (const Rows* r : {&same, &chain, &reversed, &apart}) EXPECT_EQ(FastChains(*r), ScanChains(*r));
}

using ReelNames = Fixture;

TEST_F(ReelNames, EveryEventRowOfAChainGetsItsNamePastFourDigitsToo) {
    Load({Note("TITLE: A"), Note("FCM: NON-DROP FRAME"), Event(1, "C", 100, 200), Event(2, "C", 200, 300),
          Event(3, "C", 50, 80), Event(4, "C", 100, 150), Note("* X"), Event(0, "C", 80, 90)});
    CleanEDL_4(m(), platform);
    EXPECT_EQ(Joined(m().cleanClipReelName), "||RL0003  |RL0003  |RL0001  |RL0002  ||");  // in the CMX form
    Reset();
    for (int32_t i = 0; i < 10001; ++i) PushRead(m(), Event(i + 1, "C", i * 10, i * 10 + 5));
    CopyArrays(m(), platform);
    CleanEDL_4(m(), platform);
    EXPECT_EQ(m().cleanClipReelName(10000), "RL10001 ");
}

}  // namespace
}  // namespace vornelt::testing
