// The window handlers without a window: the main window state and the headless platform
// stand in for the controls and the dialogs, and a recorder in the call table tells which
// routines ran in which order.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "platform/headless.hpp"
#include "ui/calls.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"

namespace vornelt {
namespace {

using Log = std::vector<std::string>;

Log g_calls;
// What a save does to the document: a save that goes through clears the modified mark.
bool g_saveSucceeds = true;

HandlerCalls Recorder() {
    HandlerCalls c{};
    c.NewEDL_02 = [] { g_calls.push_back("NewEDL_02"); Module1.isModified = true; };
    c.AllAudioOnOff = [] { g_calls.push_back("AllAudioOnOff"); };
    c.AllKeysOnOff = [] { g_calls.push_back("AllKeysOnOff"); };
    c.AllKeysToDissolve = [] { g_calls.push_back("AllKeysToDissolve"); };
    c.AllWipesToDissolve = [] { g_calls.push_back("AllWipesToDissolve"); };
    c.SaveAsDialog = [] {
        g_calls.push_back("SaveAsDialog");
        Module1.isModified = !g_saveSucceeds;
    };
    c.SaveOhneDialog = [] {
        g_calls.push_back("SaveOhneDialog");
        Module1.isModified = !g_saveSucceeds;
    };
    c.Open_CMX = [] { g_calls.push_back("Open_CMX"); };
    c.FileDropedInEditField = [] { g_calls.push_back("FileDropedInEditField"); };
    return c;
}

void CloseSmallWindows() {
    CloseFrameRateWindow();
    CloseFrameRateWindowIfDroped();
    CloseStartUpWindow();
    CloseAboutWindow2();
}

// What a dialog shows, in one line: icon, message, explanation, and the visible buttons.
std::string Shown(const MessageDialogSpec& d) {
    return std::to_string(d.Icon) + "|" + d.Message + "|" + d.Explanation + "|" + d.ActionCaption + "|" +
           (d.AlternateVisible ? d.AlternateCaption : "-") + "|" + (d.CancelVisible ? d.CancelCaption : "-");
}

class HandlersTest : public ::testing::Test {
protected:
    void SetUp() override {
        ResetProgramState();
        CloseSmallWindows();
        g_calls.clear();
        g_saveSucceeds = true;
        Calls() = Recorder();
    }
    void TearDown() override {
        Calls() = RealCalls();
        CloseSmallWindows();
        ResetProgramState();
    }

