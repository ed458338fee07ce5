// Bringing a list in and closing: the question on unsaved changes that every entry asks
// first, the drop on the text area, documents handed to the application, and the close box.
#include "ui/handlers.hpp"
#include "ui/render.hpp"

namespace vornelt {

using namespace ui_detail;

namespace {

// Which frame-rate window an entry asks for afterwards.
enum class NextWindow { FrameRate, FrameRateIfDroped };

void ShowFrameRateQuestion(Desktop& d, NextWindow next) {
    if (next == NextWindow::FrameRate)
        FrameRateWindow(d);
    else
        FrameRateWindowIfDroped(d);
}

void AskThenOpen(Desktop& d, NextWindow next) {
    Document& m = Doc(d);
    if (!m.isModified) {
        ShowFrameRateQuestion(d, next);
        return;
    }
    switch (AskToSaveChanges(d)) {
        case DialogButton::Action:
            if (!m.mySavedAbsDateiName.empty())
                SaveOhneDialog(d);
            else
                SaveAsDialog(d);
            // A save that was cancelled or failed leaves the list unsaved: the old document
            // stays and nothing is opened.
            if (!m.isModified) ShowFrameRateQuestion(d, next);
            return;
        case DialogButton::Alternate: ShowFrameRateQuestion(d, next); return;
        case DialogButton::Cancel:
        case DialogButton::None: return;
    }
}

constexpr const char* kOnlyOneEDL = "Only one EDL can be drop to the application!";

}  // namespace

DialogButton AskToSaveChanges(Desktop& desktop) {
    MessageDialogRequest d;
    d.Icon = 1;
    d.Message = "Do you want to save the changes to \"" + Window(desktop).Title + "\"?";
    d.Explanation = "If you don't save, your changes will be lost.";
    d.ActionCaption = "Save";
    d.AlternateVisible = true;
    d.AlternateCaption = "Don't Save";
    d.CancelVisible = true;
    d.CancelCaption = "Cancel";
    return Plat(desktop).ShowMessageDialog(d);
}

void BtnOpenEDL_Action(Desktop& d) { AskThenOpen(d, NextWindow::FrameRate); }

bool App_FileOpen_Action(Desktop& d) {
    AskThenOpen(d, NextWindow::FrameRate);
    return false;
}

void EditField1_DropObject(Desktop& d, const FolderItemRef& item) {
    if (item)
        Doc(d).DropedFolderItem = item;
    else
        // The flow goes on: an earlier dropped file is read again, or none is read.
        Plat(d).MsgBox(std::string("Error whith File-Drop\r\r") + kOnlyOneEDL);
    AskThenOpen(d, NextWindow::FrameRateIfDroped);
}

bool EditField1_DragEnter(Desktop& d) {
    Window(d).EditField1.ReadOnly = false;
    return false;
}

void EditField1_DragExit(Desktop& d) { Window(d).EditField1.ReadOnly = true; }

void App_Event_OpenDocument(Desktop& d, const FolderItemRef& item) {
    if (item)
        Doc(d).DropedFolderItem = item;
    else
        Plat(d).MsgBox(std::string("Error whith File Drag and Drop\r\r") + kOnlyOneEDL);
    AskThenOpen(d, NextWindow::FrameRateIfDroped);
}

bool MainWindow_Event_CancelClose(Desktop& d, bool /*quitting: closing and quitting are the same*/) {
    Document& m = Doc(d);
    if (!m.isModified) return false;
    switch (AskToSaveChanges(d)) {
        case DialogButton::Action:
            // Always through the dialog, even when the list has been saved under a name.
            SaveAsDialog(d);
            return m.isModified;
        case DialogButton::Alternate: return false;
        case DialogButton::Cancel:
        case DialogButton::None: return true;
    }
    return true;
}

}  // namespace vornelt
