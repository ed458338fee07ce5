// The frame-rate question, the progress window, the start-up and the about window on screen.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>

#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "ui/handlers.hpp"
#include "ui/windows.hpp"
#include "ui_fixture.hpp"

namespace vornelt::qt::testing {

class SmallWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void frameRateWindowsOpenOnPal() {
        UiFixture f;
        f.main();
        for (bool droped : {false, true}) {
            f.shell().Dispatch([droped] { droped ? (void)FrameRateWindowIfDroped() : (void)FrameRateWindow(); });
            FrameRateView* view = droped ? f.shell().FrameRateIfDroped() : f.shell().FrameRate();
            QVERIFY(view && view->isVisible() && view->isModal());
            QCOMPARE(view->windowTitle(),
                     droped ? QStringLiteral("Select Frame-Rate of droped EDL") : QStringLiteral("Select Frame-Rate"));
            CheckPlacements(view, {320, 198},
                            {{"StaticText2", {18, 14, 282, 20}, "TV Standard of incomming EDL?"},
                             {"Separator2", {20, 46, 282, 12}, nullptr},
                             {"StaticText1", {18, 70, 110, 20}, "EDL Frame-Rate:"},
                             {"PopupMenu1", {140, 69, 158, 20}, "25 fps Non-Drop Frame - PAL"},
                             {"Separator1", {18, 102, 280, 12}, nullptr},
                             {"StaticText5", {18, 126, 280, 20}, "Sorry, no 30 fps Drop Frame at this time."},
                             {"PushButton1", {218, 158, 80, 20}, "OK"}});
            QCOMPARE(view->findChild<QLabel*>("StaticText5")->palette().color(QPalette::WindowText), QColor("#cc3333"));
            QVERIFY(view->findChild<QLabel*>("StaticText2")->font().bold());
            QCOMPARE(view->Popup()->count(), 3);
            QCOMPARE(view->Popup()->itemText(0), QStringLiteral("30 fps Non-Drop Frame - NTSC"));
            QCOMPARE(view->Popup()->itemText(2), QStringLiteral("24 fps Non-Drop Frame - FILM"));
            f.Shoot(view, droped ? "frame-rate-window-droped" : "frame-rate-window");
        }
    }

    void frameRateRowsReturnAndTheCloseBox() {
        UiFixture f;
        f.main();
        struct Row {
            int index;
            double rate;
            const char* shown;
        };
        for (const Row& r : {Row{0, 30.0, "30"}, Row{2, 24.0, "24"}, Row{1, 25.0, "25"}}) {
            f.platform().openDialogAnswers.push_back(f.WriteFile("rate.edl", SampleList()));
            Module1.isModified = false;
            f.shell().Dispatch(BtnOpenEDL_Action);
            FrameRateView* view = f.shell().FrameRate();
            QVERIFY(view);
            QCOMPARE(view->Popup()->currentIndex(), 1);  // the last choice is not remembered
            view->Popup()->setCurrentIndex(r.index);
            emit view->Popup()->activated(r.index);
            QTest::keyClick(view, Qt::Key_Return);  // presses the default button
            QVERIFY(!FrameRateWindowExists());
            QCOMPARE(Module1.frameRate, r.rate);
            QCOMPARE(QString::fromStdString(MainWindow().ST_FrameRate.Text), QString(r.shown));
        }

        // No way back but OK and the close box, which ends the chain.
        const size_t dialogs = f.platform().openDialogsShown.size();
        Module1.isModified = false;
        f.shell().Dispatch(BtnOpenEDL_Action);
        FrameRateView* view = f.shell().FrameRate();
        QTest::keyClick(view, Qt::Key_Escape);
        QVERIFY(FrameRateWindowExists());
        QVERIFY(view->close());
        QVERIFY(!FrameRateWindowExists() && !f.shell().FrameRate());
        QCOMPARE(f.platform().openDialogsShown.size(), dialogs);
    }

    void progressFollowsTheReader() {
        UiFixture f;
        f.main();
        // 250 lines: the detail line shows lines 1, 101, 201 and each of the last ten.
        std::string list;
        for (int k = 1; k <= 250; ++k) list += "* LINE " + std::to_string(k) + (k < 250 ? "\r\n" : "");
        QStringList shown;
        bool busyBar = true;
        f.platform().onRedraw = [&](std::string_view control) {
            ProgressView* p = f.shell().Progress();
            if (!p || control != "ST_Detail") return;
            shown << p->Detail()->text();
            busyBar = busyBar && p->Bar()->maximum() == 0 && p->Bar()->minimum() == 0;
            QVERIFY(p->isVisible() && p->isModal());
            QCOMPARE(p->windowTitle(), QStringLiteral("Parse EDL"));
            CheckPlacements(p, {500, 112},
                            {{"ST_Headline", {20, 14, 460, 20}, "Parse EDL"},
                             {"ProgressBar1", {20, 46, 460, 20}, nullptr},
                             {"ST_Detail", {20, 78, 460, 14}, nullptr, 10}});
            QVERIFY(p->Headline()->font().bold());
            if (shown.size() == 2) f.Shoot(p, "progress-window");
        };
        f.LoadThroughWindows(f.WriteFile("long.edl", list));
        QCOMPARE(Module1.maxZeilen, 249);
        QStringList expected;
        for (int line : {1, 101, 201, 241, 242, 243, 244, 245, 246, 247, 248, 249, 250})
            expected << "Read Line: " + QString::number(line);
        QCOMPARE(shown, expected);
        QVERIFY(busyBar);  // the maximum is set before the lines are counted
        QVERIFY(!f.shell().Progress());
    }

    void startUpWindowHandsOverAfterThreeSeconds() {
        UiFixture f;
        CloseMainWindow();
        f.shell().Start();
        StartUpView* view = f.shell().StartUp();
        QVERIFY(view && view->isVisible());
        QCOMPARE(view->windowTitle(), QStringLiteral("Ohne Titel"));
        CheckPlacements(view, {600, 350},
                        {{"Canvas1", {0, 0, 600, 350}, nullptr},
                         {"ST_ProgramName", {280, 60, 300, 32}, "Vornelt", 24},
                         {"ST_Version", {288, 96, 292, 14}, "Verion 1.0"}});
        QVERIFY(view->Timer1().isSingleShot() && view->Timer1().isActive());
        QCOMPARE(view->Timer1().interval(), 3000);
        f.Shoot(view, "start-up-window");
        QVERIFY(!view->close());  // no way to close it sooner
        QTest::qWait(2000);
        QVERIFY(!f.shell().Main());
        QVERIFY(QTest::qWaitFor([&] { return f.shell().Main() != nullptr; }, 2500));
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
        CheckPlacements(view, {600, 350},
                        {{"Canvas1", {0, 0, 600, 350}, nullptr},
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

        // A click on the link visits the site and closes; a click elsewhere only closes.
        QTest::mouseClick(view->Link(), Qt::LeftButton);
        QCOMPARE(f.platform().launched, std::vector<std::string>{std::string(kWebSiteURL)});
        QVERIFY(!AboutWindow2Exists() && !f.shell().About());
        f.shell().Dispatch([] { App_About_Action(); });
        QTest::mouseClick(f.shell().About(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 300));
        QVERIFY(!f.shell().About());
        QCOMPARE(f.platform().launched.size(), size_t(1));
    }
};

std::unique_ptr<QObject> MakeSmallWindowsTest() { return std::make_unique<SmallWindowsTest>(); }

}  // namespace vornelt::qt::testing

#include "small_windows_test.moc"
