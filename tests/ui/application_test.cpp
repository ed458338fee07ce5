// The application: the menu bar, its commands, the Edit menu on the focused field, documents
// handed over at start-up, and quitting.
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>

#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/windows.hpp"
#include "ui_fixture.hpp"

namespace vornelt::qt::testing {

namespace {

// Opens the menu of an item, as the user does, and chooses the item.
void Choose(UiFixture& f, const char* item) {
    QAction* a = f.shell().Item(item);
    if (auto* menu = f.main().menuBar()->findChild<QMenu*>("EditMenu")) emit menu->aboutToShow();
    a->trigger();
}

// Waits for the frame-rate question of a document handed over and answers it with OK.
void AnswerDropedQuestion(UiFixture& f) {
    QVERIFY(QTest::qWaitFor([&] { return f.shell().FrameRateIfDroped() != nullptr; }, 2000));
    QTest::mouseClick(f.shell().FrameRateIfDroped()->Ok(), Qt::LeftButton);
}

}  // namespace

class ApplicationTest : public QObject {
    Q_OBJECT
private slots:
    void menuBarHasEveryItem() {
        UiFixture f;
        QMenuBar* bar = f.main().menuBar();
        struct Item {
            const char* menu;
            const char* name;
            const char* caption;
            const char* shortcut;
            bool icon;
        };
        const Item items[] = {
            {"FileMenu", "FileOpen", "Open EDL...", "Ctrl+O", true},
            {"FileMenu", "UntitledSeparator", "-", "", false},
            {"FileMenu", "FileSave", "Save", "Ctrl+S", true},
            {"FileMenu", "FileSaveAs", "Save EDL As...", "Ctrl+Shift+S", true},
            {"FileMenu", "UntitledSeparator0", "-", "", false},
            {"FileMenu", "FileSelectMovie", "Select Movie...", "Ctrl+I", true},
            {"FileMenu", "UntitledSeparator1", "-", "", false},
            {"FileMenu", "FileQuit", "Beenden", "Ctrl+Q", false},
            {"EditMenu", "EditUndo", "&Rückgängig", "Ctrl+Z", false},
            {"EditMenu", "UntitledMenu1", "-", "", false},
            {"EditMenu", "EditCut", "&Ausschneiden", "Ctrl+X", false},
            {"EditMenu", "EditCopy", "&Kopieren", "Ctrl+C", false},
            {"EditMenu", "EditPaste", "&Einfügen", "Ctrl+V", false},
            {"EditMenu", "EditClear", "&Löschen", "", false},
            {"EditMenu", "UntitledMenu0", "-", "", false},
            {"EditMenu", "EditSelectAll", "&Alles auswählen", "Ctrl+A", false},
            {"HelpMenu", "HelpHelp", "Help", "Ctrl+?", true},
            {"HelpMenu", "About", "About", "Ctrl+1", true},
        };
        QStringList titles;
        for (QAction* menu : bar->actions()) titles << menu->text();
        QCOMPARE(titles, (QStringList{"&File", "&Bearbeiten", "Help"}));
        std::map<QString, int> next;
        for (const Item& it : items) {
            auto* menu = bar->findChild<QMenu*>(it.menu);
            QVERIFY2(menu && next[it.menu] < menu->actions().size(), it.name);
            QAction* a = menu->actions()[next[it.menu]++];
            QCOMPARE(a->objectName(), QString::fromUtf8(it.name));
            QCOMPARE(a->isSeparator() ? QStringLiteral("-") : a->text(), QString::fromUtf8(it.caption));
            QCOMPARE(a->shortcut(), QKeySequence(QString::fromUtf8(it.shortcut)));
            QCOMPARE(!a->icon().pixmap(18, 18).isNull(), it.icon);
        }
        QCOMPARE(f.shell().Item("FileQuit")->menuRole(), QAction::QuitRole);
        QCOMPARE(f.shell().Item("About")->menuRole(), QAction::AboutRole);
        // The six commands stand at all times, with no list.
        for (const char* name : {"FileOpen", "FileSave", "FileSaveAs", "FileSelectMovie", "HelpHelp", "About"})
            QVERIFY2(f.shell().Item(name)->isEnabled(), name);
    }

