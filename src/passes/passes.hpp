#pragma once
// The passes after the reader: motion lines, the working copy, the key repair, the clip
// chains, and the switches that carry the options into the working copy. Each works on the
// document it is given and gives the platform's event loop a turn once per row.

#include "document/document.hpp"
#include "platform/platform.hpp"
#include "text/encodings.hpp"

namespace vornelt {

// Reads the speed of every motion line into readOrigM2Str and readOrigM2.
void CheckForM2(Document& m, Platform& platform);
// Builds the copy tables from the read tables, row for row.
void CopyArrays(Document& m, Platform& platform);
// Gives the zero-length key rows of Final Cut Pro the length of the row before them.
void CheckBSpurClipLenghts(Document& m, Platform& platform);
// Names the clip chains (RL0001, ...) in cleanClipReelName.
void CleanEDL_4(Document& m, Platform& platform);

// Records what the file's bytes look like (UTF-8, UTF-16), the part of the check of the list
// as read that the reader cannot make line by line. Changes nothing.
void CheckList(Document& m, LooksLike encoding);

// Keeps or leaves out the audio events, as boolA1234 says.
void AllAudioOnOff(Document& m, Platform& platform);
// Keeps or leaves out the key track, as boolV2 says.
void AllKeysOnOff(Document& m, Platform& platform);
// Turns keys into dissolves, or gives them back, as boolKeyToDissolve says.
void AllKeysToDissolve(Document& m, Platform& platform);
// Turns wipes into dissolves, or gives them back, as boolTransToDissolve says.
void AllWipesToDissolve(Document& m, Platform& platform);

}  // namespace vornelt
