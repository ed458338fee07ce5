#include "ui_fixture.hpp"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QFile>
#include <QPushButton>
#include <QTest>

#include <fstream>
#include <unistd.h>

#include "document/window_state.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"

namespace vornelt::qt::testing {

namespace {

template <typename T>
T Take(std::deque<T>& answers, T whenEmpty) {
    if (answers.empty()) return whenEmpty;
    T a = std::move(answers.front());
    answers.pop_front();
    return a;
}

// A fresh program: no state and none of the small windows.
void ResetProgram() {
    ResetProgramState();
    CloseFrameRateWindow();
    CloseFrameRateWindowIfDroped();
    CloseStartUpWindow();
    CloseAboutWindow2();
}

}  // namespace

FolderItemRef ScriptedQtPlatform::ShowOpenDialog(const OpenDialogSpec& request) {
    BeforeDialog();
    openDialogsShown.push_back(request);
    return Take<FolderItemRef>(openDialogAnswers, std::nullopt);
}

FolderItemRef ScriptedQtPlatform::ShowSaveDialog(const SaveDialogSpec& request) {
    BeforeDialog();
    saveDialogsShown.push_back(request);
    return Take<FolderItemRef>(saveDialogAnswers, std::nullopt);
}

void ScriptedQtPlatform::MsgBox(std::string_view text) {
    BeforeDialog();
    messages.emplace_back(text);
}

DialogButton ScriptedQtPlatform::ShowMessageDialog(const MessageDialogSpec& request) {
    BeforeDialog();
    messageDialogsShown.push_back(request);
    return Take(messageDialogAnswers, DialogButton::None);
}

void ScriptedQtPlatform::Redraw(std::string_view control) {
    QtPlatform::Redraw(control);
    if (onRedraw) onRedraw(control);
}

UiFixture::UiFixture() {
    ResetProgram();
    shell_ = std::make_unique<AppShell>();
    platform_ = std::make_unique<ScriptedQtPlatform>(*shell_);
    previous_ = &GetPlatform();
    SetPlatform(platform_.get());
    dir_ = QDir(QDir::tempPath() + QString("/vornelt-ui-%1-%2").arg(::getpid()).arg(QDateTime::currentMSecsSinceEpoch()));
    dir_.mkpath(".");
}

UiFixture::~UiFixture() {
    ResetProgram();
    shell_->Sync();
    shell_.reset();
    SetPlatform(previous_);
    platform_.reset();
    dir_.removeRecursively();
    // Windows closed by the shell go at the next turn of the loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

MainWindowView& UiFixture::main() {
    if (!shell_->Main()) shell_->Dispatch([] { MainWindow(); });
    return *shell_->Main();
}

FolderItem UiFixture::WriteFile(const std::string& name, const std::string& bytes) {
    const std::string path = dir_.filePath(QString::fromStdString(name)).toStdString();
    std::ofstream(path, std::ios::binary) << bytes;
    return FolderItem(path);
}

void UiFixture::LoadThroughWindows(const FolderItem& file, int frameRateRow) {
    MainWindowView& view = main();
    platform_->openDialogAnswers.push_back(file);
    QTest::mouseClick(view.Control("BtnOpenEDL"), Qt::LeftButton);
    FrameRateView* question = shell_->FrameRate();
    QVERIFY(question);
    QComboBox* popup = question->Popup();
    popup->setCurrentIndex(frameRateRow);
    emit popup->activated(frameRateRow);
    QTest::mouseClick(question->Ok(), Qt::LeftButton);
}

MainWindowView& UiFixture::LoadSample(const std::string& name, bool active) {
    LoadThroughWindows(WriteFile(name, SampleList()));
    MainWindowView& view = main();
    if (active) {
        view.activateWindow();
        if (!QTest::qWaitForWindowActive(&view)) QTest::qFail("the main window is not active", __FILE__, __LINE__);
    }
    return view;
}

QImage UiFixture::Shoot(QWidget* window, const QString& name) {
    QDir out(QStringLiteral(VORNELT_SCREENSHOT_DIR));
    out.mkpath(".");
    window->repaint();
    QImage image = window->grab().toImage();
    image.save(out.filePath(name + ".png"));
    return image;
}

std::string SampleList() {
    QFile f(QStringLiteral(VORNELT_UI_TEST_DATA_DIR "/harbour.edl"));
    if (!f.open(QIODevice::ReadOnly)) return {};
    return f.readAll().toStdString();
}

}  // namespace vornelt::qt::testing
