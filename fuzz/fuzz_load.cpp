// Arbitrary bytes through the whole road: converted through the library under options taken
// from the input, then loaded into a session of its own and clicked on, each click's list
// against the list a whole rendering gives.
#include <cstddef>
#include <cstdint>
#include <string>

#include "passes/passes.hpp"
#include "session/load.hpp"
#include "text/encodings.hpp"
#include "vornelt/convert.hpp"
#include "writer/writer.hpp"

using namespace vornelt;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // The first two bytes choose the rate and the options; the rest is the file.
    const uint8_t rateByte = size > 0 ? data[0] : 0;
    const uint8_t options = size > 1 ? data[1] : 0xFF;
    const size_t skip = size > 2 ? 2 : size;
    const std::string bytes(reinterpret_cast<const char*>(data) + skip, size - skip);

    ConvertOptions o;
    o.fps = FrameRate::All()[rateByte % FrameRate::All().size()];
    o.mirror = options & 1;
    o.keys = options & 2;
    o.audio = options & 4;
    o.removeFreezeFrames = options & 8;
    o.removeSpeedChanges = options & 16;
    o.wipesToDissolves = options & 32;
    o.keysToDissolves = options & 64;
    o.comments = options & 128;
    o.wipeNames = rateByte & 4 ? WipeNames::FinalCutPro : WipeNames::Smpte;
    if (rateByte & 8) o.reel = rateByte & 16 ? "BL" : "MASTER";
    if (rateByte & 32) o.title = "Fuzz \xC3\x9F";
    const ConvertResult result = Convert(bytes, o);
    if (result.bytes.find('\n') != std::string::npos && result.bytes.find("\r\n") == std::string::npos)
        __builtin_trap();

    // Clicks as the input chooses them, each rendered as the window renders (the event lines
    // that did not change copied from the list before) and checked against a whole rendering.
    QuietPlatform platform;
    Session s(platform);
    s.document.frameRateTmp = o.fps;
    LoadListBytes(s, bytes, FolderItem("fuzz.edl"), false);
    Document& m = s.document;
    uint32_t clicks = uint32_t(rateByte) << 8 | options;
    for (int k = 0; k < 8; ++k, clicks >>= 2) {
        switch ((clicks + uint32_t(k)) % 6) {
            case 0:
                m.boolA1234 = !m.boolA1234;
                AllAudioOnOff(m, platform);
                break;
            case 1:
                m.boolV2 = !m.boolV2;
                AllKeysToDissolve(m, platform);
                AllKeysOnOff(m, platform);
                break;
            case 2:
                m.boolTransToDissolve = !m.boolTransToDissolve;
                AllWipesToDissolve(m, platform);
                break;
            case 3:
                m.boolKeyToDissolve = !m.boolKeyToDissolve;
                AllKeysToDissolve(m, platform);
                break;
            case 4: m.boolMirror = !m.boolMirror; break;
            default: m.boolGenerateNewComments = !m.boolGenerateNewComments; break;
        }
        NewEDL_02(m, s.MainWindow(), platform);
        const std::string clicked = *m.finalCMXString;
        m.lastRendering = LastRendering{};
        NewEDL_02(m, s.MainWindow(), platform);
        if (*m.finalCMXString != clicked) __builtin_trap();
    }
    return 0;
}
