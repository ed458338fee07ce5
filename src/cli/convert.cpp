#include "cli/convert.hpp"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <optional>

#include "document/load.hpp"
#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "platform/headless.hpp"
#include "ui/handlers.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

struct Options {
    std::vector<std::string> inputs;
    std::string fps;
    std::optional<std::string> output;
    bool mirror = true;
    bool keys = true;
    bool audio = true;
    bool removeFreezeFrames = true;
    bool removeSpeedChanges = true;
    bool wipesToDissolves = true;
    bool keysToDissolves = false;
    bool comments = true;
    std::string wipeNames = "smpte";
    std::optional<std::string> title;
    std::optional<std::string> movie;
    std::optional<std::string> reel;
};

// Writes a save to standard output instead of the chosen file.
class StdoutStream final : public TextOutputStream {
public:
    explicit StdoutStream(std::ostream& out) : out_(out) {}
    void Write(std::string_view bytes) override {
        out_.write(bytes.data(), std::streamsize(bytes.size()));
        if (!out_) throw IOError("cannot write to standard output");
    }
    void Close() override {
        out_.flush();
        if (!out_) throw IOError("cannot write to standard output");
    }

private:
    std::ostream& out_;
};

class ConverterPlatform final : public HeadlessPlatform {
public:
    explicit ConverterPlatform(std::ostream& out) : out_(out) {}
    bool toStdout = false;
    std::unique_ptr<TextOutputStream> CreateTextFile(const FolderItem& file) override {
        if (toStdout) return std::make_unique<StdoutStream>(out_);
        return HeadlessPlatform::CreateTextFile(file);
    }

private:
    std::ostream& out_;
};

// Letters and digits of ASCII only.
bool IsPlainReelName(std::string_view name) {
    if (name.empty()) return false;
    for (char c : name)
        if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))) return false;
    return true;
}

bool IsReservedReel(std::string_view name) {
    for (const char* reserved : {"AX", "BL", "AUX", "BLACK"})
        if (EqualsCI(name, reserved)) return true;
    return false;
}

// Line ends of a message as new lines, for a terminal.
std::string ForTerminal(std::string_view text) {
    std::string out = ReplaceAll(text, "\r\n", "\n");
    for (char& c : out)
        if (c == '\r') c = '\n';
    return out;
}

void Configure(CLI::App& app, Options& o) {
    app.description("Converts edit decision lists (CMX 3600 or GVG) as the Vornelt window would save them.");
    app.add_option("INPUT", o.inputs, "The list(s) to convert")->required();
    app.add_option("--fps", o.fps, "Frame rate of the list")->required()->check(CLI::IsMember({"24", "25", "30"}));
    app.add_option("-o,--output", o.output,
                   "Output file (default: the suggested name beside INPUT), '-' for standard output; "
                   "with several INPUTs a folder");
    app.add_flag("--mirror,!--no-mirror", o.mirror, "Mirror the list onto one rendered master movie [on]");
    app.add_flag("--keys,!--no-keys", o.keys, "Keep the key track V2 [on]");
    app.add_flag("--audio,!--no-audio", o.audio, "Keep the audio events [on]");
    app.add_flag("--remove-freeze-frames,!--keep-freeze-frames", o.removeFreezeFrames, "Remove freeze frames [remove]");
    app.add_flag("--remove-speed-changes,!--keep-speed-changes", o.removeSpeedChanges, "Remove speed changes [remove]");
    app.add_flag("--wipes-to-dissolves,!--keep-wipes", o.wipesToDissolves, "Turn wipes into dissolves [on]");
    app.add_flag("--keys-to-dissolves,!--keep-keys", o.keysToDissolves, "Turn keys into dissolves [off]");
    app.add_flag("--comments,!--no-comments", o.comments, "Generate new comment lines [on]");
    app.add_option("--wipe-names", o.wipeNames, "Wipe names in the comment lines [smpte]")
        ->check(CLI::IsMember({"fcp", "smpte"}));
    app.add_option("--title", o.title, "Sequence title (folded to capitals)");
    app.add_option("--movie", o.movie, "Name of the rendered movie for the comment lines");
    app.add_option("--reel", o.reel, "Reel name of the mirror list: letters and digits, at most 8 (6 for GVG)");
    app.set_version_flag("--version", std::string("vornelt-convert ") + VORNELT_VERSION_STRING);
}

struct Target {
    std::optional<FolderItem> file;  // none: standard output
};

