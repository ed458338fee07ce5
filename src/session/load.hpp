#pragma once
// The roads that lead a list into a session, after the frame-rate question.

#include <string>

#include "platform/folder_item.hpp"
#include "session/session.hpp"

namespace vornelt {

// A file picked in the open dialog.
void Open_CMX(Session& s);
// The file in DropedFolderItem: dropped on the text area or handed to the application.
void FileDropedInEditField(Session& s);

// Whether a load renders the new list at its end (the window) or leaves that to its caller,
// who has more to set first (the conversion library).
enum class Render { Now, Later };

// The load from the file's bytes on: the text, the reset, the rate the user named, the
// passes. `assignRateTwice` marks the drop road, which copies the rate twice.
void LoadListBytes(Session& s, std::string bytes, const FolderItem& file, bool assignRateTwice,
                   Render render = Render::Now);

// The four switches in their load order, then NewEDL_02.
void PrepareToDisplay(Session& s);

}  // namespace vornelt
