#include "platform/files.hpp"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(__APPLE__)
#include <mach-o/dyld.h>
#include <sys/xattr.h>
#endif

namespace vornelt {

namespace {

class Fd {
public:
    explicit Fd(int fd = -1) : fd_(fd) {}
    Fd(const Fd&) = delete;
    Fd& operator=(const Fd&) = delete;
    ~Fd() {
        if (fd_ >= 0) ::close(fd_);
    }
    int get() const { return fd_; }
    int release() {
        const int f = fd_;
        fd_ = -1;
        return f;
    }

private:
    int fd_;
};

void WriteAll(int fd, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n < 0) {
            if (errno == EINTR) continue;
            throw IOError(errno);
        }
        bytes.remove_prefix(size_t(n));
    }
}

std::string FolderOf(const std::string& path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    if (slash == 0) return "/";
    return path.substr(0, slash);
}

// The process's umask, read without changing it (changing it would race with other
// threads that create files).
mode_t CurrentUmask() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("Umask:", 0) == 0) return mode_t(std::strtoul(line.c_str() + 6, nullptr, 8));
    return 022;
}

// The file a symbolic link points to, followed link by link; the path itself otherwise.
std::string FollowLinks(std::string path) {
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st {};
        if (::lstat(path.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return path;
        char buf[PATH_MAX];
        const ssize_t n = ::readlink(path.c_str(), buf, sizeof buf - 1);
        if (n <= 0) return path;
        std::string target(buf, size_t(n));
        path = target[0] == '/' ? target : FolderOf(path) + "/" + target;
    }
    throw IOError(ELOOP);
}

// Holds back TERM, INT and HUP in this thread for its lifetime; one that came meanwhile takes
// effect when the old mask comes back.
class StopSignalsHeld {
public:
    StopSignalsHeld() {
        sigset_t stop;
        sigemptyset(&stop);
        sigaddset(&stop, SIGTERM);
        sigaddset(&stop, SIGINT);
        sigaddset(&stop, SIGHUP);
        pthread_sigmask(SIG_BLOCK, &stop, &old_);
    }
    StopSignalsHeld(const StopSignalsHeld&) = delete;
    StopSignalsHeld& operator=(const StopSignalsHeld&) = delete;
    ~StopSignalsHeld() { pthread_sigmask(SIG_SETMASK, &old_, nullptr); }

private:
    sigset_t old_;
};

// Straight into what stands there: a device or a FIFO.
class DirectStream final : public TextOutputStream {
public:
    explicit DirectStream(int fd) : fd_(fd) {}
    void Write(std::string_view bytes) override {
        if (fd_.get() < 0) throw IOError(EBADF);
        WriteAll(fd_.get(), bytes);
    }
    void Close() override {
        const int fd = fd_.release();
        if (fd >= 0 && ::close(fd) != 0) throw IOError(errno);
    }

private:
    Fd fd_;
};

// Into a private file beside the target, which takes the target's place on Close.
class ReplacingStream final : public TextOutputStream {
public:
    ReplacingStream(std::unique_ptr<StopSignalsHeld> held, std::string target, std::string temp, int fd, mode_t mode,
                    bool replaces, uid_t uid, gid_t gid)
        : target_(std::move(target)),
          temp_(std::move(temp)),
          fd_(fd),
          mode_(mode),
          replaces_(replaces),
          uid_(uid),
          gid_(gid),
          held_(std::move(held)) {}
    ~ReplacingStream() override {
        if (fd_.get() >= 0) Discard();
    }
    void Write(std::string_view bytes) override {
        if (fd_.get() < 0) throw IOError(EBADF);
        WriteAll(fd_.get(), bytes);
    }
    void Close() override {
        if (fd_.get() < 0) return;
        int err = 0;
        // A file that replaces another is on the disk before it takes its place, so that a crash
        // cannot leave an empty file where the earlier one stood. A new file replaces nothing
        // and skips the wait: in a batch of lists it would cost more than the conversion.
        if (replaces_ && ::fsync(fd_.get()) != 0 && errno != EINVAL && errno != EROFS) err = errno;
        if (!err && replaces_ && ::fchown(fd_.get(), uid_, gid_) != 0) {
            // Not allowed to give the file away: the group alone, where that is allowed.
            [[maybe_unused]] const int ignored = ::fchown(fd_.get(), uid_t(-1), gid_);
        }
        if (!err && ::fchmod(fd_.get(), mode_) != 0) err = errno;
        if (::close(fd_.release()) != 0 && !err) err = errno;
        if (!err && ::rename(temp_.c_str(), target_.c_str()) != 0) err = errno;
        if (err) {
            ::unlink(temp_.c_str());
            held_.reset();
            throw IOError(err);
        }
        held_.reset();
    }

private:
    void Discard() {
        ::close(fd_.release());
        ::unlink(temp_.c_str());
        held_.reset();
    }

    std::string target_;
    std::string temp_;
    Fd fd_;
    mode_t mode_;
    bool replaces_;
    uid_t uid_;
    gid_t gid_;
    std::unique_ptr<StopSignalsHeld> held_;  // the last member: let go after the file is settled
};

}  // namespace

