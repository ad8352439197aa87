// KGChartEnvironment: keeper of the chart settings file "ChartConfig.xml" beside the base
// module. Answers which look-up table, colour table and dictionary file serves a style, and
// edits the file, writing it back after every change.
//
// Threads: every query moves the document's cursor, so one environment belongs to one thread at a
// time (or is guarded by the caller's lock); separate environments on separate threads are
// independent, but edits of the same settings file from several of them race on the file.
#pragma once

#include <memory>

#include "Base/PlixArray.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartDisplayTypes.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class KGMarkup;

class VLCHARTBASE_API KGChartEnvironment {
public:
    // Reads the settings file at once; a missing file is logged and leaves every query empty.
    KGChartEnvironment();
    ~KGChartEnvironment();
    KGChartEnvironment(const KGChartEnvironment&) = delete;
    KGChartEnvironment& operator=(const KGChartEnvironment&) = delete;

    // Writes a new settings file at path: an empty Display and Dictionary entries naming the
    // dictionary files (S57Objects.xml, S57Attributes.xml, Agencies.xml, S57ObjectSpecs.xml,
    // S57InfoSpecs.xml, S58Checks.xml) in dictionaryDir, stored as given (absolute when it is).
    // False when the file already exists or cannot be written; the write is atomic.
    static bool CreateSettingsFile(const PLIX::PlixUnicodeString& path,
                                   const PLIX::PlixUnicodeString& dictionaryDir);

    // Loads (or reloads) the settings file.
    bool LoadXML();
    // The settings file's path: the base module directory followed by "ChartConfig.xml".
    const PLIX::PlixUnicodeString& GetSettingsPath() const { return m_settingsPath; }

    bool ToDisplayNode();
    bool ToDictionaryNode();
    bool ToLookupTableNode(const PLIX::PlixUnicodeString& styleName,
                           KGChartDisplayStyleType& styleType);

    // symbolType non-zero selects "simplified", zero "paperchart".
    PLIX::PlixUnicodeString GetPointLookupTable(const PLIX::PlixUnicodeString& styleName,
                                                unsigned char symbolType);
    PLIX::PlixUnicodeString GetPointLookupTableAbsolutePath(
        const PLIX::PlixUnicodeString& styleName, unsigned char symbolType);
    PLIX::PlixUnicodeString GetLineLookupTable(const PLIX::PlixUnicodeString& styleName);
    PLIX::PlixUnicodeString GetLineLookupTableAbsolutePath(
        const PLIX::PlixUnicodeString& styleName);
    // edgeType non-zero selects "symbolized", zero "plain".
    PLIX::PlixUnicodeString GetAreaLookupTable(const PLIX::PlixUnicodeString& styleName,
                                               unsigned char edgeType);
    PLIX::PlixUnicodeString GetAreaLookupTableAbsolutePath(const PLIX::PlixUnicodeString& styleName,
                                                           unsigned char edgeType);
    // A "PaperChart" style has one colour table: every mode gives its "DayBright" table.
    PLIX::PlixUnicodeString GetColorTable(KGS52ColorMode mode,
                                          const PLIX::PlixUnicodeString& styleName);
    PLIX::PlixUnicodeString GetColorTableAbsolutePath(KGS52ColorMode mode,
                                                      const PLIX::PlixUnicodeString& styleName);

    // The style's symbol library file, the "SymbolLibrary" element after its colour tables;
    // empty when the style names none (files written before it existed).
    PLIX::PlixUnicodeString GetSymbolLibrary(const PLIX::PlixUnicodeString& styleName);
    PLIX::PlixUnicodeString GetSymbolLibraryAbsolutePath(const PLIX::PlixUnicodeString& styleName);

    PLIX::PlixUnicodeString GetDictFile(const PLIX::PlixUnicodeString& elementName);

