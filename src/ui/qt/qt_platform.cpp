#include "ui/qt/qt_platform.hpp"

#include <QAbstractButton>
#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QUrl>

#include "ui/qt/app_shell.hpp"
#include "ui/qt/main_window_view.hpp"
#include "ui/qt/qt_util.hpp"
#include "ui/windows.hpp"
#include "vornelt/processor.hpp"

namespace vornelt::qt {

namespace {

// The name filter of a file type: its extensions in both cases, since file names on some
// systems keep their case.
QStringList NameFilters(std::string_view typeName) {
    for (const FileType* type : {&FileTypes1.pText, &FileTypes1.pMovie}) {
        if (type->Name != typeName) continue;
        QStringList patterns;
        for (const QString& ext : ToQ(type->Extensions).split(';', Qt::SkipEmptyParts))
            patterns << "*" + ext.toLower() << "*" + ext.toUpper();
        const QString label = type == &FileTypes1.pText ? QStringLiteral("EDL") : QStringLiteral("Movie");
        return {label + " (" + patterns.join(' ') + ")"};
    }
    return {};
}

// The prompt of a file dialog, above its buttons (the dialogs of the system have no place
// for one).
void AddPrompt(QFileDialog& dialog, const std::string& prompt) {
    if (prompt.empty()) return;
    auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
    if (!grid) return;
    auto* label = new QLabel(ToQ(prompt), &dialog);
    label->setObjectName("PromptText");
    grid->addWidget(label, grid->rowCount(), 0, 1, grid->columnCount());
}

QMessageBox::Icon IconOf(int icon) {
    switch (icon) {
        case 0: return QMessageBox::Information;
        case 1: return QMessageBox::Warning;  // caution
        case 2: return QMessageBox::Critical;
        case 3: return QMessageBox::Question;
        default: return QMessageBox::NoIcon;
    }
}

}  // namespace

QtPlatform::QtPlatform(AppShell& shell) : shell_(shell) {}

void QtPlatform::BeforeDialog() {
    shell_.Sync();
    shell_.Served();
}

FolderItemRef QtPlatform::ShowOpenDialog(const OpenDialogRequest& request) {
    BeforeDialog();
    QFileDialog dialog(shell_.DialogParent(), ToQ(request.Title));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
#if !defined(Q_OS_MACOS)
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    AddPrompt(dialog, request.PromptText);
#endif
    const QStringList filters = NameFilters(request.Filter);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return FolderItem(FromQ(dialog.selectedFiles().first()));
}

FolderItemRef QtPlatform::ShowSaveDialog(const SaveDialogRequest& request) {
    BeforeDialog();
    QFileDialog dialog(shell_.DialogParent(), ToQ(request.Title));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
#if !defined(Q_OS_MACOS)
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    AddPrompt(dialog, request.PromptText);
#endif
    if (request.InitialDirectory && request.InitialDirectory->IsFolder())
        dialog.setDirectory(ToQ(request.InitialDirectory->AbsolutePath()));
    dialog.selectFile(ToQ(request.SuggestedFileName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return FolderItem(FromQ(dialog.selectedFiles().first()));
}

void QtPlatform::MsgBox(std::string_view text) {
    BeforeDialog();
    QMessageBox box(QMessageBox::NoIcon, QStringLiteral("Vornelt"), MessageText(text), QMessageBox::Ok,
                    shell_.DialogParent());
    box.setTextFormat(Qt::PlainText);
    box.exec();
}

DialogButton QtPlatform::ShowMessageDialog(const MessageDialogRequest& request) {
    BeforeDialog();
    QMessageBox box(shell_.DialogParent());
    box.setWindowTitle(QStringLiteral("Vornelt"));
    box.setIcon(IconOf(request.Icon));
    box.setTextFormat(Qt::PlainText);
    box.setText(MessageText(request.Message));
    box.setInformativeText(MessageText(request.Explanation));
    QPushButton* action = box.addButton(ToQ(request.ActionCaption), QMessageBox::AcceptRole);
    action->setObjectName("ActionButton");
    QPushButton* alternate = nullptr;
    if (request.AlternateVisible) {
        alternate = box.addButton(ToQ(request.AlternateCaption), QMessageBox::DestructiveRole);
        alternate->setObjectName("AlternateActionButton");
    }
    // The dialog always has its cancel button, hidden or not, and Escape presses it.
    QPushButton* cancel = box.addButton(ToQ(request.CancelCaption), QMessageBox::RejectRole);
    cancel->setObjectName("CancelButton");
    cancel->setVisible(request.CancelVisible);
    box.setEscapeButton(cancel);
    box.setDefaultButton(action);
    box.exec();
    QAbstractButton* taken = box.clickedButton();
    if (taken && taken == action) return DialogButton::Action;
    if (taken && taken == alternate) return DialogButton::Alternate;
    if (taken && taken == cancel) return DialogButton::Cancel;
    return DialogButton::None;
}

void QtPlatform::Beep() { QApplication::beep(); }

int QtPlatform::SetWindowModified(bool modified) {
    if (MainWindowView* main = shell_.Main()) main->SetModifiedMark(modified);
    return 0;
}

void QtPlatform::Yield() {
    // Called once per row: most calls cost a count and a compare.
    if (++calls_ < kCallsPerClockCheck) return;
    calls_ = 0;
    if (shell_.MsSinceServed() < kServeIntervalMs) return;
    ++served_;
    // The windows show the state as it stands, repaint and move their progress; what the
    // user types or clicks waits until the work is done.
    shell_.Sync();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    ClearUpperVectorHalves();
    shell_.Served();
}

void QtPlatform::Redraw(std::string_view control) { shell_.Redraw(std::string(control)); }

void QtPlatform::ShowProgressWindow() { shell_.ShowProgress(); }

void QtPlatform::CloseProgressWindow() { shell_.CloseProgress(); }

bool QtPlatform::Launch(const FolderItem& file) {
    // False when the desktop has no program to hand the file to.
    return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQ(file.AbsolutePath())));
}

void QtPlatform::ShowURL(std::string_view url) { QDesktopServices::openUrl(QUrl(ToQ(url))); }

}  // namespace vornelt::qt
