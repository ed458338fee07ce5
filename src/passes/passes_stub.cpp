// Placeholder until the passes land.
#include "passes/passes.hpp"
#include "writer/writer.hpp"
namespace vornelt {
void CheckForM2() {}
void CopyArrays() {}
void CheckBSpurClipLenghts() {}
void CleanEDL_4() {}
void AllAudioOnOff() {}
void AllKeysOnOff() {}
void AllKeysToDissolve() {}
void AllWipesToDissolve() {}
void PrepareToDisplay() { NewEDL_02(); }
}  // namespace vornelt
