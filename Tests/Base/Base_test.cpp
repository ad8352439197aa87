// Tests of the platform layer, the XML cursor aside. Most cases are rows of Tests/Data/base/*.txt:
// one case a line ("#" starts a comment), fields separated by " | ", "\xHH" standing for that
// byte; strings, formats, numbers, variants and arrays read "operation | subject | args | result".
#include <gtest/gtest.h>
#include <locale.h>

#include <charconv>
#include <cmath>
#include <filesystem>
#include <functional>
#include <map>
#include <sstream>

#include "Base/KGCoordSys.h"
#include "Base/KGFile.h"
#include "Base/KGFileStdio.h"
#include "Base/KGLogFile.h"
#include "Base/KGNumber.h"
#include "Base/KGToolkit.h"
#include "Base/PlixArray.h"
#include "Base/PlixDict.h"
#include "Base/PlixTypes.h"
#include "Base/PlixVariant.h"
#include "TestSupport.h"

using S = PLIX::PlixUnicodeString;
using PLIX::PlixVariant;
using A = PLIX::PlixArray<int>;
using Args = std::vector<std::string>;
using KGC::KGLogFile;
using testing::internal::CaptureStderr;
using testing::internal::GetCapturedStderr;

namespace {

std::vector<Args> Table(const std::string& name) {
    std::vector<Args> rows;
    std::istringstream in(vltest::ReadFile(vltest::TestDataDir() + "base/" + name));
    for (std::string line; std::getline(in, line);) {
        if (line.empty() || line[0] == '#') continue;
        line += line.back() == '|' ? " " : "";
        rows.emplace_back();
        for (size_t at = 0, end = 0; end != std::string::npos; at = end + 3) {
            std::string& f =
                rows.back().emplace_back(line.substr(at, (end = line.find(" | ", at)) - at));
            for (size_t x = 0; (x = f.find("\\x", x)) != std::string::npos; ++x)
                f.replace(x, 4, 1, static_cast<char>(std::stoi(f.substr(x + 2, 2), nullptr, 16)));
        }
    }
    EXPECT_FALSE(rows.empty()) << "no cases in " << name;
    return rows;
}

const auto I = [](const std::string& s) { return std::stoi(s); };
const auto C = [](const std::string& s) { return S(s).GetAt(0); };
const auto Sign = [](int v) { return std::to_string((v > 0) - (v < 0)); };
const auto Edited = [](int n, const S& s) { return std::to_string(n) + ":" + s.ToUtf8(); };
const auto D = [](const std::string& s) {  // locale-free, unlike strtod
    double d = 0;
    std::from_chars(s.data(), s.data() + s.size(), d);
    return d;
};

const auto Dbl = [](double d) {
    char t[32];
    return std::string(t, std::to_chars(t, t + 32, d).ptr);
};

std::string Hex(const S& s) {
    std::string out;
    char unit[8];
    for (char16_t c : s.Str()) out += (snprintf(unit, sizeof unit, " %04X", unsigned{c}), unit);
    return out.substr(out.empty() ? 0 : 1);
}

S Units(const std::string& hex) {
    std::u16string units;
    std::istringstream in(hex);
    for (unsigned u = 0; in >> std::hex >> u;) units += static_cast<char16_t>(u);
    return S(units);
}

std::string SplitOf(const S& s, const Args& a) {
    PLIX::PlixArray<S> parts;
    parts.Add("stale");
    std::string out = std::to_string(s.Split(parts, S(a[0]), a[1] == "1")) + ":";
    for (const auto& p : parts) out += "[" + p.ToUtf8() + "]";
    return out;
}

// Formats one value (its type from the conversion: ld, d, f or s), statically or as a member.
std::string FormatOne(const std::string& format, const std::string& v, bool member) {
    S out("previous");
    auto run = [&](auto x) {
        return (member ? (out.Format(S(format).c_str(), x), out) : S::Format(format.c_str(), x))
            .ToUtf8();
    };
    if (format.find("ld") != std::string::npos) return run(std::stol(v));
    if (format.find('d') != std::string::npos) return run(I(v));
    return format.find('f') != std::string::npos ? run(D(v)) : run(v.c_str());
}

std::string Describe(const std::string& kind, const std::string& text) {
    PlixVariant v = kind == "bool"     ? PlixVariant(text == "true")
                    : kind == "int"    ? PlixVariant(I(text))
                    : kind == "int64"  ? PlixVariant(std::stoll(text))
                    : kind == "double" ? PlixVariant(D(text))
                    : kind == "text"   ? PlixVariant(text.c_str())
                    : kind == "utext"  ? PlixVariant(S(text).Str())
                                       : PlixVariant();
    const std::string out = std::to_string(v.GetType()) + " " + std::to_string(v.ToInt()) + " " +
                            std::to_string(v.ToLong()) + " " + Dbl(v.ToDouble()) + " [" +
                            v.ToString().ToUtf8() + "]";
    // Equal only to a value of the same type and content.
    const bool equal = v == PlixVariant(v) && !(v == PlixVariant(u"\u2400"));
    v.Clear();
    return out + (v.IsNull() && v == PlixVariant() ? "" : " not cleared") +
           (equal ? "" : " equality broken");
}

// Runs the operations on the array 0..size-1: "<last value returned>:<elements>,g<grow step>".
std::string Apply(int size, const std::string& program) {
    A a, b;  // b has content for Copy to replace
    PLIX::PlixDict<int, int> dict;
    for (int i = 0; i < size; ++i) a.Add(i), b.Add(9);
    std::istringstream in(program);
    int result = 0;
    for (std::string op; in.clear(), in >> op;) {
        std::vector<int> n;
        for (int v = 0; in >> v;) n.push_back(v);
        n.resize(3, -99);
        if (op == "Add") result = a.Add(n[0]);
        if (op == "SetSize") n[1] == -99 ? a.SetSize(n[0]) : a.SetSize(n[0], n[1]);
        if (op == "InsertAt") n[2] == -99 ? a.InsertAt(n[0], n[1]) : a.InsertAt(n[0], n[1], n[2]);
        if (op == "RemoveAt") n[1] == -99 ? a.RemoveAt(n[0]) : a.RemoveAt(n[0], n[1]);
        if (op == "AppendCopy") result = a.Append(A(a));
        if (op == "AppendItself") result = a.Append(a);
        if (op == "CopyOut") b.Copy(a), a = A(b);
        if (op == "DictSetAt") dict.SetAt(n[0], n[1]);
        if (op == "DictLookup")
            result = -1, result = dict.Lookup(n[0], result) ? result : result * 1000;
        if (op == "DictFind") result = dict.Find(n[0]) ? *dict.Find(n[0]) : dict.GetCount() * 1000;
        if (op == "DictRemoveKey") result = dict.RemoveKey(n[0]);
    }
    std::string out = std::to_string(result) + ":";
    for (int v : a) out += std::to_string(v) + ",";
    return out + "g" + std::to_string(a.GetGrowBy());
}

// clang-format off
#define OP(n, e) {n, [](S& s, const Args& a) -> std::string { return (void)s, (void)a, (e); }}
// clang-format on

const std::map<std::string, std::function<std::string(S&, const Args&)>> kOps = {
    OP("Decode", Hex(s)),
    OP("Encode", Units(a[0]).ToUtf8()),
    OP("Find", std::to_string(s.Find(S(a[0]), I(a[1])))),
    OP("FindChar", std::to_string(s.Find(C(a[0]), I(a[1])))),
    OP("ReverseFind", std::to_string(s.ReverseFind(C(a[0])))),
    OP("Left", s.Left(I(a[0])).ToUtf8()),
    OP("Right", s.Right(I(a[0])).ToUtf8()),
    OP("Mid", (a.size() == 1 ? s.Mid(I(a[0])) : s.Mid(I(a[0]), I(a[1]))).ToUtf8()),
    OP("GetAt", std::to_string(s.GetAt(I(a[0])))),
    OP("SetAt", (s.SetAt(I(a[0]), C(a[1])), s.ToUtf8())),
    OP("Repeat", S(s.GetAt(0), I(a[0])).ToUtf8()),
    OP("Delete", Edited(a.size() == 1 ? s.Delete(I(a[0])) : s.Delete(I(a[0]), I(a[1])), s)),
    OP("Insert", Edited(s.Insert(I(a[0]), S(a[1])), s)),
    OP("Replace", Edited(s.Replace(S(a[0]), S(a[1])), s)),
    OP("ReplaceChar", Edited(s.Replace(C(a[0]), C(a[1])), s)),
    OP("Trim", (a.empty() ? s.Trim() : s.Trim(S(a[0]))).ToUtf8()),
    OP("TrimLeft", (a.empty() ? s.TrimLeft() : s.TrimLeft(S(a[0]))).ToUtf8()),
    OP("TrimRight", (a.empty() ? s.TrimRight() : s.TrimRight(S(a[0]))).ToUtf8()),
    OP("TrimChar", s.Trim(C(a[0])).ToUtf8()),
    OP("TrimLeftChar", s.TrimLeft(C(a[0])).ToUtf8()),
    OP("TrimRightChar", s.TrimRight(C(a[0])).ToUtf8()),
    OP("Split", SplitOf(s, a)),
    OP("ToInt", std::to_string(a.empty() ? s.ToInt() : s.ToInt(I(a[0])))),
    OP("Compare", Sign(s.Compare(S(a[0])))),
    OP("CompareNoCase", Sign(s.CompareNoCase(S(a[0])))),
    OP("Less", std::to_string(s < S(a[0]))),
    OP("MakeUpper", s.MakeUpper().ToUtf8()),
    OP("MakeLower", s.MakeLower().ToUtf8()),
    OP("Format", FormatOne(s.ToUtf8(), a[0], false)),
    OP("MemberFormat", FormatOne(s.ToUtf8(), a[0], true)),
    OP("Number",
       std::to_string(kgatoi(s)) + " " + std::to_string(kgatol(s)) + " " + Dbl(kgatof(s))),
    OP("Variant", Describe(s.ToUtf8(), a[0])),
    OP("Array", Apply(I(s.ToUtf8()), a[0])),
};

// Runs the cases of a table; none may change the process's or the thread's locale.
void RunTable(const std::string& name) {
    const std::string global = setlocale(LC_ALL, nullptr);
    const locale_t thread = uselocale(static_cast<locale_t>(0));
    const std::string point = localeconv()->decimal_point;
    for (const auto& row : Table(name)) {
        const auto op = kOps.find(row[0]);
        ASSERT_TRUE(row.size() >= 3 && op != kOps.end()) << testing::PrintToString(row);
        S subject(row[1].c_str());
        EXPECT_EQ(op->second(subject, Args(row.begin() + 2, row.end() - 1)), row.back())
            << name << ": " << testing::PrintToString(row);
        EXPECT_TRUE(setlocale(LC_ALL, nullptr) == global && localeconv()->decimal_point == point &&
                    uselocale(static_cast<locale_t>(0)) == thread)
            << "locale changed by " << testing::PrintToString(row);
    }
}

// Changes an environment variable (nullptr unsets it) until the end of the scope.
struct Env {
    const char* name;
    const char* old = getenv(name);
    std::string kept = old ? old : "";
    ~Env() { Set(old ? kept.c_str() : nullptr); }
    void Set(const char* value) const { value ? setenv(name, value, 1) : unsetenv(name); }
};

const auto ModulePath = [](const char* module) {
    return KGC::KGFile::GetModulePath(module).ToUtf8();
};

// The lines of a file with that content, read until IsEOF (at most 10).
Args ReadLines(const std::string& content) {
    vltest::TempDir dir;
    vltest::WriteFile(dir.File("f"), content);
    KGC::KGFileStdio file;
    EXPECT_TRUE(file.Open(dir.File("f"), KGC::KGStreamRead, 1, PLIX::PLIXCharset::UTF8));
    Args lines;
    while (!file.IsEOF() && lines.size() < 10) lines.push_back(file.ReadLine().ToUtf8());
    return lines;
}

}  // namespace

