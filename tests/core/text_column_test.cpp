// The compact table of texts: references into the document, copies that share until one
// changes, pieces of the rendered list that outlive it, and an arena that does not grow.
#include <gtest/gtest.h>

#include "document/text_column.hpp"

namespace vornelt {
namespace {

TEST(TextColumn, ReferencesTheDocumentAndCopiesTheRest) {
    auto doc = std::make_shared<const std::string>("001 AX V C");
    TextColumn t;
    t.AttachDocument(doc);
    t.push_back(std::string_view(*doc).substr(4, 2));
    t.push_back("**");
    t.push_back("");
    EXPECT_EQ(t(0), "AX");
    EXPECT_EQ(t(0).data(), doc->data() + 4);  // no copy
    EXPECT_EQ(t(1), "**");
    EXPECT_EQ(t(2), "");
    EXPECT_EQ(t.Get(3), "");
    EXPECT_EQ(t.Get(-1), "");
}

TEST(TextColumn, ACopySharesUntilEitherChanges) {
    TextColumn read, copy;
    for (const char* s : {"C", "W001", "K"}) read.push_back(s);
    copy.CopyFrom(read);
    EXPECT_EQ(copy(1), "W001");
    copy.set(1, "D");
    EXPECT_EQ(copy(1), "D");
    EXPECT_EQ(read(1), "W001");
    read.set(0, "X");
    EXPECT_EQ(copy(0), "C");
    copy.clear();
    EXPECT_EQ(read.size(), 3u);
    TextColumn again;
    again.CopyFrom(read);
    read.clear();
    EXPECT_EQ(again(2), "K");
    again.push_back("Z");
    EXPECT_EQ(again.size(), 4u);
}

TEST(TextColumn, OutsidePiecesOutliveTheirBuffer) {
    TextColumn t;
    t.assign_empty(4);
    t.set(3, "M2 note");
    auto first = std::make_shared<const std::string>("line zero\rline one\r");
    TextColumn::Piece p1[] = {{0, 0, 9}, {1, 10, 8}};
    t.SetOutsidePieces(first, p1);
    EXPECT_EQ(t(0), "line zero");
    EXPECT_EQ(t(1), "line one");
    // The next rendering sets row 1 only: row 0 keeps its last text after the first buffer goes.
    std::weak_ptr<const std::string> gone = first;
    auto second = std::make_shared<const std::string>("LINE ONE\r");
    TextColumn::Piece p2[] = {{1, 0, 8}};
    t.SetOutsidePieces(second, p2);
    first.reset();
    EXPECT_TRUE(gone.expired());
    EXPECT_EQ(t(0), "line zero");
    EXPECT_EQ(t(1), "LINE ONE");
    EXPECT_EQ(t(2), "");
    EXPECT_EQ(t(3), "M2 note");
}

TEST(TextColumn, SettingTheSameFewTextsOverAndOverDoesNotGrow) {
    TextColumn t;
    t.assign_empty(1000);
    for (int round = 0; round < 50; ++round)
        for (size_t i = 0; i < 1000; ++i) t.set(i, (i + size_t(round)) % 2 ? "K" : "D");
    EXPECT_LT(t.OwnBytes(), 1000 * 8 + 4096);
    // Long texts set again and again are compacted.
    TextColumn lines;
    lines.assign_empty(100);
    for (int round = 0; round < 2000; ++round)
        for (size_t i = 0; i < 100; ++i) lines.set(i, std::string(80, char('a' + round % 26)));
    EXPECT_EQ(lines(7), std::string(80, char('a' + 1999 % 26)));
    EXPECT_LT(lines.OwnBytes(), size_t(4) << 20);
}

}  // namespace
}  // namespace vornelt
