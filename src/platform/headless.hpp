#pragma once
// The platform without a window: for the tests and the command-line converter. Dialogs take
// their answers from queues that the caller fills beforehand (an empty queue answers with a
// cancel), and everything shown is recorded so that a test can read it back.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/platform.hpp"

namespace vornelt {

class HeadlessPlatform : public Platform {
public:
    // ---- scripted answers ----
    std::deque<FolderItemRef> openDialogAnswers;
    std::deque<FolderItemRef> saveDialogAnswers;
    std::deque<DialogButton> messageDialogAnswers;
    int setWindowModifiedResult = 0;
    // Reading a file whose path is listed here fails as an unreadable file would.
    std::vector<std::string> unreadablePaths;
    // When set, creating a text file fails (the stream is none).
    bool failCreateTextFile = false;
    // When set, a write fails once this many bytes have gone to the file.
    std::optional<size_t> failWriteAfterBytes;

    // ---- what was shown ----
    std::vector<OpenDialogSpec> openDialogsShown;
    std::vector<SaveDialogSpec> saveDialogsShown;
    std::vector<std::string> messages;  // message boxes, in order
    std::vector<MessageDialogSpec> messageDialogsShown;
    std::vector<bool> windowModifiedMarks;  // each SetWindowModified call
    std::vector<std::string> redraws;       // each Redraw, by control name
    std::vector<std::string> launched;      // files handed to Launch, URLs to ShowURL
    int beeps = 0;
    int progressShows = 0;
    int progressCloses = 0;
    int64_t yields = 0;
    // Called on each Redraw, e.g. to read the progress values as they are shown.
    std::function<void(std::string_view control)> onRedraw;

    FolderItemRef ShowOpenDialog(const OpenDialogSpec& dialog) override;
    FolderItemRef ShowSaveDialog(const SaveDialogSpec& dialog) override;
    void MsgBox(std::string_view text) override;
    DialogButton ShowMessageDialog(const MessageDialogSpec& dialog) override;
    void Beep() override { ++beeps; }
    int SetWindowModified(bool modified) override;
    void Yield() override { ++yields; }
    void Redraw(std::string_view control) override;
    void ShowProgressWindow() override { ++progressShows; }
    void CloseProgressWindow() override { ++progressCloses; }
    std::optional<std::string> ReadWholeFile(const FolderItem& file) override;
    std::unique_ptr<TextOutputStream> CreateTextFile(const FolderItem& file) override;
    void Launch(const FolderItem& file) override { launched.push_back(file.AbsolutePath()); }
    void ShowURL(std::string_view url) override { launched.emplace_back(url); }
};

// Installs a platform for the lifetime of this object (a test's scope) and puts the earlier
// one back afterwards.
class ScopedPlatform {
public:
    explicit ScopedPlatform(Platform& platform);
    ~ScopedPlatform();
    ScopedPlatform(const ScopedPlatform&) = delete;
    ScopedPlatform& operator=(const ScopedPlatform&) = delete;

private:
    Platform* previous_;
};

}  // namespace vornelt
