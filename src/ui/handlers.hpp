#pragma once
// The handlers of the windows, without a toolkit. Each works on the desktop it is handed:
// its session (document, main window state, platform) and its small windows. The desktop
// application calls them from its widgets.

#include <string>
#include <string_view>

#include "platform/folder_item.hpp"
#include "platform/platform.hpp"
#include "ui/windows.hpp"

namespace vornelt {

// The platform's published virtual key codes that the entry fields test.
namespace keycode {
inline constexpr int kLeftArrow = 123;
inline constexpr int kRightArrow = 124;
inline constexpr int kDownArrow = 125;
inline constexpr int kUpArrow = 126;
inline constexpr int kForwardDelete = 117;
inline constexpr int kDelete = 51;
inline constexpr int kTab = 48;
inline constexpr int kEnter = 76;
inline constexpr int kReturn = 36;
inline constexpr int kNone = -1;
}  // namespace keycode

// ---- main window: option handlers ----
// Each takes its control's new value into the flag, runs the option's switch and renders the
// list anew.
void MainWindow_Event_Open(Desktop& d);
void Chb_Mirror_Action(Desktop& d);
void Chb_RemoveFreezeFrame_Action(Desktop& d);
void Chb_RemoveSpeedChanges_Action(Desktop& d);
void Chb_TransToDissolve_Action(Desktop& d);
void Chb_KeyToDissolve_Action(Desktop& d);
void Chb_ComntGenerateNew_Action(Desktop& d);
void Chb_A1234_Action(Desktop& d);
void PopupTransition_Change(Desktop& d);
void Chb_V2_Action(Desktop& d);
void Chb_A1_Action(Desktop& d);
void Chb_A2_Action(Desktop& d);
void Chb_A3_Action(Desktop& d);
void Chb_A4_Action(Desktop& d);
void Chb_FixKeyDuration_Action(Desktop& d);
void Chb_ComntTransition_Action(Desktop& d);
void Chb_ComntClipNames_Action(Desktop& d);
void Chb_ComntOther_Action(Desktop& d);
void BtnSaveEDL_Action(Desktop& d);
void BtnSelectMovie_Action(Desktop& d);
void BtnOpenEDL_Action(Desktop& d);

// The handler of a check box or a popup of the main window, by the control's name
// ("Chb_Mirror"); null for a control without one. A window that builds its controls from a
// table finds their handlers here.
using Handler = void (*)(Desktop&);
Handler CheckBoxHandler(std::string_view control);
Handler PopupHandler(std::string_view control);

// ---- entry fields ----
// The change handling of a field that the user or a handler has written: capitals with the
// caret kept (done by the field itself), and for the movie field a new list.
void EF_ReelName_TextChange(Desktop& d);
void EF_SeqTitle_TextChange(Desktop& d);
void EF_RenderedMovie_TextChange(Desktop& d);
// Writes a field's text and runs its change handling.
void SetFieldText(Desktop& d, EntryField& field, std::string_view text);
// A key-down handler gets the typed character and the virtual code of the key (keycode::*,
// or kNone) and answers true to swallow the key.
bool EF_ReelName_KeyDown(Desktop& d, std::string_view key, int virtualKeyCode);
void EF_ReelName_LostFocus(Desktop& d);
bool EF_SeqTitle_KeyDown(Desktop& d, std::string_view key, int virtualKeyCode);
void EF_SeqTitle_LostFocus(Desktop& d);
bool EF_RenderedMovie_KeyDown(Desktop& d, std::string_view key, int virtualKeyCode);
void EF_RenderedMovie_LostFocus(Desktop& d);
// True: the name may be used. May show the name-conflict dialog.
bool CheckLegalReelName(Desktop& d, std::string_view name);
void SelectMovie(Desktop& d);

// ---- opening, dropping, closing ----
// The question on unsaved changes, with its three buttons; the button taken.
DialogButton AskToSaveChanges(Desktop& d);
// No item (an empty reference): the dragged item or handed-over document carries no file.
void EditField1_DropObject(Desktop& d, const FolderItemRef& item);
// A drag over the text area makes it writable while it stands; answers false to let the
// drag go on. Leaving makes it read-only again; a drop does not.
bool EditField1_DragEnter(Desktop& d);
void EditField1_DragExit(Desktop& d);
void App_Event_OpenDocument(Desktop& d, const FolderItemRef& item);
// True stops the closing (or quitting).
bool MainWindow_Event_CancelClose(Desktop& d, bool quitting);

// ---- the application's menu commands; each answers false ----
bool App_FileOpen_Action(Desktop& d);
bool App_FileSave_Action(Desktop& d);
bool App_FileSaveAs_Action(Desktop& d);
bool App_FileSelectMovie_Action(Desktop& d);
bool App_HelpHelp_Action(Desktop& d);
bool App_About_Action(Desktop& d);
void OpenPDFHelp(Desktop& d);

// ---- saving ----
// Asks for a file and saves the list to it.
void SaveAsDialog(Desktop& d);
// Saves the list to the file of the last save, or asks when that file has gone.
void SaveOhneDialog(Desktop& d);

}  // namespace vornelt
