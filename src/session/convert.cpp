// The conversion library: a list's bytes through a session of its own, as the window would
// load, edit and save it.
#include <functional>
#include <new>
#include <stdexcept>

#include "platform/files.hpp"
#include "session/convert.hpp"
#include "session/load.hpp"
#include "session/report.hpp"
#include "text/encodings.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"
#include "vornelt/convert.hpp"
#include "writer/plan.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

std::string Quoted(std::string_view s) {
    std::string quoted;
    quoted.reserve(s.size() + 2);
    return quoted.append(1, '"').append(s).append(1, '"');
}

// Shows nothing and keeps the texts of the messages that the window would show; a question
// is answered with its first button. A long load stops between its passes when the caller
// asks.
class CollectingPlatform final : public QuietPlatform {
public:
    explicit CollectingPlatform(const std::atomic<bool>* stop) : stop_(stop) {}
    std::vector<std::string> messages;

    bool StopAsked() override { return stop_ && stop_->load(std::memory_order_relaxed); }

    void MsgBox(std::string_view text) override { messages.emplace_back(text); }
    DialogButton ShowMessageDialog(const MessageDialogRequest& request) override {
        messages.push_back(request.Message);
        return DialogButton::Action;
    }

private:
    const std::atomic<bool>* stop_;
};

bool Interrupted(ErrorStatus* error) { return Fail(error, ErrorStatus::Outcome::Interrupted, "stopped"); }

bool IsPlainReelName(std::string_view name) {
    if (name.empty()) return false;
    for (const char c : name)
        if (!((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))) return false;
    return true;
}

bool HasControlCharacter(std::string_view text) {
    for (const char c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return true;
    return false;
}

// The options go into the window's controls before the load, as a user sets them.
void SetControls(MainWindowState& w, const ConvertOptions& o) {
    for (const Option& option : kOptions) {
        if (option.flag) CheckBoxNamed(w, option.control)->Value = o.*option.flag;
        if (option.getChoice) PopupNamed(w, option.control)->ListIndex = option.getChoice(o);
    }
}

// After the load, the text options go into their fields in the order of the table, as the
// user fills them in. The list is rendered once at the end: every field is read by the writer
// alone.
void FillFields(Session& s, const ConvertOptions& o) {
    MainWindowState& w = s.MainWindow();
    Document& m = s.document;
    for (const Option& option : kOptions) {
        if (!option.text || !(o.*option.text)) continue;
        const std::string& value = *(o.*option.text);
        EntryField& field = *EntryFieldNamed(w, option.control);
        switch (field.FieldKind()) {
            case EntryField::Kind::SeqTitle: field.SetText(SanitizeUtf8(value)); break;
            case EntryField::Kind::RenderedMovie:
                field.SetText(SanitizeUtf8(value));
                // The typed name replaces one chosen through the dialog, path and all.
                m.myAbsMovieName = field.Text();
                m.myAbsMoviePfad.clear();
                m.myAbsMovieFolderItem.reset();
                break;
            case EntryField::Kind::ReelName:
                field.SetText(value);
                if (IsReservedReel(Trim(field.Text())))
                    s.platform.MsgBox(std::string(Trim(field.Text())) + " is a reserved Reel-Name!");
                break;
        }
    }
}

// The reel option of the options, or null.
const std::optional<std::string>* ReelOption(const ConvertOptions& o) {
    for (const Option& option : kOptions)
        if (option.text && option.rule == Option::TextRule::ReelName) return &(o.*option.text);
    return nullptr;
}

}  // namespace

namespace {

// The load of a conversion up to the rendering: the options into the window's controls, the
// bytes along the load road, the text options into their fields.
bool LoadForConversion(Session& s, std::string&& bytes, const ConvertOptions& o, std::string_view name,
                       ErrorStatus* error) {
    SetControls(s.MainWindow(), o);
    s.document.report.recording = o.report;
    // The frame-rate question's answer.
    s.document.frameRateTmp = o.fps;
    s.document.dropFrameTmp = o.fps.DropFrame();
    LoadListBytes(s, std::move(bytes), FolderItem(name.empty() ? std::string_view("list.edl") : name), false,
                  Render::Later);
    if (s.platform.StopAsked()) return Interrupted(error);
    if (const std::optional<std::string>* reel = ReelOption(o);
        reel && *reel && s.document.IsGrassValley && (*reel)->size() > 6)
        return Fail(error, ErrorStatus::Outcome::BadOption,
                    "reel " + Quoted(**reel) + ": a GVG list takes at most 6 characters");
    FillFields(s, o);
    return true;
}

// A conversion whose saved bytes go to `write` a piece at a time, as the plan of the new list
// is written out: the list in the window's text is never made.
ConvertResult ConvertWriting(std::string&& bytes, const ConvertOptions& o, std::string_view name,
                             const std::function<bool(std::string_view)>& write, ErrorStatus* error) {
    ConvertResult result;
    if (!CheckOptions(o, error)) return {};
    if (bytes.size() > kMaxListFileBytes) {
        Fail(error, ErrorStatus::Outcome::CannotRead, std::string(kListTooLarge), EFBIG);
        return {};
    }
    CollectingPlatform platform(o.stop);
    if (platform.StopAsked()) return Interrupted(error), ConvertResult();
    Session s(platform);
    if (!LoadForConversion(s, std::move(bytes), o, name, error)) return {};
    result.form = s.document.IsGrassValley ? ListForm::GVG : ListForm::CMX;
    Document& m = s.document;
    bool written = true;
    if (o.report) {
        // The report reads the whole plan: it stands whole before it is written out.
        if (!PlanList(m, s.MainWindow(), platform)) return Interrupted(error), ConvertResult();
        result.report = MakeConvertReport(ViewReport(m), m);
        written = WritePlanForSaving(m, write);
    } else {
        // Planned and written a stretch of rows at a time: neither the plan nor the list is
        // ever held whole.
        ListPlanner planner(m, s.MainWindow(), platform);
        SavedListWriter writer(write);
        const auto writeOut = [&] {
            const std::vector<PlannedLine>& lines = m.plan.lines;
            const bool ok = writer.Add(m, lines.data(), lines.data() + lines.size());
            m.plan.lines.clear();
            m.plan.comments.clear();
            return ok;
        };
        while (written && !planner.Done()) {
            if (!planner.PlanRows(16384)) return Interrupted(error), ConvertResult();
            written = writeOut();
        }
        if (written) {
            planner.Finish();
            written = writeOut() && writer.Flush();
        }
    }
    if (!written) {
        // The writer says why, or the conversion was stopped on the way.
        if (platform.StopAsked()) Interrupted(error);
        return {};
    }
    result.messages = std::move(platform.messages);
    return result;
}

}  // namespace

