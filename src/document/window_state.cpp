#include "document/window_state.hpp"

#include "text/text.hpp"
#include "vornelt/options.hpp"

namespace vornelt {

MainWindowState::MainWindowState() {
    EF_ReelName.LimitText = 8;
    EF_ReelName.Enabled = false;
    EF_SeqTitle.Enabled = false;
    EF_RenderedMovie.Enabled = false;
    // The controls of the options start at the options' defaults.
    for (const Option& o : kOptions) {
        if (CheckBox* box = CheckBoxNamed(*this, o.control)) box->Value = o.on;
        if (PopupMenu* popup = PopupNamed(*this, o.control)) popup->ListIndex = o.defaultChoice;
    }
}

namespace {

// The controls that the options and conversions reach by name.
constexpr std::pair<std::string_view, CheckBox MainWindowState::*> kCheckBoxes[] = {
    {"Chb_Mirror", &MainWindowState::Chb_Mirror},
    {"Chb_FixKeyDuration", &MainWindowState::Chb_FixKeyDuration},
    {"Chb_V1", &MainWindowState::Chb_V1},
    {"Chb_V2", &MainWindowState::Chb_V2},
    {"Chb_A1234", &MainWindowState::Chb_A1234},
    {"Chb_A1", &MainWindowState::Chb_A1},
    {"Chb_A2", &MainWindowState::Chb_A2},
    {"Chb_A3", &MainWindowState::Chb_A3},
    {"Chb_A4", &MainWindowState::Chb_A4},
    {"Chb_RemoveFreezeFrame", &MainWindowState::Chb_RemoveFreezeFrame},
    {"Chb_RemoveSpeedChanges", &MainWindowState::Chb_RemoveSpeedChanges},
    {"Chb_TransToDissolve", &MainWindowState::Chb_TransToDissolve},
    {"Chb_KeyToDissolve", &MainWindowState::Chb_KeyToDissolve},
    {"Chb_ComntGenerateNew", &MainWindowState::Chb_ComntGenerateNew},
    {"Chb_ComntTransition", &MainWindowState::Chb_ComntTransition},
    {"Chb_ComntClipNames", &MainWindowState::Chb_ComntClipNames},
    {"Chb_ComntOther", &MainWindowState::Chb_ComntOther},
};
constexpr std::pair<std::string_view, EntryField MainWindowState::*> kEntryFields[] = {
    {"EF_ReelName", &MainWindowState::EF_ReelName},
    {"EF_SeqTitle", &MainWindowState::EF_SeqTitle},
    {"EF_RenderedMovie", &MainWindowState::EF_RenderedMovie},
};

template <typename T, size_t N>
T* Named(MainWindowState& w, const std::pair<std::string_view, T MainWindowState::*> (&controls)[N],
         std::string_view name) {
    for (const auto& [controlName, member] : controls)
        if (controlName == name) return &(w.*member);
    return nullptr;
}

}  // namespace

CheckBox* CheckBoxNamed(MainWindowState& w, std::string_view name) { return Named(w, kCheckBoxes, name); }
EntryField* EntryFieldNamed(MainWindowState& w, std::string_view name) { return Named(w, kEntryFields, name); }
PopupMenu* PopupNamed(MainWindowState& w, std::string_view name) {
    return name == "PopupTransition" ? &w.PopupTransition : nullptr;
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
