// The page's way into Vornelt: the entry points its script calls. Each runs the window's own
// handler on the one desktop of the page, as the desktop application does from its widgets;
// the script then reads the state back (web_state) and mirrors it. The controls of the options
// are found by the names in the options table, which the script reads from web_tables.
#include <emscripten.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "ui/handlers.hpp"
#include "ui/what_changed.hpp"
#include "ui/windows.hpp"
#include "vornelt/frame_rate.hpp"
#include "vornelt/options.hpp"
#include "web/json.hpp"
#include "web/web_platform.hpp"

namespace vornelt::web {
namespace {

std::unique_ptr<WebPlatform> thePlatform;
std::unique_ptr<Desktop> theDesktop;
Json out;  // the text of the last answer, valid until the next call

Desktop& D() { return *theDesktop; }
// The desktop for a handler the page calls. The call comes from the browser's event loop,
// which has just drawn the page: the time to the next serve counts from here, so a short
// handler never gives the browser a turn it does not need.
Desktop& Handling() {
    thePlatform->Served();
    return *theDesktop;
}
MainWindowState& W() { return D().session.MainWindow(); }

// The list the text area shows, and where each of its lines begins.
struct ShownList {
    SharedText text;
    std::vector<uint32_t> starts;
    int64_t version = 0;
};
ShownList shown;

void IndexShownList() {
    const SharedText& text = W().EditField1.Text;
    if (text == shown.text) return;
    shown.text = text;
    ++shown.version;
    shown.starts.clear();
    const std::string& s = text ? *text : std::string();
    if (s.empty()) return;
    shown.starts.push_back(0);
    for (const char* p = s.data(); (p = static_cast<const char*>(memchr(p, '\r', size_t(s.data() + s.size() - p))));) {
        ++p;
        if (p == s.data() + s.size()) break;
        shown.starts.push_back(uint32_t(p - s.data()));
    }
}

// The report as What Changed shows it, made anew for each new list.
struct ShownReport {
    std::weak_ptr<const std::string> list;
    ReportView view;
    std::vector<WhatChangedGroup> groups;
    WrittenLines lines;
};
ShownReport report;

void ViewTheReport() {
    const Document& m = D().session.document;
    if (!report.list.expired() && report.list.lock() == m.finalCMXString && report.view.document) return;
    report.list = m.finalCMXString;
    report.view = ViewReport(m, ReportLines::WhenShown);
    report.groups = WhatChangedGroups(report.view);
    report.lines = WrittenLines(m);
}

const char* Answer() { return out.Text().c_str(); }

void ControlJson(Json& j, const vornelt::Control& c) {
    j.Key("enabled").Bool(c.Enabled);
    j.Key("visible").Bool(c.Visible);
}

Handler CommandHandler(std::string_view name) {
    struct Named {
        std::string_view name;
        Handler handler;
    };
    static constexpr Named kCommands[] = {
        {"BtnOpenEDL", BtnOpenEDL_Action},
        {"BtnSaveEDL", BtnSaveEDL_Action},
        {"BtnSelectMovie", BtnSelectMovie_Action},
        {"FileOpen", [](Desktop& d) { App_FileOpen_Action(d); }},
        {"FileSave", [](Desktop& d) { App_FileSave_Action(d); }},
        {"FileSaveAs", [](Desktop& d) { App_FileSaveAs_Action(d); }},
        {"FileSelectMovie", [](Desktop& d) { App_FileSelectMovie_Action(d); }},
        {"About", [](Desktop& d) { App_About_Action(d); }},
        {"AboutWindow2", [](Desktop& d) { AboutWindow2_Event_MouseDown(d); }},
        {"ST_www_MouseEnter", ST_www_MouseEnter},
        {"ST_www_MouseExit", ST_www_MouseExit},
        {"ST_www_MouseUp",
         [](Desktop& d) {
             if (ST_www_MouseDown(d)) ST_www_MouseUp(d);
         }},
        {"EditField1_DragEnter", [](Desktop& d) { EditField1_DragEnter(d); }},
        {"EditField1_DragExit", EditField1_DragExit},
    };
    for (const Named& c : kCommands)
        if (c.name == name) return c.handler;
    return nullptr;
}

void FrameRateWindowJson(Json& j, bool droped) {
    Desktop& d = D();
    const bool exists = droped ? FrameRateWindowIfDropedExists(d) : FrameRateWindowExists(d);
    if (!exists) return;
    const FrameRateWindowState& w = droped ? FrameRateWindowIfDroped(d) : FrameRateWindow(d);
    j.Key("frameRate").Open('{');
    j.Key("droped").Bool(droped);
    j.Key("title").String(w.Title);
    j.Key("row").Number(w.PopupMenu1.ListIndex);
    j.Key("instance").Number(int64_t(w.Instance));
    j.Close('}');
}

}  // namespace
}  // namespace vornelt::web

