// Whole lists from a file to a saved file: the load, the passes, the writer and saving, under
// the options an editor sets before opening the list.
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "core/load_fixture.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {
namespace {

std::string ReadBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

struct SavedListCase {
    const char* input;
    const char* expected;
    double rate;
    bool mirror, keys, audio, removeFreezeFrames, removeSpeedChanges, wipesToDissolves, keysToDissolves, comments;
    int wipeNames;  // 0 Final Cut Pro, 1 SMPTE
};

class SavedList : public LoadFixture {};

TEST_F(SavedList, FromFileToFileByteForByte) {
    const SavedListCase cases[] = {
        // The window's first settings: a mirror list with comments, wipes as dissolves,
        // motion lines removed, black kept as black.
        {"writer_demo_cmx.edl", "writer_demo_cmx.mirror.expected.edl", 25.0, true, true, true, true, true, true, false,
         true, 1},
        // No mirror, wipes kept with their Final Cut Pro names, motion lines kept, audio off.
        {"writer_demo_cmx.edl", "writer_demo_cmx.plain.expected.edl", 25.0, false, true, false, false, false, false,
         false, true, 0},
        {"writer_demo_gvg.edl", "writer_demo_gvg.mirror.expected.edl", 25.0, true, true, true, true, true, true, false,
         true, 1},
        // Keys as dissolves without comments: stars on the background row.
        {"writer_demo_gvg.edl", "writer_demo_gvg.plain.expected.edl", 30.0, false, true, true, true, true, true, true,
         false, 1},
    };
    for (const SavedListCase& c : cases) {
        SCOPED_TRACE(c.expected);
        TearDown();
        SetUp();
        MainWindowState& w = MainWindow();
        w.Chb_Mirror.Value = c.mirror;
        w.Chb_V2.Value = c.keys;
        w.Chb_A1234.Value = c.audio;
        w.Chb_RemoveFreezeFrame.Value = c.removeFreezeFrames;
        w.Chb_RemoveSpeedChanges.Value = c.removeSpeedChanges;
        w.Chb_TransToDissolve.Value = c.wipesToDissolves;
        w.Chb_KeyToDissolve.Value = c.keysToDissolves;
        w.Chb_ComntGenerateNew.Value = c.comments;
        w.PopupTransition.ListIndex = c.wipeNames;
        Load(ReadBytes(std::string(VORNELT_TEST_DATA_DIR) + "/" + c.input), c.rate, c.input);
        if (Module1.copyCompletLine.size() == 0) GTEST_SKIP() << "the passes are not in this build yet";

        const FolderItem target((dir_ / "saved.edl").string());
        platform.saveDialogAnswers.push_back(target);
        SaveAsDialog();
        ASSERT_TRUE(platform.messages.empty()) << platform.messages.front();
        EXPECT_EQ(ReadBytes(target.AbsolutePath()), ReadBytes(std::string(VORNELT_TEST_DATA_DIR) + "/" + c.expected));
    }
}

}  // namespace
}  // namespace vornelt::testing
