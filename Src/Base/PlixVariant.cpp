// The tagged value: conversions between its types, saturating where they do not fit.
#include "Base/PlixVariant.h"

#include <charconv>
#include <climits>
#include <cmath>

#include "Base/KGNumber.h"

namespace PLIX {
namespace {

long long DoubleToLong(double d) {
    if (std::isnan(d)) return 0;
    if (d >= 9.2233720368547758e18) return LLONG_MAX;
    if (d <= -9.2233720368547758e18) return LLONG_MIN;
    return static_cast<long long>(d);
}

}  // namespace

void PlixVariant::Clear() {
    m_type = Null;
    m_int = 0;
    m_double = 0.0;
    m_string.Empty();
}

int PlixVariant::ToInt() const {
    if (m_type == String) return KGC::kgatoi(m_string);
    long long v = ToLong();
    if (v > INT_MAX) return INT_MAX;
    if (v < INT_MIN) return INT_MIN;
    return static_cast<int>(v);
}

long long PlixVariant::ToLong() const {
    switch (m_type) {
        case Bool:
        case Int32:
        case Int64:
            return m_int;
        case Double:
            return DoubleToLong(m_double);
        case String:
            return KGC::kgatol(m_string);
        case Null:
        default:
            return 0;
    }
}

double PlixVariant::ToDouble() const {
    switch (m_type) {
        case Bool:
        case Int32:
        case Int64:
            return static_cast<double>(m_int);
        case Double:
            return m_double;
        case String:
            return KGC::kgatof(m_string);
        case Null:
        default:
            return 0.0;
    }
}

PlixUnicodeString PlixVariant::ToString() const {
    switch (m_type) {
        case Bool:
        case Int32:
        case Int64:
            return PlixUnicodeString::Format("%lld", m_int);
        case Double: {
            char buf[64];
            auto res = std::to_chars(buf, buf + sizeof buf, m_double);
            return PlixUnicodeString(buf, static_cast<size_t>(res.ptr - buf));
        }
        case String:
            return m_string;
        case Null:
        default:
            return PlixUnicodeString();
    }
}

}  // namespace PLIX
