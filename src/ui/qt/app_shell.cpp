#include "ui/qt/app_shell.hpp"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QCoreApplication>
#include <QIcon>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QScreen>
#include <QTimer>

#include <algorithm>
#include <exception>

#include "document/window_state.hpp"
#include "ui/handlers.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/qt/main_window_view.hpp"
#include "ui/qt/qt_platform.hpp"
#include "ui/qt/qt_util.hpp"
#include "ui/qt/small_windows.hpp"
#include "ui/qt/what_changed_view.hpp"
#include "ui/windows.hpp"
#include "vornelt/processor.hpp"

namespace vornelt::qt {

namespace {

struct MenuItem {
    const char* name;
    const char* caption;  // "-": a separator line
    const char* shortcut;
    const char* icon;
};

// MenuBar1, menu by menu, item by item.
const MenuItem kFileItems[] = {
    {"FileOpen", "Open EDL...", "Ctrl+O", ":/icons/open.svg"},
    {"UntitledSeparator", "-", nullptr, nullptr},
    {"FileSave", "Save", "Ctrl+S", ":/icons/save.svg"},
    {"FileSaveAs", "Save EDL As...", "Ctrl+Shift+S", ":/icons/save-as.svg"},
    {"UntitledSeparator0", "-", nullptr, nullptr},
    {"FileSelectMovie", "Select Movie...", "Ctrl+I", ":/icons/movie.svg"},
    {"FileWhatChanged", "What Changed...", "Ctrl+R", nullptr},
    {"UntitledSeparator1", "-", nullptr, nullptr},
    {"FileQuit", "Beenden", "Ctrl+Q", nullptr},
};
const MenuItem kEditItems[] = {
    {"EditUndo", "&Rückgängig", "Ctrl+Z", nullptr},  {"UntitledMenu1", "-", nullptr, nullptr},
    {"EditCut", "&Ausschneiden", "Ctrl+X", nullptr}, {"EditCopy", "&Kopieren", "Ctrl+C", nullptr},
    {"EditPaste", "&Einfügen", "Ctrl+V", nullptr},   {"EditClear", "&Löschen", nullptr, nullptr},
    {"UntitledMenu0", "-", nullptr, nullptr},        {"EditSelectAll", "&Alles auswählen", "Ctrl+A", nullptr},
};
const MenuItem kHelpItems[] = {
    {"HelpHelp", "Help", "Ctrl+?", ":/icons/help.svg"},
    {"About", "About", "Ctrl+1", ":/icons/vornelt-18.svg"},
};

// The handlers of the application's commands, registered by item name in this order.
struct MenuHandler {
    const char* item;
    bool (*handler)(Desktop&);
};
const MenuHandler kMenuHandlers[] = {
    {"FileOpen", App_FileOpen_Action},
    {"FileSave", App_FileSave_Action},
    {"FileSelectMovie", App_FileSelectMovie_Action},
    {"HelpHelp", App_HelpHelp_Action},
    {"About", App_About_Action},
    {"FileSaveAs", App_FileSaveAs_Action},
};

template <typename View>
void CloseView(QPointer<View>& view) {
    if (!view) return;
    view->CloseForGood();
    view->deleteLater();
    view = nullptr;
}

void CentreOver(QWidget* window, QWidget* over) {
    QRect area = over && over->isVisible() ? over->frameGeometry()
                                           : (window->screen() ? window->screen()->availableGeometry() : QRect());
    if (area.isEmpty()) return;
    QRect r = window->frameGeometry();
    r.moveCenter(area.center());
    // A little above the middle, where a question is looked for.
    window->move(r.topLeft().x(), std::max(area.top(), r.topLeft().y() - area.height() / 8));
}

// Beside the window `beside`, on its right where its screen has room, else on its left, else
// over its edge: always whole on the screen that holds it, and no larger than that screen.
void PlaceBeside(QWidget* window, QWidget* beside) {
    QScreen* screen = beside->screen();
    if (!screen) return;
    const QRect area = screen->availableGeometry();
    const QRect by = beside->frameGeometry();
    // The window's frame is not known before it is shown: it is taken to be as wide as the
    // frame of the window beside it.
    const QRect inside = beside->geometry();
    const QMargins frame(inside.left() - by.left(), inside.top() - by.top(), by.right() - inside.right(),
                         by.bottom() - inside.bottom());
    window->resize(window->size().boundedTo(area.size().shrunkBy(frame)));
    const QSize size = window->size().grownBy(frame);
    constexpr int kGap = 8;
    int x = by.right() + 1 + kGap;
    if (x + size.width() > area.right() + 1) x = by.left() - kGap - size.width();
    if (x < area.left()) x = std::max(area.left(), area.right() + 1 - size.width());
    const int y = std::max(area.top(), std::min(by.top(), area.bottom() + 1 - size.height()));
    window->move(x, y);
}

}  // namespace

AppShell::AppShell(const PlatformMaker& makePlatform)
    : platform_(makePlatform ? makePlatform(*this) : std::make_unique<QtPlatform>(*this)), desktop_(*platform_) {
    sinceServed_.start();
    MakeActions();
    RegisterMenuHandlers();
#if defined(Q_OS_MACOS)
    // The one menu bar of the program, there even when no window is open.
    globalBar_ = new QMenuBar(nullptr);
    BuildMenuBar(globalBar_);
#endif
    connect(qApp, &QApplication::focusChanged, this, [this] { UpdateEditItems(); });
}

AppShell::~AppShell() {
    delete main_;
    delete frameRate_;
    delete frameRateIfDroped_;
    delete progress_;
    delete startUp_;
    delete about_;
    delete globalBar_;
    delete whatChanged_;
}

void AppShell::MakeActions() {
    auto make = [this](const MenuItem* begin, const MenuItem* end) {
        for (const MenuItem* s = begin; s != end; ++s) {
            auto* a = new QAction(this);
            a->setObjectName(QString::fromUtf8(s->name));
            // A separator is a line alone: a caption would stand beside it.
            if (QString(s->caption) == QLatin1String("-"))
                a->setSeparator(true);
            else
                a->setText(QString::fromUtf8(s->caption));
            if (s->shortcut) a->setShortcut(QKeySequence(QString::fromUtf8(s->shortcut)));
            if (s->icon) a->setIcon(QIcon(QString::fromUtf8(s->icon)));
            a->setMenuRole(QAction::NoRole);
            items_[a->objectName()] = a;
        }
    };
    make(std::begin(kFileItems), std::end(kFileItems));
    make(std::begin(kEditItems), std::end(kEditItems));
    make(std::begin(kHelpItems), std::end(kHelpItems));
    // The items that the system moves to the application's menu.
    items_["FileQuit"]->setMenuRole(QAction::QuitRole);
    items_["About"]->setMenuRole(QAction::AboutRole);
}

void AppShell::RegisterMenuHandlers() {
    for (const MenuHandler& m : kMenuHandlers) {
        bool (*handler)(Desktop&) = m.handler;
        connect(items_[m.item], &QAction::triggered, this, [this, handler] { Dispatch(handler); });
    }
    // Quitting has no handler of its own: the main window is asked to close.
    connect(items_["FileQuit"], &QAction::triggered, this, &AppShell::Quit);
    connect(items_["FileWhatChanged"], &QAction::triggered, this, &AppShell::ShowWhatChanged);
    for (const char* name : {"EditUndo", "EditCut", "EditCopy", "EditPaste", "EditClear", "EditSelectAll"}) {
        const QString n = QString::fromUtf8(name);
        connect(items_[n], &QAction::triggered, this, [this, n] { EditCommand(n); });
    }
}

QAction* AppShell::Item(const QString& name) const {
    auto it = items_.find(name);
    return it == items_.end() ? nullptr : it->second;
}

void AppShell::BuildMenuBar(QMenuBar* bar) {
    bar->setObjectName("MenuBar1");
    auto menu = [&](const char* name, const char* caption, const MenuItem* begin, const MenuItem* end) {
        QMenu* m = bar->addMenu(QString::fromUtf8(caption));
        m->setObjectName(QString::fromUtf8(name));
        for (const MenuItem* s = begin; s != end; ++s) m->addAction(items_[QString::fromUtf8(s->name)]);
        return m;
    };
    menu("FileMenu", "&File", std::begin(kFileItems), std::end(kFileItems));
    QMenu* edit = menu("EditMenu", "&Bearbeiten", std::begin(kEditItems), std::end(kEditItems));
    connect(edit, &QMenu::aboutToShow, this, &AppShell::UpdateEditItems);
    menu("HelpMenu", "Help", std::begin(kHelpItems), std::end(kHelpItems));
}

void AppShell::UpdateEditItems() {
    // The toolkit's editing commands act on the field that has the focus; the text area,
    // being read-only, gives Copy and Select All only.
    QWidget* w = QApplication::focusWidget();
    auto* field = qobject_cast<QLineEdit*>(w);
    ListView* list = nullptr;
    for (QWidget* p = w; p && !list; p = p->parentWidget()) list = qobject_cast<ListView*>(p);
    const bool editable = field && !field->isReadOnly() && field->isEnabled();
    const bool selection = (field && field->hasSelectedText()) || (list && list->hasSelection());
    items_["EditUndo"]->setEnabled(editable && field->isUndoAvailable());
    items_["EditCut"]->setEnabled(editable && field->hasSelectedText());
    items_["EditCopy"]->setEnabled(selection);
    items_["EditPaste"]->setEnabled(editable && !QGuiApplication::clipboard()->text().isEmpty());
    items_["EditClear"]->setEnabled(editable && field->hasSelectedText());
    items_["EditSelectAll"]->setEnabled((field && !field->text().isEmpty()) || list);
}

void AppShell::EditCommand(const QString& name) {
    QWidget* w = QApplication::focusWidget();
    if (auto* field = qobject_cast<QLineEdit*>(w)) {
        if (name == "EditUndo")
            field->undo();
        else if (name == "EditCut")
            field->cut();
        else if (name == "EditCopy")
            field->copy();
        else if (name == "EditPaste") {
            if (auto* entry = qobject_cast<EntryFieldWidget*>(field))
                entry->PasteInCapitals();
            else
                field->paste();
        } else if (name == "EditClear")
            field->del();
        else if (name == "EditSelectAll")
            field->selectAll();
        return;
    }
    ListView* list = nullptr;
    for (QWidget* p = w; p && !list; p = p->parentWidget()) list = qobject_cast<ListView*>(p);
    if (!list) return;
    if (name == "EditCopy")
        list->copy();
    else if (name == "EditSelectAll")
        list->selectAll();
}

void AppShell::Start(const QStringList& documents) {
    pendingDocuments_ += documents;
    Dispatch(App_Event_Open);
}

void AppShell::OpenDocument(const QString& path) {
    pendingDocuments_ << path;
    Sync();
}

void AppShell::DeliverDocuments() {
    deliveryScheduled_ = false;
    if (pendingDocuments_.isEmpty()) return;
    // One at a time: the next waits until the question and the load of this one are done.
    if (Busy() || FrameRateWindowExists(desktop_) || FrameRateWindowIfDropedExists(desktop_) ||
        QApplication::activeModalWidget())
        return;
    const QString path = pendingDocuments_.takeFirst();
    const FolderItemRef item = path.isEmpty() ? FolderItemRef() : FolderItemRef(FolderItem(FromQ(path)));
    Dispatch([item](Desktop& d) { App_Event_OpenDocument(d, item); });
}

void AppShell::Dispatch(const std::function<void(Desktop&)>& handler) {
    struct Depth {
        int& d;
        explicit Depth(int& depth) : d(depth) { ++d; }
        ~Depth() { --d; }
    };
    // A click is delivered by the event loop, which has just drawn whatever was pending: a
    // handler's first look at the clock must not serve the loop again at once.
    if (depth_ == 0) Served();
    {
        Depth depth(depth_);
        // The toolkit's own vector code may have left the registers' upper halves in use.
        ClearUpperVectorHalves();
        try {
            handler(desktop_);
        } catch (const std::exception& e) {
            // An error that a routine passes on ends the handler, not the program.
            QMessageBox box(QMessageBox::Warning, QStringLiteral("Vornelt"), QString::fromUtf8(e.what()),
                            QMessageBox::Ok, DialogParent());
            box.exec();
        }
    }
    Sync();
}

void AppShell::Sync() {
    if (syncing_) {
        // A handler ran inside the mirroring (a field that loses the focus): go round again.
        resync_ = true;
        return;
    }
    syncing_ = true;
    int rounds = 0;
    do {
        resync_ = false;
        SyncOnce();
    } while (resync_ && ++rounds < 4);
    syncing_ = false;
    if (focusBackToMain_) FocusBackToMain();
    if (!pendingDocuments_.isEmpty() && !deliveryScheduled_) {
        deliveryScheduled_ = true;
        QTimer::singleShot(0, this, &AppShell::DeliverDocuments);
    }
    emit synced();
}

void AppShell::SyncOnce() {
    // New windows first, so that the program never stands without one for a moment.
    Desktop& d = desktop_;
    if (d.session.MainWindowExists()) {
        if (!main_) {
            // The window's open event has run when the record was made, perhaps by a load
            // that is already in it.
            main_ = new MainWindowView(*this);
            main_->Mirror();
            main_->show();
        } else {
            main_->Mirror();
        }
    }

    auto frameRate = [this](QPointer<FrameRateView>& view, bool droped, bool exists, uint64_t instance) {
        if (exists && (!view || view->Instance() != instance)) {
            CloseView(view);
            view = new FrameRateView(*this, droped, main_ && main_->isVisible() ? main_.data() : nullptr);
            view->show();
            CentreOver(view, main_);
        } else if (exists) {
            view->Mirror();
        } else if (view) {
            CloseView(view);
            focusBackToMain_ = true;
        }
    };
    frameRate(frameRate_, false, FrameRateWindowExists(d), FrameRateWindowExists(d) ? FrameRateWindow(d).Instance : 0);
    frameRate(frameRateIfDroped_, true, FrameRateWindowIfDropedExists(d),
              FrameRateWindowIfDropedExists(d) ? FrameRateWindowIfDroped(d).Instance : 0);

    if (StartUpWindowExists(d)) {
        if (!startUp_ || startUp_->Instance() != StartUpWindow(d).Instance) {
            CloseView(startUp_);
            startUp_ = new StartUpView(*this);
            startUp_->show();
            CentreOver(startUp_, nullptr);
        } else {
            startUp_->Mirror();
        }
    } else {
        CloseView(startUp_);
    }

    if (AboutWindow2Exists(d)) {
        if (!about_ || about_->Instance() != AboutWindow2(d).Instance) {
            CloseView(about_);
            about_ = new AboutView(*this);
            about_->show();
            CentreOver(about_, main_);
        } else {
            about_->Mirror();
        }
    } else {
        CloseView(about_);
    }

    if (progress_) progress_->Mirror();
    if (whatChanged_) whatChanged_->Refresh();

    if (!d.session.MainWindowExists()) CloseView(main_);
}

void AppShell::ShowWhatChanged() {
    if (!whatChanged_) {
        whatChanged_ = new WhatChangedView(*this);
        if (main_ && main_->isVisible()) PlaceBeside(whatChanged_, main_);
        // The menu bar's shortcuts work in this window as in the main window.
        for (const auto& [name, item] : items_)
            if (!item->isSeparator()) whatChanged_->addAction(item);
    }
    whatChanged_->Refresh();
    whatChanged_->show();
    whatChanged_->raise();
}

void AppShell::ShowProgress() {
    if (!progress_)
        progress_ = new ProgressView(desktop_.session.progress, main_ && main_->isVisible() ? main_.data() : nullptr);
    progress_->Mirror();
    progress_->show();
    CentreOver(progress_, main_);
}

void AppShell::CloseProgress() {
    if (!progress_) return;
    progress_->hide();
    progress_->deleteLater();
    progress_ = nullptr;
    focusBackToMain_ = true;
}

void AppShell::FocusBackToMain() {
    // A window system gives the keyboard to no one (or to another program) when the window
    // that had it closes: after the frame-rate question and the progress window of a load the
    // main window takes it back, so that its shortcuts and fields answer at once. It waits
    // while the load runs or another window of the program stands in front.
    if (Busy() || !main_ || !main_->isVisible() || frameRate_ || frameRateIfDroped_ || progress_ || startUp_ ||
        about_ || QApplication::activeModalWidget())
        return;
    focusBackToMain_ = false;
    main_->raise();
    main_->activateWindow();
}

void AppShell::Redraw(const std::string& control) {
    if (progress_ && (control == "ProgressBar1" || control == "ST_Detail" || control == "ST_Headline")) {
        progress_->Mirror();
        QWidget* w = control == "ProgressBar1" ? static_cast<QWidget*>(progress_->Bar())
                     : control == "ST_Detail"  ? static_cast<QWidget*>(progress_->Detail())
                                               : static_cast<QWidget*>(progress_->Headline());
        progress_->RedrawNow(w);
        return;
    }
    Sync();
    if (main_)
        if (QWidget* w = main_->Control(ToQ(control))) w->update();
}

QWidget* AppShell::DialogParent() const {
    if (QWidget* modal = QApplication::activeModalWidget()) return modal;
    if (main_ && main_->isVisible()) return main_;
    return nullptr;
}

void AppShell::Quit() {
    // Closing the main window asks about unsaved changes and may stop the quitting.
    if (main_ && main_->isVisible() && !main_->close()) return;
    CloseView(startUp_);
    CloseView(about_);
    QCoreApplication::quit();
}

}  // namespace vornelt::qt
