#include "document/window_state.hpp"

#include "text/text.hpp"

namespace vornelt {

MainWindowState::MainWindowState() {
    EF_ReelName.LimitText = 8;
    EF_ReelName.Enabled = false;
    EF_SeqTitle.Enabled = false;
    EF_RenderedMovie.Enabled = false;
}

void EntryField::SetText(std::string_view text) {
    text_.assign(text);
    FoldToCapitals();
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

ProgressBarWindowState& ProgressWindow::Get() {
    if (!open) {
        state = ProgressBarWindowState();
        open = true;
    }
    return state;
}

void ProgressWindow::Close(Platform& platform) {
    if (!open) return;
    platform.CloseProgressWindow();
    open = false;
}

}  // namespace vornelt
