// The application object: the start, the menu commands, the manual, and the two windows that
// show the program's name and version.
#include "text/text.hpp"
#include "ui/handlers.hpp"
#include "ui/render.hpp"

namespace vornelt {

using namespace ui_detail;

namespace {

// The living record of a small window; a fresh one, with its open event run, when none
// stands.
template <typename Record>
Record& Living(Desktop& d, WindowSlot<Record>& slot, void (*eventOpen)(Desktop&)) {
    if (!slot.open) {
        slot.record = Record();
        slot.record.Instance = d.nextInstance++;
        slot.open = true;
        eventOpen(d);
    }
    return slot.record;
}

}  // namespace

Desktop::Desktop(Platform& platform) : session(platform) {
    session.mainWindowOpened = [this] { MainWindow_Event_Open(*this); };
}

std::string VersionText(int major, int minor) {
    return "Verion " + std::to_string(major) + "." + std::to_string(minor);
}

std::string VersionText() { return VersionText(VORNELT_VERSION_MAJOR, VORNELT_VERSION_MINOR); }

bool FileTypeAccepts(const FileType& type, std::string_view fileName) {
    for (TextView extension : Split(type.Extensions, ";")) {
        if (extension.empty() || extension.size() > fileName.size()) continue;
        if (EqualsCI(fileName.substr(fileName.size() - extension.size()), extension)) return true;
    }
    return false;
}

// ---- the start ----

void App_Event_Open(Desktop& d) {
    StartUpWindow(d);
    Doc(d).isModified = false;
}

StartUpWindowState& StartUpWindow(Desktop& d) { return Living(d, d.startUp, &StartUpWindow_Event_Open); }
bool StartUpWindowExists(const Desktop& d) { return d.startUp.open; }
void CloseStartUpWindow(Desktop& d) { d.startUp.open = false; }

void StartUpWindow_Event_Open(Desktop& d) {
    StartUpWindowState& w = d.startUp.record;
    w.ST_Version.Text = VersionText();
    ++w.Timer1.Resets;
    w.Timer1.mode = TimerState::Mode::Single;
    w.Timer1.Period = 3000;
}

void StartUpWindow_Timer1_Action(Desktop& d) {
    CloseStartUpWindow(d);
    Window(d);
}

// ---- the about window ----

AboutWindow2State& AboutWindow2(Desktop& d) { return Living(d, d.about, &AboutWindow2_Event_Open); }
bool AboutWindow2Exists(const Desktop& d) { return d.about.open; }
void CloseAboutWindow2(Desktop& d) { d.about.open = false; }

void AboutWindow2_Event_Open(Desktop& d) { d.about.record.ST_Version.Text = VersionText(); }

bool AboutWindow2_Event_MouseDown(Desktop& d) {
    // A click anywhere but on the link closes the window.
    CloseAboutWindow2(d);
    return false;
}

bool ST_www_MouseDown(Desktop&) {
    // Claimed, so that the mouse-up comes to the label.
    return true;
}

void ST_www_MouseEnter(Desktop& d) { d.about.record.Cursor = MouseCursor::FingerPointer; }

void ST_www_MouseExit(Desktop& d) { d.about.record.Cursor = MouseCursor::StandardPointer; }

void ST_www_MouseUp(Desktop& d) {
    // Wherever the pointer is by now.
    Plat(d).ShowURL(kWebSiteURL);
    CloseAboutWindow2(d);
}

// ---- the menu commands ----

bool App_FileSave_Action(Desktop& d) {
    if (!Doc(d).mySavedAbsDateiName.empty())
        SaveOhneDialog(d);
    else
        SaveAsDialog(d);
    return false;
}

bool App_FileSaveAs_Action(Desktop& d) {
    SaveAsDialog(d);
    return false;
}

bool App_FileSelectMovie_Action(Desktop& d) {
    SelectMovie(d);
    return false;
}

bool App_HelpHelp_Action(Desktop& d) {
    OpenPDFHelp(d);
    return false;
}

bool App_About_Action(Desktop& d) {
    AboutWindow2(d);
    return false;
}

void OpenPDFHelp(Desktop& d) {
    // Two levels above the program: the bundle's Contents, or the top of the build or
    // installed tree.
    FolderItem program = Plat(d).ExecutableFile();
    FolderItemRef folder = program.Parent();
    if (folder) folder = folder->Parent();
    if (!folder) return;
    const FolderItem manual = folder->Child("Resources").Child("Manual.pdf");
    // Whether the manual is there is the viewer's business; where no program takes it at
    // all, the user is told where it is, to open it some other way.
    if (!Plat(d).Launch(manual))
        Plat(d).MsgBox("The manual could not be opened.\r\rIt is the file\r" + manual.AbsolutePath() +
                       "\r\rOpen it with a program that shows PDF files.");
}

}  // namespace vornelt
