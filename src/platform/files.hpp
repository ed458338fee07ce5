#pragma once
// What of the files the public rules (vornelt/files.hpp) leave to the layers inside: reading
// with a cap of one's own, the words for a list past the cap, and the little that only macOS
// compiles.

#include <cstdint>
#include <string>
#include <string_view>

#include "vornelt/files.hpp"

namespace vornelt {

// Why a list is not read: it is past kMaxListFileBytes.
inline constexpr std::string_view kListTooLarge = "larger than 256 MiB";

// ReadListFile with a cap of its own.
bool ReadListFile(std::string_view path, std::string& bytes, uint64_t cap, ErrorStatus* error);

// The running program's own file, as an absolute path; "" when the system does not say.
std::string ExecutablePath();

// File type and creator: the Finder information on macOS; elsewhere files have none, and
// this does nothing.
void SetFileTypeAndCreator(const std::string& path, std::string_view type, std::string_view creator);

}  // namespace vornelt
