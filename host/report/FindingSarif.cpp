#include "report/FindingSarif.h"

#include "check/CheckCatalog.h"
#include "report/FindingReport.h"
#include "report/JsonWriter.h"

#include <algorithm>

namespace {

// {"text": ...}, as SARIF's messages and descriptions are.
void Message(JsonWriter& json, const char* key, const std::string& text) {
    json.Key(key);
    json.BeginObject(true);
    json.Key("text");
    json.String(text);
    json.EndObject();
}

void WritePhysicalLocation(JsonWriter& json, const Location& at, std::size_t artifact) {
    json.Key("physicalLocation");
    json.BeginObject();
    json.Key("artifactLocation");
    json.BeginObject(true);
    json.Key("uri");
    json.String(PathUri(at.file));
    json.Key("index");
    json.UInt(artifact);
    json.EndObject();
    if (at.line != 0) {
        json.Key("region");
        json.BeginObject(true);
        json.Key("startLine");
        json.UInt(at.line);
        json.Key("startColumn");
        json.UInt(std::max<std::uint32_t>(at.column, 1));
        json.EndObject();
    }
    json.EndObject();
}

// The kinds of finding among `findings`, in the catalog's order: the run's rules.
std::vector<const CheckKind*> RulesOf(const std::vector<Finding>& findings) {
    std::vector<const CheckKind*> rules;
    for (const CheckKind& kind : CheckKinds())
        if (std::any_of(findings.begin(), findings.end(),
                        [&](const Finding& f) { return f.name == kind.name; }))
            rules.push_back(&kind);
    return rules;
}

void WriteRules(JsonWriter& json, const std::vector<const CheckKind*>& rules) {
    json.Key("rules");
    json.BeginArray();
    for (const CheckKind* kind : rules) {
        json.BeginObject();
        json.Key("id");
        json.String(kind->name);
        Message(json, "shortDescription", kind->summary);
        json.EndObject();
    }
    json.EndArray();
}

} // namespace

void WriteFindingsSarif(ReportStream& out, const std::vector<Finding>& findings,
                        const std::vector<std::wstring>& files, const char* tool,
                        const char* version, int exitStatus) {
    // The artifacts: the files checked, then any other a finding is in.
    std::vector<std::wstring> artifacts = files;
    auto artifactOf = [&](const std::wstring& file) {
        const auto found = std::find(artifacts.begin(), artifacts.end(), file);
        if (found != artifacts.end())
            return static_cast<std::size_t>(found - artifacts.begin());
        artifacts.push_back(file);
        return artifacts.size() - 1;
    };
    for (const Finding& finding : findings) {
        artifactOf(finding.at.file);
        if (finding.related)
            artifactOf(finding.related->file);
    }

    const std::vector<const CheckKind*> rules = RulesOf(findings);
    JsonWriter json(out);
    json.BeginObject();
    json.Key("$schema");
    json.String("https://json.schemastore.org/sarif-2.1.0.json");
    json.Key("version");
    json.String("2.1.0");
    json.Key("runs");
    json.BeginArray();
    json.BeginObject();
    json.Key("tool");
    json.BeginObject();
    json.Key("driver");
    json.BeginObject();
    json.Key("name");
    json.String(tool);
    json.Key("version");
    json.String(version);
    WriteRules(json, rules);
    json.EndObject();
    json.EndObject();
    json.Key("invocations");
    json.BeginArray();
    json.BeginObject(true);
    json.Key("executionSuccessful");
    json.Bool(true);
    json.Key("exitCode");
    json.Int(exitStatus);
    json.EndObject();
    json.EndArray();
    json.Key("columnKind");
    json.String("utf16CodeUnits");
    json.Key("artifacts");
    json.BeginArray();
    for (const std::wstring& file : artifacts) {
        json.BeginObject(true);
        json.Key("location");
        json.BeginObject(true);
        json.Key("uri");
        json.String(PathUri(file));
        json.EndObject();
        json.EndObject();
    }
    json.EndArray();
    json.Key("results");
    json.BeginArray();
    for (const Finding& finding : findings) {
        json.BeginObject();
        json.Key("ruleId");
        json.String(finding.name);
        const auto rule = std::find_if(rules.begin(), rules.end(), [&](const CheckKind* kind) {
            return finding.name == kind->name;
        });
        if (rule != rules.end()) {
            json.Key("ruleIndex");
            json.UInt(static_cast<std::uint64_t>(rule - rules.begin()));
        }
        json.Key("level");
        json.String(SeverityWord(finding.severity));
        Message(json, "message",
                finding.note.empty() ? finding.message : finding.message + "; " + finding.note);
        json.Key("locations");
        json.BeginArray();
        json.BeginObject();
        WritePhysicalLocation(json, finding.at, artifactOf(finding.at.file));
        json.EndObject();
        json.EndArray();
        if (finding.related) {
            json.Key("relatedLocations");
            json.BeginArray();
            json.BeginObject();
            json.Key("id");
            json.UInt(0);
            WritePhysicalLocation(json, *finding.related, artifactOf(finding.related->file));
            Message(json, "message", finding.relatedMessage);
            json.EndObject();
            json.EndArray();
        }
        json.Key("properties");
        json.BeginObject(true);
        json.Key("dropsData");
        json.Bool(finding.dropsData);
        json.EndObject();
        json.EndObject();
    }
    json.EndArray();
    json.EndObject();
    json.EndArray();
    json.EndObject();
}
