#pragma once
// The report of the loaded list, as the routines left it, in the order it is shown: grouped
// by kind, each kind in the order of the lines, with the line of each item in the new list.

#include <array>
#include <cstdint>
#include <memory>
#include <vector>

#include "document/document.hpp"
#include "vornelt/convert.hpp"

namespace vornelt {

struct ReportEntry {
    ChangeKind kind;
    int32_t row;          // the row as read; -1: the list as a whole
    int32_t event;        // the event number as read; -1: none
    int32_t lineWritten;  // from 1; 0: not in the new list
    // Into the document's report, valid until the next run of a routine; null for a renamed
    // reel, which is its row alone.
    const ChangeItem* item;
};

struct ReportView {
    std::vector<ReportEntry> entries;
    std::array<int32_t, kChangeKinds> counts{};
    int32_t oneLineChains = 0;
    const Document* document = nullptr;  // the sentences are read from it
};

// Whether ViewReport counts the line in the new list of every entry, or leaves it for the
// entries that are shown (lineWritten then kLineToCount, for WrittenLines).
enum class ReportLines { Counted, WhenShown };
inline constexpr int32_t kLineToCount = -1;

ReportView ViewReport(const Document& m, ReportLines lines = ReportLines::Counted);

// The line in the new list of an entry whose line was left to count, as the plan of the list
// has it. For the list the document holds when it is made (0 once the document holds another).
class WrittenLines {
public:
    WrittenLines() = default;
    explicit WrittenLines(const Document& m);
    int32_t Of(const ReportEntry& entry) const;

private:
    const Document* document_ = nullptr;
    std::weak_ptr<const std::string> list_;  // not kept alive: the writer takes its memory again
};

// The sentence of an item of the document's report. An item of a kind that happens on many
// rows keeps only its row, and its texts are read from the document here.
std::string ItemText(const ChangeItem& item, const Document& m);

// The sentence of an entry.
std::string EntryText(const ReportEntry& entry, const Document& m);

// The library's form of it: every sentence made.
ConvertReport MakeConvertReport(const ReportView& view, const Document& m);

}  // namespace vornelt
