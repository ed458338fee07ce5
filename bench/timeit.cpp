// vornelt-timeit RUNS COMMAND [ARG ...]: runs a command RUNS times, one after the other, and
// prints the median wall time in microseconds and the median peak memory in kilobytes, each
// run measured by its own clock and the kernel's account of the child alone (no shell between).
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <vector>

extern char** environ;

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: vornelt-timeit RUNS COMMAND [ARG ...]\n");
        return 2;
    }
    const int runs = std::max(1, std::atoi(argv[1]));
    posix_spawn_file_actions_t quiet;
    posix_spawn_file_actions_init(&quiet);
    posix_spawn_file_actions_addopen(&quiet, 1, "/dev/null", 0x1 /* O_WRONLY */, 0);
    std::vector<long long> walls, peaks;
    for (int r = 0; r < runs; ++r) {
        const auto start = std::chrono::steady_clock::now();
        pid_t pid = 0;
        if (posix_spawn(&pid, argv[2], &quiet, nullptr, argv + 2, environ) != 0) {
            std::perror(argv[2]);
            return 1;
        }
        int status = 0;
        rusage usage{};
        if (wait4(pid, &status, 0, &usage) != pid) return 1;
        walls.push_back(
            std::chrono::duration_cast<std::chrono::microseconds>(std::chrono::steady_clock::now() - start).count());
        peaks.push_back(usage.ru_maxrss);
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0) {
            std::fprintf(stderr, "%s: exit status %d\n", argv[2], WIFEXITED(status) ? WEXITSTATUS(status) : -1);
            return 1;
        }
    }
    std::sort(walls.begin(), walls.end());
    std::sort(peaks.begin(), peaks.end());
    std::printf("%lld %lld\n", walls[walls.size() / 2], peaks[peaks.size() / 2]);
    return 0;
}
