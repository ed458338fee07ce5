#pragma once
// The two roads that lead a file into the document, after the frame-rate question.

namespace vornelt {

// A file picked in the open dialog.
void Open_CMX();
// The file in DropedFolderItem: dropped on the text area or handed to the application.
void FileDropedInEditField();

// The passes of a load, in their order, on the text in cmxString: ParseCMX3600,
// CheckForM2, CopyArrays, CheckBSpurClipLenghts, CleanEDL_4, PrepareToDisplay.
void RunLoadPasses();

}  // namespace vornelt
