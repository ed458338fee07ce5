// Saving with real files: what stands at the target decides how it is replaced, and no
// temporary file is ever left behind.
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "fixtures.hpp"
#include "generate.hpp"
#include "platform/files.hpp"

extern char** environ;

namespace vornelt::testing {
namespace {

namespace fs = std::filesystem;

class FilesTest : public Fixture {
protected:
    std::string Path(const std::string& name) const { return (dir_ / name).string(); }
    mode_t Mode(const std::string& name) const {
        struct stat st {};
        ::lstat(Path(name).c_str(), &st);
        return st.st_mode;
    }
    int Temporaries() const {
        int n = 0;
        for (const auto& e : fs::directory_iterator(dir_)) n += e.path().filename().string().rfind(".vornelt-", 0) == 0;
        return n;
    }
};

TEST_F(FilesTest, PermissionsOfNewAndReplacedFiles) {
    const mode_t old = ::umask(077);
    ASSERT_EQ(SaveFileBytes(Path("new.edl"), "x"), 0);
    ::umask(022);
    ASSERT_EQ(SaveFileBytes(Path("new22.edl"), "x"), 0);
    ::umask(old);
    EXPECT_EQ(Mode("new.edl") & 07777, 0600u);
    EXPECT_EQ(Mode("new22.edl") & 07777, 0644u);

    // A replaced file keeps its permission bits, but never set-user-ID, set-group-ID or sticky.
    for (const mode_t before : {mode_t(0640), mode_t(04755), mode_t(02775), mode_t(01700)}) {
        WriteFile("kept.edl", "old");
        ::chmod(Path("kept.edl").c_str(), before);
        ASSERT_EQ(SaveFileBytes(Path("kept.edl"), "new"), 0);
        EXPECT_EQ(Mode("kept.edl") & 07777, before & 0777) << std::oct << before;
        EXPECT_EQ(ReadBytes(Path("kept.edl")), "new");
    }
    EXPECT_EQ(Temporaries(), 0);
}

TEST_F(FilesTest, LinksAreFollowedAndDevicesWrittenInto) {
    fs::create_directories(dir_ / "real");
    WriteFile("real/target.edl", "old");
    fs::create_symlink(dir_ / "real" / "target.edl", dir_ / "link.edl");
    ASSERT_EQ(SaveFileBytes(Path("link.edl"), "through the link"), 0);
    EXPECT_TRUE(fs::is_symlink(dir_ / "link.edl"));
    EXPECT_EQ(ReadBytes(Path("real/target.edl")), "through the link");

    fs::create_symlink("dangling-target.edl", dir_ / "dangling.edl");
    ASSERT_EQ(SaveFileBytes(Path("dangling.edl"), "made"), 0);
    EXPECT_TRUE(fs::is_symlink(dir_ / "dangling.edl"));
    EXPECT_EQ(ReadBytes(Path("dangling-target.edl")), "made");

    // A FIFO is written into, not replaced; so is a device.
    ASSERT_EQ(::mkfifo(Path("fifo").c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = ReadBytes(Path("fifo")); });
    EXPECT_EQ(SaveFileBytes(Path("fifo"), "into the pipe"), 0);
    reader.join();
    EXPECT_EQ(read, "into the pipe");
    EXPECT_TRUE(S_ISFIFO(Mode("fifo")));
    EXPECT_EQ(SaveFileBytes("/dev/null", "nothing"), 0);
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    EXPECT_EQ(SaveFileBytes(Path("real"), "x"), EISDIR);
    EXPECT_EQ(SaveFileBytes(Path("missing/x.edl"), "x"), ENOENT);
    EXPECT_EQ(Temporaries(), 0);
}

TEST_F(FilesTest, AnyLegalNameSaves) {
    const std::string longest(255, 'n');
    EXPECT_EQ(SaveFileBytes(Path(longest), "x"), 0);
    EXPECT_EQ(ReadBytes(Path(longest)), "x");
}

TEST_F(FilesTest, ReadingStopsAtTheCap) {
    std::string bytes;
    EXPECT_EQ(ReadListFile(Path("missing.edl"), bytes), ENOENT);
    EXPECT_EQ(ReadListFile(dir_.string(), bytes), EISDIR);
    EXPECT_EQ(ReadListFile("/dev/zero", bytes, 1 << 20), kErrorListTooLarge);
    EXPECT_TRUE(bytes.empty());
    EXPECT_EQ(ErrorCause(kErrorListTooLarge), "larger than 256 MiB");
}

// A converter stopped while its temporary file stands leaves the earlier file whole and no
// temporary file.
TEST_F(FilesTest, StopSignalsLeaveNoTemporaryFile) {
    const std::string list = bench::GenerateList({60000, false, bench::Shape::Mixed, 3});
    WriteFile("big.edl", list);
    const std::string in = Path("big.edl"), out = Path("out.edl");
    for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
        const char* argv[] = {VORNELT_CONVERTER, in.c_str(), "--fps", "25", "-o", out.c_str(), nullptr};
        pid_t pid = 0;
        ASSERT_EQ(::posix_spawn(&pid, VORNELT_CONVERTER, nullptr, nullptr, const_cast<char**>(argv), environ), 0);
        // The signal goes as soon as a hidden file shows in the folder.
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        bool hidden = false;
        while (!hidden && std::chrono::steady_clock::now() < until && ::waitpid(pid, nullptr, WNOHANG) == 0)
            for (const auto& e : fs::directory_iterator(dir_)) hidden |= e.path().filename().string()[0] == '.';
        ::kill(pid, signal);
        ::waitpid(pid, nullptr, 0);
        EXPECT_TRUE(hidden || fs::exists(out));  // the converter did come to saving
        for (const auto& e : fs::directory_iterator(dir_)) EXPECT_NE(e.path().filename().string()[0], '.') << e.path();
        if (fs::exists(out)) {
            EXPECT_GT(fs::file_size(out), list.size());  // whole, or not there at all
        }
    }
}

}  // namespace
}  // namespace vornelt::testing
