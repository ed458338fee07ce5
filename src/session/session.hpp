#pragma once
// A session: one document with its main window state, its progress window and the platform
// it runs on. The window holds one for the program's life; the conversion library makes one
// for each list. Nothing in a session is shared with another.

#include "document/document.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

class Session {
public:
    explicit Session(Platform& platform) : platform(platform) {}
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Document document;
    ProgressWindow progress;
    Platform& platform;

    // The living main window's state; a fresh one with the first values after the window
    // was closed.
    MainWindowState& MainWindow() {
        if (!windowOpen_) {
            window_ = MainWindowState();
            windowOpen_ = true;
        }
        return window_;
    }
    // The main window is closed: the next use of MainWindow() makes a fresh one.
    void CloseMainWindow() noexcept { windowOpen_ = false; }
    bool MainWindowExists() const noexcept { return windowOpen_; }

private:
    MainWindowState window_;
    bool windowOpen_ = false;
};

}  // namespace vornelt
