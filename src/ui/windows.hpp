#pragma once
// The small windows of the program as records of named values, with their handlers: the
// frame-rate question, the start-up window and the about window. As with the main window,
// the logic reads and writes these records only; the desktop application shows a window for
// each living record and mirrors its values. Each accessor returns the living window and,
// when there is none, makes one and runs its open event.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

// ---- the frame-rate question ----
// FrameRateWindow asks before the open dialog, FrameRateWindowIfDroped for a file already
// known from a drop. Both have the same controls.
struct FrameRateWindowState {
    std::string Title;
    PopupMenu PopupMenu1{{true, true}, 0};
    uint64_t Instance = 0;  // a new number for every window made
};

inline constexpr std::array<std::string_view, 3> kFrameRateRows = {
    "30 fps Non-Drop Frame - NTSC",
    "25 fps Non-Drop Frame - PAL",
    "24 fps Non-Drop Frame - FILM",
};

FrameRateWindowState& FrameRateWindow();
bool FrameRateWindowExists();
void CloseFrameRateWindow();
void FrameRateWindow_Event_Open();
void FrameRateWindow_PopupMenu1_Change();
void FrameRateWindow_PushButton1_Action();

FrameRateWindowState& FrameRateWindowIfDroped();
bool FrameRateWindowIfDropedExists();
void CloseFrameRateWindowIfDroped();
void FrameRateWindowIfDroped_Event_Open();
void FrameRateWindowIfDroped_PopupMenu1_Change();
void FrameRateWindowIfDroped_PushButton1_Action();

// ---- the start-up window ----
struct TimerState {
    enum class Mode { Off, Single, Multiple };
    Mode mode = Mode::Single;
    int Period = 1000;  // milliseconds
    uint64_t Resets = 0;  // counts Reset calls: the window starts the timer anew on each
};

struct StartUpWindowState {
    std::string Title = "Ohne Titel";
    Label ST_ProgramName{"Vornelt"};
    Label ST_Version{"Version:"};
    TimerState Timer1;
    uint64_t Instance = 0;
};

StartUpWindowState& StartUpWindow();
bool StartUpWindowExists();
void CloseStartUpWindow();
void StartUpWindow_Event_Open();
void StartUpWindow_Timer1_Action();

// ---- the about window ----
struct AboutWindow2State {
    std::string Title = "Ohne Titel";
    Label ST_ProgramName{"Vornelt"};
    Label ST_Version{"Version:"};
    MouseCursor Cursor = MouseCursor::StandardPointer;
    uint64_t Instance = 0;
};

AboutWindow2State& AboutWindow2();
bool AboutWindow2Exists();
void CloseAboutWindow2();
void AboutWindow2_Event_Open();
// Each answers as a mouse handler does: true claims the click.
bool AboutWindow2_Event_MouseDown();
bool ST_www_MouseDown();
void ST_www_MouseEnter();
void ST_www_MouseExit();
void ST_www_MouseUp();

// The maker's web site behind the link label, and the label's text.
inline constexpr std::string_view kWebSiteURL = "https://vornelt.example.org";
inline constexpr std::string_view kWebSiteText = "vornelt.example.org";

// "Verion " and the program's major and minor version, as both windows show it.
std::string VersionText();
std::string VersionText(int major, int minor);

// ---- the application ----
// The start of the program: shows the start-up window and marks the document unchanged.
void App_Event_Open();

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

}  // namespace vornelt
