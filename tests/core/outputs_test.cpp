// The converter's outputs as the kernel sees the files, run as a user runs it: from a shell,
// with its redirections, links, pipes and limits. Nothing a user meant to keep is lost, and
// no temporary file is ever left behind.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <nlohmann/json.hpp>
#include <thread>

#include "fixtures.hpp"
#include "generate.hpp"
#include "vornelt/convert.hpp"

extern char** environ;

namespace vornelt::testing {
namespace {

namespace fs = std::filesystem;
using ::testing::HasSubstr;
using ::testing::Not;

const std::string kList = "TITLE: Test\r\n001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n";

class OutputsTest : public Fixture {
protected:
    // Runs a bash script in the test's folder, the converter as $C; its exit status, and what
    // it wrote to standard error in `said`.
    int Shell(const std::string& script) {
        const std::string command = "cd '" + dir_.string() + "' && C='" VORNELT_CONVERTER "' && " + script;
        const std::string errors = (dir_ / ".said").string();
        const char* argv[] = {"/bin/bash", "-c", command.c_str(), nullptr};
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_addopen(&actions, 2, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        pid_t pid = 0;
        int status = -1;
        if (::posix_spawn(&pid, "/bin/bash", &actions, nullptr, const_cast<char**>(argv), environ) == 0)
            ::waitpid(pid, &status, 0);
        posix_spawn_file_actions_destroy(&actions);
        said = ReadBytes(errors);
        fs::remove(errors);
        return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
    }
    std::vector<std::string> Temporaries() const {
        std::vector<std::string> found;
        for (const auto& e : fs::recursive_directory_iterator(dir_))
            if (e.path().filename().string().rfind(".vornelt-", 0) == 0) found.push_back(e.path().string());
        return found;
    }

    std::string said;
};

// Each script, its exit status, the files that must hold what they held or what the
// converter made of the list ("" for a file that must not be there), and what standard error
// says (and must not say).
TEST_F(OutputsTest, NothingAUserMeantToKeepIsLost) {
    const std::string converted = vornelt::Convert(kList, ConvertOptions{}).bytes;
    const std::string kAbsent = "\x01";
    const struct {
        std::string script;
        int status;
        std::map<std::string, std::string> files;
        std::string says = "", never = "\x01";
    } cases[] = {
        // An output that is its own input, by any name.
        {"$C a.edl --fps 25 -o a.edl", 1, {{"a.edl", kList}}, "would overwrite the list it reads"},
        {"$C a.edl --fps 25 -o ./a.edl", 1, {{"a.edl", kList}}},
        {"ln -s a.edl l.edl && $C a.edl --fps 25 -o l.edl", 1, {{"a.edl", kList}}},
        {"$C /dev/stdin --fps 25 -o a.edl < a.edl", 1, {{"a.edl", kList}}},
        // A report onto a list, found before anything is written.
        {"$C a.edl --fps 25 --report a.edl", 1, {{"a.edl", kList}, {"a VORNELT.edl", kAbsent}}},
        {"$C a.edl --fps 25 --dry-run --report a.edl", 1, {{"a.edl", kList}}},
        {"$C a.edl --fps 25 -o out.edl --report out.edl", 1, {{"out.edl", kAbsent}}, "is the output of"},
        {"$C a.edl --fps 25 --report nowhere/r.txt", 1, {{"a VORNELT.edl", kAbsent}}, "(No such file or directory)"},
        // Standard streams named as files are written into, in their own mode.
        {"echo prev > all.edl && $C a.edl --fps 25 -o /dev/stdout >> all.edl", 0, {{"all.edl", "prev\n" + converted}}},
        {"echo log > build.log && $C a.edl --fps 25 --dry-run --report /dev/stderr 2>> build.log",
         0,
         {{"build.log", "log\n" + vornelt::FormatReport(vornelt::Convert(kList, ConvertOptions{}).report, "a.edl")}}},
        {"$C a.edl --fps 25 -o /dev/stdout | cat > got.edl; exit ${PIPESTATUS[0]}", 0, {{"got.edl", converted}}},
        // An input that is no regular file of its own name needs a named output.
        {"$C /dev/stdin --fps 25 < a.edl; s=$?; [ -e '/dev/stdin VORNELT.edl' ] && rm '/dev/stdin VORNELT.edl' && s=99;"
         " exit $s",
         2,
         {},
         "/dev/stdin: not a regular file"},
        // ".." after a link is the kernel's: beside the folder the link leads to.
        {"mkdir -p far/sub && cp a.edl far/ && ln -s far/sub ld && $C ld/../a.edl --fps 25",
         0,
         {{"far/a VORNELT.edl", converted}, {"a VORNELT.edl", kAbsent}}},
        // A folder among the inputs fails alone.
        {"mkdir d && $C d a.edl --fps 25",
         1,
         {{"a VORNELT.edl", converted}},
         "d: Sorry, Can't read the file. (is a folder)"},
        {"mkdir d && $C d --fps 25", 1, {}, "is a folder", "-o"},
        // A read-only file is refused, as cp refuses it.
        {"cp a.edl ro.edl && chmod 444 ro.edl && $C a.edl --fps 25 -o ro.edl", 1, {{"ro.edl", kList}}, "read-only"},
        {"$C a.edl --fps 25 -o ''", 2, {}},
        {"$C a.edl --fps 25 -o /proc/version", 1, {}, "", "No such file"},
        {"$C a.edl --fps 25 -o - > /dev/full",
         1,
         {},
         "-: Unknown Error while saving the File. Please try again. (No "
         "space left on device)"},
        {"mkdir x y out && cp a.edl x/ && cp a.edl y/ && $C x/a.edl y/a.edl --fps 25 -o out/",
         1,
         {{"out/a VORNELT.edl", converted}},
         "its output out/a VORNELT.edl is the output of x/a.edl too"},
        // The file size limit is a failure of the save, with its reason.
        {"(ulimit -f 1 && exec $C big.edl --fps 25 -o out.edl)", 1, {{"out.edl", kAbsent}}, "(File too large)"},
    };
    const std::string big = bench::GenerateList({200, false, bench::Shape::Mixed, 1});
    for (const auto& c : cases) {
        SCOPED_TRACE(c.script);
        TearDown();
        SetUp();
        WriteFile("a.edl", kList);
        WriteFile("big.edl", big);
        EXPECT_EQ(Shell(c.script), c.status) << said;
        for (const auto& [name, bytes] : c.files) {
            if (bytes == kAbsent) {
                EXPECT_FALSE(fs::exists(dir_ / name)) << name;
            } else {
                EXPECT_EQ(ReadBytes(dir_ / name), bytes) << name;
            }
        }
        EXPECT_THAT(said, HasSubstr(c.says));
        EXPECT_THAT(said, Not(HasSubstr(c.never)));
        EXPECT_THAT(Temporaries(), ::testing::IsEmpty());
    }
}

// The report goes out as the lists are done: the reports of the first lists stand in it while
// a later list is still being read, and the pieces make the document a JSON library writes.
TEST_F(OutputsTest, TheReportIsWrittenAsTheListsAreDone) {
    WriteFile("a.edl", kList);
    WriteFile("b.edl", kList);
    EXPECT_EQ(Shell("mkfifo late.edl && { $C a.edl b.edl late.edl --fps 25 --dry-run -j 1 --report - "
                    "--report-format json > report.json & } && for i in $(seq 100); do "
                    "grep -q '\"input\": \"b.edl\"' report.json && break; sleep 0.05; done; "
                    "grep -c '\"input\": \"b.edl\"' report.json > seen; cat a.edl > late.edl; wait"),
              0);
    EXPECT_EQ(ReadBytes(dir_ / "seen"), "1\n");
    for (const char* script : {"", "$C none.edl --fps 25 --dry-run --report - --report-format json > report.json"}) {
        if (*script) {
            EXPECT_EQ(Shell(script), 1);
        }
        const std::string report = ReadBytes(dir_ / "report.json");
        EXPECT_EQ(nlohmann::ordered_json::parse(report).dump(2) + "\n", report);
    }
}

// The reader of standard error has gone when the first list of a batch is told of, while the
// second is being saved over an earlier one (a replaced file waits until it is on the disk):
// the files in hand are finished, and none is left half-made. The moment differs from run to
// run, so the batch runs many times.
TEST_F(OutputsTest, ABrokenPipeLeavesNoTemporaryFile) {
    const std::string list = bench::GenerateList({20000, false, bench::Shape::Mixed, 2});
    WriteFile("l1.edl", list);
    WriteFile("l2.edl", list);
    ASSERT_EQ(Shell("mkdir out && $C l1.edl l2.edl --fps 25 -o out/"), 0);
    for (int run = 0; run < 25; ++run) {
        Shell("$C l1.edl l2.edl --fps 25 --reel BL -j 2 -o out/ 2>&1 >/dev/null | true");
        EXPECT_THAT(Temporaries(), ::testing::IsEmpty());
    }
}

// A FIFO without a reader, or with one that reads nothing, holds the converter in its save;
// a stop signal ends it as it ends cp, with nothing left behind.
TEST_F(OutputsTest, StopSignalsEndAWaitOnAFifo) {
    WriteFile("big.edl", bench::GenerateList({3000, false, bench::Shape::Mixed, 4}));  // more than a pipe holds
    ASSERT_EQ(::mkfifo((dir_ / "fifo").c_str(), 0600), 0);
    const std::string in = (dir_ / "big.edl").string(), fifo = (dir_ / "fifo").string();
    for (const bool reader : {false, true}) {
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
            SCOPED_TRACE(std::to_string(reader) + " " + strsignal(signal));
            // A reader that never reads: the pipe fills, and the write waits.
            const int held = reader ? ::open(fifo.c_str(), O_RDONLY | O_NONBLOCK) : -1;
            const char* argv[] = {VORNELT_CONVERTER, in.c_str(), "--fps", "25", "-o", fifo.c_str(), nullptr};
            pid_t pid = 0;
            ASSERT_EQ(::posix_spawn(&pid, VORNELT_CONVERTER, nullptr, nullptr, const_cast<char**>(argv), environ), 0);
            std::this_thread::sleep_for(std::chrono::milliseconds(300));
            ::kill(pid, signal);
            int status = 0;
            bool ended = false;
            const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(5);
            while (!(ended = ::waitpid(pid, &status, WNOHANG) == pid) && std::chrono::steady_clock::now() < until)
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            if (!ended) {
                ADD_FAILURE() << "still waiting";
                ::kill(pid, SIGKILL);
                ::waitpid(pid, &status, 0);
            }
            EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
            if (held >= 0) ::close(held);
            EXPECT_EQ(fs::status(fifo).type(), fs::file_type::fifo);
        }
    }
}

}  // namespace
}  // namespace vornelt::testing
