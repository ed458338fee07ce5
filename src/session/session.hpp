#pragma once
// A session: one document with its main window state, its progress window and the platform
// it runs on. The window holds one for the program's life; the conversion library makes one
// for each list. Nothing in a session is shared with another.

#include <functional>

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

    // The main window's open event, run on each fresh window the moment it is made: before
    // a load or a handler can write into it. Empty when nothing opens a window (a conversion).
    std::function<void()> mainWindowOpened;

    // The living main window's state; a fresh one with the first values, its open event run,
    // when there is none (at the first use, or after the window was closed).
    MainWindowState& MainWindow() {
        if (!windowOpen_) {
            window_ = MainWindowState();
            windowOpen_ = true;
            if (mainWindowOpened) mainWindowOpened();
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
