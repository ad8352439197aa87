// The dataset group extension info: one cell's name, scale, bounds, projection and tables.
#include "ChartBase/KGS57DatasetGroupExtInfo.h"

#include <array>
#include <cstdint>

#include "Base/KGLogFile.h"
#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char kLogSource[] = "../../../Src/ChartBase/KGS57DatasetGroupExtInfo";

const char16_t kRoot[] = u"S57GroupExtInfo";
const char16_t kCellName[] = u"DSNM";
const char16_t kScale[] = u"CSCL";
const char16_t kBounds[] = u"Bounds";
const char16_t kTop[] = u"Top";
const char16_t kLeft[] = u"Left";
const char16_t kBottom[] = u"Bottom";
const char16_t kRight[] = u"Right";
const char16_t kValue[] = u"value";
const char16_t kPrjCoordSys[] = u"PrjCoordSys";
const char16_t kFeatureTableNames[] = u"FeatureTableNames";
const char16_t kFeature[] = u"Feature";
const char16_t kCode[] = u"Code";
const char16_t kNames[] = u"Names";
const char16_t kNameSeparator[] = u",";

// The seven fixed tables of a group in document order; TableFields() lists the members alike.
struct TableElement {
    const char16_t* element;
    const char16_t* emptyMessage;
    const char16_t* missingMessage;
};
constexpr int kTableCount = 7;
const TableElement kTables[kTableCount] = {
    {u"DSIDTableName", u"S57GroupExtInfo's DSID Table Name is empty!", u"Have no DSID Info"},
    {u"VITableName", u"S57GroupExtInfo's VI Table Name is empty!", u"Have no VI Info"},
    {u"VCTableName", u"S57GroupExtInfo's VC Table Name is empty!", u"Have no VC Info"},
    {u"VETableName", u"S57GroupExtInfo's VE Table Name is empty!", u"Have no VE Info"},
    {u"FVETableName", u"S57GroupExtInfo's FVE Table Name is empty!", u"Have no FVE Info"},
    {u"FVPTableName", u"S57GroupExtInfo's FVP Table Name is empty!", u"Have no FVP Info"},
    {u"RSTableName", u"S57GroupExtInfo's RS Table Name is empty!", u"Have no RS Info"},
};

void Warn(const PlixUnicodeString& message, int line) {
    KGLogFile::GetInstance(false)->RecordLog(400, -100, message, kLogSource, line);
}

PlixUnicodeString FormatBound(double value) {
    return PlixUnicodeString::Format("%f", value);
}

// Deliberately the scale goes through "%d" as a plain 32-bit integer, as the document has
// always held it; the value is narrowed explicitly so no vararg mismatch can occur.
PlixUnicodeString FormatScale(long long scale) {
    return PlixUnicodeString::Format("%d", static_cast<int>(static_cast<uint32_t>(scale)));
}

}  // namespace

KGS57DatasetGroupExtInfo::KGS57DatasetGroupExtInfo() {
    Init();
}

void KGS57DatasetGroupExtInfo::Init() {
    m_extInfoText.Empty();
    m_cellName.Empty();
    m_scale = 0;
    for (PlixUnicodeString* field : TableFields()) field->Empty();
    m_bounds = PLIX::PlixRect2D();
    KGGeoCoordSys wgs84;
    wgs84.SetTypeID(4326);
    m_prjCoordSys = KGPrjCoordSys();
    m_prjCoordSys.SetTypeID(1);
    m_prjCoordSys.SetGeoCoordSys(wgs84);
    m_hasGroupExtInfo = false;
}

std::array<PlixUnicodeString*, 7> KGS57DatasetGroupExtInfo::TableFields() {
    return {&m_dsidTableName, &m_viTableName,  &m_vcTableName, &m_veTableName,
            &m_fveTableName,  &m_fvpTableName, &m_rsTableName};
}

KGS57DatasetGroupExtInfo::TableNames KGS57DatasetGroupExtInfo::GetFeaTableNames(int code) const {
    const TableNames* names = m_featureTableNames.Find(code);
    if (!names) {
        Warn(PlixUnicodeString::Format("Have No the dataset which it's OBJL value = %d", code),
             __LINE__);
        return TableNames();
    }
    return *names;
}

void KGS57DatasetGroupExtInfo::SetFeaTableNames(int code, TableNames& names) {
    if (names.IsEmpty()) {
        m_featureTableNames.RemoveKey(code);
        return;
    }
    m_featureTableNames.SetAt(code, names);
}

void KGS57DatasetGroupExtInfo::AppendTableName(int code, const PlixUnicodeString& name) {
    m_featureTableNames[code].Add(name);
}

void KGS57DatasetGroupExtInfo::AppendTableNames(int code, TableNames& names) {
    // An absent code gets the list as given, even an empty one.
    m_featureTableNames[code].Append(names);
}

