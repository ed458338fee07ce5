#pragma once
// The options of a conversion, declared once. Each row of kOptions names one option the way
// every door into Vornelt shows it: the converter's flag (or flag pair), Python's keyword
// (the name with "_" for "-"), its help text, its default, and the control of the window that
// it mirrors. The converter's flags and --help, Python's keywords, docstrings and type stubs,
// the defaults of the window's controls, and the way a conversion sets those controls are
// all made from this table.

#include <array>
#include <atomic>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "vornelt/frame_rate.hpp"

namespace vornelt {

// The table that names wipes in the generated comment lines, in the order of the window's popup.
enum class WipeNames { FinalCutPro, Smpte };

// The options of one conversion; a new value holds every option's default.
struct ConvertOptions {
    ConvertOptions() noexcept;

    FrameRate fps;  // the list's frame rate: lists do not say
    bool mirror;
    bool keys;
    bool audio;
    bool removeFreezeFrames;
    bool removeSpeedChanges;
    bool wipesToDissolves;
    bool keysToDissolves;
    bool comments;
    WipeNames wipeNames;
    std::optional<std::string> title;  // none: the list's own
    std::optional<std::string> movie;
    std::optional<std::string> reel;
    bool report = true;  // fill ConvertResult::report (not an option of the list)
    // When it turns true, from any thread, the conversion ends between two of its steps, and a
    // save puts nothing in place: Interrupted (not an option of the list).
    const std::atomic<bool>* stop = nullptr;
};

struct Option {
    enum class Kind {
        Switch,  // on or off: a check box
        Choice,  // one of a few names: a popup
        Text,    // a line of text, or none: an entry field
    };
    // What a text may hold.
    enum class TextRule {
        Line,      // one line: no control characters (line ends, tabs)
        ReelName,  // letters and digits only, at most 8 characters (6 for a GVG list)
    };

