// The Python module `vornelt`: the conversion library for pipelines written in Python.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>

#include "vornelt/convert.hpp"
#include "vornelt/files.hpp"
#include "vornelt/processor.hpp"

namespace py = pybind11;

namespace vornelt::python {
namespace {

// What a conversion gives back. The saved list stays the library's string until `data` or
// `text` is first asked for: a caller who saves it (convert_file) or reads only the text
// does not pay for a copy of every byte, and none pays for a text it never reads.
struct Result {
    std::string bytes;             // the saved list, until `data` takes it over
    py::object data = py::none();  // bytes, made on first use
    py::object text = py::none();  // str, made on first use
    std::string form;
    std::vector<std::string> messages;
    py::object path = py::none();  // str: where convert_file saved the list
    // The report as the library gave it; made into Python objects on first use only, so that
    // a caller who never looks at it does not pay for a dict per item.
    std::shared_ptr<const ConvertReport> raw;
    py::object report = py::none();  // one dict per item
    py::object counts = py::none();  // items per kind

    std::string_view Saved() const {
        if (data.is_none()) return bytes;
        return {PyBytes_AS_STRING(data.ptr()), size_t(PyBytes_GET_SIZE(data.ptr()))};
    }
    const py::object& Data() {
        if (data.is_none()) {
            data = py::bytes(bytes);
            std::string().swap(bytes);
        }
        return data;
    }
    const py::object& Text() {
        if (text.is_none()) {
            const std::string_view saved = Saved();
            // Plain ASCII reads the same in Mac OS Roman and in UTF-8.
            text = py::reinterpret_steal<py::object>(
                PyUnicode_DecodeASCII(saved.data(), Py_ssize_t(saved.size()), nullptr));
            if (!text) {
                PyErr_Clear();
                const std::string utf8 = ListText(saved);
                text = py::reinterpret_steal<py::object>(
                    PyUnicode_DecodeUTF8(utf8.data(), Py_ssize_t(utf8.size()), "strict"));
            }
            if (!text) throw py::error_already_set();
        }
        return text;
    }
};

py::list ReportItems(const ConvertReport& report) {
    py::list items;
    for (const ReportItem& item : report.items) {
        py::dict d;
        d["kind"] = std::string(KindName(item.kind));
        d["severity"] = std::string(SeverityName(item.severity));
        d["event"] = item.event >= 0 ? py::object(py::int_(item.event)) : py::object(py::none());
        d["line_read"] = item.lineRead > 0 ? py::object(py::int_(item.lineRead)) : py::object(py::none());
        d["line_written"] = item.lineWritten > 0 ? py::object(py::int_(item.lineWritten)) : py::object(py::none());
        d["text"] = py::reinterpret_steal<py::str>(
            PyUnicode_DecodeUTF8(item.text.data(), Py_ssize_t(item.text.size()), "replace"));
        items.append(std::move(d));
    }
    return items;
}

// A Python value's type, for a message: "NoneType".
std::string TypeName(const py::handle& value) { return py::str(py::type::handle_of(value).attr("__name__")); }

// Python's fps: a number (25, 29.97: a non-drop rate) or a rate's name ("25", "29.97df").
FrameRate RateOf(const py::handle& fps) {
    ErrorStatus error;
    std::optional<FrameRate> rate;
    if (PyBool_Check(fps.ptr())) {
        throw py::type_error("fps: a number or a rate's name, not bool");
    } else if (PyLong_Check(fps.ptr()) || PyFloat_Check(fps.ptr())) {
        const double value = fps.cast<double>();
        rate = FrameRate::OfValue(value);
        if (!rate) FrameRate::Parse(py::str(fps).cast<std::string>(), &error);
    } else if (PyUnicode_Check(fps.ptr())) {
        rate = FrameRate::Parse(fps.cast<std::string>(), &error);
    } else {
        throw py::type_error("fps: a number or a rate's name, not " + TypeName(fps));
    }
    if (!rate) throw py::value_error(error.details);
    return *rate;
}

// The options from Python's keywords, named as in kOptions with "_" for "-". `name` takes the
// keyword of that name where the function has one.
ConvertOptions OptionsOf(const py::handle& fps, const py::kwargs& keywords, const char* function, std::string* name) {
    ConvertOptions o;
    o.fps = RateOf(fps);
    for (const auto& [key, value] : keywords) {
        const std::string keyword = py::str(key);
        if (name && keyword == "name") {
            if (!PyUnicode_Check(value.ptr())) throw py::type_error("name: a str, not " + TypeName(value));
            *name = value.cast<std::string>();
            continue;
        }
        const Option* option = nullptr;
        for (const Option& candidate : kOptions)
            if (KeywordOf(candidate) == keyword) option = &candidate;
        if (!option)
            throw py::type_error(std::string(function) + "() got an unexpected keyword argument '" + keyword + "'");
        switch (option->kind) {
            case Option::Kind::Switch:
                if (!PyBool_Check(value.ptr()))
                    throw py::type_error(keyword + ": True or False, not " + TypeName(value));
                o.*option->flag = value.ptr() == Py_True;
                break;
            case Option::Kind::Choice: {
                if (!PyUnicode_Check(value.ptr())) throw py::type_error(keyword + ": a str, not " + TypeName(value));
                const std::string given = value.cast<std::string>();
                const auto at = std::find(option->choices.begin(), option->choices.end(), given);
                if (at == option->choices.end()) {
                    std::string names;
                    for (const std::string_view c : option->choices)
                        names += (names.empty() ? "\"" : " or \"") + std::string(c) + "\"";
                    throw py::value_error(keyword + " \"" + given + "\": " + names);
                }
                option->setChoice(o, int(at - option->choices.begin()));
                break;
            }
            case Option::Kind::Text:
                if (value.is_none()) {
                    (o.*option->text).reset();
                } else if (PyUnicode_Check(value.ptr())) {
                    o.*option->text = value.cast<std::string>();
                } else {
                    throw py::type_error(keyword + ": a str or None, not " + TypeName(value));
                }
                break;
        }
    }
    ErrorStatus error;
    if (!CheckOptions(o, &error)) throw py::value_error(error.details);
    return o;
}

// The keywords of the options in a signature: "mirror=True, ..., reel=None".
std::string KeywordSignature() {
    std::string out;
    for (const Option& option : kOptions) {
        out += ", " + KeywordOf(option) + "=";
        switch (option.kind) {
            case Option::Kind::Switch: out += option.on ? "True" : "False"; break;
            case Option::Kind::Choice:
                out += "'" + std::string(option.choices[size_t(option.defaultChoice)]) + "'";
                break;
            case Option::Kind::Text: out += "None"; break;
        }
    }
    return out;
}

// One line for each option, as help() shows it.
std::string KeywordHelp() {
    std::string out;
    for (const Option& option : kOptions) {
        out += KeywordOf(option) + ": " + std::string(option.help);
        if (option.kind == Option::Kind::Choice) {
            std::string names;
            for (const std::string_view c : option.choices)
                names += (names.empty() ? "\"" : " or \"") + std::string(c) + "\"";
            out += ", " + names;
        }
        if (option.kind == Option::Kind::Text) out += "; None keeps the window's own";
        out += ".\n";
    }
    return out;
}

// A path as Python's own open() takes it: str, bytes or os.PathLike, through os.fsencode;
// TypeError for anything else, ValueError for a NUL in it.
std::string PathOf(const py::handle& path, const char* what) {
    const py::bytes encoded = py::module_::import("os").attr("fsencode")(path);
    std::string bytes = encoded;
    if (bytes.find('\0') != std::string::npos) throw py::value_error(std::string(what) + ": embedded null byte");
    return bytes;
}

// A path of the file system as Python gives it back: str, undecodable bytes kept as os.fsdecode keeps them.
py::str PathText(std::string_view path) {
    return py::reinterpret_steal<py::str>(PyUnicode_DecodeFSDefaultAndSize(path.data(), Py_ssize_t(path.size())));
}

[[noreturn]] void RaiseOSError(const ErrorStatus& error, std::string_view path) {
    py::object exc = py::module_::import("builtins").attr("OSError")(error.systemError, error.details, PathText(path));
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(exc.ptr())), exc.ptr());  // FileNotFoundError, ...
    throw py::error_already_set();
}

