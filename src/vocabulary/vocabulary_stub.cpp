// Placeholder until the vocabulary lands.
#include "vocabulary/vocabulary.hpp"
namespace vornelt {
std::string WipeCodesSMPTE(std::string_view) { return "UNKNOWN"; }
std::string WipeCodesFCP(std::string_view) { return "EDGE WIPE"; }
std::string SortCommentLine(std::string_view block) { return std::string(block); }
}  // namespace vornelt
