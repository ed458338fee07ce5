#pragma once
// The main window state: the record of named control values that the logic reads and
// writes. The logic never touches a window; the desktop application mirrors this record on
// screen and writes the user's input back into it. Beside it stands the record of the
// progress window, which the reader drives the same way.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/platform.hpp"
#include "text/text_column.hpp"

namespace vornelt {

struct Control {
    bool Enabled = true;
    bool Visible = true;
};

struct PushButton : Control {};
struct Canvas : Control {};

struct CheckBox : Control {
    bool Value = false;
};

struct PopupMenu : Control {
    int ListIndex = 0;
};

struct Label {
    std::string Text;
};

// A one-line entry field. Writing its text folds it to capitals with the caret kept where it
// was, the first steps of every field's change handling; what else a change does (a new
// list, for the movie field) is the window's business.
class EntryField : public Control {
public:
    enum class Kind { ReelName, SeqTitle, RenderedMovie };
    explicit EntryField(Kind kind) : kind_(kind) {}

    const std::string& Text() const noexcept { return text_; }
    void SetText(std::string_view text);  // folds to capitals, caret kept

    Kind FieldKind() const noexcept { return kind_; }
    int64_t SelStart = 0;  // the caret, in characters
    int LimitText = 0;     // the most characters the user may type; 0: no limit

private:
    void FoldToCapitals();

    Kind kind_;
    std::string text_;
};

// The read-only text area that shows the list. Its text shares the buffer of the list.
struct TextArea : Control {
    SharedText Text = std::make_shared<const std::string>();
    bool ReadOnly = true;
};

struct MainWindowState {
    std::string Title = "Vornelt";
    MouseCursor Cursor = MouseCursor::StandardPointer;
    // The control that holds the keyboard focus, by name ("EF_SeqTitle"); "" when none does.
    // The window writes it as the focus moves; a handler that writes it moves the focus.
    std::string Focus;

    PushButton BtnOpenEDL;
    PushButton BtnSaveEDL;
    PushButton BtnResetAll{{false, false}};
    PushButton BtnSelectMovie{{false, true}};

    EntryField EF_ReelName{EntryField::Kind::ReelName};
    EntryField EF_SeqTitle{EntryField::Kind::SeqTitle};
    EntryField EF_RenderedMovie{EntryField::Kind::RenderedMovie};
    TextArea EditField1;

    Canvas Canvas1;
    Canvas Canvas2;

    Label ST_EdlFormat;
    Label ST_FrameRate;
    Label ST_FCM;

    CheckBox Chb_Mirror{{false, true}};  // an option: its value from the options table
    CheckBox Chb_FixKeyDuration{{false, true}, true};
    CheckBox Chb_V1{{false, true}, true};
    CheckBox Chb_V2{{false, true}};     // an option: its value from the options table
    CheckBox Chb_A1234{{false, true}};  // an option: its value from the options table
    CheckBox Chb_A1{{false, true}, true};
    CheckBox Chb_A2{{false, true}, true};
    CheckBox Chb_A3{{false, true}, true};
    CheckBox Chb_A4{{false, true}, true};
    CheckBox Chb_RemoveFreezeFrame{{false, true}};   // an option: its value from the options table
    CheckBox Chb_RemoveSpeedChanges{{false, true}};  // an option: its value from the options table
    CheckBox Chb_TransToDissolve{{false, true}};     // an option: its value from the options table
    CheckBox Chb_KeyToDissolve{{false, true}};       // an option: its value from the options table
    CheckBox Chb_ComntGenerateNew{{false, true}};    // an option: its value from the options table
    PopupMenu PopupTransition{{false, true}};        // an option: its row from the options table
    CheckBox Chb_ComntTransition{{false, false}, false};
    CheckBox Chb_ComntClipNames{{false, false}, false};
    CheckBox Chb_ComntOther{{false, false}, false};

    // Every control at its first value; those of the options at the options' defaults.
    MainWindowState();
};

// A control by its name ("Chb_Mirror"); null when the window has no such control of that kind.
CheckBox* CheckBoxNamed(MainWindowState& w, std::string_view name);
EntryField* EntryFieldNamed(MainWindowState& w, std::string_view name);
PopupMenu* PopupNamed(MainWindowState& w, std::string_view name);

struct ProgressBar {
    int32_t Maximum = 100;
    int32_t Value = 0;
};

struct ProgressBarWindowState {
    std::string Title = "Progress-Bar";
    Label ST_Headline{"Was ich gerade mache"};
    ProgressBar ProgressBar1;
    Label ST_Detail{"Was ich genau mache und wie weit ich bin..."};
};

// The progress window while it stands: its record, made fresh each time it opens.
struct ProgressWindow {
    ProgressBarWindowState state;
    bool open = false;

    // The living window's record; a fresh one when none stands.
    ProgressBarWindowState& Get();
    // Closes it on screen and forgets its record.
    void Close(Platform& platform);
};

}  // namespace vornelt
