#pragma once
// The report as JSON, in the form docs/report-schema.md describes, written a list at a time
// as the lists are done: the head, each list, the tail. Put together, the pieces are the
// document as nlohmann::json dumps it with an indent of two.
#include <cstddef>
#include <string>
#include <string_view>

#include "vornelt/convert.hpp"

namespace vornelt {

std::string ReportJsonHead();
// One list's object, indented as one of the document's lists.
std::string ReportJsonList(const ConvertReport& report, std::string_view input);
// What stands before a list's object when `lists` lists stand before it.
std::string ReportJsonBefore(size_t lists);
// The end of the document, after `lists` lists.
std::string ReportJsonTail(size_t lists);

}  // namespace vornelt
