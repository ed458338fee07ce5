#include "session/report.hpp"

#include <algorithm>

namespace vornelt {

namespace {

// Puts entries in the order of their rows, keeping the order of those on one row. Rows are
// small numbers: a radix sort of two rounds of 11 bits each.
void SortByRow(std::vector<ReportEntry>::iterator from, std::vector<ReportEntry>::iterator to) {
    const auto [low, high] =
        std::minmax_element(from, to, [](const ReportEntry& a, const ReportEntry& b) { return a.row < b.row; });
    const int32_t base = low->row;
    const uint32_t span = uint32_t(high->row) - uint32_t(base);
    constexpr int kBits = 11;
    constexpr uint32_t kMask = (1u << kBits) - 1;
    if (span >> (2 * kBits)) {
        std::stable_sort(from, to, [](const ReportEntry& a, const ReportEntry& b) { return a.row < b.row; });
        return;
    }
    std::vector<ReportEntry> sorted(size_t(to - from));
    for (int shift = 0; shift < 2 * kBits && (span >> shift) != 0; shift += kBits) {
        std::array<size_t, kMask + 2> place{};
        const auto key = [base, shift](const ReportEntry& e) {
            return (uint32_t(e.row) - uint32_t(base)) >> shift & kMask;
        };
        for (auto it = from; it != to; ++it) ++place[key(*it) + 1];
        for (size_t k = 1; k < place.size(); ++k) place[k] += place[k - 1];
        for (auto it = from; it != to; ++it) sorted[place[key(*it)]++] = *it;
        std::copy(sorted.begin(), sorted.end(), from);
    }
}

// The line in the new list that an entry's kind gives, or kLineToCount when it is counted
// from the writer's offset of its row.
int32_t EarlyLine(const ReportEntry& e) {
    if (e.kind == ChangeKind::TitleApplied) return 1;
    if (e.kind == ChangeKind::CommentBeforeFirstEvent) return 4;  // behind the two header lines and the empty one
    return e.row >= 0 ? kLineToCount : 0;
}

}  // namespace

ReportView ViewReport(const Document& m, ReportLines lines) {
    ReportView view;
    view.document = &m;
    view.oneLineChains = m.report.singleLineChains;

    // By kind, and within a kind in the order the routines recorded: each kind gets its
    // stretch of the entries, counted first.
    for (const auto& section : m.report.sections)
        for (const ChangeItem& item : section) ++view.counts[size_t(item.kind)];
    view.counts[size_t(ChangeKind::ReelRenamed)] += int32_t(m.report.renamedReels.size());
    std::array<size_t, kChangeKinds + 1> first{};
    for (size_t k = 0; k < kChangeKinds; ++k) first[k + 1] = first[k] + size_t(view.counts[k]);
    view.entries.resize(first[kChangeKinds]);
    std::array<size_t, kChangeKinds> next{};
    std::copy_n(first.begin(), kChangeKinds, next.begin());
    for (const auto& section : m.report.sections)
        for (const ChangeItem& item : section)
            view.entries[next[size_t(item.kind)]++] = {item.kind, item.row, item.event, 0, &item};
    for (const auto& [row, event] : m.report.renamedReels)
        view.entries[next[size_t(ChangeKind::ReelRenamed)]++] = {ChangeKind::ReelRenamed, row, event, 0, nullptr};
    // Then in the order of the lines, which the routines mostly keep already.
    for (size_t k = 0; k < kChangeKinds; ++k) {
        const auto from = view.entries.begin() + ptrdiff_t(first[k]);
        const auto to = view.entries.begin() + ptrdiff_t(first[k + 1]);
        if (!std::is_sorted(from, to, [](const ReportEntry& a, const ReportEntry& b) { return a.row < b.row; }))
            SortByRow(from, to);
    }

    if (lines == ReportLines::WhenShown) {
        for (ReportEntry& e : view.entries) e.lineWritten = EarlyLine(e);
        return view;
    }

    // The line of each event row in the new list, as the plan has it.
    const ListPlan& plan = m.plan;
    std::vector<int32_t> lineOfRow(size_t(std::max<int32_t>(m.maxZeilen, 0)) + 1, 0);  // 0: not written
    for (const PlannedLine& l : plan.lines)
        if (l.kind == LineKind::Event && l.row < lineOfRow.size() && lineOfRow[l.row] == 0)
            lineOfRow[l.row] = int32_t(l.line);
    for (ReportEntry& e : view.entries) {
        e.lineWritten = EarlyLine(e);
        if (e.lineWritten == kLineToCount)
            e.lineWritten = size_t(e.row) < lineOfRow.size() ? lineOfRow[size_t(e.row)] : 0;
    }
    return view;
}

WrittenLines::WrittenLines(const Document& m) : document_(&m), list_(m.finalCMXString) {}

int32_t WrittenLines::Of(const ReportEntry& e) const {
    if (e.lineWritten != kLineToCount) return e.lineWritten;
    const SharedText list = list_.lock();
    if (!document_ || !list || list != document_->finalCMXString) return 0;
    const PlannedLine* line = document_->plan.EventLineOf(uint32_t(e.row));
    return line ? int32_t(line->line) : 0;
}

ConvertReport MakeConvertReport(const ReportView& view, const Document& m) {
    ConvertReport report;
    report.fps = m.frameRate;
    report.form = m.IsGrassValley ? ListForm::GVG : ListForm::CMX;
    report.oneLineChains = view.oneLineChains;
    for (size_t k = 0; k < kChangeKinds; ++k) {
        if (view.counts[k] == 0) continue;
        const ChangeKind kind = ChangeKind(k);
        report.counts.push_back({kind, view.counts[k]});
    }
    report.items.reserve(view.entries.size());
    for (const ReportEntry& e : view.entries)
        report.items.push_back({e.kind, KindSeverity(e.kind), e.event, e.row + 1, e.lineWritten, EntryText(e, m)});
    return report;
}

std::string EntryText(const ReportEntry& e, const Document& m) {
    if (e.item) return ItemText(*e.item, m);
    return ItemText(ChangeItem{e.kind, e.row, e.event, 0, {}, {}}, m);
}

namespace {

int CountOf(const ConvertReport& r, Severity severity) {
    int n = 0;
    for (const ReportCount& c : r.counts)
        if (KindSeverity(c.kind) == severity) n += c.count;
    return n;
}

std::string Padded(std::string s, size_t width) {
    if (s.size() < width) s.insert(0, width - s.size(), ' ');
    return s;
}

}  // namespace

int ConvertReport::Changes() const noexcept { return CountOf(*this, Severity::Change); }
int ConvertReport::Warnings() const noexcept { return CountOf(*this, Severity::Warning); }

std::string FormatReport(const ConvertReport& r, std::string_view name) {
    std::string out = "What changed in " + std::string(name) + " (" + std::string(r.fps.Title()) + ", " +
                      std::string(FormName(r.form)) + "): " + std::to_string(r.Changes()) + " changes, " +
                      std::to_string(r.Warnings()) + " warnings\n";
    for (const ReportCount& c : r.counts) {
        out += Padded(std::to_string(c.count), 7) + "  " +
               (KindSeverity(c.kind) == Severity::Warning ? "warning: " : "") + std::string(KindHeading(c.kind));
        if (c.kind == ChangeKind::ClipChain && r.oneLineChains > 0)
            out += " (and " + std::to_string(r.oneLineChains) + " of one line, not listed)";
        out += "\n";
    }
    if (r.counts.empty()) out += "      Nothing changed and nothing found.\n";
    bool first = true;
    ChangeKind kind{};
    for (const ReportItem& item : r.items) {
        if (first || item.kind != kind) {
            first = false;
            kind = item.kind;
            for (const ReportCount& c : r.counts)
                if (c.kind == kind)
                    out.append("\n")
                        .append(KindHeading(c.kind))
                        .append(" (")
                        .append(std::to_string(c.count))
                        .append(")\n");
        }
        std::string where = item.lineRead > 0 ? "line " + std::to_string(item.lineRead) : "list";
        where += item.lineWritten > 0 ? ", new " + std::to_string(item.lineWritten) : "";
        out += "  " + where + std::string(where.size() < 22 ? 22 - where.size() : 1, ' ') + item.text + "\n";
    }
    return out;
}

}  // namespace vornelt
