// The three entry fields of the main window: the new reel name, the sequence title and the
// rendered movie. Their change handling (capitals, caret kept) runs with every new text and
// lives with the window state; here stand the keys, leaving a field, the check of reserved
// reel names and the choice of a movie.
#include <array>

#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"
#include "ui/calls.hpp"
#include "ui/handlers.hpp"

namespace vornelt {

namespace {

bool IsReturnOrEnter(int code) { return code == keycode::kEnter || code == keycode::kReturn; }

// One of "0" to "9" or "A" to "Z"; text compares without regard to case, so "a" is one.
bool IsDigitOrLetter(std::string_view key) {
    if (key.size() != 1) return false;
    const char c = key[0];
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr std::array<int, 7> kEditingKeys = {keycode::kLeftArrow, keycode::kRightArrow, keycode::kDownArrow,
                                             keycode::kUpArrow,   keycode::kForwardDelete, keycode::kDelete,
                                             keycode::kTab};

// The movie name typed in the field replaces one chosen through the dialog, path and all.
void TakeMovieNameFromField() {
    Document& m = Module1;
    m.myAbsMovieName = MainWindow().EF_RenderedMovie.Text();
    m.myAbsMoviePfad.clear();
    m.myAbsMovieFolderItem.reset();
}

// The reels that a list keeps for black and the auxiliary source.
bool IsReservedReelName(std::string_view name) {
    for (std::string_view reel : {"AX", "BL", "AUX", "BLACK"})
        if (EqualsCI(name, reel)) return true;
    return false;
}

}  // namespace

bool EF_ReelName_KeyDown(std::string_view key, int virtualKeyCode) {
    MainWindowState& w = MainWindow();
    // A GVG list has room for six characters in its reel field, CMX for eight.
    w.EF_ReelName.LimitText = Module1.IsGrassValley ? 6 : 8;
    if (IsDigitOrLetter(key)) return false;
    for (int code : kEditingKeys)
        if (virtualKeyCode == code) return false;
    if (IsReturnOrEnter(virtualKeyCode)) {
        // Leaving the field runs its check and the new list.
        w.Focus = "EF_SeqTitle";
        return false;
    }
    // Blanks, punctuation and accented letters never reach the field.
    return true;
}

void EF_ReelName_LostFocus() {
    MainWindowState& w = MainWindow();
    if (CheckLegalReelName(w.EF_ReelName.Text()))
        Calls().NewEDL_02();
    else
        // The list keeps its old reel name until the next change.
        w.EF_ReelName.SetText("NEW");
}

bool EF_SeqTitle_KeyDown(std::string_view, int virtualKeyCode) {
    if (!IsReturnOrEnter(virtualKeyCode)) return false;
    Calls().NewEDL_02();
    return false;
}

void EF_SeqTitle_LostFocus() { Calls().NewEDL_02(); }

bool EF_RenderedMovie_KeyDown(std::string_view, int virtualKeyCode) {
    if (!IsReturnOrEnter(virtualKeyCode)) return false;
    TakeMovieNameFromField();
    Calls().NewEDL_02();
    return false;
}

void EF_RenderedMovie_LostFocus() {
    TakeMovieNameFromField();
    Calls().NewEDL_02();
}

bool CheckLegalReelName(std::string_view name) {
    const std::string trimmed(Trim(name));
    MessageDialogSpec d;
    d.Icon = 1;
    d.ActionCaption = "Use " + trimmed;
    d.AlternateVisible = true;
    d.AlternateCaption = "Choose an other Reel-Name";
    d.Message = "Name Conflict! Choose an other Reel-Name.";
    d.Explanation = trimmed + " is a reserved Reel-Name!\r\rOther reserved Reel-Names are: 'AX', 'BL', 'AUX' and 'BLACK'";
    if (!IsReservedReelName(trimmed)) {
        // The caller generates once more; the second run changes nothing.
        Calls().NewEDL_02();
        return true;
    }
    return GetPlatform().ShowMessageDialog(d) == DialogButton::Action;
}

void SelectMovie() {
    Document& m = Module1;
    FolderItemRef file = GetPlatform().ShowOpenDialog({"Select Movie", "Select the rendered QuickTime Movie", "movie"});
    if (file) {
        MainWindow().Cursor = MouseCursor::Wait;
        m.myAbsMoviePfad = file->AbsolutePath();
        m.myAbsMovieFolderItem = file->Parent();
        m.myAbsMovieName = file->Name();
        // The field's change handling folds it to capitals and generates the list.
        MainWindow().EF_RenderedMovie.SetText(m.myAbsMovieName);
        MainWindow().Cursor = MouseCursor::StandardPointer;
    } else {
        // A name chosen earlier is given up; its path and folder stay.
        m.myAbsMovieName = "MASTER.MOV";
        MainWindow().EF_RenderedMovie.SetText(m.myAbsMovieName);
    }
    MainWindow().Cursor = MouseCursor::StandardPointer;
}

}  // namespace vornelt
