// CheckList: what in the list as read may not be what its author meant. It changes nothing;
// it only records what it finds. The reader checks each line as it takes it apart
// (RowCheck); this adds what the bytes of the file as a whole look like.
#include "passes/passes.hpp"
#include "text/encodings.hpp"

namespace vornelt {

void CheckList(Document& m, LooksLike encoding) {
    if (!m.report.recording) return;
    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Load);
    if (encoding == LooksLike::Utf8) report.push_back({ChangeKind::LooksLikeUtf8, -1, -1, 0, {}, {}});
    if (encoding == LooksLike::Utf16) report.push_back({ChangeKind::LooksLikeUtf16, -1, -1, 0, {}, {}});
}

}  // namespace vornelt
