#pragma once
// Loads a list through the real load road, with the headless platform answering the
// dialogs: what an editor does when opening a file, without a window.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>

#include "document/load.hpp"
#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "platform/headless.hpp"

namespace vornelt::testing {

class LoadFixture : public ::testing::Test {
protected:
    void SetUp() override {
        ResetProgramState();
        dir_ = std::filesystem::temp_directory_path() /
               ("vornelt-test-" + std::to_string(::getpid()) + "-" + std::to_string(counter_++));
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override {
        std::error_code ec;
        std::filesystem::remove_all(dir_, ec);
        ResetProgramState();
    }

    // Writes the bytes to a file of that name in the test's own folder.
    FolderItem WriteFile(const std::string& name, const std::string& bytes) {
        std::ofstream(dir_ / name, std::ios::binary) << bytes;
        return FolderItem((dir_ / name).string());
    }

    // Opens the bytes as a list at the given rate, through the open dialog.
    void Load(const std::string& bytes, double rate = 25.0, const std::string& name = "list.edl") {
        platform.openDialogAnswers.push_back(WriteFile(name, bytes));
        Module1.frameRateTmp = rate;
        Open_CMX();
    }

    HeadlessPlatform platform;
    ScopedPlatform scope{platform};
    std::filesystem::path dir_;
    static inline int counter_ = 0;
};

}  // namespace vornelt::testing
