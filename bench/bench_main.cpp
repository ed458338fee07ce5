// Timings of the load road, its passes and the writer on generated lists.
#include <benchmark/benchmark.h>

#include <map>

#include "document/load.hpp"
#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "generate.hpp"
#include "passes/passes.hpp"
#include "platform/encodings.hpp"
#include "platform/headless.hpp"
#include "reader/reader.hpp"
#include "writer/writer.hpp"

namespace vornelt::bench {
namespace {

HeadlessPlatform g_platform;

const std::string& List(int events, Shape shape = Shape::Mixed) {
    static std::map<std::pair<int, int>, std::string> cache;
    auto key = std::make_pair(events, int(shape));
    auto it = cache.find(key);
    if (it == cache.end()) it = cache.emplace(key, GenerateList({events, false, shape, 7})).first;
    return it->second;
}

// What a load does before the reader: the text in, the tables emptied, the rate set.
void PrepareRead(const std::string& bytes) {
    Module1.cmxString = std::make_shared<std::string>(DecodeWindowsLatin1(bytes));
    ResetGlobalVariables_NEU();
    Module1.frameRate = 25.0;
}

void LoadWhole(const std::string& bytes) {
    PrepareRead(bytes);
    RunLoadPasses();
}

void Setup() {
    SetPlatform(&g_platform);
    ResetProgramState();
}

void BM_ParseCMX3600(benchmark::State& state) {
    Setup();
    const std::string& bytes = List(int(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        PrepareRead(bytes);
        state.ResumeTiming();
        ParseCMX3600();
    }
    state.counters["rows"] = Module1.maxZeilen + 1;
    state.counters["MB"] = double(bytes.size()) / 1e6;
}
BENCHMARK(BM_ParseCMX3600)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

// The whole load road up to PrepareToDisplay, which ends in the writer.
void BM_LoadRoad(benchmark::State& state) {
    Setup();
    const std::string& bytes = List(int(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        PrepareRead(bytes);
        state.ResumeTiming();
        RunLoadPasses();
    }
}
BENCHMARK(BM_LoadRoad)->Arg(100000)->Unit(benchmark::kMillisecond);

void BM_CleanEDL_4(benchmark::State& state) {
    Setup();
    LoadWhole(List(100000, Shape(state.range(0))));
    for (auto _ : state) CleanEDL_4();
    state.SetLabel(state.range(0) == 0 ? "mixed" : state.range(0) == 1 ? "same source" : "one chain");
}
BENCHMARK(BM_CleanEDL_4)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);

template <void (*Switch)()>
void BM_Switch(benchmark::State& state) {
    Setup();
    LoadWhole(List(100000));
    bool on = false;
    for (auto _ : state) {
        Module1.boolA1234 = Module1.boolV2 = Module1.boolKeyToDissolve = Module1.boolTransToDissolve = on;
        Switch();
        on = !on;
    }
}
BENCHMARK_TEMPLATE(BM_Switch, AllAudioOnOff)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Switch, AllKeysOnOff)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Switch, AllKeysToDissolve)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(BM_Switch, AllWipesToDissolve)->Unit(benchmark::kMillisecond);

// What every click on an option costs: the whole list rendered anew, comments on.
void BM_NewEDL_02(benchmark::State& state) {
    Setup();
    MainWindow().Chb_ComntGenerateNew.Value = true;
    LoadWhole(List(int(state.range(0))));
    for (auto _ : state) NewEDL_02();
    state.counters["MB out"] = double(Module1.finalCMXString->size()) / 1e6;
}
BENCHMARK(BM_NewEDL_02)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace vornelt::bench

BENCHMARK_MAIN();
