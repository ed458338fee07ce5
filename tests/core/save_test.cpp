// Saving: whole lists from a file to a saved file, the bytes, the two roads, and the state
// after each failure.
#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>

#include "fixtures.hpp"
#include "ui/handlers.hpp"
#include "vornelt/convert.hpp"

namespace vornelt::testing {
namespace {

namespace fs = std::filesystem;

const std::vector<std::string> kSaveError = {"Unknown Error while saving the File.\r\rPlease try again."};

class SaveTest : public Fixture {
protected:
    void SetUp() override {
        Fixture::SetUp();
        m().myAbsDateiName = "reel1.v2.edl";
        m().myAbsDateiFolderItem = FolderItem(dir_.string());
        // A mixed line end, and É, which Mac OS Roman holds as 0x83.
        m().finalCMXString = std::make_shared<const std::string>("TITLE: CAFÉ\rFCM: NON-DROP FRAME\n\r\n001\r");
        m().isModified = true;
    }
    // Saves through the dialog into the test's folder.
    void SaveAs(const std::string& name) {
        platform.saveDialogAnswers.push_back(File(name));
        SaveAsDialog(d());
    }
    std::string Saved(const std::string& name) const { return ReadBytes(File(name).AbsolutePath()); }

    const std::string kBytes = "TITLE: CAF\x83\r\nFCM: NON-DROP FRAME\r\n\r\n001\r\n";
};

TEST_F(SaveTest, WholeListsFromFileToFileByteForByte) {
    // Each box of the window with the option of the converter that stands for it.
    using W = MainWindowState;
    using O = ConvertOptions;
    const std::pair<CheckBox W::*, bool O::*> boxes[] = {
        {&W::Chb_Mirror, &O::mirror},
        {&W::Chb_V2, &O::keys},
        {&W::Chb_A1234, &O::audio},
        {&W::Chb_RemoveFreezeFrame, &O::removeFreezeFrames},
        {&W::Chb_RemoveSpeedChanges, &O::removeSpeedChanges},
        {&W::Chb_TransToDissolve, &O::wipesToDissolves},
        {&W::Chb_KeyToDissolve, &O::keysToDissolves},
        {&W::Chb_ComntGenerateNew, &O::comments},
    };
    // The list, the list saved, its rate, the boxes in their order above, the wipe names (0 Final Cut Pro, 1 SMPTE).
    const std::tuple<const char*, const char*, const char*, std::array<bool, std::size(boxes)>, int> cases[] = {
        // The window's first settings: a mirror list with comments, wipes as dissolves,
        // motion lines removed, black kept as black.
        {"writer_demo_cmx.edl", "writer_demo_cmx.mirror.expected.edl", "25", {1, 1, 1, 1, 1, 1, 0, 1}, 1},
        // No mirror, wipes kept with their Final Cut Pro names, motion lines kept, audio off.
        {"writer_demo_cmx.edl", "writer_demo_cmx.plain.expected.edl", "25", {0, 1, 0, 0, 0, 0, 0, 1}, 0},
        {"writer_demo_gvg.edl", "writer_demo_gvg.mirror.expected.edl", "25", {1, 1, 1, 1, 1, 1, 0, 1}, 1},
        // Keys as dissolves without comments: stars on the background row.
        {"writer_demo_gvg.edl", "writer_demo_gvg.plain.expected.edl", "30", {0, 1, 1, 1, 1, 1, 1, 0}, 1},
        // Drop frame: "FCM: DROP FRAME", and the keys repaired and the chains found across the
        // minutes that skip two frame numbers, written with ";" as the list writes them.
        {"rates_2997df.edl", "rates_2997df.mirror.expected.edl", "29.97df", {1, 1, 1, 1, 1, 1, 0, 1}, 1},
        {"rates_2997df.edl", "rates_2997df.plain.expected.edl", "29.97df", {0, 1, 1, 1, 1, 1, 0, 1}, 1},
        // Frames up to 49, a key and a chain counted at 50.
        {"rates_50.edl", "rates_50.plain.expected.edl", "50", {0, 1, 1, 1, 0, 0, 0, 1}, 0},
    };
    for (const auto& [input, expected, rate, checked, wipeNames] : cases) {
        SCOPED_TRACE(expected);
        TearDown();
        Fixture::SetUp();
        Reset();    // a new run of the window: it judges motion lines by the first list it loaded
        O options;  // the converter's defaults, then the case's rate, boxes and wipe names
        options.fps = testing::Rate(rate);
        options.wipeNames = wipeNames ? WipeNames::Smpte : WipeNames::FinalCutPro;
        for (size_t i = 0; i < std::size(boxes); ++i) {
            (w().*boxes[i].first).Value = checked[i];
            options.*boxes[i].second = checked[i];
        }
        w().PopupTransition.ListIndex = wipeNames;
        Load(TestData(input), testing::Rate(rate), input);
        SaveAs("saved.edl");
        ASSERT_TRUE(platform.messages.empty()) << platform.messages.front();
        EXPECT_EQ(Saved("saved.edl"), TestData(expected));
        // The window saves the very bytes of the converter.
        EXPECT_EQ(vornelt::Convert(TestData(input), options, input).bytes, TestData(expected));
    }
}

TEST_F(SaveTest, SaveAsAfterACancel) {
    m().isModified = false;
    SaveAsDialog(d());  // cancelled: the list counts as unsaved
    EXPECT_TRUE(m().isModified);
    EXPECT_TRUE(fs::is_empty(dir_));
    SaveAs("out.edl");
    ASSERT_EQ(platform.saveDialogsShown.size(), 2u);
    EXPECT_EQ(platform.saveDialogsShown[1].SuggestedFileName, "reel1 VORNELT.edl");
    EXPECT_EQ(platform.saveDialogsShown[1].InitialDirectory, m().myAbsDateiFolderItem);
    EXPECT_EQ(Saved("out.edl"), kBytes);
    EXPECT_EQ(platform.windowModifiedMarks, (std::vector<bool>{true, false}));
    EXPECT_EQ(std::tuple(m().isModified, w().Title, w().Cursor),
              std::tuple(false, "out.edl", MouseCursor::StandardPointer));
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(SaveTest, FailuresKeepTheStateAndTheEarlierFile) {
    for (bool secondRoad : {false, true}) {
        for (bool halfWay : {false, true}) {
            SCOPED_TRACE(std::to_string(secondRoad) + std::to_string(halfWay));
            TearDown();
            SetUp();
            platform = {};
            SaveAs("keep.edl");
            const std::string earlier = Saved("keep.edl");
            m().finalCMXString = std::make_shared<const std::string>(std::string(4096, 'X') + "\r");
            m().isModified = true;
            platform.failCreateTextFile = !halfWay;
            platform.failWriteAfterBytes = halfWay ? std::optional<size_t>(100) : std::nullopt;
            secondRoad ? SaveOhneDialog(d()) : SaveAs("keep.edl");
            EXPECT_EQ(platform.messages, kSaveError);
            EXPECT_EQ(std::tuple(m().isModified, w().Cursor), std::tuple(true, MouseCursor::Wait));
            EXPECT_EQ(Saved("keep.edl"), earlier);
            EXPECT_EQ(std::distance(fs::directory_iterator(dir_), fs::directory_iterator()), 1);
        }
    }
}

// A read-only file is not replaced: the save is told as failed, and the file keeps its bytes.
TEST_F(SaveTest, ReadOnlyFileIsNotReplaced) {
    WriteFile("read-only.edl", "kept");
    ::chmod(File("read-only.edl").AbsolutePath().c_str(), 0444);
    SaveAs("read-only.edl");
    EXPECT_EQ(std::tuple(platform.messages, platform.beeps), std::tuple(kSaveError, 1));
    EXPECT_EQ(Saved("read-only.edl"), "kept");
    EXPECT_TRUE(m().isModified);
}

TEST_F(SaveTest, SecondRoadWithoutAFile) {
    // No path: the message, and the pointer back.
    w().Cursor = MouseCursor::Wait;
    SaveOhneDialog(d());
    EXPECT_EQ(platform.messages, kSaveError);
    EXPECT_EQ(std::tuple(platform.beeps, w().Cursor), std::tuple(1, MouseCursor::StandardPointer));
    // The file moved away: the dialog, named after the loaded file, without a word.
    SaveAs("moved.edl");
    fs::remove(File("moved.edl").AbsolutePath());
    m().myAbsDateiName = "other.edl";
    SaveOhneDialog(d());
    ASSERT_EQ(platform.saveDialogsShown.size(), 2u);
    EXPECT_EQ(platform.saveDialogsShown[1].SuggestedFileName, "other VORNELT.edl");
    EXPECT_EQ(platform.messages.size(), 1u);
}

TEST(SuggestedSaveName, UpToTheFirstPoint) {
    for (auto [name, suggested] : {std::pair{"reel1.edl", "reel1 VORNELT.edl"},
                                   {"reel1.v2.edl", "reel1 VORNELT.edl"},
                                   {"reel1", "reel1 VORNELT.edl"},
                                   {".hidden.edl", " VORNELT.edl"},
                                   {"Schnitt Ä.edl", "Schnitt Ä VORNELT.edl"}})
        EXPECT_EQ(SuggestedSaveName(name), suggested);
}

}  // namespace
}  // namespace vornelt::testing
