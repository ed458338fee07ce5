// The main window on screen: places, captions, fonts, anchoring, the two states, the keys
// of the fields, option clicks, a drop and closing with unsaved changes.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "ui/handlers.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/windows.hpp"
#include "ui_fixture.hpp"

namespace vornelt::qt::testing {

namespace {

// Every control of the main window.
const Placement kPlacements[] = {
    {"BtnOpenEDL", {20, 14, 120, 20}, "Open EDL...", 0, 'l'},
    {"BtnSaveEDL", {152, 14, 120, 20}, "Save EDL...", 0, 'l'},
    {"BtnResetAll", {771, 14, 120, 20}, "Reset All", 0, 'r'},
    {"Canvas3", {928, 14, 32, 32}, nullptr, 0, 'r'},
    {"StaticText1", {20, 54, 80, 14}, "Reel-Name:", 10, 'l'},
    {"StaticText2", {112, 54, 132, 14}, "Sequence-Title:", 10, 'l'},
    {"StaticText3", {388, 54, 132, 14}, "Rendered Movie:", 10, 'l'},
    {"EF_ReelName", {20, 72, 80, 22}, "", 0, 'l'},
    {"EF_SeqTitle", {112, 72, 264, 22}, "", 0, 'l'},
    {"EF_RenderedMovie", {388, 72, 180, 22}, "", 0, 'l'},
    {"BtnSelectMovie", {580, 73, 140, 20}, "Select Movie...", 0, 'l'},
    {"EditField1", {20, 106, 700, 514}, nullptr, 12, 'a'},
    {"Canvas2", {10, 100, 720, 528}, nullptr, 0, 'a'},
    {"Canvas1", {140, 179, 460, 371}, nullptr, 0, 'l'},
    {"GroupBox1", {732, 54, 228, 90}, "General", -1, 'r'},
    {"StaticText4", {742, 80, 70, 14}, "EDL Format:", 10, 'r'},
    {"StaticText5", {742, 100, 70, 14}, "Frame-Rate:", 10, 'r'},
    {"StaticText6", {742, 120, 70, 14}, "FCM:", 10, 'r'},
    {"ST_EdlFormat", {820, 80, 100, 14}, "", 10, 'r'},
    {"ST_FrameRate", {820, 100, 100, 14}, "", 10, 'r'},
    {"ST_FCM", {820, 120, 100, 14}, "", 10, 'r'},
    {"GBox_EDL", {732, 156, 228, 60}, "EDL", -1, 'r'},
    {"Chb_Mirror", {742, 182, 54, 20}, "Mirror", 10, 'r'},
    {"Chb_FixKeyDuration", {806, 182, 114, 20}, "Fix Key Duration", 10, 'r'},
    {"GBox_Video", {732, 228, 228, 60}, "Video", -1, 'r'},
    {"Chb_V1", {742, 254, 40, 20}, "V1", 10, 'r'},
    {"Chb_V2", {794, 254, 65, 20}, "Key (V2)", 10, 'r'},
    {"GBox_Audio1", {732, 300, 228, 60}, "Audio", -1, 'r'},
    {"Chb_A1234", {742, 326, 70, 20}, "A1234", 10, 'r'},
    {"GBox_Audio", {988, 300, 200, 60}, "Audio", -1, 'r'},
    {"Chb_A1", {998, 326, 40, 20}, "A1", 10, 'r'},
    {"Chb_A2", {1044, 326, 40, 20}, "A2", 10, 'r'},
    {"Chb_A3", {1090, 326, 40, 20}, "A3", 10, 'r'},
    {"Chb_A4", {1136, 326, 40, 20}, "A4", 10, 'r'},
    {"GBox_Trans", {732, 372, 228, 146}, "Transitions && Effects", -1, 'r'},
    {"Chb_RemoveFreezeFrame", {742, 396, 178, 20}, "Remove Freeze Frames", 10, 'r'},
    {"Chb_RemoveSpeedChanges", {742, 426, 178, 20}, "Remove Speed Changes", 10, 'r'},
    {"Chb_TransToDissolve", {742, 456, 178, 20}, "Wipes to Dissolves", 10, 'r'},
    {"Chb_KeyToDissolve", {742, 486, 209, 20}, "Keys to Dissolves - V2 overwrites V1 !!!", 10, 'r'},
    {"GBox_Comment", {732, 530, 228, 90}, "Comment Lines", -1, 'r'},
    {"Chb_ComntGenerateNew", {742, 556, 178, 20}, "Generate New Comment Lines", 10, 'r'},
    {"PopupTransition", {742, 586, 209, 20}, "Set Transitions to SMPTE-WipeCodes", 10, 'r'},
    {"Chb_ComntTransition", {742, 616, 178, 20}, "Transitions", 10, 'r'},
    {"Chb_ComntClipNames", {742, 646, 178, 20}, "Clip-Names", 10, 'r'},
    {"Chb_ComntOther", {742, 676, 178, 20}, "Other", 10, 'r'},
};

QCheckBox* Check(MainWindowView& view, const char* name) { return qobject_cast<QCheckBox*>(view.Control(name)); }
QLineEdit* Field(MainWindowView& view, const char* name) { return qobject_cast<QLineEdit*>(view.Control(name)); }

// Drags files over a widget and lets them go.
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

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void theFirstWindowAndItsAnchors() {
        UiFixture f;
        MainWindowView& view = f.main();
        const std::vector<Placement> placements(std::begin(kPlacements), std::end(kPlacements));
        CheckPlacements(view.centralWidget(), {980, 640}, placements);
        QCOMPARE(view.centralWidget()->minimumSize(), QSize(980, 640));
        QCOMPARE(view.windowTitle(), QStringLiteral("Vornelt[*]"));
        QVERIFY(!(view.windowFlags() & Qt::WindowMaximizeButtonHint));
        QCOMPARE(Field(view, "EF_ReelName")->alignment() & Qt::AlignHorizontal_Mask, Qt::AlignHCenter);
        QCOMPARE(view.Control("Chb_FixKeyDuration")->toolTip(),
                 QString::fromUtf8("Bei EDLs aus FCP sind Src-IN und Src-OUT, bzw. Rec-IN und Rec-OUT auf VideoSpur V2 "
                                   "immer identisch.\nSrc-OUT und Rec-OUT werden werden auf reale Werte eingestellt."));
        QVERIFY(QFontInfo(view.EditField1()->font()).fixedPitch());
        QCOMPARE(qobject_cast<QComboBox*>(view.Control("PopupTransition"))->itemText(0),
                 QStringLiteral("Set Transitions to FCP-WipeCodes"));

        // The first values are shown without running a handler.
        QApplication::processEvents();
        QVERIFY(!Module1.isModified);
        QVERIFY(!view.isWindowModified());
        for (const char* name : {"Canvas2", "Canvas1", "BtnOpenEDL"}) QVERIFY2(view.Control(name)->isVisible(), name);
        for (const char* name : {"BtnResetAll", "Chb_ComntOther"}) QVERIFY2(!view.Control(name)->isVisible(), name);
        for (const char* name : {"Chb_Mirror", "Chb_V2", "Chb_A1234", "Chb_RemoveFreezeFrame", "Chb_ComntGenerateNew"})
            QVERIFY2(Check(view, name)->isChecked() && !Check(view, name)->isEnabled(), name);
        QVERIFY(!Check(view, "Chb_KeyToDissolve")->isChecked());
        QVERIFY(!view.Control("EF_ReelName")->isEnabled());

        // Growing: the right column follows the edge, the text area grows, the rest stays.
        view.resize(view.width() + 220, view.height() + 160);
        QApplication::processEvents();
        std::vector<Placement> grown = placements;
        for (Placement& p : grown)
            p.rect =
                p.anchor == 'a' ? p.rect.adjusted(0, 0, 220, 160) : p.rect.translated(p.anchor == 'r' ? 220 : 0, 0);
        CheckPlacements(view.centralWidget(), {1200, 800}, grown);
    }

