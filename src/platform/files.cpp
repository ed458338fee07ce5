#include "platform/files.hpp"

#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <new>
#include <random>

#include <fcntl.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>
#if defined(__APPLE__)
#include <mach-o/dyld.h>
#include <sys/param.h>
#include <sys/xattr.h>
#endif

#include "text/text.hpp"

namespace vornelt {

namespace {

using Outcome = ErrorStatus::Outcome;

// How a name is looked up without opening what stands there for reading or writing: a FIFO
// does not wait for a partner, and no permission to read it is needed.
#if defined(O_PATH)
constexpr int kLookUp = O_PATH | O_CLOEXEC;
#elif defined(O_EVTONLY)
constexpr int kLookUp = O_EVTONLY | O_NONBLOCK | O_CLOEXEC;
#else
constexpr int kLookUp = O_RDONLY | O_NONBLOCK | O_CLOEXEC;
#endif

class Fd {
public:
    explicit Fd(int fd = -1) noexcept : fd_(fd) {}
    Fd(Fd&& other) noexcept : fd_(other.release()) {}
    Fd& operator=(Fd&& other) noexcept {
        reset(other.release());
        return *this;
    }
    ~Fd() { reset(); }
    explicit operator bool() const noexcept { return fd_ >= 0; }
    int get() const noexcept { return fd_; }
    int release() noexcept {
        const int f = fd_;
        fd_ = -1;
        return f;
    }
    void reset(int fd = -1) noexcept {
        if (fd_ >= 0) ::close(fd_);
        fd_ = fd;
    }

private:
    int fd_;
};

// The system's words for an error number; a folder is called one.
std::string Cause(int code) {
    if (code == EISDIR) return "is a folder";
    if (code == 0) return "unknown error";
    return std::strerror(code);
}

bool SystemFail(ErrorStatus* error, Outcome outcome, int code) { return Fail(error, outcome, Cause(code), code); }

bool SameFile(const struct stat& a, const struct stat& b) { return a.st_dev == b.st_dev && a.st_ino == b.st_ino; }

// A path cut before its last name, as written: "a/b/c.edl" gives "a/b" and "c.edl",
// "c.edl" gives "." and "c.edl", "/c.edl" gives "/" and "c.edl", "a/" gives "a" and "".
// Nothing is resolved here: the kernel opens the folder.
std::pair<std::string, std::string> CutLastName(std::string_view path) {
    const size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return {".", std::string(path)};
    std::string folder(slash == 0 ? path.substr(0, 1) : path.substr(0, slash));
    return {std::move(folder), std::string(path.substr(slash + 1))};
}

// A name as the kernel finds it: the folder it stands in, opened, and what it leads to.
struct Resolved {
    Fd folder;          // the folder the name stands in
    std::string name;   // the last name as written; "." for a path that ends in "/"
    Fd file;            // what the name leads to, links followed by the kernel; none when nothing
    struct stat st {};  // of `file`
    bool link = false;  // nothing, but the name is a link that leads nowhere
};

bool Resolve(std::string_view path, Resolved& r, Outcome outcome, ErrorStatus* error) {
    if (path.empty()) return SystemFail(error, outcome, ENOENT);
    auto [folder, name] = CutLastName(path);
    r.folder.reset(::open(folder.c_str(), kLookUp | O_DIRECTORY));
    if (!r.folder) return SystemFail(error, outcome, errno);
    r.name = name.empty() ? "." : std::move(name);
    r.file.reset(::openat(r.folder.get(), r.name.c_str(), kLookUp));
    if (!r.file) {
        const int code = errno;
        if (code != ENOENT) return SystemFail(error, outcome, code);
        struct stat own {};
        r.link = ::fstatat(r.folder.get(), r.name.c_str(), &own, AT_SYMLINK_NOFOLLOW) == 0 && S_ISLNK(own.st_mode);
        return true;
    }
    if (::fstat(r.file.get(), &r.st) != 0) return SystemFail(error, outcome, errno);
    return true;
}

// Whether the name is the file's own entry in its folder, not a link to it.
bool IsOwnEntry(const Resolved& r) {
    struct stat own {};
    return ::fstatat(r.folder.get(), r.name.c_str(), &own, AT_SYMLINK_NOFOLLOW) == 0 && SameFile(own, r.st);
}

// The standard stream that is the file a name leads to through a link (/dev/stdout, or
// /proc/self/fd/1 that the kernel reads as the descriptor's own file); -1 for none. Where
// several are the one file (a terminal), one open for writing is taken first.
int StreamNamed(const Resolved& r) {
    if (!r.file || IsOwnEntry(r)) return -1;
    int found = -1;
    for (const int k : {1, 2, 0}) {
        struct stat st {};
        if (::fstat(k, &st) != 0 || !SameFile(st, r.st)) continue;
        if ((::fcntl(k, F_GETFL) & O_ACCMODE) != O_RDONLY) return k;
        if (found < 0) found = k;
    }
    return found;
}

// The path by which the kernel knows an open file; "" when it does not say.
std::string KernelPath(int fd) {
#if defined(__APPLE__)
    char buf[MAXPATHLEN];
    if (::fcntl(fd, F_GETPATH, buf) == 0) return buf;
    return {};
#else
    char buf[PATH_MAX];
    const std::string link = "/proc/self/fd/" + std::to_string(fd);
    const ssize_t n = ::readlink(link.c_str(), buf, sizeof buf);
    return n > 0 && size_t(n) < sizeof buf ? std::string(buf, size_t(n)) : std::string();
#endif
}

// A file reached through links is replaced in its own folder: the folder the kernel names for
// it, holding the very file (same device and inode) under its last name.
bool MoveToOwnFolder(Resolved& r, ErrorStatus* error) {
    const std::string path = KernelPath(r.file.get());
    if (path.empty() || path[0] != '/') return SystemFail(error, Outcome::CannotSave, ENOENT);
    auto [folder, name] = CutLastName(path);
    Fd opened(::open(folder.c_str(), kLookUp | O_DIRECTORY));
    struct stat own {};
    if (!opened || ::fstatat(opened.get(), name.c_str(), &own, AT_SYMLINK_NOFOLLOW) != 0 || !SameFile(own, r.st))
        return Fail(error, Outcome::CannotSave, "the file it leads to is not in the folder the system names for it",
                    ENOENT);
    r.folder = std::move(opened);
    r.name = std::move(name);
    return true;
}

// Holds back signals in this thread for its lifetime; one that came meanwhile takes effect
// when the old mask comes back.
class SignalsHeld {
public:
    explicit SignalsHeld(std::initializer_list<int> signals) {
        sigset_t held;
        sigemptyset(&held);
        for (const int s : signals) sigaddset(&held, s);
        pthread_sigmask(SIG_BLOCK, &held, &old_);
    }
    SignalsHeld(const SignalsHeld&) = delete;
    SignalsHeld& operator=(const SignalsHeld&) = delete;
    ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &old_, nullptr); }

private:
    sigset_t old_;
};

