// The frame-rate question before every load. The list does not say its rate, so the user
// names it; the window always opens on the PAL row.
#include "session/load.hpp"
#include "ui/handlers.hpp"
#include "ui/render.hpp"

namespace vornelt {

using namespace ui_detail;

namespace {

FrameRateWindowState& Make(Desktop& d, WindowSlot<FrameRateWindowState>& slot, const char* title,
                           void (*eventOpen)(Desktop&)) {
    if (!slot.open) {
        slot.record = FrameRateWindowState();
        slot.record.Title = title;
        slot.record.Instance = d.nextInstance++;
        slot.open = true;
        eventOpen(d);
    }
    return slot.record;
}

void EventOpen(Document& m, FrameRateWindowState& w) {
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

void PopupChange(Document& m, const FrameRateWindowState& w) {
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
        default: break;
    }
}

}  // namespace

FrameRateWindowState& FrameRateWindow(Desktop& d) {
    return Make(d, d.frameRate, "Select Frame-Rate", &FrameRateWindow_Event_Open);
}
bool FrameRateWindowExists(const Desktop& d) { return d.frameRate.open; }
void CloseFrameRateWindow(Desktop& d) { d.frameRate.open = false; }
void FrameRateWindow_Event_Open(Desktop& d) { EventOpen(Doc(d), d.frameRate.record); }
void FrameRateWindow_PopupMenu1_Change(Desktop& d) { PopupChange(Doc(d), d.frameRate.record); }
void FrameRateWindow_PushButton1_Action(Desktop& d) {
    CloseFrameRateWindow(d);
    // The open dialog comes next: the rate is named before the file is picked.
    Open_CMX(d.session);
}

FrameRateWindowState& FrameRateWindowIfDroped(Desktop& d) {
    return Make(d, d.frameRateIfDroped, "Select Frame-Rate of droped EDL", &FrameRateWindowIfDroped_Event_Open);
}
bool FrameRateWindowIfDropedExists(const Desktop& d) { return d.frameRateIfDroped.open; }
void CloseFrameRateWindowIfDroped(Desktop& d) { d.frameRateIfDroped.open = false; }
void FrameRateWindowIfDroped_Event_Open(Desktop& d) { EventOpen(Doc(d), d.frameRateIfDroped.record); }
void FrameRateWindowIfDroped_PopupMenu1_Change(Desktop& d) { PopupChange(Doc(d), d.frameRateIfDroped.record); }
void FrameRateWindowIfDroped_PushButton1_Action(Desktop& d) {
    CloseFrameRateWindowIfDroped(d);
    FileDropedInEditField(d.session);
}

}  // namespace vornelt
