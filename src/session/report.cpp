#include "session/report.hpp"

#include <algorithm>
#include <cstring>

namespace vornelt {

ReportView ViewReport(const Document& m) {
    ReportView view;
    view.document = &m;
    view.oneLineChains = m.report.singleLineChains;
    size_t total = 0;
    for (const auto& section : m.report.sections) total += section.size();
    view.entries.reserve(total);
    for (const auto& section : m.report.sections)
        for (const ChangeItem& item : section) view.entries.push_back({item.kind, item.row, item.event, 0, &item});
    for (const auto& [row, event] : m.report.renamedReels)
        view.entries.push_back({ChangeKind::ReelRenamed, row, event, 0, nullptr});
    std::stable_sort(view.entries.begin(), view.entries.end(), [](const ReportEntry& a, const ReportEntry& b) {
        if (a.kind != b.kind) return a.kind < b.kind;
        return a.row < b.row;
    });
    for (const ReportEntry& e : view.entries) ++view.counts[size_t(e.kind)];

    // The line of each row in the new list: the writer's byte offsets, counted in lines in
    // one walk through the list.
    const auto& written = m.report.written;  // in row order
    std::vector<std::pair<uint32_t, uint32_t>> wanted;  // (offset, entry)
    for (size_t k = 0; k < view.entries.size(); ++k) {
        const ReportEntry& item = view.entries[k];
        if (item.kind == ChangeKind::TitleApplied) {
            view.entries[k].lineWritten = 1;
        } else if (item.kind == ChangeKind::CommentBeforeFirstEvent) {
            view.entries[k].lineWritten = 4;  // behind the two header lines and the empty one
        } else if (item.row >= 0) {
            auto at = std::lower_bound(written.begin(), written.end(), std::pair<uint32_t, uint32_t>(uint32_t(item.row), 0));
            if (at != written.end() && at->first == uint32_t(item.row)) wanted.emplace_back(at->second, uint32_t(k));
        }
    }
    std::sort(wanted.begin(), wanted.end());
    const std::string& text = *m.finalCMXString;
    size_t position = 0;
    int32_t line = 1;
    for (const auto& [offset, k] : wanted) {
        const size_t end = std::min<size_t>(offset, text.size());
        while (position < end) {
            const void* cr = std::memchr(text.data() + position, '\r', end - position);
            if (!cr) {
                position = end;
                break;
            }
            position = size_t(static_cast<const char*>(cr) - text.data()) + 1;
            ++line;
        }
        view.entries[k].lineWritten = line;
    }
    return view;
}

ConvertReport MakeConvertReport(const ReportView& view, const Document& m) {
    ConvertReport report;
    report.fps = int(m.frameRate);
    report.form = m.IsGrassValley ? ListForm::GVG : ListForm::CMX;
    report.oneLineChains = view.oneLineChains;
    for (size_t k = 0; k < kChangeKinds; ++k) {
        if (view.counts[k] == 0) continue;
        const ChangeKind kind = ChangeKind(k);
        report.counts.push_back({std::string(KindName(kind)), std::string(SeverityName(KindSeverity(kind))),
                                 std::string(KindHeading(kind)), view.counts[k]});
    }
    report.items.reserve(view.entries.size());
    for (const ReportEntry& e : view.entries)
        report.items.push_back({std::string(KindName(e.kind)), std::string(SeverityName(KindSeverity(e.kind))), e.event,
                                e.row + 1, e.lineWritten, EntryText(e, m)});
    return report;
}

std::string EntryText(const ReportEntry& e, const Document& m) {
    if (e.item) return ItemText(*e.item, m);
    return ItemText(ChangeItem{e.kind, e.row, e.event, 0, {}, {}}, m);
}

namespace {

int CountOf(const ConvertReport& r, std::string_view severity) {
    int n = 0;
    for (const ReportCount& c : r.counts)
        if (c.severity == severity) n += c.count;
    return n;
}

std::string Padded(std::string s, size_t width) {
    if (s.size() < width) s.insert(0, width - s.size(), ' ');
    return s;
}

}  // namespace

int ConvertReport::Changes() const noexcept { return CountOf(*this, "change"); }
int ConvertReport::Warnings() const noexcept { return CountOf(*this, "warning"); }

std::string FormatReport(const ConvertReport& r, std::string_view name) {
    std::string out = "What changed in " + std::string(name) + " (" + std::to_string(r.fps) + " fps, " +
                      (r.form == ListForm::GVG ? "GVG" : "CMX") + "): " + std::to_string(r.Changes()) +
                      " changes, " + std::to_string(r.Warnings()) + " warnings\n";
    for (const ReportCount& c : r.counts) {
        out += Padded(std::to_string(c.count), 7) + "  " + (c.severity == "warning" ? "warning: " : "") + c.heading;
        if (c.kind == "clip-chain" && r.oneLineChains > 0)
            out += " (and " + std::to_string(r.oneLineChains) + " of one line, not listed)";
        out += "\n";
    }
    if (r.counts.empty()) out += "      Nothing changed and nothing found.\n";
    std::string_view kind;
    for (const ReportItem& item : r.items) {
        if (item.kind != kind) {
            kind = item.kind;
            for (const ReportCount& c : r.counts)
                if (c.kind == kind) out += "\n" + c.heading + " (" + std::to_string(c.count) + ")\n";
        }
        std::string where = item.lineRead > 0 ? "line " + std::to_string(item.lineRead) : "list";
        where += item.lineWritten > 0 ? ", new " + std::to_string(item.lineWritten) : "";
        out += "  " + where + std::string(where.size() < 22 ? 22 - where.size() : 1, ' ') + item.text + "\n";
    }
    return out;
}

}  // namespace vornelt
