#include "platform/folder_item.hpp"

#include <filesystem>
#include <system_error>

namespace vornelt {

namespace fs = std::filesystem;

namespace {
fs::path FromUtf8(std::string_view s) { return fs::path(std::u8string(s.begin(), s.end())); }
std::string ToUtf8(const fs::path& p) {
    std::u8string u = p.u8string();
    return std::string(u.begin(), u.end());
}
}  // namespace

FolderItem::FolderItem(std::string_view path) {
    // Made absolute against the working folder, never "normal": "link/.." is for the kernel to
    // resolve, and it may not lead where the text without it does.
    std::error_code ec;
    fs::path p = fs::absolute(FromUtf8(path), ec);
    if (ec) p = FromUtf8(path);
    std::string s = ToUtf8(p);
    // "dir/" and "dir" are the same folder.
    while (s.size() > 1 && s.back() == '/') s.pop_back();
    path_ = std::move(s);
}

std::string FolderItem::Name() const { return ToUtf8(FromUtf8(path_).filename()); }

std::optional<FolderItem> FolderItem::Parent() const {
    fs::path p = FromUtf8(path_);
    if (!p.has_parent_path() || p.parent_path() == p) return std::nullopt;
    return FolderItem(ToUtf8(p.parent_path()));
}

FolderItem FolderItem::Child(std::string_view name) const {
    return FolderItem(ToUtf8(FromUtf8(path_) / FromUtf8(name)));
}

bool FolderItem::Exists() const {
    std::error_code ec;
    return fs::exists(FromUtf8(path_), ec);
}

bool FolderItem::IsFolder() const {
    std::error_code ec;
    return fs::is_directory(FromUtf8(path_), ec);
}

FolderItemRef GetFolderItem(std::string_view path) {
    if (path.empty()) return std::nullopt;
    return FolderItem(path);
}

}  // namespace vornelt
