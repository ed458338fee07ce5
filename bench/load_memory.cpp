// vornelt-loadmem FILE [RATE]: loads a list in a fresh process, as the window would, and
// prints the time of the load and the peak memory against the file's size.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "document/load.hpp"
#include "document/module1.hpp"
#include "platform/headless.hpp"

namespace {
long PeakKiB() {
    std::ifstream status("/proc/self/status");
    std::string key;
    long value = 0;
    while (status >> key) {
        if (key == "VmHWM:") {
            status >> value;
            return value;
        }
        status.ignore(1 << 12, '\n');
    }
    return 0;
}
}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: vornelt-loadmem FILE [RATE]\n");
        return 2;
    }
    using namespace vornelt;
    const long before = PeakKiB();
    HeadlessPlatform platform;
    SetPlatform(&platform);
    FolderItem file(argv[1]);
    platform.openDialogAnswers.push_back(file);
    Module1.frameRateTmp = argc > 2 ? std::atof(argv[2]) : 25.0;
    const auto t0 = std::chrono::steady_clock::now();
    Open_CMX();
    const auto t1 = std::chrono::steady_clock::now();
    std::ifstream f(argv[1], std::ios::binary | std::ios::ate);
    const double size = double(f.tellg());
    const long peak = PeakKiB();
    std::printf("load %.1f ms, rows %d, file %.1f MB, peak %.1f MB (%.1f MB before the load), %.2f times the file\n",
                std::chrono::duration<double, std::milli>(t1 - t0).count(), Module1.maxZeilen + 1, size / 1e6,
                peak / 1024.0, before / 1024.0, peak * 1024.0 / size);
    return platform.messages.empty() ? 0 : 1;
}
