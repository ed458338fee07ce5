#include "report_json.hpp"

#include <nlohmann/json.hpp>

namespace vornelt {

namespace {

nlohmann::ordered_json ListJson(const ConvertReport& r, std::string_view input) {
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

}  // namespace

std::string ReportJsonHead() { return "{\n  \"format\": \"vornelt-report\",\n  \"version\": 1,\n  \"lists\": ["; }

std::string ReportJsonList(const ConvertReport& report, std::string_view input) {
    const std::string object =
        ListJson(report, input).dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
    // Two levels in: every line of the object four blanks further right (the texts hold no
    // line end of their own: JSON writes it as \n).
    std::string out = "    ";
    out.reserve(out.size() + object.size() + object.size() / 8);
    for (const char c : object) {
        out += c;
        if (c == '\n') out.append(4, ' ');
    }
    return out;
}

std::string ReportJsonBefore(size_t lists) { return lists ? ",\n" : "\n"; }

std::string ReportJsonTail(size_t lists) { return lists ? "\n  ]\n}\n" : "]\n}\n"; }

}  // namespace vornelt
