// Lists converted on several threads at once give the bytes of one thread: no conversion
// shares anything that changes with another. Run under ThreadSanitizer by the tsan preset.
#include <gtest/gtest.h>

#include <thread>
#include <vector>

#include "generate.hpp"
#include "vornelt/convert.hpp"

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

}  // namespace
}  // namespace vornelt
