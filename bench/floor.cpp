// vornelt-floor stream|whole IN OUT: what reading a list, cutting it into lines and writing
// them back with CR LF costs at the least, the floors the converter is measured against.
//   stream: 64 KiB blocks in, lines cut as they come, 64 KiB blocks out;
//   whole:  the whole file in memory with a view of every line, then written out.
#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

namespace {

bool WriteAll(int fd, const char* p, size_t n) {
    while (n > 0) {
        const ssize_t w = ::write(fd, p, n);
        if (w <= 0) return false;
        p += w;
        n -= size_t(w);
    }
    return true;
}

// Cuts `text` into lines at CR, LF or CR LF; `last` says whether a line may be left open.
template <typename Line>
size_t Cut(std::string_view text, bool last, Line&& line) {
    size_t start = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c != '\r' && c != '\n') continue;
        if (c == '\r' && i + 1 == text.size() && !last) break;  // its LF may follow
        line(text.substr(start, i - start));
        if (c == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (last && start < text.size()) {
        line(text.substr(start));
        start = text.size();
    }
    return start;
}

int Stream(int in, int out) {
    std::string pending, buffer;
    buffer.reserve(1 << 17);
    char block[1 << 16];
    auto line = [&](std::string_view l) {
        buffer.append(l).append("\r\n");
        if (buffer.size() >= (1 << 16)) {
            if (!WriteAll(out, buffer.data(), buffer.size())) std::exit(1);
            buffer.clear();
        }
    };
    for (ssize_t n; (n = ::read(in, block, sizeof block)) > 0;) {
        pending.append(block, size_t(n));
        pending.erase(0, Cut(pending, false, line));
    }
    Cut(pending, true, line);
    return WriteAll(out, buffer.data(), buffer.size()) ? 0 : 1;
}

int Whole(int in, int out) {
    std::string text;
    char block[1 << 16];
    for (ssize_t n; (n = ::read(in, block, sizeof block)) > 0;) text.append(block, size_t(n));
    std::vector<std::string_view> lines;
    Cut(text, true, [&](std::string_view l) { lines.push_back(l); });
    std::string written;
    written.reserve(text.size() + lines.size() * 2);
    for (const std::string_view l : lines) written.append(l).append("\r\n");
    return WriteAll(out, written.data(), written.size()) ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 4 || (std::strcmp(argv[1], "stream") != 0 && std::strcmp(argv[1], "whole") != 0)) {
        std::fprintf(stderr, "usage: vornelt-floor stream|whole IN OUT\n");
        return 2;
    }
    const int in = ::open(argv[2], O_RDONLY);
    const int out = ::open(argv[3], O_WRONLY | O_CREAT | O_TRUNC, 0644);
    if (in < 0 || out < 0) return 1;
    const int status = std::strcmp(argv[1], "stream") == 0 ? Stream(in, out) : Whole(in, out);
    return ::close(out) == 0 ? status : 1;
}
