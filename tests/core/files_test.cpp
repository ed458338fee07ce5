// Saving and reading with real files: what stands at the target decides how it is replaced,
// names are what the kernel means by them, and no temporary file is ever left behind.
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstring>
#include <fstream>
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
        for (const auto& e : fs::recursive_directory_iterator(dir_))
            n += e.path().filename().string().rfind(".vornelt-", 0) == 0;
        return n;
    }
    // Saves and answers the error: Ok, or what went wrong.
    ErrorStatus Save(const std::string& path, std::string_view bytes) {
        ErrorStatus error;
        SaveFile(path, bytes, SaveOptions{}, &error);
        return error;
    }
};

TEST_F(FilesTest, PermissionsOfNewAndReplacedFiles) {
    const mode_t old = ::umask(077);
    ASSERT_TRUE(Save(Path("new.edl"), "x").ok());
    ::umask(022);
    ASSERT_TRUE(Save(Path("new22.edl"), "x").ok());
    ::umask(old);
    EXPECT_EQ(Mode("new.edl") & 07777, 0600u);
    EXPECT_EQ(Mode("new22.edl") & 07777, 0644u);

    // A replaced file keeps its permission bits, but never set-user-ID, set-group-ID or sticky.
    for (const mode_t before : {mode_t(0640), mode_t(04755), mode_t(02775), mode_t(01700)}) {
        WriteFile("kept.edl", "old");
        ::chmod(Path("kept.edl").c_str(), before);
        ASSERT_TRUE(Save(Path("kept.edl"), "new").ok());
        EXPECT_EQ(Mode("kept.edl") & 07777, before & 0777) << std::oct << before;
        EXPECT_EQ(ReadBytes(Path("kept.edl")), "new");
    }
    EXPECT_EQ(Temporaries(), 0);
}

// What stands at the target, and what a save makes of it.
TEST_F(FilesTest, WhatStandsAtTheTargetDecides) {
    fs::create_directories(dir_ / "real");
    fs::create_directories(dir_ / "far" / "sub");
    fs::create_symlink(dir_ / "far" / "sub", dir_ / "linkdir");
    WriteFile("real/target.edl", "old");
    WriteFile("read-only.edl", "old");
    ::chmod(Path("read-only.edl").c_str(), 0444);
    fs::create_symlink(dir_ / "real" / "target.edl", dir_ / "link.edl");
    fs::create_symlink("dangling-target.edl", dir_ / "dangling.edl");
    using Outcome = ErrorStatus::Outcome;
    // The name saved to, the outcome and error number, the file that holds the bytes ("": none).
    const struct {
        std::string name;
        Outcome outcome;
        int error;
        std::string holder;
    } cases[] = {
        {"link.edl", Outcome::Ok, 0, "real/target.edl"},              // the link stays a link
        {"dangling.edl", Outcome::Ok, 0, "dangling-target.edl"},      // the kernel makes what it names
        {"linkdir/../beside.edl", Outcome::Ok, 0, "far/beside.edl"},  // ".." of the folder the link leads to
        {"real", Outcome::CannotSave, EISDIR, ""},
        {"real/", Outcome::CannotSave, EISDIR, ""},
        {"missing/x.edl", Outcome::CannotSave, ENOENT, ""},
        {"read-only.edl", Outcome::Refused, EACCES, ""},                 // as cp refuses it, root or not
        {std::string(255, 'n'), Outcome::Ok, 0, std::string(255, 'n')},  // any legal name
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const ErrorStatus error = Save(Path(c.name), "saved");
        EXPECT_EQ(error.outcome, c.outcome) << error.details;
        EXPECT_EQ(error.systemError, c.error);
        if (!c.holder.empty()) {
            EXPECT_EQ(ReadBytes(Path(c.holder)), "saved");
        }
    }
    EXPECT_TRUE(fs::is_symlink(dir_ / "link.edl") && fs::is_symlink(dir_ / "dangling.edl"));
    EXPECT_FALSE(fs::exists(dir_ / "beside.edl"));
    EXPECT_EQ(ReadBytes(Path("read-only.edl")), "old");
    EXPECT_EQ(Temporaries(), 0);
}

// A FIFO and a device are written into, never replaced; a FIFO without a reader waits for
// one, and a stop ends the wait.
TEST_F(FilesTest, FifosAndDevicesAreWrittenInto) {
    ASSERT_EQ(::mkfifo(Path("fifo").c_str(), 0600), 0);
    std::string read;
    std::thread reader([&] { read = ReadBytes(Path("fifo")); });
    EXPECT_TRUE(Save(Path("fifo"), "into the pipe").ok());
    reader.join();
    EXPECT_EQ(read, "into the pipe");
    EXPECT_TRUE(S_ISFIFO(Mode("fifo")));
    EXPECT_TRUE(Save("/dev/null", "nothing").ok());
    EXPECT_TRUE(fs::is_character_file("/dev/null"));

    std::atomic<bool> stop{false};
    ErrorStatus error;
    std::thread stopper([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        stop = true;
    });
    const auto start = std::chrono::steady_clock::now();
    EXPECT_FALSE(SaveFile(Path("fifo"), "nobody reads", SaveOptions{.stop = &stop}, &error));
    stopper.join();
    EXPECT_EQ(error.outcome, ErrorStatus::Outcome::Interrupted);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(2));
}

