// KGS57DatasetGroupExtInfo: the extension info kept with the datasets of one converted S-57
// cell (name, scale, bounds, projection, the names of its tables and, per object class code,
// its feature tables), and the "S57GroupExtInfo" document it is stored as.
//
// Threads: value objects; one object is changed by one thread at a time (GetFeaTableNames logs,
// which is thread-safe).
#pragma once

#include <array>

#include "Base/KGCoordSys.h"
#include "Base/PlixArray.h"
#include "Base/PlixDict.h"
#include "Base/PlixTypes.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGS57DatasetGroupExtInfo {
public:
    using TableNames = PLIX::PlixArray<PLIX::PlixUnicodeString>;
    // Object class code (OBJL) to the names of the feature tables of that class.
    using FeatureTableDict = PLIX::PlixDict<int, TableNames>;

    KGS57DatasetGroupExtInfo();

    // Resets every field to its default: empty names and text, scale 0, zero bounds, the
    // projection to type 1 over WGS 84 (4326). Deliberately keeps the feature table names.
    void Init();
    // True once SetExtInfo has read a document with its root.
    bool HasGroupExtInfo() const { return m_hasGroupExtInfo; }

    PLIX::PlixUnicodeString GetCellName() const { return m_cellName; }
    void SetCellName(const PLIX::PlixUnicodeString& name) { m_cellName = name; }
    long long GetScale() const { return m_scale; }
    void SetScale(long long scale) { m_scale = scale; }
    PLIX::PlixUnicodeString GetDSIDTableName() const { return m_dsidTableName; }
    void SetDSIDTableName(const PLIX::PlixUnicodeString& name) { m_dsidTableName = name; }
    PLIX::PlixUnicodeString GetVITableName() const { return m_viTableName; }
    void SetVITableName(const PLIX::PlixUnicodeString& name) { m_viTableName = name; }
    PLIX::PlixUnicodeString GetVCTableName() const { return m_vcTableName; }
    void SetVCTableName(const PLIX::PlixUnicodeString& name) { m_vcTableName = name; }
    PLIX::PlixUnicodeString GetVETableName() const { return m_veTableName; }
    void SetVETableName(const PLIX::PlixUnicodeString& name) { m_veTableName = name; }
    PLIX::PlixUnicodeString GetFVETableName() const { return m_fveTableName; }
    void SetFVETableName(const PLIX::PlixUnicodeString& name) { m_fveTableName = name; }
    PLIX::PlixUnicodeString GetFVPTableName() const { return m_fvpTableName; }
    void SetFVPTableName(const PLIX::PlixUnicodeString& name) { m_fvpTableName = name; }
    PLIX::PlixUnicodeString GetRSTableName() const { return m_rsTableName; }
    void SetRSTableName(const PLIX::PlixUnicodeString& name) { m_rsTableName = name; }
    PLIX::PlixRect2D GetBounds() const { return m_bounds; }
    void SetBounds(PLIX::PlixRect2D& bounds) { m_bounds = bounds; }
    KGPrjCoordSys& GetPrjCoordsys() { return m_prjCoordSys; }
    const KGPrjCoordSys& GetPrjCoordsys() const { return m_prjCoordSys; }
    void SetPrjCoordSys(const KGPrjCoordSys& prjCoordSys) { m_prjCoordSys = prjCoordSys; }

    // A copy of the list of the code; logs and returns an empty list when the code has none.
    TableNames GetFeaTableNames(int code) const;
    // Replaces the list of the code; an empty list removes the code's entry.
    void SetFeaTableNames(int code, TableNames& names);
    // Appends to the code's list (created when absent); duplicates are kept.
    void AppendTableName(int code, const PLIX::PlixUnicodeString& name);
    // Appends to the code's list; when the code has none, the list becomes a copy of names,
    // even an empty one.
    void AppendTableNames(int code, TableNames& names);
    FeatureTableDict GetDicFeaTableName() const { return m_featureTableNames; }
    void SetDictFeaTableName(FeatureTableDict& dict) { m_featureTableNames = dict; }

    // Writes the "S57GroupExtInfo" document, keeps it as the ext info text and returns it. A
    // missing cell name, a scale below 1 and empty table names are logged, never refused.
    PLIX::PlixUnicodeString MakeExtInfoDoc();
    // Overlays what the document holds on the current fields and logs each element it lacks;
    // fields whose element is missing keep their values. An empty text only empties the ext
    // info text.
    void SetExtInfo(const PLIX::PlixUnicodeString& text);
    // The document last made or read.
    PLIX::PlixUnicodeString GetExtInfoText() const { return m_extInfoText; }

private:
    // The seven fixed table names in document order: DSID, VI, VC, VE, FVE, FVP, RS.
    std::array<PLIX::PlixUnicodeString*, 7> TableFields();

    PLIX::PlixUnicodeString m_extInfoText;
    PLIX::PlixUnicodeString m_cellName;
    long long m_scale = 0;
    PLIX::PlixUnicodeString m_dsidTableName;
    PLIX::PlixUnicodeString m_viTableName;
    PLIX::PlixUnicodeString m_vcTableName;
    PLIX::PlixUnicodeString m_veTableName;
    PLIX::PlixUnicodeString m_fveTableName;
    PLIX::PlixUnicodeString m_fvpTableName;
    PLIX::PlixUnicodeString m_rsTableName;
    FeatureTableDict m_featureTableNames;
    PLIX::PlixRect2D m_bounds;
    KGPrjCoordSys m_prjCoordSys;
    bool m_hasGroupExtInfo = false;
};

}  // namespace KGC
