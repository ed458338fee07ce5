// The frame-rate question, the progress window, the start-up and the about window on screen.
#include <QtTest>
#include <QtWidgets>

#include "ui/handlers.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/qt/qt_util.hpp"
#include "ui/qt/what_changed_view.hpp"
#include "ui_fixture.hpp"
#include "vornelt/convert.hpp"

namespace vornelt::qt::testing {

class SmallWindowsTest : public QObject {
    Q_OBJECT
private slots:
    void frameRateQuestionReturnAndTheCloseBox() {
        UiFixture f;
        MainWindowView& main = f.main();
        // A row other than PAL, and Return for OK: the list comes in at that rate.
        f.platform().openDialogAnswers.push_back(f.WriteFile("rate.edl", SampleList()));
        f.shell().Dispatch(BtnOpenEDL_Action);
        FrameRateView* view = f.shell().FrameRate();
        QVERIFY(view && view->isVisible() && view->isModal());
        f.Shoot(view, "frame-rate-window");
        view->Popup()->setCurrentIndex(2);
        emit view->Popup()->activated(2);
        QTest::keyClick(view, Qt::Key_Return);
        QVERIFY(!f.shell().FrameRate());
        QCOMPARE(qobject_cast<QLabel*>(main.Control("ST_FrameRate"))->text(), QStringLiteral("24"));

        // The next question opens on PAL again. The close box ends the chain.
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);  // the list is unsaved
        f.shell().Dispatch(BtnOpenEDL_Action);
        view = f.shell().FrameRate();
        QCOMPARE(view->Popup()->currentIndex(), 1);
        QVERIFY(view->close());
        QVERIFY(!FrameRateWindowExists(f.shell().desktop()) && !f.shell().FrameRate());
        QCOMPARE(f.platform().openDialogsShown.size(), size_t(1));
    }

    // The three rows of old first, PAL chosen, the other rates below them; a drop-frame list
    // answered 29.97 drop frame is saved as the converter writes it at 29.97df: it says DROP
    // FRAME, and its key over 00:01:00 ends where drop frame counts it.
    void frameRateQuestionOffersEveryRateAndSavesDropFrame() {
        UiFixture f;
        MainWindowView& main = f.main();
        f.shell().Dispatch(BtnOpenEDL_Action);
        FrameRateView* view = f.shell().FrameRate();
        QVERIFY(view);
        QCOMPARE(view->Popup()->count(), int(FrameRate::All().size()));
        const QStringList old = {"30 fps Non-Drop Frame - NTSC", "25 fps Non-Drop Frame - PAL",
                                 "24 fps Non-Drop Frame - FILM"};
        for (int row = 0; row < 3; ++row) QCOMPARE(view->Popup()->itemText(row), old[row]);
        QCOMPARE(view->Popup()->currentIndex(), 1);
        QVERIFY(!view->findChild<QLabel*>("StaticText5"));  // no word that drop frame cannot be chosen
        const int dropFrame = view->Popup()->findText("29.97 fps Drop Frame - NTSC");
        QVERIFY(dropFrame > 2);
        view->close();

        const std::string list =
            "TITLE: Drop\r\nFCM: DROP FRAME\r\n\r\n"
            "001  TAPE1    V     C        01:00:10;00 01:00:11;10 00:00:58;00 00:00:59;10\r\n"
            "002  TAPE2    V     K        02:00:00;00 02:00:00;00 00:00:59;10 00:00:59;10\r\n";
        f.LoadThroughWindows(f.WriteFile("drop.edl", list), dropFrame);
        QCOMPARE(qobject_cast<QLabel*>(main.Control("ST_FCM"))->text(), QStringLiteral("Drop Frame"));
        const FolderItem file = f.WriteFile("saved.edl", "");
        f.platform().saveDialogAnswers.push_back(file);
        f.Choose("FileSaveAs");
        ConvertOptions options;
        options.fps = *FrameRate::Named("29.97df");
        QCOMPARE(ReadFile(file), Convert(list, options, "drop.edl").bytes);
        QVERIFY(ReadFile(file).find("\r\nFCM: DROP FRAME\r\n") != std::string::npos);
        QVERIFY(ReadFile(file).find(" 00:00:59;10 00:01:00;22\r\n") != std::string::npos);
    }

