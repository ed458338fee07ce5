#pragma once
// A file reference: a file or folder named by its absolute path, which need not exist.
// "No file" is an empty std::optional<FolderItem>.

#include <optional>
#include <string>
#include <string_view>

namespace vornelt {

class FolderItem {
public:
    // The path is made absolute (the text is kept: "a/../b" is not "b" where "a" is a link);
    // it is UTF-8.
    explicit FolderItem(std::string_view path);

    const std::string& AbsolutePath() const noexcept { return path_; }
    std::string Name() const;                  // the last part of the path
    std::optional<FolderItem> Parent() const;  // none for the root
    FolderItem Child(std::string_view name) const;
    bool Exists() const;
    bool IsFolder() const;

    friend bool operator==(const FolderItem& a, const FolderItem& b) { return a.path_ == b.path_; }

private:
    std::string path_;
};

using FolderItemRef = std::optional<FolderItem>;

// The file at an absolute path; none for an empty path.
FolderItemRef GetFolderItem(std::string_view path);

}  // namespace vornelt
