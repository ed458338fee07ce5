#include <iostream>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "cli/convert.hpp"

int main(int argc, char** argv) {
#if defined(__GLIBC__)
    // Large blocks are mapped and given back whole when freed. glibc would otherwise raise
    // this bound as the tables grow and keep the passes' scratch memory in the heap after
    // they end, so a long list would hold that memory beside the new list.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
#endif
    std::ios::sync_with_stdio(false);
    return vornelt::ConvertMain(argc, argv, std::cout, std::cerr);
}