    // Escape closes each window as its own way back does, and the window opens again.
    void escapeClosesTheWindows() {
        const struct {
            const char* name;
            QWidget* (*open)(UiFixture&);  // the widget that has the key
            bool (*exists)(UiFixture&);
        } windows[] = {
            {"FrameRateWindow",
             [](UiFixture& f) -> QWidget* {
                 f.shell().Dispatch(BtnOpenEDL_Action);
                 return f.shell().FrameRate();
             },
             [](UiFixture& f) { return FrameRateWindowExists(f.shell().desktop()) || f.shell().FrameRate(); }},
            {"FrameRateWindowIfDroped",
             [](UiFixture& f) -> QWidget* {
                 DropFiles(f.main().EditField1()->viewport(), {f.WriteFile("dropped.edl", SampleList())});
                 return f.shell().FrameRateIfDroped();
             },
             [](UiFixture& f) {
                 return FrameRateWindowIfDropedExists(f.shell().desktop()) || f.shell().FrameRateIfDroped();
             }},
            {"AboutWindow2",
             [](UiFixture& f) -> QWidget* {
                 f.Choose("About");
                 return f.shell().About();
             },
             [](UiFixture& f) { return AboutWindow2Exists(f.shell().desktop()) || f.shell().About(); }},
            {"WhatChangedWindow",
             [](UiFixture& f) -> QWidget* {
                 f.Choose("FileWhatChanged");
                 return f.shell().WhatChanged() ? f.shell().WhatChanged()->tree() : nullptr;
             },
             [](UiFixture& f) { return f.shell().WhatChanged() != nullptr; }},
        };
        for (const auto& w : windows) {
            UiFixture f;
            f.main();
            for (int round = 0; round < 2; ++round) {
                QWidget* key = w.open(f);
                QVERIFY2(key && key->window()->isVisible(), w.name);
                QTest::keyClick(key, Qt::Key_Escape);
                QVERIFY2(QTest::qWaitFor([&] { return !w.exists(f); }, 1000), w.name);
            }
            // A question closed so ends the chain: no file is asked for, and nothing is read.
            QVERIFY2(f.platform().openDialogsShown.empty() && !f.document().dbCreated, w.name);
        }
    }

    void progressShowsTheReadersRecordWhileItRuns() {
        UiFixture f;
        f.main();
        std::string list;
        for (int k = 1; k <= 250; ++k) list += "* LINE " + std::to_string(k) + "\r\n";
        const ProgressWindow& record = f.shell().desktop().session.progress;
        QStringList shown;
        f.platform().onRedraw = [&](std::string_view control) {
            ProgressView* p = f.shell().Progress();
            if (!p || control != "ST_Detail") return;
            QVERIFY(p->isVisible() && p->isModal());
            QCOMPARE(p->Headline()->text(), ToQ(record.state.ST_Headline.Text));
            QCOMPARE(p->Detail()->text(), ToQ(record.state.ST_Detail.Text));
            QVERIFY(p->Bar()->maximum() == 0);  // no measure yet: the bar shows that work goes on
            shown << p->Detail()->text();
            if (shown.size() == 2) f.Shoot(p, "progress-window");
        };
        f.LoadThroughWindows(f.WriteFile("long.edl", list));
        QVERIFY(shown.size() > 2);
        QVERIFY(!f.shell().Progress() && !record.open);
    }

    void startUpWindowHandsOverAfterThreeSeconds() {
        UiFixture f;
        f.shell().Start();
        StartUpView* view = f.shell().StartUp();
        QVERIFY(view && view->isVisible());
        QCOMPARE(view->findChild<QLabel*>("ST_Version")->text(), ToQ(VersionText()));
        QVERIFY(view->Timer1().isSingleShot() && view->Timer1().isActive());
        f.Shoot(view, "start-up-window");
        QVERIFY(!view->close());  // no way to close it sooner
        QTest::qWait(2000);
        QVERIFY(!f.shell().Main());
        QVERIFY(QTest::qWaitFor([&] { return f.shell().Main() != nullptr; }, 2500));
        QVERIFY(!StartUpWindowExists(f.shell().desktop()));
        QVERIFY(f.shell().Main()->isVisible());
        QVERIFY(!f.document().isModified);
    }

    void aboutWindowAndItsLink() {
        UiFixture f;
        f.main();
        f.shell().Dispatch(App_About_Action);
        AboutView* view = f.shell().About();
        QVERIFY(view);
        QCOMPARE(view->findChild<QLabel*>("ST_Version")->text(), ToQ(VersionText()));
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
        QVERIFY(!AboutWindow2Exists(f.shell().desktop()) && !f.shell().About());
        f.shell().Dispatch(App_About_Action);
        QTest::mouseClick(f.shell().About(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 300));
        QVERIFY(!f.shell().About());
        QCOMPARE(f.platform().launched.size(), size_t(1));
    }
};

std::unique_ptr<QObject> MakeSmallWindowsTest() { return std::make_unique<SmallWindowsTest>(); }

}  // namespace vornelt::qt::testing

#include "small_windows_test.moc"
