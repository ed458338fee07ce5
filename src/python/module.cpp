// The Python module `vornelt`: the conversion library for pipelines written in Python.
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>

#include <cerrno>
#include <filesystem>

#include "platform/files.hpp"
#include "platform/folder_item.hpp"
#include "text/encodings.hpp"
#include "text/text.hpp"
#include "vornelt/convert.hpp"

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
    std::optional<std::string> path;
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
            const bool ascii = IsAscii(saved);
            const std::string decoded = ascii ? std::string() : DecodeMacRoman(saved);
            const std::string_view utf8 = ascii ? saved : std::string_view(decoded);
            text =
                py::reinterpret_steal<py::object>(PyUnicode_DecodeUTF8(utf8.data(), Py_ssize_t(utf8.size()), "strict"));
            if (!text) throw py::error_already_set();
        }
        return text;
    }
};

py::list ReportItems(const ConvertReport& report) {
    py::list items;
    for (const ReportItem& item : report.items) {
        py::dict d;
        d["kind"] = item.kind;
        d["severity"] = item.severity;
        d["event"] = item.event >= 0 ? py::object(py::int_(item.event)) : py::object(py::none());
        d["line_read"] = item.lineRead > 0 ? py::object(py::int_(item.lineRead)) : py::object(py::none());
        d["line_written"] = item.lineWritten > 0 ? py::object(py::int_(item.lineWritten)) : py::object(py::none());
        d["text"] = py::reinterpret_steal<py::str>(
            PyUnicode_DecodeUTF8(item.text.data(), Py_ssize_t(item.text.size()), "replace"));
        items.append(std::move(d));
    }
    return items;
}

ConvertOptions Options(int fps, bool mirror, bool keys, bool audio, bool removeFreezeFrames, bool removeSpeedChanges,
                       bool wipesToDissolves, bool keysToDissolves, bool comments, const std::string& wipeNames,
                       std::optional<std::string> title, std::optional<std::string> movie,
                       std::optional<std::string> reel) {
    ConvertOptions o;
    o.fps = fps;
    o.mirror = mirror;
    o.keys = keys;
    o.audio = audio;
    o.removeFreezeFrames = removeFreezeFrames;
    o.removeSpeedChanges = removeSpeedChanges;
    o.wipesToDissolves = wipesToDissolves;
    o.keysToDissolves = keysToDissolves;
    o.comments = comments;
    if (wipeNames == "fcp")
        o.wipeNames = WipeNames::FinalCutPro;
    else if (wipeNames == "smpte")
        o.wipeNames = WipeNames::Smpte;
    else
        throw py::value_error("wipe_names: \"fcp\" or \"smpte\"");
    o.title = std::move(title);
    o.movie = std::move(movie);
    o.reel = std::move(reel);
    if (const std::string problem = CheckOptions(o); !problem.empty()) throw py::value_error(problem);
    return o;
}

[[noreturn]] void RaiseOSError(int error, const std::string& path) {
    const std::string cause = ErrorCause(error);
    if (error == kErrorListTooLarge) error = EFBIG;
    py::object exc = py::module_::import("builtins").attr("OSError")(error, cause, path);
    PyErr_SetObject(reinterpret_cast<PyObject*>(Py_TYPE(exc.ptr())), exc.ptr());  // FileNotFoundError, ...
    throw py::error_already_set();
}

// A list given as bytes, bytearray or memoryview: its memory, held while the list is converted.
class GivenBytes {
public:
    explicit GivenBytes(const py::object& data) {
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

// The bytes of a list read from a path; `name` becomes the file's name when it is empty.
std::string ReadList(const py::object& data, std::string& name) {
    const std::string path = py::str(py::module_::import("os").attr("fspath")(data)).cast<std::string>();
    if (name.empty()) name = FolderItem(path).Name();
    std::string bytes;
    int error;
    {
        py::gil_scoped_release unlocked;
        error = ReadListFile(path, bytes);
    }
    if (error != 0) RaiseOSError(error, path);
    return bytes;
}

Result Finish(ConvertResult&& r) {
    if (r.status == ConvertStatus::BadOptions) throw py::value_error(r.error);
    if (!r.ok()) throw std::runtime_error(r.error);
    Result result;
    result.bytes = std::move(r.bytes);
    result.form = r.form == ListForm::GVG ? "GVG" : "CMX";
    result.messages = std::move(r.messages);
    result.raw = std::make_shared<const ConvertReport>(std::move(r.report));
    return result;
}

// Converts the list given as bytes or as a path, without the interpreter's lock. Bytes are
// handed to the library as they stand in Python's memory: the one copy is the library's own.
Result Run(const py::object& data, const ConvertOptions& o, std::string name) {
    ConvertResult r;
    if (IsBytesLike(data)) {
        const GivenBytes given(data);
        if (name.empty()) name = "list.edl";
        py::gil_scoped_release unlocked;
        r = Convert(given.View(), o, name);
    } else {
        std::string bytes = ReadList(data, name);
        py::gil_scoped_release unlocked;
        r = Convert(std::move(bytes), o, name);
    }
    return Finish(std::move(r));
}

}  // namespace
}  // namespace vornelt::python

