// The text operations, the two character sets, the timecode conversions, and the compact tables:
// sparse rows that read as a plain table would under any order of changes, copies that share until
// one changes, pieces that outlive their list, an arena that does not grow.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstring>
#include <random>
#include <string>

#include "document/timecode.hpp"
#include "fixtures.hpp"
#include "text/encodings.hpp"
#include "text/number_column.hpp"

namespace vornelt {
namespace {

TEST(Text, NumbersFromTheLeadingNumberOrTheWholeTrimmedText) {
    // Val reads the leading number only.
    const std::pair<std::string, double> cases[] = {
        {"025", 25},
        {"-12.5", -12.5},
        {"+3", 3},
        {"5.", 5},
        {".5", 0.5},
        {"1.2.3", 1.2},
        {"1e5", 1},
        {"0x10", 0},
        {" 5", 0},
        {"", 0},
        {"-", 0},
        {".", 0},
        {"-.5x", -0.5},
        {"12ab", 12},
        {"AB", 0},
        {"B 025", 0},
        {"-0", 0},
        {"000.0", 0},
        // The nearest double however many digits: past 2^53, past 10^22, past 17 digits, a
        // tie broken by a digit far out, subnormal, and below the smallest.
        {"9.572404544855457", 9.572404544855457},
        {"0.000000008856028556828342", 0.000000008856028556828342},
        {"123456789012345678901234567890", 1.2345678901234568e29},
        {"1.00000000000000011102230246251565404236316680908203126", 1.0000000000000002},
        {"9007199254740993." + std::string(800, '0') + "1", 9007199254740994.0},
        {std::string(1000, '0') + "25.5e", 25.5},
        {"0." + std::string(320, '0') + "1", 1e-321},
        {"-0." + std::string(400, '0') + "1", 0},
    };
    for (auto [text, value] : cases) EXPECT_EQ(Val(text), value) << text;
    EXPECT_TRUE(std::isinf(Val(std::string(400, '9'))));
    // IsNumeric wants the whole trimmed text.
    for (const char* yes : {"025", "5.", ".5", "-10", "+3", "  42  ", "0"}) EXPECT_TRUE(IsNumeric(yes)) << yes;
    for (const char* no : {"1e5", "B 025", "", "   ", "-", ".", "1 2", "12a", "K",
                           "\xC2\xA0"
                           "5"})
        EXPECT_FALSE(IsNumeric(no)) << no;
    // ToInt32 truncates and wraps; 1e300 is a multiple of 2^32.
    for (auto [value, expected] : {std::pair{12.9, 12},
                                   {-12.9, -12},
                                   {2147483648.0, INT32_MIN},
                                   {4294967297.0, 1},
                                   {-2147483649.0, INT32_MAX},
                                   {NAN, 0},
                                   {INFINITY, 0},
                                   {1e300, 0}})
        EXPECT_EQ(ToInt32(value), expected) << value;
}

// An operation's text against the text it should give; "é" and "€" are characters of two and three bytes.
struct Gives {
    Gives(std::string_view g, std::string_view w) : got(g), want(w) {}
    std::string got, want;
};

TEST(Text, CutsSearchesAndFormats) {
    const Gives cases[] = {
        {Mid("abcdef", 3, 2), "cd"},
        {Mid("abcdef", 3), "cdef"},
        {Mid("abcdef", 5, 100), "ef"},
        {Mid("abcdef", -3, 6), "abcdef"},
        {Mid("abcdef", 9, 2), ""},
        {Mid("abc", 2, -1), ""},
        {Left("abc", 10), "abc"},
        {Left("abc", -1), ""},
        {Right("abcdef", 11), "abcdef"},
        {Right("abcdef", 2), "ef"},
        {Str(Len("caf\xC3\xA9")), "4"},
        {Mid("caf\xC3\xA9!", 4, 1), "\xC3\xA9"},
        {Right("x\xC3\xA9y", 2), "\xC3\xA9y"},
        {Left("\xE2\x82\xAC"
              "12",
              2),
         "\xE2\x82\xAC"
         "1"},
        // Trimming touches blanks only: a no-break space and a tab are characters.
        {Trim("  a b  "), "a b"},
        {RTrim("  a  "), "  a"},
        {Trim("\xC2\xA0"
              "a"),
         "\xC2\xA0"
         "a"},
        {Trim("\ta"), "\ta"},
        {Trim("    "), ""},
        // Searches ignore case, one character folding to one, positions in characters.
        {Str(InStr("TITLE: x", "title:")), "1"},
        {Str(InStr(9, "01:00:00:00", ":")), "9"},
        {Str(InStr(10, "01:00:00:00", ":")), "0"},
        {Str(InStr(1, "abc", "")), "0"},
        {Str(InStr("\xC3\xA9t\xC3\xA9 K", "k")), "5"},
        {Str(InStr("STRASSE", "\xC3\x9F")), "0"},
        {Str(InStr("\xC3\x84pfel", "\xC3\xA4")), "1"},
        {Str(InStr("x\xE2\x84\xAA", "k")), "2"},  // the Kelvin sign
        {ReplaceAll("Non-Drop_frame", "-", ""), "NonDrop_frame"},
        {ReplaceAll("aAaA", "a", "b"), "bbbb"},
        {ReplaceAll("\xC3\xA9X\xC3\x89", "\xC3\xA9", "e"), "eXe"},
        {ReplaceAll("abc", "", "x"), "abc"},
        // Capitals by the full mapping; "\xEF\xAC\x81" is the "fi" ligature.
        {Uppercase("final cut.mov"), "FINAL CUT.MOV"},
        {Uppercase("stra\xC3\x9F"
                   "e"),
         "STRASSE"},
        {Uppercase("\xEF\xAC\x81"), "FI"},
        {Uppercase("\xC3\xA9t\xC3\xA9"), "\xC3\x89T\xC3\x89"},
        // Zero fill and signs.
        {Format(1, "000"), "001"},
        {Format(1000, "000"), "1000"},
        {Format(-5, "000"), "-005"},
        {Format(12, "-#"), "12"},
        {Format(INT32_MIN, "000"), "-2147483648"},
        {Format(-12, "-#"), "-12"},
        {Str(25.0), "25"},
        {Str(-3), "-3"},
        {Str(0.5), "0.5"},
        // The shortest digits that read back, plain or with an exponent, whichever is shorter.
        {Str(0.1), "0.1"},
        {Str(1e15), "1e+15"},
        {Str(0.0001), "1e-04"},
        {Str(123456.789), "123456.789"},
        {Str(5e-324), "5e-324"},
        {Str(4.0 / 3), "1.3333333333333333"},
        {Str(std::ldexp(1.0, -47)), "7.105427357601002e-15"},  // the doubles below lie closer
        {Str(9223372036854775808.0), "9223372036854775808"},
        {Str(-2.5e-7), "-2.5e-07"},
        {Str(1.7976931348623157e308), "1.7976931348623157e+308"},
        // Malformed UTF-8 counts byte by byte and reads as replacement characters.
        {Str(Len("a\xFF\xC3")), "3"},
        {SanitizeUtf8("a\xFF\xC3"), "a\xEF\xBF\xBD\xEF\xBF\xBD"},
        {Uppercase("a\xFF\xC3"), "A\xEF\xBF\xBD\xEF\xBF\xBD"},
    };
    for (size_t i = 0; i < std::size(cases); ++i) EXPECT_EQ(cases[i].got, cases[i].want) << "case " << i;
    EXPECT_TRUE(EqualsCI("w001", "W001") && EqualsCI("\xC3\x89T\xC3\x89", "\xC3\xA9t\xC3\xA9") &&
                StartsWithCI("m2 AX", "M2"));
    EXPECT_FALSE(EqualsCI("W0010", "W001") || StartsWithCI(" M2", "M2") || StartsWithCI("M", "M2"));
    const auto pieces = Split("a\r\rb\r", "\r");  // empty pieces are kept
    EXPECT_EQ(std::vector<std::string>(pieces.begin(), pieces.end()), (std::vector<std::string>{"a", "", "b", ""}));
    EXPECT_EQ(Split("", "\r").size(), 1u);
}

TEST(Encodings, WindowsLatin1KeepsEveryByteAndMacRomanWritesOnePerCharacter) {
    std::string all;
    for (int b = 0; b < 256; ++b) all.push_back(char(b));
    std::string text = DecodeWindowsLatin1(all);
    EXPECT_EQ(Len(text), 256);
    EXPECT_EQ(Mid(text, 0x80 + 1, 2), "\xE2\x82\xAC\xC2\x81");  // the euro sign; 0x81 is undefined: kept as U+0081
    EXPECT_EQ(Mid(text, 0xE9 + 1, 1), "\xC3\xA9");
    // The euro sign, "é", Omega; the currency sign has no byte; one "?" per code point.
    for (auto [text, bytes] : {std::pair{"\xE2\x82\xAC", "\xDB"},
                               {"\xC3\xA9", "\x8E"},
                               {"\xCE\xA9", "\xBD"},
                               {"\xC2\xA4", "?"},
                               {"\xF0\x9F\x8E\xAC"
                                "x",
                                "?x"}})
        EXPECT_EQ(EncodeMacRoman(text), bytes) << text;
    // Every line end becomes CR LF, on the quick road of plain ASCII with CR alone as on the other.
    for (auto [list, saved] : {std::pair{"", ""},
                               {"a\rb", "a\r\nb"},
                               {"\r\rab\r", "\r\n\r\nab\r\n"},
                               {"a\tb\x01\r", "a\tb\x01\r\n"},
                               {"a\r\nb\nc\n\r", "a\r\nb\r\nc\r\n\r\n"},
                               {"\xC3\xA9\r\xC3\xA9", "\x8E\r\n\x8E"}})
        EXPECT_EQ(EncodeListForSaving(list), saved) << list;
    // In pieces, the same bytes: no piece splits a CR LF or a character.
    const std::string list = "a\r\nb\xC3\xA9\rc\nd\r\n";
    for (size_t piece : {1, 2, 3, 5, 100}) {
        std::string joined;
        EncodeListForSaving(
            list, [&](std::string_view b) { joined += b; }, piece);
        EXPECT_EQ(joined, EncodeListForSaving(list)) << piece;
    }
    // Everything Windows Latin 1 reads and Mac OS Roman can hold comes back.
    EXPECT_EQ(EncodeMacRoman(DecodeWindowsLatin1("\xE9\xE8\x80")), "\x8E\x8F\xDB");
}

// Frames from a timecode and back, at one of the three rates.
int32_t ToFrames(int rate, const std::string& tc) {
    return rate == 24 ? TC_to_Frame24(tc) : rate == 25 ? TC_to_Frame25(tc) : TC_to_Frame30NonDrop(tc);
}
std::string ToTc(int rate, int32_t f) {
    return rate == 24 ? Frames24_to_TC(f) : rate == 25 ? Frames25_to_TC(f) : Frames30NonDrop_to_TC(f);
}

TEST(Timecode, WorkedValuesEdgesOfTheScaleAndTheWayBack) {
    const std::tuple<int, const char*, int32_t> cases[] = {
        {25, "00:00:01:00", 25},      {25, "00:01:00:00", 1500},    {25, "01:00:00:00", 90000},
        {24, "01:00:00:00", 86400},   {30, "01:00:00:00", 108000},  {25, "10:00:00:10", 900010},
        {25, "23:59:59:24", 2159999}, {25, "24:00:00:00", 2160000},
    };
    for (const auto& [rate, tc, frames] : cases) {
        EXPECT_EQ(ToFrames(rate, tc), frames) << tc;
        EXPECT_EQ(ToTc(rate, frames), tc);
    }
    const Gives edges[] = {
        {Str(TC_to_Frame25("00:00:00:30")), "30"},
        {Frames25_to_TC(30), "00:00:01:05"},  // a carry on the way out only
        {Frames25_to_TC(-1), "-01:-01:-01:24"},
        {Str(TC_to_Frame25("ab:cd:ef:gh")), "0"},
        {Str(TC_to_Frame25("1A:00:00:00")), "90000"},
        {Str(TC_to_Frame25("")), "0"},
        {Str(TC_to_Frame25("00:61:00:00")), "91500"},
        {Frames25_to_TC(9000000), "100:00:00:00"},
    };
    for (const Gives& c : edges) EXPECT_EQ(c.got, c.want);
    EXPECT_FALSE(Frames24_to_TC(INT32_MIN).empty() || Frames30NonDrop_to_TC(INT32_MAX).empty());
    // Every frame count below one hundred hours comes back.
    for (int rate : {24, 25, 30})
        for (int64_t n = 0; n < int64_t(100) * 3600 * rate; n += 997)
            ASSERT_EQ(ToFrames(rate, ToTc(rate, int32_t(n))), n);
}

// The rates beside the three of old: worked values both ways, and drop frame across the minutes
// whose first numbers it skips.
TEST(Timecode, EveryRateCountsItsLabelsAndDropFrameSkipsNumbers) {
    const std::tuple<const char*, const char*, int32_t> cases[] = {
        {"29.97df", "00:00:59;29", 1799},    {"29.97df", "00:01:00;02", 1800},    {"29.97df", "00:09:59;29", 17981},
        {"29.97df", "00:10:00;00", 17982},   {"29.97df", "00:11:00;02", 19782},   {"29.97df", "01:00:00;00", 107892},
        {"29.97df", "23:59:59;29", 2589407}, {"29.97df", "24:00:00;00", 2589408}, {"29.97df", "-01:-01:-01;29", -1},
        {"59.94df", "00:00:59;59", 3599},    {"59.94df", "00:01:00;04", 3600},    {"59.94df", "00:10:00;00", 35964},
        {"59.94df", "01:00:00;00", 215784},  {"29.97", "01:00:00:00", 108000},    {"23.976", "01:00:00:00", 86400},
        {"59.94", "00:01:00:00", 3600},      {"60", "01:00:00:00", 216000},       {"50", "00:00:01:49", 99},
        {"50", "01:00:00:00", 180000},       {"48", "01:00:00:00", 172800},
    };
    for (const auto& [name, tc, frames] : cases) {
        SCOPED_TRACE(::testing::Message() << name << " " << tc);
        const FrameRate rate = *FrameRate::Named(name);
        EXPECT_EQ(rate.Timecode(frames, tc[std::strlen(tc) - 3]), tc);
        if (frames >= 0) {
            EXPECT_EQ(rate.Frames(tc), frames);
        }
    }
    const FrameRate df = *FrameRate::Named("29.97DF");
    EXPECT_EQ(df.Frames("00:01:00:02"), 1800);                          // the separator is not looked at
    EXPECT_EQ(df.Frames("01:01:00;00"), df.Frames("01:01:00;02") - 2);  // a skipped label
    EXPECT_EQ(df.Frames("00:01:0x;02"), 1800);                          // a malformed field counts as the others do
    EXPECT_EQ(FrameRate::OfValue(29.97), FrameRate::Named("29.97"));    // a number names no drop frame

    // Every label of a day comes back, one frame after the other; drop frame skips the labels
    // the others have. The non-drop rates of the same timecode count as their whole rate does.
    for (const FrameRate rate : FrameRate::All()) {
        SCOPED_TRACE(rate.Name());
        const int fps = rate.TimecodeFps(), step = rate.DropFrame() ? 1 : 7;
        const char separator = rate.DropFrame() ? ';' : ':';
        int32_t n = 0;
        char tc[48];  // room for any int the compiler imagines
        for (int h = 0; h < 24; ++h)
            for (int m = 0; m < 60; ++m)
                for (int s = 0; s < 60; ++s)
                    for (int f = s == 0 && m % 10 != 0 ? rate.Dropped() : 0; f < fps; ++f, ++n) {
                        if (n % step != 0) continue;
                        std::snprintf(tc, sizeof tc, "%02d:%02d:%02d%c%02d", h, m, s, separator, f);
                        ASSERT_EQ(rate.Frames(tc), n) << tc;
                        ASSERT_EQ(rate.Timecode(n, separator), tc);
                    }
        // Drop frame keeps the labels on the clock: a day of them lasts a day at 1000/1001 of
        // the timecode's rate, to a tenth of a second.
        if (rate.DropFrame())
            EXPECT_NEAR(n / (fps * 1000.0 / 1001.0), 86400.0, 0.1);
        else
            EXPECT_EQ(n, 86400 * fps);
    }
}

// Random changes in any order, to a table and to a copy of it, read back exactly as plain vectors
// that take the same changes: rows without an entry, entries set in the middle, fills, copies.
template <typename Table, typename Value, typename Same>
void ChangeAtRandom(Table table, Table copy, const std::vector<Value>& values, Same same, uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<Value> tableModel, copyModel;
    for (int step = 0; step < 6000; ++step) {
        const bool onCopy = random() % 3 == 0;
        Table& t = onCopy ? copy : table;
        std::vector<Value>& model = onCopy ? copyModel : tableModel;
        const Value value = values[random() % values.size()];
        // Tables grow to some hundreds of rows, several blocks of the row set.
        const unsigned what = random() % 1000;
        if (what == 0) {
            t.clear();
            model.clear();
        } else if (what <= 10) {
            copy.CopyFrom(table);
            copyModel = tableModel;
        } else if (what <= 400 || model.empty()) {
            t.push_back(value);
            model.push_back(value);
        } else {
            const size_t row = random() % model.size();
            t.set(row, value);
            model[row] = value;
        }
        ASSERT_EQ(t.size(), model.size());
        if (step % 100 != 0 && step < 5900) continue;
        for (size_t row = 0; row < model.size(); ++row) ASSERT_TRUE(same(t, row, model[row])) << "row " << row;
    }
}

TEST(TextColumn, ReadsAsAPlainTableUnderAnyChanges) {
    const auto document = std::make_shared<const std::string>("C D W001 K 01:00:00:00 A/V");
    const std::string_view d = *document;
    // Cuts of the document, the fill, empty, new text short and long.
    const std::vector<std::string_view> texts = {
        d.substr(0, 1), d.substr(4, 4), d.substr(11, 11), "**", "", "D", "RL0001", "a longer text than sixteen bytes"};
    const auto same = [](const TextColumn& t, size_t row, std::string_view want) { return t(row) == want; };
    for (const std::string_view fill : {std::string_view(), std::string_view("**")}) {
        TextColumn table(fill), copy(fill);
        table.AttachDocument(document);
        ChangeAtRandom(table, copy, texts, same, 7);
    }
    // Whole tables emptied to their fill, then set in row order as the passes do.
    TextColumn names;
    names.assign_empty(1000);
    for (size_t row = 3; row < 1000; row += 7) names.set(row, "RL" + std::to_string(row));
    EXPECT_EQ(names(0), "");
    EXPECT_EQ(names(997), "RL997");
    EXPECT_EQ(names.Get(1000), "");
}

TEST(TextColumn, RowsWithAnEntryHereAndNoneThereAreThoseAPlainScanFinds) {
    // The other table shorter, as long, and longer; entries set at random in both.
    std::mt19937 random(3);
    for (const size_t otherRows : {size_t(70), size_t(300), size_t(500)}) {
        TextColumn here, there;
        here.assign_empty(300);
        there.assign_empty(otherRows);
        for (int k = 0; k < 200; ++k) {
            here.set(random() % 300, "A");
            there.set(random() % otherRows, "V");
        }
        std::vector<size_t> want, got;
        for (size_t row = 0; row < 300; ++row)
            if (here.HasEntry(row) && !there.HasEntry(row)) want.push_back(row);
        here.ForEachRowNotIn(there, [&got](size_t row) { got.push_back(row); });
        EXPECT_EQ(got, want) << otherRows << " rows there";
    }
}

TEST(NumberColumn, ReadsAsAPlainTableUnderAnyChanges) {
    // Bit for bit: a negative zero is no zero, and the mark of a row without motion is exact.
    const auto same = [](const auto& t, size_t row, auto want) {
        const auto got = t[row];
        return std::memcmp(&got, &want, sizeof(got)) == 0;
    };
    ChangeAtRandom(NumberColumn<int32_t>(-1), NumberColumn<int32_t>(-1),
                   std::vector<int32_t>{-1, 0, 1, 25, INT32_MIN, INT32_MAX}, same, 11);
    ChangeAtRandom(NumberColumn<double>(-1111.0), NumberColumn<double>(-1111.0),
                   std::vector<double>{-1111.0, 0.0, -0.0, 25.0, -1111.0000001}, same, 13);
}

TEST(TextColumn, OutsidePiecesOutliveTheirBuffer) {
    TextColumn t;
    t.assign_empty(4);
    t.set(3, "M2 note");
    auto first = std::make_shared<const std::string>("line zero\rline one\r");
    TextColumn::Piece p1[] = {{0, 0, 9}, {1, 10, 8}};
    t.SetOutsidePieces(first, p1);
    EXPECT_EQ(testing::Joined(t), "line zero|line one||M2 note");
    // The next rendering sets row 1 only: row 0 keeps its last text after the first buffer goes.
    std::weak_ptr<const std::string> gone = first;
    auto second = std::make_shared<const std::string>("LINE ONE\r");
    TextColumn::Piece p2[] = {{1, 0, 8}};
    t.SetOutsidePieces(second, p2);
    first.reset();
    EXPECT_TRUE(gone.expired());
    EXPECT_EQ(testing::Joined(t), "line zero|LINE ONE||M2 note");
}

TEST(TextColumn, RenderingsOfPiecesAndSingleSetsReadAsAPlainTable) {
    // Each round a new buffer gives pieces to some rows (some of them empty); a few rows are
    // set one by one between rounds. Every row reads as the last text it was given.
    std::mt19937 rng(7);
    TextColumn t;
    t.assign_empty(300);
    std::vector<std::string> model(300);
    for (int round = 0; round < 80; ++round) {
        auto buffer = std::make_shared<std::string>();
        std::vector<TextColumn::Piece> pieces;
        const unsigned share = 1 + rng() % 4;  // now and then nearly every row, now and then few
        for (uint32_t row = 0; row < 300; ++row) {
            if (rng() % share != 0) continue;
            const std::string text = rng() % 9 == 0 ? "" : std::to_string(round) + "/" + std::to_string(row);
            pieces.push_back({row, uint32_t(buffer->size()), uint32_t(text.size())});
            buffer->append(text).push_back('\r');
            model[row] = text;
        }
        if (round % 4 == 3 && !pieces.empty()) {
            // Out of row order: rows given a second piece, which counts.
            for (int k = 0; k < 3; ++k) {
                const uint32_t row = pieces[rng() % pieces.size()].row;
                const std::string text = "again " + std::to_string(k);
                pieces.push_back({row, uint32_t(buffer->size()), uint32_t(text.size())});
                buffer->append(text).push_back('\r');
                model[row] = text;
            }
        }
        t.SetOutsidePieces(std::move(buffer), pieces);
        for (int k = 0; k < 5; ++k) {
            const size_t row = rng() % 300;
            t.set(row, "set " + std::to_string(round));
            model[row] = "set " + std::to_string(round);
        }
        for (size_t row = 0; row < 300; ++row) ASSERT_EQ(t(row), model[row]) << "round " << round << ", row " << row;
    }
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
