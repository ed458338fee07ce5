#include "document/module1.hpp"

#include "document/window_state.hpp"

namespace vornelt {

Document Module1;

Document::Document()
    : cmxString(std::make_shared<std::string>()), finalCMXString(std::make_shared<const std::string>()) {}

std::vector<TextColumn*> Document::AllTextTables() {
    return {&readOrigCompleteLine, &dummyReadZeile,     &readOrigRecOutTC,     &readOrigRecInTC,
            &readOrigSourceOutTC,  &readOrigSourceInTC, &readOrigEventNumberStr, &readOrigReelNames,
            &readOrigMode,         &readOrigTrans,      &readOrigTransDur,     &readOrigIsBTrack,
            &readOrigM2Str,        &readCompleteEvent,  &readOrigClipNames,    &readOrigAllReelNames,
            &readOrigAllClipNames, &newClipReelName,    &copyClipNames,        &copyCompletLine,
            &copyRecOutTC,         &copyRecInTC,        &copySourceOutTC,      &copySourceInTC,
            &copyEventNumberStr,   &copyReelNames,      &copyMode,             &copyTrans,
            &copyTransDur,         &copyIsBTrack,       &cleanClipReelName};
}

void ResetProgramState() {
    Document& m = Module1;
    for (TextColumn* t : m.AllTextTables()) {
        t->clear();
        t->AttachDocument(nullptr);
    }
    for (Int32Table* t : {&m.readOrigRecOutFrame, &m.readOrigRecInFrame, &m.readOrigSourceOutFrame,
                          &m.readOrigSourceInFrame, &m.readOrigEventNumberInt, &m.editDurationFrames,
                          &m.readCompleteEventNum, &m.copyRecOutFrame, &m.copyRecInFrame, &m.copySourceOutFrame,
                          &m.copySourceInFrame, &m.copyEventNumberInt, &m.copyEditDurationFrames})
        t->clear();
    m.readOrigM2.clear();
    m.copyM2.clear();
    m.displayThisEventLine.clear();
    m.displayThisAudioEventLine.clear();
    m.displayThisKeyEventLine.clear();
    m.cmxString = std::make_shared<std::string>();
    m.finalCMXString = std::make_shared<const std::string>();
    m.maxZeilen = 0;
    m.frameRate = 0.0;
    m.dropFrame = false;
    m.frameRateTmp = 0.0;
    m.dropFrameTmp = false;
    m.prefDefaultFrameRate = 0.0;
    m.IsGrassValley = false;
    m.edlFormat.clear();
    m.indexStart = -1;
    m.ZeileEins.clear();
    m.ZeileZwei.clear();
    m.newSeqTitle.clear();
    m.newReelName.clear();
    m.TimeLineStartTC.clear();
    m.TimeLineEndTC.clear();
    m.TimeLineStartFrame = 0;
    m.TimeLineEndFrame = 0;
    m.isModified = false;
    m.dbCreated = false;
    m.boolMirror = m.boolV1 = m.boolV2 = m.boolA1234 = m.boolFreezeFrame = m.boolSpeedChange =
        m.boolTransToDissolve = m.boolKeyToDissolve = m.boolGenerateNewComments = false;
    m.myAbsDateiName.clear();
    m.myAbsDateiPfad.clear();
    m.myAbsDateiFolderItem.reset();
    m.mySavedAbsDateiName.clear();
    m.mySavedAbsDateiPfad.clear();
    m.mySavedAbsDateiFolderItem.reset();
    m.myAbsMovieName.clear();
    m.myAbsMoviePfad.clear();
    m.myAbsMovieFolderItem.reset();
    m.DropedFolderItem.reset();
    CloseMainWindow();
    if (ProgressBarWindowExists()) CloseProgressBarWindow();
}

void ResetGlobalVariables_NEU() {
    Document& m = Module1;
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
    m.dummyReadZeile.clear();
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
    MainWindowState& w = MainWindow();
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
    m.frameRate = 0.0;
    m.dropFrame = false;
    m.maxZeilen = 0;
    m.finalCMXString = std::make_shared<const std::string>();
    m.ZeileEins.clear();
    m.ZeileZwei.clear();
    m.newReelName.clear();
    m.newSeqTitle.clear();
    m.IsGrassValley = false;
    m.edlFormat.clear();
    m.indexStart = -1;
}

}  // namespace vornelt
