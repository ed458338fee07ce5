#include "cli/report_json.hpp"

namespace vornelt {

nlohmann::ordered_json ReportJson(const ConvertReport& r, std::string_view input) {
    nlohmann::ordered_json list;
    list["input"] = std::string(input);
    // A whole number of frames per second stands as an integer (25), any other as it is named.
    if (const double fps = r.fps.Value(); fps == double(int(fps)))
        list["fps"] = int(fps);
    else
        list["fps"] = std::string(r.fps.Name());
    list["form"] = std::string(FormName(r.form));
    list["changes"] = r.Changes();
    list["warnings"] = r.Warnings();
    nlohmann::ordered_json counts = nlohmann::ordered_json::object();
    for (const ReportCount& c : r.counts) counts[std::string(KindName(c.kind))] = c.count;
    list["counts"] = std::move(counts);
    list["oneLineChains"] = r.oneLineChains;
    nlohmann::ordered_json items = nlohmann::ordered_json::array();
    for (const ReportItem& item : r.items) {
        nlohmann::ordered_json i;
        i["kind"] = std::string(KindName(item.kind));
        i["severity"] = std::string(SeverityName(item.severity));
        i["event"] = item.event >= 0 ? nlohmann::ordered_json(item.event) : nlohmann::ordered_json(nullptr);
        i["lineRead"] = item.lineRead > 0 ? nlohmann::ordered_json(item.lineRead) : nlohmann::ordered_json(nullptr);
        i["lineWritten"] =
            item.lineWritten > 0 ? nlohmann::ordered_json(item.lineWritten) : nlohmann::ordered_json(nullptr);
        i["text"] = item.text;
        items.push_back(std::move(i));
    }
    list["items"] = std::move(items);
    return list;
}

nlohmann::ordered_json ReportDocument(nlohmann::ordered_json lists) {
    nlohmann::ordered_json doc;
    doc["format"] = "vornelt-report";
    doc["version"] = 1;
    doc["lists"] = std::move(lists);
    return doc;
}

}  // namespace vornelt
