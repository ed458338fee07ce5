#include "cli/convert.hpp"
#include "cli/report_json.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <optional>
#include <sstream>
#include <thread>

#include <pthread.h>
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/files.hpp"
#include "platform/folder_item.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"
#include "vornelt/convert.hpp"

namespace vornelt {

namespace {

struct Options {
    std::vector<std::string> inputs;
    unsigned jobs = std::max(1u, std::thread::hardware_concurrency());
    bool quiet = false;
    std::string fps;
    std::optional<std::string> output;
    ConvertOptions convert;
    std::string wipeNames = "smpte";
    std::optional<std::string> report;  // the report's file, "-" for standard output
    std::string reportFormat = "text";
    bool dryRun = false;
};

const std::string kCantRead = "Sorry, Can't read the file.";
const std::string kSaveError = "Unknown Error while saving the File. Please try again.";

// The system's reason, behind the window's own words: "... (Permission denied)".
std::string WithCause(const std::string& text, int error) { return text + " (" + ErrorCause(error) + ")"; }

void Configure(CLI::App& app, Options& o) {
    ConvertOptions& c = o.convert;
    app.description("Converts edit decision lists (CMX 3600 or GVG) as the Vornelt window would save them.");
    app.add_option("INPUT", o.inputs, "The list(s) to convert")->required();
    app.add_option("--fps", o.fps, "Frame rate of the list")->required()->check(CLI::IsMember({"24", "25", "30"}));
    app.add_option("-o,--output", o.output,
                   "Output file (default: the suggested name beside INPUT), '-' for standard output; "
                   "with several INPUTs a folder");
    app.add_flag("--mirror,!--no-mirror", c.mirror, "Mirror the list onto one rendered master movie [on]");
    app.add_flag("--keys,!--no-keys", c.keys, "Keep the key track V2 [on]");
    app.add_flag("--audio,!--no-audio", c.audio, "Keep the audio events [on]");
    app.add_flag("--remove-freeze-frames,!--keep-freeze-frames", c.removeFreezeFrames, "Remove freeze frames [remove]");
    app.add_flag("--remove-speed-changes,!--keep-speed-changes", c.removeSpeedChanges, "Remove speed changes [remove]");
    app.add_flag("--wipes-to-dissolves,!--keep-wipes", c.wipesToDissolves, "Turn wipes into dissolves [on]");
    app.add_flag("--keys-to-dissolves,!--keep-keys", c.keysToDissolves, "Turn keys into dissolves [off]");
    app.add_flag("--comments,!--no-comments", c.comments, "Generate new comment lines [on]");
    app.add_option("--wipe-names", o.wipeNames, "Wipe names in the comment lines [smpte]")
        ->check(CLI::IsMember({"fcp", "smpte"}));
    app.add_option("--title", c.title, "Sequence title (folded to capitals)");
    app.add_option("--movie", c.movie, "Name of the rendered movie for the comment lines");
    app.add_option("--reel", c.reel, "Reel name of the mirror list: letters and digits, at most 8 (6 for GVG)");
    app.add_option("--report", o.report, "Write what changed and what the check found to FILE, '-' for standard output");
    app.add_option("--report-format", o.reportFormat, "Form of the report [text]")->check(CLI::IsMember({"text", "json"}));
    app.add_flag("--dry-run", o.dryRun, "Read and report; write no list");
    app.add_option("-j,--jobs", o.jobs, "Lists converted at once [the number of cores]")->check(CLI::Range(1u, 256u));
    app.add_flag("-q,--quiet", o.quiet, "No status line while several lists are converted");
    app.set_version_flag("--version", std::string("vornelt-convert ") + VORNELT_VERSION_STRING);
}

// Where one input goes.
struct Target {
    std::string input;
    std::optional<std::string> file;  // none: standard output
};

// Which file a path is, so that two names of one file are found out: the device and inode
// of what stands there (links followed), or the absolute normal path of what does not.
std::string FileIdentity(const std::string& path) {
    struct stat st {};
    if (::stat(path.c_str(), &st) == 0) return std::to_string(st.st_dev) + ":" + std::to_string(st.st_ino);
    std::error_code ec;
    const std::filesystem::path p = std::filesystem::weakly_canonical(std::filesystem::absolute(path, ec), ec);
    return "path:" + p.string();
}

bool IsRegularFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// What converting one list came to, before anything of it is written.
struct Outcome {
    int status = 0;
    std::string messages;  // for standard error, in order
    std::string bytes;     // the list to save; empty when there is none
    bool save = false;
    std::optional<ConvertReport> report;
};

// Reads and converts one list: the part that may run beside other lists.
Outcome ConvertList(const Options& o, const Target& target) {
    Outcome r;
    const std::string& input = target.input;
    std::string bytes;
    if (const int error = ReadListFile(input, bytes); error != 0) {
        r.messages = "vornelt-convert: " + input + ": " + WithCause(kCantRead, error) + "\n";
        r.status = 1;
        return r;
    }
    ConvertResult result = Convert(std::move(bytes), o.convert, FolderItem(input).Name());
    if (!result.ok()) {
        r.messages = "vornelt-convert: " + input + ": " + result.error + "\n";
        r.status = result.status == ConvertStatus::BadOptions ? 2 : 1;
        return r;
    }
    if (o.convert.reel && IsReservedReel(*o.convert.reel))
        r.messages = "vornelt-convert: note: " + Uppercase(*o.convert.reel) +
                     " is a reserved reel name; it is used as given\n";
    if (o.report) r.report = std::move(result.report);
    if (o.dryRun) return r;
    r.bytes = std::move(result.bytes);
    r.save = true;
    return r;
}

// Writes one converted list where it goes, with its messages; the exit status of the list.
int SaveList(const Target& target, Outcome& r, std::ostream& out, std::ostream& err) {
    err << r.messages;
    if (!r.save) return r.status;
    if (!target.file) {
        out.write(r.bytes.data(), std::streamsize(r.bytes.size()));
        out.flush();
        if (!out) {
            err << "vornelt-convert: -: " << kSaveError << "\n";
            return 1;
        }
        return 0;
    }
    if (const int error = SaveFileBytes(*target.file, r.bytes); error != 0) {
        err << "vornelt-convert: " << *target.file << ": " << WithCause(kSaveError, error) << "\n";
        return 1;
    }
    SetFileTypeAndCreator(*target.file, "TEXT", "VORN");
    return 0;
}

// The one line that tells how far a batch has come, rewritten in place on a terminal.
class StatusLine {
public:
    StatusLine(bool shown, size_t total) : shown_(shown), total_(total), start_(std::chrono::steady_clock::now()) {}
    void Show(size_t done, const std::string& current) {
        if (!shown_) return;
        const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
        char head[64];
        std::snprintf(head, sizeof head, "\r\033[K%zu/%zu lists, %.1f s: ", done, total_, seconds);
        std::fprintf(stderr, "%s%s", head, FolderItem(current).Name().c_str());
        std::fflush(stderr);
    }
    void Clear() {
        if (!shown_) return;
        std::fputs("\r\033[K", stderr);
        std::fflush(stderr);
    }

private:
    bool shown_;
    size_t total_;
    std::chrono::steady_clock::time_point start_;
};

// The reports of a run, gathered in the order of the inputs and written at its end.
class ReportSink {
public:
    explicit ReportSink(const Options& o) : o_(o) {}
    void Add(const Target& target, const ConvertReport& report) {
        const std::string name = FolderItem(target.input).Name();
        if (o_.reportFormat == "json") {
            lists_.push_back(ReportJson(report, name));
        } else {
            if (!text_.empty()) text_ += "\n";
            text_ += FormatReport(report, name);
        }
    }
    // The exit status of writing it.
    int Write(std::ostream& out, std::ostream& err) {
        if (!o_.report) return 0;
        std::string bytes = text_;
        if (o_.reportFormat == "json")
            bytes = ReportDocument(std::move(lists_)).dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
        if (*o_.report == "-") {
            out << bytes << std::flush;
            if (out) return 0;
        } else if (const int error = SaveFileBytes(*o_.report, bytes); error == 0) {
            return 0;
        } else {
            err << "vornelt-convert: " << *o_.report << ": " << WithCause(kSaveError, error) << "\n";
            return 1;
        }
        err << "vornelt-convert: -: " << kSaveError << "\n";
        return 1;
    }

private:
    const Options& o_;
    std::string text_;
    nlohmann::ordered_json lists_ = nlohmann::ordered_json::array();
};

// Converts the lists on `jobs` threads and writes them, and their messages, in the order of
// the inputs from this thread alone: the outputs and the exit status are those of one job.
int ConvertAll(const Options& o, const std::vector<const Target*>& targets, std::ostream& out, std::ostream& err,
               StatusLine& status, ReportSink& reports) {
    const size_t n = targets.size();
    std::vector<std::optional<Outcome>> outcomes(n);
    std::mutex mutex;
    std::condition_variable ready;  // an outcome is in, or a list may start
    size_t next = 0;                // the next list a worker takes
    size_t written = 0;             // lists written so far
    // Workers run at most this far ahead of the writing, so that a long batch holds only a
    // few converted lists at a time.
    const size_t ahead = size_t(o.jobs) * 2;

    auto work = [&] {
        for (;;) {
            size_t k;
            {
                std::unique_lock lock(mutex);
                ready.wait(lock, [&] { return next >= n || next < written + ahead; });
                if (next >= n) return;
                k = next++;
            }
            Outcome r;
            try {
                r = ConvertList(o, *targets[k]);
            } catch (const std::exception& e) {  // no memory for this list: the others go on
                r = Outcome{1, "vornelt-convert: " + targets[k]->input + ": " + e.what() + "\n", {}, false, {}};
            }
            {
                std::lock_guard lock(mutex);
                outcomes[k] = std::move(r);
            }
            ready.notify_all();
        }
    };
    // The workers never take the signals that stop the program: this thread does, and it holds
    // them while a temporary file of its saving stands.
    std::vector<std::thread> workers;
    const unsigned jobs = unsigned(std::min<size_t>(o.jobs, n));
    {
        sigset_t stop, before;
        sigemptyset(&stop);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&stop, signal);
        pthread_sigmask(SIG_BLOCK, &stop, &before);
        for (unsigned t = 0; t < jobs; ++t) workers.emplace_back(work);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    int result = 0;
    for (size_t k = 0; k < n; ++k) {
        status.Show(k, targets[k]->input);
        Outcome r;
        {
            std::unique_lock lock(mutex);
            ready.wait(lock, [&] { return outcomes[k].has_value(); });
            r = std::move(*outcomes[k]);
            outcomes[k].reset();
        }
        if (!r.messages.empty()) status.Clear();
        if (r.report) reports.Add(*targets[k], *r.report);
        result = std::max(result, SaveList(*targets[k], r, out, err));
        {
            std::lock_guard lock(mutex);
            written = k + 1;
        }
        ready.notify_all();
    }
    for (std::thread& w : workers) w.join();
    status.Clear();
    return result;
}

// An unknown option is named before what it leaves missing; a name that begins with "-"
// is told how to get through.
std::string ParseErrorText(const CLI::ParseError& e, const std::vector<std::string>& remaining) {
    for (const std::string& arg : remaining) {
        if (arg.size() < 2 || arg[0] != '-' || arg == "--") continue;
        std::string text = "unknown option " + arg;
        if (arg.find('.') != std::string::npos)
            text += "; a list whose name begins with \"-\" goes after \"--\": vornelt-convert --fps 25 -- " + arg;
        return text;
    }
    return e.what();
}

}  // namespace

int ConvertMain(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    Options o;
    CLI::App app{"vornelt-convert", "vornelt-convert"};
    Configure(app, o);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        out << app.help() << std::flush;
        if (!out) {
            err << "vornelt-convert: cannot write to standard output\n";
            return 1;
        }
        return 0;
    } catch (const CLI::CallForVersion&) {
        out << "vornelt-convert " << VORNELT_VERSION_STRING << "\n" << std::flush;
        return out ? 0 : 1;
    } catch (const CLI::ParseError& e) {
        err << "vornelt-convert: " << ParseErrorText(e, app.remaining()) << "\n\n" << app.help();
        return 2;
    }
    o.convert.fps = std::stoi(o.fps);
    o.convert.wipeNames = o.wipeNames == "fcp" ? WipeNames::FinalCutPro : WipeNames::Smpte;
    o.convert.report = o.report.has_value();
    if (o.report && *o.report == "-" && o.output && *o.output == "-" && !o.dryRun) {
        err << "vornelt-convert: --report -: standard output holds the list (-o -); name a file, or add --dry-run\n";
        return 2;
    }

