// vornelt-genlist EVENTS [cmx|gvg] [mixed|same|chain] [SEED] > list.edl
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "generate.hpp"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: vornelt-genlist EVENTS [cmx|gvg] [mixed|same|chain] [SEED] > list.edl\n");
        return 2;
    }
    vornelt::bench::ListOptions o;
    o.events = std::atoi(argv[1]);
    if (argc > 2) o.gvg = std::strcmp(argv[2], "gvg") == 0;
    if (argc > 3) {
        if (!std::strcmp(argv[3], "same")) o.shape = vornelt::bench::Shape::SameSource;
        if (!std::strcmp(argv[3], "chain")) o.shape = vornelt::bench::Shape::OneChain;
    }
    if (argc > 4) o.seed = uint32_t(std::strtoul(argv[4], nullptr, 10));
    const std::string list = vornelt::bench::GenerateList(o);
    std::fwrite(list.data(), 1, list.size(), stdout);
    return 0;
}