    void aLoadShowsTheListAndTabGoesThroughSixControls() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("Harbour Reel 2.edl", true);
        QCOMPARE(view.windowTitle(), QStringLiteral("Harbour Reel 2.edl[*]"));
        QVERIFY(view.isWindowModified());
        QVERIFY(!view.Control("Canvas2")->isVisible());
        QCOMPARE(TextOf(view.Control("ST_FrameRate")), QStringLiteral("25"));
        QVERIFY(view.Control("EF_ReelName")->isEnabled() && !Check(view, "Chb_V1")->isEnabled());
        QCOMPARE(view.EditField1()->text(), MainWindow().EditField1.Text);
        QCOMPARE(Field(view, "EF_SeqTitle")->text(), QString::fromStdString(MainWindow().EF_SeqTitle.Text()));

        view.Control("BtnOpenEDL")->setFocus(Qt::OtherFocusReason);
        QStringList order{QApplication::focusWidget()->objectName()};
        for (int k = 0; k < 6; ++k) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* w = QApplication::focusWidget();
            while (w && w->objectName().isEmpty()) w = w->parentWidget();
            order << (w ? w->objectName() : QString());
        }
        QCOMPARE(order, (QStringList{"BtnOpenEDL", "BtnSaveEDL", "EF_ReelName", "EF_SeqTitle", "EF_RenderedMovie",
                                     "EditField1", "BtnOpenEDL"}));