TEST(PlixValues, TablesColoursToleranceAndLetters) {
    for (const char* table :
         {"strings.txt", "formats.txt", "numbers.txt", "variants.txt", "arrays.txt"})
        RunTable(table);
    EXPECT_EQ(S("a\0b", 3).ToUtf8(), std::string("a\0b", 3));
    EXPECT_TRUE(S(static_cast<const char*>(nullptr)).IsEmpty());
    using namespace PLIX;
    EXPECT_EQ(PLIXRGB(0x112, 0x134, -0xAA), 0x563412u);  // each part cut to 8 bits
    const PLIXCOLOR c = 0xFF000000u | PLIXRGB(1, 2, 255);
    EXPECT_EQ(PLIXGetR(c) * 1000000 + PLIXGetG(c) * 1000 + PLIXGetB(c), 1002255);
    EXPECT_TRUE(plixequal(1.5, 1.0, 0.5) && !plixequal(1.0, std::nextafter(1.5, 2.0), 0.5));
    std::string letters;  // 2 for a capital, 1 for a small letter
    for (char16_t ch : std::u16string(u"@AZ[`az{\u00C9\u00E9\uFF21"))
        letters += std::to_string(KGC::KGToolkit::IsBigLetter(ch) * 2 +
                                  KGC::KGToolkit::IsLittleLetter(ch));
    EXPECT_EQ(letters, "02200110000");
}

