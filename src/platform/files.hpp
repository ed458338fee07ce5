#pragma once
// Reading a list file and saving one, with the system's own reason when either fails. The
// little that only macOS compiles stands here too.
//
// Saving never leaves a half-written file where the target stood: the bytes go to a
// temporary file in the target's folder (".vornelt-XXXXXX.tmp", private until complete, its
// name short so that any legal target name saves) and take the target's place only once all
// of them are written. The rules for what stands at
// the target already:
// - nothing: a new file, 0666 less the umask;
// - a regular file: replaced, keeping its permission bits (never set-user-ID, set-group-ID
//   or sticky) and, where the process may set them, its owner and group;
// - a symbolic link: followed, and the file it points to is replaced in its own folder, so
//   the link stays a link;
// - anything else that can be written (a character device, a FIFO): written into directly,
//   as cp would;
// - a folder: refused.

#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace vornelt {

// The largest list a load reads: a million events take about 156 MB.
inline constexpr uint64_t kMaxListFileBytes = uint64_t(256) << 20;

// Raised by the writing below, with the system's error number (0 when there is none).
struct IOError : std::runtime_error {
    explicit IOError(int code);
    IOError(int code, const std::string& what) : std::runtime_error(what), code(code) {}
    int code;
};

// The system's words for an error number ("Permission denied"), or for the cap of reading.
std::string ErrorCause(int code);
// The error number that stands for a file past kMaxListFileBytes.
inline constexpr int kErrorListTooLarge = -2;

// The whole file as bytes, read as a stream (so devices and pipes read too) up to the cap.
// 0, or the error number: a folder gives EISDIR, a file past the cap kErrorListTooLarge.
int ReadListFile(const std::string& path, std::string& bytes, uint64_t cap = kMaxListFileBytes);

// A text file being written. The target is replaced only by Close.
class TextOutputStream {
public:
    virtual ~TextOutputStream() = default;
    virtual void Write(std::string_view bytes) = 0;  // IOError on failure
    virtual void Close() = 0;                        // IOError on failure
};

// Opens the target for saving under the rules above; IOError when that cannot be done.
// While the temporary file exists, the signals that ask a program to stop (TERM, INT, HUP)
// wait in the saving thread: one that comes meanwhile takes effect once the file has taken
// its place or is gone, so no temporary file is left behind.
std::unique_ptr<TextOutputStream> OpenForSaving(const std::string& path);

// The same in one call: 0 or the error number.
int SaveFileBytes(const std::string& path, std::string_view bytes);

// The running program's own file, as an absolute path; "" when the system does not say.
std::string ExecutablePath();

// File type and creator: the Finder information on macOS; elsewhere files have none, and
// this does nothing.
void SetFileTypeAndCreator(const std::string& path, std::string_view type, std::string_view creator);

}  // namespace vornelt
