#pragma once
// MainWindow on screen: every control at its place, mirroring the main window state.

#include <QLineEdit>
#include <QMainWindow>

#include <memory>
#include <string>
#include <vector>

#include "document/window_state.hpp"
#include "ui/windows.hpp"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

namespace vornelt::qt {

class AppShell;
class ListView;

// A one-line entry field of the main window. Its keys go through the field's key handler
// before the field sees them, and its text goes into the record at every change.
class EntryFieldWidget : public QLineEdit {
    Q_OBJECT
public:
    EntryFieldWidget(AppShell& shell, EntryField MainWindowState::*field, QWidget* parent);
    void Mirror(const EntryField& field);

    // The virtual key code of a key, as the key handlers test them.
    static int VirtualKeyCode(int qtKey);
    // The clipboard's text into the field, in capitals.
    void PasteInCapitals();

protected:
    bool event(QEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void TextEdited();
    void InsertPasted(const QString& text);
    AppShell& shell_;
    EntryField MainWindowState::*field_;
};

class MainWindowView : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindowView(AppShell& shell);
    ~MainWindowView() override;

    void Mirror();
    // Marks the close button (the title on other desktops) as holding unsaved changes.
    void SetModifiedMark(bool modified) { setWindowModified(modified); }
    // Closing asked for by the records: no question.
    void CloseForGood();

    ListView* EditField1() const { return editField1_; }
    // A control by its name ("Chb_Mirror", "GBox_EDL").
    QWidget* Control(const QString& name) const;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    enum class Anchor { TopLeft, TopRight, All };
    struct Placed {
        QWidget* widget;
        QRect rect;
        Anchor anchor;
    };
    struct CheckBinding {
        QCheckBox* box;
        CheckBox MainWindowState::*member;
    };

    QWidget* Add(QWidget* w, const char* name, QRect rect, Anchor anchor = Anchor::TopLeft);
    QGroupBox* Box(const char* name, const char* caption, QRect rect, Anchor anchor);
    // An option's box takes its caption from the options table: caption null.
    QCheckBox* Check(QGroupBox* box, const char* name, const char* caption, QRect windowRect,
                     CheckBox MainWindowState::*member, void (*handler)(Desktop&));
    QLabel* BoxLabel(QGroupBox* box, const char* name, const char* text, QRect windowRect, Qt::Alignment align);
    void LayoutAnchored();
    void ApplyFocus(const std::string& name);
    void FocusMoved(QWidget* now);
    Session& session() const;

    AppShell& shell_;
    QWidget* surface_ = nullptr;
    std::vector<Placed> placed_;
    std::vector<CheckBinding> checks_;
    std::vector<EntryFieldWidget*> fields_;
    QPushButton* btnOpen_ = nullptr;
    QPushButton* btnSave_ = nullptr;
    QPushButton* btnResetAll_ = nullptr;
    QPushButton* btnSelectMovie_ = nullptr;
    QComboBox* popupTransition_ = nullptr;
    QLabel* stEdlFormat_ = nullptr;
    QLabel* stFrameRate_ = nullptr;
    QLabel* stFcm_ = nullptr;
    QWidget* canvas2_ = nullptr;
    QLabel* canvas1_ = nullptr;
    ListView* editField1_ = nullptr;
    std::shared_ptr<const std::string> shownText_;
    bool shownIsRendered_ = false;  // the text shown is the writer's rendering, not a typed copy
    MouseCursor shownCursor_ = MouseCursor::StandardPointer;
    std::string appliedFocus_;
    bool closingForGood_ = false;
    friend class AppShell;
};

}  // namespace vornelt::qt
