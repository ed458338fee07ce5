#pragma once
// The platform of the tests: dialogs take their answers from queues that the test fills
// beforehand (an empty queue answers with a cancel), everything shown is recorded so that a
// test can read it back, and file failures can be injected.

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "platform/platform.hpp"

namespace vornelt {

class RecordingPlatform : public Platform {
public:
    std::deque<FolderItemRef> openDialogAnswers, saveDialogAnswers;
    std::deque<DialogButton> messageDialogAnswers;
    bool failCreateTextFile = false;            // creating a text file fails (the stream is none)
    std::optional<size_t> failWriteAfterBytes;  // a write fails once this many bytes have gone
    bool launchFails = false;                   // no program opens a launched file

    std::vector<OpenDialogRequest> openDialogsShown;
    std::vector<SaveDialogRequest> saveDialogsShown;
    std::vector<std::string> messages;  // message boxes, in order
    std::vector<MessageDialogRequest> messageDialogsShown;
    std::vector<bool> windowModifiedMarks;  // each SetWindowModified call
    std::vector<std::string> launched;      // files handed to Launch, URLs to ShowURL
    int beeps = 0, progressShows = 0, progressCloses = 0;
    std::function<void(std::string_view control)> onRedraw;  // on each Redraw, with the control's name

    FolderItemRef ShowOpenDialog(const OpenDialogRequest& dialog) override {
        openDialogsShown.push_back(dialog);
        return Take(openDialogAnswers);
    }
    FolderItemRef ShowSaveDialog(const SaveDialogRequest& dialog) override {
        saveDialogsShown.push_back(dialog);
        return Take(saveDialogAnswers);
    }
    DialogButton ShowMessageDialog(const MessageDialogRequest& dialog) override {
        messageDialogsShown.push_back(dialog);
        return Take(messageDialogAnswers, DialogButton::None);
    }
    void MsgBox(std::string_view text) override { messages.emplace_back(text); }
    void Beep() override { ++beeps; }
    int SetWindowModified(bool modified) override {
        windowModifiedMarks.push_back(modified);
        return 0;
    }
    void Yield() override {}
    void Redraw(std::string_view control) override {
        if (onRedraw) onRedraw(control);
    }
    void ShowProgressWindow() override { ++progressShows; }
    void CloseProgressWindow() override { ++progressCloses; }
    std::unique_ptr<TextOutputStream> CreateTextFile(const FolderItem& file, ErrorStatus* error) override;
    bool Launch(const FolderItem& file) override {
        launched.push_back(file.AbsolutePath());
        return !launchFails;
    }
    void ShowURL(std::string_view url) override { launched.emplace_back(url); }

private:
    template <typename T>
    static T Take(std::deque<T>& answers, T whenEmpty = {}) {
        if (answers.empty()) return whenEmpty;
        T answer = std::move(answers.front());
        answers.pop_front();
        return answer;
    }
};

}  // namespace vornelt
