// Timings of the windows on the big lists, on the offscreen platform: a click on an option
// as the editor makes it, until the list stands in the text area and its rows in sight are
// painted; the What Changed window opening on a hundred thousand events, and following a
// click. The program runs as it does on screen; only the open dialog answers by itself.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <map>
#include <memory>
#include <string>

#include "generate.hpp"
#include "ui/handlers.hpp"
#include "ui/qt/app_shell.hpp"
#include "ui/qt/list_view.hpp"
#include "ui/qt/qt_platform.hpp"
#include "ui/qt/qt_util.hpp"

namespace vornelt::bench {
namespace {

// The program's own platform, with an open dialog that picks the list at once.
class BenchPlatform final : public qt::QtPlatform {
public:
    using QtPlatform::QtPlatform;
    FolderItemRef ShowOpenDialog(const OpenDialogRequest&) override {
        BeforeDialog();
        return file;
    }
    FolderItemRef file;
};

// The list of ../shared/bench/gen_big_edl.py with that many events from the folder that
// bench/run fills (VORNELT_BENCH_LISTS), or one of our own generator, written beside.
std::string ListPath(int events) {
    if (const char* folder = std::getenv("VORNELT_BENCH_LISTS")) {
        const std::string path = std::string(folder) + "/cmx_" + std::to_string(events / 1000) + "k.edl";
        if (std::ifstream(path).good()) return path;
    }
    const std::string path =
        QDir::temp().filePath(QStringLiteral("vornelt-window-bench-%1.edl").arg(events)).toStdString();
    ListOptions o;
    o.events = events;
    o.seed = 7;
    std::ofstream(path, std::ios::binary) << GenerateList(o);
    return path;
}

// Counts the paints of the widgets it watches.
class PaintCounter : public QObject {
public:
    int paints = 0;
    void Watch(QWidget* w) { w->installEventFilter(this); }

protected:
    bool eventFilter(QObject*, QEvent* e) override {
        if (e->type() == QEvent::Paint) ++paints;
        return false;
    }
};

// What follows an input before the next one: the posted layouts and repaints, and the timers
// that are due (a tree view lays its rows out on one).
void Settle() { QCoreApplication::processEvents(QEventLoop::AllEvents); }

// One program with the list loaded at 25 fps through the windows, kept for every benchmark
// on that list.
struct Program {
    BenchPlatform* platform = nullptr;
    std::unique_ptr<qt::AppShell> shell;
    PaintCounter paints;

