#include "platform/platform.hpp"

namespace vornelt {

std::optional<std::string> Platform::ReadWholeFile(const FolderItem& file) {
    std::string bytes;
    if (ReadListFile(file.AbsolutePath(), bytes) != 0) return std::nullopt;
    return bytes;
}

std::unique_ptr<TextOutputStream> Platform::CreateTextFile(const FolderItem& file) {
    try {
        return OpenForSaving(file.AbsolutePath());
    } catch (const IOError&) {
        return nullptr;
    }
}

void Platform::SetMacTypeAndCreator(const FolderItem& file, std::string_view type, std::string_view creator) {
    SetFileTypeAndCreator(file.AbsolutePath(), type, creator);
}

FolderItem Platform::ExecutableFile() {
    const std::string path = ExecutablePath();
    return FolderItem(path.empty() ? "." : path);
}

}  // namespace vornelt
