// PlixVariant: a tagged value (null, bool, 32- and 64-bit integers, double, string).
//
// Threads: a value: const members from several threads at once, any change by one thread alone.
#pragma once

#include <cstdint>

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace PLIX {

class VLBASE_API PlixVariant {
public:
    enum Type : int32_t { Null = 0, Bool = 1, Int32 = 2, Int64 = 3, Double = 4, String = 5 };

    PlixVariant() = default;
    PlixVariant(bool v) : m_type(Bool), m_int(v ? 1 : 0) {}
    PlixVariant(int v) : m_type(Int32), m_int(v) {}
    PlixVariant(long long v) : m_type(Int64), m_int(v) {}
    PlixVariant(double v) : m_type(Double), m_double(v) {}
    PlixVariant(const PlixUnicodeString& v) : m_type(String), m_string(v) {}
    PlixVariant(const char* utf8) : m_type(String), m_string(utf8) {}
    // Without it a UTF-16 literal would convert to bool.
    PlixVariant(const char16_t* text) : m_type(String), m_string(text) {}

    Type GetType() const { return m_type; }
    bool IsNull() const { return m_type == Null; }
    void Clear();

    // Conversions: text is read with kgatoi/kgatol/kgatof; doubles are truncated toward zero
    // (saturating); null gives 0 or the empty string.
    int ToInt() const;
    long long ToLong() const;
    double ToDouble() const;
    // Integers in decimal, doubles in the shortest form that reads back equal, bools as 1/0.
    PlixUnicodeString ToString() const;

    friend bool operator==(const PlixVariant& a, const PlixVariant& b) {
        return a.m_type == b.m_type && a.m_int == b.m_int &&
               (a.m_double == b.m_double ||
                (a.m_double != a.m_double && b.m_double != b.m_double)) &&
               a.m_string == b.m_string;
    }

private:
    Type m_type = Null;
    long long m_int = 0;
    double m_double = 0.0;
    PlixUnicodeString m_string;
};

}  // namespace PLIX