PYBIND11_MODULE(vornelt, m) {
    using namespace vornelt;
    using namespace vornelt::python;
    namespace py = pybind11;
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
                        for (const ReportCount& c : r.raw->counts) counts[py::str(c.kind)] = c.count;
                    r.counts = counts;
                }
                return r.counts;
            },
            "Items per kind.")
        .def_readonly("path", &Result::path, "Where convert_file saved the list; None for convert.")
        .def("__repr__", [](const Result& r) {
            return "<vornelt.Result " + r.form + ", " + std::to_string(r.Saved().size()) + " bytes>";
        });

    auto convert = [](const py::object& data, int fps, bool mirror, bool keys, bool audio, bool removeFreezeFrames,
                      bool removeSpeedChanges, bool wipesToDissolves, bool keysToDissolves, bool comments,
                      const std::string& wipeNames, std::optional<std::string> title, std::optional<std::string> movie,
                      std::optional<std::string> reel, std::string name) {
        const ConvertOptions o =
            Options(fps, mirror, keys, audio, removeFreezeFrames, removeSpeedChanges, wipesToDissolves, keysToDissolves,
                    comments, wipeNames, std::move(title), std::move(movie), std::move(reel));
        return Run(data, o, std::move(name));
    };
    m.def("convert", convert, py::arg("data"), py::arg("fps"), py::kw_only(), py::arg("mirror") = true,
          py::arg("keys") = true, py::arg("audio") = true, py::arg("remove_freeze_frames") = true,
          py::arg("remove_speed_changes") = true, py::arg("wipes_to_dissolves") = true,
          py::arg("keys_to_dissolves") = false, py::arg("comments") = true, py::arg("wipe_names") = "smpte",
          py::arg("title") = py::none(), py::arg("movie") = py::none(), py::arg("reel") = py::none(),
          py::arg("name") = "",
          R"(Converts one list as the Vornelt window would save it.

data: the list's bytes (bytes, bytearray, memoryview), or a path (str or os.PathLike) to read.
fps: the list's frame rate, 24, 25 or 30: lists do not say.
mirror: the mirror list on one rendered master movie: the source timecodes become the record
    timecodes, reels the generated clip-chain names (or `reel`).
keys: keep the key track (V2).
audio: keep the audio events.
remove_freeze_frames: leave out the motion lines of speed 0.
remove_speed_changes: leave out the motion lines of any other speed.
wipes_to_dissolves: turn wipes into dissolves of the same length.
keys_to_dissolves: turn keys into dissolves of the same length.
comments: generate effect and clip-name comment lines for every event.
wipe_names: the table that names wipes in the comments, "smpte" or "fcp" (Final Cut Pro).
title: the sequence title (in capitals); None keeps the list's own title.
movie: the rendered movie named in the comment lines.
reel: the master reel of the mirror list: letters and digits, at most 8 (6 for a GVG list).
name: the list's file name, as the window shows it; a path's own name when a path is given.

Returns a Result. Raises ValueError for options the list cannot take, OSError (with errno)
for a file that cannot be read. The list is converted without the global interpreter lock,
so threads convert in parallel.)");

    auto convertFile = [](const py::object& src, const py::object& dst, int fps, bool mirror, bool keys, bool audio,
                          bool removeFreezeFrames, bool removeSpeedChanges, bool wipesToDissolves, bool keysToDissolves,
                          bool comments, const std::string& wipeNames, std::optional<std::string> title,
                          std::optional<std::string> movie, std::optional<std::string> reel) {
        const ConvertOptions o =
            Options(fps, mirror, keys, audio, removeFreezeFrames, removeSpeedChanges, wipesToDissolves, keysToDissolves,
                    comments, wipeNames, std::move(title), std::move(movie), std::move(reel));
        const py::object fspath = py::module_::import("os").attr("fspath");
        const std::string source = py::str(fspath(src)).cast<std::string>();
        Result result = Run(src, o, "");

        // Where it goes: beside the list under the suggested name, into a folder, or to a file.
        const FolderItem in(source);
        std::string target;
        if (dst.is_none()) {
            target = in.Parent()->Child(SuggestedSaveName(in.Name())).AbsolutePath();
        } else {
            const std::string given = py::str(fspath(dst)).cast<std::string>();
            if (FolderItem(given).IsFolder())
                target = FolderItem(given).Child(SuggestedSaveName(in.Name())).AbsolutePath();
            else if (!given.empty() && given.back() == '/')
                RaiseOSError(ENOENT, given);
            else
                target = FolderItem(given).AbsolutePath();
        }
        int error;
        {
            const std::string_view saved = result.Saved();
            py::gil_scoped_release unlocked;
            error = SaveFileBytes(target, saved);
        }
        if (error != 0) RaiseOSError(error, target);
        SetFileTypeAndCreator(target, "TEXT", "VORN");
        result.path = target;
        return result;
    };
    m.def("convert_file", convertFile, py::arg("src"), py::arg("dst") = py::none(), py::kw_only(), py::arg("fps"),
          py::arg("mirror") = true, py::arg("keys") = true, py::arg("audio") = true,
          py::arg("remove_freeze_frames") = true, py::arg("remove_speed_changes") = true,
          py::arg("wipes_to_dissolves") = true, py::arg("keys_to_dissolves") = false, py::arg("comments") = true,
          py::arg("wipe_names") = "smpte", py::arg("title") = py::none(), py::arg("movie") = py::none(),
          py::arg("reel") = py::none(),
          R"(Converts the list at `src` and saves it as vornelt-convert does.

dst: None saves beside `src` under the suggested name ("reel1.edl" gives "reel1 VORNELT.edl");
    an existing folder (or a path ending in "/") saves into it under that name; any other
    path names the file. A file is replaced only once the new one is written whole.
The options are those of convert(). Returns the Result, with `path` set to the file written.
Raises ValueError for bad options and OSError (with errno) when the list cannot be read or
saved.)");
}
