// KGS57ExtInfo: the extension info kept with one dataset of a converted S-57 cell (its S-57
// role, and for feature and attribute tables the object class and related dataset), and the
// "S57ExtInfo" document it is stored as.
//
// Threads: value objects; one object is changed by one thread at a time.
#pragma once

#include <cstdint>

#include "Base/PlixUnicodeString.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGS57ExtInfo {
public:
    // The numbers are written into documents and must not change.
    enum KGS57DatasetType : int32_t {
        S57DatasetNone = 0,
        S57DatasetFeature = 1,
        S57DatasetDSID = 2,
        S57DatasetVI = 3,
        S57DatasetVC = 4,
        S57DatasetVE = 5,
        S57DatasetFVE = 6,
        S57DatasetFVP = 7,
        S57DatasetRS = 8,
        S57DatasetAtti = 9,
    };

    KGS57ExtInfo();

    // Every field back to its default, the chart-dataset flag included.
    void Init();

    void SetS57DatasetType(const KGS57DatasetType& type) { m_datasetType = type; }
    KGS57DatasetType GetS57DatasetType() const { return m_datasetType; }
    void SetS57FeatureOBJL(int objl) { m_featureOBJL = objl; }
    int GetS57FeatureOBJL() const { return static_cast<int>(m_featureOBJL); }
    void SetS57FeatureAcronym(const PLIX::PlixUnicodeString& acronym) {
        m_featureAcronym = acronym;
    }
    PLIX::PlixUnicodeString GetS57FeatureAcronym() const { return m_featureAcronym; }
    // Also makes this a feature dataset, deliberately: only feature datasets have a related one.
    void SetFeatureRelatedDatasetTableName(const PLIX::PlixUnicodeString& name);
    PLIX::PlixUnicodeString GetFeatureRelatedDatasetTableName() const {
        return m_relatedDatasetTableName;
    }

    bool IsS57FeatureDatasetInfo() const { return m_datasetType == S57DatasetFeature; }
    bool IsS57DSIDDatasetInfo() const { return m_datasetType == S57DatasetDSID; }
    bool IsS57VIDatasetInfo() const { return m_datasetType == S57DatasetVI; }
    bool IsS57VCDatasetInfo() const { return m_datasetType == S57DatasetVC; }
    bool IsS57VEDatasetInfo() const { return m_datasetType == S57DatasetVE; }
    bool IsS57FVEDatasetInfo() const { return m_datasetType == S57DatasetFVE; }
    bool IsS57FVPDatasetInfo() const { return m_datasetType == S57DatasetFVP; }
    bool IsS57RSDatasetInfo() const { return m_datasetType == S57DatasetRS; }
    bool IsS57AttiDatasetInfo() const { return m_datasetType == S57DatasetAtti; }
    // True once a document with an "S57ExtInfo" root has been read (not a type test).
    bool IsS57ChartDatasetInfo() const { return m_isChartDataset; }

    // Writes the "S57ExtInfo" document, keeps it as the ext info text and returns it. The object
    // class and related dataset are written only for feature and attribute datasets.
    PLIX::PlixUnicodeString MakeExtInfoDoc();
    // Overlays what the document gives on the current fields; it neither resets the object
    // nor keeps the text. A text without the root changes nothing.
    void SetExtInfo(const PLIX::PlixUnicodeString& text);
    // The document last made by MakeExtInfoDoc.
    PLIX::PlixUnicodeString GetExtInfoText() const { return m_extInfoText; }

private:
    PLIX::PlixUnicodeString m_relatedDatasetTableName;
    PLIX::PlixUnicodeString m_extInfoText;
    long long m_featureOBJL = 0;
    PLIX::PlixUnicodeString m_featureAcronym;
    KGS57DatasetType m_datasetType = S57DatasetNone;
    bool m_isChartDataset = false;
};

}  // namespace KGC
