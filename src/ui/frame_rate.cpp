// The frame-rate question before every load. The list does not say its rate, so the user
// names it; the window always opens on the PAL row.
#include "document/module1.hpp"
#include "ui/calls.hpp"
#include "ui/windows.hpp"

namespace vornelt {

namespace {

uint64_t g_nextInstance = 1;

struct FrameRateSlot {
    FrameRateWindowState record;
    bool open = false;
};

FrameRateSlot& OpenSlot() {
    static FrameRateSlot slot;
    return slot;
}

FrameRateSlot& DropedSlot() {
    static FrameRateSlot slot;
    return slot;
}

FrameRateWindowState& Make(FrameRateSlot& slot, const char* title, void (*eventOpen)()) {
    if (!slot.open) {
        slot.record = FrameRateWindowState();
        slot.record.Title = title;
        slot.record.Instance = g_nextInstance++;
        slot.open = true;
        eventOpen();
    }
    return slot.record;
}

void EventOpen(FrameRateWindowState& w) {
    Document& m = Module1;
    m.prefDefaultFrameRate = 25.0;
    // Only the PAL row is ever taken; the row follows the preference should it hold another.
    if (m.prefDefaultFrameRate == 30.0) {
        w.PopupMenu1.ListIndex = 0;
        m.frameRateTmp = 30.0;
        m.dropFrameTmp = false;
    } else if (m.prefDefaultFrameRate == 25.0) {
        w.PopupMenu1.ListIndex = 1;
        m.frameRateTmp = 25.0;
        m.dropFrameTmp = false;
    } else if (m.prefDefaultFrameRate == 24.0) {
        w.PopupMenu1.ListIndex = 2;
        m.frameRateTmp = 24.0;
        m.dropFrameTmp = false;
    }
}

void PopupChange(const FrameRateWindowState& w) {
    Document& m = Module1;
    switch (w.PopupMenu1.ListIndex) {
        case 0:
            m.frameRateTmp = 30.0;
            m.dropFrameTmp = false;
            break;
        case 1:
            m.frameRateTmp = 25.0;
            m.dropFrameTmp = false;
            break;
        case 2:
            m.frameRateTmp = 24.0;
            m.dropFrameTmp = false;
            break;
        default:
            break;
    }
}

}  // namespace

FrameRateWindowState& FrameRateWindow() { return Make(OpenSlot(), "Select Frame-Rate", &FrameRateWindow_Event_Open); }
bool FrameRateWindowExists() { return OpenSlot().open; }
void CloseFrameRateWindow() { OpenSlot().open = false; }
void FrameRateWindow_Event_Open() { EventOpen(OpenSlot().record); }
void FrameRateWindow_PopupMenu1_Change() { PopupChange(OpenSlot().record); }
void FrameRateWindow_PushButton1_Action() {
    CloseFrameRateWindow();
    // The open dialog comes next: the rate is named before the file is picked.
    Calls().Open_CMX();
}

FrameRateWindowState& FrameRateWindowIfDroped() {
    return Make(DropedSlot(), "Select Frame-Rate of droped EDL", &FrameRateWindowIfDroped_Event_Open);
}
bool FrameRateWindowIfDropedExists() { return DropedSlot().open; }
void CloseFrameRateWindowIfDroped() { DropedSlot().open = false; }
void FrameRateWindowIfDroped_Event_Open() { EventOpen(DropedSlot().record); }
void FrameRateWindowIfDroped_PopupMenu1_Change() { PopupChange(DropedSlot().record); }
void FrameRateWindowIfDroped_PushButton1_Action() {
    CloseFrameRateWindowIfDroped();
    Calls().FileDropedInEditField();
}

}  // namespace vornelt
