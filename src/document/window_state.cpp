#include "document/window_state.hpp"

#include "document/text.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {
// The records live as long as the program: a closed window's record is made fresh on the
// next use, so a reference that a long loop holds across a yield never dangles.
MainWindowState& MainWindowRecord() {
    static MainWindowState record;
    return record;
}
bool g_mainWindowOpen = false;

ProgressBarWindowState& ProgressRecord() {
    static ProgressBarWindowState record;
    return record;
}
bool g_progressWindowOpen = false;
}  // namespace

MainWindowState::MainWindowState() {
    EF_ReelName.LimitText = 8;
    EF_ReelName.Enabled = false;
    EF_SeqTitle.Enabled = false;
    EF_RenderedMovie.Enabled = false;
}

void EntryField::SetText(std::string_view text) {
    text_.assign(text);
    switch (kind_) {
        case Kind::ReelName: EF_ReelName_TextChange(); break;
        case Kind::SeqTitle: EF_SeqTitle_TextChange(); break;
        case Kind::RenderedMovie: EF_RenderedMovie_TextChange(); break;
    }
}

void EntryField::FoldToCapitals() {
    const int64_t caret = SelStart;
    std::string upper = Uppercase(text_);
    // Writing the text back does not start the handling again: a second pass would find
    // the text in capitals already and change nothing.
    text_ = std::move(upper);
    const int64_t length = Len(text_);
    SelStart = caret < 0 ? 0 : (caret > length ? length : caret);
}

void EF_ReelName_TextChange() { MainWindow().EF_ReelName.FoldToCapitals(); }

void EF_SeqTitle_TextChange() { MainWindow().EF_SeqTitle.FoldToCapitals(); }

void EF_RenderedMovie_TextChange() {
    MainWindow().EF_RenderedMovie.FoldToCapitals();
    NewEDL_02();
}

MainWindowState& MainWindow() {
    MainWindowState& record = MainWindowRecord();
    if (!g_mainWindowOpen) {
        record = MainWindowState();
        g_mainWindowOpen = true;
    }
    return record;
}

void CloseMainWindow() { g_mainWindowOpen = false; }

bool MainWindowExists() { return g_mainWindowOpen; }

ProgressBarWindowState& ProgressBarWindow() {
    ProgressBarWindowState& record = ProgressRecord();
    if (!g_progressWindowOpen) {
        record = ProgressBarWindowState();
        g_progressWindowOpen = true;
    }
    return record;
}

void CloseProgressBarWindow() {
    if (!g_progressWindowOpen) return;
    GetPlatform().CloseProgressWindow();
    g_progressWindowOpen = false;
}

bool ProgressBarWindowExists() { return g_progressWindowOpen; }

}  // namespace vornelt
