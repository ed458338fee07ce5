#pragma once
// The passes after the reader: motion lines, the working copy, the key repair, the clip
// chains, and the switches that carry the options into the working copy.

namespace vornelt {

void CheckForM2();
void CopyArrays();
void CheckBSpurClipLenghts();
void CleanEDL_4();

void AllAudioOnOff();
void AllKeysOnOff();
void AllKeysToDissolve();
void AllWipesToDissolve();
// The four switches in their load order, then NewEDL_02.
void PrepareToDisplay();

}  // namespace vornelt
