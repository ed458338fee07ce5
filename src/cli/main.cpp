#include <iostream>

#include "cli/convert.hpp"

int main(int argc, char** argv) {
    std::ios::sync_with_stdio(false);
    return vornelt::ConvertMain(argc, argv, std::cout, std::cerr);
}