        // The picture of the manual and the README: a movie named in the comments.
        QLineEdit* movie = Field(view, "EF_RenderedMovie");
        movie->setFocus(Qt::OtherFocusReason);
        QTest::keyClicks(movie, "harbour_reel2_master.mov");
        QTest::keyClick(movie, Qt::Key_Return);
        QVERIFY(QString::fromStdString(*MainWindow().EditField1.Text).contains("HARBOUR_REEL2_MASTER.MOV"));
        view.EditField1()->setFocus(Qt::OtherFocusReason);
        f.Shoot(&view, "manual-main-window");
    }

    void theReelFieldTakesItsKeysAndReturnMovesOn() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("a.edl", true);
        QLineEdit* reel = Field(view, "EF_ReelName");
        reel->setFocus(Qt::OtherFocusReason);
        QTest::keyClicks(reel, "ab1 -_.");
        QKeyEvent accented(QEvent::KeyPress, Qt::Key_Eacute, Qt::NoModifier, QString::fromUtf8("\xc3\xa9"));
        QApplication::sendEvent(reel, &accented);
        QCOMPARE(reel->text(), QStringLiteral("AB1"));
        // In the middle: the caret stays behind the new character.
        QTest::keyClick(reel, Qt::Key_Left);
        QTest::keyClick(reel, Qt::Key_Left);
        QTest::keyClicks(reel, "z");
        QCOMPARE(reel->text(), QStringLiteral("AZB1"));
        QCOMPARE(reel->cursorPosition(), 2);
        QTest::keyClick(reel, Qt::Key_Backspace);
        QTest::keyClick(reel, Qt::Key_End);  // no key of the field's: swallowed
        QCOMPARE(reel->text(), QStringLiteral("AB1"));
        QCOMPARE(reel->cursorPosition(), 1);
        // Eight characters for a CMX list, six for GVG.
        reel->setCursorPosition(3);
        QTest::keyClicks(reel, "cdefghij");
        QCOMPARE(reel->text(), QStringLiteral("AB1CDEFG"));
        Module1.IsGrassValley = true;
        reel->selectAll();
        QTest::keyClicks(reel, "qrstuvwx");
        QCOMPARE(reel->text(), QStringLiteral("QRSTUV"));

        // Return checks the name (a reserved one is questioned) and moves on; so does Enter.
        reel->selectAll();
        QTest::keyClicks(reel, "bl");
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);
        QTest::keyClick(reel, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), view.Control("EF_SeqTitle"));
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
        QCOMPARE(f.platform().messageDialogsShown[0].ActionCaption, std::string("Use BL"));
        QCOMPARE(reel->text(), QStringLiteral("NEW"));
        reel->setFocus(Qt::OtherFocusReason);
        reel->selectAll();
        QTest::keyClicks(reel, "a7");
        Module1.isModified = false;
        QTest::keyClick(reel, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(QApplication::focusWidget(), view.Control("EF_SeqTitle"));
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
        QVERIFY(Module1.isModified);
    }

    void optionClicksRegenerateAndTheKeyTrackGovernsKeysToDissolves() {
        UiFixture f;
        MainWindowView& view = f.LoadSample();
        Module1.isModified = false;
        QTest::mouseClick(Check(view, "Chb_Mirror"), Qt::LeftButton);
        QVERIFY(!MainWindow().Chb_Mirror.Value && !Module1.boolMirror && Module1.isModified);

        QCheckBox* keys = Check(view, "Chb_KeyToDissolve");
        QTest::mouseClick(keys, Qt::LeftButton);
        QVERIFY(Module1.boolKeyToDissolve);
        QTest::mouseClick(Check(view, "Chb_V2"), Qt::LeftButton);
        QVERIFY(!keys->isChecked() && !keys->isEnabled());
        QTest::mouseClick(Check(view, "Chb_V2"), Qt::LeftButton);
        QVERIFY(!keys->isChecked() && keys->isEnabled());

        auto* popup = qobject_cast<QComboBox*>(view.Control("PopupTransition"));
        Module1.isModified = false;
        popup->setCurrentIndex(0);
        emit popup->activated(0);
        QCOMPARE(MainWindow().PopupTransition.ListIndex, 0);
        QVERIFY(Module1.isModified);
    }

    void aDropReadsTheFirstFile() {
        UiFixture f;
        MainWindowView& view = f.main();
        const FolderItem first = f.WriteFile("First Cut.edl", SampleList());
        const FolderItem second = f.WriteFile("Second.edl", SampleList());
        // Before the first list the cover takes the drop for the text area.
        DropFiles(view.Control("Canvas2"), {first, second});
        QVERIFY(Module1.DropedFolderItem == first);
        FrameRateView* question = f.shell().FrameRateIfDroped();
        QVERIFY(question);
        QTest::mouseClick(question->Ok(), Qt::LeftButton);
        QCOMPARE(view.windowTitle(), QStringLiteral("First Cut.edl[*]"));
        QVERIFY(f.platform().openDialogsShown.empty());

        // Files of other kinds are not taken, and the text area stays read-only after a drag
        // that left it.
        Module1.DropedFolderItem.reset();
        DropFiles(view.EditField1()->viewport(), {f.WriteFile("notes.txt", "x")});
        QVERIFY(!Module1.DropedFolderItem);
        QVERIFY(!f.shell().FrameRateIfDroped());

        // A second drop asks about the unsaved list first, and leaves the area writable.
        f.platform().messageDialogAnswers.push_back(DialogButton::Cancel);
        DropFiles(view.EditField1()->viewport(), {second});
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
        QVERIFY(!f.shell().FrameRateIfDroped());
        QVERIFY(!view.EditField1()->isReadOnly());

        // Typing there changes the area's text, not the list, and the next list replaces it.
        const std::string list = *Module1.finalCMXString;
        view.EditField1()->setFocus(Qt::OtherFocusReason);
        view.EditField1()->setSelection(0, 0);
        QTest::keyClicks(view.EditField1(), "xy");
        QTest::keyClick(view.EditField1(), Qt::Key_Backspace);
        QCOMPARE(QString::fromStdString(*MainWindow().EditField1.Text).left(2), QString("x") + QChar(list[0]));
        QCOMPARE(view.EditField1()->caretCell(), QPoint(1, 0));
        QCOMPARE(*Module1.finalCMXString, list);
        QTest::mouseClick(Check(view, "Chb_Mirror"), Qt::LeftButton);
        QCOMPARE(view.EditField1()->text(), Module1.finalCMXString);

        // A drag that leaves makes it read-only again.
        f.shell().Dispatch(EditField1_DragExit);
        QTest::keyClicks(view.EditField1(), "z");
        QCOMPARE(view.EditField1()->text(), Module1.finalCMXString);
    }

    void closingWithUnsavedChanges() {
        UiFixture f;
        MainWindowView* view = &f.LoadSample();
        struct Step {
            DialogButton answer;
            bool closes;
            size_t saveDialogs;
        };
        // Cancel; Save with the save dialog cancelled; Don't Save.
        for (const Step& s : {Step{DialogButton::Cancel, false, 0}, Step{DialogButton::Action, false, 1},
                              Step{DialogButton::Alternate, true, 1}}) {
            f.platform().messageDialogAnswers.push_back(s.answer);
            QCOMPARE(view->close(), s.closes);
            QCOMPARE(MainWindowExists(), !s.closes);
            QCOMPARE(f.shell().Main() == view, !s.closes);
            QCOMPARE(f.platform().saveDialogsShown.size(), s.saveDialogs);
        }
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(3));

        // The next use makes a fresh window with its first values.
        MainWindowView& fresh = f.main();
        QVERIFY(fresh.Control("Canvas2")->isVisible());
        QCOMPARE(fresh.windowTitle(), QStringLiteral("Vornelt[*]"));
    }
};

std::unique_ptr<QObject> MakeMainWindowTest() { return std::make_unique<MainWindowTest>(); }

}  // namespace vornelt::qt::testing

#include "main_window_test.moc"
