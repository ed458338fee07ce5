// The window handlers without a window: the main window state and the recording platform
// stand in for the controls and the dialogs, and the real routines run underneath.
#include <algorithm>
#include <random>

#include "fixtures.hpp"
#include "generate.hpp"
#include "ui/handlers.hpp"

namespace vornelt {
namespace {

// The demo list holds an event of each kind the options touch: a wipe, a key with its
// background, an audio event, a freeze frame and a speed change.
const std::string kList = testing::TestData("writer_demo_cmx.edl");

std::string Shown(const MessageDialogRequest& d) {
    return std::to_string(d.Icon) + "|" + d.Message + "|" + d.Explanation + "|" + d.ActionCaption + "|" +
           (d.AlternateVisible ? d.AlternateCaption : "-") + "|" + (d.CancelVisible ? d.CancelCaption : "-");
}

class HandlersTest : public testing::Fixture {};

TEST_F(HandlersTest, EveryOptionChangesTheListAndTurnedBackGivesItBack) {
    // Each box with its handler and a text that comes or goes with the click.
    const std::tuple<const char*, void (*)(Desktop&), CheckBox MainWindowState::*, const char*> cases[] = {
        {"mirror", Chb_Mirror_Action, &MainWindowState::Chb_Mirror, "RL0002"},
        {"freeze frames", Chb_RemoveFreezeFrame_Action, &MainWindowState::Chb_RemoveFreezeFrame, "000.0"},
        {"speed changes", Chb_RemoveSpeedChanges_Action, &MainWindowState::Chb_RemoveSpeedChanges, "050.0"},
        {"wipes", Chb_TransToDissolve_Action, &MainWindowState::Chb_TransToDissolve, "W001"},
        {"keys", Chb_KeyToDissolve_Action, &MainWindowState::Chb_KeyToDissolve, "***"},
        {"comments", Chb_ComntGenerateNew_Action, &MainWindowState::Chb_ComntGenerateNew, "* FROM CLIP NAME"},
        {"audio", Chb_A1234_Action, &MainWindowState::Chb_A1234, "\r008 "},
        {"key track", Chb_V2_Action, &MainWindowState::Chb_V2, "K B"},
    };
    Load(kList);
    const std::string first = *m().finalCMXString;
    for (const auto& [name, handler, control, changed] : cases) {
        SCOPED_TRACE(name);
        CheckBox& box = w().*control;
        const bool had = first.find(changed) != std::string::npos;
        box.Value = !box.Value;
        handler(d());
        EXPECT_NE(m().finalCMXString->find(changed) != std::string::npos, had);
        box.Value = !box.Value;
        handler(d());
        EXPECT_EQ(*m().finalCMXString, first);
    }
    // The names of kept wipes come from the popup's table.
    w().Chb_TransToDissolve.Value = false;
    Chb_TransToDissolve_Action(d());
    const std::string smpte = *m().finalCMXString;
    w().PopupTransition.ListIndex = 0;
    PopupTransition_Change(d());
    EXPECT_NE(*m().finalCMXString, smpte);

    // The key track off unchecks and disables keys to dissolves; on, it brings only the enabling.
    CheckBox& keys = w().Chb_KeyToDissolve;
    keys.Value = true;
    Chb_KeyToDissolve_Action(d());
    w().Chb_V2.Value = false;
    Chb_V2_Action(d());
    EXPECT_FALSE(keys.Value || keys.Enabled || m().boolKeyToDissolve);
    w().Chb_V2.Value = true;
    Chb_V2_Action(d());
    EXPECT_TRUE(keys.Enabled && !keys.Value);
    EXPECT_EQ(m().finalCMXString->find("***"), std::string::npos);
}

// The check boxes of the options, with their handlers.
const std::pair<void (*)(Desktop&), CheckBox MainWindowState::*> kOptionBoxes[] = {
    {Chb_Mirror_Action, &MainWindowState::Chb_Mirror},
    {Chb_RemoveFreezeFrame_Action, &MainWindowState::Chb_RemoveFreezeFrame},
    {Chb_RemoveSpeedChanges_Action, &MainWindowState::Chb_RemoveSpeedChanges},
    {Chb_TransToDissolve_Action, &MainWindowState::Chb_TransToDissolve},
    {Chb_KeyToDissolve_Action, &MainWindowState::Chb_KeyToDissolve},
    {Chb_ComntGenerateNew_Action, &MainWindowState::Chb_ComntGenerateNew},
    {Chb_A1234_Action, &MainWindowState::Chb_A1234},
    {Chb_V2_Action, &MainWindowState::Chb_V2},
};

// A click writes anew only the event lines whose tables it changed and copies the others from
// the list before, and keeps what it worked out of the list as read (the rows to look at, the
// tracks) until the next load. Any order of clicks, on one list loaded after the other, gives
// click for click the lists that rendering every line anew from nothing kept gives.
TEST_F(HandlersTest, ClicksInAnyOrderGiveWhatAWholeRenderingGives) {
    const auto& boxes = kOptionBoxes;
    for (const char* list : {"writer_demo_cmx.edl", "writer_demo_gvg.edl", "rates_2997df.edl", "writer_demo_cmx.edl"}) {
        SCOPED_TRACE(list);
        const MainWindowState start = w();
        // The same 300 clicks twice: rendered as the window renders, then every line anew.
        std::vector<std::string> lists[2];
        for (int whole = 0; whole < 2; ++whole) {
            w() = start;
            Load(testing::TestData(list));
            std::mt19937 random(5);
            for (int click = 0; click < 300; ++click) {
                if (whole) {
                    m().lastRendering = LastRendering{};
                    m().plan.rowsToVisit = RowsToVisit{};
                    m().plan.mirrorReels = MirrorReels{};
                    m().plan.rowCodes = RowCodes{};
                    m().readTracks = Document::ReadTracks{};
                }
                const unsigned what = random() % 11;
                if (what < std::size(boxes)) {
                    CheckBox& box = w().*boxes[what].second;
                    box.Value = !box.Value;
                    boxes[what].first(d());
                } else if (what == 8) {
                    w().PopupTransition.ListIndex = 1 - w().PopupTransition.ListIndex;
                    PopupTransition_Change(d());
                } else {
                    w().EF_ReelName.SetText(what == 9 ? "MAST" : "");
                    EF_ReelName_TextChange(d());
                }
                lists[whole].push_back(*m().finalCMXString);
            }
        }
        ASSERT_EQ(lists[0].size(), lists[1].size());
        for (size_t k = 0; k < lists[0].size(); ++k) ASSERT_EQ(lists[0][k], lists[1][k]) << "click " << k;
    }
}

// Asks to stop from its `stopAt`-th look on.
class StoppingPlatform : public RecordingPlatform {
public:
    explicit StoppingPlatform(int stopAt) : stopAt_(stopAt) {}
    bool StopAsked() override { return ++looks_ >= stopAt_; }

private:
    int stopAt_, looks_ = 0;
};

// The list without its comment rows ("* ..."): with new comments on, it has more lines than rows.
std::string WithoutCommentRows(const std::string& list) {
    std::string out;
    for (size_t at = 0; at < list.size();) {
        const size_t end = std::min(list.find('\n', at), list.size() - 1) + 1;
        if (list.compare(at, 2, "* ") != 0) out.append(list, at, end - at);
        at = end;
    }
    return out;
}

// A list of this many rows or more is planned on the calling thread and written on a second one.
constexpr int32_t kRowsForTwoThreads = 16384;

// The long list's clicks in several orders, each rendered as the window renders it and, on a
// second desktop that keeps nothing from one rendering to the next, every line anew into a plan
// and a text grown from nothing. Between them: a long movie name and title, which make the comment
// text outgrow its memory in mid-list, and renderings stopped half way.
TEST_F(HandlersTest, ClicksOnALongListGiveWhatAWholeRenderingGives) {
    const auto& boxes = kOptionBoxes;
    enum Action { Popup = 8, Reel, NoReel, LongMovie, ShortMovie, LongTitle, ShortTitle, StopAtFirst, StopAtThird };
    std::vector<int> actions;
    for (int a = 0; a <= StopAtThird; ++a) actions.push_back(a);
    for (int box = 0; box < int(std::size(boxes)); ++box) actions.push_back(box);  // each box back again
    const std::string longName(700, 'N');
    const auto act = [&](Desktop& desk, int action) {
        MainWindowState& w = desk.session.MainWindow();
        if (action < int(std::size(boxes))) {
            CheckBox& box = w.*boxes[action].second;
            box.Value = !box.Value;
            boxes[action].first(desk);
        } else if (action == Popup) {
            w.PopupTransition.ListIndex = 1 - w.PopupTransition.ListIndex;
            PopupTransition_Change(desk);
        } else if (action == Reel || action == NoReel) {
            w.EF_ReelName.SetText(action == Reel ? "MAST" : "");
            EF_ReelName_TextChange(desk);
            EF_ReelName_LostFocus(desk);
        } else if (action == LongMovie || action == ShortMovie) {
            SetFieldText(desk, w.EF_RenderedMovie, action == LongMovie ? longName + ".MOV" : "CUT.MOV");
            EF_RenderedMovie_LostFocus(desk);
        } else if (action == LongTitle || action == ShortTitle) {
            SetFieldText(desk, w.EF_SeqTitle, action == LongTitle ? longName : "CUT");
            EF_SeqTitle_LostFocus(desk);
        } else {
            StoppingPlatform stopping(action == StopAtFirst ? 1 : 3);
            NewEDL_02(desk.session.document, w, stopping);
        }
    };
    const std::pair<const char*, std::string> lists[] = {
        {"CMX", bench::GenerateList({8000, false, bench::Shape::Mixed, 3})},
        {"GVG", bench::GenerateList({8000, true, bench::Shape::Mixed, 4})},
        {"CMX without comment rows", WithoutCommentRows(bench::GenerateList({12000, false, bench::Shape::Mixed, 5}))},
    };
    for (const auto& [name, list] : lists) {
        for (uint32_t order = 0; order < 2; ++order) {
            SCOPED_TRACE(std::string(name) + ", order " + std::to_string(order));
            Reset();
            Desktop whole(platform);
            for (Desktop* desk : {&d(), &whole}) {
                platform.openDialogAnswers.push_back(WriteFile("long.edl", list));
                desk->session.document.frameRateTmp = FrameRate();
                Open_CMX(desk->session);
            }
            Document& fresh = whole.session.document;
            ASSERT_GE(m().maxZeilen, kRowsForTwoThreads);
            ASSERT_EQ(*m().finalCMXString, *fresh.finalCMXString);
            std::vector<int> clicks = actions;
            std::shuffle(clicks.begin(), clicks.end(), std::mt19937(order));
            for (const int action : clicks) {
                SCOPED_TRACE("action " + std::to_string(action));
                const std::shared_ptr<const std::string> before = m().finalCMXString;
                fresh.lastRendering = LastRendering{};
                fresh.plan = ListPlan{};
                fresh.readTracks = Document::ReadTracks{};
                fresh.renderSpare.reset();
                act(d(), action);
                act(whole, action);
                if (action >= StopAtFirst) {  // a stopped rendering keeps the list before
                    EXPECT_EQ(m().finalCMXString, before);
                    EXPECT_EQ(w().EditField1.Text, before);
                    continue;
                }
                const std::vector<PlannedLine>& planned = m().plan.lines;
                ASSERT_EQ(*m().finalCMXString, PlannedText(m(), planned.data(), planned.data() + planned.size()));
                ASSERT_EQ(*m().finalCMXString, *fresh.finalCMXString);
            }
        }
    }
}

TEST_F(HandlersTest, SaveCommandsAskForANameUnlessTheListWasSavedBefore) {
    Load(kList);
    const FolderItem earlier = WriteFile("earlier.edl", "old");
    m().mySavedAbsDateiName = earlier.Name();
    m().mySavedAbsDateiPfad = earlier.AbsolutePath();
    BtnSaveEDL_Action(d());
    EXPECT_FALSE(App_FileSave_Action(d()));
    EXPECT_TRUE(platform.saveDialogsShown.empty() && !m().isModified);
    EXPECT_EQ(testing::ReadBytes(earlier.AbsolutePath()).substr(0, 16), "TITLE: DEMO CUT ");

    EXPECT_FALSE(App_FileSaveAs_Action(d()));  // always asks
    EXPECT_EQ(platform.saveDialogsShown.size(), 1u);
}

TEST_F(HandlersTest, ReelNameKeyFilter) {
    const std::tuple<const char*, int, bool> cases[] = {
        // key, code, swallowed
        {"A", keycode::kNone, false},    {"z", keycode::kNone, false},     {"0", keycode::kNone, false},
        {" ", keycode::kNone, true},     {"-", keycode::kNone, true},      {"\xC3\xA9", keycode::kNone, true},
        {"AB", keycode::kNone, true},    {"", keycode::kLeftArrow, false}, {"", keycode::kForwardDelete, false},
        {"\b", keycode::kDelete, false}, {"\t", keycode::kTab, false},     {"", 115 /* home */, true},
    };
    for (const auto& [key, code, swallowed] : cases)
        EXPECT_EQ(EF_ReelName_KeyDown(d(), key, code), swallowed) << key << code;
    m().IsGrassValley = true;
    EF_ReelName_KeyDown(d(), "-", keycode::kNone);
    EXPECT_EQ(w().EF_ReelName.LimitText, 6);  // the form's width, set at each key
    w().Focus = "EF_ReelName";
    EXPECT_FALSE(EF_ReelName_KeyDown(d(), "\r", keycode::kReturn));
    EXPECT_EQ(w().Focus, "EF_SeqTitle");
}

TEST_F(HandlersTest, TheFieldsTakeTheirTextOverOnReturnOrLeavingAndTheMovieComesFromItsDialog) {
    Load(kList);
    SetFieldText(d(), w().EF_SeqTitle, "new title");
    EXPECT_FALSE(EF_SeqTitle_KeyDown(d(), "\r", keycode::kEnter));
    EXPECT_EQ(m().finalCMXString->substr(0, 17), "TITLE: NEW TITLE\r");

    m().myAbsMoviePfad = "/films/clip.mov";
    SetFieldText(d(), w().EF_RenderedMovie, "cut.mov");  // renders, the name not yet taken
    EXPECT_FALSE(EF_RenderedMovie_KeyDown(d(), "x", keycode::kNone));
    EXPECT_EQ(m().myAbsMovieName, "");
    EXPECT_FALSE(EF_RenderedMovie_KeyDown(d(), "\r", keycode::kReturn));
    EXPECT_EQ(std::tie(m().myAbsMovieName, m().myAbsMoviePfad), std::tuple("CUT.MOV", ""));
    EXPECT_NE(m().finalCMXString->find("* TO CLIP NAME:  CUT.MOV"), std::string::npos);

    platform.openDialogAnswers.push_back(FolderItem("/films/Master Cut.mov"));
    BtnSelectMovie_Action(d());
    ASSERT_EQ(platform.openDialogsShown.size(), 2u);  // the list's, then the movie's
    EXPECT_EQ(platform.openDialogsShown[1].Filter, "movie");
    // The field's capitals come on leaving it.
    EXPECT_EQ(std::tuple(m().myAbsMovieName, m().myAbsMoviePfad, w().EF_RenderedMovie.Text()),
              std::tuple("Master Cut.mov", "/films/Master Cut.mov", "MASTER CUT.MOV"));
    EXPECT_FALSE(App_FileSelectMovie_Action(d()));  // cancelled: the fallback name, the earlier path
    EXPECT_EQ(std::tie(m().myAbsMovieName, m().myAbsMoviePfad), std::tuple("MASTER.MOV", "/films/Master Cut.mov"));
}

TEST_F(HandlersTest, ReservedReelNamesAreQuestioned) {
    // The name, the answer (none: no dialog is shown), whether the name is taken.
    const std::tuple<const char*, std::optional<DialogButton>, bool> cases[] = {
        {"", std::nullopt, true},
        {"A001", std::nullopt, true},
        {"B L", std::nullopt, true},
        {"BLACKS", std::nullopt, true},
        {"BL", DialogButton::Action, true},
        {"ax", DialogButton::Action, true},
        {" AUX ", DialogButton::Alternate, false},
        {"black", DialogButton::Cancel, false},
        {"BLACK", DialogButton::None, false},
    };
    for (const auto& [name, answer, legal] : cases) {
        platform.messageDialogsShown.clear();
        if (answer) platform.messageDialogAnswers.push_back(*answer);
        EXPECT_EQ(CheckLegalReelName(d(), name), legal) << "'" << name << "'";
        EXPECT_EQ(platform.messageDialogsShown.size(), answer ? 1u : 0u) << "'" << name << "'";
    }
    EXPECT_EQ(Shown(platform.messageDialogsShown.back()),
              "1|Name Conflict! Choose an other Reel-Name.|BLACK is a reserved Reel-Name!\r\rOther reserved "
              "Reel-Names are: 'AX', 'BL', 'AUX' and 'BLACK'|Use BLACK|Choose an other Reel-Name|-");

    // Refused when leaving the field: it says "NEW" and the list keeps its old reel.
    Load(kList);
    const std::string before = *m().finalCMXString;
    SetFieldText(d(), w().EF_ReelName, "bl");
    platform.messageDialogAnswers.push_back(DialogButton::Alternate);
    EF_ReelName_LostFocus(d());
    EXPECT_EQ(w().EF_ReelName.Text(), "NEW");
    EXPECT_EQ(*m().finalCMXString, before);
}

enum class Entry { Button, Menu, Drop, Document, Close };

TEST_F(HandlersTest, EveryOpeningAndClosingAsksAboutUnsavedChangesFirst) {
    // The case, modified, saved before, the answer (none: the question is not asked), the save
    // dialog answered, whether the opening or closing goes on.
    const std::tuple<const char*, bool, bool, std::optional<DialogButton>, bool, bool> cases[] = {
        {"unchanged", false, true, std::nullopt, false, true},
        {"Save, never saved", true, false, DialogButton::Action, true, true},
        {"Save, saved before", true, true, DialogButton::Action, true, true},
        {"Save, dialog cancelled", true, false, DialogButton::Action, false, false},
        {"Don't Save", true, true, DialogButton::Alternate, false, true},
        {"Cancel", true, false, DialogButton::Cancel, false, false},
        {"closed", true, false, DialogButton::None, false, false},
    };
    const char* entryNames[] = {"button", "menu", "drop", "document", "close"};
    for (Entry entry : {Entry::Button, Entry::Menu, Entry::Drop, Entry::Document, Entry::Close}) {
        for (const auto& [name, modified, savedBefore, answer, saveDialogAnswered, goesOn] : cases) {
            SCOPED_TRACE(std::string(entryNames[int(entry)]) + ": " + name);
            d().frameRate.open = d().frameRateIfDroped.open = false;
            platform = {};
            w().Title = "Reel 3.edl";
            m().isModified = modified;
            const FolderItem saved = WriteFile("saved.edl", "old");
            m().mySavedAbsDateiName = savedBefore ? saved.Name() : "";
            m().mySavedAbsDateiPfad = savedBefore ? saved.AbsolutePath() : "";
            if (answer) platform.messageDialogAnswers.push_back(*answer);
            if (saveDialogAnswered) platform.saveDialogAnswers.push_back(File("answered.edl"));
            const FolderItem file("/lists/cut.edl");
            switch (entry) {
                case Entry::Button: BtnOpenEDL_Action(d()); break;
                case Entry::Menu: EXPECT_FALSE(App_FileOpen_Action(d())); break;
                case Entry::Drop: EditField1_DropObject(d(), file); break;
                case Entry::Document: App_Event_OpenDocument(d(), file); break;
                case Entry::Close: EXPECT_EQ(MainWindow_Event_CancelClose(d(), false), !goesOn); break;
            }
            ASSERT_EQ(platform.messageDialogsShown.size(), answer ? 1u : 0u);
            if (answer) {
                EXPECT_EQ(Shown(platform.messageDialogsShown[0]),
                          "1|Do you want to save the changes to \"Reel 3.edl\"?|If you don't save, your changes will "
                          "be lost.|Save|Don't Save|Cancel");
            }
            // Closing always asks for the file, even with a known one.
            const bool asksName = answer == DialogButton::Action && (entry == Entry::Close || !savedBefore);
            EXPECT_EQ(platform.saveDialogsShown.size(), asksName ? 1u : 0u);
            const bool droped = entry == Entry::Drop || entry == Entry::Document;
            EXPECT_EQ(FrameRateWindowExists(d()), goesOn && (entry == Entry::Button || entry == Entry::Menu));
            EXPECT_EQ(FrameRateWindowIfDropedExists(d()), goesOn && droped);
            EXPECT_TRUE(platform.messages.empty());
        }
    }
}

TEST_F(HandlersTest, DropsAndDocumentsWithoutAFileTellTheUserAndGoOn) {
    const std::vector<std::pair<void (*)(Desktop&, const FolderItemRef&), const char*>> cases = {
        {EditField1_DropObject, "Error whith File-Drop\r\rOnly one EDL can be drop to the application!"},
        {App_Event_OpenDocument, "Error whith File Drag and Drop\r\rOnly one EDL can be drop to the application!"},
    };
    for (const auto& [entry, message] : cases) {
        d().frameRateIfDroped.open = false;
        platform.messages.clear();
        m().DropedFolderItem = FolderItem("/lists/earlier.edl");
        entry(d(), std::nullopt);
        EXPECT_EQ(platform.messages, std::vector<std::string>{message});
        EXPECT_EQ(m().DropedFolderItem, FolderItem("/lists/earlier.edl"));
        EXPECT_TRUE(FrameRateWindowIfDropedExists(d()));
    }
}

TEST_F(HandlersTest, FrameRateWindowsOpenOnPalTakeTheRowsAndLoad) {
    const FolderItem list = WriteFile("cut.edl", kList);
    const int dropFrame = int(testing::Rate("29.97df").Index()), beyond = int(FrameRate::All().size());
    for (bool droped : {false, true}) {
        SCOPED_TRACE(droped ? "droped" : "open");
        m().frameRateTmp = testing::Rate(30.0);
        FrameRateWindowState& win = droped ? FrameRateWindowIfDroped(d()) : FrameRateWindow(d());
        EXPECT_EQ(std::tuple(win.PopupMenu1.ListIndex, m().frameRateTmp.Value()), std::tuple(1, 25.0));  // PAL first
        // The three rows of old first, in their order; a row outside the rates changes nothing.
        for (auto [row, rate, drop] : {std::tuple{0, "30", false},
                                       {2, "24", false},
                                       {beyond, "24", false},
                                       {1, "25", false},
                                       {dropFrame, "29.97df", true},
                                       {-1, "29.97df", true}}) {
            win.PopupMenu1.ListIndex = row;
            droped ? FrameRateWindowIfDroped_PopupMenu1_Change(d()) : FrameRateWindow_PopupMenu1_Change(d());
            EXPECT_EQ(std::tuple(m().frameRateTmp.Name(), m().dropFrameTmp), std::tuple(rate, drop));
        }
        m().DropedFolderItem = list;
        platform.openDialogAnswers.push_back(list);
        droped ? FrameRateWindowIfDroped_PushButton1_Action(d()) : FrameRateWindow_PushButton1_Action(d());
        EXPECT_FALSE(droped ? FrameRateWindowIfDropedExists(d()) : FrameRateWindowExists(d()));
        EXPECT_EQ(std::tuple(m().frameRate.Name(), w().ST_FrameRate.Text, w().ST_FCM.Text, w().Title),
                  std::tuple("29.97df", "29.97", "Drop Frame", "cut.edl"));
    }
}

TEST_F(HandlersTest, FileTypes) {
    const std::vector<std::tuple<const FileType&, const char*, bool>> cases = {
        {FileTypes1.pText, "cut.edl", true},      {FileTypes1.pText, "CUT.EDL", true},
        {FileTypes1.pText, "cut.edl.txt", false}, {FileTypes1.pText, "edl", false},
        {FileTypes1.pMovie, "a.AVI", true},       {FileTypes1.pMovie, "a.mp4", false},
    };
    for (const auto& [type, name, accepted] : cases) EXPECT_EQ(FileTypeAccepts(type, name), accepted) << name;
}

}  // namespace
}  // namespace vornelt