// A write past the file size limit gives EFBIG and, to the writing thread, SIGXFSZ, which
// would end the program. Held back while writing, the signal is taken here: the limit is a
// failure of the save, with its reason.
void TakeFileSizeSignal() {
    sigset_t pending;
    if (sigpending(&pending) != 0 || !sigismember(&pending, SIGXFSZ)) return;
    sigset_t one;
    sigemptyset(&one);
    sigaddset(&one, SIGXFSZ);
    int taken = 0;
    sigwait(&one, &taken);
}

bool Stopped(const std::atomic<bool>* stop) { return stop && stop->load(std::memory_order_relaxed); }

bool WriteAll(int fd, std::string_view bytes, const std::atomic<bool>* stop, ErrorStatus* error) {
    const SignalsHeld held{SIGXFSZ};
    while (!bytes.empty()) {
        const ssize_t n = ::write(fd, bytes.data(), bytes.size());
        if (n >= 0) {
            bytes.remove_prefix(size_t(n));
            continue;
        }
        const int code = errno;
        if (code == EINTR) continue;
        if (code == EAGAIN) {  // a FIFO opened so that a stop can end the wait for room
            if (Stopped(stop)) return Fail(error, Outcome::Interrupted, "stopped while saving");
            struct pollfd room {
                fd, POLLOUT, 0
            };
            ::poll(&room, 1, 100);
            continue;
        }
        if (code == EFBIG) TakeFileSizeSignal();
        return SystemFail(error, Outcome::CannotSave, code);
    }
    return true;
}

