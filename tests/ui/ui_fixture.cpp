#include "ui_fixture.hpp"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <fstream>

#include "document/window_state.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"

namespace vornelt::qt::testing {

namespace {

// A fresh program: no state and none of the small windows.
void ResetProgram() {
    ResetProgramState();
    CloseFrameRateWindow();
    CloseFrameRateWindowIfDroped();
    CloseStartUpWindow();
    CloseAboutWindow2();
}

}  // namespace

UiFixture::UiFixture() {
    ResetProgram();
    shell_ = std::make_unique<AppShell>();
    platform_ = std::make_unique<ScriptedQtPlatform>(*shell_);
    previous_ = &GetPlatform();
    SetPlatform(platform_.get());
}

UiFixture::~UiFixture() {
    ResetProgram();
    shell_->Sync();
    shell_.reset();
    SetPlatform(previous_);
    platform_.reset();
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

void CheckPlacements(QWidget* window, QSize size, const std::vector<Placement>& placements) {
    QCOMPARE(window->size(), size);
    for (const Placement& p : placements) {
        auto* w = window->findChild<QWidget*>(p.name);
        QVERIFY2(w, p.name);
        QCOMPARE(QRect(w->mapTo(window, QPoint(0, 0)), w->size()), p.rect);
        if (p.text) QCOMPARE(TextOf(w), QString::fromUtf8(p.text));
        const int pixels = p.pixelSize == 0 ? QApplication::font().pixelSize() : p.pixelSize;
        if (pixels > 0) QCOMPARE(w->font().pixelSize(), pixels);
    }
}

QString TextOf(QWidget* w) {
    if (auto* b = qobject_cast<QAbstractButton*>(w)) return b->text();
    if (auto* l = qobject_cast<QLabel*>(w)) return l->text();
    if (auto* e = qobject_cast<QLineEdit*>(w)) return e->text();
    if (auto* g = qobject_cast<QGroupBox*>(w)) return g->title();
    if (auto* c = qobject_cast<QComboBox*>(w)) return c->currentText();
    return {};
}

std::string SampleList() {
    QFile f(QStringLiteral(VORNELT_UI_TEST_DATA_DIR "/harbour.edl"));
    if (!f.open(QIODevice::ReadOnly)) return {};
    return f.readAll().toStdString();
}

}  // namespace vornelt::qt::testing
