// Placeholder until the window handlers land: the entry-field handlers that the converter
// needs.
#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"
#include "ui/handlers.hpp"
#include "writer/writer.hpp"

namespace vornelt {

bool CheckLegalReelName(std::string_view name) {
    const std::string trimmed(Trim(name));
    MessageDialogSpec d;
    d.Icon = 1;
    d.ActionCaption = "Use " + trimmed;
    d.AlternateVisible = true;
    d.AlternateCaption = "Choose an other Reel-Name";
    d.Message = "Name Conflict! Choose an other Reel-Name.";
    d.Explanation = trimmed + " is a reserved Reel-Name!\r\rOther reserved Reel-Names are: 'AX', 'BL', 'AUX' and 'BLACK'";
    bool reserved = false;
    for (const char* r : {"AX", "BL", "AUX", "BLACK"}) reserved = reserved || EqualsCI(trimmed, r);
    if (!reserved) {
        NewEDL_02();
        return true;
    }
    return GetPlatform().ShowMessageDialog(d) == DialogButton::Action;
}

void EF_ReelName_LostFocus() {
    if (CheckLegalReelName(MainWindow().EF_ReelName.Text()))
        NewEDL_02();
    else
        MainWindow().EF_ReelName.SetText("NEW");
}

void EF_SeqTitle_LostFocus() { NewEDL_02(); }

bool EF_RenderedMovie_KeyDown(std::string_view, int virtualKeyCode) {
    if (virtualKeyCode == keycode::kEnter || virtualKeyCode == keycode::kReturn) {
        Module1.myAbsMovieName = MainWindow().EF_RenderedMovie.Text();
        Module1.myAbsMoviePfad.clear();
        Module1.myAbsMovieFolderItem.reset();
        NewEDL_02();
    }
    return false;
}

}  // namespace vornelt
