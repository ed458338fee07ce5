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
#include <unordered_map>

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
    std::vector<std::string> choices;   // the name given for each choice option of kOptions, in order
    std::optional<std::string> report;  // the report's file, "-" for standard output
    std::string reportFormat = "text";
    bool dryRun = false;
};

const std::string kCantRead = "Sorry, Can't read the file.";
const std::string kSaveError = "Unknown Error while saving the File. Please try again.";

// The system's reason, behind the window's own words: "... (Permission denied)".
std::string WithCause(const std::string& text, int error) { return text + " (" + ErrorCause(error) + ")"; }

// The options of the list come from the options table; the converter's own stand here.
void Configure(CLI::App& app, Options& o) {
    app.set_help_flag("-h,--help");
    app.add_option("INPUT", o.inputs)->required();
    app.add_option("--fps", o.fps)->required();
    app.add_option("-o,--output", o.output);
    o.choices.clear();
    for (const Option& option : kOptions) {
        const std::string flag = "--" + std::string(option.name);
        switch (option.kind) {
            case Option::Kind::Switch:
                app.add_flag(flag + ",!--" + std::string(option.offName), o.convert.*option.flag);
                break;
            case Option::Kind::Choice: {
                o.choices.emplace_back(option.choices[size_t(option.defaultChoice)]);
                std::vector<std::string> names(option.choices.begin(), option.choices.end());
                app.add_option(flag, o.choices.back())->check(CLI::IsMember(names));
                break;
            }
            case Option::Kind::Text: app.add_option(flag, o.convert.*option.text); break;
        }
    }
    app.add_option("--report", o.report);
    app.add_option("--report-format", o.reportFormat)->check(CLI::IsMember({"text", "json"}));
    app.add_flag("--dry-run", o.dryRun);
    app.add_option("-j,--jobs", o.jobs)->check(CLI::Range(1u, 256u));
    app.add_flag("-q,--quiet", o.quiet);
    app.set_version_flag("--version", std::string("vornelt-convert ") + VORNELT_VERSION_STRING);
}

// The choices given, into the options.
void ApplyChoices(Options& o) {
    size_t k = 0;
    for (const Option& option : kOptions) {
        if (option.kind != Option::Kind::Choice) continue;
        const auto at = std::find(option.choices.begin(), option.choices.end(), o.choices[k++]);
        option.setChoice(o.convert, int(at - option.choices.begin()));
    }
}

// --help: the converter's own options, then those of the list with their defaults.
std::string Help() {
    using Rows = std::vector<std::pair<std::string, std::string>>;
    const Rows rows = {
        {"--fps RATE", "frame rate of the list (lists do not say): " + FrameRate::Names() + "; df: drop frame"},
        {"-o, --output OUTPUT", "the file, '-' for standard output, or a folder (several inputs)"},
        {"", "[default: beside each input, under its suggested name]"},
    };
    Rows listRows;
    for (const Option& option : kOptions) {
        const std::string flag = "--" + std::string(option.name);
        switch (option.kind) {
            case Option::Kind::Switch:
                listRows.push_back({flag + " | --" + std::string(option.offName),
                                    std::string(option.help) + (option.on ? " [on]" : " [off]")});
                break;
            case Option::Kind::Choice: {
                std::string names;
                for (const std::string_view name : option.choices)
                    names += (names.empty() ? "" : ",") + std::string(name);
                listRows.push_back(
                    {flag + " {" + names + "}", std::string(option.help) + " [" +
                                                    std::string(option.choices[size_t(option.defaultChoice)]) + "]"});
                break;
            }
            case Option::Kind::Text:
                listRows.push_back({flag + " " + std::string(option.metavar), std::string(option.help)});
                break;
        }
    }
    const Rows runRows = {
        {"--report FILE", "what changed and what the check found, '-' for standard output"},
        {"--report-format {text,json}", "the report's form; JSON as docs/report-schema.md tells [text]"},
        {"--dry-run", "read and report; write no list"},
        {"-j, --jobs N", "lists converted at once [the number of cores]"},
        {"-q, --quiet", "no status line while several lists are converted"},
        {"-h, --help", "this help"},
        {"--version", "the version"},
    };
    // A flag longer than the column stands on a line of its own, its text below it; a text
    // longer than a line goes on below itself, broken at a blank.
    constexpr size_t kColumn = 24;
    constexpr size_t kTextWidth = 72;
    std::string out =
        "Usage: vornelt-convert INPUT... --fps RATE [-o OUTPUT] [options]\n"
        "Converts edit decision lists (CMX 3600 or GVG) as the Vornelt window would save them.\n";
    auto section = [&](const char* title, const Rows& table) {
        out.append("\n").append(title).append("\n");
        for (const auto& [left, right] : table) {
            out.append("  ").append(left);
            if (left.size() + 3 > kColumn)
                out.append("\n").append(kColumn, ' ');
            else
                out.append(kColumn - 2 - left.size(), ' ');
            std::string_view text = right;
            while (text.size() > kTextWidth && text.rfind(' ', kTextWidth) != std::string_view::npos) {
                const size_t cut = text.rfind(' ', kTextWidth);
                out.append(text.substr(0, cut)).append("\n").append(kColumn, ' ');
                text.remove_prefix(cut + 1);
            }
            out.append(text).append("\n");
        }
    };
    section("Where the lists go:", rows);
    section("The new list (as in the window):", listRows);
    section("The run:", runRows);
    return out;
}

