#pragma once
// The document: every table and value of the loaded list, in one object that is handed to
// every routine that reads or changes it. A program holds one per list: the window one, the
// converter one for each input, and two never share anything that changes.
//
// Row invariant: a row is one line of the file, not one event. After a load, row i of every
// table describes line i (row 0 is the first line), and every table runs from row 0 to row
// maxZeilen, the highest index. A line that is no event still has its row, with "" in the
// text tables and -1 in the number tables. The pipeline routines hand over through these
// tables, and the order of the calls is the whole contract.

#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "document/list_plan.hpp"
#include "document/report.hpp"
#include "platform/folder_item.hpp"
#include "text/number_column.hpp"
#include "text/text_column.hpp"
#include "vornelt/frame_rate.hpp"

namespace vornelt {

// Frames and event numbers: -1 on a row without one. Speeds: the no-motion mark on a row
// that is no motion line.
using Int32Table = NumberColumn<int32_t>;
using DoubleTable = NumberColumn<double>;
using BoolTable = std::vector<bool>;
constexpr double kNoMotionLine = -1111.0;

// The read tables: the list as read, never changed after the load.
struct ReadTables {
    TextColumn readOrigCompleteLine;  // whole line, trimmed
    TextColumn readOrigRecOutTC;
    TextColumn readOrigRecInTC;
    TextColumn readOrigSourceOutTC;
    TextColumn readOrigSourceInTC;
    Int32Table readOrigRecOutFrame{-1};
    Int32Table readOrigRecInFrame{-1};
    Int32Table readOrigSourceOutFrame{-1};
    Int32Table readOrigSourceInFrame{-1};
    TextColumn readOrigEventNumberStr;
    Int32Table readOrigEventNumberInt{-1};
    TextColumn readOrigReelNames;
    TextColumn readOrigMode;
    TextColumn readOrigTrans;
    TextColumn readOrigTransDur;
    TextColumn readOrigIsBTrack;
    Int32Table editDurationFrames{-1};
    TextColumn readOrigM2Str{"**"};         // speed text of a motion line, "**" on any other row
    DoubleTable readOrigM2{kNoMotionLine};  // its value, -1111.0 on any other row; never emptied
};

// Tables that exist and stay empty.
struct UnusedTables {
    TextColumn readCompleteEvent;
    Int32Table readCompleteEventNum{-1};
    TextColumn readOrigClipNames;
    TextColumn readOrigAllReelNames;
    TextColumn readOrigAllClipNames;
    TextColumn newClipReelName;
    TextColumn copyClipNames;
    BoolTable displayThisEventLine;
    DoubleTable copyM2{kNoMotionLine};
};

// The copy tables: the working copy that the passes and switches change, with the display
// flags of each row.
struct CopyTables {
    TextColumn copyCompletLine;
    TextColumn copyRecOutTC;
    TextColumn copyRecInTC;
    TextColumn copySourceOutTC;
    TextColumn copySourceInTC;
    Int32Table copyRecOutFrame{-1};
    Int32Table copyRecInFrame{-1};
    Int32Table copySourceOutFrame{-1};
    Int32Table copySourceInFrame{-1};
    Int32Table copyEventNumberInt{-1};
    TextColumn copyEventNumberStr;
    TextColumn copyReelNames;
    TextColumn copyMode;
    TextColumn copyTrans;
    TextColumn copyTransDur;
    TextColumn copyIsBTrack;
    Int32Table copyEditDurationFrames{-1};
    TextColumn cleanClipReelName;  // generated reel names of the clip chains
    BoolTable displayThisAudioEventLine;
    BoolTable displayThisKeyEventLine;
};

// The event lines of the last rendering, for the next one: an event line whose tables have
// not changed since, written under the same options, is copied from the list before instead
// of being written anew.
struct LastRendering {
    static constexpr size_t kTables = 11;
    const std::string* list = nullptr;                 // the list the lines stand in (renderedList)
    std::vector<TextColumn::Piece> lines;              // each event row's line in it, in row order
    std::array<ChangeLog::Version, kTables> tables{};  // the tables the lines were written from
    bool grassValley = false;
    bool mirror = false;
    bool keyToDissolve = false;
    std::string reelName;
};

// The values of the current list.
struct ListValues {
    // The file's text, then the normalised text. Every read table of a load refers into
    // this one buffer.
    std::shared_ptr<std::string> cmxString = std::make_shared<std::string>();
    SharedText finalCMXString = std::make_shared<const std::string>();  // the generated list, shared with the text area
    // The writer's own handle on finalCMXString, and the buffer of the list before it once
    // nothing else holds it: the next rendering writes into that buffer's memory again.
    std::shared_ptr<std::string> renderedList;
    std::shared_ptr<std::string> renderSpare;
    LastRendering lastRendering;
    ListPlan plan;  // what each line of the new list is
    // The rows with a read track field and what it holds (kVideo, kAudio), worked out once
    // per load for the audio switch, which then reads no text of a row it leaves as it is.
    struct ReadTracks {
        static constexpr uint8_t kVideo = 1, kAudio = 2;
        std::vector<uint32_t> rows;
        std::vector<uint8_t> tracks;
        // The modes themselves: views of readOrigMode's texts, which stay while it is unchanged.
        std::vector<std::string_view> modes;
        // Their bytes as well, beside the rows, where a mode is short ("AA/V" and the like): the
        // report of the switch copies them, and the texts themselves lie scattered through the
        // list, a miss of the cache each.
        struct ShortMode {
            static constexpr uint8_t kLonger = 0xFF;  // read it from `modes`
            std::array<char, 7> bytes{};
            uint8_t size = kLonger;
        };
        std::vector<ShortMode> shortModes;
        std::string_view Mode(size_t k) const noexcept {
            const ShortMode& s = shortModes[k];
            return s.size == ShortMode::kLonger ? modes[k] : std::string_view(s.bytes.data(), s.size);
        }
        ChangeLog::Version version{};  // readOrigMode as they were worked out from
    } readTracks;
    int32_t maxZeilen = 0;
    FrameRate frameRate;  // the rate of the list, copied from the question's answer by the load
    bool dropFrame = false;
    // What the list's timecodes have before their frames (":", or ";" in drop frame): the
    // timecodes Vornelt writes from a frame count take it too.
    char frameSeparator = ':';
    FrameRate frameRateTmp;  // the frame-rate question's answer
    bool dropFrameTmp = false;
    FrameRate prefDefaultFrameRate;  // the row the question opens on
    bool IsGrassValley = false;
    bool textIsAscii = false;  // cmxString holds ASCII bytes only: no line needs a look of its own
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

    // A frame number as a timecode at the list's rate, in the list's own style.
    std::string Timecode(int32_t frames) const { return frameRate.Timecode(frames, frameSeparator); }
};

// The option flags: mirrors of the check boxes for the logic.
struct OptionFlags {
    bool boolMirror = false;
    bool boolV1 = false;
    bool boolV2 = false;
    bool boolA1234 = false;
    bool boolFreezeFrame = false;
    bool boolSpeedChange = false;
    bool boolTransToDissolve = false;
    bool boolKeyToDissolve = false;
    bool boolGenerateNewComments = false;
};

// The files of the list, of its last save and of the rendered movie.
struct FileReferences {
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
};

struct Document : ReadTables, UnusedTables, CopyTables, ListValues, OptionFlags, FileReferences {
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    // Every text table, for work that concerns them all (attaching the document buffer).
    std::vector<TextColumn*> AllTextTables();

    // What the routines changed and found, as they did it.
    Report report;
};

struct MainWindowState;

// Empties the document tables and reads the option check boxes into the flags, in the
// order that keeps all tables aligned for the load that follows.
void ResetGlobalVariables_NEU(Document& m, const MainWindowState& window);

}  // namespace vornelt
