#include "platform/platform.hpp"

#include <filesystem>
#include <system_error>

#if defined(__APPLE__)
#include <mach-o/dyld.h>
#endif

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
#if defined(__APPLE__)
    char buf[4096];
    uint32_t size = sizeof buf;
    if (_NSGetExecutablePath(buf, &size) == 0) return FolderItem(buf);
#else
    std::error_code ec;
    auto p = std::filesystem::read_symlink("/proc/self/exe", ec);
    if (!ec) return FolderItem(p.string());
#endif
    return FolderItem(".");
}

}  // namespace vornelt
