// The main window on screen: its first state and anchoring, a load through the dialogs, the
// keys of the fields, option clicks, saving, a drop, and closing or quitting with unsaved
// changes.
#include <QFontMetricsF>
#include <QtTest>
#include <QtWidgets>

#include <algorithm>
#include <cmath>

#include "generate.hpp"
#include "session/report.hpp"
#include "ui/handlers.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/qt/what_changed_view.hpp"
#include "ui_fixture.hpp"
#include "vornelt/convert.hpp"

namespace vornelt::qt::testing {

namespace {

QCheckBox* Check(MainWindowView& view, const char* name) { return qobject_cast<QCheckBox*>(view.Control(name)); }
QLineEdit* Field(MainWindowView& view, const char* name) { return qobject_cast<QLineEdit*>(view.Control(name)); }

}  // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void theFirstWindowAndItsAnchors() {
        UiFixture f;
        MainWindowView& view = f.main();
        QWidget* surface = view.centralWidget();
        QCOMPARE(surface->size(), QSize(980, 640));
        QCOMPARE(view.windowTitle(), QStringLiteral("Vornelt[*]"));
        // The list is a grid: every character of an EDL line advances by one width, and a line
        // drawn in one run ends on the whole-pixel cells the caret and the selection are put on.
        const QFontMetricsF list(view.EditField1()->font());
        const qreal cell = list.horizontalAdvance(QStringLiteral(" "));
        QString line;
        for (char16_t c = 0x20; c <= 0x7E; ++c) line += QChar(c);
        for (QChar c : line) QVERIFY2(list.horizontalAdvance(QString(c)) == cell, qPrintable(QString(c)));
        QCOMPARE(list.horizontalAdvance(line), line.size() * std::round(cell));
        // The first values are shown without running a handler.
        QApplication::processEvents();
        QVERIFY(!f.document().isModified && !view.isWindowModified());
        QVERIFY(view.Control("Canvas2")->isVisible() && !view.Control("BtnResetAll")->isVisible());
        QVERIFY(Check(view, "Chb_Mirror")->isChecked() && !Check(view, "Chb_Mirror")->isEnabled());
        // A separator of the menus is a line alone, with no caption beside it.
        int separators = 0;
        for (QMenu* menu : view.menuBar()->findChildren<QMenu*>())
            for (QAction* a : menu->actions())
                if (a->isSeparator()) QVERIFY2(a->text().isEmpty() && ++separators, qPrintable(a->objectName()));
        QCOMPARE(separators, 5);