TEST_F(FilesTest, ReadingSaysWhy) {
    std::string bytes;
    ErrorStatus error;
    EXPECT_FALSE(ReadListFile(Path("missing.edl"), bytes, &error));
    EXPECT_EQ(error.systemError, ENOENT);
    EXPECT_FALSE(ReadListFile(dir_.string(), bytes, &error));
    EXPECT_EQ(std::tie(error.systemError, error.details), std::tuple(EISDIR, "is a folder"));
    EXPECT_FALSE(ReadListFile("/dev/zero", bytes, 1 << 20, &error));
    EXPECT_EQ(std::tie(error.outcome, error.systemError, error.details),
              std::tuple(ErrorStatus::Outcome::CannotRead, EFBIG, "larger than 256 MiB"));
    EXPECT_TRUE(bytes.empty());
}

// Where a list goes, and which outputs of one call clash: by device and inode, through any
// name or link, and by folder and name where nothing stands yet.
TEST_F(FilesTest, OutputsOfACall) {
    WriteFile("a.edl", "list");
    fs::create_directories(dir_ / "out");
    fs::create_symlink(dir_ / "a.edl", dir_ / "link.edl");
    fs::create_hard_link(dir_ / "a.edl", dir_ / "hard.edl");
    ErrorStatus error;
    EXPECT_EQ(OutputPath(Path("a.edl"), std::nullopt, &error), Path("a VORNELT.edl"));
    EXPECT_EQ(OutputPath("a.edl", std::nullopt, &error), "a VORNELT.edl");
    EXPECT_EQ(OutputPath(Path("a.edl"), Path("out"), &error), Path("out/a VORNELT.edl"));
    EXPECT_EQ(OutputPath(Path("a.edl"), Path("x.edl"), &error), Path("x.edl"));
    EXPECT_EQ(OutputPath(Path("a.edl"), Path("new") + "/", &error), "");
    EXPECT_EQ(error.systemError, ENOENT);
    EXPECT_EQ(OutputPath("/dev/null", std::nullopt, &error), "");
    EXPECT_EQ(error.outcome, ErrorStatus::Outcome::BadOption);

    // The outputs, each of input 0 ("a.edl"), and what the call says to each.
    const std::pair<std::string, const char*> cases[] = {
        {"a.edl", "would overwrite the list it reads"},    {"./a.edl", "would overwrite the list it reads"},
        {"link.edl", "would overwrite the list it reads"}, {"hard.edl", "would overwrite the list it reads"},
        {"b.edl", "would overwrite the input "},           {"new.edl", ""},
        {"out/../new.edl", "is the output of "},           {"/dev/null", ""},
    };
    WriteFile("b.edl", "list");
    CallFiles files;
    files.AddInput(Path("a.edl"));
    files.AddInput(Path("b.edl"));
    for (const auto& [name, says] : cases) {
        SCOPED_TRACE(name);
        ErrorStatus clash;
        EXPECT_EQ(files.AddOutput(name[0] == '/' ? name : Path(name), 0, &clash), *says == '\0');
        EXPECT_EQ(clash.details.substr(0, std::strlen(says)), says);
    }
}

// A link planted in a sticky folder that others may write into is not followed where the
// system forbids it (fs.protected_symlinks): not even by root, as cp would not.
TEST_F(FilesTest, LinksPlantedByOthersAreNotFollowed) {
    if (::geteuid() != 0) GTEST_SKIP() << "planting a link as another user needs root";
    // The setting as it was comes back at the end.
    struct Setting {
        const char* path = "/proc/sys/fs/protected_symlinks";
        std::string before = ReadBytes(path);
        bool set = bool(std::ofstream(path) << "1");
        ~Setting() { std::ofstream(path) << before; }
    } protection;
    if (!protection.set || ReadBytes(protection.path) != "1\n")
        GTEST_SKIP() << "fs.protected_symlinks cannot be set here";
    fs::create_directories(dir_ / "shared");
    ::chmod(Path("shared").c_str(), 01777);
    WriteFile("precious", "root's own");
    fs::create_symlink(dir_ / "precious", dir_ / "shared" / "a VORNELT.edl");
    ASSERT_EQ(::lchown(Path("shared/a VORNELT.edl").c_str(), 65534, 65534), 0);
    const ErrorStatus error = Save(Path("shared/a VORNELT.edl"), "list");
    EXPECT_EQ(error.systemError, EACCES) << error.details;
    EXPECT_EQ(ReadBytes(Path("precious")), "root's own");
    EXPECT_EQ(Temporaries(), 0);
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
        // The signal goes as soon as the converter writes a file in the folder.
        const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        bool saving = false;
        int status = 0;
        while (!(saving = WritesInto(pid, dir_)) && std::chrono::steady_clock::now() < until &&
               ::waitpid(pid, &status, WNOHANG) == 0) {
        }
        ::kill(pid, signal);
        ::waitpid(pid, nullptr, 0);
        EXPECT_TRUE(saving || fs::exists(out));  // the converter did come to saving
        for (const auto& e : fs::directory_iterator(dir_)) EXPECT_NE(e.path().filename().string()[0], '.') << e.path();
        if (fs::exists(out)) {
            EXPECT_GT(fs::file_size(out), list.size());  // whole, or not there at all
        }
    }
}

}  // namespace
}  // namespace vornelt::testing
