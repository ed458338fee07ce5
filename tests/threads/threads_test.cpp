// Lists converted on several threads at once give the bytes of one thread: no conversion
// shares anything that changes with another. Run under ThreadSanitizer by the tsan preset.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "generate.hpp"
#include "session/convert.hpp"
#include "text/encodings.hpp"
#include "vornelt/convert.hpp"
#include "writer/writer.hpp"

namespace vornelt {
namespace {

struct Job {
    std::string list;
    ConvertOptions options;
};

TEST(Threads, ConcurrentConversionsGiveTheSingleThreadedBytes) {
    std::vector<Job> jobs;
    for (uint32_t k = 0; k < 8; ++k) {
        Job job{bench::GenerateList({200 + int(k) * 40, k % 2 == 1, bench::Shape(k % 3), k + 1}), {}};
        job.options.fps = FrameRate::All()[k % FrameRate::All().size()];
        job.options.mirror = k % 2 == 0;
        job.options.keysToDissolves = k % 4 == 1;
        job.options.wipesToDissolves = k % 4 != 2;
        job.options.wipeNames = k % 2 ? WipeNames::FinalCutPro : WipeNames::Smpte;
        if (k % 3 == 0) job.options.title = "Reel " + std::to_string(k);
        if (k % 4 == 3) job.options.reel = "BL";
        jobs.push_back(std::move(job));
    }
    std::vector<std::string> expected;
    for (const Job& job : jobs) {
        ErrorStatus error;
        const ConvertResult r = Convert(job.list, job.options, "list.edl", &error);
        ASSERT_TRUE(error.ok()) << error.details;
        expected.push_back(r.bytes);
    }

    const unsigned threads = 4;
    std::vector<std::vector<std::string>> got(threads, std::vector<std::string>(jobs.size()));
    std::vector<std::thread> pool;
    for (unsigned t = 0; t < threads; ++t)
        pool.emplace_back([&, t] {
            // Each thread takes the lists in an order of its own.
            for (size_t n = 0; n < jobs.size(); ++n) {
                const size_t k = (n * (2 * t + 1) + t) % jobs.size();
                got[t][k] = Convert(jobs[k].list, jobs[k].options).bytes;
            }
        });
    for (std::thread& th : pool) th.join();
    for (unsigned t = 0; t < threads; ++t)
        for (size_t k = 0; k < jobs.size(); ++k) EXPECT_EQ(got[t][k], expected[k]) << "thread " << t << " list " << k;
}

// Asks to stop from its `stopAt`-th look on.
class StoppingPlatform : public QuietPlatform {
public:
    explicit StoppingPlatform(int stopAt) : stopAt_(stopAt) {}
    bool StopAsked() override { return ++looks_ >= stopAt_; }

private:
    int stopAt_, looks_ = 0;
};

// A list of 16384 rows or more is rendered in a session by two threads: planned on the
// session's and written on a second one. Sessions on several threads at once, each rendering
// its list, then a rendering stopped half way, then one with a movie name long enough to make
// the comment text outgrow its memory in mid-list: each list that stands is the converted one.
TEST(Threads, LongListsRenderedInSessionsGiveTheConvertedBytes) {
    struct LongJob {
        std::string list;
        ConvertOptions options;
        std::string expected[2];  // as loaded, with the long movie name
    };
    const std::string longMovie = std::string(700, 'M') + ".MOV";
    std::vector<LongJob> jobs;
    for (uint32_t k = 0; k < 3; ++k) {
        LongJob job{bench::GenerateList({8000, k == 1, bench::Shape::Mixed, k + 7}), {}, {}};
        job.options.mirror = k != 1;
        job.options.comments = k != 2;
        job.options.audio = k != 0;
        if (k == 0) job.options.title = std::string(300, 'T');
        ConvertOptions withMovie = job.options;
        withMovie.movie = longMovie;
        for (int n = 0; n < 2; ++n) {
            ErrorStatus error;
            job.expected[n] = Convert(job.list, n ? withMovie : job.options, "list.edl", &error).bytes;
            ASSERT_TRUE(error.ok()) << error.details;
        }
        jobs.push_back(std::move(job));
    }

    std::vector<std::vector<std::string>> got(jobs.size());
    std::vector<std::thread> pool;
    for (size_t k = 0; k < jobs.size(); ++k)
        pool.emplace_back([&, k] {
            QuietPlatform platform;
            Session s(platform);
            Document& m = s.document;
            ErrorStatus error;
            if (!ConvertInSession(s, std::string(jobs[k].list), jobs[k].options, "list.edl", &error)) return;
            got[k].push_back(m.maxZeilen >= 16384 ? EncodeListForSaving(*m.finalCMXString) : "short list");
            StoppingPlatform stopping(2);
            const SharedText before = m.finalCMXString;
            NewEDL_02(m, s.MainWindow(), stopping);
            got[k].push_back(m.finalCMXString == before ? "kept" : "replaced");
            m.myAbsMovieName = longMovie;
            NewEDL_02(m, s.MainWindow(), platform);
            got[k].push_back(EncodeListForSaving(*m.finalCMXString));
        });
    for (std::thread& th : pool) th.join();
    for (size_t k = 0; k < jobs.size(); ++k) {
        ASSERT_EQ(got[k].size(), 3u) << "list " << k;
        EXPECT_EQ(got[k][0], jobs[k].expected[0]) << "list " << k;
        EXPECT_EQ(got[k][1], "kept") << "list " << k;
        EXPECT_EQ(got[k][2], jobs[k].expected[1]) << "list " << k;
    }
}

}  // namespace
}  // namespace vornelt
