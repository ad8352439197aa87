// Processor time of this thread: what a side-by-side comparison of a load and its floor adds up,
// so that time the busy machine gives to others counts on neither side.
#pragma once

#include <time.h>

namespace benchclock {

inline double ThreadSeconds() {
    timespec ts;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return static_cast<double>(ts.tv_sec) + static_cast<double>(ts.tv_nsec) * 1e-9;
}

}  // namespace benchclock
