// Saving: whole lists from a file to a saved file, the bytes, the two roads, and the state
// after each failure.
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>

#include "fixtures.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kSaveError = {"Unknown Error while saving the File.\r\rPlease try again."};

class SaveTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        Module1.edlFormat = "CMX";
        Module1.myAbsDateiName = "reel1.v2.edl";
        Module1.myAbsDateiFolderItem = FolderItem(dir_.string());
        // A mixed line end, and É, which Mac OS Roman holds as 0x83.
        Module1.finalCMXString = std::make_shared<const std::string>("TITLE: CAFÉ\rFCM: NON-DROP FRAME\n\r\n001\r");
        Module1.isModified = true;
    }
    // Saves through the dialog into the test's folder.
    void SaveAs(const std::string& name) {
        platform.saveDialogAnswers.push_back(File(name));
        SaveAsDialog();
    }
    std::string Saved(const std::string& name) const { return ReadBytes(File(name).AbsolutePath()); }

    const std::string kBytes = "TITLE: CAF\x83\r\nFCM: NON-DROP FRAME\r\n\r\n001\r\n";
};

TEST_F(SaveTest, WholeListsFromFileToFileByteForByte) {
    using W = MainWindowState;
    CheckBox W::*const boxes[] = {&W::Chb_Mirror,          &W::Chb_V2,           &W::Chb_A1234,
                                  &W::Chb_RemoveFreezeFrame, &W::Chb_RemoveSpeedChanges, &W::Chb_TransToDissolve,
                                  &W::Chb_KeyToDissolve,   &W::Chb_ComntGenerateNew};
    const struct {
        const char *input, *expected;
        double rate;
        bool options[std::size(boxes)];  // in the order of the boxes above
        int wipeNames;                   // 0 Final Cut Pro, 1 SMPTE
    } cases[] = {
        // The window's first settings: a mirror list with comments, wipes as dissolves,
        // motion lines removed, black kept as black.
        {"writer_demo_cmx.edl", "writer_demo_cmx.mirror.expected.edl", 25.0, {1, 1, 1, 1, 1, 1, 0, 1}, 1},
        // No mirror, wipes kept with their Final Cut Pro names, motion lines kept, audio off.
        {"writer_demo_cmx.edl", "writer_demo_cmx.plain.expected.edl", 25.0, {0, 1, 0, 0, 0, 0, 0, 1}, 0},
        {"writer_demo_gvg.edl", "writer_demo_gvg.mirror.expected.edl", 25.0, {1, 1, 1, 1, 1, 1, 0, 1}, 1},
        // Keys as dissolves without comments: stars on the background row.
        {"writer_demo_gvg.edl", "writer_demo_gvg.plain.expected.edl", 30.0, {0, 1, 1, 1, 1, 1, 1, 0}, 1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.expected);
        TearDown();
        Fixture::SetUp();
        for (size_t i = 0; i < std::size(boxes); ++i) (MainWindow().*boxes[i]).Value = c.options[i];
        MainWindow().PopupTransition.ListIndex = c.wipeNames;
        Load(TestData(c.input), c.rate, c.input);
        SaveAs("saved.edl");
        ASSERT_TRUE(platform.messages.empty()) << platform.messages.front();
        EXPECT_EQ(Saved("saved.edl"), TestData(c.expected));
    }
}

TEST_F(SaveTest, SaveAsThenSaveAgain) {
    SaveAs("out.edl");
    ASSERT_EQ(platform.saveDialogsShown.size(), 1u);
    const SaveDialogSpec& dialog = platform.saveDialogsShown[0];
    EXPECT_EQ(dialog.Title, "Save EDL As CMX");
    EXPECT_EQ(dialog.PromptText, "Save new EDL as...");
    EXPECT_EQ(dialog.SuggestedFileName, "reel1 VORNELT.edl");
    EXPECT_EQ(dialog.InitialDirectory, Module1.myAbsDateiFolderItem);
    EXPECT_EQ(Saved("out.edl"), kBytes);
    EXPECT_FALSE(Module1.isModified);
    EXPECT_EQ(platform.windowModifiedMarks, std::vector<bool>{false});
    EXPECT_EQ(MainWindow().Title, "out.edl");
    EXPECT_EQ(MainWindow().Cursor, MouseCursor::StandardPointer);
    EXPECT_EQ(Module1.mySavedAbsDateiPfad, File("out.edl").AbsolutePath());
    EXPECT_EQ(Module1.mySavedAbsDateiFolderItem, FolderItem(dir_.string()));

    Module1.isModified = true;
    SaveOhneDialog();
    EXPECT_EQ(platform.saveDialogsShown.size(), 1u);
    EXPECT_EQ(Saved("out.edl"), kBytes);
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
            TearDown();
            SetUp();
            SaveAs("keep.edl");
            const std::string earlier = Saved("keep.edl");
            Module1.finalCMXString = std::make_shared<const std::string>(std::string(4096, 'X') + "\r");
            Module1.isModified = true;
            platform.messages.clear();
            platform.failCreateTextFile = !halfWay;
            platform.failWriteAfterBytes = halfWay ? std::optional<size_t>(100) : std::nullopt;
            secondRoad ? SaveOhneDialog() : SaveAs("keep.edl");
            EXPECT_EQ(platform.messages, kSaveError);
            EXPECT_TRUE(Module1.isModified);
            EXPECT_EQ(MainWindow().Cursor, MouseCursor::Wait);
            EXPECT_EQ(Saved("keep.edl"), earlier);
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
    for (auto [name, suggested] : {std::pair{"reel1.edl", "reel1 VORNELT.edl"}, {"reel1.v2.edl", "reel1 VORNELT.edl"},
                                   {"reel1", "reel1 VORNELT.edl"}, {".hidden.edl", " VORNELT.edl"},
                                   {"Schnitt Ä.edl", "Schnitt Ä VORNELT.edl"}})
        EXPECT_EQ(SuggestedSaveName(name), suggested);
}

}  // namespace
}  // namespace vornelt::testing