// Under a decimal-comma locale, for the process or the thread, numbers keep a decimal point.
TEST(KGNumber, ConversionsIgnoreAndRestoreADecimalCommaLocale) {
    locale_t german = newlocale(LC_ALL_MASK, "de_DE.UTF-8", static_cast<locale_t>(0));
    if (german == static_cast<locale_t>(0)) GTEST_SKIP() << "no de_DE.UTF-8 locale installed";
    for (bool perThread : {false, true}) {
        ASSERT_TRUE(perThread || setlocale(LC_ALL, "de_DE.UTF-8") != nullptr);
        uselocale(perThread ? german : LC_GLOBAL_LOCALE);
        ASSERT_STREQ(localeconv()->decimal_point, ",");
        for (const char* table : {"numbers.txt", "formats.txt", "variants.txt"}) RunTable(table);
        uselocale(LC_GLOBAL_LOCALE);
        setlocale(LC_ALL, "C");
    }
    freelocale(german);
}

TEST(KGFile, ModulePathPrefersTheOverrideThenVlchartHomeThenTheLoadedLibrary) {
    vltest::TempDir home;
    const std::string noSlash = home.Path().substr(0, home.Path().size() - 1);
    const Env env{"VLCHART_HOME"};
    env.Set(noSlash.c_str());
    EXPECT_EQ(ModulePath("VlBase"), home.Path());  // the "/" is added
    env.Set(home.Path().c_str());
    EXPECT_EQ(ModulePath("AnyModule"), home.Path());  // and not doubled
    KGC::KGFile::SetModulePath("/some/dir");
    EXPECT_EQ(ModulePath("VlBase"), "/some/dir/");
    KGC::KGFile::SetModulePath("");  // an empty directory removes the override
    EXPECT_EQ(ModulePath("VlBase"), home.Path());
    for (const char* value : {"", static_cast<const char*>(nullptr)}) {
        env.Set(value);  // an empty VLCHART_HOME is no directory
        // Nothing beside the library in the build tree: the source tree's default environment.
        EXPECT_EQ(ModulePath("VlBase"), vltest::DefaultDataDir());
        EXPECT_EQ(KGC::KGFile::GetDefaultDataPath().ToUtf8(), vltest::DefaultDataDir());
        EXPECT_TRUE(vltest::FileExists(ModulePath("stdc++") + "libstdc++.so.6"));  // versioned
        EXPECT_EQ(ModulePath("NoSuchModule"), "");
    }
    EXPECT_TRUE(KGC::KGFile::IsExist(noSlash) && !KGC::KGFile::IsExist(home.File("x")) &&
                !KGC::KGFile::IsExist(""));
}

