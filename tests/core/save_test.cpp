// Saving: the bytes of the file, the two roads, and the state after each failure.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "platform/headless.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

namespace fs = std::filesystem;

const std::string kSaveError = "Unknown Error while saving the File.\r\rPlease try again.";

class SaveTest : public ::testing::Test {
protected:
    void SetUp() override {
        ResetProgramState();
        dir_ = fs::temp_directory_path() / ("vornelt-save-" + std::to_string(::getpid()) + "-" + std::to_string(counter_++));
        fs::create_directories(dir_);
        Module1.edlFormat = "CMX";
        Module1.myAbsDateiName = "reel1.v2.edl";
        Module1.myAbsDateiFolderItem = FolderItem(dir_.string());
        SetList("TITLE: CAFÉ\rFCM: NON-DROP FRAME\r\r001 TAPE1 V C\r");
        Module1.isModified = true;
    }
    void TearDown() override {
        std::error_code ec;
        fs::remove_all(dir_, ec);
        ResetProgramState();
    }

    static void SetList(const std::string& text) {
        Module1.finalCMXString = std::make_shared<const std::string>(text);
        MainWindow().EditField1.Text = Module1.finalCMXString;
    }
    FolderItem File(const std::string& name) const { return FolderItem((dir_ / name).string()); }
    static std::string Read(const FolderItem& file) {
        std::ifstream in(file.AbsolutePath(), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }

    HeadlessPlatform platform;
    ScopedPlatform scope{platform};
    fs::path dir_;
    static inline int counter_ = 0;
};

TEST_F(SaveTest, SaveAsWritesTheListAndRecordsTheFile) {
    const FolderItem target = File("out.edl");
    platform.saveDialogAnswers.push_back(target);
    SaveAsDialog();

    ASSERT_EQ(platform.saveDialogsShown.size(), 1u);
    const SaveDialogSpec& spec = platform.saveDialogsShown[0];
    EXPECT_EQ(spec.Title, "Save EDL As CMX");
    EXPECT_EQ(spec.PromptText, "Save new EDL as...");
    EXPECT_EQ(spec.SuggestedFileName, "reel1 VORNELT.edl");
    EXPECT_EQ(spec.InitialDirectory, Module1.myAbsDateiFolderItem);

    // CR LF after every line, Mac OS Roman (É is 0x83), nothing before or behind the list.
    EXPECT_EQ(Read(target), "TITLE: CAF\x83\r\nFCM: NON-DROP FRAME\r\n\r\n001 TAPE1 V C\r\n");
    EXPECT_FALSE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, std::vector<bool>{false});
    EXPECT_EQ(MainWindow().Title, "out.edl");
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::StandardPointer);
    EXPECT_EQ(Module1.mySavedAbsDateiName, "out.edl");
    EXPECT_EQ(Module1.mySavedAbsDateiPfad, target.AbsolutePath());
    EXPECT_EQ(Module1.mySavedAbsDateiFolderItem, FolderItem(dir_.string()));
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(SaveTest, EveryLineEndBecomesCrLf) {
    SetList("A\rB\nC\r\nD");
    platform.saveDialogAnswers.push_back(File("ends.edl"));
    SaveAsDialog();
    EXPECT_EQ(Read(File("ends.edl")), "A\r\nB\r\nC\r\nD");
}

TEST_F(SaveTest, SecondSaveAsksNothingAndWritesTheSameBytes) {
    const FolderItem target = File("twice.edl");
    platform.saveDialogAnswers.push_back(target);
    SaveAsDialog();
    const std::string first = Read(target);
    Module1.isModified = true;
    SaveOhneDialog();
    EXPECT_EQ(platform.saveDialogsShown.size(), 1u);
    EXPECT_EQ(Read(target), first);
    EXPECT_FALSE(Module1.isModified);
}

TEST_F(SaveTest, CancelledDialogMarksTheListUnsaved) {
    Module1.isModified = false;
    SaveAsDialog();  // no answer queued: cancelled
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, std::vector<bool>{true});
    EXPECT_TRUE(Module1.mySavedAbsDateiName.empty());
    EXPECT_TRUE(fs::is_empty(dir_));
}

