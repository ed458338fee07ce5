// The three entry fields of the main window: the new reel name, the sequence title and the
// rendered movie. Their change handling (capitals, caret kept) runs with every new text and
// lives with the window state; here stand the keys, leaving a field, the check of reserved
// reel names and the choice of a movie.
#include <array>

#include "text/text.hpp"
#include "ui/handlers.hpp"
#include "ui/render.hpp"
#include "vocabulary/vocabulary.hpp"

namespace vornelt {

using namespace ui_detail;

namespace {

bool IsReturnOrEnter(int code) { return code == keycode::kEnter || code == keycode::kReturn; }

// One of "0" to "9" or "A" to "Z"; text compares without regard to case, so "a" is one.
bool IsDigitOrLetter(std::string_view key) {
    if (key.size() != 1) return false;
    const char c = key[0];
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

constexpr std::array<int, 7> kEditingKeys = {keycode::kLeftArrow, keycode::kRightArrow,    keycode::kDownArrow,
                                             keycode::kUpArrow,   keycode::kForwardDelete, keycode::kDelete,
                                             keycode::kTab};

// The movie name typed in the field replaces one chosen through the dialog, path and all.
void TakeMovieNameFromField(Desktop& d) {
    Document& m = Doc(d);
    m.myAbsMovieName = Window(d).EF_RenderedMovie.Text();
    m.myAbsMoviePfad.clear();
    m.myAbsMovieFolderItem.reset();
}

}  // namespace

void EF_ReelName_TextChange(Desktop&) {}

void EF_SeqTitle_TextChange(Desktop&) {}

void EF_RenderedMovie_TextChange(Desktop& d) { NewList(d); }

void SetFieldText(Desktop& d, EntryField& field, std::string_view text) {
    field.SetText(text);
    switch (field.FieldKind()) {
        case EntryField::Kind::ReelName: EF_ReelName_TextChange(d); break;
        case EntryField::Kind::SeqTitle: EF_SeqTitle_TextChange(d); break;
        case EntryField::Kind::RenderedMovie: EF_RenderedMovie_TextChange(d); break;
    }
}

bool EF_ReelName_KeyDown(Desktop& d, std::string_view key, int virtualKeyCode) {
    MainWindowState& w = Window(d);
    // A GVG list has room for six characters in its reel field, CMX for eight.
    w.EF_ReelName.LimitText = Doc(d).IsGrassValley ? 6 : 8;
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

void EF_ReelName_LostFocus(Desktop& d) {
    MainWindowState& w = Window(d);
    if (CheckLegalReelName(d, w.EF_ReelName.Text()))
        NewList(d);
    else
        // The list keeps its old reel name until the next change.
        SetFieldText(d, w.EF_ReelName, "NEW");
}

bool EF_SeqTitle_KeyDown(Desktop& d, std::string_view, int virtualKeyCode) {
    if (!IsReturnOrEnter(virtualKeyCode)) return false;
    NewList(d);
    return false;
}

void EF_SeqTitle_LostFocus(Desktop& d) { NewList(d); }

bool EF_RenderedMovie_KeyDown(Desktop& d, std::string_view, int virtualKeyCode) {
    if (!IsReturnOrEnter(virtualKeyCode)) return false;
    TakeMovieNameFromField(d);
    NewList(d);
    return false;
}

void EF_RenderedMovie_LostFocus(Desktop& d) {
    TakeMovieNameFromField(d);
    NewList(d);
}

bool CheckLegalReelName(Desktop& desktop, std::string_view name) {
    const std::string trimmed(Trim(name));
    MessageDialogRequest d;
    d.Icon = 1;
    d.ActionCaption = "Use " + trimmed;
    d.AlternateVisible = true;
    d.AlternateCaption = "Choose an other Reel-Name";
    d.Message = "Name Conflict! Choose an other Reel-Name.";
    d.Explanation =
        trimmed + " is a reserved Reel-Name!\r\rOther reserved Reel-Names are: 'AX', 'BL', 'AUX' and 'BLACK'";
    if (!IsReservedReel(trimmed)) {
        // The caller generates once more; the second run changes nothing.
        NewList(desktop);
        return true;
    }
    return Plat(desktop).ShowMessageDialog(d) == DialogButton::Action;
}

void SelectMovie(Desktop& d) {
    Document& m = Doc(d);
    MainWindowState& w = Window(d);
    FolderItemRef file = Plat(d).ShowOpenDialog({"Select Movie", "Select the rendered QuickTime Movie", "movie"});
    if (file) {
        w.Cursor = MouseCursor::Wait;
        m.myAbsMoviePfad = file->AbsolutePath();
        m.myAbsMovieFolderItem = file->Parent();
        m.myAbsMovieName = file->Name();
        // The field's change handling folds it to capitals and generates the list.
        SetFieldText(d, w.EF_RenderedMovie, m.myAbsMovieName);
        w.Cursor = MouseCursor::StandardPointer;
    } else {
        // A name chosen earlier is given up; its path and folder stay.
        m.myAbsMovieName = "MASTER.MOV";
        SetFieldText(d, w.EF_RenderedMovie, m.myAbsMovieName);
    }
    w.Cursor = MouseCursor::StandardPointer;
}

}  // namespace vornelt
