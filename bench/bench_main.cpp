// Timings of the load road, its passes and the writer on generated lists.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <fstream>
#include <map>
#include <sstream>
#include <vector>

#include "generate.hpp"
#include "passes/passes.hpp"
#include "reader/reader.hpp"
#include "session/load.hpp"
#include "session/report.hpp"
#include "text/encodings.hpp"
#include "vornelt/convert.hpp"
#include "writer/writer.hpp"

namespace vornelt::bench {
namespace {

const std::string& List(int events, Shape shape = Shape::Mixed) {
    static std::map<std::pair<int, int>, std::string> cache;
    auto key = std::make_pair(events, int(shape));
    auto it = cache.find(key);
    if (it == cache.end()) it = cache.emplace(key, GenerateList({events, false, shape, 7})).first;
    return it->second;
}

// The list of ../shared/bench/gen_big_edl.py with that many events, from the folder that
// bench/run fills (VORNELT_BENCH_LISTS), or a generated one when there is none.
const std::string& BigList(int events) {
    static std::map<int, std::string> cache;
    auto it = cache.find(events);
    if (it != cache.end()) return it->second;
    std::string bytes;
    if (const char* folder = std::getenv("VORNELT_BENCH_LISTS")) {
        std::ifstream in(std::string(folder) + "/cmx_" + std::to_string(events / 1000) + "k.edl", std::ios::binary);
        std::ostringstream all;
        all << in.rdbuf();
        bytes = all.str();
    }
    if (bytes.empty()) bytes = List(events);
    return cache.emplace(events, std::move(bytes)).first->second;
}

// One session for each benchmark, on a platform that shows nothing.
struct Bench {
    QuietPlatform platform;
    Session s{platform};
    Document& m = s.document;

    // What a load does before the reader: the text in, the tables emptied, the rate set.
    void PrepareRead(const std::string& bytes) {
        m.cmxString = std::make_shared<std::string>(DecodeWindowsLatin1(bytes));
        ResetGlobalVariables_NEU(m, s.MainWindow());
        m.frameRate = FrameRate();
    }
    // The whole load road, from the file's bytes to the rendered list.
    void LoadWhole(const std::string& bytes) {
        s.document.frameRateTmp = FrameRate();
        LoadListBytes(s, bytes, FolderItem("bench.edl"), false);
    }
};

void BM_ParseCMX3600(benchmark::State& state) {
    Bench b;
    const std::string& bytes = List(int(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        b.PrepareRead(bytes);
        state.ResumeTiming();
        ParseCMX3600(b.m, b.s.MainWindow(), b.s.progress, b.platform);
    }
    state.counters["rows"] = b.m.maxZeilen + 1;
    state.counters["MB"] = double(bytes.size()) / 1e6;
}
BENCHMARK(BM_ParseCMX3600)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The whole load road up to PrepareToDisplay, which ends in the writer.
void BM_LoadRoad(benchmark::State& state) {
    Bench b;
    const std::string& bytes = List(int(state.range(0)));
    for (auto _ : state) b.LoadWhole(bytes);
}
BENCHMARK(BM_LoadRoad)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_CleanEDL_4(benchmark::State& state) {
    Bench b;
    b.LoadWhole(List(100000, Shape(state.range(0))));
    for (auto _ : state) CleanEDL_4(b.m, b.platform);
    state.SetLabel(state.range(0) == 0 ? "mixed" : state.range(0) == 1 ? "same source" : "one chain");
}
BENCHMARK(BM_CleanEDL_4)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

template <void (*Switch)(Document&, Platform&)>
void BM_Switch(benchmark::State& state) {
    Bench b;
    b.LoadWhole(List(100000));
    bool on = false;
    for (auto _ : state) {
        b.m.boolA1234 = b.m.boolV2 = b.m.boolKeyToDissolve = b.m.boolTransToDissolve = on;
        Switch(b.m, b.platform);
        on = !on;
    }
}
BENCHMARK_TEMPLATE(BM_Switch, AllAudioOnOff)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Switch, AllKeysOnOff)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Switch, AllKeysToDissolve)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Switch, AllWipesToDissolve)->Unit(benchmark::kMillisecond);

