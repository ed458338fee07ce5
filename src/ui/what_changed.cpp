#include "ui/what_changed.hpp"

#include <algorithm>

#include "writer/writer.hpp"

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

WhatChangedLines EventLines(const ReportEntry& e, const Document& m) {
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

    // The lines of those rows in the new list, with the comment lines that follow them, as the
    // plan of the list has them.
    const auto [from, to] = m.plan.LinesOf(uint32_t(a), uint32_t(b));
    if (from == to) {
        out.asWritten = "(not in the new list)";
        return out;
    }
    const std::string written = PlannedText(m, from, to - from > kMostLines ? from + kMostLines : to);
    int line = int(from->line);
    int shown = 0;
    for (size_t p = 0; p < written.size() && shown < kMostLines; ++shown) {
        size_t cr = written.find('\r', p);
        if (cr == std::string::npos) cr = written.size();
        out.asWritten += Numbered(line++, std::string_view(written).substr(p, cr - p));
        p = cr + 1;
    }
    // The item's own line, or the first line of its rows.
    const PlannedLine* own = m.plan.EventLineOf(uint32_t(row));
    out.listLine = int32_t(own ? own->line : from->line);
    return out;
}

}  // namespace vornelt