// A list given as bytes, bytearray or memoryview: its memory, held while the list is converted.
class GivenBytes {
public:
    explicit GivenBytes(const py::object& data) {
        // A list past the cap is refused before any of it is copied.
        if (py::isinstance<py::memoryview>(data) ? data.attr("nbytes").cast<size_t>() > kMaxListFileBytes
                                                 : size_t(py::len(data)) > kMaxListFileBytes)
            throw py::value_error("data: the list is larger than 256 MiB");
        if (PyObject_GetBuffer(data.ptr(), &view_, PyBUF_SIMPLE) != 0) {
            // A memoryview that is not one run of memory: its bytes in order, once.
            PyErr_Clear();
            copy_ = py::reinterpret_steal<py::object>(PyBytes_FromObject(data.ptr()));
            if (!copy_ || PyObject_GetBuffer(copy_.ptr(), &view_, PyBUF_SIMPLE) != 0) throw py::error_already_set();
        }
    }
    ~GivenBytes() { PyBuffer_Release(&view_); }
    GivenBytes(const GivenBytes&) = delete;
    GivenBytes& operator=(const GivenBytes&) = delete;
    std::string_view View() const { return {static_cast<const char*>(view_.buf), size_t(view_.len)}; }

private:
    Py_buffer view_{};
    py::object copy_;
};

