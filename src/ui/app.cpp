// The application object: the start, the menu commands, the manual, and the two windows that
// show the program's name and version.
#include "document/module1.hpp"
#include "document/text.hpp"
#include "platform/platform.hpp"
#include "ui/calls.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"

namespace vornelt {

namespace {

uint64_t g_nextInstance = 1;

template <typename Record>
struct WindowSlot {
    Record record;
    bool open = false;

    Record& Get(void (*eventOpen)()) {
        if (!open) {
            record = Record();
            record.Instance = g_nextInstance++;
            open = true;
            eventOpen();
        }
        return record;
    }
};

WindowSlot<StartUpWindowState>& StartUpSlot() {
    static WindowSlot<StartUpWindowState> slot;
    return slot;
}

WindowSlot<AboutWindow2State>& AboutSlot() {
    static WindowSlot<AboutWindow2State> slot;
    return slot;
}

}  // namespace

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

void App_Event_Open() {
    StartUpWindow();
    Module1.isModified = false;
}

StartUpWindowState& StartUpWindow() { return StartUpSlot().Get(&StartUpWindow_Event_Open); }
bool StartUpWindowExists() { return StartUpSlot().open; }
void CloseStartUpWindow() { StartUpSlot().open = false; }

void StartUpWindow_Event_Open() {
    StartUpWindowState& w = StartUpSlot().record;
    w.ST_Version.Text = VersionText();
    ++w.Timer1.Resets;
    w.Timer1.mode = TimerState::Mode::Single;
    w.Timer1.Period = 3000;
}

void StartUpWindow_Timer1_Action() {
    CloseStartUpWindow();
    MainWindow();
}

// ---- the about window ----

AboutWindow2State& AboutWindow2() { return AboutSlot().Get(&AboutWindow2_Event_Open); }
bool AboutWindow2Exists() { return AboutSlot().open; }
void CloseAboutWindow2() { AboutSlot().open = false; }

void AboutWindow2_Event_Open() { AboutSlot().record.ST_Version.Text = VersionText(); }

bool AboutWindow2_Event_MouseDown() {
    // A click anywhere but on the link closes the window.
    CloseAboutWindow2();
    return false;
}

bool ST_www_MouseDown() {
    // Claimed, so that the mouse-up comes to the label.
    return true;
}

void ST_www_MouseEnter() { AboutSlot().record.Cursor = MouseCursor::FingerPointer; }

void ST_www_MouseExit() { AboutSlot().record.Cursor = MouseCursor::StandardPointer; }

void ST_www_MouseUp() {
    // Wherever the pointer is by now.
    GetPlatform().ShowURL(kWebSiteURL);
    CloseAboutWindow2();
}

// ---- the menu commands ----

bool App_FileSave_Action() {
    if (!Module1.mySavedAbsDateiName.empty())
        Calls().SaveOhneDialog();
    else
        Calls().SaveAsDialog();
    return false;
}

bool App_FileSaveAs_Action() {
    Calls().SaveAsDialog();
    return false;
}

bool App_FileSelectMovie_Action() {
    SelectMovie();
    return false;
}

bool App_HelpHelp_Action() {
    OpenPDFHelp();
    return false;
}

bool App_About_Action() {
    AboutWindow2();
    return false;
}

void OpenPDFHelp() {
    // Two levels above the program: the bundle's Contents, or the top of the build or
    // installed tree. Whether the manual is there is the viewer's business.
    FolderItem program = GetPlatform().ExecutableFile();
    FolderItemRef folder = program.Parent();
    if (folder) folder = folder->Parent();
    if (!folder) return;
    GetPlatform().Launch(folder->Child("Resources").Child("Manual.pdf"));
}

}  // namespace vornelt
