#include "convert.hpp"
#include "report_json.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include <pthread.h>
#include <signal.h>
#include <unistd.h>

#include "vornelt/convert.hpp"
#include "vornelt/files.hpp"

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
    std::optional<std::string> file;  // none: standard output, or nowhere (--dry-run)
};

// A write to one of the program's streams: 0, or the system's error number (EIO when it
// gives none). A stream that failed once stays failed.
int Put(std::ostream& stream, std::string_view bytes) {
    if (!stream) return EIO;
    errno = 0;
    stream.write(bytes.data(), std::streamsize(bytes.size()));
    stream.flush();
    if (stream) return 0;
    return errno ? errno : EIO;
}

std::string WithCause(const std::string& text, const std::string& cause) { return text + " (" + cause + ")"; }

// What converting one list came to: its messages and exit status, and what is left for the
// main thread to write in the order of the inputs.
struct Outcome {
    int status = 0;
    std::string messages;               // for standard error, in order
    std::string bytes;                  // the list, while it waits to be written
    bool save = false;                  // `bytes` is to be written, to its file or to standard output
    bool stopped = false;               // not converted: the run was stopped first
    std::optional<std::string> report;  // the list's part of the report, made ready to write
};

// Writes what is left of one list, in its turn: its messages, and the list itself when it
// goes to standard output. The exit status of the list; `broken` is set when a stream's
// reader has gone (EPIPE).
int WriteList(Outcome& r, std::ostream& out, std::ostream& err, bool& broken) {
    if (const int error = Put(err, r.messages); error == EPIPE) broken = true;
    if (!r.save) return r.status;
    const int error = Put(out, r.bytes);
    std::string().swap(r.bytes);
    if (error == 0) return r.status;
    if (error == EPIPE) broken = true;
    Put(err, "vornelt-convert: -: " + WithCause(kSaveError, std::strerror(error)) + "\n");
    return 1;
}

