#pragma once
// Helpers the passes share for walking the rows of the tables.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <initializer_list>

namespace vornelt::passes_detail {

// The rows a pass may touch: 0 to maxZeilen, but never past the end of any of the tables
// it reads or writes. After a load every table runs to maxZeilen; the cap only matters for
// tables that a caller left short (or long) by calling the passes out of their order.
inline size_t RowsWithin(int32_t maxZeilen, std::initializer_list<size_t> tableSizes) {
    size_t rows = maxZeilen < 0 ? 0 : size_t(maxZeilen) + 1;
    for (size_t s : tableSizes) rows = std::min(rows, s);
    return rows;
}

}  // namespace vornelt::passes_detail