    PLIX::PlixUnicodeString GetS57ObjectDictFile();
    PLIX::PlixUnicodeString GetS57ObjectDictFileAbsolutePath();
    PLIX::PlixUnicodeString GetS57AttributeDictFile();
    PLIX::PlixUnicodeString GetS57AttributeDictFileAbsolutePath();
    PLIX::PlixUnicodeString GetAgencyDictFile();
    PLIX::PlixUnicodeString GetAgencyDictFileAbsolutePath();
    PLIX::PlixUnicodeString GetS57SpecsObjectDictFile();
    PLIX::PlixUnicodeString GetS57SpecsObjectDictFileAbsolutePath();
    PLIX::PlixUnicodeString GetS57SpecsInfoDictFile();
    PLIX::PlixUnicodeString GetS57SpecsInfoDictFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckInfoDictFile();
    PLIX::PlixUnicodeString GetS58CheckInfoDictFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckAttributeFile();
    PLIX::PlixUnicodeString GetS58CheckAttributeFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckAttributesFile();
    PLIX::PlixUnicodeString GetS58CheckAttributesFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckFeatureFile();
    PLIX::PlixUnicodeString GetS58CheckFeatureFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckAllFeatureFile();
    PLIX::PlixUnicodeString GetS58CheckAllFeatureFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckSoundingFile();
    PLIX::PlixUnicodeString GetS58CheckSoundingFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckFeatureRelationshipFile();
    PLIX::PlixUnicodeString GetS58CheckFeatureRelationshipFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckMandatoryAttributesFile();
    PLIX::PlixUnicodeString GetS58CheckMandatoryAttributesFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckMasterSlavesFile();
    PLIX::PlixUnicodeString GetS58CheckMasterSlavesFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckCollectionsFile();
    PLIX::PlixUnicodeString GetS58CheckCollectionsFileAbsolutePath();
    PLIX::PlixUnicodeString GetS58CheckEnumeListAttributesFile();
    PLIX::PlixUnicodeString GetS58CheckEnumeListAttributesFileAbsolutePath();

    KGChartDisplayStyleType GetStyleType(const PLIX::PlixUnicodeString& styleName);
    // Appends the non-empty style names in document order; returns how many were appended.
    int GetStyleNames(PLIX::PlixArray<PLIX::PlixUnicodeString>& names);

    // "./x" or ".\x" becomes the module directory followed by x; a network path ("\\") gets
    // backslashes only; anything else is returned unchanged.
    PLIX::PlixUnicodeString GetAbsolutPath(const PLIX::PlixUnicodeString& path);
    // The form a setter stores: "./" relative inside the module directory, forward slashes.
    PLIX::PlixUnicodeString ModifyFilePath(const PLIX::PlixUnicodeString& path);

    // Every edit writes the whole settings file back at once, and is all or nothing: when the
    // save fails (full disk, no permission) the edit returns false and the document in memory
    // is left exactly as before, so that memory and file never disagree and a later edit does
    // not save a failed one. This departs on purpose from the plain "change, then return what
    // the save returned", which kept a failed change in memory.
    bool SetPointLookupTableFile(const PLIX::PlixUnicodeString& path,
                                 const PLIX::PlixUnicodeString& styleName,
                                 unsigned char symbolType);
    bool SetLineLookupTableFile(const PLIX::PlixUnicodeString& path,
                                const PLIX::PlixUnicodeString& styleName);
    bool SetAreaLookupTableFile(const PLIX::PlixUnicodeString& path,
                                const PLIX::PlixUnicodeString& styleName, unsigned char edgeType);
    bool SetColorTable(const PLIX::PlixUnicodeString& path,
                       const PLIX::PlixUnicodeString& styleName, KGS52ColorMode mode);
    // Unlike the other setters, this one creates the element when the style lacks it (a file
    // written before symbol libraries, or a style from AddNewStyle, which adds none): it goes
    // right after "ColorTables", or last in the style when there is no such element.
    bool SetSymbolLibrary(const PLIX::PlixUnicodeString& path,
                          const PLIX::PlixUnicodeString& styleName);
    bool ModifyDictFile(const PLIX::PlixUnicodeString& elementName,
                        const PLIX::PlixUnicodeString& path);
    bool ModifyS57ObjectDictFile(const PLIX::PlixUnicodeString& path);
    bool ModifyS57AttributeDictFile(const PLIX::PlixUnicodeString& path);
    bool ModifyAgencyDictFile(const PLIX::PlixUnicodeString& path);
    bool ModifyS57SpecsObjectDictFile(const PLIX::PlixUnicodeString& path);
    bool ModifyS57SpecsInfoDictFile(const PLIX::PlixUnicodeString& path);
    bool AddNewStyle(const PLIX::PlixUnicodeString& styleName, KGChartDisplayStyleType type);
    bool RemoveStyle(const PLIX::PlixUnicodeString& styleName);

private:
    // Moves the main position to the style's colour table of that mode.
    bool ToColorTableNode(const PLIX::PlixUnicodeString& styleName, KGS52ColorMode mode);
    // The text of a style's point or area table for one symbol or edge kind.
    PLIX::PlixUnicodeString GetTableOfKind(const PLIX::PlixUnicodeString& styleName,
                                           const char16_t* table, const char16_t* kind,
                                           const PLIX::PlixUnicodeString& kindValue);

    PLIX::PlixUnicodeString m_settingsPath;
    // Always present; empty when the settings file is missing or unreadable.
    std::unique_ptr<KGMarkup> m_document;
};

}  // namespace KGC
