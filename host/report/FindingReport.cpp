#include "report/FindingReport.h"

#include "check/SourceText.h"
#include "report/JsonWriter.h"
#include "report/ReportStream.h"
#include "ztutil/ZtUSysString.h"
#include "ztutil/ZtUUtf16.h"

#include <map>
#include <memory>

namespace {

// Lines longer than this are shown as a window around the column.
constexpr std::size_t kShownWidth = 160;

// The source line with a caret under `column`: control characters shown as '?', tabs kept
// in both lines so that the caret stands under its character, a long line cut to a window.
void WriteSourceLine(ReportStream& out, std::wstring_view line, std::uint32_t column) {
    std::size_t at = column > 0 ? column - 1 : 0;
    std::string prefix;
    if (line.size() > kShownWidth) {
        const std::size_t start = at > kShownWidth / 2 ? at - kShownWidth / 2 : 0;
        if (start > 0)
            prefix = "...";
        line = line.substr(start, kShownWidth);
        at -= start;
    }
    std::wstring shown;
    std::string caret = std::string(prefix.size(), ' ');
    for (std::size_t i = 0; i < line.size(); ++i) {
        const wchar_t c = line[i];
        shown += c < 0x20 && c != L'\t' ? L'?' : c;
        // The low half of a pair is no character of its own.
        if (i < at && !ZtUUtf16::IsLowSurrogate(static_cast<unsigned>(c)))
            caret += c == L'\t' ? '\t' : ' ';
    }
    out += prefix + ZtUSysString::WideToUtf8(shown) + "\n" + caret + "^\n";
}

} // namespace

FindingCounts CountFindings(const std::vector<Finding>& findings) {
    FindingCounts counts;
    for (const Finding& finding : findings) {
        if (finding.severity == Severity::kError)
            ++counts.errors;
        else if (finding.severity == Severity::kWarning)
            ++counts.warnings;
        else
            ++counts.notes;
    }
    return counts;
}

void WriteFindingsText(ReportStream& out, const std::vector<Finding>& findings) {
    // Each file is read for its source lines once, and only if a finding is in it.
    std::map<std::wstring, std::unique_ptr<SourceText>> sources;
    for (const Finding& finding : findings) {
        out += LocationText(finding.at) + ": " + SeverityWord(finding.severity) + ": " +
               finding.message;
        if (!finding.name.empty())
            out += finding.promoted ? " [-Werror,-W" + finding.name + "]"
                                    : " [-W" + finding.name + "]";
        out += '\n';
        if (finding.at.line != 0) {
            std::unique_ptr<SourceText>& source = sources[finding.at.file];
            if (!source)
                source = std::make_unique<SourceText>(finding.at.file);
            WriteSourceLine(out, source->Line(finding.at.line), finding.at.column);
        }
        if (!finding.note.empty())
            out += LocationText(finding.at) + ": note: " + finding.note + "\n";
        if (finding.related)
            out += LocationText(*finding.related) + ": note: " + finding.relatedMessage + "\n";
    }
    const FindingCounts counts = CountFindings(findings);
    std::string total;
    if (counts.warnings > 0)
        total = std::to_string(counts.warnings) + (counts.warnings == 1 ? " warning" : " warnings");
    if (counts.errors > 0)
        total += (total.empty() ? "" : " and ") + std::to_string(counts.errors) +
                 (counts.errors == 1 ? " error" : " errors");
    if (!total.empty())
        out += total + " generated.\n";
}

void WriteFindingsJson(ReportStream& out, const std::vector<Finding>& findings,
                       const std::vector<std::wstring>& files, int exitStatus) {
    JsonWriter json(out);
    json.BeginObject();
    json.Key("files");
    json.BeginArray();
    for (const std::wstring& file : files)
        json.WideString(file);
    json.EndArray();
    json.Key("diagnostics");
    json.BeginArray();
    for (const Finding& finding : findings) {
        json.BeginObject();
        json.Key("file");
        json.WideString(finding.at.file);
        json.Key("line");
        json.UInt(finding.at.line);
        json.Key("column");
        json.UInt(finding.at.column);
        json.Key("severity");
        json.String(SeverityWord(finding.severity));
        json.Key("name");
        json.String(finding.name);
        json.Key("dropsData");
        json.Bool(finding.dropsData);
        json.Key("message");
        json.String(finding.message);
        json.Key("note");
        json.String(finding.note);
        json.Key("related");
        if (finding.related) {
            json.BeginObject(true);
            json.Key("file");
            json.WideString(finding.related->file);
            json.Key("line");
            json.UInt(finding.related->line);
            json.Key("column");
            json.UInt(finding.related->column);
            json.Key("message");
            json.String(finding.relatedMessage);
            json.EndObject();
        } else {
            json.Null();
        }
        json.EndObject();
    }
    json.EndArray();
    const FindingCounts counts = CountFindings(findings);
    json.Key("counts");
    json.BeginObject(true);
    json.Key("errors");
    json.UInt(counts.errors);
    json.Key("warnings");
    json.UInt(counts.warnings);
    json.Key("notes");
    json.UInt(counts.notes);
    json.EndObject();
    json.Key("exitStatus");
    json.Int(exitStatus);
    json.EndObject();
}

std::string PathUri(const std::wstring& path) {
    std::string bytes = ZtUSysString::WideToUtf8(path);
    for (char& c : bytes)
        if (c == '\\')
            c = '/';
    std::string uri;
    const bool driveLetter = bytes.size() >= 2 && bytes[1] == ':';
    if (!bytes.empty() && bytes[0] == '/')
        uri = "file://";
    else if (driveLetter)
        uri = "file:///";
    static const char kHex[] = "0123456789ABCDEF";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto c = static_cast<unsigned char>(bytes[i]);
        const bool plain = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
                           (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '_' || c == '~' ||
                           c == '/' || (driveLetter && i == 1);
        if (plain) {
            uri += static_cast<char>(c);
        } else {
            uri += '%';
            uri += kHex[c >> 4];
            uri += kHex[c & 15];
        }
    }
    return uri;
}
