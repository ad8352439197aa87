// The dataset extension info: S-57 role, feature object class and related dataset.
#include "ChartBase/KGS57ExtInfo.h"

#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char16_t kRoot[] = u"S57ExtInfo";
const char16_t kDatasetType[] = u"s57DatasetType";
const char16_t kFeature[] = u"S57Feature";
const char16_t kObjl[] = u"objl";
const char16_t kAcronym[] = u"Acronym";
const char16_t kRelatedDataset[] = u"S57RelatedDataset";
const char16_t kName[] = u"name";

}  // namespace

KGS57ExtInfo::KGS57ExtInfo() {
    Init();
}

void KGS57ExtInfo::Init() {
    m_relatedDatasetTableName.Empty();
    m_extInfoText.Empty();
    m_featureOBJL = 0;
    m_featureAcronym.Empty();
    m_datasetType = S57DatasetNone;
    m_isChartDataset = false;
}

void KGS57ExtInfo::SetFeatureRelatedDatasetTableName(const PlixUnicodeString& name) {
    m_relatedDatasetTableName = name;
    m_datasetType = S57DatasetFeature;
}

PlixUnicodeString KGS57ExtInfo::MakeExtInfoDoc() {
    KGMarkup doc;
    doc.AddElem(kRoot);
    doc.SetAttrib(kDatasetType, static_cast<int>(m_datasetType));
    // Deliberately only feature and attribute datasets carry their object class; whatever
    // else is set on a dataset of another role is not written.
    if (m_datasetType == S57DatasetFeature || m_datasetType == S57DatasetAtti) {
        doc.IntoElem();
        if (m_featureOBJL != 0) {
            doc.AddElem(kFeature);
            doc.SetAttrib(kObjl, GetS57FeatureOBJL());
        }
        if (!m_featureAcronym.IsEmpty()) {
            doc.AddElem(kAcronym);
            doc.SetAttrib(kName, m_featureAcronym);
        }
        if (m_datasetType == S57DatasetFeature && !m_relatedDatasetTableName.IsEmpty()) {
            doc.AddElem(kRelatedDataset);
            doc.SetAttrib(kName, m_relatedDatasetTableName);
        }
        doc.OutOfElem();
    }
    m_extInfoText = doc.GetDoc();
    return m_extInfoText;
}

void KGS57ExtInfo::SetExtInfo(const PlixUnicodeString& text) {
    KGMarkup doc;
    if (!doc.SetDoc(text) || !doc.FindElem(kRoot)) return;
    m_isChartDataset = true;

    const PlixUnicodeString type = doc.GetAttrib(kDatasetType);
    // Any number is taken as it stands; the 32-bit enumeration holds every int.
    if (!type.IsEmpty()) m_datasetType = static_cast<KGS57DatasetType>(kgatoi(type));

    doc.IntoElem();
    // Each child is sought from the start of the root, whatever the order of the document.
    auto find = [&doc](const char16_t* name) {
        doc.ResetMainPos();
        return doc.FindElem(name);
    };
    if (find(kFeature)) {
        const PlixUnicodeString objl = doc.GetAttrib(kObjl);
        if (!objl.IsEmpty()) m_featureOBJL = kgatoi(objl);
    }
    if (find(kAcronym)) {
        const PlixUnicodeString acronym = doc.GetAttrib(kName);
        if (!acronym.IsEmpty()) m_featureAcronym = acronym;
    }
    if (find(kRelatedDataset)) {
        const PlixUnicodeString related = doc.GetAttrib(kName);
        // The field itself, not the setter: reading never changes the dataset type here.
        if (!related.IsEmpty()) m_relatedDatasetTableName = related;
    }
    doc.OutOfElem();
}

}  // namespace KGC
