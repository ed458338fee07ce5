// The application: the commands of the menu bar, the Edit menu on the focused field, and
// documents handed over at start-up.
#include <QtTest>
#include <QtWidgets>

#include "ui/qt/list_view.hpp"
#include "ui/windows.hpp"
#include "ui_fixture.hpp"

namespace vornelt::qt::testing {

namespace {

// Waits for the frame-rate question of a document handed over and answers it with the row
// and OK.
void AnswerDropedQuestion(UiFixture& f, int row = 1) {
    QVERIFY(QTest::qWaitFor([&] { return f.shell().FrameRateIfDroped() != nullptr; }, 2000));
    QComboBox* popup = f.shell().FrameRateIfDroped()->Popup();
    popup->setCurrentIndex(row);
    emit popup->activated(row);
    QTest::mouseClick(f.shell().FrameRateIfDroped()->Ok(), Qt::LeftButton);
}

}  // namespace

class ApplicationTest : public QObject {
    Q_OBJECT
private slots:
    void commandsWithoutAList() {
        UiFixture f;
        f.main();
        // Every command stands in the bar with no list. Save with no earlier save asks for the file.
        f.Choose("FileSave");
        QCOMPARE(f.platform().saveDialogsShown.size(), size_t(1));
        // Select Movie works while its button is disabled.
        f.platform().openDialogAnswers.push_back(FolderItem("/films/dusk cut.mov"));
        f.Choose("FileSelectMovie");
        QCOMPARE(f.platform().openDialogsShown.back().Filter, std::string("movie"));
        QCOMPARE(f.main().findChild<QLineEdit*>("EF_RenderedMovie")->text(), QStringLiteral("DUSK CUT.MOV"));
        QVERIFY(!f.main().Control("BtnSelectMovie")->isEnabled());
        // Help opens the manual two levels above the program.
        f.Choose("HelpHelp");
        const QString manual = QString::fromStdString(f.platform().launched.back());
        QVERIFY(manual.endsWith("/Resources/Manual.pdf"));
        QVERIFY2(QFileInfo::exists(manual), qPrintable(manual));  // the build tree holds it there
        QVERIFY(f.platform().messages.empty());
        // With no program to show it, the user learns where the manual is.
        f.platform().launchFails = true;
        f.Choose("HelpHelp");
        QCOMPARE(f.platform().messages.size(), size_t(1));
        QVERIFY2(QString::fromStdString(f.platform().messages[0]).contains(manual), f.platform().messages[0].c_str());
        f.Choose("About");
        QVERIFY(f.shell().About());
        // Open asks for the rate first; choosing the movie has regenerated the (empty) list,
        // which now counts as unsaved.
        QVERIFY(f.document().isModified);
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);
        f.Choose("FileOpen");
        QVERIFY(f.shell().FrameRate());
    }

