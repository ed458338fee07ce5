#include "ui_fixture.hpp"

#include <QtTest>
#include <QtWidgets>

#include <fstream>
#include <iterator>

namespace vornelt::qt::testing {

UiFixture::UiFixture()
    : shell_(std::make_unique<AppShell>([this](AppShell& shell) {
          auto platform = std::make_unique<WindowTestPlatform>(shell);
          platform_ = platform.get();
          return platform;
      })) {}

UiFixture::~UiFixture() {
    shell_.reset();
    // Windows closed by the shell go at the next turn of the loop.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

MainWindowView& UiFixture::main() {
    if (!shell_->Main()) shell_->Dispatch([](Desktop& d) { d.session.MainWindow(); });
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
    question->Popup()->setCurrentIndex(frameRateRow);
    emit question->Popup()->activated(frameRateRow);
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

void UiFixture::Choose(const char* item) {
    for (QMenu* menu : main().menuBar()->findChildren<QMenu*>()) {
        for (QAction* a : menu->actions()) {
            if (a->objectName() != QLatin1String(item)) continue;
            emit menu->aboutToShow();
            QVERIFY2(a->isEnabled(), item);
            a->trigger();
            return;
        }
    }
    QFAIL(item);  // not in the menu bar
}

void UiFixture::Shoot(QWidget* window, const QString& name) {
    QDir out(QStringLiteral(VORNELT_SCREENSHOT_DIR));
    out.mkpath(".");
    window->repaint();
    QVERIFY(window->grab().toImage().save(out.filePath(name + ".png")));
}

void DropFiles(QWidget* target, const std::vector<FolderItem>& files) {
    QMimeData mime;
    QList<QUrl> urls;
    for (const FolderItem& file : files) urls << QUrl::fromLocalFile(QString::fromStdString(file.AbsolutePath()));
    mime.setUrls(urls);
    const QPointF at(target->width() / 2.0, target->height() / 2.0);
    QDragEnterEvent enter(at.toPoint(), Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &enter);
    QDropEvent drop(at, Qt::CopyAction, &mime, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(target, &drop);
}

std::string SampleList() { return ReadFile(FolderItem(VORNELT_UI_TEST_DATA_DIR "/harbour.edl")); }

std::string ReadFile(const FolderItem& file) {
    std::ifstream in(file.AbsolutePath(), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

}  // namespace vornelt::qt::testing
