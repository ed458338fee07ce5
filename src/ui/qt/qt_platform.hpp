#pragma once
// The platform layer on Qt: dialogs, message boxes, the modified mark, the event loop during
// long work, the progress window and the world outside.

#include <cstdint>

#include "platform/platform.hpp"

namespace vornelt::qt {

class AppShell;

class QtPlatform : public Platform {
public:
    explicit QtPlatform(AppShell& shell);

    FolderItemRef ShowOpenDialog(const OpenDialogRequest& request) override;
    FolderItemRef ShowSaveDialog(const SaveDialogRequest& request) override;
    void MsgBox(std::string_view text) override;
    DialogButton ShowMessageDialog(const MessageDialogRequest& request) override;
    void Beep() override;
    int SetWindowModified(bool modified) override;
    void Yield() override;
    void Redraw(std::string_view control) override;
    void ShowProgressWindow() override;
    void CloseProgressWindow() override;
    bool Launch(const FolderItem& file) override;
    void ShowURL(std::string_view url) override;

    // The long loops call Yield once per row; the event loop is served at most this often.
    static constexpr int kServeIntervalMs = 25;
    // How many calls go by between two looks at the clock.
    static constexpr uint32_t kCallsPerClockCheck = 256;
    int64_t TimesServed() const { return served_; }

    // Brings the windows in line with the records before a dialog stands in front of them.
    void BeforeDialog();

private:
    AppShell& shell_;
    uint32_t calls_ = 0;
    int64_t served_ = 0;
};

}  // namespace vornelt::qt