TEST(KGFileStdio, LinesEndOfFileAndRefusedOpens) {
    for (const auto& r : Table("lines.txt"))
        EXPECT_EQ(ReadLines(r[1]), Args(r.begin() + 2, r.end())) << r[0];
    const std::string block(65535, 'a');  // a file of exactly one read block, 64 KiB
    EXPECT_TRUE(ReadLines(block + "\n") == Args{block});
    // A CR/LF pair across the first block's end, a 3-byte character across the second's.
    EXPECT_TRUE(ReadLines("\xEF\xBB\xBF" + block.substr(3) + "\r\n" + block.substr(1) +
                          "\xE6\xB5\xB7\nz") ==
                (Args{block.substr(3) + "\r", block.substr(1) + "\xE6\xB5\xB7", "z"}));
    // A line longer than 16 MiB keeps its first 16 MiB, also as the last line.
    const std::string huge(17u << 20, 'y');
    const std::string cut = huge.substr(0, 16u << 20);
    EXPECT_TRUE(ReadLines("a\n" + huge + "\nb\n" + huge) == (Args{"a", cut, "b", cut}));

    vltest::TempDir dir;
    const std::string path = dir.File("f");
    const std::string content = std::string("\xEF\xBB\xBF") + "1\n2\n";  // each Open skips the mark
    vltest::WriteFile(path, content);
    KGC::KGFileStdio file;
    EXPECT_TRUE(file.IsEOF() && file.ReadLine().IsEmpty());  // nothing open
    const std::tuple<std::string, int, int> refused[] = {
        {dir.File("missing"), 2, 1}, {dir.Path(), 2, 1}, {"", 2, 1}, {path, 1, 1}, {path, 2, 2}};
    const auto openFiles = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openFiles();
    for (const auto& [name, direction, charset] : refused) {
        ASSERT_TRUE(file.Open(path, KGC::KGStreamRead, 0, PLIX::PLIXCharset::Default));
        EXPECT_EQ(file.ReadLine().ToUtf8(), "1");
        EXPECT_FALSE(file.Open(name, direction, 0, charset)) << name;
        EXPECT_FALSE(file.IsOpen()) << name;  // the earlier file is closed
        EXPECT_TRUE(file.IsEOF() && file.ReadLine().IsEmpty());
    }
    EXPECT_EQ(openFiles(), before);  // closing releases the file
    EXPECT_EQ(vltest::ReadFile(path), content);
}

