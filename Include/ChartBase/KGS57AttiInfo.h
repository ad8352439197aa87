// KGS57AttiInfo: a plain record describing one S-57 attribute of a converted dataset (code,
// acronym, name, value type and value); the host platform fills and reads it.
//
// Threads: a value object; one object is changed by one thread at a time.
#pragma once

#include "Base/PlixUnicodeString.h"
#include "Base/PlixVariant.h"
#include "ChartBase/KGS57DefineInfo.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGS57AttiInfo {
public:
    void SetAttiCode(int code) { m_code = code; }
    int GetAttiCode() const { return m_code; }
    void SetAcronym(const PLIX::PlixUnicodeString& acronym) { m_acronym = acronym; }
    PLIX::PlixUnicodeString GetAcronym() const { return m_acronym; }
    void SetName(const PLIX::PlixUnicodeString& name) { m_name = name; }
    PLIX::PlixUnicodeString GetName() const { return m_name; }
    void SetAttiType(KGS57DefineInfo::AttributeType type) { m_type = type; }
    KGS57DefineInfo::AttributeType GetAttiType() const { return m_type; }
    void SetAttiValue(const PLIX::PlixVariant& value) { m_value = value; }
    PLIX::PlixVariant GetAttiValue() const { return m_value; }

private:
    PLIX::PlixUnicodeString m_acronym;
    int m_code = 0;
    PLIX::PlixUnicodeString m_name;
    KGS57DefineInfo::AttributeType m_type = KGS57DefineInfo::AttrUnknown;
    PLIX::PlixVariant m_value;
};

}  // namespace KGC
