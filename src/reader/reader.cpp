#include "reader/reader.hpp"
namespace vornelt {
void ParseCMX3600() {}
}  // namespace vornelt