// What every click on an option costs: the whole list rendered anew, comments on.
void BM_NewEDL_02(benchmark::State& state) {
    Bench b;
    b.s.MainWindow().Chb_ComntGenerateNew.Value = true;
    b.LoadWhole(List(int(state.range(0))));
    for (auto _ : state) NewEDL_02(b.m, b.s.MainWindow(), b.platform);
    state.counters["MB out"] = double(b.m.finalCMXString->size()) / 1e6;
}
BENCHMARK(BM_NewEDL_02)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A click on an option as the window handles it: the audio switch, then the list rendered
// anew (comments on), on the big lists.
void BM_Click(benchmark::State& state) {
    Bench b;
    b.s.MainWindow().Chb_ComntGenerateNew.Value = true;
    b.LoadWhole(BigList(int(state.range(0))));
    bool on = false;
    for (auto _ : state) {
        b.m.boolA1234 = on;
        AllAudioOnOff(b.m, b.platform);
        NewEDL_02(b.m, b.s.MainWindow(), b.platform);
        on = !on;
    }
    state.counters["rows"] = b.m.maxZeilen + 1;
}
BENCHMARK(BM_Click)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// A whole conversion through the library: the list's bytes in, the saved bytes out.
void BM_Convert(benchmark::State& state) {
    const std::string& bytes = List(int(state.range(0)));
    ConvertOptions options;
    options.report = false;
    for (auto _ : state) benchmark::DoNotOptimize(Convert(bytes, options).bytes.size());
    state.counters["MB"] = double(bytes.size()) / 1e6;
}
BENCHMARK(BM_Convert)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The library call on the list of ../shared/bench with that many events (cmx_100k.edl), with
// the options' defaults, the report included: what vornelt.convert does from Python.
void BM_ConvertFile(benchmark::State& state) {
    const std::string& bytes = BigList(int(state.range(0)));
    const ConvertOptions options;
    for (auto _ : state) benchmark::DoNotOptimize(Convert(bytes, options).bytes.size());
    state.counters["MB"] = double(bytes.size()) / 1e6;
}
BENCHMARK(BM_ConvertFile)->Arg(100000)->Unit(benchmark::kMillisecond);

// The batch of bench/run converted in-process, one list after the other: the 1,000 lists of
// 1,000 events that `vornelt-genlist 1000 cmx mixed SEED` writes for the seeds 1 to 1,000,
// with the converter's options (no report). The time is the sum of 1,000 single conversions,
// against which `vornelt-convert -j 1` over the batch is measured.
void BM_ConvertBatch(benchmark::State& state) {
    static const std::vector<std::string> lists = [] {
        std::vector<std::string> all;
        for (uint32_t seed = 1; seed <= 1000; ++seed) all.push_back(GenerateList({1000, false, Shape::Mixed, seed}));
        return all;
    }();
    ConvertOptions options;
    options.report = false;
    size_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (size_t k = 0; k < lists.size(); ++k) {
            const std::string name = std::string("l").append(std::to_string(k + 1)).append(".edl");
            bytes += Convert(lists[k], options, name).bytes.size();
        }
    }
    state.counters["lists"] = double(lists.size());
    state.counters["MB out"] = double(bytes) / 1e6;
}
BENCHMARK(BM_ConvertBatch)->Unit(benchmark::kMillisecond);

// The same with the report made whole, every sentence written (what --report costs).
void BM_ConvertWithReport(benchmark::State& state) {
    const std::string& bytes = List(int(state.range(0)));
    ConvertOptions options;
    options.report = true;
    size_t items = 0;
    for (auto _ : state) items = Convert(bytes, options).report.items.size();
    state.counters["items"] = double(items);
}
BENCHMARK(BM_ConvertWithReport)->Arg(100000)->Unit(benchmark::kMillisecond);

// What recording the report costs a conversion of the big list (cmx_100k.edl): the whole load
// road with its rendering and the bytes of the save, recording off (0, the converter without
// --report) and on (1, the window; --report adds the sentences on top).
void BM_ConvertRecording(benchmark::State& state) {
    Bench b;
    b.m.report.recording = state.range(0) != 0;
    const std::string& bytes = BigList(100000);
    for (auto _ : state) {
        b.LoadWhole(bytes);
        benchmark::DoNotOptimize(EncodeListForSaving(*b.m.finalCMXString).size());
    }
    state.SetLabel(state.range(0) ? "recording" : "not recording");
}
BENCHMARK(BM_ConvertRecording)->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

// What opening the What Changed window computes: the report in order, with the lines of the
// new list (the sentences are made only for the rows in sight).
void BM_ViewReport(benchmark::State& state) {
    Bench b;
    b.LoadWhole(List(100000));
    size_t entries = 0;
    for (auto _ : state) entries = ViewReport(b.m).entries.size();
    state.counters["items"] = double(entries);
}
BENCHMARK(BM_ViewReport)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vornelt::bench

BENCHMARK_MAIN();