// The signals that ask the program to stop (TERM, INT, HUP) while the workers save lists.
// For its lifetime they are held in every thread of the run and taken by a watcher thread,
// which lets the workers finish the files in hand that a temporary file stands for, starts no
// other, drops the report (`onStop`), and then lets the signal take effect: no temporary file
// is left behind. A list written straight into a FIFO or a device leaves nothing behind, so
// a stop ends it as it ends cp. Signals that the program ignores or handles itself keep their
// way. The run stops the same way, without a signal, when the reader of standard output or
// standard error has gone.
class StopWatch {
public:
    explicit StopWatch(std::function<void()> onStop) : onStop_(std::move(onStop)) {
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

    // A worker is about to write a file: false once the run is being stopped. Otherwise a
    // Saving stands while the file is written.
    bool BeginSave() {
        std::lock_guard lock(mutex_);
        if (stopping_) return false;
        ++saving_;
        return true;
    }
    class Saving {
    public:
        explicit Saving(StopWatch& watch) : watch_(&watch) {}
        ~Saving() { Release(); }
        Saving(const Saving&) = delete;
        Saving& operator=(const Saving&) = delete;
        // The file in hand leaves nothing behind when the program stops: a stop need not wait.
        void Release() {
            if (!watch_) return;
            {
                std::lock_guard lock(watch_->mutex_);
                --watch_->saving_;
            }
            watch_->settled_.notify_all();
            watch_ = nullptr;
        }

    private:
        StopWatch* watch_;
    };
    bool Stopping() {
        std::lock_guard lock(mutex_);
        return stopping_;
    }
    // Stops the run without a signal: no list starts any more.
    void Stop() {
        std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    // Turns true when the run is stopped by a signal: a conversion in hand asks it between its
    // rows, and a file written while it converts is left unfinished, which leaves nothing.
    const std::atomic<bool>* Flag() const noexcept { return &stopFlag_; }

private:
    void Watch() {
        int signal = 0;
        while (sigwait(&watched_, &signal) != 0) {
        }
        std::unique_lock lock(mutex_);
        if (finished_) return;
        stopping_ = true;
        stopFlag_ = true;  // the conversions in hand end between two rows
        settled_.wait(lock, [&] { return saving_ == 0; });
        onStop_();
        sigset_t one;
        sigemptyset(&one);
        sigaddset(&one, signal);
        pthread_sigmask(SIG_UNBLOCK, &one, nullptr);
        ::raise(signal);
        std::_Exit(128 + signal);  // the signal's way was changed meanwhile: leave as it would
    }

    std::function<void()> onStop_;
    sigset_t watched_{};
    sigset_t before_{};
    int wake_ = 0;  // sent to the watcher at the end of the run
    std::thread watcher_;
    std::mutex mutex_;
    std::condition_variable settled_;
    int saving_ = 0;
    bool stopping_ = false;
    bool finished_ = false;
    std::atomic<bool> stopFlag_{false};
};

// Reads and converts one list: the part that may run beside other lists.
Outcome ConvertList(const Options& o, const Target& target, StopWatch& stop) {
    Outcome r;
    const std::string& input = target.input;
    std::string bytes;
    ErrorStatus error;
    if (!ReadListFile(input, bytes, &error)) {
        r.messages = "vornelt-convert: " + input + ": " + WithCause(kCantRead, error.details) + "\n";
        r.status = 1;
        return r;
    }
    const bool toFile = target.file && !o.dryRun;
    ConvertResult result;
    if (toFile) {
        // Into its file as it is made: the new list is never held whole. The file takes its
        // place only once the list is complete.
        if (!stop.BeginSave()) {
            r.stopped = true;
            return r;
        }
        StopWatch::Saving saving(stop);
        ConvertOptions options = o.convert;
        options.stop = stop.Flag();
        const std::unique_ptr<TextOutputStream> stream =
            OpenForSaving(*target.file, SaveOptions{.list = true, .stop = stop.Flag()}, &error);
        if (!stream) {
            r.messages = "vornelt-convert: " + *target.file + ": " + WithCause(kSaveError, error.details) + "\n";
            r.status = 1;
            return r;
        }
        if (!stream->Replaces()) saving.Release();
        result = ConvertInto(std::move(bytes), options, FileName(input), *stream, &error);
        if (error.outcome == ErrorStatus::Outcome::Interrupted) {
            r.stopped = true;
            return r;
        }
        if (error.outcome == ErrorStatus::Outcome::CannotSave || (error.ok() && !stream->Close(&error))) {
            r.messages = "vornelt-convert: " + *target.file + ": " + WithCause(kSaveError, error.details) + "\n";
            r.status = 1;
            return r;
        }
    } else {
        result = Convert(std::move(bytes), o.convert, FileName(input), &error);
    }
    if (!error.ok()) {
        r.messages = "vornelt-convert: " + input + ": " + error.details + "\n";
        r.status = error.outcome == ErrorStatus::Outcome::BadOption ? 2 : 1;
        return r;
    }
    // What the window would have asked or told on the way (a reserved reel name): the
    // converter goes on as the first answer does.
    for (const std::string& message : result.messages)
        r.messages += "vornelt-convert: " + input + ": note: " + message + " (used as given)\n";
    if (o.report) {
        const std::string_view name = FileName(input);
        r.report = o.reportFormat == "json" ? ReportJsonList(result.report, name) : FormatReport(result.report, name);
    }
    if (o.dryRun || toFile) return r;
    r.bytes = std::move(result.bytes);
    r.save = true;
    return r;
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
        std::fprintf(stderr, "%s%s", head, std::string(FileName(current)).c_str());
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

// The report of a run, written as the lists are done, in the order of the inputs: to
// standard output, or into its file, which is opened before any list is written and takes
// its place once the run is done. A run that is stopped leaves an earlier report as it was.
class ReportSink {
public:
    ReportSink(const Options& o, std::ostream& out) : o_(o), out_(out), json_(o.reportFormat == "json") {}

    // False, with the message said, when the report's file cannot be opened.
    bool Open(std::ostream& err) {
        if (!o_.report) return true;
        if (*o_.report != "-") {
            ErrorStatus error;
            file_ = OpenForSaving(*o_.report, SaveOptions{.list = false}, &error);
            if (!file_) {
                Put(err, "vornelt-convert: " + *o_.report + ": " + WithCause(kSaveError, error.details) + "\n");
                return false;
            }
            replaces_ = file_->Replaces();
        }
        if (json_) Add(ReportJsonHead(), false);
        return true;
    }
    void Add(std::string report) { Add(std::move(report), true); }
    // The end of the report, and its file in place. The exit status of writing it.
    int Close(std::ostream& err) {
        if (!o_.report) return 0;
        if (json_) Add(ReportJsonTail(lists_), false);
        std::lock_guard lock(mutex_);
        if (error_.ok() && (!file_ || file_->Close(&error_))) return 0;
        file_.reset();
        Put(err, "vornelt-convert: " + *o_.report + ": " + WithCause(kSaveError, error_.details) + "\n");
        return 1;
    }
    // The run is stopped: the report's file, while it is a temporary one, goes.
    void Drop() {
        if (!replaces_) return;
        std::lock_guard lock(mutex_);
        file_.reset();
    }

private:
    void Add(std::string bytes, bool list) {
        if (list) bytes.insert(0, json_ ? ReportJsonBefore(lists_) : std::string(lists_ ? "\n" : ""));
        if (list) ++lists_;
        std::lock_guard lock(mutex_);
        if (!error_.ok()) return;
        if (file_) {
            file_->Write(bytes, &error_);
        } else if (const int error = Put(out_, bytes); error != 0) {
            Fail(&error_, ErrorStatus::Outcome::CannotSave, std::strerror(error), error);
        }
    }

    const Options& o_;
    std::ostream& out_;
    const bool json_;
    size_t lists_ = 0;
    std::mutex mutex_;  // the file, against Drop from the thread that stops the run
    std::unique_ptr<TextOutputStream> file_;
    bool replaces_ = false;
    ErrorStatus error_;
};

// Converts the lists on `jobs` threads, each of which reads, converts and saves one list at
// a time; this thread writes the messages, the lists for standard output and the reports in
// the order of the inputs, so that all of it, and the exit status, are those of one job.
int ConvertAll(const Options& o, const std::vector<const Target*>& targets, std::ostream& out, std::ostream& err,
               StatusLine& status, ReportSink& reports, bool& broken) {
    const size_t n = targets.size();
    std::vector<std::optional<Outcome>> outcomes(n);
    std::mutex mutex;
    std::condition_variable ready;  // an outcome is in
    std::condition_variable room;   // a list may start
    size_t next = 0;                // the next list a worker takes
    size_t written = 0;             // lists written so far
    // Workers run at most this far ahead of the writing, so that a long batch holds only a
    // few outcomes at a time: lists for standard output and reports wait whole in theirs.
    const size_t ahead = (o.output && *o.output == "-") || o.report ? size_t(o.jobs) * 2 : size_t(o.jobs) * 2 + 64;
    StopWatch stop([&reports] { reports.Drop(); });

    auto convert = [&](size_t k) {
        const Target& target = *targets[k];
        Outcome r;
        try {
            if (stop.Stopping()) {
                r.stopped = true;
            } else {
                r = ConvertList(o, target, stop);
            }
        } catch (const std::exception& e) {  // no memory for this list: the others go on
            r = Outcome{};
            r.status = 1;
            r.messages = "vornelt-convert: " + target.input + ": " + e.what() + "\n";
        }
        return r;
    };
    auto work = [&] {
        for (;;) {
            size_t k;
            {
                std::unique_lock lock(mutex);
                room.wait(lock, [&] { return next >= n || next < written + ahead; });
                if (next >= n) return;
                k = next++;
            }
            Outcome r = convert(k);
            {
                std::lock_guard lock(mutex);
                outcomes[k] = std::move(r);
            }
            ready.notify_one();
        }
    };
    // The workers never take the signals that stop the program (see StopWatch). One job runs
    // on this thread, which holds them already: a thread of its own would only add its start.
    std::vector<std::thread> workers;
    const unsigned jobs = unsigned(std::min<size_t>(o.jobs, n));
    if (jobs > 1) {
        sigset_t held, before;
        sigemptyset(&held);
        for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&held, signal);
        pthread_sigmask(SIG_BLOCK, &held, &before);
        for (unsigned t = 0; t < jobs; ++t) workers.emplace_back(work);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    int result = 0;
    for (size_t k = 0; k < n; ++k) {
        if (!broken) status.Show(k, targets[k]->input);
        Outcome r;
        if (jobs <= 1) {
            r = convert(k);
        } else {
            std::unique_lock lock(mutex);
            ready.wait(lock, [&] { return outcomes[k].has_value(); });
            r = std::move(*outcomes[k]);
            outcomes[k].reset();
            written = k + 1;
        }
        room.notify_one();
        if (r.stopped || broken) continue;
        if (!r.messages.empty()) status.Clear();
        if (r.report) reports.Add(std::move(*r.report));
        result = std::max(result, WriteList(r, out, err, broken));
        // The reader of standard output or standard error has gone: no other list starts.
        if (broken) stop.Stop();
    }
    room.notify_all();  // the workers that wait see that no list is left
    for (std::thread& w : workers) w.join();
    if (!broken) status.Clear();
    if (broken) reports.Drop();
    return broken ? std::max(result, 1) : result;
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
        if (const int error = Put(out, Help()); error != 0) {
            Put(err, "vornelt-convert: cannot write to standard output (" + std::string(std::strerror(error)) + ")\n");
            return 1;
        }
        return 0;
    } catch (const CLI::CallForVersion&) {
        return Put(out, std::string("vornelt-convert ") + VORNELT_VERSION_STRING + "\n") == 0 ? 0 : 1;
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
    for (const auto& [flag, name] : {std::pair{"-o", &o.output}, {"--report", &o.report}})
        if (*name && (*name)->empty()) {
            err << "vornelt-convert: " << flag << ": the name of a file, '-' for standard output\n";
            return 2;
        }
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
    // one, or a name that ends in "/"); without -o, beside the input. The library's rules
    // decide each output.
    const bool toStdout = (o.output && *o.output == "-") || o.dryRun;
    if (o.output && !toStdout && o.inputs.size() > 1 && o.output->back() != '/' && !IsFolder(*o.output)) {
        err << "vornelt-convert: -o: with several inputs, -o names an existing folder\n";
        return 2;
    }
    std::vector<Target> targets;
    for (const std::string& input : o.inputs) {
        Target target{input, std::nullopt};
        if (!toStdout) {
            std::string file =
                OutputPath(input, o.output ? std::optional<std::string_view>(*o.output) : std::nullopt, &problem);
            if (file.empty()) {
                if (problem.outcome == ErrorStatus::Outcome::BadOption) {
                    err << "vornelt-convert: " << input << ": " << problem.details << " (-o FILE)\n";
                    return 2;
                }
                err << "vornelt-convert: " << (o.output ? std::string("-o ").append(*o.output) : input) << ": "
                    << problem.details << "\n";
                return 1;
            }
            target.file = std::move(file);
        }
        targets.push_back(std::move(target));
    }

    // Before anything is written: no output may be an input of the run, its own included,
    // nor the output of an earlier input; nor may the report.
    CallFiles files;
    for (const Target& t : targets) files.AddInput(t.input);
    std::vector<const Target*> accepted;
    int status = 0;
    for (size_t i = 0; i < targets.size(); ++i) {
        const Target& t = targets[i];
        if (t.file && !files.AddOutput(*t.file, i, &problem)) {
            err << "vornelt-convert: " << t.input << ": not converted: its output " << *t.file << " " << problem.details
                << "\n";
            status = 1;
            continue;
        }
        accepted.push_back(&t);
    }
    if (o.report && *o.report != "-" && !files.AddOutput(*o.report, CallFiles::kNoInput, &problem)) {
        err << "vornelt-convert: --report " << *o.report << ": it " << problem.details << "; nothing is converted\n";
        return 1;
    }
    ReportSink reports(o, out);
    if (!reports.Open(err)) return 1;
    StatusLine line(!o.quiet && accepted.size() > 1 && ::isatty(STDERR_FILENO), accepted.size());
    bool broken = false;
    status = std::max(status, ConvertAll(o, accepted, out, err, line, reports, broken));
    if (!broken) status = std::max(status, reports.Close(err));
    return status;
}

}  // namespace vornelt
