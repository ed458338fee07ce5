#pragma once
// The document: every table and value of the loaded list, in the one object Module1.
//
// Row invariant: a row is one line of the file, not one event. After a load, row i of every
// table describes line i (row 0 is the first line), and every table runs from row 0 to row
// maxZeilen, the highest index. A line that is no event still has its row, with "" in the
// text tables and -1 in the number tables. The pipeline routines take no arguments: they
// hand over through these tables, and the order of the calls is the whole contract.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "document/text_column.hpp"
#include "platform/folder_item.hpp"

namespace vornelt {

using Int32Table = std::vector<int32_t>;
using DoubleTable = std::vector<double>;
using BoolTable = std::vector<bool>;

struct Document {
    Document();
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    // ---- read tables: the list as read, never changed after the load ----
    TextColumn readOrigCompleteLine;  // whole line, trimmed
    TextColumn dummyReadZeile;        // the reader's scratch copy of each line
    TextColumn readOrigRecOutTC;
    TextColumn readOrigRecInTC;
    TextColumn readOrigSourceOutTC;
    TextColumn readOrigSourceInTC;
    Int32Table readOrigRecOutFrame;
    Int32Table readOrigRecInFrame;
    Int32Table readOrigSourceOutFrame;
    Int32Table readOrigSourceInFrame;
    TextColumn readOrigEventNumberStr;
    Int32Table readOrigEventNumberInt;
    TextColumn readOrigReelNames;
    TextColumn readOrigMode;
    TextColumn readOrigTrans;
    TextColumn readOrigTransDur;
    TextColumn readOrigIsBTrack;
    Int32Table editDurationFrames;
    TextColumn readOrigM2Str;  // speed text of a motion line, "**" on any other row
    DoubleTable readOrigM2;    // its value, -1111.0 on any other row; never emptied

    // ---- tables that exist and stay empty ----
    TextColumn readCompleteEvent;
    Int32Table readCompleteEventNum;
    TextColumn readOrigClipNames;
    TextColumn readOrigAllReelNames;
    TextColumn readOrigAllClipNames;
    TextColumn newClipReelName;
    TextColumn copyClipNames;
    BoolTable displayThisEventLine;
    DoubleTable copyM2;

    // ---- copy tables: the working copy that the passes and switches change ----
    TextColumn copyCompletLine;
    TextColumn copyRecOutTC;
    TextColumn copyRecInTC;
    TextColumn copySourceOutTC;
    TextColumn copySourceInTC;
    Int32Table copyRecOutFrame;
    Int32Table copyRecInFrame;
    Int32Table copySourceOutFrame;
    Int32Table copySourceInFrame;
    Int32Table copyEventNumberInt;
    TextColumn copyEventNumberStr;
    TextColumn copyReelNames;
    TextColumn copyMode;
    TextColumn copyTrans;
    TextColumn copyTransDur;
    TextColumn copyIsBTrack;
    Int32Table copyEditDurationFrames;
    TextColumn cleanClipReelName;  // generated reel names of the clip chains

    // ---- display flags ----
    BoolTable displayThisAudioEventLine;
    BoolTable displayThisKeyEventLine;

    // ---- scalars of the current list ----
    // The file's text, then the normalised text. Every read table of a load refers into
    // this one buffer.
    std::shared_ptr<std::string> cmxString;
    SharedText finalCMXString;  // the generated list, shared with the text area
    int32_t maxZeilen = 0;
    double frameRate = 0.0;
    bool dropFrame = false;
    double frameRateTmp = 0.0;
    bool dropFrameTmp = false;
    double prefDefaultFrameRate = 0.0;
    bool IsGrassValley = false;
    std::string edlFormat;
    int32_t indexStart = -1;
    std::string ZeileEins;
    std::string ZeileZwei;
    std::string newSeqTitle;
    std::string newReelName;
    std::string TimeLineStartTC;
    std::string TimeLineEndTC;
    int32_t TimeLineStartFrame = 0;
    int32_t TimeLineEndFrame = 0;
    bool isModified = false;
    bool dbCreated = false;

    // ---- option flags: mirrors of the check boxes ----
    bool boolMirror = false;
    bool boolV1 = false;
    bool boolV2 = false;
    bool boolA1234 = false;
    bool boolFreezeFrame = false;
    bool boolSpeedChange = false;
    bool boolTransToDissolve = false;
    bool boolKeyToDissolve = false;
    bool boolGenerateNewComments = false;

    // ---- file and movie references ----
    std::string myAbsDateiName;
    std::string myAbsDateiPfad;
    FolderItemRef myAbsDateiFolderItem;
    std::string mySavedAbsDateiName;
    std::string mySavedAbsDateiPfad;
    FolderItemRef mySavedAbsDateiFolderItem;
    std::string myAbsMovieName;
    std::string myAbsMoviePfad;
    FolderItemRef myAbsMovieFolderItem;
    FolderItemRef DropedFolderItem;

    // Every text table, for work that concerns them all (attaching the document buffer).
    std::vector<TextColumn*> AllTextTables();
};

// The one document of the program.
extern Document Module1;

// Puts Module1, the main window and the progress window back to the state of a fresh
// program start (used by the converter between lists and by tests).
void ResetProgramState();

// Empties the document tables and reads the option check boxes into the flags, in the
// order that keeps all tables aligned for the load that follows.
void ResetGlobalVariables_NEU();

}  // namespace vornelt
