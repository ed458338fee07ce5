#pragma once
// What changed: every repair and removal of a conversion, and what the check of the list
// found, recorded by the routine that decides it as it decides it.
//
// Each routine owns one section and empties it when it runs again, so after any option
// click the sections together describe the list as it now stands. An item holds numbers
// and short texts only; its sentence is made when it is shown.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "vornelt/report_kinds.hpp"

namespace vornelt {

// The routines that record, one section each.
enum class ReportSection : uint8_t { Load, Audio, Keys, KeysToDissolve, Wipes, Writer, Count };

struct ChangeItem {
    ChangeKind kind = ChangeKind::KeyOutPoint;
    int32_t row = -1;    // the row of the list as read (line - 1); -1: the list as a whole
    int32_t event = -1;  // the event number as read; -1: none
    int32_t number = 0;  // by kind: a count, another event, where a chain's rows start
    std::string before;  // by kind: the old text, the speed, the wipe code
    std::string after;   // by kind: the new text, the length
};

struct Report {
    // Off, the routines record nothing: a conversion that wants no report pays nothing for
    // it. The window always records, so that its report can be opened at any time.
    bool recording = true;
    std::array<std::vector<ChangeItem>, size_t(ReportSection::Count)> sections;
    int32_t singleLineChains = 0;  // clip chains of one line: counted, not listed
    // The rows of the listed clip chains, chain after chain: a chain's item holds where its
    // rows start (number) and the row after its last one starts the next.
    std::vector<int32_t> chainRows;
    // The event rows the mirror list gave a generated reel (row, event): both names stand in
    // the tables, so a row is all such an item needs.
    std::vector<std::pair<int32_t, int32_t>> renamedReels;

    std::vector<ChangeItem>& Section(ReportSection s) { return sections[size_t(s)]; }
    const std::vector<ChangeItem>& Section(ReportSection s) const { return sections[size_t(s)]; }
    void Clear() {
        for (auto& s : sections) s.clear();
        singleLineChains = 0;
        chainRows.clear();
        renamedReels.clear();
    }
};

}  // namespace vornelt