    // The options are checked before any input is read.
    if (const std::string problem = CheckOptions(o.convert); !problem.empty()) {
        err << "vornelt-convert: " << problem << "\n";
        return 2;
    }

    // Where each list goes: -o names a file, standard output ("-"), or a folder (an existing
    // one, or a name that ends in "/"); without -o, beside the input.
    const bool toStdout = (o.output && *o.output == "-") || o.dryRun;
    std::optional<FolderItem> folder;
    if (o.output && !toStdout) {
        const FolderItem given(*o.output);
        if (given.IsFolder()) {
            folder = given;
        } else if (o.output->back() == '/') {
            err << "vornelt-convert: -o: no such folder: " << *o.output << "\n";
            return 1;
        } else if (o.inputs.size() > 1) {
            err << "vornelt-convert: -o: with several inputs, -o names an existing folder\n";
            return 2;
        }
    }
    std::vector<Target> targets;
    for (const std::string& input : o.inputs) {
        Target target{input, std::nullopt};
        if (!toStdout) {
            if (!o.output && !IsRegularFile(input) && FolderItem(input).Exists()) {
                err << "vornelt-convert: " << input << ": not a regular file: name the output with -o\n";
                return 2;
            }
            const FolderItem in(input);
            if (o.output && !folder)
                target.file = FolderItem(*o.output).AbsolutePath();
            else
                target.file = (folder ? *folder : *in.Parent()).Child(SuggestedSaveName(in.Name())).AbsolutePath();
        }
        targets.push_back(std::move(target));
    }

