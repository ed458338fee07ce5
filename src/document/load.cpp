#include "document/load.hpp"
namespace vornelt {
void Open_CMX() {}
void FileDropedInEditField() {}
}  // namespace vornelt
