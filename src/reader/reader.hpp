#pragma once

namespace vornelt {

// Takes cmxString apart line by line into the read tables, reads the header, names the
// format and makes the main window ready for a loaded list.
void ParseCMX3600();

}  // namespace vornelt
