// Linked into every benchmark program: the heap is held in steady state on both sides of every
// comparison. By default glibc hands the freed top of the heap back to the system after each
// large free and serves big blocks from fresh mappings, so every parse of a loop pays the page
// faults again; a bare pugixml parse then looks several times slower than it is in a host that
// keeps running. Raising both thresholds keeps the pages the previous iteration used.
#include <malloc.h>

namespace {

struct SteadyHeap {
    SteadyHeap() {
        mallopt(M_TRIM_THRESHOLD, 512 * 1024 * 1024);
        mallopt(M_MMAP_THRESHOLD, 256 * 1024 * 1024);
    }
};

const SteadyHeap steadyHeap;

}  // namespace
