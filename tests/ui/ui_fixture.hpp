#pragma once
// The windows on the offscreen platform. The desktop runs on the tests' recording platform:
// dialogs and message boxes take the test's answers and are recorded, while the event loop,
// the progress window, redraws and the modified mark go to the real Qt platform, as in the
// program.

#include <QTemporaryDir>

#include <memory>
#include <string>
#include <vector>

#include "support/recording_platform.hpp"
#include "ui/qt/app_shell.hpp"
#include "ui/qt/qt_platform.hpp"

namespace vornelt::qt::testing {

class WindowTestPlatform final : public RecordingPlatform {
public:
    explicit WindowTestPlatform(AppShell& shell) : qt_(shell) {}
    QtPlatform& qt() { return qt_; }
    // Message dialogs stand on screen, modal, until the test's keys or clicks answer them.
    bool messageDialogsOnScreen = false;

    // Before a dialog the windows are brought in line, as on screen: the frame-rate window
    // closes before the open dialog.
    FolderItemRef ShowOpenDialog(const OpenDialogRequest& r) override {
        qt_.BeforeDialog();
        return RecordingPlatform::ShowOpenDialog(r);
    }
    FolderItemRef ShowSaveDialog(const SaveDialogRequest& r) override {
        qt_.BeforeDialog();
        return RecordingPlatform::ShowSaveDialog(r);
    }
    void MsgBox(std::string_view text) override {
        qt_.BeforeDialog();
        RecordingPlatform::MsgBox(text);
    }
    DialogButton ShowMessageDialog(const MessageDialogRequest& r) override {
        qt_.BeforeDialog();
        if (!messageDialogsOnScreen) return RecordingPlatform::ShowMessageDialog(r);
        messageDialogsShown.push_back(r);
        return qt_.ShowMessageDialog(r);
    }
    int SetWindowModified(bool modified) override {
        RecordingPlatform::SetWindowModified(modified);
        return qt_.SetWindowModified(modified);
    }
    void Yield() override { qt_.Yield(); }
    void Redraw(std::string_view control) override {
        qt_.Redraw(control);
        RecordingPlatform::Redraw(control);  // then onRedraw sees what is shown
    }
    void ShowProgressWindow() override { qt_.ShowProgressWindow(); }
    void CloseProgressWindow() override { qt_.CloseProgressWindow(); }

private:
    QtPlatform qt_;
};

// A fresh program for each test: shell, desktop and platform.
class UiFixture {
public:
    UiFixture();
    ~UiFixture();

    AppShell& shell() { return *shell_; }
    WindowTestPlatform& platform() { return *platform_; }
    Document& document() { return shell_->desktop().session.document; }
    MainWindowState& window() { return shell_->desktop().session.MainWindow(); }
    MainWindowView& main();  // the main window, made when there is none

    // Writes the bytes to a file of that name in the test's own folder.
    FolderItem WriteFile(const std::string& name, const std::string& bytes);
    // Opens the list through the button, the frame-rate window (its row) and the open dialog.
    void LoadThroughWindows(const FolderItem& file, int frameRateRow = 1);
    // The sample list written under that name and loaded at 25 fps; active: ready for typing.
    MainWindowView& LoadSample(const std::string& name = "a.edl", bool active = false);
    // Chooses an item of the menu bar ("FileSave") as the user does: its menu opens first.
    void Choose(const char* item);
    // Saves a picture of the window into the build folder.
    void Shoot(QWidget* window, const QString& name);

private:
    WindowTestPlatform* platform_ = nullptr;  // owned by the shell
    std::unique_ptr<AppShell> shell_;
    QTemporaryDir dir_;
};

// Drags files over a widget and lets them go.
void DropFiles(QWidget* target, const std::vector<FolderItem>& files);

// The sample list of the manual's picture.
std::string SampleList();
// The whole file, or "" when it cannot be read.
std::string ReadFile(const FolderItem& file);

}  // namespace vornelt::qt::testing