bool ConvertInSession(Session& s, std::string&& bytes, const ConvertOptions& o, std::string_view name,
                      ErrorStatus* error) {
    if (!LoadForConversion(s, std::move(bytes), o, name, error)) return false;
    NewEDL_02(s.document, s.MainWindow(), s.platform);
    if (s.platform.StopAsked()) return Interrupted(error);
    return true;
}

bool CheckOptions(const ConvertOptions& o, ErrorStatus* error) {
    for (const Option& option : kOptions) {
        if (!option.text || !(o.*option.text)) continue;
        const std::string& value = *(o.*option.text);
        const std::string name(option.name);
        switch (option.rule) {
            case Option::TextRule::Line:
                if (HasControlCharacter(value))
                    return Fail(error, ErrorStatus::Outcome::BadOption,
                                name + ": one line of text, without control characters (line ends, tabs)");
                break;
            case Option::TextRule::ReelName:
                if (!IsPlainReelName(value) || value.size() > 8)
                    return Fail(error, ErrorStatus::Outcome::BadOption,
                                name + " " + Quoted(value) + ": letters and digits only, at most 8 characters");
                break;
        }
    }
    return true;
}

ConvertResult Convert(std::string_view bytes, const ConvertOptions& o, std::string_view name,
                      ErrorStatus* error) noexcept {
    try {
        // A list past the cap is refused before it is copied.
        if (bytes.size() > kMaxListFileBytes) {
            Fail(error, ErrorStatus::Outcome::CannotRead, std::string(kListTooLarge), EFBIG);
            return {};
        }
        return Convert(std::string(bytes), o, name, error);
    } catch (const std::bad_alloc&) {
        Fail(error, ErrorStatus::Outcome::NoMemory, "not enough memory for this list");
        return {};
    }
}

ConvertResult Convert(std::string&& bytes, const ConvertOptions& o, std::string_view name,
                      ErrorStatus* error) noexcept {
    try {
        std::string saved;
        ConvertResult result = ConvertWriting(
            std::move(bytes), o, name,
            [&saved, &o](std::string_view piece) {
                saved.append(piece);
                return !(o.stop && o.stop->load(std::memory_order_relaxed));
            },
            error);
        result.bytes = std::move(saved);
        return result;
    } catch (const std::bad_alloc&) {
        Fail(error, ErrorStatus::Outcome::NoMemory, "not enough memory for this list");
    } catch (const std::length_error&) {
        Fail(error, ErrorStatus::Outcome::NoMemory, "the list is too large to hold");
    }
    return {};
}

ConvertResult ConvertInto(std::string&& bytes, const ConvertOptions& o, std::string_view name, TextOutputStream& out,
                          ErrorStatus* error) noexcept {
    try {
        ErrorStatus writing;
        ConvertResult result = ConvertWriting(
            std::move(bytes), o, name,
            [&out, &writing, &o](std::string_view piece) {
                return out.Write(piece, &writing) && !(o.stop && o.stop->load(std::memory_order_relaxed));
            },
            error);
        if (!writing.ok() && error) *error = std::move(writing);
        return result;
    } catch (const std::bad_alloc&) {
        Fail(error, ErrorStatus::Outcome::NoMemory, "not enough memory for this list");
    } catch (const std::length_error&) {
        Fail(error, ErrorStatus::Outcome::NoMemory, "the list is too large to hold");
    }
    return {};
}

ConvertResult ConvertFile(std::string_view input, std::optional<std::string_view> output, const ConvertOptions& o,
                          std::string* saved, ErrorStatus* error) noexcept {
    ErrorStatus failure;
    try {
        // Everything is worked out before the list is read: the options, where it goes, and
        // that it goes over no file it reads.
        std::string target;
        CallFiles files;
        files.AddInput(input);
        std::string bytes;
        if (CheckOptions(o, &failure) && !(target = OutputPath(input, output, &failure)).empty()) {
            if (saved) *saved = target;
            if (files.AddOutput(target, 0, &failure) && ReadListFile(input, bytes, &failure)) {
                ConvertResult result = Convert(std::move(bytes), o, FileName(input), &failure);
                if (failure.ok() && SaveFile(target, result.bytes, SaveOptions{.list = true, .stop = o.stop}, &failure))
                    return result;
            }
        }
    } catch (const std::bad_alloc&) {
        Fail(&failure, ErrorStatus::Outcome::NoMemory, "not enough memory for this list");
    }
    if (error) *error = std::move(failure);
    return {};
}

std::string ListText(std::string_view saved) { return DecodeMacRoman(saved); }

}  // namespace vornelt
