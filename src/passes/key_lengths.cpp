// CheckBSpurClipLenghts: the key line of a Final Cut Pro key event comes with Src-IN equal
// to Src-OUT and Rec-IN equal to Rec-OUT; it takes the length of the line before it.
#include "passes/passes.hpp"
#include "passes/rows.hpp"
#include "platform/platform.hpp"
#include "text/text.hpp"

namespace vornelt {

namespace {

// Frame numbers are 32-bit and wrap, like every sum of frames in the tables.
int32_t AddFrames(int32_t a, int32_t b) { return int32_t(uint32_t(a) + uint32_t(b)); }

}  // namespace

void CheckBSpurClipLenghts(Document& m, Platform& platform) {
    const size_t rows = passes_detail::RowsWithin(
        m.maxZeilen,
        {m.copyEventNumberInt.size(), m.copyIsBTrack.size(), m.copyTrans.size(), m.editDurationFrames.size(),
         m.copyEditDurationFrames.size(), m.copySourceInFrame.size(), m.copySourceOutFrame.size(),
         m.copySourceOutTC.size(), m.copyRecInFrame.size(), m.copyRecOutFrame.size(), m.copyRecOutTC.size()});

    std::vector<ChangeItem>& report = m.report.Section(ReportSection::Load);
    for (size_t i = 0; i < rows; ++i) {
        platform.Yield();
        if (m.copyEventNumberInt[i] < 1) continue;
        if (!m.copyIsBTrack(i).empty()) continue;
        if (!EqualsCI(m.copyTrans(i), "K")) continue;
        if (m.editDurationFrames[i] != 0) continue;
        // A key line on the first line of the file has no line before it to lend a length;
        // it stays as read.
        if (i == 0) continue;
        // The length of the line before as read, whatever that line is: a repaired line
        // does not lend its new length to the next one.
        const int32_t d = m.editDurationFrames[i - 1];
        if (d <= 0) continue;

        m.copyEditDurationFrames.set(i, d);
        m.copySourceOutFrame.set(i, AddFrames(m.copySourceInFrame[i], d));
        m.copyRecOutFrame.set(i, AddFrames(m.copyRecInFrame[i], d));

        m.copySourceOutTC.set(i, m.Timecode(m.copySourceOutFrame[i]));
        m.copyRecOutTC.set(i, m.Timecode(m.copyRecOutFrame[i]));
        if (m.report.recording)
            report.push_back({ChangeKind::KeyOutPoint, int32_t(i), m.copyEventNumberInt[i], d,
                              std::string(m.readOrigRecOutTC.Get(int64_t(i))),
                              std::string(m.copyRecOutTC.Get(int64_t(i)))});
    }
}

}  // namespace vornelt
