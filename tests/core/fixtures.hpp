#pragma once
// A fresh desktop on the recording platform with a folder of its own, and rows pushed into the
// read tables as the reader would leave them, for tests that must not depend on the grammar.
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "passes/passes.hpp"
#include "session/load.hpp"
#include "support/recording_platform.hpp"
#include "text/text.hpp"
#include "ui/windows.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {

inline std::string ReadBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}
inline std::string TestData(const std::string& name) { return ReadBytes(VORNELT_TEST_DATA_DIR "/" + name); }

// The rate of a number of frames per second of the table, or of a name ("29.97df").
inline FrameRate Rate(double fps) { return FrameRate::OfValue(fps).value(); }
inline FrameRate Rate(const char* name) { return FrameRate::Named(name).value(); }

// The texts of a column joined by "|".
inline std::string Joined(const TextColumn& column) {
    std::string s;
    for (size_t i = 0; i < column.size(); ++i) s.append(i ? "|" : "").append(column(i));
    return s;
}

// One line of a list; what is left out stays as the reader leaves a note row.
struct Row {
    std::string line{}, number{};  // number empty: the row is no event
    int32_t numberValue = -1;
    std::string reel{}, mode{}, trans{}, dur{}, bTrack{};
    int32_t sourceIn = -1, sourceOut = -1, recIn = -1, recOut = -1, duration = -1;
    std::array<std::string, 4> tc{};  // source in, source out, record in, record out
};

inline Row Note(std::string line) { return Row{.line = std::move(line)}; }

// An event on video with frame numbers; its duration is that of the record side.
inline Row Event(int32_t number, std::string trans, int32_t sourceIn, int32_t sourceOut, int32_t recIn = 0,
                 int32_t recOut = 0) {
    return Row{.line = std::to_string(number) + " " + trans,
               .number = std::to_string(number),
               .numberValue = number,
               .reel = "TAPE1",
               .mode = "V",
               .trans = trans,
               .sourceIn = sourceIn,
               .sourceOut = sourceOut,
               .recIn = recIn,
               .recOut = recOut,
               .duration = int32_t(uint32_t(recOut) - uint32_t(recIn))};
}

inline void PushRead(Document& m, const Row& r) {
    for (auto [t, v] : {std::pair{&m.readOrigCompleteLine, &r.line},
                        {&m.readOrigSourceInTC, &r.tc[0]},
                        {&m.readOrigSourceOutTC, &r.tc[1]},
                        {&m.readOrigRecInTC, &r.tc[2]},
                        {&m.readOrigRecOutTC, &r.tc[3]},
                        {&m.readOrigEventNumberStr, &r.number},
                        {&m.readOrigReelNames, &r.reel},
                        {&m.readOrigMode, &r.mode},
                        {&m.readOrigTrans, &r.trans},
                        {&m.readOrigTransDur, &r.dur},
                        {&m.readOrigIsBTrack, &r.bTrack}})
        t->push_back(*v);
    for (auto [t, v] : {std::pair{&m.readOrigSourceInFrame, r.sourceIn},
                        {&m.readOrigSourceOutFrame, r.sourceOut},
                        {&m.readOrigRecInFrame, r.recIn},
                        {&m.readOrigRecOutFrame, r.recOut},
                        {&m.readOrigEventNumberInt, r.numberValue},
                        {&m.editDurationFrames, r.duration}})
        t->push_back(v);
    m.maxZeilen = int32_t(m.readOrigCompleteLine.size()) - 1;
}

// Whether a process holds a file open for writing in the folder (a temporary file of its
// own, with a name or without one).
inline bool WritesInto(pid_t pid, const std::filesystem::path& folder) {
    std::error_code ec;
    const std::string prefix = folder.string() + "/";
    for (const auto& fd : std::filesystem::directory_iterator("/proc/" + std::to_string(pid) + "/fd", ec)) {
        const std::string target = std::filesystem::read_symlink(fd.path(), ec).string();
        if (target.rfind(prefix, 0) == 0 && target.find(".edl") == std::string::npos) return true;
    }
    return false;
}

class Fixture : public ::testing::Test {
protected:
    void SetUp() override {
        dir_ = std::filesystem::temp_directory_path() /
               ("vornelt-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter_++));
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }

    FolderItem File(const std::string& name) const { return FolderItem((dir_ / name).string()); }
    FolderItem WriteFile(const std::string& name, const std::string& bytes) {
        std::ofstream(dir_ / name, std::ios::binary) << bytes;
        return File(name);
    }
    // Opens the bytes as a list at the given rate, through the open dialog.
    void Load(const std::string& bytes, FrameRate rate = FrameRate(), const std::string& name = "list.edl") {
        platform.openDialogAnswers.push_back(WriteFile(name, bytes));
        m().frameRateTmp = rate;
        Open_CMX(session());
    }
    void Load(const std::string& bytes, double rate, const std::string& name = "list.edl") {
        Load(bytes, Rate(rate), name);
    }
    // The read tables as given, then the working copy.
    void Load(std::initializer_list<Row> rows) {
        for (const Row& r : rows) PushRead(m(), r);
        CopyArrays(m(), platform);
    }

    // A fresh program: a new desktop on the same platform.
    void Reset() { held_.emplace(platform); }
    Desktop& d() { return *held_; }
    Session& session() { return d().session; }
    Document& m() { return d().session.document; }
    MainWindowState& w() { return d().session.MainWindow(); }

    RecordingPlatform platform;
    std::optional<Desktop> held_{std::in_place, platform};
    std::filesystem::path dir_;
    static inline int counter_ = 0;
};

}  // namespace vornelt::testing
