#pragma once
// The report of the loaded list, as the routines left it, in the order it is shown: grouped
// by kind, each kind in the order of the lines, with the line of each item in the new list.

#include <array>
#include <cstdint>
#include <vector>

#include "document/document.hpp"
#include "vornelt/convert.hpp"

namespace vornelt {

struct ReportEntry {
    const ChangeItem* item;  // into the document's report: valid until the next run of a routine
    int32_t lineWritten;     // from 1; 0: not in the new list
};

struct ReportView {
    std::vector<ReportEntry> entries;
    std::array<int32_t, kChangeKinds> counts{};
    int32_t oneLineChains = 0;
    double frameRate = 25.0;
};

ReportView ViewReport(const Document& m);

// The library's form of it: every sentence made.
ConvertReport MakeConvertReport(const ReportView& view, const Document& m);

}  // namespace vornelt
