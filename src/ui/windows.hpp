#pragma once
// The program on the desktop: its one session, and the small windows beside the main window
// as records of named values with their handlers: the frame-rate question, the start-up
// window and the about window. As with the main window, the logic reads and writes these
// records only; the desktop application shows a window for each living record and mirrors
// its values. Each accessor returns the living window and, when there is none, makes one and
// runs its open event.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "document/window_state.hpp"
#include "platform/platform.hpp"
#include "session/session.hpp"

namespace vornelt {

// ---- the frame-rate question ----
// FrameRateWindow asks before the open dialog, FrameRateWindowIfDroped for a file already
// known from a drop. Both have the same controls.
struct FrameRateWindowState {
    std::string Title;
    PopupMenu PopupMenu1{{true, true}, 0};
    uint64_t Instance = 0;  // a new number for every window made
};

struct Desktop;

FrameRateWindowState& FrameRateWindow(Desktop& d);
bool FrameRateWindowExists(const Desktop& d);
void CloseFrameRateWindow(Desktop& d);
void FrameRateWindow_Event_Open(Desktop& d);
void FrameRateWindow_PopupMenu1_Change(Desktop& d);
void FrameRateWindow_PushButton1_Action(Desktop& d);

FrameRateWindowState& FrameRateWindowIfDroped(Desktop& d);
bool FrameRateWindowIfDropedExists(const Desktop& d);
void CloseFrameRateWindowIfDroped(Desktop& d);
void FrameRateWindowIfDroped_Event_Open(Desktop& d);
void FrameRateWindowIfDroped_PopupMenu1_Change(Desktop& d);
void FrameRateWindowIfDroped_PushButton1_Action(Desktop& d);

// ---- the start-up window ----
struct TimerState {
    enum class Mode { Off, Single, Multiple };
    Mode mode = Mode::Single;
    int Period = 1000;    // milliseconds
    uint64_t Resets = 0;  // counts Reset calls: the window starts the timer anew on each
};

struct StartUpWindowState {
    std::string Title = "Ohne Titel";
    Label ST_ProgramName{"Vornelt"};
    Label ST_Version{"Version:"};
    TimerState Timer1;
    uint64_t Instance = 0;
};

StartUpWindowState& StartUpWindow(Desktop& d);
bool StartUpWindowExists(const Desktop& d);
void CloseStartUpWindow(Desktop& d);
void StartUpWindow_Event_Open(Desktop& d);
void StartUpWindow_Timer1_Action(Desktop& d);

// ---- the about window ----
struct AboutWindow2State {
    std::string Title = "Ohne Titel";
    Label ST_ProgramName{"Vornelt"};
    Label ST_Version{"Version:"};
    MouseCursor Cursor = MouseCursor::StandardPointer;
    uint64_t Instance = 0;
};

AboutWindow2State& AboutWindow2(Desktop& d);
bool AboutWindow2Exists(const Desktop& d);
void CloseAboutWindow2(Desktop& d);
void AboutWindow2_Event_Open(Desktop& d);
// Each answers as a mouse handler does: true claims the click.
bool AboutWindow2_Event_MouseDown(Desktop& d);
bool ST_www_MouseDown(Desktop& d);
void ST_www_MouseEnter(Desktop& d);
void ST_www_MouseExit(Desktop& d);
void ST_www_MouseUp(Desktop& d);

// The maker's web site behind the link label, and the label's text.
inline constexpr std::string_view kWebSiteURL = "https://vornelt.example.org";
inline constexpr std::string_view kWebSiteText = "vornelt.example.org";

// "Verion " and the program's major and minor version, as both windows show it; the
// misspelling is the window's own, kept on purpose.
std::string VersionText();
std::string VersionText(int major, int minor);

// ---- the application ----
// The start of the program: shows the start-up window and marks the document unchanged.
void App_Event_Open(Desktop& d);

// The two file types that the dialogs and the drop filter refer to by name.
struct FileType {
    std::string_view Name;
    std::string_view Extensions;  // ".mov;.avi"
    std::string_view MacType;
    std::string_view MacCreator;
};
struct FileTypeSet {
    FileType pText{"text/plain", ".edl", "TEXT", "VORN"};
    FileType pMovie{"movie", ".mov;.avi", "MooV", "????"};
};
inline constexpr FileTypeSet FileTypes1{};
// Whether a file of this name belongs to the type (by its extension, ignoring case).
bool FileTypeAccepts(const FileType& type, std::string_view fileName);

// A small window's record while it stands.
template <typename Record>
struct WindowSlot {
    Record record;
    bool open = false;
};

// The program on the desktop: the one session of the main window, and the small windows.
struct Desktop {
    // The main window's open event runs whenever the session makes the window.
    explicit Desktop(Platform& platform);
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    Session session;
    WindowSlot<FrameRateWindowState> frameRate;
    WindowSlot<FrameRateWindowState> frameRateIfDroped;
    WindowSlot<StartUpWindowState> startUp;
    WindowSlot<AboutWindow2State> about;
    uint64_t nextInstance = 1;  // every window made gets a new number
};

}  // namespace vornelt
