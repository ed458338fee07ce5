// The main window's option handlers. Each takes the new value of its control into the flag
// that the passes and the writer read, then runs the switch of the option and generates the
// whole list anew. None of them looks at whether a list is loaded.
#include "ui/handlers.hpp"
#include "ui/render.hpp"

namespace vornelt {

using namespace ui_detail;

void MainWindow_Event_Open(Desktop& d) {
    // The layout holds place-holders for these three; the window starts with them empty.
    MainWindowState& w = Window(d);
    w.ST_EdlFormat.Text.clear();
    w.ST_FrameRate.Text.clear();
    w.ST_FCM.Text.clear();
}

void Chb_Mirror_Action(Desktop& d) {
    Doc(d).boolMirror = Window(d).Chb_Mirror.Value;
    NewList(d);
}

void Chb_RemoveFreezeFrame_Action(Desktop& d) {
    Doc(d).boolFreezeFrame = Window(d).Chb_RemoveFreezeFrame.Value;
    NewList(d);
}

void Chb_RemoveSpeedChanges_Action(Desktop& d) {
    Doc(d).boolSpeedChange = Window(d).Chb_RemoveSpeedChanges.Value;
    NewList(d);
}

void Chb_TransToDissolve_Action(Desktop& d) {
    // Runs its pass whatever the key box says, and leaves that box alone.
    Doc(d).boolTransToDissolve = Window(d).Chb_TransToDissolve.Value;
    AllWipesToDissolve(Doc(d), Plat(d));
    NewList(d);
}

void Chb_KeyToDissolve_Action(Desktop& d) {
    // Does not look at the key track: after a load with the key track off this box is
    // enabled all the same, and checking it turns keys into dissolves.
    Doc(d).boolKeyToDissolve = Window(d).Chb_KeyToDissolve.Value;
    AllKeysToDissolve(Doc(d), Plat(d));
    NewList(d);
}

void Chb_ComntGenerateNew_Action(Desktop& d) {
    Doc(d).boolGenerateNewComments = Window(d).Chb_ComntGenerateNew.Value;
    NewList(d);
}

void Chb_A1234_Action(Desktop& d) {
    Doc(d).boolA1234 = Window(d).Chb_A1234.Value;
    AllAudioOnOff(Doc(d), Plat(d));
    NewList(d);
}

void PopupTransition_Change(Desktop& d) {
    // The writer reads the row of the popup itself.
    NewList(d);
}

void Chb_V2_Action(Desktop& d) {
    Document& m = Doc(d);
    MainWindowState& w = Window(d);
    m.boolV2 = w.Chb_V2.Value;
    if (m.boolV2) {
        // Its value stays: after an earlier switch-off the user checks it again.
        w.Chb_KeyToDissolve.Enabled = true;
    } else {
        w.Chb_KeyToDissolve.Value = false;
        m.boolKeyToDissolve = false;
        w.Chb_KeyToDissolve.Enabled = false;
    }
    AllKeysToDissolve(m, Plat(d));
    AllKeysOnOff(m, Plat(d));
    NewList(d);
}

// The four single audio boxes lie outside the window and are never enabled; the fix of key
// durations and the three comment kinds are places kept in the layout.
void Chb_A1_Action(Desktop&) {}
void Chb_A2_Action(Desktop&) {}
void Chb_A3_Action(Desktop&) {}
void Chb_A4_Action(Desktop&) {}
void Chb_FixKeyDuration_Action(Desktop&) {}
void Chb_ComntTransition_Action(Desktop&) {}
void Chb_ComntClipNames_Action(Desktop&) {}
void Chb_ComntOther_Action(Desktop&) {}

void BtnSaveEDL_Action(Desktop& d) {
    if (!Doc(d).mySavedAbsDateiName.empty())
        SaveOhneDialog(d);
    else
        SaveAsDialog(d);
}

void BtnSelectMovie_Action(Desktop& d) { SelectMovie(d); }

namespace {

struct NamedHandler {
    std::string_view control;
    Handler handler;
};

constexpr NamedHandler kCheckBoxHandlers[] = {
    {"Chb_Mirror", Chb_Mirror_Action},
    {"Chb_FixKeyDuration", Chb_FixKeyDuration_Action},
    {"Chb_V2", Chb_V2_Action},
    {"Chb_A1234", Chb_A1234_Action},
    {"Chb_A1", Chb_A1_Action},
    {"Chb_A2", Chb_A2_Action},
    {"Chb_A3", Chb_A3_Action},
    {"Chb_A4", Chb_A4_Action},
    {"Chb_RemoveFreezeFrame", Chb_RemoveFreezeFrame_Action},
    {"Chb_RemoveSpeedChanges", Chb_RemoveSpeedChanges_Action},
    {"Chb_TransToDissolve", Chb_TransToDissolve_Action},
    {"Chb_KeyToDissolve", Chb_KeyToDissolve_Action},
    {"Chb_ComntGenerateNew", Chb_ComntGenerateNew_Action},
    {"Chb_ComntTransition", Chb_ComntTransition_Action},
    {"Chb_ComntClipNames", Chb_ComntClipNames_Action},
    {"Chb_ComntOther", Chb_ComntOther_Action},
};

constexpr NamedHandler kPopupHandlers[] = {
    {"PopupTransition", PopupTransition_Change},
};

template <size_t N>
Handler Find(const NamedHandler (&table)[N], std::string_view control) {
    for (const NamedHandler& h : table)
        if (h.control == control) return h.handler;
    return nullptr;
}

}  // namespace

Handler CheckBoxHandler(std::string_view control) { return Find(kCheckBoxHandlers, control); }
Handler PopupHandler(std::string_view control) { return Find(kPopupHandlers, control); }

}  // namespace vornelt
