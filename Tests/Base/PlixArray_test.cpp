// Tests of the platform's containers: the growable array (sizes and grow steps, insertion and
// removal ranges, appending and copying) and the ordered dictionary.
#include "Base/PlixArray.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "Base/PlixDict.h"
#include "Base/PlixUnicodeString.h"
#include "BaseTestHelpers.h"

using PLIX::PlixArray;
using PLIX::PlixDict;
using PLIX::PlixUnicodeString;

namespace {

template <typename T>
std::vector<T> Items(const PlixArray<T>& a) {
    return std::vector<T>(a.begin(), a.end());
}

PlixArray<int> Numbers(std::initializer_list<int> values) {
    PlixArray<int> a;
    for (int v : values) a.Add(v);
    return a;
}

}  // namespace

TEST(PlixArray, SetSizeResizesAndKeepsTheGrowStepWhichCopiesCarry) {
    PlixArray<int> a;
    EXPECT_TRUE(a.IsEmpty());
    a.SetSize(3, 16);
    EXPECT_EQ(a.GetSize(), 3);
    EXPECT_EQ(a.GetGrowBy(), 16);
    EXPECT_EQ(Items(a), (std::vector<int>{0, 0, 0}));  // new elements are value-initialised

    a[0] = 7;
    a.SetSize(5);  // -1 keeps the step
    EXPECT_EQ(a.GetGrowBy(), 16);
    EXPECT_EQ(Items(a), (std::vector<int>{7, 0, 0, 0, 0}));
    a.SetSize(1);
    EXPECT_EQ(Items(a), (std::vector<int>{7}));
    a.SetSize(2, 0);
    EXPECT_EQ(a.GetGrowBy(), 0);
    a.SetSize(2, 32);
    a.SetSize(-4);
    EXPECT_EQ(a.GetSize(), 0);
    EXPECT_EQ(a.GetGrowBy(), 32);

    a.Add(1);
    PlixArray<int> copied(a);
    EXPECT_EQ(copied.GetGrowBy(), 32);
    EXPECT_EQ(Items(copied), (std::vector<int>{1}));
    PlixArray<int> assigned;
    assigned = a;
    EXPECT_EQ(assigned.GetGrowBy(), 32);
    PlixArray<int> viaCopy;
    viaCopy.Add(99);
    viaCopy.Copy(a);
    EXPECT_EQ(viaCopy.GetGrowBy(), 32);
    EXPECT_EQ(Items(viaCopy), (std::vector<int>{1}));

    PlixArray<PlixUnicodeString> strings;
    strings.SetSize(2);
    EXPECT_TRUE(strings[0].IsEmpty());
    EXPECT_TRUE(strings[1].IsEmpty());
}

TEST(PlixArray, AddReturnsTheIndexAndElementsAreReachedByIndex) {
    PlixArray<PlixUnicodeString> a;
    EXPECT_EQ(a.Add("LIGHTS"), 0);
    PlixUnicodeString moved("BOYLAT");
    EXPECT_EQ(a.Add(std::move(moved)), 1);
    EXPECT_EQ(a.Add("DEPARE"), 2);
    EXPECT_EQ(a.GetSize(), 3);
    EXPECT_EQ(a.GetCount(), 3);
    EXPECT_EQ(a.GetUpperBound(), 2);

    EXPECT_EQ(a.GetAt(1).Str(), u"BOYLAT");
    a.SetAt(1, "BOYCAR");
    EXPECT_EQ(a[1].Str(), u"BOYCAR");
    a.ElementAt(2) += "!";
    EXPECT_EQ(a.GetAt(2).Str(), u"DEPARE!");
    a[0] = "SOUNDG";
    const PlixArray<PlixUnicodeString>& constView = a;
    EXPECT_EQ(constView[0].Str(), u"SOUNDG");
    EXPECT_EQ(constView.GetAt(0).Str(), u"SOUNDG");
    EXPECT_EQ(a.GetData()[2].Str(), u"DEPARE!");

    a.RemoveAll();
    EXPECT_TRUE(a.IsEmpty());
    EXPECT_EQ(a.GetUpperBound(), -1);
}

TEST(PlixArray, InsertAtPlacesCopiesAndClampsThePosition) {
    PlixArray<int> a = Numbers({1, 2, 3});
    a.InsertAt(0, 0);
    EXPECT_EQ(Items(a), (std::vector<int>{0, 1, 2, 3}));
    a.InsertAt(2, 9, 3);
    EXPECT_EQ(Items(a), (std::vector<int>{0, 1, 9, 9, 9, 2, 3}));
    a.InsertAt(a.GetSize(), 4);  // at the end
    EXPECT_EQ(Items(a), (std::vector<int>{0, 1, 9, 9, 9, 2, 3, 4}));
    a.InsertAt(100, 5);  // past the end: appended
    EXPECT_EQ(a.GetAt(a.GetUpperBound()), 5);
    a.InsertAt(-3, -1);  // before the start: in front
    EXPECT_EQ(a.GetAt(0), -1);
    EXPECT_EQ(a.GetSize(), 10);
    a.InsertAt(1, 7, 0);
    a.InsertAt(1, 7, -2);
    EXPECT_EQ(a.GetSize(), 10);

    // Inserting an element of the array itself inserts its value.
    PlixArray<PlixUnicodeString> s;
    s.Add("a");
    s.Add("b");
    s.InsertAt(0, s[1], 2);
    EXPECT_EQ(s[0].Str(), u"b");
    EXPECT_EQ(s[1].Str(), u"b");
    EXPECT_EQ(s[2].Str(), u"a");
}

