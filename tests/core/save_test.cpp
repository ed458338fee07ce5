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

const std::vector<std::string> kSaveError = {"Unknown Error while saving the File.\r\rPlease try again."};

class SaveTest : public ::testing::Test {
protected:
    void SetUp() override {
        ResetProgramState();
        dir_ = fs::temp_directory_path() / ("vornelt-save-" + std::to_string(::getpid()));
        fs::create_directories(dir_);
        Module1.edlFormat = "CMX";
        Module1.myAbsDateiName = "reel1.v2.edl";
        Module1.myAbsDateiFolderItem = FolderItem(dir_.string());
        // A mixed line end, and É, which Mac OS Roman holds as 0x83.
        Module1.finalCMXString = std::make_shared<const std::string>("TITLE: CAFÉ\rFCM: NON-DROP FRAME\n\r\n001\r");
        Module1.isModified = true;
    }
    void TearDown() override {
        fs::remove_all(dir_);
        ResetProgramState();
    }

    FolderItem File(const std::string& name) const { return FolderItem((dir_ / name).string()); }
    static std::string Read(const FolderItem& file) {
        std::ifstream in(file.AbsolutePath(), std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(in), {});
    }
    // Saves through the dialog into the test's folder.
    void SaveAs(const std::string& name) {
        platform.saveDialogAnswers.push_back(File(name));
        SaveAsDialog();
    }

    const std::string kBytes = "TITLE: CAF\x83\r\nFCM: NON-DROP FRAME\r\n\r\n001\r\n";
    HeadlessPlatform platform;
    ScopedPlatform scope{platform};
    fs::path dir_;
};

TEST_F(SaveTest, SaveAsThenSaveAgain) {
    SaveAs("out.edl");
    ASSERT_EQ(platform.saveDialogsShown.size(), 1u);
    const SaveDialogSpec& dialog = platform.saveDialogsShown[0];
    EXPECT_EQ(dialog.Title, "Save EDL As CMX");
    EXPECT_EQ(dialog.PromptText, "Save new EDL as...");
    EXPECT_EQ(dialog.SuggestedFileName, "reel1 VORNELT.edl");
    EXPECT_EQ(dialog.InitialDirectory, Module1.myAbsDateiFolderItem);
    EXPECT_EQ(Read(File("out.edl")), kBytes);
    EXPECT_FALSE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, std::vector<bool>{false});
    EXPECT_EQ(MainWindow().Title, "out.edl");
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::StandardPointer);
    EXPECT_EQ(Module1.mySavedAbsDateiPfad, File("out.edl").AbsolutePath());
    EXPECT_EQ(Module1.mySavedAbsDateiFolderItem, FolderItem(dir_.string()));

    Module1.isModified = true;
    SaveOhneDialog();
    EXPECT_EQ(platform.saveDialogsShown.size(), 1u);
    EXPECT_EQ(Read(File("out.edl")), kBytes);
    EXPECT_FALSE(Module1.isModified);
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(SaveTest, CancelledDialogMarksTheListUnsaved) {
    Module1.isModified = false;
    SaveAsDialog();
    EXPECT_TRUE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, std::vector<bool>{true});
    EXPECT_TRUE(fs::is_empty(dir_));
}

TEST_F(SaveTest, FailuresKeepTheStateAndTheEarlierFile) {
    for (bool secondRoad : {false, true}) {
        for (bool halfWay : {false, true}) {
            SCOPED_TRACE(std::to_string(secondRoad) + std::to_string(halfWay));
            SetUp();
            SaveAs("keep.edl");
            const std::string earlier = Read(File("keep.edl"));
            Module1.finalCMXString = std::make_shared<const std::string>(std::string(4096, 'X') + "\r");
            Module1.isModified = true;
            platform.messages.clear();
            platform.failCreateTextFile = !halfWay;
            platform.failWriteAfterBytes = halfWay ? std::optional<size_t>(100) : std::nullopt;
            secondRoad ? SaveOhneDialog() : SaveAs("keep.edl");
            EXPECT_EQ(platform.messages, kSaveError);
            EXPECT_TRUE(Module1.isModified);
            EXPECT_EQ(MainWindow().Cursor, MouseCursor::Wait);
            EXPECT_EQ(Read(File("keep.edl")), earlier);
            EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);
            platform.failCreateTextFile = false;
            platform.failWriteAfterBytes.reset();
        }
    }
}

TEST_F(SaveTest, SecondRoadWithoutAFile) {
    // No path: the message, and the pointer back.
    MainWindow().Cursor = MouseCursor::Wait;
    SaveOhneDialog();
    EXPECT_EQ(platform.beeps, 1);
    EXPECT_EQ(platform.messages, kSaveError);
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::StandardPointer);
    // The file moved away: the dialog, named after the loaded file, without a word.
    SaveAs("moved.edl");
    fs::remove(File("moved.edl").AbsolutePath());
    Module1.myAbsDateiName = "other.edl";
    SaveOhneDialog();
    ASSERT_EQ(platform.saveDialogsShown.size(), 2u);
    EXPECT_EQ(platform.saveDialogsShown[1].SuggestedFileName, "other VORNELT.edl");
    EXPECT_EQ(platform.messages.size(), 1u);
}

TEST(SuggestedSaveName, UpToTheFirstPoint) {
    EXPECT_EQ(SuggestedSaveName("reel1.edl"), "reel1 VORNELT.edl");
    EXPECT_EQ(SuggestedSaveName("reel1.v2.edl"), "reel1 VORNELT.edl");
    EXPECT_EQ(SuggestedSaveName("reel1"), "reel1 VORNELT.edl");
    EXPECT_EQ(SuggestedSaveName(".hidden.edl"), " VORNELT.edl");
    EXPECT_EQ(SuggestedSaveName("Schnitt Ä.edl"), "Schnitt Ä VORNELT.edl");
}

}  // namespace
}  // namespace vornelt::testing
