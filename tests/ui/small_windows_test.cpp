// The frame-rate question, the progress window, the start-up and the about window on screen.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include <set>

#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"
#include "ui_fixture.hpp"
#include "ui_tests.hpp"

namespace vornelt::qt::testing {

namespace {

struct Placement {
    const char* name;
    QRect rect;
    const char* text;
};

void CheckPlacements(QWidget* window, const std::vector<Placement>& placements) {
    for (const Placement& p : placements) {
        auto* w = window->findChild<QWidget*>(p.name);
        QVERIFY2(w, p.name);
        QCOMPARE(QRect(w->mapTo(window, QPoint(0, 0)), w->size()), p.rect);
        if (!p.text) continue;
        QString text;
        if (auto* l = qobject_cast<QLabel*>(w)) text = l->text();
        if (auto* b = qobject_cast<QPushButton*>(w)) text = b->text();
        if (auto* c = qobject_cast<QComboBox*>(w)) text = c->currentText();
        QCOMPARE(text, QString::fromUtf8(p.text));
    }
}

}  // namespace

class SmallWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void frameRateWindowsOpenOnPal() {
        UiFixture f;
        f.main();
        for (bool droped : {false, true}) {
            f.shell().Dispatch([droped] { droped ? (void)FrameRateWindowIfDroped() : (void)FrameRateWindow(); });
            FrameRateView* view = droped ? f.shell().FrameRateIfDroped() : f.shell().FrameRate();
            QVERIFY(view);
            QVERIFY(view->isVisible());
            QVERIFY(view->isModal());
            QCOMPARE(view->size(), QSize(320, 198));
            QCOMPARE(view->windowTitle(), droped ? QStringLiteral("Select Frame-Rate of droped EDL")
                                                 : QStringLiteral("Select Frame-Rate"));
            CheckPlacements(view, {
                                      {"StaticText2", {18, 14, 282, 20}, "TV Standard of incomming EDL?"},
                                      {"Separator2", {20, 46, 282, 12}, nullptr},
                                      {"StaticText1", {18, 70, 110, 20}, "EDL Frame-Rate:"},
                                      {"PopupMenu1", {140, 69, 158, 20}, "25 fps Non-Drop Frame - PAL"},
                                      {"Separator1", {18, 102, 280, 12}, nullptr},
                                      {"StaticText5", {18, 126, 280, 20}, "Sorry, no 30 fps Drop Frame at this time."},
                                      {"PushButton1", {218, 158, 80, 20}, "OK"},
                                  });
            QCOMPARE(view->findChild<QLabel*>("StaticText5")->palette().color(QPalette::WindowText), QColor("#cc3333"));
            QVERIFY(view->findChild<QLabel*>("StaticText2")->font().bold());
            QVERIFY(view->Ok()->isDefault());
            QCOMPARE(view->Popup()->count(), 3);
            QCOMPARE(view->Popup()->itemText(0), QStringLiteral("30 fps Non-Drop Frame - NTSC"));
            QCOMPARE(view->Popup()->itemText(2), QStringLiteral("24 fps Non-Drop Frame - FILM"));
            f.Shoot(view, droped ? "frame-rate-window-droped" : "frame-rate-window");
        }
    }

    void frameRateRowsAndReturn() {
        UiFixture f;
        f.main();
        struct Row {
            int index;
            double rate;
            const char* shown;
        };
        const Row rows[] = {{0, 30.0, "30"}, {2, 24.0, "24"}, {1, 25.0, "25"}};
        for (const Row& r : rows) {
            const FolderItem file = f.WriteFile("rate.edl", SampleList());
            f.platform().openDialogAnswers.push_back(file);
            Module1.isModified = false;
            f.shell().Dispatch(BtnOpenEDL_Action);
            FrameRateView* view = f.shell().FrameRate();
            QVERIFY(view);
            QCOMPARE(view->Popup()->currentIndex(), 1);  // the last choice is not remembered
            view->Popup()->setCurrentIndex(r.index);
            emit view->Popup()->activated(r.index);
            QCOMPARE(Module1.frameRateTmp, r.rate);
            // Return presses the default button.
            QTest::keyClick(view, Qt::Key_Return);
            QVERIFY(!FrameRateWindowExists());
            QCOMPARE(Module1.frameRate, r.rate);
            QCOMPARE(QString::fromStdString(MainWindow().ST_FrameRate.Text), QString(r.shown));
        }
    }

    void closingTheQuestionEndsTheChain() {
        UiFixture f;
        f.main();
        f.shell().Dispatch(BtnOpenEDL_Action);
        FrameRateView* view = f.shell().FrameRate();
        QVERIFY(view);
        QTest::keyClick(view, Qt::Key_Escape);  // no way back but OK and the close box
        QVERIFY(FrameRateWindowExists());
        QVERIFY(view->close());
        QVERIFY(!FrameRateWindowExists());
        QVERIFY(!f.shell().FrameRate());
        QVERIFY(f.platform().openDialogsShown.empty());
        QCOMPARE(Module1.frameRate, 0.0);
    }

