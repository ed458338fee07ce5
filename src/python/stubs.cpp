// Writes the type stubs of the Python module (vornelt.pyi) from the options table and the
// frame-rate table, so that the stubs name every keyword the module takes.
#include <cstdio>
#include <string>

#include "vornelt/frame_rate.hpp"
#include "vornelt/options.hpp"

namespace {

using namespace vornelt;

// The keyword parameters of the options, one a line.
std::string OptionParameters() {
    std::string out;
    for (const Option& option : kOptions) {
        out += "    " + KeywordOf(option) + ": ";
        switch (option.kind) {
            case Option::Kind::Switch: out += std::string("bool = ") + (option.on ? "True" : "False"); break;
            case Option::Kind::Choice: {
                out += "Literal[";
                for (size_t k = 0; k < option.choices.size(); ++k)
                    out += std::string(k ? ", " : "") + "\"" + std::string(option.choices[k]) + "\"";
                out += "] = \"" + std::string(option.choices[size_t(option.defaultChoice)]) + "\"";
                break;
            }
            case Option::Kind::Text: out += "Optional[str] = None"; break;
        }
        out += ",\n";
    }
    return out;
}

// The type of fps: the rates' numbers and names.
std::string RateType() {
    std::string numbers, names;
    for (const FrameRate rate : FrameRate::All()) {
        const double value = rate.Value();
        if (value == double(int(value)) && !rate.DropFrame())
            numbers += (numbers.empty() ? "" : ", ") + std::to_string(int(value));
        names += std::string(names.empty() ? "" : ", ") + "\"" + std::string(rate.Name()) + "\"";
    }
    return "Union[Literal[" + numbers + "], Literal[" + names + "], float]";
}

}  // namespace

int main() {
    const std::string rate = RateType();
    const std::string options = OptionParameters();
    std::string out =
        "\"\"\"Vornelt: edit decision lists (CMX 3600 or GVG) converted as the Vornelt window saves them.\"\"\"\n"
        "# Made by the build from the options table: do not edit.\n"
        "\n"
        "import os\n"
        "from typing import Dict, List, Literal, Optional, Union\n"
        "\n"
        "__version__: str\n"
        "\n"
        "class Result:\n"
        "    \"\"\"What a conversion gives: the saved list and what the window would have said.\"\"\"\n"
        "\n"
        "    @property\n"
        "    def data(self) -> bytes:\n"
        "        \"\"\"The saved list: CR LF line ends, Mac OS Roman.\"\"\"\n"
        "    @property\n"
        "    def text(self) -> str:\n"
        "        \"\"\"The saved list decoded from Mac OS Roman.\"\"\"\n"
        "    form: Literal[\"CMX\", \"GVG\"]\n"
        "    messages: List[str]\n"
        "    report: List[Dict[str, Union[str, int, None]]]\n"
        "    \"\"\"What changed and what the check of the list found, one dict per item "
        "(docs/report-schema.md).\"\"\"\n"
        "    counts: Dict[str, int]\n"
        "    path: Optional[str]\n"
        "\n"
        "def convert(\n"
        "    data: Union[bytes, bytearray, memoryview, str, \"os.PathLike[str]\", \"os.PathLike[bytes]\"],\n"
        "    fps: " +
        rate +
        ",\n"
        "    *,\n" +
        options +
        "    name: str = \"\",\n"
        ") -> Result: ...\n"
        "\n"
        "def convert_file(\n"
        "    src: Union[str, bytes, \"os.PathLike[str]\", \"os.PathLike[bytes]\"],\n"
        "    dst: Union[None, str, bytes, \"os.PathLike[str]\", \"os.PathLike[bytes]\"] = None,\n"
        "    *,\n"
        "    fps: " +
        rate + ",\n" + options + ") -> Result: ...\n";
    std::fputs(out.c_str(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 1;
}
