#pragma once
// The writer: the whole output list from the copy tables under the current options, the
// reel field, and saving.

#include <string>
#include <string_view>

namespace vornelt {

// Renders finalCMXString and EditField1 anew and marks the document modified.
void NewEDL_02();
// Shows isModified on the main window's close button.
void PunktImPunkt();
// Any reel text as the fixed-width reel field of the list's form (8 CMX, 6 GVG).
std::string FormatReelNames(std::string_view name);

// Saving. SaveAsDialog asks for the file; SaveOhneDialog writes to the file of the last
// save.
void SaveAsDialog();
void SaveOhneDialog();
// The name that the save dialog suggests for a loaded file of this name.
std::string SuggestedSaveName(std::string_view loadedName);

}  // namespace vornelt
