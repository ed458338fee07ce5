#pragma once
// A conversion in a session that the caller holds.

#include <string>
#include <string_view>

#include "session/session.hpp"
#include "vornelt/convert.hpp"

namespace vornelt {

// The options into the window's controls, the list's bytes along the load road, the text
// options into their fields and the new list rendered, as Convert does in a session of its
// own (which keeps the session's messages). False, with `error`, for an option the list cannot
// take. The options are checked already.
bool ConvertInSession(Session& s, std::string&& bytes, const ConvertOptions& options, std::string_view name,
                      ErrorStatus* error);

}  // namespace vornelt
