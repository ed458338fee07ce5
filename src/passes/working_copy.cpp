// CopyArrays: the working copy, one row per line of the file, from the read tables.
#include <algorithm>

#include "passes/passes.hpp"
#include "platform/platform.hpp"

namespace vornelt {

namespace {

// The copy shares the text of the list with the read tables, so a copied entry is a
// reference into that text, not a second copy of it. A table that still holds entries of
// another text keeps its own: re-pointing it would change what those entries read.
void ShareDocument(TextColumn& copy, const SharedText& document) {
    if (copy.empty() || copy.Document() == document) copy.AttachDocument(document);
}

}  // namespace

void CopyArrays(Document& m, Platform& platform) {
    m.copyCompletLine.clear();
    m.copyRecOutTC.clear();
    m.copyRecInTC.clear();
    m.copySourceOutTC.clear();
    m.copySourceInTC.clear();
    m.copyRecOutFrame.clear();
    m.copyRecInFrame.clear();
    m.copySourceOutFrame.clear();
    m.copySourceInFrame.clear();
    m.copyReelNames.clear();
    m.copyMode.clear();
    m.copyTrans.clear();
    m.copyTransDur.clear();
    m.copyIsBTrack.clear();
    m.copyEditDurationFrames.clear();
    m.copyM2.clear();
    m.displayThisAudioEventLine.clear();
    m.displayThisKeyEventLine.clear();
    // copyEventNumberInt and copyEventNumberStr are filled below but not emptied here: the
    // reset at the start of a load empties them, and only that keeps them aligned.

    const SharedText document = m.readOrigCompleteLine.Document();
    for (TextColumn* t :
         {&m.copyCompletLine, &m.copyRecOutTC, &m.copyRecInTC, &m.copySourceOutTC, &m.copySourceInTC,
          &m.copyEventNumberStr, &m.copyReelNames, &m.copyMode, &m.copyTrans, &m.copyTransDur, &m.copyIsBTrack})
        ShareDocument(*t, document);

    const size_t rows = m.maxZeilen < 0 ? 0 : size_t(m.maxZeilen) + 1;

    // Table by table rather than row by row: each copy is one straight run through memory.
    // Every table ends with one entry per row; a read table that is shorter than the list
    // (only when the reader did not run) gives the entries of a line without an event.
    // An empty copy of a whole read table shares the read table's storage until a pass
    // changes it: the same entries, without a second copy of them.
    auto copyText = [rows](TextColumn& copy, const TextColumn& read) {
        if (copy.empty() && read.size() == rows) {
            copy.CopyFrom(read);
            return;
        }
        copy.reserve(copy.size() + rows);
        for (size_t i = 0; i < rows; ++i) copy.push_back(read.Get(int64_t(i)));
    };
    auto copyInt = [rows](Int32Table& copy, const Int32Table& read) {
        if (copy.empty() && read.size() == rows) {
            copy.CopyFrom(read);
            return;
        }
        for (size_t i = 0; i < rows; ++i) copy.push_back(i < read.size() ? read[i] : -1);
    };
    copyText(m.copyCompletLine, m.readOrigCompleteLine);
    for (size_t i = 0; i < rows; ++i) platform.Yield();
    copyText(m.copyRecOutTC, m.readOrigRecOutTC);
    copyText(m.copyRecInTC, m.readOrigRecInTC);
    copyText(m.copySourceOutTC, m.readOrigSourceOutTC);
    copyText(m.copySourceInTC, m.readOrigSourceInTC);
    copyInt(m.copyRecOutFrame, m.readOrigRecOutFrame);
    copyInt(m.copyRecInFrame, m.readOrigRecInFrame);
    copyInt(m.copySourceOutFrame, m.readOrigSourceOutFrame);
    copyInt(m.copySourceInFrame, m.readOrigSourceInFrame);
    copyInt(m.copyEventNumberInt, m.readOrigEventNumberInt);
    copyText(m.copyEventNumberStr, m.readOrigEventNumberStr);
    copyText(m.copyReelNames, m.readOrigReelNames);
    copyText(m.copyMode, m.readOrigMode);
    copyText(m.copyTrans, m.readOrigTrans);
    copyText(m.copyTransDur, m.readOrigTransDur);
    copyText(m.copyIsBTrack, m.readOrigIsBTrack);
    copyInt(m.copyEditDurationFrames, m.editDurationFrames);
    m.displayThisAudioEventLine.assign(rows, true);
    m.displayThisKeyEventLine.assign(rows, true);
}

}  // namespace vornelt
