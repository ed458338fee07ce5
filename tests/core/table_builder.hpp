#pragma once
// Fills the read tables of Module1 row by row, as the reader would, for tests of the passes
// that must not depend on the grammar of an event line.
#include <gtest/gtest.h>

#include <string>

#include "document/module1.hpp"
#include "passes/passes.hpp"
#include "platform/headless.hpp"

namespace vornelt::testing {

struct ReadRow {
    std::string line{};    // the whole line
    std::string number{};  // empty: the row is no event
    int32_t numberValue = -1;
    std::string mode{}, trans{}, bTrack{};
    int32_t sourceIn = -1, sourceOut = -1, recIn = -1, recOut = -1, duration = -1;
    std::string sourceOutTC{}, recOutTC{};  // the other timecode texts stay empty
};

// An event row on video with frame numbers; its duration is that of the record side.
inline ReadRow Event(int32_t number, std::string trans, int32_t sourceIn, int32_t sourceOut, int32_t recIn = 0,
                     int32_t recOut = 0) {
    return ReadRow{.line = std::to_string(number) + " " + trans,
                   .number = std::to_string(number),
                   .numberValue = number,
                   .mode = std::string("V"),
                   .trans = trans,
                   .sourceIn = sourceIn,
                   .sourceOut = sourceOut,
                   .recIn = recIn,
                   .recOut = recOut,
                   .duration = int32_t(uint32_t(recOut) - uint32_t(recIn))};
}

inline ReadRow Comment(std::string text) { return ReadRow{.line = std::move(text)}; }

inline void PushRow(const ReadRow& r) {
    Document& m = Module1;
    m.readOrigCompleteLine.push_back(r.line);
    m.readOrigRecOutTC.push_back(r.recOutTC);
    m.readOrigRecInTC.push_back("");
    m.readOrigSourceOutTC.push_back(r.sourceOutTC);
    m.readOrigSourceInTC.push_back("");
    m.readOrigRecOutFrame.push_back(r.recOut);
    m.readOrigRecInFrame.push_back(r.recIn);
    m.readOrigSourceOutFrame.push_back(r.sourceOut);
    m.readOrigSourceInFrame.push_back(r.sourceIn);
    m.readOrigEventNumberStr.push_back(r.number);
    m.readOrigEventNumberInt.push_back(r.numberValue);
    m.readOrigReelNames.push_back(r.number.empty() ? "" : "TAPE1");
    m.readOrigMode.push_back(r.mode);
    m.readOrigTrans.push_back(r.trans);
    m.readOrigTransDur.push_back("");
    m.readOrigIsBTrack.push_back(r.bTrack);
    m.editDurationFrames.push_back(r.duration);
    m.maxZeilen = int32_t(m.readOrigCompleteLine.size()) - 1;
}

// A fresh program with a headless platform.
class PassFixture : public ::testing::Test {
protected:
    void SetUp() override { ResetProgramState(); }
    void TearDown() override { ResetProgramState(); }
    // The read tables as given, then the working copy.
    void Load(std::initializer_list<ReadRow> rows) {
        for (const ReadRow& r : rows) PushRow(r);
        CopyArrays();
    }

    HeadlessPlatform platform;
    ScopedPlatform scope{platform};
};

}  // namespace vornelt::testing