using namespace vornelt;
using namespace vornelt::web;

extern "C" {

// The tables the page builds its controls from: the options, the frame rates, the file types.
EMSCRIPTEN_KEEPALIVE const char* web_tables() {
    out.Clear();
    out.Open('{');
    out.Key("options").Open('[');
    for (const Option& o : kOptions) {
        out.Open('{');
        out.Key("kind").String(o.kind == Option::Kind::Switch   ? "switch"
                               : o.kind == Option::Kind::Choice ? "choice"
                                                                : "text");
        out.Key("name").String(o.name);
        out.Key("offName").String(o.offName);
        out.Key("on").Bool(o.on);
        out.Key("defaultRow").Number(o.defaultChoice);
        out.Key("choices").Open('[');
        for (std::string_view choice : o.choices) out.String(choice);
        out.Close(']');
        out.Key("control").String(o.control);
        out.Key("caption").String(o.caption);
        out.Key("box").String(o.box);
        out.Key("tab").Number(o.tab);
        out.Key("help").String(o.help);
        out.Key("rows").Open('[');
        for (std::string_view row : o.choiceCaptions) out.String(row);
        out.Close(']');
        out.Close('}');
    }
    out.Close(']');
    out.Key("rates").Open('[');
    for (const FrameRate rate : FrameRate::All()) out.String(rate.Label());
    out.Close(']');
    out.Key("listExtensions").String(FileTypes1.pText.Extensions);
    out.Key("movieExtensions").String(FileTypes1.pMovie.Extensions);
    out.Key("version").String(VersionText());
    out.Key("webSite").String(kWebSiteText);
    out.Close('}');
    return Answer();
}

// The start of the program. The page has no start-up window to wait for: the main window
// comes at once.
EMSCRIPTEN_KEEPALIVE void web_start() {
    thePlatform = std::make_unique<WebPlatform>();
    theDesktop = std::make_unique<Desktop>(*thePlatform);
    App_Event_Open(Handling());
    StartUpWindow_Timer1_Action(Handling());
}

// The state of every window, for the page to mirror.
EMSCRIPTEN_KEEPALIVE const char* web_state() {
    Desktop& d = D();
    MainWindowState& w = W();
    const Document& m = d.session.document;
    IndexShownList();
    out.Clear();
    out.Open('{');
    out.Key("title").String(w.Title);
    out.Key("modified").Bool(m.isModified);
    out.Key("loaded").Bool(m.dbCreated);
    out.Key("wait").Bool(w.Cursor == MouseCursor::Wait);
    out.Key("focus").String(w.Focus);
    out.Key("cover").Bool(w.Canvas2.Visible);
    out.Key("controls").Open('{');
    for (const Option& o : kOptions) {
        out.Key(o.control).Open('{');
        if (CheckBox* box = CheckBoxNamed(w, o.control)) {
            ControlJson(out, *box);
            out.Key("value").Bool(box->Value);
        } else if (PopupMenu* popup = PopupNamed(w, o.control)) {
            ControlJson(out, *popup);
            out.Key("row").Number(popup->ListIndex);
        } else if (EntryField* field = EntryFieldNamed(w, o.control)) {
            ControlJson(out, *field);
            out.Key("text").String(field->Text());
            out.Key("caret").Number(field->SelStart);
            out.Key("limit").Number(field->LimitText);
        }
        out.Close('}');
    }
    for (auto [name, button] : {std::pair<const char*, const PushButton*>{"BtnOpenEDL", &w.BtnOpenEDL},
                                {"BtnSaveEDL", &w.BtnSaveEDL},
                                {"BtnSelectMovie", &w.BtnSelectMovie}}) {
        out.Key(name).Open('{');
        ControlJson(out, *button);
        out.Close('}');
    }
    out.Close('}');
    out.Key("labels").Open('{');
    out.Key("ST_EdlFormat").String(w.ST_EdlFormat.Text);
    out.Key("ST_FrameRate").String(w.ST_FrameRate.Text);
    out.Key("ST_FCM").String(w.ST_FCM.Text);
    out.Close('}');
    out.Key("list").Open('{');
    out.Key("version").Number(shown.version);
    out.Key("lines").Number(int64_t(shown.starts.size()));
    out.Close('}');
    FrameRateWindowJson(out, false);
    FrameRateWindowJson(out, true);
    if (AboutWindow2Exists(d)) {
        const AboutWindow2State& a = AboutWindow2(d);
        out.Key("about").Open('{');
        out.Key("version").String(a.ST_Version.Text);
        out.Key("finger").Bool(a.Cursor == MouseCursor::FingerPointer);
        out.Close('}');
    }
    if (d.session.progress.open) {
        const ProgressBarWindowState& p = d.session.progress.state;
        out.Key("progress").Open('{');
        out.Key("title").String(p.Title);
        out.Key("headline").String(p.ST_Headline.Text);
        out.Key("detail").String(p.ST_Detail.Text);
        out.Key("maximum").Number(p.ProgressBar1.Maximum);
        out.Key("value").Number(p.ProgressBar1.Value);
        out.Close('}');
    }
    out.Close('}');
    return Answer();
}

// ---- the main window ----

EMSCRIPTEN_KEEPALIVE void web_command(const char* name) {
    if (Handler h = CommandHandler(name)) h(Handling());
}

EMSCRIPTEN_KEEPALIVE void web_check(const char* control, int value) {
    CheckBox* box = CheckBoxNamed(W(), control);
    if (!box) return;
    box->Value = value != 0;
    // A box without a handler only takes its value.
    if (Handler h = CheckBoxHandler(control)) h(Handling());
}

EMSCRIPTEN_KEEPALIVE void web_popup(const char* control, int row) {
    PopupMenu* popup = PopupNamed(W(), control);
    // Picking the row that stands is no change.
    if (!popup || popup->ListIndex == row) return;
    popup->ListIndex = row;
    if (Handler h = PopupHandler(control)) h(Handling());
}

EMSCRIPTEN_KEEPALIVE void web_focus(const char* control) { W().Focus = control; }

// The user's new text of a field, with the caret, in characters.
EMSCRIPTEN_KEEPALIVE void web_field_text(const char* control, const char* text, int caret) {
    EntryField* field = EntryFieldNamed(W(), control);
    if (!field) return;
    field->SelStart = caret;
    SetFieldText(Handling(), *field, text);
}

// A key pressed in a field: its character ("" for none) and its virtual code; 1 swallows it.
EMSCRIPTEN_KEEPALIVE int web_field_key(const char* control, const char* key, int code) {
    EntryField* field = EntryFieldNamed(W(), control);
    if (!field) return 0;
    switch (field->FieldKind()) {
        case EntryField::Kind::ReelName: return EF_ReelName_KeyDown(Handling(), key, code);
        case EntryField::Kind::SeqTitle: return EF_SeqTitle_KeyDown(Handling(), key, code);
        case EntryField::Kind::RenderedMovie: return EF_RenderedMovie_KeyDown(Handling(), key, code);
    }
    return 0;
}

EMSCRIPTEN_KEEPALIVE void web_field_lost_focus(const char* control) {
    EntryField* field = EntryFieldNamed(W(), control);
    if (!field) return;
    switch (field->FieldKind()) {
        case EntryField::Kind::ReelName: EF_ReelName_LostFocus(Handling()); break;
        case EntryField::Kind::SeqTitle: EF_SeqTitle_LostFocus(Handling()); break;
        case EntryField::Kind::RenderedMovie: EF_RenderedMovie_LostFocus(Handling()); break;
    }
}

// A file dropped on the text area, already in the page's memory; "" for a drop without one.
EMSCRIPTEN_KEEPALIVE void web_drop(const char* path) {
    FolderItemRef item;
    if (*path) item = FolderItem(path);
    EditField1_DropObject(Handling(), item);
}

// Beenden: the main window is asked to close, as on the desktop, and the page then shows a
// fresh one, with the first values of every control.
EMSCRIPTEN_KEEPALIVE void web_quit() {
    if (MainWindow_Event_CancelClose(Handling(), true)) return;
    D().session.CloseMainWindow();
    W();
}

// Whether the text area takes a dropped file of this name.
EMSCRIPTEN_KEEPALIVE int web_accepts_list(const char* name) { return FileTypeAccepts(FileTypes1.pText, name); }

// ---- the frame-rate question ----

EMSCRIPTEN_KEEPALIVE void web_frame_rate_row(int droped, int row) {
    Desktop& d = Handling();
    if (droped && FrameRateWindowIfDropedExists(d)) {
        FrameRateWindowIfDroped(d).PopupMenu1.ListIndex = row;
        FrameRateWindowIfDroped_PopupMenu1_Change(d);
    } else if (!droped && FrameRateWindowExists(d)) {
        FrameRateWindow(d).PopupMenu1.ListIndex = row;
        FrameRateWindow_PopupMenu1_Change(d);
    }
}

EMSCRIPTEN_KEEPALIVE void web_frame_rate_ok(int droped) {
    Desktop& d = Handling();
    if (droped && FrameRateWindowIfDropedExists(d))
        FrameRateWindowIfDroped_PushButton1_Action(d);
    else if (!droped && FrameRateWindowExists(d))
        FrameRateWindow_PushButton1_Action(d);
}

// Closed by its close box: the chain ends with no load.
EMSCRIPTEN_KEEPALIVE void web_frame_rate_close(int droped) {
    if (droped)
        CloseFrameRateWindowIfDroped(Handling());
    else
        CloseFrameRateWindow(Handling());
}

// ---- the text area ----

// Lines of the list shown, from the first (0-based), each ended by "\n".
EMSCRIPTEN_KEEPALIVE const char* web_lines(int first, int count) {
    IndexShownList();
    out.Clear();
    if (!shown.text || first < 0) return Answer();
    const std::string& s = *shown.text;
    const size_t n = shown.starts.size();
    for (size_t i = size_t(first); i < n && i < size_t(first) + size_t(std::max(count, 0)); ++i) {
        const size_t a = shown.starts[i];
        const size_t b = i + 1 < n ? shown.starts[i + 1] - 1 : (s.back() == '\r' ? s.size() - 1 : s.size());
        out.Raw(std::string_view(s).substr(a, b - a));
        out.Raw("\n");
    }
    return Answer();
}

// ---- What Changed ----

EMSCRIPTEN_KEEPALIVE const char* web_report() {
    ViewTheReport();
    out.Clear();
    out.Open('{');
    out.Key("summary").String(WhatChangedSummary(report.view, D().session.document));
    out.Key("groups").Open('[');
    for (const WhatChangedGroup& g : report.groups) {
        out.Open('{');
        out.Key("heading").String(WhatChangedHeading(report.view, g));
        out.Key("first").Number(int64_t(g.first));
        out.Key("count").Number(g.count);
        out.Key("warning").Bool(KindSeverity(g.kind) == Severity::Warning);
        out.Close('}');
    }
    out.Close(']');
    out.Close('}');
    return Answer();
}

EMSCRIPTEN_KEEPALIVE const char* web_report_items(int first, int count) {
    ViewTheReport();
    out.Clear();
    out.Open('[');
    const std::vector<ReportEntry>& entries = report.view.entries;
    for (size_t i = size_t(std::max(first, 0)); i < entries.size() && i < size_t(first) + size_t(count); ++i)
        out.String(WhatChangedItemText(entries[i], report.lines.Of(entries[i]), D().session.document));
    out.Close(']');
    return Answer();
}

// The event of an item, as read and as written, and the line of the text area to show.
EMSCRIPTEN_KEEPALIVE const char* web_report_select(int index) {
    ViewTheReport();
    IndexShownList();
    out.Clear();
    out.Open('{');
    if (index >= 0 && size_t(index) < report.view.entries.size()) {
        const ReportEntry& e = report.view.entries[size_t(index)];
        const WhatChangedLines lines = EventLines(e, D().session.document);
        out.Key("asRead").String(lines.asRead);
        out.Key("asWritten").String(lines.asWritten);
        // The line of the text area to show, from 0.
        out.Key("line").Number(int64_t(lines.listLine) - 1);
    }
    out.Close('}');
    return Answer();
}

}  // extern "C"
