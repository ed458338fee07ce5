// vornelt-loadmem FILE [RATE]: loads a list in a fresh process, as the window would, and
// prints the time of the load and the peak memory against the file's size.
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "session/load.hpp"

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
    // The open dialog answers with the file; a load that cannot read it says so.
    class OpenPlatform final : public QuietPlatform {
    public:
        explicit OpenPlatform(FolderItem file) : file_(std::move(file)) {}
        FolderItemRef ShowOpenDialog(const OpenDialogRequest&) override { return file_; }
        void MsgBox(std::string_view) override { failed = true; }
        bool failed = false;

    private:
        FolderItem file_;
    } platform{FolderItem(argv[1])};
    Session session(platform);
    session.document.frameRateTmp = FrameRate::Named(argc > 2 ? argv[2] : "25").value_or(FrameRate());
    const auto t0 = std::chrono::steady_clock::now();
    Open_CMX(session);
    const auto t1 = std::chrono::steady_clock::now();
    std::ifstream f(argv[1], std::ios::binary | std::ios::ate);
    const double size = double(f.tellg());
    const long peak = PeakKiB();
    std::printf("load %.1f ms, rows %d, file %.1f MB, peak %.1f MB (%.1f MB before the load), %.2f times the file\n",
                std::chrono::duration<double, std::milli>(t1 - t0).count(), session.document.maxZeilen + 1, size / 1e6,
                peak / 1024.0, before / 1024.0, peak * 1024.0 / size);
    return platform.failed ? 1 : 0;
}
