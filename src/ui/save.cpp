// Saving: the list goes out as a file on two roads, with a dialog or to the file of the last
// save. Both write the same bytes: CR LF after every line, Mac OS Roman, no byte order mark.
#include <string>
#include <string_view>

#include "text/encodings.hpp"
#include "text/text.hpp"
#include "ui/handlers.hpp"
#include "ui/render.hpp"
#include "vornelt/files.hpp"

namespace vornelt {

using namespace ui_detail;

namespace {

constexpr std::string_view kSaveErrorText = "Unknown Error while saving the File.\r\rPlease try again.";

void ReportSaveError(Desktop& d) {
    Plat(d).Beep();
    Plat(d).MsgBox(kSaveErrorText);
}

// Writes the list to the file and records it as the file of the last save; false when the
// file could not be created, written or put in place. The stream writes beside the target
// and puts it in place on Close, so a failure on the way leaves an earlier file whole.
bool WriteListFile(Desktop& d, const FolderItem& file) {
    Document& m = Doc(d);
    MainWindowState& window = Window(d);
    Platform& platform = Plat(d);
    window.Cursor = MouseCursor::Wait;

    const SharedText list = m.finalCMXString;
    ErrorStatus error;
    std::unique_ptr<TextOutputStream> stream = platform.CreateTextFile(file, &error);
    if (!stream) return false;
    // The list and nothing behind it: its own last line end ends the file. It goes out a
    // piece at a time, so a long list is never held twice; the file takes its place only
    // when all of it is written.
    bool written = true;
    EncodeListForSaving(list ? std::string_view(*list) : std::string_view(),
                        [&](std::string_view bytes) { written = written && stream->Write(bytes, &error); });
    if (!written || !stream->Close(&error)) return false;

    // Creator "VORN", then type "TEXT": the platform sets the pair in one call. Where files
    // carry no such attributes (anything but macOS) nothing is kept.
    platform.SetMacTypeAndCreator(file, "TEXT", "VORN");

    m.isModified = false;
    PunktImPunkt(m, platform);
    window.Cursor = MouseCursor::StandardPointer;
    window.Title = file.Name();
    m.mySavedAbsDateiName = file.Name();
    m.mySavedAbsDateiPfad = file.AbsolutePath();
    m.mySavedAbsDateiFolderItem = file.Parent();
    return true;
}

}  // namespace

void SaveAsDialog(Desktop& d) {
    Document& m = Doc(d);
    try {
        SaveDialogRequest dialog;
        dialog.Title = "Save EDL As " + m.edlFormat;
        dialog.PromptText = "Save new EDL as...";
        dialog.SuggestedFileName = SuggestedSaveName(m.myAbsDateiName);
        dialog.InitialDirectory = m.myAbsDateiFolderItem;
        const FolderItemRef file = Plat(d).ShowSaveDialog(dialog);
        if (file) {
            if (!WriteListFile(d, *file)) ReportSaveError(d);
        } else {
            // Cancelled: the list counts as unsaved again, whatever it was before.
            m.isModified = true;
            PunktImPunkt(m, Plat(d));
        }
    } catch (...) {
        // The cursor stays as it was; the state is what the writing had reached.
        ReportSaveError(d);
    }
}

void SaveOhneDialog(Desktop& d) {
    Document& m = Doc(d);
    const FolderItemRef file = GetFolderItem(m.mySavedAbsDateiPfad);
    if (!file) {
        ReportSaveError(d);
        Window(d).Cursor = MouseCursor::StandardPointer;
        return;
    }
    if (!file->Exists()) {
        // The file of the last save has gone: the dialog takes over without a word.
        SaveAsDialog(d);
        return;
    }
    // A file that cannot be created, written or put in place is told the same way: an editor
    // must always hear that a save did not happen. Errors of any other kind (no memory) go on
    // to the caller.
    if (!WriteListFile(d, *file)) ReportSaveError(d);
}

}  // namespace vornelt