TEST(KGLogFile, RecordsSinksTargetsAndTrace) {
    KGLogFile* log = KGLogFile::GetInstance();
    EXPECT_TRUE(getenv("VLCHART_LOG_LEVEL") || log->GetThreshold() == 400);  // the default
    vltest::TempDir dir;
    vltest::WriteFile(dir.File("log"), "earlier\n");
    const Env env{"VLCHART_LOG"};
    env.Set(dir.File("log").c_str());
    for (const auto& r : Table("log.txt")) {
        std::string seen;
        const KGLogFile::Sink sink = [&seen](const auto& k) {
            seen = S::Format("%d, %d, %d, %s, %s, %d", k.level, k.hasCode, k.code,
                             k.message.ToUtf8().c_str(), k.source.c_str(), k.line)
                       .ToUtf8();
        };
        log->SetThreshold(std::stoi(r[0]));
        const char* source = r[4] == "-" ? nullptr : r[4].c_str();
        const std::string before = vltest::ReadFile(dir.File("log"));
        for (const KGLogFile::Sink& target : {sink, KGLogFile::Sink()}) {
            log->SetSink(target);
            r[2] == "-"
                ? log->RecordLog(std::stoi(r[1]), r[3], source, std::stoi(r[5]))
                : log->RecordLog(std::stoi(r[1]), std::stoi(r[2]), r[3], source, std::stoi(r[5]));
        }
        EXPECT_EQ(seen, r[6]);
        EXPECT_EQ(vltest::ReadFile(dir.File("log")), before + (r[7] == "-" ? "" : r[7] + "\n"));
    }
    log->SetThreshold(400);
    for (const char* target : {static_cast<const char*>(nullptr), "", dir.Path().c_str()}) {
        env.Set(target);  // no file, or one that cannot be opened: standard error
        CaptureStderr();
        log->RecordLog(500, "to stderr", "src", 1);
        log->RecordLog(300, "below", "src", 2);
        EXPECT_EQ(GetCapturedStderr(), "ERROR: to stderr (src:1)\n");
    }
    int calls = 0;
    EXPECT_FALSE(log->SetSink([&calls](const auto&) { ++calls; }));  // the default: none
    log->SetSink(nullptr)(KGC::KGLogRecord());  // gives back the sink it replaces
    EXPECT_EQ(calls, 1);

    const Env trace{"VLCHART_TRACE"};
    const std::string traceFile = dir.File("trace");
    vltest::WriteFile(traceFile, "kept\n");
    for (const char* value :
         {static_cast<const char*>(nullptr), "", "1", "stderr", traceFile.c_str()}) {
        trace.Set(value);
        CaptureStderr();
        KGC::kgtrace("LoadPointLookupTable Cost: %d\n", 7);
        EXPECT_EQ(GetCapturedStderr(),
                  value && *value && value != traceFile ? "LoadPointLookupTable Cost: 7\n" : "");
    }
    EXPECT_EQ(vltest::ReadFile(traceFile), "kept\nLoadPointLookupTable Cost: 7\n");
}

