#include "session/load.hpp"

#include "passes/passes.hpp"
#include "reader/reader.hpp"
#include "text/encodings.hpp"
#include "text/text.hpp"
#include "writer/writer.hpp"

namespace vornelt {

namespace {

constexpr const char* kCantRead = "Sorry, Can't read the file.";

// The part both roads share, from the wait cursor on.
void LoadFile(Session& s, const FolderItem& file, bool assignRateTwice) {
    MainWindowState& window = s.MainWindow();
    window.Cursor = MouseCursor::Wait;
    std::string bytes;
    if (!s.platform.ReadWholeFile(file, bytes, nullptr)) {
        // The old document stays as it was; nothing resets the wait cursor on this path.
        s.platform.MsgBox(kCantRead);
        return;
    }
    LoadListBytes(s, std::move(bytes), file, assignRateTwice);
}

void ApplySwitches(Document& m, Platform& platform) {
    AllAudioOnOff(m, platform);
    if (platform.StopAsked()) return;
    AllKeysOnOff(m, platform);
    if (platform.StopAsked()) return;
    AllKeysToDissolve(m, platform);
    if (platform.StopAsked()) return;
    AllWipesToDissolve(m, platform);
}

}  // namespace

void LoadListBytes(Session& s, std::string bytes, const FolderItem& file, bool assignRateTwice, Render render) {
    Document& m = s.document;
    MainWindowState& window = s.MainWindow();

    // The cover with the welcome picture leaves the text area here, for good.
    window.Canvas2.Enabled = false;
    window.Canvas2.Visible = false;
    window.Canvas1.Enabled = false;
    window.Canvas1.Visible = false;

    // Every byte is a character of Windows Latin 1; a list of ASCII bytes alone is its own
    // text. What the bytes look like besides is for the check of the list.
    const bool ascii = IsAscii(bytes);
    const LooksLike encoding = ascii ? LooksLike::Ascii : m.report.recording ? GuessEncoding(bytes) : LooksLike::Latin1;
    m.cmxString = std::make_shared<std::string>(ascii ? std::move(bytes) : DecodeWindowsLatin1(std::move(bytes)));

    ResetGlobalVariables_NEU(m, window);
    m.textIsAscii = ascii;

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
        // The drop road copies the rate a second time, to the same values; kept on purpose.
        m.frameRate = m.frameRateTmp;
        m.dropFrame = m.dropFrameTmp;
    }
    window.ST_FrameRate.Text = Str(m.frameRate.Value());
    window.ST_FCM.Text = m.dropFrame ? "Drop Frame" : "Non-Drop Frame";

    // A conversion asked to stop ends between two passes.
    Platform& p = s.platform;
    ParseCMX3600(m, window, s.progress, p);
    if (p.StopAsked()) return;
    CheckForM2(m, p);
    if (p.StopAsked()) return;
    CopyArrays(m, p);
    if (p.StopAsked()) return;
    CheckBSpurClipLenghts(m, p);
    if (p.StopAsked()) return;
    CleanEDL_4(m, p);
    if (p.StopAsked()) return;
    CheckList(m, encoding);
    if (p.StopAsked()) return;
    if (render == Render::Now)
        PrepareToDisplay(s);
    else
        ApplySwitches(m, s.platform);

    window.Cursor = MouseCursor::StandardPointer;
}

void PrepareToDisplay(Session& s) {
    ApplySwitches(s.document, s.platform);
    NewEDL_02(s.document, s.MainWindow(), s.platform);
}

void Open_CMX(Session& s) {
    Document& m = s.document;
    FolderItemRef file = s.platform.ShowOpenDialog({"Open EDL", "Select CMX-3600 or GVG EDL", "text/plain"});
    // Before the answer is looked at, so a cancel keeps it; a load's reset empties it again.
    if (m.myAbsMovieName.empty()) m.myAbsMovieName = "MASTER.MOV";
    if (!file) return;
    LoadFile(s, *file, false);
}

void FileDropedInEditField(Session& s) {
    if (!s.document.DropedFolderItem) {
        s.platform.MsgBox(kCantRead);
        return;
    }
    // A copy: the load may not depend on the reference staying put.
    const FolderItem file = *s.document.DropedFolderItem;
    LoadFile(s, file, true);
}

}  // namespace vornelt