TEST_F(SaveTest, FailedCreationKeepsTheStateAndTheWaitCursor) {
    platform.failCreateTextFile = true;
    platform.saveDialogAnswers.push_back(File("never.edl"));
    SaveAsDialog();
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(platform.messages, std::vector<std::string>{kSaveError});
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::Wait);
    EXPECT_TRUE(Module1.mySavedAbsDateiName.empty());
    EXPECT_FALSE(File("never.edl").Exists());
}

TEST_F(SaveTest, WriteFailingHalfWayLeavesTheEarlierFileWhole) {
    const FolderItem target = File("keep.edl");
    platform.saveDialogAnswers.push_back(target);
    SaveAsDialog();
    const std::string earlier = Read(target);

    SetList(std::string(4096, 'X') + "\r");
    Module1.isModified = true;
    platform.failWriteAfterBytes = 100;
    SaveOhneDialog();
    EXPECT_EQ(Read(target), earlier);
    EXPECT_EQ(platform.messages, std::vector<std::string>{kSaveError});
    EXPECT_TRUE(Module1.isModified);
    // Nothing is left beside the file.
    EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);

    platform.messages.clear();
    platform.saveDialogAnswers.push_back(target);
    SaveAsDialog();
    EXPECT_EQ(Read(target), earlier);
    EXPECT_EQ(platform.messages, std::vector<std::string>{kSaveError});
}

TEST_F(SaveTest, SaveWithoutDialogAndNoPath) {
    MainWindow().Cursor = MouseCursor::Wait;
    SaveOhneDialog();
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(platform.messages, std::vector<std::string>{kSaveError});
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::StandardPointer);
    EXPECT_TRUE(platform.saveDialogsShown.empty());
}

TEST_F(SaveTest, SavedFileGoneSendsTheSaveToTheDialog) {
    const FolderItem target = File("moved.edl");
    platform.saveDialogAnswers.push_back(target);
    SaveAsDialog();
    fs::remove(target.AbsolutePath());
    Module1.myAbsDateiName = "other.edl";
    SaveOhneDialog();  // the dialog comes up, cancelled
    ASSERT_EQ(platform.saveDialogsShown.size(), 2u);
    EXPECT_EQ(platform.saveDialogsShown[1].SuggestedFileName, "other VORNELT.edl");
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_TRUE(Module1.isModified);
}

TEST_F(SaveTest, FailedCreationOnTheSecondRoad) {
    platform.saveDialogAnswers.push_back(File("second.edl"));
    SaveAsDialog();
    Module1.isModified = true;
    platform.failCreateTextFile = true;
    SaveOhneDialog();
    EXPECT_EQ(platform.messages, std::vector<std::string>{kSaveError});
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::Wait);
}

TEST_F(SaveTest, FailingMarkLeavesTheSaveStanding) {
    platform.setWindowModifiedResult = 12;
    platform.saveDialogAnswers.push_back(File("mark.edl"));
    SaveAsDialog();
    EXPECT_EQ(platform.messages, std::vector<std::string>{"Err: 12"});
    EXPECT_FALSE(Module1.isModified);
    EXPECT_EQ(Module1.mySavedAbsDateiName, "mark.edl");
}

TEST(SuggestedSaveName, UpToTheFirstPoint) {
    const struct {
        const char* loaded;
        const char* suggested;
    } cases[] = {
        {"reel1.edl", "reel1 VORNELT.edl"},
        {"reel1.v2.edl", "reel1 VORNELT.edl"},
        {"reel1", "reel1 VORNELT.edl"},
        {".hidden.edl", " VORNELT.edl"},
        {"", " VORNELT.edl"},
        {"Schnitt Ä.edl", "Schnitt Ä VORNELT.edl"},
    };
    for (const auto& c : cases) EXPECT_EQ(SuggestedSaveName(c.loaded), c.suggested) << c.loaded;
}

}  // namespace
}  // namespace vornelt::testing
