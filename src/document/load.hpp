#pragma once
// The two roads that lead a file into the document, after the frame-rate question.

namespace vornelt {

// A file picked in the open dialog.
void Open_CMX();
// The file in DropedFolderItem: dropped on the text area or handed to the application.
void FileDropedInEditField();

}  // namespace vornelt