IOError::IOError(int code) : std::runtime_error(ErrorCause(code)), code(code) {}

std::string ErrorCause(int code) {
    if (code == kErrorListTooLarge) return "larger than 256 MiB";
    if (code == 0) return "unknown error";
    return std::strerror(code);
}

namespace {

// One read that goes on after an interruption: the bytes read, or minus the error number.
ssize_t ReadSome(int fd, char* into, size_t count) {
    for (;;) {
        const ssize_t n = ::read(fd, into, count);
        if (n >= 0 || errno != EINTR) return n < 0 ? -errno : n;
    }
}

}  // namespace

int ReadListFile(const std::string& path, std::string& bytes, uint64_t cap) {
    bytes.clear();
    Fd fd(::open(path.c_str(), O_RDONLY | O_CLOEXEC));
    if (fd.get() < 0) return errno;
    struct stat st {};
    if (::fstat(fd.get(), &st) != 0) return errno;
    if (S_ISDIR(st.st_mode)) return EISDIR;
    if (S_ISREG(st.st_mode)) {
        if (uint64_t(st.st_size) > cap) return kErrorListTooLarge;
        // A regular file is read straight into the string, in as few calls as it takes.
        bytes.resize(size_t(st.st_size));
        size_t have = 0;
        for (ssize_t n;
             have < bytes.size() && (n = ReadSome(fd.get(), bytes.data() + have, bytes.size() - have)) != 0;) {
            if (n < 0) {
                bytes.clear();
                return int(-n);
            }
            have += size_t(n);
        }
        bytes.resize(have);
        // A file that shrank while it was read ends here; one that grew goes on as a stream.
        if (have < size_t(st.st_size)) return 0;
    }
    char buf[1 << 16];
    for (ssize_t n; (n = ReadSome(fd.get(), buf, sizeof buf)) != 0;) {
        if (n < 0 || bytes.size() + size_t(n) > cap) {
            bytes.clear();
            bytes.shrink_to_fit();
            return n < 0 ? int(-n) : kErrorListTooLarge;
        }
        bytes.append(buf, size_t(n));
    }
    return 0;
}

std::unique_ptr<TextOutputStream> OpenForSaving(const std::string& path) {
    if (path.empty()) throw IOError(ENOENT);
    const std::string target = FollowLinks(path);

    struct stat st {};
    const bool exists = ::stat(target.c_str(), &st) == 0;
    if (exists && S_ISDIR(st.st_mode)) throw IOError(EISDIR);
    if (exists && !S_ISREG(st.st_mode)) {
        const int fd = ::open(target.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
        if (fd < 0) throw IOError(errno);
        return std::make_unique<DirectStream>(fd);
    }

    const std::string folder = FolderOf(target);
    struct stat dir {};
    if (::stat(folder.c_str(), &dir) != 0) throw IOError(errno);
    if (!S_ISDIR(dir.st_mode)) throw IOError(ENOTDIR);

    auto held = std::make_unique<StopSignalsHeld>();
    std::string temp = folder + "/.vornelt-XXXXXX.tmp";
    const int fd = ::mkstemps(temp.data(), 4);  // 0600 until it is complete
    if (fd < 0) throw IOError(errno);
    ::fcntl(fd, F_SETFD, FD_CLOEXEC);
    const mode_t mode = exists ? (st.st_mode & 0777) : (0666 & ~CurrentUmask());
    return std::make_unique<ReplacingStream>(std::move(held), target, temp, fd, mode, exists, st.st_uid, st.st_gid);
}

int SaveFileBytes(const std::string& path, std::string_view bytes) {
    try {
        std::unique_ptr<TextOutputStream> stream = OpenForSaving(path);
        stream->Write(bytes);
        stream->Close();
        return 0;
    } catch (const IOError& e) {
        return e.code ? e.code : EIO;
    }
}

std::string ExecutablePath() {
#if defined(__APPLE__)
    char buf[4096];
    uint32_t size = sizeof buf;
    if (_NSGetExecutablePath(buf, &size) == 0) return buf;
    return {};
#else
    char buf[PATH_MAX];
    const ssize_t n = ::readlink("/proc/self/exe", buf, sizeof buf);
    return n > 0 ? std::string(buf, size_t(n)) : std::string();
#endif
}

void SetFileTypeAndCreator(const std::string& path, std::string_view type, std::string_view creator) {
#if defined(__APPLE__)
    // The first eight bytes of the Finder information are the type and the creator.
    unsigned char info[32] = {};
    ::getxattr(path.c_str(), "com.apple.FinderInfo", info, sizeof info, 0, 0);
    for (size_t k = 0; k < 4; ++k) {
        info[k] = k < type.size() ? static_cast<unsigned char>(type[k]) : ' ';
        info[4 + k] = k < creator.size() ? static_cast<unsigned char>(creator[k]) : ' ';
    }
    ::setxattr(path.c_str(), "com.apple.FinderInfo", info, sizeof info, 0, 0);
#else
    (void)path;
    (void)type;
    (void)creator;
#endif
}

}  // namespace vornelt