bool IsBytesLike(const py::object& data) {
    return py::isinstance<py::bytes>(data) || py::isinstance<py::bytearray>(data) ||
           py::isinstance<py::memoryview>(data);
}

bool InMainThread() {
    const py::module_ threading = py::module_::import("threading");
    const py::object main = threading.attr("main_thread")().attr("ident");
    return main.equal(threading.attr("get_ident")());
}

// Runs `work` without the interpreter's lock. Python takes its signals in the main thread,
// and only while it holds the lock: there the work runs on a thread of its own while this
// thread looks at the signals every 50 ms. An exception that a signal's handler raises
// (KeyboardInterrupt, for Ctrl-C) turns `stop` true, and comes out once the work has stopped,
// which it does at its next step.
template <typename Work>
void RunUnlocked(std::atomic<bool>& stop, Work work) {
    if (!InMainThread()) {
        py::gil_scoped_release unlocked;
        work();
        return;
    }
    std::mutex mutex;
    std::condition_variable finished;
    bool done = false;
    std::exception_ptr failure;
    std::thread worker;
    {
        py::gil_scoped_release unlocked;
        worker = std::thread([&] {
            try {
                work();
            } catch (...) {
                failure = std::current_exception();
            }
            std::lock_guard lock(mutex);
            done = true;
            finished.notify_one();
        });
    }
    bool raised = false;
    for (;;) {
        {
            py::gil_scoped_release unlocked;
            std::unique_lock lock(mutex);
            if (finished.wait_for(lock, std::chrono::milliseconds(50), [&] { return done; })) break;
        }
        if (!raised && PyErr_CheckSignals() != 0) {
            raised = true;
            stop = true;
        }
    }
    {
        py::gil_scoped_release unlocked;
        worker.join();
    }
    if (raised) throw py::error_already_set();
    if (failure) std::rethrow_exception(failure);
}

Result Finish(ConvertResult&& r, const ErrorStatus& error, std::string_view path) {
    switch (error.outcome) {
        case ErrorStatus::Outcome::Ok: break;
        case ErrorStatus::Outcome::BadOption:
            throw py::value_error(path.empty() ? error.details : std::string(path) + ": " + error.details);
        case ErrorStatus::Outcome::NoMemory: throw std::bad_alloc();
        case ErrorStatus::Outcome::Interrupted: throw std::runtime_error(error.details);
        default: RaiseOSError(error, path);
    }
    Result result;
    result.bytes = std::move(r.bytes);
    result.form = FormName(r.form);
    result.messages = std::move(r.messages);
    result.raw = std::make_shared<const ConvertReport>(std::move(r.report));
    return result;
}

// Converts the list given as bytes or as a path, without the interpreter's lock. Bytes are
// handed to the library as they stand in Python's memory: the one copy is the library's own.
Result Run(const py::object& data, ConvertOptions o, std::string name) {
    ConvertResult r;
    ErrorStatus error;
    std::atomic<bool> stop{false};
    o.stop = &stop;
    if (IsBytesLike(data)) {
        const GivenBytes given(data);
        if (name.empty()) name = "list.edl";
        RunUnlocked(stop, [&] { r = Convert(given.View(), o, name, &error); });
        return Finish(std::move(r), error, "");
    }
    const std::string path = PathOf(data, "data");
    if (name.empty()) name = PathText(FileName(path));
    RunUnlocked(stop, [&] {
        std::string bytes;
        if (ReadListFile(path, bytes, &error)) r = Convert(std::move(bytes), o, name, &error);
    });
    return Finish(std::move(r), error, path);
}

}  // namespace
}  // namespace vornelt::python