// Converts one list in a fresh run of the program; the exit status of this list.
int ConvertOne(const Options& o, const std::string& input, const Target& target, std::ostream& out, std::ostream& err) {
    ResetProgramState();
    ConverterPlatform platform(out);
    ScopedPlatform scope(platform);
    platform.toStdout = !target.file;

    // The user sets the options before the load; no handler runs.
    MainWindowState& w = MainWindow();
    w.Chb_Mirror.Value = o.mirror;
    w.Chb_V2.Value = o.keys;
    w.Chb_A1234.Value = o.audio;
    w.Chb_RemoveFreezeFrame.Value = o.removeFreezeFrames;
    w.Chb_RemoveSpeedChanges.Value = o.removeSpeedChanges;
    w.Chb_TransToDissolve.Value = o.wipesToDissolves;
    w.Chb_KeyToDissolve.Value = o.keysToDissolves;
    w.Chb_ComntGenerateNew.Value = o.comments;
    w.PopupTransition.ListIndex = o.wipeNames == "fcp" ? 0 : 1;

    // The frame-rate question, then the open dialog.
    Module1.frameRateTmp = std::stod(o.fps);
    Module1.dropFrameTmp = false;
    platform.openDialogAnswers.push_back(FolderItem(input));
    Open_CMX();
    if (!platform.messages.empty()) {
        err << "vornelt-convert: " << input << ": " << ForTerminal(platform.messages.front()) << "\n";
        return 1;
    }

    if (o.reel && Module1.IsGrassValley && Len(*o.reel) > 6) {
        err << "vornelt-convert: " << input << ": --reel: a GVG list takes at most 6 characters\n";
        return 2;
    }

    // The fields, in the order title, movie, reel.
    if (o.title) {
        MainWindow().EF_SeqTitle.SetText(SanitizeUtf8(*o.title));
        EF_SeqTitle_LostFocus();
    }
    if (o.movie) {
        MainWindow().EF_RenderedMovie.SetText(SanitizeUtf8(*o.movie));
        EF_RenderedMovie_KeyDown("\r", keycode::kReturn);
    }
    if (o.reel) {
        MainWindow().EF_ReelName.SetText(*o.reel);
        if (IsReservedReel(*o.reel)) {
            err << "vornelt-convert: note: " << Uppercase(*o.reel)
                << " is a reserved reel name; it is used as given\n";
            platform.messageDialogAnswers.push_back(DialogButton::Action);
        }
        EF_ReelName_LostFocus();
    }

    // Saving through the save dialog.
    const size_t shown = platform.messages.size();
    platform.saveDialogAnswers.push_back(target.file ? *target.file : FolderItem("vornelt-stdout.edl"));
    SaveAsDialog();
    if (platform.messages.size() > shown || Module1.isModified) {
        std::string text = platform.messages.size() > shown ? platform.messages[shown] : "the list was not saved";
        err << "vornelt-convert: " << (target.file ? target.file->AbsolutePath() : std::string("-")) << ": "
            << ForTerminal(text) << "\n";
        return 1;
    }
    return 0;
}

}  // namespace

int ConvertMain(int argc, const char* const* argv, std::ostream& out, std::ostream& err) {
    Options o;
    CLI::App app{"vornelt-convert", "vornelt-convert"};
    Configure(app, o);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        out << app.help();
        return 0;
    } catch (const CLI::CallForVersion&) {
        out << "vornelt-convert " << VORNELT_VERSION_STRING << "\n";
        return 0;
    } catch (const CLI::ParseError& e) {
        err << "vornelt-convert: " << e.what() << "\n\n" << app.help();
        return 2;
    }

    // The reel is checked for its characters and its length before any input is read.
    if (o.reel && (!IsPlainReelName(*o.reel) || o.reel->size() > 8)) {
        err << "vornelt-convert: --reel: letters and digits only, at most 8 characters\n";
        return 2;
    }

    const bool several = o.inputs.size() > 1;
    std::optional<FolderItem> folder;
    bool toStdout = o.output && *o.output == "-";
    if (o.output && !toStdout) {
        FolderItem given(*o.output);
        if (given.IsFolder()) {
            folder = given;
        } else if (several) {
            err << "vornelt-convert: -o: with several inputs, -o names an existing folder\n";
            return 2;
        }
    }

    int status = 0;
    for (const std::string& input : o.inputs) {
        Target target;
        if (!toStdout) {
            const FolderItem in(input);
            if (o.output && !folder) {
                target.file = FolderItem(*o.output);
            } else {
                std::optional<FolderItem> where = folder ? folder : in.Parent();
                target.file = where->Child(SuggestedSaveName(in.Name()));
            }
        }
        status = std::max(status, ConvertOne(o, input, target, out, err));
    }
    ResetProgramState();
    return status;
}

}  // namespace vornelt