// Straight into what stands there: a standard stream, a device, a FIFO or a pipe.
class DirectStream final : public TextOutputStream {
public:
    // Into a descriptor already open: a standard stream's, in its own mode.
    explicit DirectStream(Fd fd) : fd_(std::move(fd)) {}
    // Into what stands at the name, opened at the first write or the close: a FIFO waits
    // there for its reader, and the wait ends when `stop` turns true.
    DirectStream(Resolved r, const std::atomic<bool>* stop) : r_(std::move(r)), stop_(stop) {}

    bool Write(std::string_view bytes, ErrorStatus* error) override {
        return Open(error) && WriteAll(fd_.get(), bytes, stop_, error);
    }
    bool Close(ErrorStatus* error) override {
        if (!Open(error)) return false;
        closed_ = true;
        if (::close(fd_.release()) != 0 && errno != EINTR) return SystemFail(error, Outcome::CannotSave, errno);
        return true;
    }
    bool Replaces() const noexcept override { return false; }

private:
    bool Open(ErrorStatus* error) {
        if (fd_) return true;
        if (closed_ || !r_.folder) return SystemFail(error, Outcome::CannotSave, EBADF);
        const bool fifo = S_ISFIFO(r_.st.st_mode) && stop_;
        const int flags = O_WRONLY | O_NOCTTY | O_CLOEXEC | (fifo ? O_NONBLOCK : 0);
        for (;;) {
            fd_.reset(::openat(r_.folder.get(), r_.name.c_str(), flags));
            if (fd_) break;
            const int code = errno;
            if (code == EINTR) continue;
            if (code != ENXIO || !fifo) return SystemFail(error, Outcome::CannotSave, code);
            // No reader yet.
            if (Stopped(stop_)) return Fail(error, Outcome::Interrupted, "stopped while waiting for a reader");
            ::poll(nullptr, 0, 50);
        }
        struct stat st {};
        if (::fstat(fd_.get(), &st) != 0 || !SameFile(st, r_.st)) {
            fd_.reset();
            closed_ = true;
            return Fail(error, Outcome::CannotSave, "it changed while it was being saved", EAGAIN);
        }
        return true;
    }

    Fd fd_;
    Resolved r_;
    const std::atomic<bool>* stop_ = nullptr;
    bool closed_ = false;
};

// The process's umask, read without changing it (changing it would race with other
// threads that create files).
mode_t CurrentUmask() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line))
        if (line.rfind("Umask:", 0) == 0) return mode_t(std::strtoul(line.c_str() + 6, nullptr, 8));
    return 022;
}

// A seed for the names of temporary files, from the system's entropy; a name that is taken
// is only tried again, so the time and the process do where that fails.
unsigned Seed() {
    unsigned seed = 0;
#if defined(__linux__)
    // Not waiting for a random pool that is not filled yet, early after a start.
    if (::getrandom(&seed, sizeof seed, GRND_NONBLOCK) == ssize_t(sizeof seed)) return seed;
#else
    if (::getentropy(&seed, sizeof seed) == 0) return seed;
#endif
    return unsigned(std::chrono::steady_clock::now().time_since_epoch().count()) ^ unsigned(::getpid());
}

// ".vornelt-XXXXXX.tmp": short, so that any legal target name saves beside it.
std::string TemporaryName() {
    static constexpr char kLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
    thread_local std::mt19937 random(Seed());
    std::string name = ".vornelt-";
    for (int k = 0; k < 6; ++k) name += kLetters[random() % (sizeof kLetters - 1)];
    return name + ".tmp";
}