    void commandsWithoutAList() {
        UiFixture f;
        f.main();
        // Save with no list and no earlier save asks for the file and suggests " VORNELT.edl".
        f.shell().Item("FileSave")->trigger();
        QCOMPARE(f.platform().saveDialogsShown.size(), size_t(1));
        // Select Movie works while its button is disabled.
        f.platform().openDialogAnswers.push_back(FolderItem("/films/dusk cut.mov"));
        f.shell().Item("FileSelectMovie")->trigger();
        QCOMPARE(f.platform().openDialogsShown.back().Filter, std::string("movie"));
        QCOMPARE(f.main().findChild<QLineEdit*>("EF_RenderedMovie")->text(), QStringLiteral("DUSK CUT.MOV"));
        QVERIFY(!f.main().Control("BtnSelectMovie")->isEnabled());
        // Help opens the manual two levels above the program.
        f.shell().Item("HelpHelp")->trigger();
        const QString manual = QString::fromStdString(f.platform().launched.back());
        QVERIFY(manual.endsWith("/Resources/Manual.pdf"));
        QVERIFY2(QFileInfo::exists(manual), qPrintable(manual));  // the build tree holds it there
        f.shell().Item("About")->trigger();
        QVERIFY(f.shell().About());
        // Open asks for the rate first; choosing the movie has regenerated the (empty) list,
        // which now counts as unsaved.
        QVERIFY(Module1.isModified);
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);
        f.shell().Item("FileOpen")->trigger();
        QVERIFY(f.shell().FrameRate());
    }

    void editMenuActsOnTheFocusedField() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("a.edl", true);
        auto* title = view.findChild<QLineEdit*>("EF_SeqTitle");
        title->setFocus(Qt::OtherFocusReason);
        Choose(f, "EditSelectAll");
        QVERIFY(title->hasSelectedText());
        Choose(f, "EditCopy");
        QCOMPARE(QGuiApplication::clipboard()->text(), title->text());
        QGuiApplication::clipboard()->setText("night pier");
        Choose(f, "EditPaste");
        QCOMPARE(title->text(), QStringLiteral("NIGHT PIER"));  // folded like typing
        QCOMPARE(MainWindow().EF_SeqTitle.Text(), std::string("NIGHT PIER"));
        Choose(f, "EditUndo");
        QVERIFY(title->text() != QStringLiteral("NIGHT PIER"));

        // The text area gives Copy and Select All.
        view.EditField1()->setFocus(Qt::OtherFocusReason);
        Choose(f, "EditSelectAll");
        QVERIFY(view.EditField1()->hasSelection());
        QVERIFY(!f.shell().Item("EditPaste")->isEnabled() && !f.shell().Item("EditCut")->isEnabled());
        QVERIFY(f.shell().Item("EditSelectAll")->isEnabled());
    }

    void documentsNamedAtStartUpComeOneAfterTheOther() {
        UiFixture f;
        CloseMainWindow();
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

    void quittingAsksAboutUnsavedChanges() {
        UiFixture f;
        f.LoadSample();
        bool quit = false;
        QMetaObject::Connection c = connect(qApp, &QCoreApplication::aboutToQuit, [&] { quit = true; });
        f.platform().messageDialogAnswers.push_back(DialogButton::Cancel);
        f.shell().Item("FileQuit")->trigger();
        disconnect(c);
        QVERIFY(MainWindowExists() && !quit);
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
    }
};

std::unique_ptr<QObject> MakeApplicationTest() { return std::make_unique<ApplicationTest>(); }

}  // namespace vornelt::qt::testing

#include "application_test.moc"