        // Growing: the right column follows the edge, the text area grows, the rest stays.
        const struct {
            const char* name;
            int dx, grows;  // moved right by; grows with the window
        } anchored[] = {{"BtnOpenEDL", 0, 0},        {"EF_RenderedMovie", 0, 0}, {"BtnResetAll", 220, 0},
                        {"PopupTransition", 220, 0}, {"EditField1", 0, 1},       {"Canvas2", 0, 1}};
        auto placeOf = [&](const char* name) {
            QWidget* w = view.Control(name);
            return QRect(w->mapTo(surface, QPoint(0, 0)), w->size());
        };
        std::vector<QRect> before;
        for (const auto& a : anchored) before.push_back(placeOf(a.name));
        view.resize(view.width() + 220, view.height() + 160);
        QApplication::processEvents();
        for (size_t k = 0; k < std::size(anchored); ++k) {
            const int grows = anchored[k].grows;
            const QRect want = before[k].translated(anchored[k].dx, 0).adjusted(0, 0, 220 * grows, 160 * grows);
            QVERIFY2(placeOf(anchored[k].name) == want, anchored[k].name);
        }
    }

    void aLoadShowsTheListAndTabGoesThroughTheControls() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("Harbour Reel 2.edl", true);
        QCOMPARE(view.windowTitle(), QStringLiteral("Harbour Reel 2.edl[*]"));
        QVERIFY(view.isWindowModified());
        QVERIFY(!view.Control("Canvas2")->isVisible());
        QCOMPARE(qobject_cast<QLabel*>(view.Control("ST_FrameRate"))->text(), QStringLiteral("25"));
        QVERIFY(view.Control("EF_ReelName")->isEnabled() && !Check(view, "Chb_V1")->isEnabled());
        QCOMPARE(view.EditField1()->text(), f.document().finalCMXString);
        view.Control("BtnOpenEDL")->setFocus(Qt::OtherFocusReason);
        QVERIFY(QApplication::focusWidget());
        // The six in their order, then the enabled options from the top, and round again.
        QStringList order{QApplication::focusWidget()->objectName()};
        for (int k = 0; k < 30 && (k == 0 || order.back() != QLatin1String("BtnOpenEDL")); ++k) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            QWidget* w = QApplication::focusWidget();
            while (w && w->objectName().isEmpty()) w = w->parentWidget();
            order << (w ? w->objectName() : QString());
        }
        QCOMPARE(order, (QStringList{"BtnOpenEDL", "BtnSaveEDL", "EF_ReelName", "EF_SeqTitle", "EF_RenderedMovie",
                                     "EditField1", "Chb_Mirror", "Chb_V2", "Chb_A1234", "Chb_RemoveFreezeFrame",
                                     "Chb_RemoveSpeedChanges", "Chb_TransToDissolve", "Chb_KeyToDissolve",
                                     "Chb_ComntGenerateNew", "PopupTransition", "BtnOpenEDL"}));
        // Reached by the keyboard, an option takes its keys: Space clicks a box, an arrow picks a row.
        QWidget* mirror = view.Control("Chb_Mirror");
        mirror->setFocus(Qt::TabFocusReason);
        QTest::keyClick(mirror, Qt::Key_Space);
        QVERIFY(!f.window().Chb_Mirror.Value);
        QWidget* popup = view.Control("PopupTransition");
        popup->setFocus(Qt::TabFocusReason);
        QTest::keyClick(popup, Qt::Key_Up);
        QCOMPARE(f.window().PopupTransition.ListIndex, 0);

        // The picture of the manual and the README: a movie named in the comments. Every
        // change of the movie field renders the list anew; Return takes the name into it.
        QLineEdit* movie = Field(view, "EF_RenderedMovie");
        movie->setFocus(Qt::OtherFocusReason);
        f.document().isModified = false;
        QTest::keyClicks(movie, "harbour_reel2_master.mov");
        QVERIFY(f.document().isModified);
        QTest::keyClick(movie, Qt::Key_Return);
        QVERIFY(view.EditField1()->text()->find("HARBOUR_REEL2_MASTER.MOV") != std::string::npos);
        QCOMPARE(view.EditField1()->text(), f.document().finalCMXString);
        view.EditField1()->setFocus(Qt::OtherFocusReason);
        f.Shoot(&view, "manual-main-window");
    }

    void theReelFieldTakesItsKeysAndReturnMovesOn() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("a.edl", true);
        QLineEdit* reel = Field(view, "EF_ReelName");
        reel->setFocus(Qt::OtherFocusReason);
        // Keys that the handler swallows never reach the field; the rest come in capitals,
        // with the caret behind the new character.
        QTest::keyClicks(reel, "ab1 -_.");
        QTest::keyClick(reel, Qt::Key_Left);
        QTest::keyClicks(reel, "z");
        QTest::keyClick(reel, Qt::Key_End);
        QCOMPARE(reel->text(), QStringLiteral("ABZ1"));
        QCOMPARE(reel->cursorPosition(), 3);
        // The handler's limit stops typing: six characters for GVG.
        f.document().IsGrassValley = true;
        reel->selectAll();
        QTest::keyClicks(reel, "qrstuvwx");
        QCOMPARE(reel->text(), QStringLiteral("QRSTUV"));
        // Return checks the name (a reserved one is questioned) and moves on.
        reel->selectAll();
        QTest::keyClicks(reel, "bl");
        f.platform().messageDialogAnswers.push_back(DialogButton::Alternate);
        QTest::keyClick(reel, Qt::Key_Return);
        QCOMPARE(QApplication::focusWidget(), view.Control("EF_SeqTitle"));
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
        QCOMPARE(reel->text(), QStringLiteral("NEW"));

        // On screen, Escape in the question is its Cancel: the name is not taken.
        f.platform().messageDialogsOnScreen = true;
        bool escaped = false;
        QTimer::singleShot(0, [&] {
            QWidget* box = QApplication::activeModalWidget();
            QVERIFY(box);
            QTest::keyClick(box, Qt::Key_Escape);
            escaped = !box->isVisible();
            if (!escaped) box->findChild<QPushButton*>("ActionButton")->click();
        });
        reel->setFocus(Qt::OtherFocusReason);
        reel->selectAll();
        QTest::keyClicks(reel, "ax");
        QTest::keyClick(reel, Qt::Key_Return);
        QVERIFY(escaped);
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(2));
        QCOMPARE(reel->text(), QStringLiteral("NEW"));
    }

    void everyOptionClickReachesTheShownAndTheSavedList() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("Harbour.edl", true);
        QLineEdit* title = Field(view, "EF_SeqTitle");
        title->setFocus(Qt::OtherFocusReason);
        title->selectAll();
        QTest::keyClicks(title, "night pier");
        QTest::keyClick(title, Qt::Key_Return);
        ConvertOptions options;
        options.title = "NIGHT PIER";
        // The first save asks for the file (and replaces what stands there); the others go to it.
        const FolderItem file = f.WriteFile("saved.edl", "an older file");
        f.platform().saveDialogAnswers.push_back(file);
        f.Choose("FileSaveAs");
        QCOMPARE(f.platform().saveDialogsShown.at(0).SuggestedFileName, SuggestedSaveName("Harbour.edl"));
        QCOMPARE(ReadFile(file), Convert(SampleList(), options, "Harbour.edl").bytes);
        QCOMPARE(view.windowTitle(), QStringLiteral("saved.edl[*]"));
        QVERIFY(!view.isWindowModified());

        const struct {
            const char* control;
            void (*change)(ConvertOptions&);
        } clicks[] = {
            {"Chb_Mirror", [](ConvertOptions& o) { o.mirror = false; }},
            {"Chb_KeyToDissolve", [](ConvertOptions& o) { o.keysToDissolves = true; }},
            {"Chb_V2", [](ConvertOptions& o) { o.keys = o.keysToDissolves = false; }},  // unchecks the keys too
            {"Chb_A1234", [](ConvertOptions& o) { o.audio = false; }},
            {"Chb_RemoveFreezeFrame", [](ConvertOptions& o) { o.removeFreezeFrames = false; }},
            {"Chb_RemoveSpeedChanges", [](ConvertOptions& o) { o.removeSpeedChanges = false; }},
            {"Chb_TransToDissolve", [](ConvertOptions& o) { o.wipesToDissolves = false; }},
            {"PopupTransition", [](ConvertOptions& o) { o.wipeNames = WipeNames::FinalCutPro; }},
            {"Chb_ComntGenerateNew", [](ConvertOptions& o) { o.comments = false; }},
        };
        // Picking the row that stands changes nothing.
        auto* popup = qobject_cast<QComboBox*>(view.Control("PopupTransition"));
        f.document().isModified = false;
        emit popup->activated(popup->currentIndex());
        QVERIFY(!f.document().isModified);
        for (const auto& click : clicks) {
            f.document().isModified = false;
            if (auto* popup = qobject_cast<QComboBox*>(view.Control(click.control))) {
                popup->setCurrentIndex(0);
                emit popup->activated(0);
            } else {
                QTest::mouseClick(view.Control(click.control), Qt::LeftButton);
            }
            QVERIFY2(f.document().isModified, click.control);
            QCOMPARE(view.EditField1()->text(), f.document().finalCMXString);
            click.change(options);
            f.Choose("FileSave");
            QVERIFY2(ReadFile(file) == Convert(SampleList(), options, "Harbour.edl").bytes, click.control);
        }
        QCOMPARE(f.platform().saveDialogsShown.size(), size_t(1));
        QVERIFY(!Check(view, "Chb_KeyToDissolve")->isEnabled());
    }

    void aDropReadsTheFirstFile() {
        UiFixture f;
        MainWindowView& view = f.main();
        Document& m = f.document();
        const FolderItem first = f.WriteFile("First Cut.edl", SampleList());
        const FolderItem second = f.WriteFile("Second.edl", SampleList());
        // Before the first list the cover takes the drop for the text area.
        DropFiles(view.Control("Canvas2"), {first, second});
        QVERIFY(m.DropedFolderItem == first);
        FrameRateView* question = f.shell().FrameRateIfDroped();
        QVERIFY(question);
        QTest::mouseClick(question->Ok(), Qt::LeftButton);
        QCOMPARE(view.windowTitle(), QStringLiteral("First Cut.edl[*]"));
        QVERIFY(f.platform().openDialogsShown.empty());

        // Files of other kinds are not taken, nor a list dragged behind one.
        m.DropedFolderItem.reset();
        DropFiles(view.EditField1()->viewport(), {f.WriteFile("notes.txt", "x"), second});
        QVERIFY(!m.DropedFolderItem);
        QVERIFY(!f.shell().FrameRateIfDroped());

        // A second drop asks about the unsaved list first, and leaves the area writable.
        f.platform().messageDialogAnswers.push_back(DialogButton::Cancel);
        DropFiles(view.EditField1()->viewport(), {second});
        QCOMPARE(f.platform().messageDialogsShown.size(), size_t(1));
        QVERIFY(!f.shell().FrameRateIfDroped());
        QVERIFY(!view.EditField1()->isReadOnly());

        // Typing there changes the area's text, not the list, and the next list replaces it.
        const std::string list = *m.finalCMXString;
        view.EditField1()->setFocus(Qt::OtherFocusReason);
        view.EditField1()->setSelection(0, 0);
        QTest::keyClicks(view.EditField1(), "xy");
        QTest::keyClick(view.EditField1(), Qt::Key_Backspace);
        QCOMPARE(QString::fromStdString(*f.window().EditField1.Text).left(2), QString("x") + QChar(list[0]));
        QCOMPARE(view.EditField1()->caretCell(), QPoint(1, 0));
        QCOMPARE(*m.finalCMXString, list);
        QTest::mouseClick(Check(view, "Chb_Mirror"), Qt::LeftButton);
        QCOMPARE(view.EditField1()->text(), m.finalCMXString);

        // A drag that leaves makes it read-only again.
        f.shell().Dispatch(EditField1_DragExit);
        QTest::keyClicks(view.EditField1(), "z");
        QCOMPARE(view.EditField1()->text(), m.finalCMXString);
    }

    // A list is taken as a copy, whatever the source proposes: a source that honours a move
    // would delete the file, which is read only after the frame-rate question.
    void aDropIsTakenAsACopy() {
        const struct {
            Qt::DropActions offered;
            Qt::KeyboardModifiers keys;
            Qt::DropAction proposed;
            bool taken;
        } drags[] = {
            {Qt::CopyAction | Qt::MoveAction, Qt::ShiftModifier, Qt::MoveAction, true},
            {Qt::CopyAction | Qt::MoveAction | Qt::LinkAction, Qt::NoModifier, Qt::CopyAction, true},
            {Qt::MoveAction, Qt::NoModifier, Qt::MoveAction, false},
        };
        for (const auto& d : drags) {
            UiFixture f;
            QWidget* area = f.main().EditField1()->viewport();
            QMimeData mime;
            mime.setUrls({QUrl::fromLocalFile(QString::fromStdString(f.WriteFile("a.edl", "").AbsolutePath()))});
            const QPoint at(area->width() / 2, area->height() / 2);
            QDragEnterEvent enter(at, d.offered, &mime, Qt::LeftButton, d.keys);
            QDragMoveEvent move(at, d.offered, &mime, Qt::LeftButton, d.keys);
            QDropEvent drop(at, d.offered, &mime, Qt::LeftButton, d.keys);
            QCOMPARE(drop.proposedAction(), d.proposed);
            for (QDropEvent* e : std::initializer_list<QDropEvent*>{&enter, &move, &drop}) {
                QApplication::sendEvent(area, e);
                QCOMPARE(e->isAccepted(), d.taken);
                if (d.taken) QCOMPARE(e->dropAction(), Qt::CopyAction);
            }
            QCOMPARE(f.shell().FrameRateIfDroped() != nullptr, d.taken);
        }
    }

    // "What Changed" opens beside the main window and whole on its screen, wherever the main
    // window stands; Escape closes it.
    void whatChangedOpensOnTheScreen() {
        UiFixture f;
        MainWindowView& view = f.LoadSample();
        const QRect screen = view.screen()->availableGeometry();
        const QRect frame = view.frameGeometry();
        const QPoint places[] = {{screen.right() + 1 - frame.width(), screen.top()},
                                 {screen.left(), screen.bottom() + 1 - frame.height()},
                                 {screen.center().x() - frame.width() / 2, screen.top()}};
        for (const QPoint& place : places) {
            view.move(place);
            f.Choose("FileWhatChanged");
            WhatChangedView* report = f.shell().WhatChanged();
            QVERIFY(report && report->isVisible());
            QVERIFY2(screen.contains(report->frameGeometry()), qPrintable(QStringLiteral("%1,%2 %3x%4")
                                                                              .arg(report->frameGeometry().x())
                                                                              .arg(report->frameGeometry().y())
                                                                              .arg(report->frameGeometry().width())
                                                                              .arg(report->frameGeometry().height())));
            QTest::keyClick(report->tree(), Qt::Key_Escape);
            QVERIFY(QTest::qWaitFor([&] { return !f.shell().WhatChanged(); }, 1000));
        }
    }

    // The menu bar's shortcuts work while "What Changed" has the keyboard.
    void theShortcutsWorkInWhatChanged() {
        UiFixture f;
        f.LoadSample();
        f.Choose("FileWhatChanged");
        WhatChangedView* report = f.shell().WhatChanged();
        report->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(report));
        report->tree()->setFocus(Qt::OtherFocusReason);
        const struct {
            QKeySequence keys;
            bool (*done)(UiFixture&);
        } shortcuts[] = {
            {QKeySequence(QStringLiteral("Ctrl+S")),
             [](UiFixture& f) { return f.platform().saveDialogsShown.size() == 1; }},
            {QKeySequence(QStringLiteral("Ctrl+O")),
             [](UiFixture& f) { return f.platform().messageDialogsShown.size() == 1; }},  // the unsaved list first
            {QKeySequence(QStringLiteral("Ctrl+1")), [](UiFixture& f) { return f.shell().About() != nullptr; }},
        };
        for (const auto& s : shortcuts) {
            QTest::keySequence(report->tree(), s.keys);
            QVERIFY2(s.done(f), qPrintable(s.keys.toString()));
        }
    }

    // "What Changed" stands beside the main window without blocking it and follows every
    // option click; a selected item shows its event's lines and scrolls the main list there.
    void whatChangedFollowsTheOptions() {
        UiFixture f;
        MainWindowView& view = f.LoadSample("Harbour.edl", true);
        f.Choose("FileWhatChanged");
        WhatChangedView* report = f.shell().WhatChanged();
        QVERIFY(report && report->isVisible() && !report->isModal());
        const ReportModel& model = *report->model();
        auto count = [&](ChangeKind kind) { return model.view().counts[size_t(kind)]; };
        QCOMPARE(count(ChangeKind::WipeToDissolve), 1);
        const int groups = model.rowCount();
        QTest::mouseClick(view.Control("Chb_TransToDissolve"), Qt::LeftButton);
        QCOMPARE(count(ChangeKind::WipeToDissolve), 0);
        QCOMPARE(model.rowCount(), groups - 1);
        QTest::mouseClick(view.Control("Chb_TransToDissolve"), Qt::LeftButton);
        QCOMPARE(count(ChangeKind::WipeToDissolve), 1);

        for (int g = 0; g < model.rowCount(); ++g) {
            const QModelIndex item = model.index(0, 0, model.index(g, 0));
            const ReportEntry* entry = model.entry(item);
            if (!entry || entry->kind != ChangeKind::WipeToDissolve) continue;
            report->tree()->expandAll();
            report->tree()->setCurrentIndex(item);
            const QString read = QString::fromUtf8(f.document().readOrigCompleteLine.Get(entry->row));
            QVERIFY2(report->asRead()->toPlainText().contains(read), qPrintable(report->asRead()->toPlainText()));
            QVERIFY(report->asWritten()->toPlainText().contains(QStringLiteral(" D ")));
            QVERIFY(view.EditField1()->hasSelection());
            QVERIFY(view.EditField1()->selectedText().contains(QStringLiteral(" D ")));
        }
        f.Shoot(report, QStringLiteral("what-changed"));
    }

    // The report in the window is the document's, in the order of kinds and lines, with each
    // item's line in the new list as a count of the list's lines gives it; after a click too.
    void whatChangedListsTheReportInOrder() {
        UiFixture f;
        bench::ListOptions o;
        o.events = 3000;  // clip chains recorded out of line order, on rows far apart
        f.LoadThroughWindows(f.WriteFile("three-thousand.edl", bench::GenerateList(o)));
        MainWindowView& view = f.main();
        f.Choose("FileWhatChanged");
        const ReportModel& model = *f.shell().WhatChanged()->model();
        for (int click = 0; click < 2; ++click) {
            const Document& m = f.document();
            std::vector<ReportEntry> expected;
            for (const auto& section : m.report.sections)
                for (const ChangeItem& item : section) expected.push_back({item.kind, item.row, item.event, 0, &item});
            for (const auto& [row, event] : m.report.renamedReels)
                expected.push_back({ChangeKind::ReelRenamed, row, event, 0, nullptr});
            std::stable_sort(expected.begin(), expected.end(), [](const ReportEntry& a, const ReportEntry& b) {
                return a.kind != b.kind ? a.kind < b.kind : a.row < b.row;
            });
            const std::string& list = *m.finalCMXString;
            for (ReportEntry& e : expected) {
                const auto& written = m.lastRendering.lines;
                auto at = std::find_if(written.begin(), written.end(),
                                       [&](const auto& w) { return int32_t(w.row) == e.row; });
                if (e.kind == ChangeKind::TitleApplied)
                    e.lineWritten = 1;
                else if (e.kind == ChangeKind::CommentBeforeFirstEvent)
                    e.lineWritten = 4;
                else if (e.row >= 0 && at != written.end())
                    e.lineWritten = 1 + int32_t(std::count(
                                            list.begin(),
                                            list.begin() + ptrdiff_t(std::min<size_t>(at->offset, list.size())), '\r'));
            }
            const std::vector<ReportEntry>& shown = model.view().entries;
            QCOMPARE(shown.size(), expected.size());
            std::vector<int32_t> chainRows;  // as recorded: in the order of their sources
            for (const ChangeItem& item : m.report.Section(ReportSection::Load))
                if (item.kind == ChangeKind::ClipChain) chainRows.push_back(item.row);
            QVERIFY(!std::is_sorted(chainRows.begin(), chainRows.end()));
            QVERIFY(*std::max_element(chainRows.begin(), chainRows.end()) > 4096);
            for (size_t k = 0; k < shown.size(); ++k) {
                const ReportEntry &a = shown[k], &b = expected[k];
                QVERIFY2(a.kind == b.kind && a.row == b.row && a.event == b.event &&
                             model.lineWritten(a) == b.lineWritten && a.item == b.item,
                         qPrintable(QStringLiteral("entry %1").arg(k)));
            }
            QTest::mouseClick(view.Control("Chb_A1234"), Qt::LeftButton);
        }
    }

    void closingAndQuittingWithUnsavedChanges() {
        UiFixture f;
        MainWindowView* view = &f.LoadSample();
        bool quit = false;
        QMetaObject::Connection c = connect(qApp, &QCoreApplication::aboutToQuit, [&] { quit = true; });
        struct Step {
            bool quitting;
            DialogButton answer;
            bool closes;
            size_t saveDialogs;
        };
        // Quit, cancelled; Save with the save dialog cancelled; Don't Save.
        for (const Step& s : {Step{true, DialogButton::Cancel, false, 0}, Step{false, DialogButton::Action, false, 1},
                              Step{false, DialogButton::Alternate, true, 1}}) {
            f.platform().messageDialogAnswers.push_back(s.answer);
            if (s.quitting)
                f.Choose("FileQuit");
            else
                QCOMPARE(view->close(), s.closes);
            QCOMPARE(f.shell().desktop().session.MainWindowExists(), !s.closes);
            QCOMPARE(f.shell().Main() == view, !s.closes);
            QCOMPARE(f.platform().saveDialogsShown.size(), s.saveDialogs);
        }
        disconnect(c);
        QVERIFY(!quit);
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
