#include "document/load.hpp"

#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "passes/passes.hpp"
#include "platform/encodings.hpp"
#include "platform/platform.hpp"
#include "reader/reader.hpp"

namespace vornelt {

namespace {

constexpr const char* kCantRead = "Sorry, Can't read the file.";

// The part both roads share, from the wait cursor on. `assignRateTwice` marks the drop
// road, which copies the rate twice (to the same values).
void LoadFile(const FolderItem& file, bool assignRateTwice) {
    Document& m = Module1;
    Platform& platform = GetPlatform();
    MainWindowState& window = MainWindow();

    window.Cursor = MouseCursor::Wait;
    std::optional<std::string> bytes = platform.ReadWholeFile(file);
    if (!bytes) {
        // The old document stays as it was; nothing resets the wait cursor on this path.
        platform.MsgBox(kCantRead);
        return;
    }

    // The cover with the welcome picture leaves the text area here, for good.
    window.Canvas2.Enabled = false;
    window.Canvas2.Visible = false;
    window.Canvas1.Enabled = false;
    window.Canvas1.Visible = false;

    // Every byte is a character of Windows Latin 1.
    m.cmxString = std::make_shared<std::string>(DecodeWindowsLatin1(std::move(*bytes)));
    bytes.reset();

    ResetGlobalVariables_NEU();

    window.Title = file.Name();
    m.myAbsDateiName = file.Name();
    m.myAbsDateiPfad = file.AbsolutePath();
    m.myAbsDateiFolderItem = file.Parent();

    window.Cursor = MouseCursor::StandardPointer;
    m.dbCreated = true;

    // After the reset, which sets both to zero.
    m.frameRate = m.frameRateTmp;
    m.dropFrame = m.dropFrameTmp;
    if (assignRateTwice) {
        m.frameRate = m.frameRateTmp;
        m.dropFrame = m.dropFrameTmp;
    }
    window.ST_FrameRate.Text = Str(m.frameRate);
    window.ST_FCM.Text = m.dropFrame ? "Drop Frame" : "Non-Drop Frame";

    RunLoadPasses();

    window.Cursor = MouseCursor::StandardPointer;
}

}  // namespace

void RunLoadPasses() {
    ParseCMX3600();
    CheckForM2();
    CopyArrays();
    CheckBSpurClipLenghts();
    CleanEDL_4();
    PrepareToDisplay();
}

void Open_CMX() {
    Document& m = Module1;
    FolderItemRef file = GetPlatform().ShowOpenDialog({"Open EDL", "Select CMX-3600 or GVG EDL", "text/plain"});
    // Before the answer is looked at, so a cancel keeps it; a load's reset empties it again.
    if (m.myAbsMovieName.empty()) m.myAbsMovieName = "MASTER.MOV";
    if (!file) return;
    LoadFile(*file, false);
}

void FileDropedInEditField() {
    if (!Module1.DropedFolderItem) {
        GetPlatform().MsgBox(kCantRead);
        return;
    }
    // A copy: the load may not depend on the reference staying put.
    const FolderItem file = *Module1.DropedFolderItem;
    LoadFile(file, true);
}

}  // namespace vornelt
