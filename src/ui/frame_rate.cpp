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
    // Always the PAL row; the row follows the preference should it hold another rate.
    m.prefDefaultFrameRate = FrameRate();
    w.PopupMenu1.ListIndex = int(m.prefDefaultFrameRate.Index());
    m.frameRateTmp = m.prefDefaultFrameRate;
    m.dropFrameTmp = m.frameRateTmp.DropFrame();
}

void PopupChange(Document& m, const FrameRateWindowState& w) {
    // A row outside the rates changes nothing.
    const std::span<const FrameRate> rates = FrameRate::All();
    if (w.PopupMenu1.ListIndex < 0 || size_t(w.PopupMenu1.ListIndex) >= rates.size()) return;
    m.frameRateTmp = rates[size_t(w.PopupMenu1.ListIndex)];
    m.dropFrameTmp = m.frameRateTmp.DropFrame();
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