// Where one input goes.
struct Target {
    std::string input;
    std::optional<std::string> file;  // none: standard output
};

// Which file a path is, so that two names of one file are found out: the device and inode
// of what stands there (links followed), or the absolute normal path of what does not. The
// normal paths of folders are kept: a batch names the same folder a thousand times.
class FileIdentities {
public:
    std::string operator()(const std::string& path) {
        struct stat st {};
        if (::stat(path.c_str(), &st) == 0) return std::to_string(st.st_dev) + ":" + std::to_string(st.st_ino);
        std::error_code ec;
        const std::filesystem::path p = std::filesystem::absolute(path, ec);
        const std::filesystem::path name = p.filename();
        if (name.empty() || name == "." || name == "..") return "path:" + Normal(p);
        auto [it, added] = folders_.try_emplace(p.parent_path().string());
        if (added) it->second = Normal(p.parent_path());
        return "path:" + (std::filesystem::path(it->second) / name).string();
    }

private:
    static std::string Normal(const std::filesystem::path& p) {
        std::error_code ec;
        return std::filesystem::weakly_canonical(p, ec).string();
    }
    std::unordered_map<std::string, std::string> folders_;
};

bool IsRegularFile(const std::string& path) {
    struct stat st {};
    return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// What converting one list came to: its messages and exit status, and what is left for the
// main thread to write in the order of the inputs.
struct Outcome {
    int status = 0;
    std::string messages;  // for standard error, in order
    std::string bytes;     // the list, while it waits to be written
    bool save = false;     // `bytes` is to be written, to its file or to standard output
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
    ErrorStatus error;
    ConvertResult result = Convert(std::move(bytes), o.convert, FolderItem(input).Name(), &error);
    if (!error.ok()) {
        r.messages = "vornelt-convert: " + input + ": " + error.details + "\n";
        r.status = error.outcome == ErrorStatus::Outcome::BadOption ? 2 : 1;
        return r;
    }
    // What the window would have asked or told on the way (a reserved reel name): the
    // converter goes on as the first answer does.
    for (const std::string& message : result.messages)
        r.messages += "vornelt-convert: " + input + ": note: " + message + " (used as given)\n";
    if (o.report) r.report = std::move(result.report);
    if (o.dryRun) return r;
    r.bytes = std::move(result.bytes);
    r.save = true;
    return r;
}

// Saves a converted list into its file; a failure becomes the list's last message.
void SaveList(const Target& target, Outcome& r) {
    if (const int error = SaveFileBytes(*target.file, r.bytes); error != 0) {
        r.messages += "vornelt-convert: " + *target.file + ": " + WithCause(kSaveError, error) + "\n";
        r.status = 1;
    } else {
        SetFileTypeAndCreator(*target.file, "TEXT", "VORN");
    }
    std::string().swap(r.bytes);
    r.save = false;
}

// Writes what is left of one list, in its turn: its messages, and the list itself when it
// goes to standard output. The exit status of the list.
int WriteList(Outcome& r, std::ostream& out, std::ostream& err) {
    err << r.messages;
    if (!r.save) return r.status;
    out.write(r.bytes.data(), std::streamsize(r.bytes.size()));
    out.flush();
    if (!out) {
        err << "vornelt-convert: -: " << kSaveError << "\n";
        return 1;
    }
    return 0;
}

// The signals that ask the program to stop (TERM, INT, HUP) while the workers save lists.
// For its lifetime they are held in every thread of the run and taken by a watcher thread,
// which lets the workers finish the files in hand, starts no other, and then lets the
// signal take effect: no temporary file is left behind. Signals that the program ignores
// or handles itself keep their way.
class StopWatch {
public:
    StopWatch() {
        sigemptyset(&watched_);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
            struct sigaction action {};
            if (::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
                sigaddset(&watched_, signal);
                if (wake_ == 0) wake_ = signal;
            }
        }
        if (wake_ == 0) return;
        pthread_sigmask(SIG_BLOCK, &watched_, &before_);
        watcher_ = std::thread([this] { Watch(); });
    }
    ~StopWatch() {
        if (wake_ == 0) return;
        {
            std::lock_guard lock(mutex_);
            finished_ = true;
        }
        pthread_kill(watcher_.native_handle(), wake_);
        watcher_.join();
        pthread_sigmask(SIG_SETMASK, &before_, nullptr);  // one that came since takes effect here
    }
    StopWatch(const StopWatch&) = delete;
    StopWatch& operator=(const StopWatch&) = delete;

    // A worker is about to write a file: false once the program is being stopped. Otherwise
    // a Saving stands while the file is written.
    bool BeginSave() {
        std::lock_guard lock(mutex_);
        if (stopping_) return false;
        ++saving_;
        return true;
    }
    class Saving {
    public:
        explicit Saving(StopWatch& watch) : watch_(watch) {}
        ~Saving() {
            {
                std::lock_guard lock(watch_.mutex_);
                --watch_.saving_;
            }
            watch_.settled_.notify_all();
        }
        Saving(const Saving&) = delete;
        Saving& operator=(const Saving&) = delete;

    private:
        StopWatch& watch_;
    };
    bool Stopping() {
        std::lock_guard lock(mutex_);
        return stopping_;
    }

private:
    void Watch() {
        int signal = 0;
        while (sigwait(&watched_, &signal) != 0) {
        }
        std::unique_lock lock(mutex_);
        if (finished_) return;
        stopping_ = true;
        settled_.wait(lock, [&] { return saving_ == 0; });
        sigset_t one;
        sigemptyset(&one);
        sigaddset(&one, signal);
        pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
        ::raise(signal);
        std::_Exit(128 + signal);  // the signal's way was changed meanwhile: leave as it would
    }

    sigset_t watched_{};
    sigset_t before_{};
    int wake_ = 0;  // sent to the watcher at the end of the run
    std::thread watcher_;
    std::mutex mutex_;
    std::condition_variable settled_;
    int saving_ = 0;
    bool stopping_ = false;
    bool finished_ = false;
};

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
            bytes = ReportDocument(std::move(lists_))
                        .dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) +
                    "\n";
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

