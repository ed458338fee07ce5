// Long lists: the text area indexes a conform list of fifteen megabytes, a click on an option
// shows the new list, and a large load keeps the windows served. How long each takes is for
// the benchmarks (bench/window_bench.cpp): a shared machine's speed varies too much for a verdict.
#include <QtTest>
#include <QtWidgets>

#include <algorithm>

#include "generate.hpp"
#include "ui/qt/list_view.hpp"
#include "ui_fixture.hpp"

namespace vornelt::qt::testing {

namespace {

#if defined(VORNELT_SANITIZED)
constexpr int kLargeList = 20000;  // the sanitizers make every step many times slower
#else
constexpr int kLargeList = 100000;
#endif

// The lines of a text as a plain scan finds them: (start, end) of each.
std::vector<std::pair<uint32_t, uint32_t>> PlainLines(const std::string& s) {
    std::vector<std::pair<uint32_t, uint32_t>> lines;
    size_t start = 0;
    for (size_t i = 0; i < s.size(); ++i) {
        if (s[i] != '\r' && s[i] != '\n') continue;
        lines.emplace_back(uint32_t(start), uint32_t(i));
        if (s[i] == '\r' && i + 1 < s.size() && s[i + 1] == '\n') ++i;
        start = i + 1;
    }
    lines.emplace_back(uint32_t(start), uint32_t(s.size()));
    return lines;
}

std::string List(int events) {
    bench::ListOptions o;
    o.events = events;
    return bench::GenerateList(o);
}

}  // namespace

class ResponsivenessTest : public QObject {
    Q_OBJECT
private slots:
    void theTextAreaTakesAHugeListAtOnce() {
        std::string text;
        text.reserve(16 << 20);
        const std::string line = "001  A411C005 V     C        11:38:31:00 11:38:38:19 00:00:00:00 00:00:07:19\r";
        while (text.size() < (15u << 20)) text += line;
        auto shared = std::make_shared<const std::string>(std::move(text));
        ListView view;
        view.resize(700, 514);
        view.show();
        view.setText(shared);
        view.repaint();
        QCOMPARE(view.lineCount(), int(shared->size() / line.size()) + 1);
    }

    void columnsLineUpAndLongLinesWrap() {
        ListView view;
        view.resize(300, 200);
        view.show();
        QApplication::processEvents();
        const int cols = view.columns();
        QVERIFY(cols > 10);
        const std::string longLine(size_t(cols) * 2 + 3, 'x');
        view.setText(std::make_shared<const std::string>("AB\r" + longLine + "\r\xc3\xa9t\xc3\xa9\r\rEND"));
        QCOMPARE(view.lineCount(), 5);
        QStringList rows;
        for (int row = 0; row < view.displayRows(); ++row) rows << view.displayRowText(row);
        const QString full(cols, 'x');
        QCOMPARE(rows, (QStringList{"AB", full, full, "xxx", QString::fromUtf8("\xc3\xa9t\xc3\xa9"), "", "END"}));

        // Copy hands the selection on with the line ends of the system.
        view.setSelection(0, 5);
        view.copy();
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("AB\nxx"));
        view.selectAll();
        QVERIFY(view.selectedText().endsWith(QStringLiteral("\n\nEND")));
        // A new list keeps the top line in sight and forgets the selection.
        view.setText(std::make_shared<const std::string>("AB\r" + longLine));
        QVERIFY(!view.hasSelection());
    }

