// Clip chains: the fast numbering against the plain scans, and the names in the table.
#include <gtest/gtest.h>

#include <climits>
#include <deque>
#include <random>

#include "document/text.hpp"
#include "fixtures.hpp"
#include "passes/clip_chains.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

using passes_detail::NumberClipChains;

struct Rows {
    std::vector<int32_t> event, in, out;
    void Add(int32_t e, int32_t i, int32_t o) {
        event.push_back(e);
        in.push_back(i);
        out.push_back(o);
    }
};

// The chains by the plain scans over all rows, a scan per chain and per row of a chain.
std::vector<int32_t> ScanChains(const Rows& r) {
    const size_t n = r.event.size();
    std::vector<int32_t> chain(n, 0);
    auto open = [&](size_t i) { return r.event[i] >= 1 && chain[i] == 0; };
    for (int32_t count = 1;; ++count) {
        size_t best = n;
        for (size_t i = 0; i < n; ++i)
            if (open(i)) best = i;
        if (best == n) return chain;
        for (size_t i = 0; i < n; ++i)
            if (open(i) && r.in[i] < r.in[best]) best = i;
        int32_t next = r.out[best];
        std::deque<size_t> work{best};
        chain[best] = count;
        for (;;) {
            for (size_t i = 0; i < n; ++i) {
                if (open(i) && r.in[i] == next) {
                    next = r.out[i];
                    chain[i] = count;
                    work.push_back(i);
                }
            }
            if (work.empty()) break;
            next = r.out[work.front()];
            work.pop_front();
        }
    }
}

std::vector<int32_t> FastChains(const Rows& r) { return NumberClipChains(r.event.size(), r.event, r.in, r.out); }

TEST(ClipChains, TieBreaksAndScans) {
    struct Case {
        const char* what;
        std::vector<std::array<int32_t, 3>> rows;  // event number, source in, source out
        std::vector<int32_t> chains;
    } const cases[] = {
        {"worked example",
         {{-1, -1, -1}, {-1, -1, -1}, {1, 100, 200}, {2, 200, 300}, {3, 50, 80}, {4, 100, 150}},
         {0, 0, 3, 3, 1, 2}},
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
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        Rows r;
        for (const auto& row : c.rows) r.Add(row[0], row[1], row[2]);
        EXPECT_EQ(ScanChains(r), c.chains);
        EXPECT_EQ(FastChains(r), c.chains);
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
            r.Add(event, in, out);
        }
        ASSERT_EQ(FastChains(r), ScanChains(r)) << "list " << list;
    }
}

TEST(ClipChains, AgreesOnLongListsOfEveryShape) {
    const int n = 3000;
    Rows same, chain, reversed, apart;
    for (int i = 0; i < n; ++i) {
        same.Add(1 + i % 3, i % 10 == 0 ? i : 90000, 90000 + (i % 7) * 25);
        chain.Add(i + 1, i * 10, i * 10 + 10);
        reversed.Add(i + 1, (n - i) * 10, (n - i) * 10 + 10);
        apart.Add(i + 1, i * 10, i * 10 + 5);
    }
    for (const Rows* r : {&same, &chain, &reversed, &apart}) EXPECT_EQ(FastChains(*r), ScanChains(*r));
}

class ReelNames : public Fixture {};

TEST_F(ReelNames, EveryEventRowOfAChainGetsItsName) {
    Load({Note("TITLE: A"), Note("FCM: NON-DROP FRAME"), Event(1, "C", 100, 200), Event(2, "C", 200, 300),
          Event(3, "C", 50, 80), Event(4, "C", 100, 150), Note("* X"), Event(0, "C", 80, 90)});
    CleanEDL_4();
    const char* expected[] = {"", "", "RL0003", "RL0003", "RL0001", "RL0002", "", ""};
    ASSERT_EQ(Module1.cleanClipReelName.size(), std::size(expected));
    for (size_t i = 0; i < std::size(expected); ++i)
        EXPECT_EQ(Module1.cleanClipReelName(i), *expected[i] ? FormatReelNames(expected[i]) : "") << i;
}

TEST_F(ReelNames, CountsPastFourDigits) {
    for (int32_t i = 0; i < 10001; ++i) PushRead(Event(i + 1, "C", i * 10, i * 10 + 5));
    CopyArrays();
    CleanEDL_4();
    EXPECT_EQ(Module1.cleanClipReelName(0), FormatReelNames("RL0001"));
    EXPECT_EQ(Module1.cleanClipReelName(10000), FormatReelNames("RL10001"));
}

}  // namespace
}  // namespace vornelt::testing
