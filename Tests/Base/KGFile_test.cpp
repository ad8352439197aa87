// Tests of module directory resolution (override, VLCHART_HOME, the loaded library) and of
// file existence checks.
#include "Base/KGFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "BaseTestHelpers.h"
#include "TestSupport.h"

using KGC::KGFile;
using PLIX::PlixUnicodeString;

namespace {

std::string ModulePath(const char* module) {
    return KGFile::GetModulePath(module).ToUtf8();
}

std::string WithoutSlash(std::string dir) {
    if (!dir.empty() && dir.back() == '/') dir.pop_back();
    return dir;
}

// True when the directory holds lib<module>.so or one of its versioned names.
bool HoldsLibrary(const std::string& dir, const std::string& module) {
    const std::string prefix = "lib" + module + ".so";
    std::error_code ec;
    for (const auto& entry : std::filesystem::directory_iterator(dir, ec)) {
        const std::string name = entry.path().filename().string();
        if (name.compare(0, prefix.size(), prefix) == 0) return true;
    }
    return false;
}

}  // namespace

TEST(KGFile, ModulePathPrefersTheOverrideThenVlchartHome) {
    vltest::TempDir home;
    vltest::TempDir other;
    basetest::ScopedEnv env("VLCHART_HOME", WithoutSlash(home.Path()));

    // A missing "/" is added, an existing one is not doubled.
    EXPECT_EQ(ModulePath("VlBase"), home.Path());
    env.Set(home.Path());
    EXPECT_EQ(ModulePath("VlBase"), home.Path());
    EXPECT_EQ(ModulePath("VlChartBase"), home.Path());

    {
        vltest::ModulePathOverride override(WithoutSlash(other.Path()));
        EXPECT_EQ(ModulePath("VlBase"), other.Path());
        EXPECT_EQ(ModulePath("AnyModule"), other.Path());
        KGFile::SetModulePath(PlixUnicodeString(other.Path()));
        EXPECT_EQ(ModulePath("VlBase"), other.Path());
        KGFile::SetModulePath(PlixUnicodeString("/tmp/\xE6\xB5\xB7\xE5\x9B\xBE"));
        EXPECT_EQ(KGFile::GetModulePath("VlBase").Str(), u"/tmp/\u6D77\u56FE/");

        // An empty directory removes the override.
        KGFile::SetModulePath(PlixUnicodeString());
        EXPECT_EQ(ModulePath("VlBase"), home.Path());
    }
    EXPECT_EQ(ModulePath("VlBase"), home.Path());
}

TEST(KGFile, ModulePathFallsBackToTheDirectoryOfTheLoadedLibrary) {
    basetest::ScopedEnv env("VLCHART_HOME");
    env.Unset();

    const std::string base = ModulePath("VlBase");
    ASSERT_FALSE(base.empty());
    EXPECT_EQ(base.front(), '/') << base;
    EXPECT_EQ(base.back(), '/') << base;
    EXPECT_TRUE(HoldsLibrary(base, "VlBase")) << base;

    // Any loaded module is found by its name; libVlBase.so always brings pugixml along.
    const std::string pugixml = ModulePath("pugixml");
    ASSERT_FALSE(pugixml.empty());
    EXPECT_EQ(pugixml.back(), '/') << pugixml;
    EXPECT_TRUE(HoldsLibrary(pugixml, "pugixml")) << pugixml;

    // A module that is not loaded has no directory.
    EXPECT_EQ(ModulePath("NoSuchModuleAnywhere"), "");
    // "VlBa" is a prefix of the loaded library's name but not a module of its own.
    EXPECT_EQ(ModulePath("VlBa"), "");

    // An empty VLCHART_HOME is no directory.
    env.Set("");
    EXPECT_EQ(ModulePath("VlBase"), base);
}

TEST(KGFile, IsExistIsTrueForExistingFilesAndDirectories) {
    vltest::TempDir dir;
    vltest::WriteFile(dir.File("ChartConfig.xml"), "<Config/>");
    vltest::WriteFile(dir.File("\xE6\xB5\xB7\xE5\x9B\xBE.txt"), "");
    std::filesystem::create_directory(dir.File("sub dir"));

    EXPECT_TRUE(KGFile::IsExist(dir.File("ChartConfig.xml")));
    EXPECT_TRUE(KGFile::IsExist(PlixUnicodeString(u"") + PlixUnicodeString(dir.Path()) +
                                PlixUnicodeString(u"\u6D77\u56FE.txt")));
    EXPECT_TRUE(KGFile::IsExist(dir.Path()));
    EXPECT_TRUE(KGFile::IsExist(WithoutSlash(dir.Path())));
    EXPECT_TRUE(KGFile::IsExist(dir.File("sub dir")));

    EXPECT_FALSE(KGFile::IsExist(dir.File("missing.xml")));
    EXPECT_FALSE(KGFile::IsExist(dir.File("missing/ChartConfig.xml")));
    EXPECT_FALSE(KGFile::IsExist(dir.File("chartconfig.xml")));  // names are case-sensitive
    EXPECT_FALSE(KGFile::IsExist(PlixUnicodeString()));
    EXPECT_FALSE(KGFile::IsExist(""));
}