    Kind kind;
    std::string_view name;     // the flag without "--" and Python's keyword with "_": "keys-to-dissolves"
    std::string_view offName;  // a switch's flag for off: "keep-keys"
    std::string_view help;     // one line: "turn keys into dissolves"
    std::string_view control;  // the window control it mirrors: "Chb_KeyToDissolve"
    std::string_view caption;  // the control's caption, or a field's label: "Keys to Dissolves - V2 overwrites V1 !!!"
    std::string_view box;      // the box of the window that holds the control: "Transitions & Effects"; "" none
    int tab = 0;               // an entry field's place in the window's tab order, left to right
    // Switch: its value in the options, and its default.
    bool ConvertOptions::*flag = nullptr;
    bool on = false;
    // Choice: its names in the order of the popup's rows, the rows as the popup shows them,
    // the row of the default, and the row the options hold.
    std::span<const std::string_view> choices = {};
    std::span<const std::string_view> choiceCaptions = {};
    int defaultChoice = 0;
    int (*getChoice)(const ConvertOptions&) = nullptr;
    void (*setChoice)(ConvertOptions&, int) = nullptr;
    // Text: its value in the options, the word for it in --help, and what it may hold.
    std::optional<std::string> ConvertOptions::*text = nullptr;
    std::string_view metavar = {};
    TextRule rule = TextRule::Line;
};

namespace option_table {

// Where an option stands in the window: its control, the control's caption, its box, and
// for an entry field its place in the window's tab order.
struct Place {
    std::string_view control;
    std::string_view caption;
    std::string_view box = {};
    int tab = 0;
};

// What every kind of option has: its name, its help and the window's control.
constexpr Option Common(Option::Kind kind, std::string_view name, Place place, std::string_view help) {
    Option o{};
    o.kind = kind;
    o.name = name;
    o.help = help;
    o.control = place.control;
    o.caption = place.caption;
    o.box = place.box;
    o.tab = place.tab;
    return o;
}

constexpr Option Switch(std::string_view name, std::string_view offName, bool ConvertOptions::*flag, bool on,
                        Place place, std::string_view help) {
    Option o = Common(Option::Kind::Switch, name, place, help);
    o.offName = offName;
    o.flag = flag;
    o.on = on;
    return o;
}

constexpr Option Choice(std::string_view name, std::span<const std::string_view> choices,
                        std::span<const std::string_view> captions, int defaultChoice,
                        int (*get)(const ConvertOptions&), void (*set)(ConvertOptions&, int), Place place,
                        std::string_view help) {
    Option o = Common(Option::Kind::Choice, name, place, help);
    o.choices = choices;
    o.choiceCaptions = captions;
    o.defaultChoice = defaultChoice;
    o.getChoice = get;
    o.setChoice = set;
    return o;
}

constexpr Option Text(std::string_view name, std::optional<std::string> ConvertOptions::*text, std::string_view metavar,
                      Option::TextRule rule, Place place, std::string_view help) {
    Option o = Common(Option::Kind::Text, name, place, help);
    o.text = text;
    o.metavar = metavar;
    o.rule = rule;
    return o;
}

inline constexpr std::array<std::string_view, 2> kWipeNames = {"fcp", "smpte"};
inline constexpr std::array<std::string_view, 2> kWipeNameRows = {"Set Transitions to FCP-WipeCodes",
                                                                  "Set Transitions to SMPTE-WipeCodes"};

}  // namespace option_table

// In the order of the window, top to bottom; the text options in the order a user fills them
// in after a load.
inline constexpr Option kOptions[] = {
    option_table::Switch("mirror", "no-mirror", &ConvertOptions::mirror, true, {"Chb_Mirror", "Mirror", "EDL"},
                         "mirror the list onto one rendered master movie"),
    option_table::Switch("keys", "no-keys", &ConvertOptions::keys, true, {"Chb_V2", "Key (V2)", "Video"},
                         "keep the key track V2"),
    option_table::Switch("audio", "no-audio", &ConvertOptions::audio, true, {"Chb_A1234", "A1234", "Audio"},
                         "keep the audio events"),
    option_table::Switch("remove-freeze-frames", "keep-freeze-frames", &ConvertOptions::removeFreezeFrames, true,
                         {"Chb_RemoveFreezeFrame", "Remove Freeze Frames", "Transitions & Effects"},
                         "remove freeze frames"),
    option_table::Switch("remove-speed-changes", "keep-speed-changes", &ConvertOptions::removeSpeedChanges, true,
                         {"Chb_RemoveSpeedChanges", "Remove Speed Changes", "Transitions & Effects"},
                         "remove speed changes"),
    option_table::Switch("wipes-to-dissolves", "keep-wipes", &ConvertOptions::wipesToDissolves, true,
                         {"Chb_TransToDissolve", "Wipes to Dissolves", "Transitions & Effects"},
                         "turn wipes into dissolves"),
    option_table::Switch("keys-to-dissolves", "keep-keys", &ConvertOptions::keysToDissolves, false,
                         {"Chb_KeyToDissolve", "Keys to Dissolves - V2 overwrites V1 !!!", "Transitions & Effects"},
                         "turn keys into dissolves"),
    option_table::Switch("comments", "no-comments", &ConvertOptions::comments, true,
                         {"Chb_ComntGenerateNew", "Generate New Comment Lines", "Comment Lines"},
                         "generate new comment lines"),
    option_table::Choice(
        "wipe-names", option_table::kWipeNames, option_table::kWipeNameRows, 1,
        [](const ConvertOptions& o) { return int(o.wipeNames); },
        [](ConvertOptions& o, int row) { o.wipeNames = WipeNames(row); }, {"PopupTransition", "", "Comment Lines"},
        "wipe names in the comment lines"),
    option_table::Text("title", &ConvertOptions::title, "TEXT", Option::TextRule::Line,
                       {"EF_SeqTitle", "Sequence-Title:", "", 2}, "sequence title (folded to capitals)"),
    option_table::Text("movie", &ConvertOptions::movie, "NAME", Option::TextRule::Line,
                       {"EF_RenderedMovie", "Rendered Movie:", "", 3},
                       "name of the rendered movie for the comment lines"),
    option_table::Text("reel", &ConvertOptions::reel, "NAME", Option::TextRule::ReelName,
                       {"EF_ReelName", "Reel-Name:", "", 1},
                       "reel name of the mirror list: letters and digits, at most 8 (6 for GVG)"),
};

inline ConvertOptions::ConvertOptions() noexcept {
    for (const Option& o : kOptions) {
        if (o.flag) this->*o.flag = o.on;
        if (o.setChoice) o.setChoice(*this, o.defaultChoice);
    }
}

// Python's keyword of an option: its name with "_" for "-".
inline std::string KeywordOf(const Option& o) {
    std::string keyword(o.name);
    for (char& c : keyword)
        if (c == '-') c = '_';
    return keyword;
}

}  // namespace vornelt
