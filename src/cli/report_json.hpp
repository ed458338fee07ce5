#pragma once
// The report as JSON: one object per list, in the form docs/report-schema.md describes.
#include <nlohmann/json.hpp>
#include <string_view>

#include "vornelt/convert.hpp"

namespace vornelt {

nlohmann::ordered_json ReportJson(const ConvertReport& report, std::string_view input);
// The whole document around the lists of one run.
nlohmann::ordered_json ReportDocument(nlohmann::ordered_json lists);

}  // namespace vornelt
