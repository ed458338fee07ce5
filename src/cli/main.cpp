#include <csignal>
#include <cstdio>
#include <iostream>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

#include "convert.hpp"
#include "vornelt/processor.hpp"

int main(int argc, char** argv) {
    if (const char* missing = vornelt::MissingProcessorFeature()) {
        std::fprintf(stderr, "vornelt-convert: this processor lacks the %s instruction, which Vornelt needs\n",
                     missing);
        return 1;
    }
#if defined(__GLIBC__)
    // Blocks of half a megabyte and more (the tables of a long list) are mapped and given back
    // whole when freed. glibc would otherwise raise this bound as the tables grow and keep the
    // passes' scratch memory in the heap after they end, beside the new list. The lists of a
    // batch are smaller and reuse the heap from one list to the next.
    mallopt(M_MMAP_THRESHOLD, 512 * 1024);
#endif
    // A reader of standard output or standard error that goes away, and the file size limit,
    // are failures to write with their reasons, not an end of the program in the middle of a
    // save: the converter finishes the files in hand and says what happened.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    std::ios::sync_with_stdio(false);
    return vornelt::ConvertMain(argc, argv, std::cout, std::cerr);
}