    // Before anything is written: no output may be another input of the run, nor the output
    // of an earlier input.
    std::vector<std::string> inputIds;
    for (const Target& t : targets) inputIds.push_back(FileIdentity(t.input));
    std::vector<std::pair<std::string, const Target*>> outputs;
    std::vector<const Target*> accepted;
    int status = 0;
    for (size_t i = 0; i < targets.size(); ++i) {
        const Target& t = targets[i];
        if (t.file) {
            const std::string id = FileIdentity(*t.file);
            std::string clash;
            for (size_t j = 0; j < targets.size() && clash.empty(); ++j)
                if (j != i && inputIds[j] == id) clash = "it would overwrite the input " + targets[j].input;
            for (const auto& [other, earlier] : outputs)
                if (clash.empty() && other == id) clash = "it is the output of " + earlier->input + " too";
            if (!clash.empty()) {
                err << "vornelt-convert: " << t.input << ": not converted: its output " << *t.file << " " << clash
                    << "\n";
                status = 1;
                continue;
            }
            outputs.emplace_back(id, &t);
        }
        accepted.push_back(&t);
    }
    StatusLine line(!o.quiet && accepted.size() > 1 && ::isatty(STDERR_FILENO), accepted.size());
    ReportSink reports(o);
    status = std::max(status, ConvertAll(o, accepted, out, err, line, reports));
    status = std::max(status, reports.Write(out, err));
    return status;
}

}  // namespace vornelt
