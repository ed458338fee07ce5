#pragma once
// "What Changed" as every window shows it, without a toolkit: the report of the loaded list
// grouped by kind with their headings, each item's line, and the lines of the selected item's
// event as read and as written.

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "session/report.hpp"

namespace vornelt {

// The items of one kind: they stand together in the view, in the order of the kinds.
struct WhatChangedGroup {
    ChangeKind kind;
    size_t first;  // into ReportView::entries
    int32_t count;
};
std::vector<WhatChangedGroup> WhatChangedGroups(const ReportView& view);

// "Clip chains given a reel name (3), and 5 of one line"; a warning's heading begins "⚠ ".
std::string WhatChangedHeading(const ReportView& view, const WhatChangedGroup& group);

// "line 13 → 20   Event 4: ..." (the line as read, and in the new list when it is there).
std::string WhatChangedItemText(const ReportEntry& entry, int32_t lineWritten, const Document& m);

// "reel1.edl: 8 changes, 1 warnings", or "No list is loaded."
std::string WhatChangedSummary(const ReportView& view, const Document& m);

// The lines of an item's event, with the notes that follow it: as read, and as the new list
// has them, each numbered; and where the item's own line stands in the new list.
struct WhatChangedLines {
    std::string asRead;
    std::string asWritten;  // "(not in the new list)" when none of them is
    int32_t listLine = 0;   // the line of the new list to show, from 1; 0: none
};
WhatChangedLines EventLines(const ReportEntry& entry, const Document& m);

}  // namespace vornelt
