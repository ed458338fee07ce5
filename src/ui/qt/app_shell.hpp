#pragma once
// The application on screen. The handlers work on the desktop: records of named values (the
// main window state and the records of the small windows) and the session behind them. This
// shell owns the desktop and the platform it runs on, keeps one Qt window for each living
// record, mirrors the records onto them after every handler it runs, writes the user's input
// back before it calls a handler, and owns the menu bar and its commands.

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/platform.hpp"
#include "ui/qt/main_window_view.hpp"
#include "ui/qt/small_windows.hpp"
#include "ui/qt/what_changed_view.hpp"
#include "ui/windows.hpp"

class QAction;
class QMenuBar;
class QWidget;

namespace vornelt::qt {

class AppShell : public QObject {
    Q_OBJECT
public:
    // Makes the platform that the desktop runs on; it may keep the shell, which is not yet
    // in use while it is made.
    using PlatformMaker = std::function<std::unique_ptr<Platform>(AppShell&)>;
    // Without a maker the desktop runs on the Qt platform.
    explicit AppShell(const PlatformMaker& makePlatform = {});
    ~AppShell() override;

    Desktop& desktop() { return desktop_; }

    // The start: the application's open event, then the documents named on the command line,
    // one after the other.
    void Start(const QStringList& documents = {});
    // A document handed over by the system; it waits while a load or its question stands.
    void OpenDocument(const QString& path);

    // Runs one handler on the desktop, then brings every window in line with the records.
    void Dispatch(const std::function<void(Desktop&)>& handler);
    // Brings every window in line with the records (makes, closes and mirrors windows).
    void Sync();
    // A handler is running (a load, a regeneration, a dialog inside one).
    bool Busy() const { return depth_ > 0; }
    // How long ago the event loop last had its turn: it has one just before a handler starts,
    // and whenever a long handler lets it in (Served).
    qint64 MsSinceServed() const { return sinceServed_.elapsed(); }
    void Served() { sinceServed_.restart(); }

    // The progress window, driven through the platform by the reader.
    void ShowProgress();
    void CloseProgress();
    // A control is to be shown at once with its current value.
    void Redraw(const std::string& control);

    // The window that a dialog belongs to.
    QWidget* DialogParent() const;

    MainWindowView* Main() const { return main_; }
    FrameRateView* FrameRate() const { return frameRate_; }
    FrameRateView* FrameRateIfDroped() const { return frameRateIfDroped_; }
    ProgressView* Progress() const { return progress_; }
    StartUpView* StartUp() const { return startUp_; }
    AboutView* About() const { return about_; }
    // "What Changed": the report of the list beside the main window, made on first use.
    void ShowWhatChanged();
    WhatChangedView* WhatChanged() const { return whatChanged_; }

    // The menu bar's items by name ("FileOpen", "EditCopy").
    QAction* Item(const QString& name) const;
    void BuildMenuBar(QMenuBar* bar);

    // Quitting: the main window may refuse, as it does on closing.
    void Quit();
    // On a desktop without a menu bar of its own, closing the main window ends the program.
    bool quitWhenMainWindowCloses = false;

signals:
    // After each pass of bringing the windows in line (for tests).
    void synced();

private:
    void SyncOnce();
    void MakeActions();
    void RegisterMenuHandlers();
    void UpdateEditItems();
    void DeliverDocuments();
    void EditCommand(const QString& name);
    void FocusBackToMain();

    int depth_ = 0;
    QElapsedTimer sinceServed_;
    bool syncing_ = false;
    bool resync_ = false;
    bool deliveryScheduled_ = false;
    bool focusBackToMain_ = false;  // a window of a load has closed since the main window had the keyboard
    QStringList pendingDocuments_;
    std::map<QString, QAction*> items_;
    QMenuBar* globalBar_ = nullptr;

    std::unique_ptr<Platform> platform_;
    Desktop desktop_;

    QPointer<MainWindowView> main_;
    QPointer<FrameRateView> frameRate_;
    QPointer<FrameRateView> frameRateIfDroped_;
    QPointer<ProgressView> progress_;
    QPointer<StartUpView> startUp_;
    QPointer<AboutView> about_;
    QPointer<WhatChangedView> whatChanged_;
};

}  // namespace vornelt::qt
