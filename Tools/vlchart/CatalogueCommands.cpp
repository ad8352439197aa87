// vlchart object, attribute, agency, s58: one record of the S-57 catalogue dictionaries and the
// S-58 check messages, by code or by name.
#include <iostream>

#include "ChartBase/KGS57Dictionary.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGS57Config;
using KGC::KGS57DefineInfo;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

// A whole decimal number: the argument is a code, not a name.
bool IsCode(const std::string& text, int& code) {
    if (text.empty() || text.size() > 9) return false;
    for (char c : text) {
        if (c < '0' || c > '9') return false;
    }
    code = std::stoi(text);
    return true;
}

// Field rows: the text shows the non-empty ones as "Label  value", the JSON has every one.
class Record {
public:
    void Field(const char* label, const char* key, const std::string& value) {
        if (!value.empty()) m_text.Row({label, value});
        m_json[key] = value;
    }
    void Field(const char* label, const char* key, long long value) {
        m_text.Row({label, std::to_string(value)});
        m_json[key] = value;
    }
    Json& Document() { return m_json; }
    int Print(const Session& session, const Table* extra = nullptr,
              const std::string& extraTitle = std::string()) {
        if (session.Json()) {
            WriteJson(std::cout, m_json);
            return kExitOk;
        }
        m_text.Write(std::cout);
        if (extra != nullptr && !extra->Empty()) {
            std::cout << '\n' << extraTitle << '\n';
            extra->Write(std::cout);
        }
        return kExitOk;
    }

private:
    Table m_text;
    Json m_json = Json::object();
};

ToolError NotFound(const std::string& what, const std::string& name, const std::string& file) {
    return ToolError(kExitFound,
                     what + " '" + name + "' not found" +
                         (file.empty() ? std::string(" (no dictionary file)") : " in " + file));
}

// The record named by code (all digits) or acronym through the registry's two look-ups.
template <typename Out>
Out Find(const std::string& name, bool (KGS57Config::*byCode)(int, Out&) const,
         bool (KGS57Config::*byAcronym)(const PlixUnicodeString&, Out&) const,
         const std::string& what, const PlixUnicodeString& file) {
    const KGS57Config* registry = KGS57Config::GetInstance();
    Out out;
    int code = 0;
    const bool found = IsCode(name, code) ? (registry->*byCode)(code, out)
                                          : (registry->*byAcronym)(Utf16(name), out);
    if (!found) throw NotFound(what, name, Utf8(file));
    return out;
}

int Object(Session& session, const std::string& name) {
    const KGS57Config* registry = KGS57Config::GetInstance();
    const KGC::KGS57Object object =
        Find<KGC::KGS57Object>(name, &KGS57Config::GetS57Object, &KGS57Config::GetS57Object,
                               "object class", registry->GetObjectDictPath());
    Record r;
    r.Field("Acronym", "acronym", Utf8(object.acronym));
    r.Field("Code", "code", object.code);
    r.Field("Name", "name", Utf8(object.name));
    r.Field("Type", "type", Utf8(KGS57DefineInfo::FeatureTypeToName(object.type)));
    r.Field("Definition", "definition", Utf8(object.definition));
    r.Field("References", "references", Utf8(object.references));
    r.Field("Remarks", "remarks", Utf8(object.remarks));
    return r.Print(session);
}

int Attribute(Session& session, const std::string& name) {
    const KGS57Config* registry = KGS57Config::GetInstance();
    const KGC::KGS57Attribute attribute = Find<KGC::KGS57Attribute>(
        name, &KGS57Config::GetS57Attributes, &KGS57Config::GetS57Attributes, "attribute",
        registry->GetAttributeDictPath());
    Record r;
    r.Field("Acronym", "acronym", Utf8(attribute.acronym));
    r.Field("Code", "code", attribute.code);
    r.Field("Name", "name", Utf8(attribute.name));
    r.Field("Type", "type", Utf8(KGS57DefineInfo::AttributeTypeToName(attribute.type)));
    r.Field("Format", "format", Utf8(attribute.format));
    r.Field("Subset", "subset", Utf8(attribute.subset));
    r.Field("Definition", "definition", Utf8(attribute.definition));
    r.Field("Indication", "indication", Utf8(attribute.indication));
    r.Field("References", "references", Utf8(attribute.references));
    r.Field("Remarks", "remarks", Utf8(attribute.remarks));
    Table values(2);
    Json expected = Json::array();
    for (const auto& value : attribute.expectedValues) {
        values.Row({std::to_string(value.id), Utf8(value.meaning)});
        expected.push_back({{"id", value.id}, {"meaning", Utf8(value.meaning)}});
    }
    r.Document()["expectedValues"] = expected;
    return r.Print(session, &values,
                   "Expected values (" + std::to_string(attribute.expectedValues.GetSize()) + "):");
}

int Agency(Session& session, const std::string& name) {
    const KGS57Config* registry = KGS57Config::GetInstance();
    KGC::KGS57Agency agency;
    int code = 0;
    // A token may itself be digits: try it as a token first.
    const bool found = registry->GetS57Agency(Utf16(name), agency) ||
                       (IsCode(name, code) && registry->GetS57Agency(code, agency));
    if (!found) throw NotFound("agency", name, Utf8(registry->GetAgencyDictPath()));
    Record r;
    r.Field("Token", "token", Utf8(agency.token));
    r.Field("Code", "code", agency.code);
    r.Field("Name", "name", Utf8(agency.agencyName));
    return r.Print(session);
}

int S58(Session& session, const std::string& name) {
    KGS57Config* registry = KGS57Config::GetInstance();
    KGC::KGS58Info info;
    int id = 0;
    if (!IsCode(name, id)) throw ToolError(kExitUsage, "an S-58 check is named by its number");
    if (!registry->GetS58Info(id, info)) {
        throw NotFound("S-58 check", name, Utf8(registry->GetS58CheckDictPath()));
    }
    Record r;
    r.Field("Check", "id", info.id);
    r.Field("Level", "level", Utf8(info.level));
    r.Field("Description", "description", Utf8(info.description));
    r.Field("Reference", "reference", Utf8(info.reference));
    return r.Print(session);
}

void Add(CLI::App& app, Commands& commands, const char* name, const char* help,
         const char* argument, int (*run)(Session&, const std::string&)) {
    CLI::App* command = app.add_subcommand(name, help);
    auto value = std::make_shared<std::string>();
    command->add_option(argument, *value, argument)->required();
    commands.Add(command, [run, value](Session& session) { return run(session, *value); });
}

}  // namespace

void RegisterCatalogue(CLI::App& app, Commands& commands) {
    Add(app, commands, "object", "an S-57 object class by code or acronym", "CODE|ACRONYM", Object);
    Add(app, commands, "attribute",
        "an S-57 attribute by code or acronym, with its expected values", "CODE|ACRONYM",
        Attribute);
    Add(app, commands, "agency", "a producing agency by token or code", "TOKEN|CODE", Agency);
    Add(app, commands, "s58", "an S-58 check message by number", "ID", S58);
}

}  // namespace vlchart
