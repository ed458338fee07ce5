// The conversion library: a list's bytes through a session of its own, as the window would
// load, edit and save it.
#include <new>

#include "session/load.hpp"
#include "session/report.hpp"
#include "text/encodings.hpp"
#include "text/text.hpp"
#include "vocabulary/vocabulary.hpp"
#include "vornelt/convert.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

// Shows nothing and keeps the texts of the messages that the window would show; a question
// is answered with its first button.
class CollectingPlatform final : public QuietPlatform {
public:
    std::vector<std::string> messages;

    void MsgBox(std::string_view text) override { messages.emplace_back(text); }
    DialogButton ShowMessageDialog(const MessageDialogRequest& request) override {
        messages.push_back(request.Message);
        return DialogButton::Action;
    }
};

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
    w.Chb_Mirror.Value = o.mirror;
    w.Chb_V2.Value = o.keys;
    w.Chb_A1234.Value = o.audio;
    w.Chb_RemoveFreezeFrame.Value = o.removeFreezeFrames;
    w.Chb_RemoveSpeedChanges.Value = o.removeSpeedChanges;
    w.Chb_TransToDissolve.Value = o.wipesToDissolves;
    w.Chb_KeyToDissolve.Value = o.keysToDissolves;
    w.Chb_ComntGenerateNew.Value = o.comments;
    w.PopupTransition.ListIndex = o.wipeNames == WipeNames::FinalCutPro ? 0 : 1;
}

// After the load, the fields in the order title, movie, reel, as the user fills them in.
// The list is rendered once at the end: every field is read by the writer alone.
void FillFields(Session& s, const ConvertOptions& o) {
    MainWindowState& w = s.MainWindow();
    Document& m = s.document;
    if (o.title) w.EF_SeqTitle.SetText(SanitizeUtf8(*o.title));
    if (o.movie) {
        w.EF_RenderedMovie.SetText(SanitizeUtf8(*o.movie));
        // The typed name replaces one chosen through the dialog, path and all.
        m.myAbsMovieName = w.EF_RenderedMovie.Text();
        m.myAbsMoviePfad.clear();
        m.myAbsMovieFolderItem.reset();
    }
    if (o.reel) {
        w.EF_ReelName.SetText(*o.reel);
        if (IsReservedReel(Trim(w.EF_ReelName.Text())))
            s.platform.MsgBox(std::string(Trim(w.EF_ReelName.Text())) + " is a reserved Reel-Name!");
    }
}

}  // namespace

std::string CheckOptions(const ConvertOptions& o) {
    if (o.fps != 24 && o.fps != 25 && o.fps != 30) return "--fps: 24, 25 or 30";
    if (o.title && HasControlCharacter(*o.title))
        return "--title: control characters (line ends, tabs) are not allowed";
    if (o.movie && HasControlCharacter(*o.movie))
        return "--movie: control characters (line ends, tabs) are not allowed";
    if (o.reel && (!IsPlainReelName(*o.reel) || o.reel->size() > 8))
        return "--reel: letters and digits only, at most 8 characters";
    return {};
}

ConvertResult Convert(std::string_view bytes, const ConvertOptions& o, std::string_view name) noexcept {
    try {
        return Convert(std::string(bytes), o, name);
    } catch (const std::bad_alloc&) {
        ConvertResult result;
        result.error = "not enough memory for this list";
        return result;
    }
}

ConvertResult Convert(std::string&& bytes, const ConvertOptions& o, std::string_view name) noexcept {
    ConvertResult result;
    try {
        result.error = CheckOptions(o);
        if (!result.error.empty()) {
            result.status = ConvertStatus::BadOptions;
            return result;
        }
        CollectingPlatform platform;
        SharedText list;
        {
            Session s(platform);
            SetControls(s.MainWindow(), o);
            s.document.report.recording = o.report;
            // The frame-rate question's answer.
            s.document.frameRateTmp = double(o.fps);
            s.document.dropFrameTmp = false;
            LoadListBytes(s, std::move(bytes), FolderItem(name.empty() ? std::string_view("list.edl") : name), false,
                          Render::Later);
            result.form = s.document.IsGrassValley ? ListForm::GVG : ListForm::CMX;

            if (o.reel && s.document.IsGrassValley && o.reel->size() > 6) {
                result.status = ConvertStatus::BadOptions;
                result.error = "--reel: a GVG list takes at most 6 characters";
                return result;
            }
            FillFields(s, o);
            NewEDL_02(s.document, s.MainWindow(), platform);
            if (o.report) result.report = MakeConvertReport(ViewReport(s.document), s.document);

            list = s.document.finalCMXString;
        }
        // The bytes of the save, once the session's tables are gone.
        AppendListForSaving(result.bytes, *list);
        list.reset();
        result.messages = std::move(platform.messages);
        result.status = ConvertStatus::Converted;
    } catch (const std::bad_alloc&) {
        result = ConvertResult{};
        result.error = "not enough memory for this list";
    } catch (const std::exception& e) {
        result = ConvertResult{};
        result.error = e.what();
    }
    return result;
}

std::string SuggestedSaveName(std::string_view loadedName) {
    // The name up to its first point; a name without one is taken whole.
    const int64_t point = InStr(loadedName, ".");
    const std::string_view stem = point == 0 ? loadedName : Left(loadedName, point - 1);
    return std::string(stem) + " VORNELT.edl";
}

}  // namespace vornelt
