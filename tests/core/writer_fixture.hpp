#pragma once
// Builds the tables that the writer reads, row by row, as a load would leave them, so that
// a list can be rendered without the reader and the passes.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "platform/headless.hpp"
#include "vocabulary/vocabulary.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {

class WriterFixture : public ::testing::Test {
protected:
    void SetUp() override { Restart(); }
    void TearDown() override { ResetProgramState(); }

    // A fresh program with the title and FCM rows, for a test that renders several lists.
    void Restart() {
        ResetProgramState();
        cleanNames_.clear();
        // A plain list unless a test says otherwise: no mirror, no comments, audio kept,
        // motion lines removed, SMPTE wipe names.
        Module1.boolMirror = false;
        Module1.boolA1234 = true;
        Module1.boolFreezeFrame = true;
        Module1.boolSpeedChange = true;
        Module1.boolGenerateNewComments = false;
        MainWindow().PopupTransition.ListIndex = 1;
        // Rows 0 and 1: the title and FCM lines.
        Note("TITLE: SOURCE");
        Note("FCM: NON-DROP FRAME");
    }

    // A row that is no event: every text empty and every number -1 but its line.
    void Note(const std::string& line, double motion = -1111.0) {
        Push(line, "", -1, "", "", "", "", "", "", "", "", "", "", motion);
    }

    // An event row. `durOrB` is the text after the transition: a number is the duration,
    // anything else lands in the B mark. `clean` is the clip reel that the chains gave it,
    // formatted at render time for the form then in force.
    void Event(int number, const std::string& reel, const std::string& mode, const std::string& trans,
               const std::string& durOrB, const std::string& srcIn, const std::string& srcOut,
               const std::string& recIn, const std::string& recOut, const std::string& clean = "") {
        const bool isDur = IsNumeric(durOrB);
        std::string numberText = Format(number, "000");
        std::string line = numberText + "  " + reel + " " + mode + " " + trans + " " + durOrB + " " + srcIn + " " +
                           srcOut + " " + recIn + " " + recOut;
        Push(line, numberText, number, reel, mode, trans, isDur ? durOrB : "", isDur ? "" : durOrB, srcIn, srcOut,
             recIn, recOut, clean, -1111.0);
    }

    // Renders with the rows pushed so far and gives the list.
    std::string Render() {
        Module1.maxZeilen = int32_t(Module1.copyCompletLine.size()) - 1;
        Module1.cleanClipReelName.assign_empty(cleanNames_.size());
        for (size_t i = 0; i < cleanNames_.size(); ++i)
            if (!cleanNames_[i].empty()) Module1.cleanClipReelName.set(i, FormatReelNames(cleanNames_[i]));
        NewEDL_02();
        return *Module1.finalCMXString;
    }

    static std::vector<std::string> Lines(const std::string& list) {
        std::vector<std::string> lines;
        for (std::string_view piece : Split(list, "\r")) lines.emplace_back(piece);
        return lines;
    }

    // Whether the vocabulary is in place (it orders a block of three lines).
    static bool VocabularyReady() {
        return SortCommentLine("* TO CLIP NAME:  A\r* EFFECT NAME: X\r* FROM CLIP NAME:  A\r") !=
               "* TO CLIP NAME:  A\r* EFFECT NAME: X\r* FROM CLIP NAME:  A\r";
    }

    HeadlessPlatform platform;
    ScopedPlatform scope{platform};

private:
    void Push(const std::string& line, const std::string& numberText, int number, const std::string& reel,
              const std::string& mode, const std::string& trans, const std::string& dur, const std::string& b,
              const std::string& srcIn, const std::string& srcOut, const std::string& recIn,
              const std::string& recOut, const std::string& clean, double motion) {
        Document& m = Module1;
        m.copyCompletLine.push_back(line);
        m.copyEventNumberStr.push_back(numberText);
        m.copyEventNumberInt.push_back(number);
        m.readOrigEventNumberInt.push_back(number);
        m.copyReelNames.push_back(reel);
        m.copyMode.push_back(mode);
        m.copyTrans.push_back(trans);
        m.copyTransDur.push_back(dur);
        m.copyIsBTrack.push_back(b);
        m.copySourceInTC.push_back(srcIn);
        m.copySourceOutTC.push_back(srcOut);
        m.copyRecInTC.push_back(recIn);
        m.copyRecOutTC.push_back(recOut);
        m.displayThisAudioEventLine.push_back(true);
        m.displayThisKeyEventLine.push_back(true);
        m.readOrigM2.push_back(motion);
        cleanNames_.push_back(clean);
    }

    std::vector<std::string> cleanNames_;
};

}  // namespace vornelt::testing
