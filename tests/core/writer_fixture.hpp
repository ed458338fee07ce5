#pragma once
// Fills the tables that the writer reads, row by row, as a load leaves them.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "document/module1.hpp"
#include "document/text.hpp"
#include "document/window_state.hpp"
#include "platform/headless.hpp"
#include "writer/writer.hpp"

namespace vornelt::testing {

class WriterFixture : public ::testing::Test {
protected:
    void SetUp() override { Restart(); }
    void TearDown() override { ResetProgramState(); }

    // A fresh program holding the title and FCM rows; a plain list: audio kept, motion lines
    // removed, no mirror, no comments.
    void Restart() {
        ResetProgramState();
        clean_.clear();
        Module1.boolA1234 = Module1.boolFreezeFrame = Module1.boolSpeedChange = true;
        Note("TITLE: SOURCE");
        Note("FCM: NON-DROP FRAME");
    }

    void Note(const std::string& line, double motion = -1111.0) {
        Push(line, "", -1, "", "", "", "", "", {"", "", "", ""}, "", motion);
    }

    // An event row; `rest` is the text behind the transition: a duration when numeric, else
    // the B mark. `clean` is the reel that the clip chains gave the row.
    void Event(int number, const std::string& reel, const std::string& mode, const std::string& trans,
               const std::string& rest, const std::vector<std::string>& tc, const std::string& clean = "") {
        const bool dur = IsNumeric(rest);
        Push(Format(number, "000") + " " + reel + " " + mode + " " + trans, Format(number, "000"), number, reel, mode,
             trans, dur ? rest : "", dur ? "" : rest, tc, clean, -1111.0);
    }

    // Renders and gives the list; the clip reels are formatted for the form then in force.
    std::string Render() {
        Module1.maxZeilen = int32_t(Module1.copyCompletLine.size()) - 1;
        Module1.cleanClipReelName.assign_empty(clean_.size());
        for (size_t i = 0; i < clean_.size(); ++i) Module1.cleanClipReelName.set(i, FormatReelNames(clean_[i]));
        NewEDL_02();
        return *Module1.finalCMXString;
    }

    static std::vector<std::string> Lines(const std::string& list) {
        std::vector<std::string> lines;
        for (std::string_view piece : Split(list, "\r")) lines.emplace_back(piece);
        return lines;
    }

    HeadlessPlatform platform;
    ScopedPlatform scope{platform};

private:
    void Push(const std::string& line, const std::string& numberText, int number, const std::string& reel,
              const std::string& mode, const std::string& trans, const std::string& dur, const std::string& b,
              const std::vector<std::string>& tc, const std::string& clean, double motion) {
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
        m.copySourceInTC.push_back(tc[0]);
        m.copySourceOutTC.push_back(tc[1]);
        m.copyRecInTC.push_back(tc[2]);
        m.copyRecOutTC.push_back(tc[3]);
        m.displayThisAudioEventLine.push_back(true);
        m.displayThisKeyEventLine.push_back(true);
        m.readOrigM2.push_back(motion);
        clean_.push_back(clean);
    }

    std::vector<std::string> clean_;
};

}  // namespace vornelt::testing
