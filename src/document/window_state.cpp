#include "document/window_state.hpp"

#include <memory>

#include "document/text.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {
std::unique_ptr<MainWindowState> g_mainWindow;
std::unique_ptr<ProgressBarWindowState> g_progressWindow;
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
    if (!g_mainWindow) g_mainWindow = std::make_unique<MainWindowState>();
    return *g_mainWindow;
}

void CloseMainWindow() { g_mainWindow.reset(); }

bool MainWindowExists() { return g_mainWindow != nullptr; }

ProgressBarWindowState& ProgressBarWindow() {
    if (!g_progressWindow) g_progressWindow = std::make_unique<ProgressBarWindowState>();
    return *g_progressWindow;
}

void CloseProgressBarWindow() {
    if (!g_progressWindow) return;
    GetPlatform().CloseProgressWindow();
    g_progressWindow.reset();
}

bool ProgressBarWindowExists() { return g_progressWindow != nullptr; }

}  // namespace vornelt
