// vornelt-compare RUNS NAME CMD... [:: NAME CMD...]...: runs the commands in turn, RUNS rounds
// of one run each (A B C A B C ...) after one round that is not counted, each a whole process
// spawned without a shell, and prints each command's median wall time and median peak memory
// (the kernel's account of the child alone) and the ratio of its median to the last one's.
// "{n}" in an argument becomes the run's number, so that each run writes a new file. With
// VORNELT_COMPARE_FILE naming a file, each peak is also given as a multiple of its size.
#include <spawn.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

extern char** environ;

namespace {

struct Command {
    std::string name;
    std::vector<std::string> argv;
    std::vector<double> walls, peaks;
};

double Median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v.size() % 2 ? v[v.size() / 2] : (v[v.size() / 2 - 1] + v[v.size() / 2]) / 2;
}

// One run: the wall time in seconds and the peak in bytes; exits on a failed command.
std::pair<double, double> Run(const Command& c, int n) {
    std::vector<std::string> args;
    for (std::string a : c.argv) {
        for (size_t at; (at = a.find("{n}")) != std::string::npos;) a.replace(at, 3, std::to_string(n));
        args.push_back(a);
    }
    std::vector<char*> argv;
    for (std::string& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    const auto start = std::chrono::steady_clock::now();
    pid_t pid = 0;
    if (posix_spawn(&pid, argv[0], nullptr, nullptr, argv.data(), environ) != 0) {
        std::perror(argv[0]);
        std::exit(1);
    }
    int status = 0;
    rusage usage{};
    if (wait4(pid, &status, 0, &usage) != pid || !WIFEXITED(status) || WEXITSTATUS(status) != 0) {
        std::fprintf(stderr, "%s: failed\n", argv[0]);
        std::exit(1);
    }
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    return {wall, double(usage.ru_maxrss) * 1024};
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: vornelt-compare RUNS NAME CMD... [:: NAME CMD...]...\n");
        return 2;
    }
    const int runs = std::max(1, std::atoi(argv[1]));
    std::vector<Command> commands(1);
    for (int k = 2; k < argc; ++k) {
        if (std::strcmp(argv[k], "::") == 0) {
            commands.emplace_back();
        } else if (commands.back().name.empty()) {
            commands.back().name = argv[k];
        } else {
            commands.back().argv.push_back(argv[k]);
        }
    }
    for (int n = 0; n <= runs; ++n)
        for (Command& c : commands) {
            const auto [wall, peak] = Run(c, n);
            if (n == 0) continue;
            c.walls.push_back(wall);
            c.peaks.push_back(peak);
        }
    const double floor = Median(commands.back().walls);
    double size = 0;
    if (const char* file = std::getenv("VORNELT_COMPARE_FILE")) {
        struct stat st {};
        if (::stat(file, &st) == 0) size = double(st.st_size);
    }
    for (const Command& c : commands) {
        const double wall = Median(c.walls), peak = Median(c.peaks);
        std::printf("  %-24s %8.1f ms %7.1f MB", c.name.c_str(), wall * 1000, peak / 1e6);
        if (size > 0) std::printf(" (%4.1f x the file)", peak / size);
        std::printf("  %5.2f x %s\n", wall / floor, commands.back().name.c_str());
    }
    return 0;
}