PlixUnicodeString KGS57DatasetGroupExtInfo::MakeExtInfoDoc() {
    KGMarkup doc;
    doc.AddElem(kRoot);
    doc.IntoElem();

    if (m_cellName.IsEmpty()) Warn(u"S57GroupExtInfo's DSNM value is empty!", __LINE__);
    doc.AddElem(kCellName, m_cellName);
    if (m_scale < 1) Warn(u"S57GroupExtInfo's CSCL value is invalid", __LINE__);
    doc.AddElem(kScale, FormatScale(m_scale));

    doc.AddElem(kBounds);
    doc.AddChildElem(kTop);
    doc.SetChildAttrib(kValue, FormatBound(m_bounds.top));
    doc.AddChildElem(kLeft);
    doc.SetChildAttrib(kValue, FormatBound(m_bounds.left));
    doc.AddChildElem(kBottom);
    doc.SetChildAttrib(kValue, FormatBound(m_bounds.bottom));
    doc.AddChildElem(kRight);
    doc.SetChildAttrib(kValue, FormatBound(m_bounds.right));

    // The projection's own document is held as the element's (escaped) text.
    doc.AddElem(kPrjCoordSys, m_prjCoordSys.ToXML(0));

    const std::array<PlixUnicodeString*, kTableCount> fields = TableFields();
    for (int i = 0; i < kTableCount; ++i) {
        if (fields[i]->IsEmpty()) Warn(kTables[i].emptyMessage, __LINE__);
        doc.AddElem(kTables[i].element, *fields[i]);
    }

    doc.AddElem(kFeatureTableNames);
    for (const auto& entry : m_featureTableNames) {
        PlixUnicodeString joined;
        for (int i = 0; i < entry.second.GetSize(); ++i) {
            if (i > 0) joined += kNameSeparator;
            joined += entry.second[i];
        }
        if (joined.IsEmpty()) continue;
        doc.AddChildElem(kFeature);
        doc.SetChildAttrib(kCode, entry.first);
        doc.SetChildAttrib(kNames, joined);
    }

    doc.OutOfElem();
    m_extInfoText = doc.GetDoc();
    return m_extInfoText;
}

void KGS57DatasetGroupExtInfo::SetExtInfo(const PlixUnicodeString& text) {
    m_extInfoText = text;
    if (text.IsEmpty()) return;

    KGMarkup doc;
    if (!doc.SetDoc(text) || !doc.FindElem(kRoot)) {
        Warn(u"Have no S57 Info", __LINE__);
        return;
    }
    m_hasGroupExtInfo = true;
    doc.IntoElem();

    // Each element is sought from the start of the root, so the order of a hand-edited
    // document does not matter and one missing element does not hide the next.
    auto find = [&doc](const char16_t* name) {
        doc.ResetMainPos();
        return doc.FindElem(name);
    };

    if (find(kCellName)) {
        m_cellName = doc.GetData();
    } else {
        Warn(u"Have no DSNM Info", __LINE__);
    }

    if (find(kScale)) {
        m_scale = kgatol(doc.GetData());
    } else {
        Warn(u"Have no CSCL Info", __LINE__);
    }

    if (find(kBounds)) {
        struct Bound {
            const char16_t* element;
            double* value;
        };
        const Bound bounds[] = {{kTop, &m_bounds.top},
                                {kLeft, &m_bounds.left},
                                {kBottom, &m_bounds.bottom},
                                {kRight, &m_bounds.right}};
        for (const Bound& bound : bounds) {
            doc.ResetChildPos();
            if (doc.FindChildElem(bound.element)) *bound.value = kgatof(doc.GetChildAttrib(kValue));
        }
    } else {
        Warn(u"Have no Bounds Info", __LINE__);
    }

    if (find(kPrjCoordSys)) {
        // A projection text that is not understood leaves the projection as it was.
        m_prjCoordSys.FromXML(doc.GetData(), 0);
    } else {
        Warn(u"Have no Projection Info", __LINE__);
    }

    const std::array<PlixUnicodeString*, kTableCount> fields = TableFields();
    for (int i = 0; i < kTableCount; ++i) {
        if (find(kTables[i].element)) {
            *fields[i] = doc.GetData();
        } else {
            Warn(kTables[i].missingMessage, __LINE__);
        }
    }

    if (find(kFeatureTableNames)) {
        doc.IntoElem();
        m_featureTableNames.RemoveAll();
        while (doc.FindElem(kFeature)) {
            TableNames names;
            doc.GetAttrib(kNames).Split(names, kNameSeparator, false);
            // A later entry of the same code replaces an earlier one.
            m_featureTableNames.SetAt(kgatoi(doc.GetAttrib(kCode)), names);
        }
        doc.OutOfElem();
    } else {
        Warn(u"Have no Feature Dataset Info", __LINE__);
    }
}

}  // namespace KGC
