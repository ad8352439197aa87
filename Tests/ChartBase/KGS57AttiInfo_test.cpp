#include "ChartBase/KGS57AttiInfo.h"

#include <gtest/gtest.h>

#include "ExtInfoTestHelpers.h"

using KGC::KGS57AttiInfo;
using KGC::KGS57DefineInfo;
using PLIX::PlixVariant;

TEST(KGS57AttiInfo, ANewRecordHasNoTypeAndANullValue) {
    const KGS57AttiInfo info;
    EXPECT_EQ(info.GetAttiCode(), 0);
    EXPECT_TRUE(info.GetAcronym().IsEmpty());
    EXPECT_TRUE(info.GetName().IsEmpty());
    EXPECT_EQ(info.GetAttiType(), KGS57DefineInfo::AttrUnknown);
    EXPECT_TRUE(info.GetAttiValue().IsNull());
}

TEST(KGS57AttiInfo, CopiesCarryEveryFieldAndTheValueWithItsType) {
    KGS57AttiInfo info;
    info.SetAttiCode(116);
    info.SetAcronym("OBJNAM");
    info.SetName(u8"Object name \u6d77\u56fe");
    info.SetAttiType(KGS57DefineInfo::AttrFreeText);
    info.SetAttiValue(PlixVariant(4294967296LL));

    KGS57AttiInfo assigned;
    assigned.SetAttiValue(PlixVariant("old"));
    assigned = info;
    const KGS57AttiInfo constructed(info);
    const KGS57AttiInfo* copies[] = {&assigned, &constructed};
    for (const KGS57AttiInfo* copy : copies) {
        EXPECT_EQ(copy->GetAttiCode(), 116);
        EXPECT_EQ(exttest::U8(copy->GetAcronym()), "OBJNAM");
        EXPECT_EQ(copy->GetName(), info.GetName());
        EXPECT_EQ(copy->GetAttiType(), KGS57DefineInfo::AttrFreeText);
        EXPECT_EQ(copy->GetAttiValue().GetType(), PlixVariant::Int64);
        EXPECT_EQ(copy->GetAttiValue().ToLong(), 4294967296LL);
    }

    // Copies are independent, and a type read from data outside the enumeration is kept.
    assigned.SetAttiValue(PlixVariant(2.5));
    assigned.SetAttiType(static_cast<KGS57DefineInfo::AttributeType>(17));
    EXPECT_EQ(info.GetAttiValue().GetType(), PlixVariant::Int64);
    EXPECT_EQ(assigned.GetAttiType(), 17);
    EXPECT_EQ(assigned.GetAttiValue().ToDouble(), 2.5);
}