// The signals that ask a program to stop, and the one of a write past the file size limit.
constexpr std::initializer_list<int> kHeldWhileReplacing = {SIGTERM, SIGINT, SIGHUP, SIGXFSZ};

#if defined(O_TMPFILE)
// A file made without a name gets one through the descriptor's link in /proc.
int LinkInto(int fd, int folder, const std::string& name) {
    if (::linkat(fd, "", folder, name.c_str(), AT_EMPTY_PATH) == 0) return 0;
    const std::string self = "/proc/self/fd/" + std::to_string(fd);
    return ::linkat(AT_FDCWD, self.c_str(), folder, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0 : errno;
}
#endif

// Into a file of its own in the target's folder, which takes the target's place on Close.
// Where the system makes files without a name (Linux), it has none until it is whole, and a
// program that ends meanwhile leaves nothing; elsewhere it is ".vornelt-XXXXXX.tmp" and the
// signals that stop a program wait in this thread while it stands.
class ReplacingStream final : public TextOutputStream {
public:
    struct Target {
        Resolved r;
        bool replaces = false;  // a file stands there and is replaced
        bool made = false;      // the file was made for this save through a link that led nowhere
        SaveOptions how;
    };

    static std::unique_ptr<TextOutputStream> Open(Target t, ErrorStatus* error) {
        auto held = std::make_unique<SignalsHeld>(kHeldWhileReplacing);
        std::unique_ptr<ReplacingStream> s(new ReplacingStream(std::move(t), std::move(held)));
        if (!s->MakeTemporary(error)) {
            s->Discard();
            return nullptr;
        }
        // A file without a name leaves nothing behind whenever the program ends: the signals
        // wait only while it takes its place.
        if (s->temp_.empty()) s->held_.reset();
        return s;
    }
    ~ReplacingStream() override { Discard(); }

    bool Write(std::string_view bytes, ErrorStatus* error) override {
        if (!fd_) return SystemFail(error, Outcome::CannotSave, EBADF);
        if (WriteAll(fd_.get(), bytes, nullptr, error)) return true;
        Discard();
        return false;
    }
    bool Close(ErrorStatus* error) override {
        if (!fd_) return SystemFail(error, Outcome::CannotSave, EBADF);
        if (Stopped(t_.how.stop)) {
            Discard();
            return Fail(error, Outcome::Interrupted, "stopped before the file took its place");
        }
        if (!held_) held_ = std::make_unique<SignalsHeld>(kHeldWhileReplacing);
        const int code = Settle();
        if (code != 0) {
            Discard();
            return SystemFail(error, Outcome::CannotSave, code);
        }
        temp_.clear();
        t_.made = false;
        held_.reset();
        return true;
    }
    bool Replaces() const noexcept override { return true; }

private:
    ReplacingStream(Target t, std::unique_ptr<SignalsHeld> held) : t_(std::move(t)), held_(std::move(held)) {}

    int Folder() const { return t_.r.folder.get(); }

    bool MakeTemporary(ErrorStatus* error) {
        const mode_t kept = t_.r.st.st_mode & 0777;
        mode_ = t_.replaces || t_.made ? kept : (0666 & ~CurrentUmask());
#if defined(O_TMPFILE)
        fd_.reset(::openat(Folder(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, 0600));
        if (fd_) return true;
        if (errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)
            return SystemFail(error, Outcome::CannotSave, errno);
#endif
        for (int tries = 0; tries < 100; ++tries) {
            std::string name = TemporaryName();
            fd_.reset(::openat(Folder(), name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC | O_NOFOLLOW, 0600));
            if (fd_) {
                temp_ = std::move(name);
                return true;
            }
            if (errno == EEXIST) continue;
            // A folder that is there and takes no new file, such as /proc.
            if (errno == ENOENT && t_.replaces)
                return Fail(error, Outcome::CannotSave, "it cannot be replaced: its folder takes no new file", EPERM);
            return SystemFail(error, Outcome::CannotSave, errno);
        }
        return SystemFail(error, Outcome::CannotSave, EEXIST);
    }

    // The file made whole and put in place: 0, or the error number.
    int Settle() {
        const int fd = fd_.get();
        // A file that replaces another is on the disk before it takes its place, so that a crash
        // cannot leave an empty file where the earlier one stood. A new file replaces nothing
        // and skips the wait: in a batch of lists it would cost more than the conversion.
        if (t_.replaces && ::fsync(fd) != 0 && errno != EINVAL && errno != EROFS) return errno;
        if (t_.replaces && ::fchown(fd, t_.r.st.st_uid, t_.r.st.st_gid) != 0) {
            // Not allowed to give the file away: the group alone, where that is allowed.
            [[maybe_unused]] const int ignored = ::fchown(fd, uid_t(-1), t_.r.st.st_gid);
        }
        if (::fchmod(fd, mode_) != 0) return errno;
#if defined(__APPLE__)
        if (t_.how.list) {
            // The first eight bytes of the Finder information are the type and the creator.
            unsigned char info[32] = {'T', 'E', 'X', 'T', 'V', 'O', 'R', 'N'};
            ::fsetxattr(fd, "com.apple.FinderInfo", info, sizeof info, 0, 0);
        }
#endif
        bool placed = false;
#if defined(O_TMPFILE)
        if (temp_.empty()) {
            // Nothing stood there: the file takes its name at once, unless one came meanwhile.
            if (!t_.replaces && !t_.made) {
                const int code = LinkInto(fd, Folder(), t_.r.name);
                if (code == 0) placed = true;
                if (code != 0 && code != EEXIST) return code;
            }
            for (int tries = 0; !placed && temp_.empty() && tries < 100; ++tries) {
                std::string name = TemporaryName();
                const int code = LinkInto(fd, Folder(), name);
                if (code == 0) temp_ = std::move(name);
                if (code != 0 && code != EEXIST) return code;
            }
            if (!placed && temp_.empty()) return EEXIST;
        }
#endif
        if (::close(fd_.release()) != 0 && errno != EINTR) return errno;
        if (!placed && ::renameat(Folder(), temp_.c_str(), Folder(), t_.r.name.c_str()) != 0) return errno;
        return 0;
    }

    void Discard() noexcept {
        fd_.reset();
        if (!temp_.empty()) ::unlinkat(Folder(), temp_.c_str(), 0);
        temp_.clear();
        if (t_.made) {
            // The empty file made through the link goes again, if it is still the one made.
            struct stat now {};
            if (::fstatat(Folder(), t_.r.name.c_str(), &now, AT_SYMLINK_NOFOLLOW) == 0 && SameFile(now, t_.r.st) &&
                now.st_size == 0)
                ::unlinkat(Folder(), t_.r.name.c_str(), 0);
            t_.made = false;
        }
        held_.reset();
    }

    Target t_;
    Fd fd_;             // the new file, until it is closed
    std::string temp_;  // its name in the folder, while it has one of its own
    mode_t mode_ = 0600;
    std::unique_ptr<SignalsHeld> held_;
};

// One read that goes on after an interruption: the bytes read, or minus the error number.
ssize_t ReadSome(int fd, char* into, size_t count) {
    for (;;) {
        const ssize_t n = ::read(fd, into, count);
        if (n >= 0 || errno != EINTR) return n < 0 ? -errno : n;
    }
}

bool TooLarge(ErrorStatus* error) { return Fail(error, Outcome::CannotRead, std::string(kListTooLarge), EFBIG); }

}  // namespace

bool ReadListFile(std::string_view path, std::string& bytes, ErrorStatus* error) {
    return ReadListFile(path, bytes, kMaxListFileBytes, error);
}

bool ReadListFile(std::string_view path, std::string& bytes, uint64_t cap, ErrorStatus* error) {
    bytes.clear();
    try {
        Fd fd(::open(std::string(path).c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
        if (!fd) return SystemFail(error, Outcome::CannotRead, errno);
        struct stat st {};
        if (::fstat(fd.get(), &st) != 0) return SystemFail(error, Outcome::CannotRead, errno);
        if (S_ISDIR(st.st_mode)) return SystemFail(error, Outcome::CannotRead, EISDIR);
        if (S_ISREG(st.st_mode)) {
            if (uint64_t(st.st_size) > cap) return TooLarge(error);
            // A regular file is read straight into the string, in as few calls as it takes.
            bytes.resize(size_t(st.st_size));
            size_t have = 0;
            for (ssize_t n;
                 have < bytes.size() && (n = ReadSome(fd.get(), bytes.data() + have, bytes.size() - have)) != 0;) {
                if (n < 0) {
                    bytes.clear();
                    return SystemFail(error, Outcome::CannotRead, int(-n));
                }
                have += size_t(n);
            }
            bytes.resize(have);
            // A file that shrank while it was read ends here; one that grew goes on as a stream.
            if (have < size_t(st.st_size)) return true;
        }
        char buf[1 << 16];
        for (ssize_t n; (n = ReadSome(fd.get(), buf, sizeof buf)) != 0;) {
            if (n < 0 || bytes.size() + size_t(n) > cap) {
                bytes.clear();
                bytes.shrink_to_fit();
                return n < 0 ? SystemFail(error, Outcome::CannotRead, int(-n)) : TooLarge(error);
            }
            bytes.append(buf, size_t(n));
        }
        return true;
    } catch (const std::bad_alloc&) {
        bytes.clear();
        bytes.shrink_to_fit();
        return Fail(error, Outcome::NoMemory, "not enough memory for this list");
    }
}

std::unique_ptr<TextOutputStream> OpenForSaving(std::string_view path, const SaveOptions& how, ErrorStatus* error) {
    try {
        Resolved r;
        if (!Resolve(path, r, Outcome::CannotSave, error)) return nullptr;
        if (r.file) {
            if (const int stream = StreamNamed(r); stream >= 0) {
                Fd fd(::fcntl(stream, F_DUPFD_CLOEXEC, 3));
                if (!fd) return SystemFail(error, Outcome::CannotSave, errno), nullptr;
                return std::make_unique<DirectStream>(std::move(fd));
            }
            if (S_ISDIR(r.st.st_mode)) return SystemFail(error, Outcome::CannotSave, EISDIR), nullptr;
            if (!S_ISREG(r.st.st_mode)) return std::make_unique<DirectStream>(std::move(r), how.stop);
            if (!IsOwnEntry(r) && !MoveToOwnFolder(r, error)) return nullptr;
            if ((r.st.st_mode & 0222) == 0) {
                Fail(error, Outcome::Refused, "Permission denied: a read-only file is not replaced", EACCES);
                return nullptr;
            }
            if (::faccessat(r.folder.get(), r.name.c_str(), W_OK, AT_EACCESS) != 0)
                return SystemFail(error, Outcome::Refused, errno), nullptr;
            return ReplacingStream::Open({std::move(r), true, false, how}, error);
        }
        if (r.link) {
            // A link that leads nowhere: the kernel makes the file it names, which takes the list.
            r.file.reset(::openat(r.folder.get(), r.name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOCTTY, 0666));
            if (!r.file) return SystemFail(error, Outcome::CannotSave, errno), nullptr;
            ReplacingStream::Target made{std::move(r), false, true, how};
            if (::fstat(made.r.file.get(), &made.r.st) != 0 || !S_ISREG(made.r.st.st_mode) ||
                !MoveToOwnFolder(made.r, error)) {
                if (error && error->ok())
                    Fail(error, Outcome::CannotSave, "it changed while it was being saved", EAGAIN);
                return nullptr;
            }
            return ReplacingStream::Open(std::move(made), error);
        }
        return ReplacingStream::Open({std::move(r), false, false, how}, error);
    } catch (const std::bad_alloc&) {
        Fail(error, Outcome::NoMemory, "not enough memory to save");
        return nullptr;
    }
}

bool SaveFile(std::string_view path, std::string_view bytes, const SaveOptions& how, ErrorStatus* error) {
    const std::unique_ptr<TextOutputStream> stream = OpenForSaving(path, how, error);
    return stream && stream->Write(bytes, error) && stream->Close(error);
}

std::string_view FileName(std::string_view path) {
    const size_t slash = path.rfind('/');
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

std::string SuggestedSaveName(std::string_view loadedName) {
    // The name up to its first point; a name without one is taken whole.
    const int64_t point = InStr(loadedName, ".");
    const std::string_view stem = point == 0 ? loadedName : Left(loadedName, point - 1);
    return std::string(stem) + " VORNELT.edl";
}

bool IsFolder(std::string_view path) {
    struct stat st {};
    return !path.empty() && ::stat(std::string(path).c_str(), &st) == 0 && S_ISDIR(st.st_mode);
}

namespace {

// Whether what stands at `input` has no name to suggest a saved list's name from: a device,
// a FIFO, a standard stream named as a file. Nothing there, or a folder, is for the read to
// tell.
bool NeedsNamedOutput(std::string_view input) {
    Resolved r;
    if (!Resolve(input, r, Outcome::CannotRead, nullptr) || !r.file || S_ISDIR(r.st.st_mode)) return false;
    return !S_ISREG(r.st.st_mode) || StreamNamed(r) >= 0;
}

// A folder as written, and a name in it.
std::string InFolder(std::string_view folder, std::string_view name) {
    std::string path(folder);
    if (!path.empty() && path.back() != '/') path += '/';
    return path.append(name);
}

}  // namespace

std::string OutputPath(std::string_view input, std::optional<std::string_view> output, ErrorStatus* error) {
    try {
        if (output && output->empty()) return SystemFail(error, Outcome::CannotSave, ENOENT), std::string();
        const bool intoFolder = !output || output->back() == '/' || IsFolder(*output);
        if (!intoFolder) return std::string(*output);
        if (output && !IsFolder(*output))
            return Fail(error, Outcome::CannotSave, "no such folder", ENOENT), std::string();
        if (NeedsNamedOutput(input)) {
            Fail(error, Outcome::BadOption, "not a regular file: name the file its list is saved in");
            return {};
        }
        const std::string_view name = FileName(input);
        const std::string_view folder = output ? *output : input.substr(0, input.size() - name.size());
        return InFolder(folder, SuggestedSaveName(name));
    } catch (const std::bad_alloc&) {
        Fail(error, Outcome::NoMemory, "not enough memory");
        return {};
    }
}

std::optional<CallFiles::Key> CallFiles::KeyOf(std::string_view path) {
    Resolved r;
    if (!Resolve(path, r, Outcome::CannotSave, nullptr)) return std::nullopt;
    if (r.file) {
        if (!S_ISREG(r.st.st_mode)) return std::nullopt;
        return Key{uint64_t(r.st.st_dev), uint64_t(r.st.st_ino), {}};
    }
    struct stat folder {};
    if (::fstat(r.folder.get(), &folder) != 0) return std::nullopt;
    return Key{uint64_t(folder.st_dev), uint64_t(folder.st_ino), r.name};
}

void CallFiles::AddInput(std::string_view path) {
    inputs_.emplace_back(path);
    if (std::optional<Key> key = KeyOf(path)) inputKeys_[std::move(*key)].push_back(inputs_.size() - 1);
}

bool CallFiles::AddOutput(std::string_view path, size_t input, ErrorStatus* error) {
    std::optional<Key> key = KeyOf(path);
    if (!key) return true;
    if (const auto in = inputKeys_.find(*key); in != inputKeys_.end()) {
        for (const size_t j : in->second)
            if (j == input) return Fail(error, Outcome::Refused, "would overwrite the list it reads", EEXIST);
        return Fail(error, Outcome::Refused, "would overwrite the input " + inputs_[in->second.front()], EEXIST);
    }
    if (const auto out = outputKeys_.find(*key); out != outputKeys_.end()) {
        if (out->second == kNoInput) return Fail(error, Outcome::Refused, "is another output of the run", EEXIST);
        return Fail(error, Outcome::Refused, "is the output of " + inputs_[out->second] + " too", EEXIST);
    }
    outputKeys_.emplace(std::move(*key), input);
    return true;
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