PYBIND11_MODULE(vornelt, m) {
    using namespace vornelt;
    using namespace vornelt::python;
    namespace py = pybind11;
    if (const char* missing = MissingProcessorFeature())
        throw py::import_error(std::string("vornelt: this processor lacks the ") + missing +
                               " instruction, which Vornelt needs");
    m.doc() = "Vornelt: edit decision lists (CMX 3600 or GVG) converted as the Vornelt window saves them.";
    m.attr("__version__") = VORNELT_VERSION_STRING;

    py::class_<Result>(m, "Result", "What a conversion gives: the saved list and what the window would have said.")
        .def_property_readonly("data", &Result::Data, "The saved list: CR LF line ends, Mac OS Roman (bytes).")
        .def_property_readonly("text", &Result::Text, "The saved list decoded from Mac OS Roman (str).")
        .def_readonly("form", &Result::form, "The list's form: \"CMX\" or \"GVG\".")
        .def_readonly("messages", &Result::messages, "What the window would have shown, in order.")
        .def_property_readonly(
            "report",
            [](Result& r) {
                if (r.report.is_none()) r.report = r.raw ? py::object(ReportItems(*r.raw)) : py::object(py::list());
                return r.report;
            },
            "What changed and what the check of the list found: one dict per item, with kind, severity, "
            "event, line_read, line_written and text (docs/report-schema.md).")
        .def_property_readonly(
            "counts",
            [](Result& r) {
                if (r.counts.is_none()) {
                    py::dict counts;
                    if (r.raw)
                        for (const ReportCount& c : r.raw->counts)
                            counts[py::str(std::string(KindName(c.kind)))] = c.count;
                    r.counts = counts;
                }
                return r.counts;
            },
            "Items per kind.")
        .def_readonly("path", &Result::path, "Where convert_file saved the list; None for convert.")
        .def("__repr__", [](const Result& r) {
            return "<vornelt.Result " + r.form + ", " + std::to_string(r.Saved().size()) + " bytes>";
        });

    // Signatures are written into the docstrings (with "--" behind them, so that
    // inspect.signature reads them), from the options table.
    py::options docs;
    docs.disable_function_signatures();
    const std::string rates = FrameRate::Names();

    m.def(
        "convert",
        [](const py::object& data, const py::object& fps, const py::kwargs& keywords) {
            std::string name;
            const ConvertOptions o = OptionsOf(fps, keywords, "convert", &name);
            return Run(data, o, std::move(name));
        },
        py::arg("data"), py::arg("fps"),
        ("convert(data, fps, *" + KeywordSignature() + ", name='')\n--\n\n" +
         "Converts one list as the Vornelt window would save it.\n\n"
         "data: the list's bytes (bytes, bytearray, memoryview; at most 256 MiB), or a path (str or\n"
         "    os.PathLike) to read.\n"
         "fps: the list's frame rate, which lists do not say: " +
         rates + ", as a str or a number.\n" +
         "    A number names a non-drop rate (29.97 is \"29.97\", counted as 30 is); drop frame is named only:\n"
         "    \"29.97df\", \"59.94df\".\n" +
         KeywordHelp() +
         "name: the list's file name, as the window shows it; a path's own name when a path is given.\n\n"
         "Returns a Result. Raises ValueError for options the list cannot take, TypeError for a value of the\n"
         "wrong type, OSError (with errno) for a file that cannot be read. The list is converted without the\n"
         "global interpreter lock, so threads convert in parallel; Ctrl-C stops it at its next step.")
            .c_str());

    auto convertFile = [](const py::object& src, const py::object& dst, const py::object& fps,
                          const py::kwargs& keywords) {
        ConvertOptions o = OptionsOf(fps, keywords, "convert_file", nullptr);
        const std::string source = PathOf(src, "src");
        std::optional<std::string> target;
        if (!dst.is_none()) target = PathOf(dst, "dst");
        std::atomic<bool> stop{false};
        o.stop = &stop;
        ConvertResult r;
        ErrorStatus error;
        std::string saved;
        RunUnlocked(stop, [&] {
            r = ConvertFile(source, target ? std::optional<std::string_view>(*target) : std::nullopt, o, &saved,
                            &error);
        });
        const bool read =
            error.outcome != ErrorStatus::Outcome::CannotRead && error.outcome != ErrorStatus::Outcome::BadOption;
        Result result = Finish(std::move(r), error, read && !saved.empty() ? saved : source);
        result.path = PathText(saved);
        return result;
    };
    m.def("convert_file", convertFile, py::arg("src"), py::arg("dst") = py::none(), py::kw_only(), py::arg("fps"),
          ("convert_file(src, dst=None, *, fps" + KeywordSignature() + ")\n--\n\n" +
           "Converts the list at `src` and saves it as vornelt-convert does.\n\n"
           "src, dst: paths as open() takes them (str, bytes, os.PathLike).\n"
           "dst: None saves beside `src` under the suggested name (\"reel1.edl\" gives \"reel1 VORNELT.edl\");\n"
           "    an existing folder (or a path ending in \"/\") saves into it under that name; any other\n"
           "    path names the file. A file is replaced only once the new one is written whole; never the\n"
           "    list it reads, by any name or link, and never a read-only file. A src that is no regular file\n"
           "    (/dev/stdin, a FIFO) needs a dst that names a file.\n"
           "The options are those of convert(). Returns the Result, with `path` set to the file written.\n"
           "Raises ValueError for bad options or a NUL in a path, TypeError for a value of the wrong type, and\n"
           "OSError (with errno) when the list cannot be read or saved or would overwrite what it reads.\n"
           "Ctrl-C stops it at its next step, and nothing is saved.")
              .c_str());
}