// Converts the lists on `jobs` threads, each of which reads, converts and saves one list at
// a time; this thread writes the messages, the lists for standard output and the reports in
// the order of the inputs, so that all of it, and the exit status, are those of one job.
int ConvertAll(const Options& o, const std::vector<const Target*>& targets, std::ostream& out, std::ostream& err,
               StatusLine& status, ReportSink& reports) {
    const size_t n = targets.size();
    std::vector<std::optional<Outcome>> outcomes(n);
    std::mutex mutex;
    std::condition_variable ready;  // an outcome is in
    std::condition_variable room;   // a list may start
    size_t next = 0;                // the next list a worker takes
    size_t written = 0;             // lists written so far
    // Workers run at most this far ahead of the writing, so that a long batch holds only a
    // few outcomes at a time: lists for standard output wait whole in theirs.
    const size_t ahead = o.output && *o.output == "-" ? size_t(o.jobs) * 2 : size_t(o.jobs) * 2 + 64;
    StopWatch stop;

    auto work = [&] {
        for (;;) {
            size_t k;
            {
                std::unique_lock lock(mutex);
                room.wait(lock, [&] { return next >= n || next < written + ahead; });
                if (next >= n) return;
                k = next++;
            }
            const Target& target = *targets[k];
            Outcome r;
            try {
                if (!stop.Stopping()) {
                    r = ConvertList(o, target);
                    if (r.save && target.file) {
                        if (!stop.BeginSave()) return;  // the program is being stopped
                        const StopWatch::Saving saving(stop);
                        SaveList(target, r);
                    }
                }
            } catch (const std::exception& e) {  // no memory for this list: the others go on
                r = Outcome{1, "vornelt-convert: " + target.input + ": " + e.what() + "\n", {}, false, {}};
            }
            {
                std::lock_guard lock(mutex);
                outcomes[k] = std::move(r);
            }
            ready.notify_one();
        }
    };
    // The workers never take the signals that stop the program (see StopWatch).
    std::vector<std::thread> workers;
    const unsigned jobs = unsigned(std::min<size_t>(o.jobs, n));
    {
        sigset_t held, before;
        sigemptyset(&held);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&held, signal);
        pthread_sigmask(SIG_BLOCK, &held, &before);
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
            written = k + 1;
        }
        room.notify_one();
        if (!r.messages.empty()) status.Clear();
        if (r.report) reports.Add(*targets[k], *r.report);
        result = std::max(result, WriteList(r, out, err));
    }
    room.notify_all();  // the workers that wait see that no list is left
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
        out << Help() << std::flush;
        if (!out) {
            err << "vornelt-convert: cannot write to standard output\n";
            return 1;
        }
        return 0;
    } catch (const CLI::CallForVersion&) {
        out << "vornelt-convert " << VORNELT_VERSION_STRING << "\n" << std::flush;
        return out ? 0 : 1;
    } catch (const CLI::ParseError& e) {
        err << "vornelt-convert: " << ParseErrorText(e, app.remaining()) << "\n\n" << Help();
        return 2;
    }
    ErrorStatus problem;
    const std::optional<FrameRate> rate = FrameRate::Parse(o.fps, &problem);
    if (!rate) {
        err << "vornelt-convert: " << problem.details << "\n";
        return 2;
    }
    o.convert.fps = *rate;
    ApplyChoices(o);
    o.convert.report = o.report.has_value();
    if (o.report && *o.report == "-" && o.output && *o.output == "-" && !o.dryRun) {
        err << "vornelt-convert: --report -: standard output holds the list (-o -); name a file, or add --dry-run\n";
        return 2;
    }

    // The options are checked before any input is read.
    if (!CheckOptions(o.convert, &problem)) {
        err << "vornelt-convert: " << problem.details << "\n";
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
    FileIdentities identity;
    std::unordered_map<std::string, std::vector<size_t>> inputsById;  // in the order of the inputs
    for (size_t i = 0; i < targets.size(); ++i) inputsById[identity(targets[i].input)].push_back(i);
    std::unordered_map<std::string, const Target*> outputs;
    std::vector<const Target*> accepted;
    int status = 0;
    for (size_t i = 0; i < targets.size(); ++i) {
        const Target& t = targets[i];
        if (t.file) {
            const std::string id = identity(*t.file);
            std::string clash;
            if (const auto in = inputsById.find(id); in != inputsById.end())
                for (const size_t j : in->second)
                    if (j != i) {
                        clash = "it would overwrite the input " + targets[j].input;
                        break;
                    }
            if (const auto out = outputs.find(id); clash.empty() && out != outputs.end())
                clash = "it is the output of " + out->second->input + " too";
            if (!clash.empty()) {
                err << "vornelt-convert: " << t.input << ": not converted: its output " << *t.file << " " << clash
                    << "\n";
                status = 1;
                continue;
            }
            outputs.emplace(id, &t);
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
