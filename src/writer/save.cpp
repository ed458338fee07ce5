// Saving: the list goes out as a file on two roads, with a dialog or to the file of the last
// save. Both write the same bytes: CR LF after every line, Mac OS Roman, no byte order mark.
#include <string>
#include <string_view>

#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "platform/encodings.hpp"
#include "platform/platform.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

const std::string& SaveErrorText() {
    static const std::string text =
        std::string("Unknown Error while saving the File.") + kCR + kCR + "Please try again.";
    return text;
}

void ReportSaveError() {
    GetPlatform().Beep();
    GetPlatform().MsgBox(SaveErrorText());
}

// Writes the list to the file and records it as the file of the last save. A file that
// cannot be created raises the nil-object error, as using the missing stream would. The
// stream writes beside the target and puts it in place on Close, so a failure on the way
// leaves an earlier file whole.
void WriteListFile(const FolderItem& file) {
    Document& m = Module1;
    MainWindowState& window = MainWindow();
    window.Cursor = MouseCursor::Wait;

    const SharedText list = m.finalCMXString;
    std::unique_ptr<TextOutputStream> stream = GetPlatform().CreateTextFile(file);
    if (!stream) throw NilObjectError();
    // The list and nothing behind it: its own last line end ends the file. It goes out a
    // piece at a time, so a long list is never held twice; the file takes its place only
    // when all of it is written.
    EncodeListForSaving(list ? std::string_view(*list) : std::string_view(),
                        [&stream](std::string_view bytes) { stream->Write(bytes); });
    stream->Close();

    // Creator "VORN", then type "TEXT": the platform sets the pair in one call. Where files
    // carry no such attributes (anything but macOS) nothing is kept.
    GetPlatform().SetMacTypeAndCreator(file, "TEXT", "VORN");

    m.isModified = false;
    PunktImPunkt();
    window.Cursor = MouseCursor::StandardPointer;
    window.Title = file.Name();
    m.mySavedAbsDateiName = file.Name();
    m.mySavedAbsDateiPfad = file.AbsolutePath();
    m.mySavedAbsDateiFolderItem = file.Parent();
}

}  // namespace

std::string SuggestedSaveName(std::string_view loadedName) {
    // The name up to its first point; a name without one is taken whole.
    const int64_t point = InStr(loadedName, ".");
    const std::string_view stem = point == 0 ? loadedName : Left(loadedName, point - 1);
    return std::string(stem) + " VORNELT.edl";
}

void SaveAsDialog() {
    Document& m = Module1;
    try {
        SaveDialogSpec dialog;
        dialog.Title = "Save EDL As " + m.edlFormat;
        dialog.PromptText = "Save new EDL as...";
        dialog.SuggestedFileName = SuggestedSaveName(m.myAbsDateiName);
        dialog.InitialDirectory = m.myAbsDateiFolderItem;
        const FolderItemRef file = GetPlatform().ShowSaveDialog(dialog);
        if (file) {
            WriteListFile(*file);
        } else {
            // Cancelled: the list counts as unsaved again, whatever it was before.
            m.isModified = true;
            PunktImPunkt();
        }
    } catch (...) {
        // The cursor stays as it was; the state is what the writing had reached.
        ReportSaveError();
    }
}

void SaveOhneDialog() {
    Document& m = Module1;
    try {
        const FolderItemRef file = GetFolderItem(m.mySavedAbsDateiPfad);
        if (!file) {
            ReportSaveError();
            MainWindow().Cursor = MouseCursor::StandardPointer;
            return;
        }
        if (!file->Exists()) {
            // The file of the last save has gone: the dialog takes over without a word.
            SaveAsDialog();
            return;
        }
        WriteListFile(*file);
    } catch (const NilObjectError&) {
        ReportSaveError();
    } catch (const IOError&) {
        // A write or close that fails leaves no saved file, just as a failed creation does,
        // and is told the same way: an editor must always hear that a save did not happen.
        // Errors of any other kind go on to the caller.
        ReportSaveError();
    }
}

}  // namespace vornelt
