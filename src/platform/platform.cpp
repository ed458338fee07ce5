#include "platform/platform.hpp"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <random>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(__APPLE__)
#include <mach-o/dyld.h>
#include <sys/xattr.h>
#endif

#include "platform/headless.hpp"

namespace vornelt {

namespace {

Platform* g_platform = nullptr;

class FdCloser {
public:
    explicit FdCloser(int fd) : fd_(fd) {}
    ~FdCloser() {
        if (fd_ >= 0) ::close(fd_);
    }
    int get() const { return fd_; }
    int release() {
        int f = fd_;
        fd_ = -1;
        return f;
    }

private:
    int fd_;
};

// Writes beside the target and renames over it on Close.
class AtomicFileStream final : public TextOutputStream {
public:
    AtomicFileStream(std::string target, std::string temp, int fd)
        : target_(std::move(target)), temp_(std::move(temp)), fd_(fd) {}
    ~AtomicFileStream() override {
        if (fd_ >= 0) {
            ::close(fd_);
            ::unlink(temp_.c_str());
        }
    }
    void Write(std::string_view bytes) override {
        if (fd_ < 0) throw IOError("the file is closed");
        while (!bytes.empty()) {
            ssize_t n = ::write(fd_, bytes.data(), bytes.size());
            if (n < 0) {
                if (errno == EINTR) continue;
                throw IOError(std::strerror(errno));
            }
            bytes.remove_prefix(size_t(n));
        }
    }
    void Close() override {
        if (fd_ < 0) return;
        int fd = fd_;
        fd_ = -1;
        bool ok = ::fsync(fd) == 0 || errno == EINVAL || errno == EROFS;
        int err = errno;
        if (::close(fd) != 0 && ok) {
            ok = false;
            err = errno;
        }
        if (ok && ::rename(temp_.c_str(), target_.c_str()) != 0) {
            ok = false;
            err = errno;
        }
        if (!ok) {
            ::unlink(temp_.c_str());
            throw IOError(std::strerror(err));
        }
    }

private:
    std::string target_;
    std::string temp_;
    int fd_;
};

}  // namespace

std::optional<std::string> Platform::ReadWholeFile(const FolderItem& file) {
    FdCloser fd(::open(file.AbsolutePath().c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0) return std::nullopt;
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0 || S_ISDIR(st.st_mode)) return std::nullopt;
    std::string bytes;
    if (S_ISREG(st.st_mode)) {
        if (uint64_t(st.st_size) > kMaxListFileBytes) return std::nullopt;
        bytes.reserve(size_t(st.st_size));
    }
    char buf[1 << 16];
    for (;;) {
        ssize_t n = ::read(fd.get(), buf, sizeof buf);
        if (n < 0) {
            if (errno == EINTR) continue;
            return std::nullopt;
        }
        if (n == 0) break;
        if (bytes.size() + size_t(n) > kMaxListFileBytes) return std::nullopt;
        bytes.append(buf, size_t(n));
    }
    return bytes;
}

std::unique_ptr<TextOutputStream> Platform::CreateTextFile(const FolderItem& file) {
    if (file.IsFolder()) return nullptr;
    auto parent = file.Parent();
    if (!parent || !parent->IsFolder()) return nullptr;
    // A new file takes the usual permissions; a replaced one keeps its own.
    mode_t mode = 0666;
    struct stat st {};
    if (::stat(file.AbsolutePath().c_str(), &st) == 0) mode = st.st_mode & 07777;
    std::random_device rd;
    for (int attempt = 0; attempt < 16; ++attempt) {
        char suffix[32];
        std::snprintf(suffix, sizeof suffix, ".%08x.tmp", unsigned(rd()));
        std::string temp = parent->AbsolutePath() + "/." + file.Name() + suffix;
        int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
        if (fd >= 0) {
            ::fchmod(fd, mode);
            return std::make_unique<AtomicFileStream>(file.AbsolutePath(), temp, fd);
        }
        if (errno != EEXIST) return nullptr;
    }
    return nullptr;
}

void Platform::SetMacTypeAndCreator(const FolderItem& file, std::string_view type, std::string_view creator) {
#if defined(__APPLE__)
    // The first eight bytes of the Finder information are the type and the creator.
    unsigned char info[32] = {};
    ::getxattr(file.AbsolutePath().c_str(), "com.apple.FinderInfo", info, sizeof info, 0, 0);
    for (size_t k = 0; k < 4; ++k) {
        info[k] = k < type.size() ? static_cast<unsigned char>(type[k]) : ' ';
        info[4 + k] = k < creator.size() ? static_cast<unsigned char>(creator[k]) : ' ';
    }
    ::setxattr(file.AbsolutePath().c_str(), "com.apple.FinderInfo", info, sizeof info, 0, 0);
#else
    (void)file;
    (void)type;
    (void)creator;
#endif
}

FolderItem Platform::ExecutableFile() {
#if defined(__APPLE__)
    char buf[4096];
    uint32_t size = sizeof buf;
    if (_NSGetExecutablePath(buf, &size) == 0) return FolderItem(buf);
#else
    std::error_code ec;
    auto p = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (!ec) return FolderItem(p.string());
#endif
    return FolderItem(".");
}

Platform& GetPlatform() {
    static HeadlessPlatform fallback;
    return g_platform ? *g_platform : fallback;
}

void SetPlatform(Platform* platform) { g_platform = platform; }

}  // namespace vornelt