    void editMenuActsOnTheFocusedField() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("a.edl", true);
        auto* title = view.findChild<QLineEdit*>("EF_SeqTitle");
        title->setFocus(Qt::OtherFocusReason);
        f.Choose("EditSelectAll");
        QVERIFY(title->hasSelectedText());
        f.Choose("EditCopy");
        QCOMPARE(QGuiApplication::clipboard()->text(), title->text());
        // Pasted as typed: folded, and without the control characters no key gives.
        QGuiApplication::clipboard()->setText(QStringLiteral("night\t pier\x01\x7f\r\n"));
        f.Choose("EditPaste");
        QCOMPARE(title->text(), QStringLiteral("NIGHT PIER"));
        QCOMPARE(f.window().EF_SeqTitle.Text(), std::string("NIGHT PIER"));
        f.Choose("EditUndo");
        QVERIFY(title->text() != QStringLiteral("NIGHT PIER"));
        // Text dragged into a field is pasted text.
        QMimeData dragged;
        dragged.setText(QStringLiteral("a\tb\n"));
        const QPoint at(2, title->height() / 2);
        QDragEnterEvent enter(at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(title, &enter);
        QDropEvent drop(at, Qt::CopyAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(title, &drop);
        QVERIFY2(title->text().startsWith(QStringLiteral("AB")), qPrintable(title->text()));

        // The text area gives Copy and Select All.
        view.EditField1()->setFocus(Qt::OtherFocusReason);
        f.Choose("EditSelectAll");
        QVERIFY(view.EditField1()->hasSelection());
        QVERIFY(!f.shell().Item("EditPaste")->isEnabled() && !f.shell().Item("EditCut")->isEnabled());
        QVERIFY(f.shell().Item("EditSelectAll")->isEnabled());
    }

    void everyRoadOfALoadGivesTheKeyboardBackToTheMainWindow() {
        // Once the frame-rate question and the progress window are gone the main window has
        // the keyboard, with the list's rate shown, whichever way the list came in.
        enum class Road { Button, Menu, Drop, AtStartUp, AfterStartUp };
        for (Road road : {Road::Button, Road::Menu, Road::Drop, Road::AtStartUp, Road::AfterStartUp}) {
            UiFixture f;
            const FolderItem file = f.WriteFile("Reel.edl", SampleList());
            switch (road) {
                case Road::Button: f.LoadThroughWindows(file, 2); break;
                case Road::Menu:
                    f.main();
                    f.platform().openDialogAnswers.push_back(file);
                    f.Choose("FileOpen");
                    f.shell().FrameRate()->Popup()->setCurrentIndex(2);
                    emit f.shell().FrameRate()->Popup()->activated(2);
                    QTest::mouseClick(f.shell().FrameRate()->Ok(), Qt::LeftButton);
                    break;
                case Road::Drop:
                    DropFiles(f.main().EditField1()->viewport(), {file});
                    AnswerDropedQuestion(f, 2);
                    break;
                case Road::AtStartUp:  // answered while the start-up window stands
                    f.shell().Start({QString::fromStdString(file.AbsolutePath())});
                    AnswerDropedQuestion(f, 2);
                    QVERIFY(f.shell().StartUp());
                    f.shell().Dispatch(StartUpWindow_Timer1_Action);
                    break;
                case Road::AfterStartUp:
                    f.shell().Start({QString::fromStdString(file.AbsolutePath())});
                    QVERIFY(QTest::qWaitFor([&] { return f.shell().FrameRateIfDroped() != nullptr; }, 2000));
                    f.shell().Dispatch(StartUpWindow_Timer1_Action);
                    AnswerDropedQuestion(f, 2);
                    break;
            }
            const int r = int(road);
            MainWindowView* view = f.shell().Main();
            QVERIFY2(view && view->windowTitle() == QStringLiteral("Reel.edl[*]"), qPrintable(QString::number(r)));
            QVERIFY2(QTest::qWaitFor([&] { return QApplication::activeWindow() == view; }, 1000),
                     qPrintable(QString::number(r)));
            QCOMPARE(qobject_cast<QLabel*>(view->Control("ST_FrameRate"))->text(), QStringLiteral("24"));
            QCOMPARE(qobject_cast<QLabel*>(view->Control("ST_FCM"))->text(), QStringLiteral("Non-Drop Frame"));
        }
    }

    void documentsNamedAtStartUpComeOneAfterTheOther() {
        UiFixture f;
        const FolderItem a = f.WriteFile("Reel A.edl", SampleList());
        const FolderItem b = f.WriteFile("Reel B.edl", SampleList());
        f.shell().Start({QString::fromStdString(a.AbsolutePath()), QString::fromStdString(b.AbsolutePath())});
        QVERIFY(f.shell().StartUp());
        // The first comes before the main window, without a question.
        AnswerDropedQuestion(f);
        QVERIFY(f.platform().messageDialogsShown.empty());
        QVERIFY(f.shell().Main());
        QCOMPARE(f.shell().Main()->windowTitle(), QStringLiteral("Reel A.edl[*]"));
        // The second asks about the first list, which a load leaves unsaved.
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);
        AnswerDropedQuestion(f);
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
        QCOMPARE(f.shell().Main()->windowTitle(), QStringLiteral("Reel B.edl[*]"));

        // A document that cannot be read says so.
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);
        f.shell().OpenDocument(QStringLiteral("/no/such/list.edl"));
        AnswerDropedQuestion(f);
        QCOMPARE(f.platform().messages, std::vector<std::string>{"Sorry, Can't read the file."});
    }
};

std::unique_ptr<QObject> MakeApplicationTest() { return std::make_unique<ApplicationTest>(); }

}  // namespace vornelt::qt::testing

#include "application_test.moc"