    explicit Program(int events) {
        shell = std::make_unique<qt::AppShell>([this](qt::AppShell& s) {
            auto p = std::make_unique<BenchPlatform>(s);
            platform = p.get();
            return p;
        });
        shell->Dispatch([](Desktop& d) { d.session.MainWindow(); });
        platform->file = FolderItem(ListPath(events));
        QTest::mouseClick(main().Control(QStringLiteral("BtnOpenEDL")), Qt::LeftButton);
        qt::FrameRateView* question = shell->FrameRate();
        if (!question) std::abort();
        question->Popup()->setCurrentIndex(1);  // 25 fps
        emit question->Popup()->activated(1);
        QTest::mouseClick(question->Ok(), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        main().activateWindow();
        Settle();
        paints.Watch(list()->viewport());
        if (document().maxZeilen < events) std::abort();
    }

    qt::MainWindowView& main() { return *shell->Main(); }
    qt::ListView* list() { return main().EditField1(); }
    Document& document() { return shell->desktop().session.document; }
    QCheckBox* box(const char* name) { return main().findChild<QCheckBox*>(QString::fromUtf8(name)); }

    qt::WhatChangedView* OpenWhatChanged() {
        shell->ShowWhatChanged();
        Settle();
        return shell->WhatChanged();
    }
    void CloseWhatChanged() {
        if (qt::WhatChangedView* w = shell->WhatChanged()) w->close();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        Settle();
    }
};

std::map<int, std::unique_ptr<Program>> programs;

Program& ProgramWith(int events) {
    auto& p = programs[events];
    if (!p) p = std::make_unique<Program>(events);
    return *p;
}

// A click on A1234 (audio events out, then in again), until the list is shown.
void Click(Program& p) {
    QTest::mouseClick(p.box("Chb_A1234"), Qt::LeftButton);
    Settle();
}

void Counters(benchmark::State& state, Program& p, int paintsBefore) {
    state.counters["rows"] = double(p.document().maxZeilen + 1);
    state.counters["MB shown"] = double(p.list()->text()->size()) / 1e6;
    state.counters["paints"] =
        benchmark::Counter(double(p.paints.paints - paintsBefore), benchmark::Counter::kAvgIterations);
}

// A load through the windows, from the open button to the list shown: its time, and the
// longest stretch in which the event loop was not served (the windows did not answer), which
// a timer of 2 ms measures.
void BM_WindowLoad(benchmark::State& state) {
    const int events = int(state.range(0));
    ListPath(events);  // written before the timing
    qint64 longest = 0;
    for (auto _ : state) {
        QElapsedTimer clock;
        qint64 last = 0;
        longest = 0;
        QTimer timer;
        timer.setInterval(2);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            longest = std::max(longest, clock.elapsed() - last);
            last = clock.elapsed();
        });
        timer.start();
        clock.start();
        Program p(events);
        longest = std::max(longest, clock.elapsed() - last);
        state.counters["rows"] = double(p.document().maxZeilen + 1);
    }
    state.counters["longest freeze ms"] = double(longest);
}
BENCHMARK(BM_WindowLoad)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(3);

// The click in the main window: the handler, the switch, NewEDL_02, the text area taking the
// new list and painting its rows in sight.
void BM_WindowClick(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    const int before = p.paints.paints;
    for (auto _ : state) Click(p);
    Counters(state, p, before);
}
BENCHMARK(BM_WindowClick)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

// The floor of a click: the least that showing a new list of the same length costs, its bytes
// written anew (a copy of the list shown) and taken by the text area, whose rows in sight are
// painted. A click renders, which this leaves out.
void BM_WindowShowFloor(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    qt::ListView* view = p.list();
    const std::shared_ptr<const std::string> shown = view->text();
    for (auto _ : state) {
        view->setText(std::make_shared<const std::string>(*shown));
        Settle();
    }
    view->setText(shown);
    state.counters["MB shown"] = double(shown->size()) / 1e6;
}
BENCHMARK(BM_WindowShowFloor)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

// The core's part of the same click: the handler on the desktop (the switch and NewEDL_02);
// the windows follow it outside the timing, as they do after a click.
void BM_WindowClickHandlerOnly(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    Desktop& d = p.shell->desktop();
    for (auto _ : state) {
        CheckBox& audio = d.session.MainWindow().Chb_A1234;
        audio.Value = !audio.Value;
        p.shell->Served();  // as when the event loop delivers the click
        Chb_A1234_Action(d);
        state.PauseTiming();
        p.shell->Sync();
        Settle();
        state.ResumeTiming();
    }
    state.counters["rows"] = double(p.document().maxZeilen + 1);
}
BENCHMARK(BM_WindowClickHandlerOnly)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

// What follows the handler: the windows brought in line with the new list (the text area
// takes it, What Changed when it is open, range(1)) and painted. The handler runs outside
// the timing.
void BM_WindowAfterHandler(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    PaintCounter treePaints;
    if (state.range(1)) {
        qt::WhatChangedView* report = p.OpenWhatChanged();
        report->tree()->expand(report->model()->index(0, 0));
        Settle();
        treePaints.Watch(report->tree()->viewport());
    }
    Desktop& d = p.shell->desktop();
    const int before = p.paints.paints;
    for (auto _ : state) {
        state.PauseTiming();
        CheckBox& audio = d.session.MainWindow().Chb_A1234;
        audio.Value = !audio.Value;
        p.shell->Served();
        Chb_A1234_Action(d);
        state.ResumeTiming();
        p.shell->Sync();
        Settle();
    }
    Counters(state, p, before);
    if (state.range(1))
        state.counters["report paints"] =
            benchmark::Counter(double(treePaints.paints), benchmark::Counter::kAvgIterations);
    state.SetLabel(state.range(1) ? "What Changed open" : "");
    p.CloseWhatChanged();
}
BENCHMARK(BM_WindowAfterHandler)->ArgsProduct({{10000, 100000}, {0, 1}})->Unit(benchmark::kMillisecond)->UseRealTime();

// The text area's part alone: a new list taken and its rows in sight painted (two renderings
// of the list in turn, as the clicks give them). range(1): a clip name with an accent in the
// list, which then has characters of more than one byte.
void BM_ListViewTakesList(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    const auto accented = [&state](std::shared_ptr<const std::string> list) {
        if (!state.range(1)) return list;
        std::string text = *list;
        text.insert(text.find('\r') + 1, "* FROM CLIP NAME:  CAF\xc3\x89_DU_PORT.MOV\r");
        return std::make_shared<const std::string>(std::move(text));
    };
    auto first = accented(p.list()->text());
    Click(p);
    auto second = accented(p.list()->text());
    Click(p);
    qt::ListView* view = p.list();
    view->verticalScrollBar()->setValue(view->verticalScrollBar()->maximum() / 2);
    Settle();
    const int before = p.paints.paints;
    bool flip = false;
    for (auto _ : state) {
        view->setText(flip ? first : second);
        flip = !flip;
        Settle();
    }
    p.shell->Sync();
    Counters(state, p, before);
}
BENCHMARK(BM_ListViewTakesList)->ArgsProduct({{10000, 100000}, {0, 1}})->Unit(benchmark::kMillisecond)->UseRealTime();

// What Changed opened from the menu on the list, until it is shown and painted.
void BM_WhatChangedOpens(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    QAction* item = p.shell->Item(QStringLiteral("FileWhatChanged"));
    size_t items = 0;
    for (auto _ : state) {
        item->trigger();
        Settle();
        state.PauseTiming();
        items = p.shell->WhatChanged()->model()->view().entries.size();
        p.CloseWhatChanged();
        state.ResumeTiming();
    }
    state.counters["items"] = double(items);
}
BENCHMARK(BM_WhatChangedOpens)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

// The click with What Changed open beside the main window, its first group unfolded, until
// both windows are painted. Against BM_WindowClick on the same list.
void BM_WindowClickWithWhatChanged(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    qt::WhatChangedView* report = p.OpenWhatChanged();
    report->tree()->expand(report->model()->index(0, 0));
    Settle();
    PaintCounter treePaints;
    treePaints.Watch(report->tree()->viewport());
    const int before = p.paints.paints;
    for (auto _ : state) Click(p);
    Counters(state, p, before);
    state.counters["report paints"] = benchmark::Counter(double(treePaints.paints), benchmark::Counter::kAvgIterations);
    state.counters["items"] = double(report->model()->view().entries.size());
    p.CloseWhatChanged();
}
BENCHMARK(BM_WindowClickWithWhatChanged)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

// How much longer a click takes with What Changed open, pair by pair: two clicks without it,
// the window opened, the same two clicks with it; the time is the difference per click.
void BM_WhatChangedFollowsClick(benchmark::State& state) {
    Program& p = ProgramWith(int(state.range(0)));
    p.CloseWhatChanged();
    using Clock = std::chrono::steady_clock;
    const auto twoClicks = [&p] {
        const auto t0 = Clock::now();
        Click(p);
        Click(p);
        return std::chrono::duration<double>(Clock::now() - t0).count() / 2;
    };
    double without = 0, with = 0;
    for (auto _ : state) {
        const double alone = twoClicks();
        qt::WhatChangedView* report = p.OpenWhatChanged();
        report->tree()->expand(report->model()->index(0, 0));
        Settle();
        const double beside = twoClicks();
        p.CloseWhatChanged();
        without += alone;
        with += beside;
        state.SetIterationTime(beside - alone);
    }
    const double n = double(state.iterations());
    state.counters["click ms"] = without / n * 1e3;
    state.counters["with ms"] = with / n * 1e3;
}
BENCHMARK(BM_WhatChangedFollowsClick)
    ->Arg(10000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->UseManualTime()
    ->Iterations(15);

}  // namespace
}  // namespace vornelt::bench

int main(int argc, char** argv) {
    // Never a window on a desktop: the figures are those of the offscreen platform.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    int qtArgc = 1;
    // The offscreen platform's notes (no raise(), no size hints) would bury the figures.
    qInstallMessageHandler([](QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type >= QtCriticalMsg) std::fprintf(stderr, "%s\n", qPrintable(text));
    });
    QApplication app(qtArgc, argv);
    vornelt::qt::SetUpApplicationLook();
    QApplication::setQuitOnLastWindowClosed(false);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    vornelt::bench::programs.clear();  // the windows go before the application
    benchmark::Shutdown();
    return 0;
}
