// Small value types of the platform: rectangles, packed RGB colours, tolerant double equality.
//
// Threads: plain values and pure functions, safe from any thread.
#pragma once

#include <cmath>
#include <cstdint>

namespace PLIX {

struct PlixRect2D {
    double left = 0.0;
    double top = 0.0;
    double right = 0.0;
    double bottom = 0.0;
};

using PLIXCOLOR = uint32_t;

constexpr PLIXCOLOR PLIXRGB(int r, int g, int b) {
    return static_cast<PLIXCOLOR>(r & 0xFF) | (static_cast<PLIXCOLOR>(g & 0xFF) << 8) |
           (static_cast<PLIXCOLOR>(b & 0xFF) << 16);
}
constexpr int PLIXGetR(PLIXCOLOR c) {
    return static_cast<int>(c & 0xFF);
}
constexpr int PLIXGetG(PLIXCOLOR c) {
    return static_cast<int>((c >> 8) & 0xFF);
}
constexpr int PLIXGetB(PLIXCOLOR c) {
    return static_cast<int>((c >> 16) & 0xFF);
}

// A difference of exactly the tolerance counts as equal.
inline bool plixequal(double a, double b, double tolerance) {
    return std::fabs(a - b) <= tolerance;
}

// Character sets of text streams.
struct PLIXCharset {
    enum Charset : int32_t { Default = 0, UTF8 = 1 };
};

}  // namespace PLIX