TEST(PlixArray, RemoveAtRemovesARangeAndIgnoresOutOfRangeRequests) {
    PlixArray<int> a = Numbers({0, 1, 2, 3, 4, 5});
    a.RemoveAt(0);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 2, 3, 4, 5}));
    a.RemoveAt(1, 2);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 4, 5}));
    a.RemoveAt(3);
    a.RemoveAt(-1);
    a.RemoveAt(1, 0);
    a.RemoveAt(1, -1);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 4, 5}));
    a.RemoveAt(1, 100);  // to the end
    EXPECT_EQ(Items(a), (std::vector<int>{1}));
    a.RemoveAt(0, 2147483647);
    EXPECT_TRUE(a.IsEmpty());
    a.RemoveAt(0);
    EXPECT_TRUE(a.IsEmpty());
}

TEST(PlixArray, AppendAddsAllElementsAlsoOfItself) {
    PlixArray<int> a = Numbers({1, 2});
    PlixArray<int> b = Numbers({3, 4, 5});
    EXPECT_EQ(a.Append(b), 2);
    EXPECT_EQ(Items(a), (std::vector<int>{1, 2, 3, 4, 5}));
    EXPECT_EQ(Items(b), (std::vector<int>{3, 4, 5}));
    EXPECT_EQ(a.Append(PlixArray<int>()), 5);
    EXPECT_EQ(a.GetSize(), 5);

    PlixArray<PlixUnicodeString> self;
    for (const char* name : {"LIGHTS", "BOYLAT", "DEPARE"}) self.Add(name);
    EXPECT_EQ(self.Append(self), 3);
    ASSERT_EQ(self.GetSize(), 6);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(self[i + 3], self[i]) << i;

    PlixArray<int> target = Numbers({9});
    target.Copy(b);
    EXPECT_EQ(Items(target), (std::vector<int>{3, 4, 5}));
    target.Copy(target);
    EXPECT_EQ(Items(target), (std::vector<int>{3, 4, 5}));
    target.Copy(PlixArray<int>());
    EXPECT_TRUE(target.IsEmpty());
}

TEST(PlixArray, IterationVisitsElementsInOrderAndCanChangeThem) {
    PlixArray<int> a = Numbers({1, 2, 3});
    for (int& v : a) v *= 10;
    const PlixArray<int>& constView = a;
    std::vector<int> seen;
    for (int v : constView) seen.push_back(v);
    EXPECT_EQ(seen, (std::vector<int>{10, 20, 30}));
    EXPECT_EQ(a.Items(), (std::vector<int>{10, 20, 30}));

    PlixArray<int> empty;
    EXPECT_EQ(empty.begin(), empty.end());
}

TEST(PlixDict, LookupSetAtAndRemoveKey) {
    PlixDict<PlixUnicodeString, int> dict;
    EXPECT_TRUE(dict.IsEmpty());
    dict.SetAt("LIGHTS", 75);
    dict.SetAt("BOYLAT", 17);
    dict.SetAt("LIGHTS", 76);  // replaces
    EXPECT_EQ(dict.GetCount(), 2);

    int value = -1;
    EXPECT_TRUE(dict.Lookup("LIGHTS", value));
    EXPECT_EQ(value, 76);
    value = -1;
    EXPECT_FALSE(dict.Lookup("lights", value));  // keys are case-sensitive
    EXPECT_EQ(value, -1);                        // untouched on a miss

    EXPECT_TRUE(dict.RemoveKey("BOYLAT"));
    EXPECT_FALSE(dict.RemoveKey("BOYLAT"));
    EXPECT_FALSE(dict.Lookup("BOYLAT", value));
    EXPECT_EQ(dict.GetCount(), 1);

    // operator[] creates a default value for a new key.
    EXPECT_EQ(dict["DEPARE"], 0);
    dict["DEPARE"] += 42;
    EXPECT_TRUE(dict.Lookup("DEPARE", value));
    EXPECT_EQ(value, 42);

    const int* found = dict.Find("DEPARE");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(*found, 42);
    EXPECT_EQ(dict.Find("SOUNDG"), nullptr);
    *dict.Find("LIGHTS") = 1;
    const PlixDict<PlixUnicodeString, int>& constView = dict;
    ASSERT_NE(constView.Find("LIGHTS"), nullptr);
    EXPECT_EQ(*constView.Find("LIGHTS"), 1);
    EXPECT_EQ(constView.Find("BOYLAT"), nullptr);

    dict.RemoveAll();
    EXPECT_TRUE(dict.IsEmpty());
    EXPECT_EQ(dict.GetCount(), 0);
}

TEST(PlixDict, IteratesInKeyOrder) {
    PlixDict<PlixUnicodeString, int> dict;
    for (const char* key : {"b", "a", "B", "\xC3\xA9", "A", "ab"}) dict.SetAt(key, 0);
    std::vector<std::u16string> keys;
    for (const auto& entry : dict) keys.push_back(entry.first.Str());
    EXPECT_EQ(keys, (std::vector<std::u16string>{u"A", u"B", u"a", u"ab", u"b", u"\u00E9"}));

    PlixDict<int, PlixUnicodeString> byCode;
    byCode.SetAt(300, "c");
    byCode.SetAt(-5, "a");
    byCode.SetAt(17, "b");
    for (auto& entry : byCode) entry.second += "!";
    std::u16string joined;
    for (const auto& entry : byCode) joined += entry.second.Str();
    EXPECT_EQ(joined, u"a!b!c!");
}
