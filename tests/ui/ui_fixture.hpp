#pragma once
// The windows on the offscreen platform with the dialogs answered by the test: the real Qt
// platform (event loop, progress window, modified mark), except that the file dialogs and
// message boxes take their answers from queues and record what they were asked.

#include <QImage>
#include <QString>
#include <QTemporaryDir>
#include <QWidget>

#include <deque>
#include <string>
#include <vector>

#include "document/module1.hpp"
#include "platform/platform.hpp"
#include "ui/qt/app_shell.hpp"
#include "ui/qt/qt_platform.hpp"

namespace vornelt::qt::testing {

class ScriptedQtPlatform : public QtPlatform {
public:
    using QtPlatform::QtPlatform;

    std::deque<FolderItemRef> openDialogAnswers;
    std::deque<FolderItemRef> saveDialogAnswers;
    std::deque<DialogButton> messageDialogAnswers;

    std::vector<OpenDialogSpec> openDialogsShown;
    std::vector<SaveDialogSpec> saveDialogsShown;
    std::vector<MessageDialogSpec> messageDialogsShown;
    std::vector<std::string> messages;
    std::vector<std::string> launched;

    FolderItemRef ShowOpenDialog(const OpenDialogSpec& r) override {
        return Next(openDialogsShown, r, openDialogAnswers, {});
    }
    FolderItemRef ShowSaveDialog(const SaveDialogSpec& r) override {
        return Next(saveDialogsShown, r, saveDialogAnswers, {});
    }
    DialogButton ShowMessageDialog(const MessageDialogSpec& r) override {
        return Next(messageDialogsShown, r, messageDialogAnswers, DialogButton::None);
    }
    void MsgBox(std::string_view text) override {
        BeforeDialog();
        messages.emplace_back(text);
    }
    void Beep() override {}
    void Launch(const FolderItem& file) override { launched.push_back(file.AbsolutePath()); }
    void ShowURL(std::string_view url) override { launched.emplace_back(url); }
    void Redraw(std::string_view control) override {
        QtPlatform::Redraw(control);
        if (onRedraw) onRedraw(control);
    }

    // Called after each redraw of the progress window, with what it shows.
    std::function<void(std::string_view control)> onRedraw;

private:
    // Notes what was asked and gives the test's next answer, or `whenNone` when it gave no more.
    template <typename Request, typename Answer>
    Answer Next(std::vector<Request>& shown, const Request& request, std::deque<Answer>& answers, Answer whenNone) {
        BeforeDialog();
        shown.push_back(request);
        if (answers.empty()) return whenNone;
        Answer a = std::move(answers.front());
        answers.pop_front();
        return a;
    }
};

// A fresh program for each test: state, shell and platform.
class UiFixture {
public:
    UiFixture();
    ~UiFixture();

    AppShell& shell() { return *shell_; }
    ScriptedQtPlatform& platform() { return *platform_; }
    MainWindowView& main();  // the main window, made when there is none

    // Writes the bytes to a file of that name in the test's own folder.
    FolderItem WriteFile(const std::string& name, const std::string& bytes);
    // Opens the list through the button, the frame-rate window (its row) and the open dialog.
    void LoadThroughWindows(const FolderItem& file, int frameRateRow = 1);
    // The sample list written under that name and loaded at 25 fps; active: ready for typing.
    MainWindowView& LoadSample(const std::string& name = "a.edl", bool active = false);

    // Saves a picture of the window into the build folder and returns it.
    QImage Shoot(QWidget* window, const QString& name);

private:
    std::unique_ptr<AppShell> shell_;
    std::unique_ptr<ScriptedQtPlatform> platform_;
    Platform* previous_ = nullptr;
    QTemporaryDir dir_;
};

// Where a control stands in its window, and what it shows.
struct Placement {
    const char* name;
    QRect rect;          // in the window's coordinates
    const char* text;    // caption, title or shown text; nullptr: not checked
    int pixelSize = -1;  // of the font; -1: not checked, 0: the application's size
    char anchor = 'l';   // as the window grows: 'l' stays, 'r' follows the right edge, 'a' grows with it
};

// The window (or the surface of one) has that size, and each control its place.
void CheckPlacements(QWidget* window, QSize size, const std::vector<Placement>& placements);
QString TextOf(QWidget* control);

// The sample list of the manual's picture.
std::string SampleList();

}  // namespace vornelt::qt::testing
