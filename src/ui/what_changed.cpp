#include "ui/what_changed.hpp"

#include <algorithm>

namespace vornelt {

namespace {

// At most this many lines on either side of an event.
constexpr int32_t kMostLines = 30;

std::string Numbered(int line, std::string_view text) {
    std::string number = std::to_string(line);
    std::string out(number.size() < 5 ? 5 - number.size() : 0, ' ');
    out += number;
    out += "  ";
    out += text;
    out += '\n';
    return out;
}

}  // namespace

std::vector<WhatChangedGroup> WhatChangedGroups(const ReportView& view) {
    std::vector<WhatChangedGroup> groups;
    size_t first = 0;
    for (size_t k = 0; k < kChangeKinds; ++k) {
        if (view.counts[k] == 0) continue;
        groups.push_back({ChangeKind(k), first, view.counts[k]});
        first += size_t(view.counts[k]);
    }
    return groups;
}

std::string WhatChangedHeading(const ReportView& view, const WhatChangedGroup& group) {
    std::string text;
    if (KindSeverity(group.kind) == Severity::Warning) text = "\u26A0 ";
    text += KindHeading(group.kind);
    text += " (";
    text += std::to_string(group.count);
    text += ')';
    if (group.kind == ChangeKind::ClipChain && view.oneLineChains > 0) {
        text += ", and ";
        text += std::to_string(view.oneLineChains);
        text += " of one line";
    }
    return text;
}

std::string WhatChangedItemText(const ReportEntry& entry, int32_t lineWritten, const Document& m) {
    std::string text = entry.row >= 0 ? "line " + std::to_string(entry.row + 1) : std::string("list");
    if (lineWritten > 0) {
        text += " \u2192 ";
        text += std::to_string(lineWritten);
    }
    text += "   ";
    text += EntryText(entry, m);
    return text;
}

std::string WhatChangedSummary(const ReportView& view, const Document& m) {
    if (!m.dbCreated) return "No list is loaded.";
    int32_t changes = 0, warnings = 0;
    for (size_t k = 0; k < kChangeKinds; ++k)
        (KindSeverity(ChangeKind(k)) == Severity::Change ? changes : warnings) += view.counts[k];
    std::string text = m.myAbsDateiName;
    text += ": ";
    text += std::to_string(changes);
    text += " changes, ";
    text += std::to_string(warnings);
    text += " warnings";
    return text;
}

WhatChangedLines EventLines(const ReportEntry& e, int32_t lineWritten, const Document& m) {
    WhatChangedLines out;
    if (e.row < 0) return out;
    const int32_t row = e.row;
    const auto event = [&](int32_t r) {
        return size_t(r) < m.readOrigEventNumberInt.size() ? m.readOrigEventNumberInt[size_t(r)] : -1;
    };
    // The rows of the event, with the notes that follow it.
    int32_t a = row, b = row;
    const int32_t last = int32_t(m.readOrigCompleteLine.size()) - 1;
    if (e.event >= 0) {
        while (a > 0 && event(a - 1) == e.event && row - a < kMostLines) --a;
        while (b < last && (event(b + 1) == e.event || event(b + 1) < 0) && b - a < kMostLines) ++b;
    }
    for (int32_t r = a; r <= b; ++r) out.asRead += Numbered(r + 1, m.readOrigCompleteLine.Get(r));

    const LastRendering& written = m.lastRendering;  // where each event row stands in the new list
    if (!m.finalCMXString) return out;
    const std::string& list = *m.finalCMXString;
    auto from = written.From(uint32_t(a));
    if (from == written.lines.end() || from->row > uint32_t(b)) {
        out.asWritten = "(not in the new list)";
        return out;
    }
    auto to = written.From(uint32_t(b) + 1);
    const size_t end = to == written.lines.end() ? list.size() : to->offset;
    const size_t begin = std::min<size_t>(from->offset, list.size());
    // Numbered from the item's own line, when it has one in the new list.
    int line = 0;
    auto own = written.From(uint32_t(row));
    const bool ownLine = own != written.lines.end() && own->row == uint32_t(row) && own->offset >= begin;
    if (ownLine && lineWritten > 0)
        line =
            lineWritten - int(std::count(list.begin() + ptrdiff_t(begin), list.begin() + ptrdiff_t(own->offset), '\r'));
    int shown = 0;
    for (size_t p = begin; p < end && shown < kMostLines; ++shown) {
        size_t cr = list.find('\r', p);
        if (cr == std::string::npos || cr > end) cr = end;
        const std::string_view text(list.data() + p, cr - p);
        if (line > 0)
            out.asWritten += Numbered(line++, text);
        else
            (out.asWritten += text) += '\n';
        p = cr + 1;
    }
    out.inList = true;
    out.listBegin = ownLine ? own->offset : begin;
    out.listEnd = list.find('\r', out.listBegin);
    if (out.listEnd == std::string::npos) out.listEnd = list.size();
    return out;
}

}  // namespace vornelt
