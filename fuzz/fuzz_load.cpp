// Arbitrary bytes through the whole road: read as a list at a rate, every pass, the list
// rendered under options taken from the input, every switch clicked, and saved to memory.
#include <cstddef>
#include <cstdint>
#include <string>

#include "document/load.hpp"
#include "document/module1.hpp"
#include "document/window_state.hpp"
#include "passes/passes.hpp"
#include "platform/encodings.hpp"
#include "platform/headless.hpp"
#include "reader/reader.hpp"
#include "writer/writer.hpp"

using namespace vornelt;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static HeadlessPlatform platform;
    SetPlatform(&platform);
    ResetProgramState();
    // The first two bytes choose the rate and the options; the rest is the file.
    const uint8_t rateByte = size > 0 ? data[0] : 0;
    const uint8_t options = size > 1 ? data[1] : 0xFF;
    const size_t skip = size > 2 ? 2 : size;
    std::string bytes(reinterpret_cast<const char*>(data) + skip, size - skip);

    MainWindowState& w = MainWindow();
    w.Chb_Mirror.Value = options & 1;
    w.Chb_V2.Value = options & 2;
    w.Chb_A1234.Value = options & 4;
    w.Chb_RemoveFreezeFrame.Value = options & 8;
    w.Chb_RemoveSpeedChanges.Value = options & 16;
    w.Chb_TransToDissolve.Value = options & 32;
    w.Chb_KeyToDissolve.Value = options & 64;
    w.Chb_ComntGenerateNew.Value = options & 128;
    w.PopupTransition.ListIndex = rateByte & 4 ? 0 : 1;
    if (rateByte & 8) w.EF_ReelName.SetText(rateByte & 16 ? "BL" : "MASTER");

    Module1.cmxString = std::make_shared<std::string>(DecodeWindowsLatin1(std::move(bytes)));
    ResetGlobalVariables_NEU();
    Module1.frameRate = (rateByte % 3 == 0) ? 24.0 : (rateByte % 3 == 1) ? 25.0 : 30.0;
    RunLoadPasses();

    // Every switch the other way and back, as clicks would.
    for (int k = 0; k < 2; ++k) {
        Module1.boolA1234 = !Module1.boolA1234;
        AllAudioOnOff();
        Module1.boolV2 = !Module1.boolV2;
        AllKeysToDissolve();
        AllKeysOnOff();
        Module1.boolTransToDissolve = !Module1.boolTransToDissolve;
        AllWipesToDissolve();
        Module1.boolKeyToDissolve = !Module1.boolKeyToDissolve;
        AllKeysToDissolve();
        Module1.boolMirror = !Module1.boolMirror;
        NewEDL_02();
    }
    const std::string saved = EncodeListForSaving(*Module1.finalCMXString);
    if (saved.find('\n') != std::string::npos && saved.find("\r\n") == std::string::npos) __builtin_trap();
    return 0;
}
