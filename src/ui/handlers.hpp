#pragma once
// The handlers of the windows, without a toolkit. They work on the main window state and
// the platform layer only; the desktop application calls them from its widgets, the
// command-line converter calls the few it needs (the entry fields and the reel check).

#include <string>
#include <string_view>

#include "platform/folder_item.hpp"
#include "platform/platform.hpp"

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
void MainWindow_Event_Open();
void Chb_Mirror_Action();
void Chb_RemoveFreezeFrame_Action();
void Chb_RemoveSpeedChanges_Action();
void Chb_TransToDissolve_Action();
void Chb_KeyToDissolve_Action();
void Chb_ComntGenerateNew_Action();
void Chb_A1234_Action();
void PopupTransition_Change();
void Chb_V2_Action();
void Chb_A1_Action();
void Chb_A2_Action();
void Chb_A3_Action();
void Chb_A4_Action();
void Chb_FixKeyDuration_Action();
void Chb_ComntTransition_Action();
void Chb_ComntClipNames_Action();
void Chb_ComntOther_Action();
void BtnSaveEDL_Action();
void BtnSelectMovie_Action();
void BtnOpenEDL_Action();

// ---- entry fields ----
// A key-down handler gets the typed character and the virtual code of the key (keycode::*,
// or kNone) and answers true to swallow the key.
bool EF_ReelName_KeyDown(std::string_view key, int virtualKeyCode);
void EF_ReelName_LostFocus();
bool EF_SeqTitle_KeyDown(std::string_view key, int virtualKeyCode);
void EF_SeqTitle_LostFocus();
bool EF_RenderedMovie_KeyDown(std::string_view key, int virtualKeyCode);
void EF_RenderedMovie_LostFocus();
// True: the name may be used. May show the name-conflict dialog.
bool CheckLegalReelName(std::string_view name);
void SelectMovie();

// ---- opening, dropping, closing ----
// The question on unsaved changes, with its three buttons; the button taken.
DialogButton AskToSaveChanges();
// No item (an empty reference): the dragged item or handed-over document carries no file.
void EditField1_DropObject(const FolderItemRef& item);
// A drag over the text area makes it writable while it stands; answers false to let the
// drag go on. Leaving makes it read-only again; a drop does not.
bool EditField1_DragEnter();
void EditField1_DragExit();
void App_Event_OpenDocument(const FolderItemRef& item);
// True stops the closing (or quitting).
bool MainWindow_Event_CancelClose(bool quitting);

// ---- the application's menu commands; each answers false ----
bool App_FileOpen_Action();
bool App_FileSave_Action();
bool App_FileSaveAs_Action();
bool App_FileSelectMovie_Action();
bool App_HelpHelp_Action();
bool App_About_Action();
void OpenPDFHelp();

}  // namespace vornelt
