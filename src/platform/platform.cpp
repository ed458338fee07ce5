#include "platform/platform.hpp"

namespace vornelt {

bool Platform::ReadWholeFile(const FolderItem& file, std::string& bytes, ErrorStatus* error) {
    return ReadListFile(file.AbsolutePath(), bytes, error);
}

std::unique_ptr<TextOutputStream> Platform::CreateTextFile(const FolderItem& file, ErrorStatus* error) {
    // The window sets the type and creator itself once the file is closed.
    return OpenForSaving(file.AbsolutePath(), SaveOptions{.list = false}, error);
}

void Platform::SetMacTypeAndCreator(const FolderItem& file, std::string_view type, std::string_view creator) {
    SetFileTypeAndCreator(file.AbsolutePath(), type, creator);
}

FolderItem Platform::ExecutableFile() {
    const std::string path = ExecutablePath();
    return FolderItem(path.empty() ? "." : path);
}

}  // namespace vornelt