namespace vornelt {
namespace {

// The window keeps the speeds of the first list it loaded and judges a later list's motion
// lines by them: a line left out or kept against its option is named in the report as such.
TEST_F(HandlersTest, MotionLinesJudgedByTheListBeforeAreNamed) {
    const std::string head = "TITLE: A\r\nFCM: NON-DROP FRAME\r\n";
    const std::string event = "001  TAPE1    V     C        01:00:00:00 01:00:05:00 00:00:00:00 00:00:05:00\r\n";
    const auto motion = [](const char* speed) {
        return std::string("M2   TAPE1       ") + speed + "                01:00:00:00\r\n";
    };
    // The list before, its speed on the motion line; the speed of the list after; the two
    // removal boxes; whether the line stands in the new list; the kinds reported for it.
    const struct {
        const char *before, *after;
        bool removeFreeze, removeSpeed, kept;
        std::vector<ChangeKind> kinds;
    } cases[] = {
        {"000.0", "050.0", true, false, false, {ChangeKind::MotionJudgedByListBefore}},
        {"050.0", "000.0", true, false, true, {ChangeKind::MotionJudgedByListBefore}},
        {"050.0", "025.0", true, false, true, {}},
        {"000.0", "000.0", true, false, false, {ChangeKind::FreezeFrameRemoved}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.before) + " then " + c.after);
        Reset();
        Load(head + event + motion(c.before));
        w().Chb_RemoveFreezeFrame.Value = c.removeFreeze;
        w().Chb_RemoveSpeedChanges.Value = c.removeSpeed;
        Load(head + event + motion(c.after), 25.0, "after.edl");
        EXPECT_EQ(m().finalCMXString->find("M2 ") != std::string::npos, c.kept);
        std::vector<ChangeKind> kinds;
        for (const ChangeItem& item : m().report.Section(ReportSection::Writer))
            if (item.row == 3) kinds.push_back(item.kind);
        EXPECT_EQ(kinds, c.kinds);
    }
}

}  // namespace
}  // namespace vornelt