    // The lines and rows of a new text are those of a plain scan, whichever way the bytes
    // are read and wherever the line ends fall among the blocks that are read at a time.
    void newTextsAreIndexedAsAPlainScanDoes() {
        std::vector<std::pair<const char*, std::string>> texts = {
            {"empty", ""},
            {"one line", "001  AX V C 00:00:00:00"},
            {"CR", "AB\rCD\r\rEF\r"},
            {"CR LF", "AB\r\nCD\r\n\r\nEF"},
            {"LF and LF CR", "AB\nCD\n\rEF\r\r\n\n"},
            {"UTF-8", "caf\xc3\xa9\r\xe2\x80\x94 \xc3\xa9t\xc3\xa9\r\nEND"},
        };
        // Line ends on either side of a block's edge: a CR LF split between two blocks.
        // In halves, the 200-byte texts part at 100: a CR LF across the parting as well.
        for (size_t at : {62u, 63u, 64u, 99u, 127u, 128u}) {
            std::string t(200, 'x');
            t[at] = '\r';
            t[at + 1] = '\n';
            texts.emplace_back("CR LF at a block's edge", t);
        }
        // Random bytes of line ends, letters and multi-byte characters; and a long list.
        uint32_t seed = 12345;
        for (int k = 0; k < 4; ++k) {
            std::string t;
            for (int i = 0; i < 5000; ++i) {
                seed = seed * 1103515245u + 12345u;
                const char* pieces[] = {
                    "\r", "\n", "\r\n", "a", "bcdefgh", "\xc3\xa9", "0123456789012345678901234567890123456789"};
                t += pieces[(seed >> 16) % (k == 3 ? 3 : 7) + (k == 3 ? 4 : 0)];
            }
            texts.emplace_back(k == 3 ? "no line end" : "random", t);
        }
        texts.emplace_back("a generated list", List(300));

        ListView view;
        view.resize(300, 200);
        view.show();
        QApplication::processEvents();
        const int cols = view.columns();
        for (const auto& [name, text] : texts) {
            const auto lines = PlainLines(text);
            for (LineScan scan : {LineScan::Fastest, LineScan::Words, LineScan::Halves}) {
                Offsets starts{7, 8, 9}, ends;  // what was there before goes
                const bool ascii = IndexLines(text.data(), text.size(), starts, ends, scan);
                QCOMPARE(ascii, std::all_of(text.begin(), text.end(), [](char c) { return (unsigned char)c < 0x80; }));
                QCOMPARE(starts.size(), lines.size());
                for (size_t k = 0; k < lines.size(); ++k) {
                    QVERIFY2(starts[k] == lines[k].first && ends[k] == lines[k].second, name);
                }
            }
            // The view's rows: each line cut into rows of `cols` characters.
            view.setText(std::make_shared<const std::string>(text));
            QCOMPARE(view.lineCount(), int(lines.size()));
            QStringList rows;
            for (const auto& [start, end] : lines) {
                const QString line = QString::fromUtf8(text.data() + start, qsizetype(end - start));
                for (qsizetype at = 0; at == 0 || at < line.size(); at += cols) rows << line.mid(at, cols);
            }
            QCOMPARE(view.displayRows(), int(rows.size()));
            for (int row = 0; row < view.displayRows(); ++row) QCOMPARE(view.displayRowText(row), rows[row]);
        }
    }

    void anOptionClickShowsTheNewList() {
        UiFixture f;
        f.LoadThroughWindows(f.WriteFile("ten-thousand.edl", List(10000)));
        MainWindowView& view = f.main();
        QCOMPARE(view.EditField1()->text(), f.window().EditField1.Text);
        auto* audio = view.findChild<QCheckBox*>("Chb_A1234");
        auto* wipes = view.findChild<QCheckBox*>("Chb_TransToDissolve");
        for (QCheckBox* box : {audio, wipes, audio, wipes}) {
            const std::shared_ptr<const std::string> before = view.EditField1()->text();
            QTest::mouseClick(box, Qt::LeftButton);
            QVERIFY(view.EditField1()->text() != before);
            QCOMPARE(view.EditField1()->text(), f.window().EditField1.Text);
        }
    }

    // A click comes from the event loop, which has just had its turn: a short click gives it
    // none before the new list stands, however long the windows stood idle before.
    void aShortClickLeavesTheEventLoopAlone() {
        UiFixture f;
        f.LoadThroughWindows(f.WriteFile("thousand.edl", List(1000)));
        auto* audio = f.main().findChild<QCheckBox*>("Chb_A1234");
        for (int k = 0; k < 2; ++k) {
            QTest::qWait(2 * QtPlatform::kServeIntervalMs);
            const int64_t served = f.platform().qt().TimesServed();
            QTest::mouseClick(audio, Qt::LeftButton);
            QCOMPARE(f.platform().qt().TimesServed(), served);
        }
    }

    void aLargeListLoadsWithTheWindowsServed() {
        UiFixture f;
        f.main();
        const FolderItem file = f.WriteFile("large.edl", List(kLargeList));
        bool progressShown = false;
        f.platform().onRedraw = [&](std::string_view) { progressShown = progressShown || f.shell().Progress(); };
        const int64_t servedBefore = f.platform().qt().TimesServed();
        f.LoadThroughWindows(file);
        QVERIFY(progressShown);
        QVERIFY(f.document().maxZeilen > kLargeList);
        QVERIFY(f.platform().qt().TimesServed() > servedBefore);
        QCOMPARE(f.main().EditField1()->text(), f.window().EditField1.Text);
    }
};

std::unique_ptr<QObject> MakeResponsivenessTest() { return std::make_unique<ResponsivenessTest>(); }

}  // namespace vornelt::qt::testing

#include "responsiveness_test.moc"
