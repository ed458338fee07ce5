#pragma once
// The small layer that stands in for the window system: dialogs, message boxes, the file
// system, the event loop and the window-modified mark. The logic calls only this, through
// the platform it is handed: the desktop application's is made of Qt, the conversion
// library's (QuietPlatform) shows nothing, and the tests' records what was shown.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.hpp"
#include "platform/folder_item.hpp"
#include "vornelt/error.hpp"
#include "vornelt/files.hpp"

namespace vornelt {

enum class MouseCursor { StandardPointer, Wait, FingerPointer };

// The answer of a message dialog: the button taken, or None when it was closed otherwise.
enum class DialogButton { Action, Alternate, Cancel, None };

struct OpenDialogRequest {
    std::string Title;
    std::string PromptText;
    std::string Filter;  // the name of a file type: "text/plain" or "movie"
};

struct SaveDialogRequest {
    std::string Title;
    std::string PromptText;
    std::string SuggestedFileName;
    FolderItemRef InitialDirectory;
};

struct MessageDialogRequest {
    int Icon = 0;  // 1: caution
    std::string ActionCaption = "OK";
    bool AlternateVisible = false;
    std::string AlternateCaption;
    bool CancelVisible = false;
    std::string CancelCaption = "Cancel";
    std::string Message;
    std::string Explanation;
};

class Platform {
public:
    virtual ~Platform() = default;

    // ---- dialogs; each blocks until answered ----
    virtual FolderItemRef ShowOpenDialog(const OpenDialogRequest& dialog) = 0;  // none: cancelled
    virtual FolderItemRef ShowSaveDialog(const SaveDialogRequest& dialog) = 0;  // none: cancelled
    virtual void MsgBox(std::string_view text) = 0;
    virtual DialogButton ShowMessageDialog(const MessageDialogRequest& dialog) = 0;
    virtual void Beep() = 0;

    // ---- the main window and the event loop ----
    // Marks the main window's close button as holding unsaved changes; 0 or an error number.
    virtual int SetWindowModified(bool modified) = 0;
    // Gives time to the event loop. Called once per row by every long loop, so it must be
    // cheap; an implementation may serve the loop only every few milliseconds.
    virtual void Yield() = 0;
    // Whether the work in hand is to stop: a load asks between its passes. The window never
    // stops one; a conversion stops when its caller asks.
    virtual bool StopAsked() { return false; }
    // A control of the main window state or of the progress window is to be redrawn at once
    // ("EF_SeqTitle", "ProgressBar1", "ST_Detail").
    virtual void Redraw(std::string_view control) = 0;
    virtual void ShowProgressWindow() = 0;
    virtual void CloseProgressWindow() = 0;

    // ---- files ----
    // The whole file into `bytes`; false when it cannot be opened or read (or passes the cap).
    virtual bool ReadWholeFile(const FolderItem& file, std::string& bytes, ErrorStatus* error);
    // Creates the file, replacing one that stands there (see vornelt/files.hpp); none when
    // that fails.
    virtual std::unique_ptr<TextOutputStream> CreateTextFile(const FolderItem& file, ErrorStatus* error);
    // File type and creator (on macOS the Finder information; elsewhere files have none,
    // and this does nothing).
    virtual void SetMacTypeAndCreator(const FolderItem& file, std::string_view type, std::string_view creator);

    // ---- the world outside ----
    // Opens the file in the default application; false when no application could be started.
    virtual bool Launch(const FolderItem& file) = 0;
    virtual void ShowURL(std::string_view url) = 0;
    virtual FolderItem ExecutableFile();
};

// A platform that shows nothing and answers every dialog with a cancel: for work without a
// window, such as the conversion library.
class QuietPlatform : public Platform {
public:
    FolderItemRef ShowOpenDialog(const OpenDialogRequest&) override { return std::nullopt; }
    FolderItemRef ShowSaveDialog(const SaveDialogRequest&) override { return std::nullopt; }
    void MsgBox(std::string_view) override {}
    DialogButton ShowMessageDialog(const MessageDialogRequest&) override { return DialogButton::None; }
    void Beep() override {}
    int SetWindowModified(bool) override { return 0; }
    void Yield() override {}
    void Redraw(std::string_view) override {}
    void ShowProgressWindow() override {}
    void CloseProgressWindow() override {}
    bool Launch(const FolderItem&) override { return true; }
    void ShowURL(std::string_view) override {}
};

}  // namespace vornelt