TEST(KGCoordSys, RoundTripsReplaceTheWholeObjectAndForeignTextIsRefused) {
    KGC::KGGeoCoordSys geo, stale;
    KGC::KGPrjCoordSys prj, staleWithGeo;
    ASSERT_TRUE(
        stale.FromXML("<GeoCoordSys type=\"999\" name=\"stale\"/>") &&
        staleWithGeo.FromXML("<PrjCoordSys type=\"998\"><GeoCoordSys type=\"9\"/></PrjCoordSys>"));
    for (const auto& r : Table("coordsys.txt")) {
        for (int version : {0, 1, 2}) {
            KGC::KGGeoCoordSys readGeo = stale;
            KGC::KGPrjCoordSys readPrj = staleWithGeo;
            if (r[0] == "refused") {
                EXPECT_FALSE(readGeo.FromXML(r[1], version) || !(readGeo == stale)) << r[1];
                EXPECT_FALSE(readPrj.FromXML(r[1], version) || !(readPrj == staleWithGeo)) << r[1];
                continue;
            }
            geo.SetTypeID(std::stoi(r[1]));
            geo.SetName(r[2]);
            prj.SetTypeID(-geo.GetTypeID());
            prj.SetName(r[2] + "/UTM");
            prj.SetGeoCoordSys(geo);
            EXPECT_TRUE(readGeo.FromXML(geo.ToXML(version), version) && readGeo == geo) << r[2];
            EXPECT_TRUE(readPrj.FromXML(prj.ToXML(version), version) && readPrj == prj) << r[2];
            EXPECT_FALSE(readGeo.FromXML(prj.ToXML()) ||
                         readPrj.FromXML(geo.ToXML()));  // not theirs
        }
    }
    EXPECT_TRUE(prj.FromXML("<PrjCoordSys type=\"32650\"/>") && prj.GetTypeID() == 32650 &&
                prj.GetName().IsEmpty() && prj.GetGeoCoordSys() == KGC::KGGeoCoordSys());
    geo = KGC::KGGeoCoordSys();
    geo.SetName("named");
    EXPECT_FALSE(geo == KGC::KGGeoCoordSys());  // the same type, another name
}
