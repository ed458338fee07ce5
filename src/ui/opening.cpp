// Bringing a list in and closing: the question on unsaved changes that every entry asks
// first, the drop on the text area, documents handed to the application, and the close box.
#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"
#include "ui/calls.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"

namespace vornelt {

namespace {

// Which frame-rate window an entry asks for afterwards.
enum class NextWindow { FrameRate, FrameRateIfDroped };

void ShowFrameRateQuestion(NextWindow next) {
    if (next == NextWindow::FrameRate)
        FrameRateWindow();
    else
        FrameRateWindowIfDroped();
}

void AskThenOpen(NextWindow next) {
    Document& m = Module1;
    if (!m.isModified) {
        ShowFrameRateQuestion(next);
        return;
    }
    switch (AskToSaveChanges()) {
        case DialogButton::Action:
            if (!m.mySavedAbsDateiName.empty())
                Calls().SaveOhneDialog();
            else
                Calls().SaveAsDialog();
            // A save that was cancelled or failed leaves the list unsaved: the old document
            // stays and nothing is opened.
            if (!m.isModified) ShowFrameRateQuestion(next);
            return;
        case DialogButton::Alternate:
            ShowFrameRateQuestion(next);
            return;
        case DialogButton::Cancel:
        case DialogButton::None:
            return;
    }
}

constexpr const char* kOnlyOneEDL = "Only one EDL can be drop to the application!";

}  // namespace

DialogButton AskToSaveChanges() {
    MessageDialogSpec d;
    d.Icon = 1;
    d.Message = "Do you want to save the changes to \"" + MainWindow().Title + "\"?";
    d.Explanation = "If you don't save, your changes will be lost.";
    d.ActionCaption = "Save";
    d.AlternateVisible = true;
    d.AlternateCaption = "Don't Save";
    d.CancelVisible = true;
    d.CancelCaption = "Cancel";
    return GetPlatform().ShowMessageDialog(d);
}

void BtnOpenEDL_Action() { AskThenOpen(NextWindow::FrameRate); }

bool App_FileOpen_Action() {
    AskThenOpen(NextWindow::FrameRate);
    return false;
}

void EditField1_DropObject(const FolderItemRef& item) {
    if (item)
        Module1.DropedFolderItem = item;
    else
        // The flow goes on: an earlier dropped file is read again, or none is read.
        GetPlatform().MsgBox(std::string("Error whith File-Drop\r\r") + kOnlyOneEDL);
    AskThenOpen(NextWindow::FrameRateIfDroped);
}

bool EditField1_DragEnter() {
    MainWindow().EditField1.ReadOnly = false;
    return false;
}

void EditField1_DragExit() { MainWindow().EditField1.ReadOnly = true; }

void App_Event_OpenDocument(const FolderItemRef& item) {
    if (item)
        Module1.DropedFolderItem = item;
    else
        GetPlatform().MsgBox(std::string("Error whith File Drag and Drop\r\r") + kOnlyOneEDL);
    AskThenOpen(NextWindow::FrameRateIfDroped);
}

bool MainWindow_Event_CancelClose(bool /*quitting: closing and quitting are the same*/) {
    Document& m = Module1;
    if (!m.isModified) return false;
    switch (AskToSaveChanges()) {
        case DialogButton::Action:
            // Always through the dialog, even when the list has been saved under a name.
            Calls().SaveAsDialog();
            return m.isModified;
        case DialogButton::Alternate:
            return false;
        case DialogButton::Cancel:
        case DialogButton::None:
            return true;
    }
    return true;
}

}  // namespace vornelt
