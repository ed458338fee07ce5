#pragma once
// The platform of the page: the window system is the browser. Dialogs are the page's own,
// and each waits for its answer while the handler that asked is suspended; the long loops
// give the browser time to paint the progress; a saved list goes out as a download; the
// lists the user opens or drops stand in the page's memory as files.

#include <cstdint>

#include "platform/platform.hpp"

namespace vornelt::web {

// Where the page keeps its files: the list opened, the list dropped, the lists saved.
inline constexpr const char* kOpenedFolder = "/Opened";
inline constexpr const char* kDroppedFolder = "/Dropped";
inline constexpr const char* kDownloadsFolder = "/Downloads";
// A movie picked in the open dialog is named, never read: it stands here by name alone.
inline constexpr const char* kMoviesFolder = "/Movies";

class WebPlatform : public Platform {
public:
    WebPlatform();

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
    std::unique_ptr<TextOutputStream> CreateTextFile(const FolderItem& file, ErrorStatus* error) override;
    void SetMacTypeAndCreator(const FolderItem&, std::string_view, std::string_view) override {}
    bool Launch(const FolderItem&) override { return false; }  // a page opens no file of the computer
    void ShowURL(std::string_view url) override;

    // The long loops call Yield once per row; the browser is given time at most this often.
    static constexpr double kServeIntervalMs = 40;
    static constexpr uint32_t kCallsPerClockCheck = 256;
    // The browser had its turn just now.
    void Served();

private:
    double lastServed_ = 0;
    uint32_t calls_ = 0;
};

}  // namespace vornelt::web
