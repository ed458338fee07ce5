#pragma once
// The plan of the new list (document/list_plan.hpp): which rows become event lines, which
// notes are kept, where the generated comment lines go, decided from the copy tables and the
// options; and the fields of each event line as values.

#include <functional>
#include <memory>
#include <string_view>

#include "document/document.hpp"
#include "document/window_state.hpp"
#include "platform/platform.hpp"

namespace vornelt {

// An event line's fields as values, before they are put into the list's columns.
struct EventFields {
    bool stars = false;  // the background row of a key made a dissolve: stars for a number
    int32_t number = -1;
    std::string_view reel;  // the reel as it goes into the reel field
    std::string_view mode;
    std::string_view trans;
    std::string_view bTrack;
    std::string_view duration;
    std::string_view sourceIn;
    std::string_view sourceOut;
    std::string_view recordIn;
    std::string_view recordOut;
};

// Plans the new list into m.plan a stretch of rows at a time, for a caller that writes the
// planned lines out as they come and then empties the plan (its lines go on counting): the whole
// plan is never held. The same decisions as PlanList.
class ListPlanner {
public:
    // The header planned, the writer's section of the report emptied.
    ListPlanner(Document& m, const MainWindowState& window, Platform& platform);
    ~ListPlanner();
    ListPlanner(const ListPlanner&) = delete;
    ListPlanner& operator=(const ListPlanner&) = delete;

    // Plans up to `rows` more rows; false when the platform asked it to stop.
    bool PlanRows(int64_t rows);
    bool Done() const noexcept;  // every row is planned
    // Runs before the plan's lines or comment text move to larger memory.
    void BeforeMove(std::function<void()> f);
    // The closing lines and the report's items of the whole list.
    void Finish();

private:
    struct State;
    std::unique_ptr<State> s_;
};

// Plans the whole new list into m.plan under the options and entry fields of the window, and
// records the writer's section of the report (motion lines left out, the title, the movie,
// the master reel, the reels the mirror list renames). False when the platform asked it to
// stop on the way: the plan is then unfinished.
bool PlanList(Document& m, const MainWindowState& window, Platform& platform);

// The fields of the event line of a row under the plan's options. The texts point into the
// document's tables and the plan.
EventFields EventFieldsOf(const Document& m, const ListPlan& plan, uint32_t row);

}  // namespace vornelt
