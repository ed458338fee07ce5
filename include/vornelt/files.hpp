#pragma once
// Lists as files: reading one, and saving one under the rules that the window,
// vornelt-convert and Python share.
//
// A name is resolved by the kernel, never by editing its text: the folder a name stands in is
// opened, and the file is read, made, replaced and compared within that folder by device and
// inode. So what is written is what the kernel means by the name ("linkdir/../a.edl" stands
// beside the folder the link leads to), its protections included (a link that another user
// planted in a sticky folder is not followed where the system forbids it).
//
// Saving never leaves a half-written file where the target stood. What stands at the target
// decides the rest:
// - nothing: a new file, 0666 less the umask, which shows under its name only when whole;
// - a regular file: replaced once the new one is written whole, through a private temporary
//   file in the same folder (".vornelt-XXXXXX.tmp"); it keeps its permission bits (never
//   set-user-ID, set-group-ID or sticky) and, where the process may set them, its owner and
//   group. A read-only file (no write permission bit), or one this process may not write, is
//   refused as cp refuses it: "Permission denied";
// - a symbolic link: followed by the kernel, and the file it leads to is replaced in its own
//   folder (a link that leads nowhere makes the file it names); the link stays a link;
// - a standard stream named as a file (/dev/stdout, /dev/fd/2), a device, a FIFO or a pipe:
//   written into, in the stream's own mode (appending where it was opened to append), never
//   replaced;
// - a folder: refused.

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "vornelt/error.hpp"

namespace vornelt {

// The largest list a read takes: a million events take about 156 MB.
inline constexpr uint64_t kMaxListFileBytes = uint64_t(256) << 20;

// The whole file at `path` into `bytes`, read as a stream (so devices and pipes read too).
// False when it cannot be read: `error` (CannotRead) has the system's error number and its
// words, "is a folder" for EISDIR and "larger than 256 MiB" for EFBIG.
bool ReadListFile(std::string_view path, std::string& bytes, ErrorStatus* error);

// A file being saved. Nothing of it takes the target's place before Close; dropped without
// Close, it leaves the target as it was and no temporary file.
class TextOutputStream {
public:
    virtual ~TextOutputStream() = default;
    virtual bool Write(std::string_view bytes, ErrorStatus* error) = 0;
    // The new file takes the target's place; when that fails, the target is as it was.
    virtual bool Close(ErrorStatus* error) = 0;
    // Whether a temporary file stands until Close (a target replaced); false for a target
    // written into directly, which a stop of the program may end at any time.
    virtual bool Replaces() const noexcept = 0;
};

// How a file is saved.
struct SaveOptions {
    // An edit decision list: file type "TEXT" and creator "VORN", where files carry them (macOS).
    bool list = true;
    // When it turns true, a wait for the reader of a FIFO ends and Close puts nothing in place
    // (Interrupted).
    const std::atomic<bool>* stop = nullptr;
};

// Opens `path` for saving under the rules above; none when that cannot be done, with `error`
// (CannotSave with the system's error number, Refused for a read-only file).
std::unique_ptr<TextOutputStream> OpenForSaving(std::string_view path, const SaveOptions& how, ErrorStatus* error);
// Opens, writes and closes in one call.
bool SaveFile(std::string_view path, std::string_view bytes, const SaveOptions& how, ErrorStatus* error);

// The name a path ends in: "lists/reel1.edl" gives "reel1.edl".
std::string_view FileName(std::string_view path);
// The name the window suggests for saving a list loaded from a file of this name:
// "reel1.edl" gives "reel1 VORNELT.edl".
std::string SuggestedSaveName(std::string_view loadedName);
// Whether `path` is a folder, links followed.
bool IsFolder(std::string_view path);

// Where the list read from `input` is saved. `output` none: beside the input, under its
// suggested name (in the folder the input's name stands in, as the kernel finds it); a
// folder (one that exists, or any name ending in "/", which must exist): into it, under that
// name; any other name: that file. "" when it cannot be told: an input that is no regular
// file of its own name (a device, a FIFO, /dev/stdin) has no name to suggest and needs a
// file named as its output (BadOption); a folder that does not exist is CannotSave (ENOENT).
std::string OutputPath(std::string_view input, std::optional<std::string_view> output, ErrorStatus* error);

// The files that one call reads and writes, worked out before anything is written: no
// output may take the place of an input of the call (its own input too: the very file it
// reads, by any name or link) nor of another output of the call. Regular files are compared
// by device and inode, a name where nothing stands yet by its folder and name. Standard
// streams, devices, FIFOs and pipes are written into, never replaced, and never clash.
class CallFiles {
public:
    static constexpr size_t kNoInput = size_t(-1);

    // An input; inputs are numbered from 0 in the order they are added.
    void AddInput(std::string_view path);
    // Takes `path` as the output of input `input` (kNoInput: of the call as a whole, a report).
    // False, and `error` (Refused, EEXIST) saying what it would overwrite, when it is an input
    // of the call or an output taken before.
    bool AddOutput(std::string_view path, size_t input, ErrorStatus* error);

private:
    struct Key {
        uint64_t device = 0;
        uint64_t inode = 0;
        std::string name;  // "" for a file that exists; the name in the folder for one that does not
        friend bool operator<(const Key& a, const Key& b) {
            return std::tie(a.device, a.inode, a.name) < std::tie(b.device, b.inode, b.name);
        }
    };
    static std::optional<Key> KeyOf(std::string_view path);

    std::vector<std::string> inputs_;
    std::map<Key, std::vector<size_t>> inputKeys_;
    std::map<Key, size_t> outputKeys_;  // to the input the output belongs to
};

}  // namespace vornelt
