// The main window's option handlers. Each takes the new value of its control into the flag
// that the passes and the writer read, then runs the switch of the option and generates the
// whole list anew. None of them looks at whether a list is loaded.
#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "ui/calls.hpp"
#include "ui/handlers.hpp"

namespace vornelt {

void MainWindow_Event_Open() {
    // The layout holds place-holders for these three; the window starts with them empty.
    MainWindowState& w = MainWindow();
    w.ST_EdlFormat.Text.clear();
    w.ST_FrameRate.Text.clear();
    w.ST_FCM.Text.clear();
}

void Chb_Mirror_Action() {
    Module1.boolMirror = MainWindow().Chb_Mirror.Value;
    Calls().NewEDL_02();
}

void Chb_RemoveFreezeFrame_Action() {
    Module1.boolFreezeFrame = MainWindow().Chb_RemoveFreezeFrame.Value;
    Calls().NewEDL_02();
}

void Chb_RemoveSpeedChanges_Action() {
    Module1.boolSpeedChange = MainWindow().Chb_RemoveSpeedChanges.Value;
    Calls().NewEDL_02();
}

void Chb_TransToDissolve_Action() {
    // Runs its pass whatever the key box says, and leaves that box alone.
    Module1.boolTransToDissolve = MainWindow().Chb_TransToDissolve.Value;
    Calls().AllWipesToDissolve();
    Calls().NewEDL_02();
}

void Chb_KeyToDissolve_Action() {
    // Does not look at the key track: after a load with the key track off this box is
    // enabled all the same, and checking it turns keys into dissolves.
    Module1.boolKeyToDissolve = MainWindow().Chb_KeyToDissolve.Value;
    Calls().AllKeysToDissolve();
    Calls().NewEDL_02();
}

void Chb_ComntGenerateNew_Action() {
    Module1.boolGenerateNewComments = MainWindow().Chb_ComntGenerateNew.Value;
    Calls().NewEDL_02();
}

void Chb_A1234_Action() {
    Module1.boolA1234 = MainWindow().Chb_A1234.Value;
    Calls().AllAudioOnOff();
    Calls().NewEDL_02();
}

void PopupTransition_Change() {
    // The writer reads the row of the popup itself.
    Calls().NewEDL_02();
}

void Chb_V2_Action() {
    Document& m = Module1;
    MainWindowState& w = MainWindow();
    m.boolV2 = w.Chb_V2.Value;
    if (m.boolV2) {
        // Its value stays: after an earlier switch-off the user checks it again.
        w.Chb_KeyToDissolve.Enabled = true;
    } else {
        w.Chb_KeyToDissolve.Value = false;
        m.boolKeyToDissolve = false;
        w.Chb_KeyToDissolve.Enabled = false;
    }
    Calls().AllKeysToDissolve();
    Calls().AllKeysOnOff();
    Calls().NewEDL_02();
}

// The four single audio boxes lie outside the window and are never enabled; the fix of key
// durations and the three comment kinds are places kept in the layout.
void Chb_A1_Action() {}
void Chb_A2_Action() {}
void Chb_A3_Action() {}
void Chb_A4_Action() {}
void Chb_FixKeyDuration_Action() {}
void Chb_ComntTransition_Action() {}
void Chb_ComntClipNames_Action() {}
void Chb_ComntOther_Action() {}

void BtnSaveEDL_Action() {
    if (!Module1.mySavedAbsDateiName.empty())
        Calls().SaveOhneDialog();
    else
        Calls().SaveAsDialog();
}

void BtnSelectMovie_Action() { SelectMovie(); }

}  // namespace vornelt
