// A program outside the project, built against an installed Vornelt: a list converted and
// saved through the public headers alone.
#include <cstdio>
#include <string>
#include <string_view>

#include "vornelt/convert.hpp"
#include "vornelt/files.hpp"

int main(int argc, char** argv) {
    if (argc != 2) return 2;
    vornelt::ConvertOptions options;
    options.fps = *vornelt::FrameRate::Named("25");
    vornelt::ErrorStatus error;
    const std::string_view list = "TITLE: Outside\r\n001 AX V C 01:00:00:00 01:00:05:00 00:00:10:00 00:00:15:00\r\n";
    const vornelt::ConvertResult result = vornelt::Convert(list, options, "outside.edl", &error);
    if (!error.ok() || result.bytes.rfind("TITLE: OUTSIDE VORNELT\r\n", 0) != 0) return 1;
    if (!vornelt::SaveFile(argv[1], result.bytes, {}, &error)) {
        std::fprintf(stderr, "%s\n", error.details.c_str());
        return 1;
    }
    std::string read;
    return vornelt::ReadListFile(argv[1], read, &error) && read == result.bytes ? 0 : 1;
}
