#include "document/document.hpp"

#include "document/window_state.hpp"

namespace vornelt {

std::vector<TextColumn*> Document::AllTextTables() {
    return {&readOrigCompleteLine, &readOrigRecOutTC,   &readOrigRecInTC,
            &readOrigSourceOutTC,  &readOrigSourceInTC, &readOrigEventNumberStr,
            &readOrigReelNames,    &readOrigMode,       &readOrigTrans,
            &readOrigTransDur,     &readOrigIsBTrack,   &readOrigM2Str,
            &readCompleteEvent,    &readOrigClipNames,  &readOrigAllReelNames,
            &readOrigAllClipNames, &newClipReelName,    &copyClipNames,
            &copyCompletLine,      &copyRecOutTC,       &copyRecInTC,
            &copySourceOutTC,      &copySourceInTC,     &copyEventNumberStr,
            &copyReelNames,        &copyMode,           &copyTrans,
            &copyTransDur,         &copyIsBTrack,       &cleanClipReelName};
}

void ResetGlobalVariables_NEU(Document& m, const MainWindowState& w) {
    m.report.Clear();
    // 1. A new load forgets the saved file and the movie: the next save asks for a name.
    m.mySavedAbsDateiName.clear();
    m.mySavedAbsDateiPfad.clear();
    m.mySavedAbsDateiFolderItem.reset();
    m.myAbsMoviePfad.clear();
    m.myAbsMovieName.clear();
    m.myAbsMovieFolderItem.reset();

    // 2. The tables, in this order. readOrigCompleteLine is left alone (the reader replaces
    // it whole), and so are readOrigM2 and copyM2.
    m.readOrigRecOutTC.clear();
    m.readOrigRecInTC.clear();
    m.readOrigSourceOutTC.clear();
    m.readOrigSourceInTC.clear();
    m.readOrigRecOutFrame.clear();
    m.readOrigRecInFrame.clear();
    m.readOrigSourceOutFrame.clear();
    m.readOrigSourceInFrame.clear();
    m.readOrigEventNumberStr.clear();
    m.readOrigEventNumberInt.clear();
    m.readOrigReelNames.clear();
    m.readOrigMode.clear();
    m.readOrigTrans.clear();
    m.readOrigTransDur.clear();
    m.readOrigIsBTrack.clear();
    m.editDurationFrames.clear();
    m.readOrigAllReelNames.clear();
    m.readOrigClipNames.clear();
    m.newClipReelName.clear();
    m.readOrigAllClipNames.clear();
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
    m.copyClipNames.clear();
    m.copyMode.clear();
    m.copyTrans.clear();
    m.copyTransDur.clear();
    m.copyIsBTrack.clear();
    m.copyEditDurationFrames.clear();
    m.copyEventNumberInt.clear();
    m.cleanClipReelName.clear();
    m.copyEventNumberStr.clear();
    m.readOrigM2Str.clear();
    m.displayThisEventLine.clear();
    m.displayThisKeyEventLine.clear();
    m.displayThisAudioEventLine.clear();

    // 3. The options survive a load: the flags are read back from the check boxes.
    m.boolMirror = w.Chb_Mirror.Value;
    m.boolV1 = w.Chb_V1.Value;
    m.boolV2 = w.Chb_V2.Value;
    m.boolA1234 = w.Chb_A1234.Value;
    m.boolFreezeFrame = w.Chb_RemoveFreezeFrame.Value;
    m.boolSpeedChange = w.Chb_RemoveSpeedChanges.Value;
    m.boolTransToDissolve = w.Chb_TransToDissolve.Value;
    m.boolKeyToDissolve = w.Chb_KeyToDissolve.Value;
    m.boolGenerateNewComments = w.Chb_ComntGenerateNew.Value;

    // 4. The scalars of the list.
    // No rate is unknown: the rate goes back to the first answer until the load copies the
    // answer given.
    m.frameRate = FrameRate();
    m.dropFrame = false;
    m.frameSeparator = ':';
    m.maxZeilen = 0;
    m.finalCMXString = std::make_shared<const std::string>();
    m.renderedList.reset();
    m.renderSpare.reset();
    m.lastRendering = LastRendering{};
    m.plan = ListPlan{};
    m.readTracks = Document::ReadTracks{};
    m.ZeileEins.clear();
    m.ZeileZwei.clear();
    m.newReelName.clear();
    m.newSeqTitle.clear();
    m.IsGrassValley = false;
    m.textIsAscii = false;
    m.edlFormat.clear();
    m.indexStart = -1;
}

}  // namespace vornelt