    void progressFollowsTheReader() {
        UiFixture f;
        f.main();
        // 250 lines: the detail line shows lines 1, 101, 201 and each of the last ten.
        std::string list;
        for (int k = 0; k < 250; ++k) list += "* LINE " + std::to_string(k + 1) + (k + 1 < 250 ? "\r\n" : "");
        std::vector<QString> shown;
        bool busyBar = true;
        QString title;
        f.platform().onRedraw = [&](std::string_view control) {
            ProgressView* p = f.shell().Progress();
            if (!p || control != "ST_Detail") return;
            shown.push_back(p->Detail()->text());
            busyBar = busyBar && p->Bar()->maximum() == 0 && p->Bar()->minimum() == 0;
            title = p->windowTitle();
            QVERIFY(p->isVisible() && p->isModal());
            QCOMPARE(p->size(), QSize(500, 112));
            CheckPlacements(p, {{"ST_Headline", {20, 14, 460, 20}, "Parse EDL"},
                                {"ProgressBar1", {20, 46, 460, 20}, nullptr},
                                {"ST_Detail", {20, 78, 460, 14}, nullptr}});
            QVERIFY(p->Headline()->font().bold());
            QCOMPARE(p->Detail()->font().pixelSize(), 10);
            if (shown.size() == 2) f.Shoot(p, "progress-window");
        };
        f.LoadThroughWindows(f.WriteFile("long.edl", list));
        QCOMPARE(Module1.maxZeilen, 249);
        std::vector<QString> expected;
        for (int line : {1, 101, 201, 241, 242, 243, 244, 245, 246, 247, 248, 249, 250})
            expected.push_back("Read Line: " + QString::number(line));
        QCOMPARE(shown, expected);
        QVERIFY(busyBar);  // the maximum is set before the lines are counted
        QCOMPARE(title, QStringLiteral("Parse EDL"));
        QVERIFY(!f.shell().Progress());
    }

    void startUpWindowHandsOverAfterThreeSeconds() {
        UiFixture f;
        CloseMainWindow();
        f.shell().Start();
        StartUpView* view = f.shell().StartUp();
        QVERIFY(view);
        QVERIFY(view->isVisible());
        QCOMPARE(view->size(), QSize(600, 350));
        QCOMPARE(view->windowTitle(), QStringLiteral("Ohne Titel"));
        CheckPlacements(view, {{"Canvas1", {0, 0, 600, 350}, nullptr},
                               {"ST_ProgramName", {280, 60, 300, 32}, "Vornelt"},
                               {"ST_Version", {288, 96, 292, 14}, "Verion 1.0"}});
        QCOMPARE(view->findChild<QLabel*>("ST_ProgramName")->font().pixelSize(), 24);
        QVERIFY(view->Timer1().isSingleShot());
        QCOMPARE(view->Timer1().interval(), 3000);
        QVERIFY(view->Timer1().isActive());
        QVERIFY(!f.shell().Main());
        f.Shoot(view, "start-up-window");
        // No way to close it sooner.
        QVERIFY(!view->close());
        QTest::qWait(2000);
        QVERIFY(!f.shell().Main());
        QVERIFY(WaitFor([&] { return f.shell().Main() != nullptr; }, 2500));
        QVERIFY(!StartUpWindowExists());
        QVERIFY(f.shell().Main()->isVisible());
        QVERIFY(!Module1.isModified);
    }

    void aboutWindowAndItsLink() {
        UiFixture f;
        f.main();
        f.shell().Dispatch([] { App_About_Action(); });
        AboutView* view = f.shell().About();
        QVERIFY(view);
        QCOMPARE(view->size(), QSize(600, 350));
        CheckPlacements(view, {{"Canvas1", {0, 0, 600, 350}, nullptr},
                               {"ST_ProgramName", {280, 44, 300, 32}, "Vornelt"},
                               {"ST_Version", {288, 80, 292, 14}, "Verion 1.0"},
                               {"ST_CreditIdea", {288, 230, 90, 30}, nullptr},
                               {"ST_CreditProgramming", {383, 230, 90, 30}, nullptr},
                               {"ST_CreditHelp", {490, 230, 90, 30}, nullptr},
                               {"ST_www", {288, 262, 292, 20}, "vornelt.example.org"}});
        QVERIFY(view->findChild<QLabel*>("ST_CreditIdea")->text().startsWith("Idea & Icon:\n"));
        QCOMPARE(view->Link()->palette().color(QPalette::WindowText), QColor("#0000ff"));
        QVERIFY(view->Link()->font().underline());
        f.Shoot(view, "about-window");

        // Hovering shows the finger; leaving gives the arrow back.
        QEnterEvent enter(QPointF(5, 5), QPointF(5, 5), QPointF(5, 5));
        QApplication::sendEvent(view->Link(), &enter);
        QCOMPARE(view->cursor().shape(), Qt::PointingHandCursor);
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(view->Link(), &leave);
        QCOMPARE(view->cursor().shape(), Qt::ArrowCursor);

        QTest::mouseClick(view->Link(), Qt::LeftButton);
        QCOMPARE(f.platform().launched, std::vector<std::string>{std::string(kWebSiteURL)});
        QVERIFY(!AboutWindow2Exists());
        QVERIFY(!f.shell().About());

        // A click elsewhere closes it without a visit.
        f.shell().Dispatch([] { App_About_Action(); });
        QTest::mouseClick(f.shell().About(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 300));
        QVERIFY(!f.shell().About());
        QCOMPARE(f.platform().launched.size(), size_t(1));
    }
};

std::unique_ptr<QObject> MakeSmallWindowsTest() { return std::make_unique<SmallWindowsTest>(); }

}  // namespace vornelt::qt::testing

#include "small_windows_test.moc"
