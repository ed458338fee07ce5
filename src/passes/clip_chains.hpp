#pragma once
// The numbering of clip chains behind CleanEDL_4, apart from the tables so that it can be
// checked on its own.
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace vornelt::passes_detail {

// Chain number (1, 2, ...) of each of the first `rows` rows, 0 for a row that takes no part
// (event number below 1). Rows whose source timecodes run on from each other share a
// number. The numbers, tie-breaks included, are those of the plain scans:
//   - a chain opens on the open row of the lowest source in; the last open row opens it if
//     it holds that value, else the first row that holds it;
//   - a scan over all rows takes every open row whose source in equals the frame it looks
//     for, and then looks for that row's source out from the following row on;
//   - the first scan looks for the source out of the opening row, and each row of the chain
//     in the order it joined is the start of one further scan.
// Here each lookup is a search in the open rows ordered by (source in, row), so the whole
// numbering costs n log n instead of a scan per row.
// `stopAsked`, where given, is asked every few thousand chains: when it answers true the
// numbering ends, unfinished.
std::vector<int32_t> NumberClipChains(size_t rows, std::span<const int32_t> eventNumber,
                                      std::span<const int32_t> sourceIn, std::span<const int32_t> sourceOut,
                                      const std::function<bool()>& stopAsked = {});

}  // namespace vornelt::passes_detail