    HeadlessPlatform platform;
    ScopedPlatform scope{platform};
};

// ---- option handlers ----

struct OptionCase {
    const char* name;
    void (*handler)();
    CheckBox MainWindowState::*control;
    bool Document::*flag;
    Log calls;
};

TEST_F(HandlersTest, EachOptionStoresItsValueThenRunsItsPassesInOrder) {
    const std::vector<OptionCase> cases = {
        {"Mirror", Chb_Mirror_Action, &MainWindowState::Chb_Mirror, &Document::boolMirror, {"NewEDL_02"}},
        {"FreezeFrame", Chb_RemoveFreezeFrame_Action, &MainWindowState::Chb_RemoveFreezeFrame,
         &Document::boolFreezeFrame, {"NewEDL_02"}},
        {"SpeedChanges", Chb_RemoveSpeedChanges_Action, &MainWindowState::Chb_RemoveSpeedChanges,
         &Document::boolSpeedChange, {"NewEDL_02"}},
        {"WipesToDissolves", Chb_TransToDissolve_Action, &MainWindowState::Chb_TransToDissolve,
         &Document::boolTransToDissolve, {"AllWipesToDissolve", "NewEDL_02"}},
        {"KeysToDissolves", Chb_KeyToDissolve_Action, &MainWindowState::Chb_KeyToDissolve,
         &Document::boolKeyToDissolve, {"AllKeysToDissolve", "NewEDL_02"}},
        {"Comments", Chb_ComntGenerateNew_Action, &MainWindowState::Chb_ComntGenerateNew,
         &Document::boolGenerateNewComments, {"NewEDL_02"}},
        {"Audio", Chb_A1234_Action, &MainWindowState::Chb_A1234, &Document::boolA1234, {"AllAudioOnOff", "NewEDL_02"}},
        {"Key track", Chb_V2_Action, &MainWindowState::Chb_V2, &Document::boolV2,
         {"AllKeysToDissolve", "AllKeysOnOff", "NewEDL_02"}},
    };
    for (const OptionCase& c : cases) {
        for (bool value : {true, false, true}) {
            SCOPED_TRACE(std::string(c.name) + (value ? " on" : " off"));
            g_calls.clear();
            (MainWindow().*c.control).Value = value;
            Module1.*c.flag = !value;
            c.handler();
            EXPECT_EQ(Module1.*c.flag, value);
            EXPECT_EQ(g_calls, c.calls);
        }
    }
}

TEST_F(HandlersTest, PopupAndEmptyHandlersRunNoPass) {
    PopupTransition_Change();
    EXPECT_EQ(g_calls, Log{"NewEDL_02"});

    g_calls.clear();
    Module1.isModified = false;
    MainWindowState& w = MainWindow();
    w.Chb_A1.Value = false;
    for (void (*h)() : {Chb_A1_Action, Chb_A2_Action, Chb_A3_Action, Chb_A4_Action, Chb_FixKeyDuration_Action,
                        Chb_ComntTransition_Action, Chb_ComntClipNames_Action, Chb_ComntOther_Action})
        h();
    EXPECT_TRUE(g_calls.empty());
    EXPECT_FALSE(Module1.isModified);
    EXPECT_FALSE(w.Chb_A1.Value);
}

TEST_F(HandlersTest, KeyTrackOffUnchecksAndDisablesKeysToDissolvesOnBringsOnlyTheEnabling) {
    MainWindowState& w = MainWindow();
    w.Chb_KeyToDissolve.Enabled = true;
    w.Chb_KeyToDissolve.Value = true;
    Module1.boolKeyToDissolve = true;

    w.Chb_V2.Value = false;
    Chb_V2_Action();
    EXPECT_FALSE(w.Chb_KeyToDissolve.Value);
    EXPECT_FALSE(w.Chb_KeyToDissolve.Enabled);
    EXPECT_FALSE(Module1.boolKeyToDissolve);

    w.Chb_V2.Value = true;
    Chb_V2_Action();
    EXPECT_TRUE(w.Chb_KeyToDissolve.Enabled);
    EXPECT_FALSE(w.Chb_KeyToDissolve.Value);
    EXPECT_FALSE(Module1.boolKeyToDissolve);
}

// ---- save routes ----

TEST_F(HandlersTest, SaveRoutesFollowTheNameOfTheLastSave) {
    struct Case {
        const char* name;
        bool (*command)();
        std::string savedName;
        Log calls;
    };
    auto button = [] {
        BtnSaveEDL_Action();
        return false;
    };
    const std::vector<Case> cases = {
        {"button, never saved", button, "", {"SaveAsDialog"}},
        {"button, saved before", button, "a.edl", {"SaveOhneDialog"}},
        {"Save, never saved", App_FileSave_Action, "", {"SaveAsDialog"}},
        {"Save, saved before", App_FileSave_Action, "a.edl", {"SaveOhneDialog"}},
        {"Save As, never saved", App_FileSaveAs_Action, "", {"SaveAsDialog"}},
        {"Save As, saved before", App_FileSaveAs_Action, "a.edl", {"SaveAsDialog"}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        g_calls.clear();
        Module1.mySavedAbsDateiName = c.savedName;
        EXPECT_FALSE(c.command());
        EXPECT_EQ(g_calls, c.calls);
    }
}

// ---- entry fields ----

TEST_F(HandlersTest, ReelNameKeyFilter) {
    struct Case {
        const char* key;
        int code;
        bool swallowed;
    };
    const std::vector<Case> cases = {
        {"A", keycode::kNone, false},  {"z", keycode::kNone, false}, {"0", keycode::kNone, false},
        {"9", keycode::kNone, false},  {" ", keycode::kNone, true},  {"-", keycode::kNone, true},
        {"_", keycode::kNone, true},   {"\xC3\xA9", keycode::kNone, true},  // an accented letter
        {"AB", keycode::kNone, true},  {"", keycode::kLeftArrow, false},     {"", keycode::kRightArrow, false},
        {"", keycode::kUpArrow, false}, {"", keycode::kDownArrow, false},   {"", keycode::kForwardDelete, false},
        {"\b", keycode::kDelete, false}, {"\t", keycode::kTab, false},      {"", 115 /* home */, true},
        {"", keycode::kNone, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string("key '") + c.key + "' code " + std::to_string(c.code));
        EXPECT_EQ(EF_ReelName_KeyDown(c.key, c.code), c.swallowed);
        EXPECT_EQ(MainWindow().Focus, "");
    }
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(HandlersTest, ReelNameLimitFollowsTheFormAtEachKey) {
    MainWindowState& w = MainWindow();
    EXPECT_EQ(w.EF_ReelName.LimitText, 8);
    Module1.IsGrassValley = true;
    EXPECT_EQ(w.EF_ReelName.LimitText, 8);  // until the next key
    EF_ReelName_KeyDown("-", keycode::kNone);
    EXPECT_EQ(w.EF_ReelName.LimitText, 6);
    Module1.IsGrassValley = false;
    EF_ReelName_KeyDown("A", keycode::kNone);
    EXPECT_EQ(w.EF_ReelName.LimitText, 8);
}

TEST_F(HandlersTest, ReturnAndEnterInTheFields) {
    MainWindowState& w = MainWindow();
    for (int code : {keycode::kReturn, keycode::kEnter}) {
        SCOPED_TRACE(code);
        w.Focus = "EF_ReelName";
        EXPECT_FALSE(EF_ReelName_KeyDown("\r", code));
        EXPECT_EQ(w.Focus, "EF_SeqTitle");  // leaving the field runs its check
        EXPECT_TRUE(g_calls.empty());

        EXPECT_FALSE(EF_SeqTitle_KeyDown("\r", code));
        EXPECT_EQ(w.Focus, "EF_SeqTitle");
        EXPECT_EQ(g_calls, Log{"NewEDL_02"});
        g_calls.clear();
    }
    // Any other key goes to the title field untouched, blanks and accents included.
    for (const char* key : {" ", "\xC3\xA9", "-", "a"}) EXPECT_FALSE(EF_SeqTitle_KeyDown(key, keycode::kNone));
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(HandlersTest, MovieFieldTakesItsNameOverOnReturnOrLeaving) {
    Document& m = Module1;
    MainWindowState& w = MainWindow();
    Calls().NewEDL_02 = [] { g_calls.push_back("NewEDL_02"); };  // keeps the mark the field's change gives
    struct Case {
        const char* name;
        void (*act)();
        bool takesName;
    } const cases[] = {
        {"other key", [] { EXPECT_FALSE(EF_RenderedMovie_KeyDown("x", keycode::kNone)); }, false},
        {"Return", [] { EXPECT_FALSE(EF_RenderedMovie_KeyDown("\r", keycode::kReturn)); }, true},
        {"Enter", [] { EXPECT_FALSE(EF_RenderedMovie_KeyDown("\r", keycode::kEnter)); }, true},
        // Leaving forgets the path even when the text was not touched.
        {"leaving", EF_RenderedMovie_LostFocus, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        w.EF_RenderedMovie.SetText("clip.mov");
        m.myAbsMovieName = "clip.mov";
        m.myAbsMoviePfad = "/films/clip.mov";
        m.myAbsMovieFolderItem = FolderItem("/films");
        g_calls.clear();
        c.act();
        EXPECT_EQ(m.myAbsMovieName, c.takesName ? "CLIP.MOV" : "clip.mov");  // the field's capitals
        EXPECT_EQ(m.myAbsMoviePfad, c.takesName ? "" : "/films/clip.mov");
        EXPECT_EQ(m.myAbsMovieFolderItem.has_value(), !c.takesName);
        EXPECT_EQ(g_calls, c.takesName ? Log{"NewEDL_02"} : Log{});
    }
    g_calls.clear();
    EF_SeqTitle_LostFocus();
    EXPECT_EQ(g_calls, Log{"NewEDL_02"});
}

TEST_F(HandlersTest, ReservedReelNamesAreQuestioned) {
    struct Case {
        const char* name;
        std::optional<DialogButton> answer;  // none: no dialog is shown
        bool legal;
        Log calls;
    };
    const std::vector<Case> cases = {
        {"", std::nullopt, true, {"NewEDL_02"}},
        {"A001", std::nullopt, true, {"NewEDL_02"}},
        {"BL1", std::nullopt, true, {"NewEDL_02"}},
        {"B L", std::nullopt, true, {"NewEDL_02"}},
        {"BLACKS", std::nullopt, true, {"NewEDL_02"}},
        {"BL", DialogButton::Action, true, {}},
        {"ax", DialogButton::Action, true, {}},
        {" AUX ", DialogButton::Alternate, false, {}},
        {"black", DialogButton::Cancel, false, {}},
        {"BLACK", DialogButton::None, false, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string("'") + c.name + "'");
        g_calls.clear();
        platform.messageDialogsShown.clear();
        if (c.answer) platform.messageDialogAnswers.push_back(*c.answer);
        EXPECT_EQ(CheckLegalReelName(c.name), c.legal);
        EXPECT_EQ(platform.messageDialogsShown.size(), c.answer ? 1u : 0u);
        EXPECT_EQ(g_calls, c.calls);
    }
    platform.messageDialogAnswers.push_back(DialogButton::Action);
    CheckLegalReelName("  BL  ");
    EXPECT_EQ(Shown(platform.messageDialogsShown.back()),
              "1|Name Conflict! Choose an other Reel-Name.|BL is a reserved Reel-Name!\r\rOther reserved Reel-Names "
              "are: 'AX', 'BL', 'AUX' and 'BLACK'|Use BL|Choose an other Reel-Name|-");
}

TEST_F(HandlersTest, LeavingTheReelNameField) {
    MainWindowState& w = MainWindow();
    // A legal name regenerates twice: in the check and after it.
    w.EF_ReelName.SetText("a001");
    EF_ReelName_LostFocus();
    EXPECT_EQ(g_calls, (Log{"NewEDL_02", "NewEDL_02"}));

    // A reserved name taken as it is regenerates once, after the check.
    g_calls.clear();
    w.EF_ReelName.SetText("bl");
    platform.messageDialogAnswers.push_back(DialogButton::Action);
    EF_ReelName_LostFocus();
    EXPECT_EQ(w.EF_ReelName.Text(), "BL");
    EXPECT_EQ(g_calls, Log{"NewEDL_02"});

    // Refused: the field says "NEW" and the list stays as it was.
    g_calls.clear();
    platform.messageDialogAnswers.push_back(DialogButton::Alternate);
    EF_ReelName_LostFocus();
    EXPECT_EQ(w.EF_ReelName.Text(), "NEW");
    EXPECT_TRUE(g_calls.empty());
}

TEST_F(HandlersTest, SelectMovie) {
    Document& m = Module1;
    MainWindowState& w = MainWindow();
    platform.openDialogAnswers.push_back(FolderItem("/films/Master Cut.mov"));
    BtnSelectMovie_Action();
    ASSERT_EQ(platform.openDialogsShown.size(), 1u);
    EXPECT_EQ(platform.openDialogsShown[0].Title, "Select Movie");
    EXPECT_EQ(platform.openDialogsShown[0].PromptText, "Select the rendered QuickTime Movie");
    EXPECT_EQ(platform.openDialogsShown[0].Filter, "movie");
    EXPECT_EQ(m.myAbsMovieName, "Master Cut.mov");  // the field's capitals come on leaving it
    EXPECT_EQ(m.myAbsMoviePfad, "/films/Master Cut.mov");
    EXPECT_EQ(m.myAbsMovieFolderItem, FolderItem("/films"));
    EXPECT_EQ(w.EF_RenderedMovie.Text(), "MASTER CUT.MOV");
    EXPECT_EQ(w.Cursor, MouseCursor::StandardPointer);
    EXPECT_TRUE(m.isModified);  // through the field's change handling

    // Cancelled: the fallback name, with the earlier path kept.
    EXPECT_FALSE(App_FileSelectMovie_Action());
    EXPECT_EQ(m.myAbsMovieName, "MASTER.MOV");
    EXPECT_EQ(w.EF_RenderedMovie.Text(), "MASTER.MOV");
    EXPECT_EQ(m.myAbsMoviePfad, "/films/Master Cut.mov");
    EXPECT_EQ(platform.openDialogsShown.size(), 2u);
}

// ---- opening and closing ----

enum class Entry { Button, Menu, Drop, Document, Close, Quit };

TEST_F(HandlersTest, EveryOpeningAndClosingAsksAboutUnsavedChangesFirst) {
    const struct {
        const char* name;
        bool modified;
        std::string savedName;
        std::optional<DialogButton> answer;  // none: the question is not asked
        bool saveSucceeds;
        Log openCalls, closeCalls;  // closing always asks for the file, even with a known one
        bool goesOn;
    } cases[] = {
        {"unchanged", false, "a.edl", std::nullopt, true, {}, {}, true},
        {"Save, never saved", true, "", DialogButton::Action, true, {"SaveAsDialog"}, {"SaveAsDialog"}, true},
        {"Save, saved before", true, "a.edl", DialogButton::Action, true, {"SaveOhneDialog"}, {"SaveAsDialog"}, true},
        {"Save, dialog cancelled", true, "", DialogButton::Action, false, {"SaveAsDialog"}, {"SaveAsDialog"}, false},
        {"Save, not written", true, "a.edl", DialogButton::Action, false, {"SaveOhneDialog"}, {"SaveAsDialog"}, false},
        {"Don't Save", true, "a.edl", DialogButton::Alternate, true, {}, {}, true},
        {"Cancel", true, "", DialogButton::Cancel, true, {}, {}, false},
        {"closed", true, "", DialogButton::None, true, {}, {}, false},
    };
    MainWindow().Title = "Reel 3.edl";
    const char* entryNames[] = {"button", "menu", "drop", "document", "close", "quit"};
    for (Entry entry : {Entry::Button, Entry::Menu, Entry::Drop, Entry::Document, Entry::Close, Entry::Quit}) {
        for (const auto& c : cases) {
            SCOPED_TRACE(std::string(entryNames[int(entry)]) + ": " + c.name);
            CloseSmallWindows();
            g_calls.clear();
            platform.messageDialogsShown.clear();
            Module1.isModified = c.modified;
            Module1.mySavedAbsDateiName = c.savedName;
            g_saveSucceeds = c.saveSucceeds;
            if (c.answer) platform.messageDialogAnswers.push_back(*c.answer);
            const FolderItem file("/lists/cut.edl");
            const bool closing = entry == Entry::Close || entry == Entry::Quit;
            switch (entry) {
                case Entry::Button: BtnOpenEDL_Action(); break;
                case Entry::Menu: EXPECT_FALSE(App_FileOpen_Action()); break;
                case Entry::Drop: EditField1_DropObject(file); break;
                case Entry::Document: App_Event_OpenDocument(file); break;
                case Entry::Close:
                case Entry::Quit: EXPECT_EQ(MainWindow_Event_CancelClose(entry == Entry::Quit), !c.goesOn); break;
            }
            ASSERT_EQ(platform.messageDialogsShown.size(), c.answer ? 1u : 0u);
            if (c.answer) {
                EXPECT_EQ(Shown(platform.messageDialogsShown[0]),
                          "1|Do you want to save the changes to \"Reel 3.edl\"?|If you don't save, your changes will "
                          "be lost.|Save|Don't Save|Cancel");
            }
            EXPECT_EQ(g_calls, closing ? c.closeCalls : c.openCalls);
            const bool droped = entry == Entry::Drop || entry == Entry::Document;
            EXPECT_EQ(FrameRateWindowExists(), c.goesOn && !droped && !closing);
            EXPECT_EQ(FrameRateWindowIfDropedExists(), c.goesOn && droped);
            EXPECT_TRUE(platform.messages.empty());
        }
    }
}

TEST_F(HandlersTest, DropsAndDocumentsWithoutAFileTellTheUserAndGoOn) {
    struct Case {
        const char* name;
        void (*entry)(const FolderItemRef&);
        const char* message;
    };
    const std::vector<Case> cases = {
        {"drop", EditField1_DropObject,
         "Error whith File-Drop\r\rOnly one EDL can be drop to the application!"},
        {"document", App_Event_OpenDocument,
         "Error whith File Drag and Drop\r\rOnly one EDL can be drop to the application!"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CloseSmallWindows();
        platform.messages.clear();
        Module1.DropedFolderItem = FolderItem("/lists/earlier.edl");
        c.entry(std::nullopt);
        EXPECT_EQ(platform.messages, std::vector<std::string>{c.message});
        EXPECT_EQ(Module1.DropedFolderItem, FolderItem("/lists/earlier.edl"));
        EXPECT_TRUE(FrameRateWindowIfDropedExists());

        c.entry(FolderItem("/lists/new.edl"));
        EXPECT_EQ(Module1.DropedFolderItem, FolderItem("/lists/new.edl"));
    }
}

// ---- the frame-rate question ----

TEST_F(HandlersTest, FrameRateWindowsOpenOnPalAndTakeTheRows) {
    struct Window {
        const char* title;
        FrameRateWindowState& (*accessor)();
        bool (*exists)();
        void (*change)();
        void (*ok)();
        const char* load;
    };
    const std::vector<Window> windows = {
        {"Select Frame-Rate", FrameRateWindow, FrameRateWindowExists, FrameRateWindow_PopupMenu1_Change,
         FrameRateWindow_PushButton1_Action, "Open_CMX"},
        {"Select Frame-Rate of droped EDL", FrameRateWindowIfDroped, FrameRateWindowIfDropedExists,
         FrameRateWindowIfDroped_PopupMenu1_Change, FrameRateWindowIfDroped_PushButton1_Action,
         "FileDropedInEditField"},
    };
    struct Row {
        int index;
        double rate;
    };
    const std::vector<Row> rows = {{0, 30.0}, {1, 25.0}, {2, 24.0}, {3, 24.0}, {-1, 24.0}};
    for (const Window& win : windows) {
        SCOPED_TRACE(win.title);
        Module1.prefDefaultFrameRate = 0.0;
        Module1.frameRateTmp = 0.0;
        Module1.dropFrameTmp = true;
        FrameRateWindowState& w = win.accessor();
        EXPECT_EQ(w.Title, win.title);
        EXPECT_EQ(w.PopupMenu1.ListIndex, 1);
        EXPECT_EQ(Module1.prefDefaultFrameRate, 25.0);
        EXPECT_EQ(Module1.frameRateTmp, 25.0);
        EXPECT_FALSE(Module1.dropFrameTmp);

        for (const Row& r : rows) {
            SCOPED_TRACE(r.index);
            w.PopupMenu1.ListIndex = r.index;
            win.change();
            EXPECT_EQ(Module1.frameRateTmp, r.rate);  // a row outside the three changes nothing
        }

        // The choice is not remembered: the next window opens on PAL again.
        win.ok();
        EXPECT_FALSE(win.exists());
        EXPECT_EQ(g_calls, Log{win.load});
        g_calls.clear();
        EXPECT_EQ(win.accessor().PopupMenu1.ListIndex, 1);
        EXPECT_EQ(Module1.frameRateTmp, 25.0);
    }
}

TEST_F(HandlersTest, FileTypes) {
    struct Case {
        const FileType& type;
        const char* name;
        bool accepted;
    };
    const std::vector<Case> cases = {
        {FileTypes1.pText, "cut.edl", true},   {FileTypes1.pText, "CUT.EDL", true},
        {FileTypes1.pText, "cut.edl.txt", false}, {FileTypes1.pText, "edl", false},
        {FileTypes1.pText, ".edl", true},      {FileTypes1.pMovie, "a.mov", true},
        {FileTypes1.pMovie, "a.AVI", true},    {FileTypes1.pMovie, "a.mp4", false},
    };
    for (const Case& c : cases) EXPECT_EQ(FileTypeAccepts(c.type, c.name), c.accepted) << c.name;
}

}  // namespace
}  // namespace vornelt
